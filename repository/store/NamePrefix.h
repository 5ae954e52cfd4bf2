#pragma once

#include <QStringView>

#include <cstdint>

namespace Repository {

// The beginning of a child's name, whatever its case, in one number, by which a search passes over most of a
// million children without looking at them. Names that differ may look the same; a name that is wanted never
// looks different.
class NamePrefix
{
public:
    NamePrefix() = default;
    explicit NamePrefix(QStringView name) : bits(bitsOf(name)) {}

    // So many characters, each in one byte from the highest on; the flag is in the lowest.
    static constexpr int length = 7;

    // The child has children of its own, which a search may have to look at.
    void setBranchBit() { bits |= branchBit; }

private:
    friend class NameFilter;

    static constexpr std::uint64_t branchBit = 1;

    static std::uint64_t bitsOf(QStringView name);

    std::uint64_t bits = 0;
};

// Which children a search has to look at.
class NameFilter
{
public:
    static NameFilter everything() { return {}; }

    // Those whose name is, or begins with, this one.
    static NameFilter name(QStringView name);
    static NameFilter beginning(QStringView beginning);

    // Besides those that the filter accepts, all that have children.
    NameFilter orBranches() const;

    bool accepts(NamePrefix prefix) const
    {
        return (prefix.bits & mask) == wanted || (prefix.bits & alsoAccepted) != 0;
    }

private:
    std::uint64_t mask = 0;
    std::uint64_t wanted = 0;
    std::uint64_t alsoAccepted = 0;
};

} // namespace Repository
