#include "repository/notification/BloomFilter.h"

namespace Repository {

BloomFilter::BloomFilter(std::size_t room)
{
    std::size_t size = 64;
    while (size * textsOfWord < room)
        size *= 2;
    words.resize(size);
}

void BloomFilter::insert(Hash hash)
{
    if (mayHold(hash))
        return;
    words[placeOf(hash)] |= bitsOf(hash);
    ++count;
}

} // namespace Repository
