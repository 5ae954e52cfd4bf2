#pragma once

#include <QChar>
#include <QtGlobal>

#include <cstddef>
#include <vector>

namespace Repository {

// Tells at the cost of one look into memory that a text is none of a set. It keeps a few bits for each text
// instead of the text, so that it says yes of some others, too: of about one in a hundred while it is not
// full. None can be taken out; whoever owns the texts makes it anew. Not locked.
class BloomFilter
{
public:
    // The hash of a text that is read character by character, so that all its beginnings are hashed on the
    // way.
    class Hash
    {
    public:
        void append(QChar character) { value = (value ^ character.unicode()) * factor; }

    private:
        friend class BloomFilter;

        static constexpr quint64 factor = 0x9E3779B97F4A7C15; // odd, its bits spread evenly
        quint64 value = factor;
    };

    explicit BloomFilter(std::size_t room = 0)
    {
        std::size_t size = 64;
        while (size * textsOfWord < room)
            size *= 2;
        words.resize(size);
    }

    void insert(Hash hash)
    {
        if (mayHold(hash))
            return;
        words[placeOf(hash)] |= bitsOf(hash);
        ++count;
    }

    bool mayHold(Hash hash) const { return (words[placeOf(hash)] & bitsOf(hash)) == bitsOf(hash); }

    std::size_t getCount() const { return count; }
    bool isFull() const { return count > words.size() * textsOfWord; }

private:
    static constexpr std::size_t textsOfWord = 4;

    // The upper bits of a product depend on all of its factors: twelve choose the bits, the next the word.
    std::size_t placeOf(Hash hash) const { return (hash.value >> 20) & (words.size() - 1); }
    static quint64 bitsOf(Hash hash)
    {
        return quint64(1) << (hash.value >> 58) | quint64(1) << (hash.value >> 52 & 63);
    }

    std::vector<quint64> words; // a power of two
    std::size_t count = 0;      // of different texts, nearly
};

} // namespace Repository
