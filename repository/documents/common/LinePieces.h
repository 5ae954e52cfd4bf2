#pragma once

#include "repository/documents/common/HashIndex.h"
#include "repository/documents/common/Statement.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// The text of a piece that was added or edited.
struct OwnText
{
    std::string text;
    std::string_view original; // what the file holds in its place; empty for a piece that was added
};

// A statement in its place: in the list of all pieces, and in the chain of those that are not trivia.
struct LinePiece
{
    Statement line; // a view into the file's text, or into own
    std::unique_ptr<OwnText> own;
    std::uint32_t previous = HashIndex::none;
    std::uint32_t next = HashIndex::none;
    std::uint32_t above = HashIndex::none;
    std::uint32_t below = HashIndex::none;
    std::uint32_t node = HashIndex::none; // none for trivia
    bool going = false;                   // while a removal is being tried
    bool sharesLine = false;              // it begins in the line of the header above it

    std::string_view original() const { return own ? own->original : line.text; }
};

// All pieces of a file in their order, by numbers; those that are taken out make room for others.
class LinePieces
{
public:
    static constexpr std::uint32_t none = HashIndex::none;

    void reserve(std::size_t count) { pieces.reserve(count); }

    LinePiece& operator[](std::uint32_t id) { return pieces[id]; }
    const LinePiece& operator[](std::uint32_t id) const { return pieces[id]; }

    // none where there is no piece.
    std::uint32_t front() const { return first; }
    std::uint32_t back() const { return last; }
    std::uint32_t nextOf(std::uint32_t id) const { return id == none ? first : pieces[id].next; }

    // The chain: the first after one that is in it, none being before all of them, and the last.
    std::uint32_t chainedBelow(std::uint32_t above) const
    {
        return above == none ? chainFront : pieces[above].below;
    }
    std::uint32_t chainedLast() const { return chainBack; }

    // A new piece before another, or at the end for none; unless trivia, it is chained below the one above.
    std::uint32_t insert(std::uint32_t before, std::uint32_t above, const Statement& line);
    void erase(std::uint32_t id);

private:
    std::vector<LinePiece> pieces;
    std::vector<std::uint32_t> unused;
    std::uint32_t first = none;
    std::uint32_t last = none;
    std::uint32_t chainFront = none;
    std::uint32_t chainBack = none;
};

} // namespace Repository::Documents
