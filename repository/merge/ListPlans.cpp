#include "repository/merge/ListPlans.h"

#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/WrittenEntries.h"

#include <algorithm>

namespace Repository {

using Documents::joinPath;
using Documents::splitLast;
using FrameworkCore::Values::Type;

namespace {

using Members = std::unordered_map<std::string_view, const ElementNode*>;

Members membersOf(const ElementNode& node)
{
    Members members;
    for (const ElementNode& child : node.children) {
        if (!child.isCopy)
            members.emplace(splitLast(child.path).last, &child);
    }
    return members;
}

const ElementNode* memberIn(const Members& members, std::string_view name)
{
    const auto found = members.find(name);
    return found == members.end() ? nullptr : found->second;
}

bool isListOfTexts(const ElementNode& node)
{
    return node.value.type == Type::StringList;
}

const std::string& textOf(const ElementNode& element)
{
    return std::get<std::string>(element.value.data);
}

bool isChanged(const ElementNode* before, const ElementNode* after)
{
    return before && after ? before->content != after->content : before != after;
}

} // namespace

bool ListPlan::changes(MergeSide side) const
{
    const ElementOrder::Numbers& merged = order.getNumbers(MergeSide::Merged);
    if (order.getNumbers(side) != merged)
        return true;
    for (std::size_t i = 0; texts && i < merged.size(); ++i) {
        if (textOf(*order.find(side, merged[i])) != (*texts)[i])
            return true;
    }
    return false;
}

ListPlans::ListPlans(const Sides& documents, const std::vector<DocumentChange>& myChanges)
    : sides(documents), textSize(sides[0]->getBytes().size())
{
    std::set<std::string> tops;
    for (const DocumentChange& change : myChanges) {
        std::optional<std::string_view> top;
        forEachAncestor(change.path, [&](std::string_view path) {
            const auto isArray = [path](const auto* side) { return side->isArray(path).value_or(false); };
            if (std::all_of(sides.begin(), sides.end(), isArray))
                top = path;
            return false;
        });
        if (top)
            tops.emplace(*top);
    }
    for (std::size_t side = 0; side < sides.size() && !tops.empty(); ++side)
        nodesOfSides[side] = readNodes(*sides[side], tops);
    for (const std::string& top : tops)
        planArray(top, {nodesOfSides[0][top], nodesOfSides[1][top], nodesOfSides[2][top]}, false);
    const auto isNeeded = [](const ListPlan& list) {
        return list.changes(MergeSide::Base) || list.changes(MergeSide::Mine) ||
               list.changes(MergeSide::Theirs);
    };
    if (conflicts.empty() && std::none_of(plans.begin(), plans.end(), isNeeded))
        plans.clear();
    for (const ListPlan& list : plans)
        plansByPath.emplace(list.path, &list);
}

// Gives whether the two sides disagree on something in it.
bool ListPlans::plan(const std::string& path, const Nodes& nodes, bool isGivenUp)
{
    const auto& [base, mine, theirs] = nodes;
    if (mine.content == base.content)
        return false;
    if (base.isArray && mine.isArray && theirs.isArray)
        return planArray(path, nodes, isGivenUp);
    return planMembers(path, nodes, isGivenUp);
}

bool ListPlans::planMembers(const std::string& path, const Nodes& nodes, bool isGivenUp)
{
    const auto& [base, mine, theirs] = nodes;
    bool disagree = !isSame(base.value, mine.value) && !isSame(base.value, theirs.value) &&
                    !isSame(mine.value, theirs.value);
    const Members old = membersOf(base);
    const Members other = membersOf(theirs);
    const Members own = membersOf(mine);
    for (const ElementNode& member : mine.children) {
        const std::string_view name = splitLast(member.path).last;
        if (member.isCopy)
            continue;
        const ElementNode* const was = memberIn(old, name);
        const ElementNode* const there = memberIn(other, name);
        if (was && there)
            disagree = plan(joinPath(path, name), {*was, member, *there}, isGivenUp) || disagree;
        else
            disagree =
                (isChanged(was, &member) && isChanged(was, there) && isChanged(&member, there)) || disagree;
    }
    for (const ElementNode& member : base.children) {
        const std::string_view name = splitLast(member.path).last;
        const ElementNode* const there = memberIn(other, name);
        disagree = disagree || (!member.isCopy && !memberIn(own, name) && there && isChanged(&member, there));
    }
    return disagree;
}

// A list of texts of which only I have changed some goes by its value, and its spelling with it.
bool ListPlans::goesByValue(const ListPlan& list, const Nodes& nodes) const
{
    return isListOfTexts(nodes.base) && isListOfTexts(nodes.mine) &&
           list.order.getNumbers(MergeSide::Mine) == list.order.getNumbers(MergeSide::Base) &&
           nodes.theirs.content == nodes.base.content &&
           sides[0]->spell(nodes.base.path) == sides[2]->spell(nodes.theirs.path);
}

bool ListPlans::planArray(const std::string& path, const Nodes& nodes, bool isGivenUp)
{
    const std::size_t first = plans.size();
    const auto keepsComments = [this](MergeSide side) {
        return [this, own = sides[std::size_t(side)]](const auto& before, const auto& after) {
            return !Documents::canTakeExcerpts(++comparedComments, textSize) ||
                   sides[0]->comment(before.path) == own->comment(after.path);
        };
    };
    plans.push_back({path,
                     ElementOrder(nodes.base.children, nodes.mine.children, nodes.theirs.children,
                                  keepsComments(MergeSide::Mine), keepsComments(MergeSide::Theirs)),
                     {}});
    ListPlan& list = plans.back();
    if (goesByValue(list, nodes)) {
        plans.pop_back();
        return false;
    }
    if (isGivenUp)
        list.order.giveUp();
    const bool isOfTexts =
        isListOfTexts(nodes.base) && isListOfTexts(nodes.mine) && isListOfTexts(nodes.theirs);
    const bool disagree = isOfTexts ? !isGivenUp && mergeTexts(list) : planElements(list, isGivenUp);
    if (isGivenUp)
        return true;
    // What is in conflict is told by its path, which has to be the same in the file.
    const bool isLost =
        list.order.isInConflict() || (disagree && list.changes(MergeSide::Theirs) && !isOfTexts);
    if (!isLost)
        return disagree;
    while (plans.size() > first)
        plans.pop_back();
    conflicts.insert(path);
    planArray(path, nodes, true);
    return true;
}

bool ListPlans::planElements(const ListPlan& list, bool isGivenUp)
{
    bool disagree = false;
    std::size_t place = 0;
    for (const std::size_t number : list.order.getNumbers(MergeSide::Merged)) {
        const std::string path = joinPath(list.path, std::to_string(place++));
        const ElementNode* const base = list.order.find(MergeSide::Base, number);
        const ElementNode* const mine = list.order.find(MergeSide::Mine, number);
        const ElementNode* const theirs = list.order.find(MergeSide::Theirs, number);
        if (base && mine && theirs)
            disagree = plan(path, {*base, *mine, *theirs}, isGivenUp) || disagree;
    }
    return disagree;
}

// A text that both sides have changed leaves the list in conflict as a whole.
bool ListPlans::mergeTexts(ListPlan& list)
{
    if (list.order.isInConflict())
        return true;
    std::vector<std::string> texts;
    for (const std::size_t number : list.order.getNumbers(MergeSide::Merged)) {
        const ElementNode* const base = list.order.find(MergeSide::Base, number);
        const ElementNode* const mine = list.order.find(MergeSide::Mine, number);
        const ElementNode* const theirs = list.order.find(MergeSide::Theirs, number);
        if (mine && theirs && isChanged(base, mine) && isChanged(base, theirs) && isChanged(mine, theirs))
            return true;
        const ElementNode& text = !mine || (theirs && !isChanged(base, mine)) ? *theirs : *mine;
        texts.push_back(textOf(text));
    }
    list.texts = std::move(texts);
    return false;
}

const std::string* ListPlans::findConflict(std::string_view path) const
{
    const std::string* found = nullptr;
    forEachAncestor(path, [&](std::string_view ancestor) {
        const auto conflict = conflicts.find(ancestor);
        found = conflict == conflicts.end() ? found : &*conflict;
        return false;
    });
    return found;
}

std::string ListPlans::translated(std::string_view path, MergeSide from, MergeSide to) const
{
    std::string merged; // the path so far, by which the plans are known
    std::string result;
    while (!path.empty()) {
        const std::size_t end = path.find('.');
        std::string component(path.substr(0, end));
        std::string inMerged = component;
        const auto list = plansByPath.find(merged);
        if (const auto place = Documents::readIndex(component); place && list != plansByPath.end()) {
            const ElementOrder& order = list->second->order;
            const ElementOrder::Numbers& numbers = order.getNumbers(from);
            const auto placeIn = [&](MergeSide side) {
                const ElementOrder::Numbers& others = order.getNumbers(side);
                const auto found = *place < numbers.size()
                                       ? std::find(others.begin(), others.end(), numbers[*place])
                                       : others.end();
                return found == others.end() ? std::string() : std::to_string(found - others.begin());
            };
            component = placeIn(to);
            inMerged = placeIn(MergeSide::Merged);
            if (component.empty())
                return result;
        }
        merged = joinPath(merged, inMerged);
        result = joinPath(result, component);
        path = end == std::string_view::npos ? std::string_view() : path.substr(end + 1);
    }
    return result;
}

} // namespace Repository
