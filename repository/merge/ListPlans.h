#pragma once

#include "repository/merge/DocumentChanges.h"
#include "repository/merge/ElementOrder.h"

#include <array>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace Repository {

// What becomes of an array that is on all sides of a merge.
struct ListPlan
{
    std::string path; // in the merged document, as soon as the arrays around it are in their new order
    ElementOrder order;
    std::optional<std::vector<std::string>> texts; // of a list of texts in which nothing is in conflict

    bool changes(MergeSide side) const; // whether the side has other elements or texts
};

// The arrays that have to be brought into one order before two sides of a document can be merged by paths.
class ListPlans
{
public:
    using Sides = std::array<const Documents::Document*, 3>; // by MergeSide

    // Looks at those in which the changes from the base to mine are.
    ListPlans(const Sides& documents, const std::vector<DocumentChange>& myChanges);

    // Those around others first.
    const std::deque<ListPlan>& getPlans() const { return plans; }

    // The outermost array around a path of the merged document, or at it, in which the sides have no order
    // in common; nothing for others.
    const std::string* findConflict(std::string_view path) const;

    // The path that something on one side has on another one; that of the array where it has none.
    std::string translated(std::string_view path, MergeSide from, MergeSide to) const;

private:
    struct Nodes
    {
        const ElementNode& base;
        const ElementNode& mine;
        const ElementNode& theirs;
    };

    bool plan(const std::string& path, const Nodes& nodes, bool isGivenUp);
    bool planArray(const std::string& path, const Nodes& nodes, bool isGivenUp);
    bool planElements(const ListPlan& list, bool isGivenUp);
    bool planMembers(const std::string& path, const Nodes& nodes, bool isGivenUp);
    static bool mergeTexts(ListPlan& list);
    bool goesByValue(const ListPlan& list, const Nodes& nodes) const;

    const Sides sides;
    const std::size_t textSize;
    std::size_t comparedComments = 0; // each costs a walk over the text
    std::array<std::map<std::string, ElementNode>, 3> nodesOfSides;
    std::deque<ListPlan> plans;
    std::map<std::string, const ListPlan*, std::less<>> plansByPath;
    std::set<std::string, std::less<>> conflicts; // paths of arrays
};

} // namespace Repository
