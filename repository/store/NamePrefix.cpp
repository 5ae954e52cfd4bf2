#include "repository/store/NamePrefix.h"

#include <QChar>

#include <algorithm>

namespace Repository {

namespace {

constexpr std::uint64_t allCharacters = ~std::uint64_t(0xFF);

// Characters that differ in nothing but case share a byte; so do the halves of those that take two.
std::uint64_t byteOf(QChar character)
{
    const unsigned code = character.unicode();
    if (code < 0x80) // nearly all
        return code >= 'A' && code <= 'Z' ? code | 0x20 : code;
    if (character.isSurrogate())
        return 0x80;
    const unsigned folded = character.toCaseFolded().unicode();
    return folded < 0x80 ? folded : 0x80 | (folded & 0x7F);
}

} // namespace

std::uint64_t NamePrefix::bitsOf(QStringView name)
{
    std::uint64_t bits = 0;
    const int end = int(std::min<qsizetype>(name.size(), length));
    for (int i = 0; i < end; ++i)
        bits |= byteOf(name[i]) << (8 * (length - i));
    return bits;
}

NameFilter NameFilter::name(QStringView name)
{
    NameFilter filter;
    filter.mask = allCharacters;
    filter.wanted = NamePrefix::bitsOf(name);
    return filter;
}

NameFilter NameFilter::beginning(QStringView beginning)
{
    NameFilter filter = name(beginning);
    const auto missing = NamePrefix::length - std::min<qsizetype>(beginning.size(), NamePrefix::length);
    filter.mask = missing == NamePrefix::length ? 0 : allCharacters << (8 * missing);
    return filter;
}

NameFilter NameFilter::orBranches() const
{
    NameFilter filter = *this;
    filter.alsoAccepted = NamePrefix::branchBit;
    return filter;
}

} // namespace Repository
