#pragma once

#include "repository/merge/ElementNode.h"
#include "repository/merge/SequenceDifference.h"

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <vector>

namespace Repository {

// What one side of a merge made of the elements of a list: which of them it has kept, changed and taken out.
// They are identified by their content, and those that were changed by what is left of it and by their
// neighbours.
class ListSide
{
public:
    static constexpr std::size_t none = std::size_t(-1);

    // Elements between two that stay, which went and came. Some of them may be changed, or at other places.
    struct Hunk
    {
        std::size_t begin; // of the base
        std::size_t end;
        std::size_t ownBegin; // of this side
        std::size_t ownEnd;
    };

    enum class Fate { Kept, Changed, Removed, Replaced };

    // Asked whether one has the comments that the other had.
    using CommentTest = std::function<bool(const ElementNode& before, const ElementNode& after)>;

    // An element that was changed counts as another one where the test fails.
    ListSide(const ElementNodes& baseElements, const ElementNodes& ownElements, CommentTest test);

    const ElementNodes& getElements() const { return own; }
    const std::vector<Hunk>& getHunks() const { return hunks; }

    std::size_t originOf(std::size_t element) const { return origins[element]; } // none for a new one
    std::size_t placeOf(std::size_t origin) const { return places[origin]; }     // none for one that went
    Fate fateOf(std::size_t origin) const { return fates[origin]; }

    // Whether this one may be meant as well where one just like it beside it went.
    bool mayBeRemoved(std::size_t origin) const { return uncertain[origin]; }

    // Whether nothing but its place identifies it, as it has become another one.
    bool isReshaped(std::size_t origin) const { return reshaped[origin]; }

    // The hunk in which an element of the base is.
    const Hunk& hunkOf(std::size_t origin) const;

    // The contents of new elements in a hunk.
    std::vector<std::uint64_t> newIn(const Hunk& hunk) const;

private:
    void align();
    void takeSteps(const std::vector<SequenceStep>& steps);
    void pairMoved();
    void pairChanged(const Hunk& hunk);
    void pairReshaped(const Hunk& hunk);
    void pairSimilar(const std::vector<std::size_t>& gone, const std::vector<std::size_t>& come,
                     bool areInPlace);
    std::size_t countCommon(std::size_t origin, std::size_t element) const;
    void pair(std::size_t origin, std::size_t element);
    void judge(const Hunk& hunk);
    void markUncertain(std::size_t begin, std::size_t end);

    // How many elements of the base, and of this side, begin with a value.
    struct HeadCounts
    {
        std::size_t inBase = 0;
        std::size_t inOwn = 0;
    };
    bool haveName(const ElementNode& one, const ElementNode& other) const;

    const ElementNodes& base;
    const ElementNodes& own;
    const CommentTest haveSameComments;
    std::unordered_map<std::uint64_t, HeadCounts> heads;
    std::vector<std::size_t> origins; // of own elements
    std::vector<std::size_t> places;  // of those of the base
    std::vector<Fate> fates;
    std::vector<bool> uncertain;
    std::vector<bool> reshaped;
    std::vector<Hunk> hunks;
};

} // namespace Repository
