#pragma once

#include "repository/merge/CommentWatch.h"
#include "repository/merge/ListPlans.h"

#include <array>
#include <map>
#include <optional>
#include <set>
#include <utility>

namespace Repository {

// Gives the documents of a merge the same elements in their arrays, each as its author has written it, so
// that a path means the same in all of them.
class ListArrangement
{
public:
    // Freshly parsed; what comes from one into another is taken from them now.
    ListArrangement(const ListPlans& plans, const Documents::Document& base, const Documents::Document& mine,
                    const Documents::Document& theirs);

    // False, with the document in disorder, where it does not take an element.
    bool apply(Documents::Document& document, MergeSide side) const;

private:
    struct Element
    {
        std::optional<Documents::Excerpt> excerpt;
        std::vector<Documents::Entry> entries;
    };
    using Key = std::pair<const ListPlan*, std::size_t>; // and the number

    bool arrange(Documents::Document& document, const ListPlan& list, MergeSide side) const;
    void takeComing(const ListPlan& list, const std::array<const Documents::Document*, 3>& sides);
    void takeGoing(const ListPlan& list, const std::array<const Documents::Document*, 3>& sides);
    bool areNew(const std::string& comments) const;
    bool areGone(const std::string& comments) const;

    const ListPlans& plans;
    const CommentCounts known; // in the base
    const CommentCounts mine;
    std::map<Key, Element> coming;
    std::set<Key> goingWithComments;
    std::map<std::pair<const ListPlan*, std::string>, std::size_t> leftBehind; // by the comments above them
};

} // namespace Repository
