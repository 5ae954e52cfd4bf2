#include "repository/TextFilter.h"

namespace Repository {

TextFilter::TextFilter(std::size_t room)
{
    std::size_t size = 64;
    while (size * textsOfWord < room)
        size *= 2;
    words.resize(size);
}

void TextFilter::insert(Hash hash)
{
    if (mayHold(hash))
        return;
    words[placeOf(hash)] |= bitsOf(hash);
    ++count;
}

} // namespace Repository
