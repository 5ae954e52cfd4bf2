#include "repository/merge/ListArrangement.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/WrittenEntries.h"
#include "repository/merge/EntryList.h"
#include "repository/merge/SequenceDifference.h"

#include <algorithm>

namespace Repository {

using Documents::Document;
using Documents::joinPath;
using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;
using Numbers = ElementOrder::Numbers;

namespace {

using NumberSet = std::unordered_set<std::size_t>;

Sequence sequenceOf(const Numbers& numbers)
{
    Sequence sequence;
    for (const std::size_t& number : numbers)
        sequence.emplace_back(reinterpret_cast<const char*>(&number), sizeof number);
    return sequence;
}

// The merged order, in which what is to go stays behind what it is behind: what comes in its place follows.
Numbers withGoing(const Numbers& present, const Numbers& merged)
{
    const NumberSet wanted(merged.begin(), merged.end());
    Numbers all;
    std::unordered_map<std::size_t, std::size_t> places;
    for (std::size_t i = 0; i < present.size(); ++i)
        places.emplace(present[i], i);
    const auto appendGoing = [&](std::size_t place) {
        for (; place < present.size() && wanted.count(present[place]) == 0; ++place)
            all.push_back(present[place]);
    };
    appendGoing(0);
    for (const std::size_t number : merged) {
        all.push_back(number);
        if (const auto place = places.find(number); place != places.end())
            appendGoing(place->second + 1);
    }
    return all;
}

// Changes one array of a document, and knows which elements are in it.
class ArrayChange
{
public:
    ArrayChange(Document& changed, std::string arrayPath, Numbers presentNumbers)
        : document(changed), path(std::move(arrayPath)), present(std::move(presentNumbers))
    {
    }

    std::string placeOf(std::size_t index) const { return joinPath(path, std::to_string(index)); }

    const Numbers& getPresent() const { return present; }

    // Moves as few as can be.
    bool reorder(const Numbers& wanted)
    {
        NumberSet staying;
        std::size_t origin = 0;
        for (const SequenceStep& step : stepsBetween(sequenceOf(present), sequenceOf(wanted))) {
            if (step.sign == ' ')
                staying.insert(present[origin]);
            origin += step.sign == '+' ? 0U : 1U;
        }
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            if (staying.count(wanted[i]) == 0 && !moveBehind(wanted[i], i == 0 ? nullptr : &wanted[i - 1]))
                return false;
        }
        return present == wanted;
    }

    bool insert(std::size_t index, std::size_t number, const Documents::Excerpt* excerpt,
                const std::vector<Documents::Entry>& entries)
    {
        const bool isWritten =
            excerpt && Documents::insertAsWritten(document, placeOf(index), *excerpt, entries);
        if (!isWritten) {
            const auto inserted = document.insertElement(placeOf(index), entries);
            if (!inserted || !inserted->ok())
                return false;
        }
        present.insert(present.begin() + std::ptrdiff_t(index), number);
        return true;
    }

    bool remove(std::size_t index, bool withComments)
    {
        present.erase(present.begin() + std::ptrdiff_t(index));
        return (withComments ? document.removeExcerpt(placeOf(index)) : document.remove(placeOf(index))).ok();
    }

private:
    bool moveBehind(std::size_t number, const std::size_t* previous)
    {
        const auto placeOfNumber = [this](std::size_t each) {
            return std::size_t(std::find(present.begin(), present.end(), each) - present.begin());
        };
        const std::size_t from = placeOfNumber(number);
        std::size_t to = previous ? placeOfNumber(*previous) + 1 : 0;
        to -= from < to ? 1U : 0U;
        if (from == to)
            return true;
        const auto moved = document.moveElement(placeOf(from), placeOf(to));
        present.erase(present.begin() + std::ptrdiff_t(from));
        present.insert(present.begin() + std::ptrdiff_t(to), number);
        return moved && moved->ok();
    }

    Document& document;
    const std::string path;
    Numbers present;
};

// Whether an array of a document holds what it should; its arrays are still in their old order.
bool holdsElements(const Document& document, const ListPlan& list, MergeSide side)
{
    const auto nodes = readNodes(document, {list.path});
    const auto found = nodes.find(list.path);
    const Numbers& numbers = list.order.getNumbers(MergeSide::Merged);
    const ElementNodes none;
    const ElementNodes& elements = found == nodes.end() ? none : found->second.children;
    return std::equal(elements.begin(), elements.end(), numbers.begin(), numbers.end(),
                      [&](const ElementNode& element, std::size_t number) {
                          const ElementNode* const own = list.order.find(side, number);
                          const ElementNode* const other =
                              own ? own : list.order.find(list.order.getSource(number), number);
                          return other && element.content == other->content;
                      });
}

// All that a document has outside of the arrays is as it was.
bool isSameElsewhere(const EntryList& before, const Document& after, const std::deque<ListPlan>& lists)
{
    std::set<std::string_view> arrays;
    for (const ListPlan& list : lists)
        arrays.insert(list.path);
    const auto isInside = [&arrays](const DocumentChange& change) {
        return forEachAncestor(change.path, [&](std::string_view path) { return arrays.count(path) > 0; });
    };
    const std::vector<DocumentChange> changes = compareDocuments(before, after);
    return std::all_of(changes.begin(), changes.end(), isInside);
}

} // namespace

ListArrangement::ListArrangement(const ListPlans& listPlans, const Document& base, const Document& myDocument,
                                 const Document& theirs)
    : plans(listPlans), known(countComments(base)), mine(countComments(myDocument))
{
    for (const ListPlan& list : plans.getPlans()) {
        takeGoing(list, {&base, &myDocument, &theirs});
        takeComing(list, {&base, &myDocument, &theirs});
    }
}

void ListArrangement::takeComing(const ListPlan& list, const std::array<const Document*, 3>& sides)
{
    for (const std::size_t number : list.order.getNumbers(MergeSide::Merged)) {
        const bool isEverywhere = list.order.find(MergeSide::Base, number) &&
                                  list.order.find(MergeSide::Mine, number) &&
                                  list.order.find(MergeSide::Theirs, number);
        if (isEverywhere)
            continue;
        const MergeSide source = list.order.getSource(number);
        const ElementNode& node = *list.order.find(source, number);
        Element element{sides[std::size_t(source)]->excerpt(node.path), node.entries()};
        if (element.excerpt && source == MergeSide::Mine && !areNew(element.excerpt->above)) {
            const auto left = leftBehind.find({&list, element.excerpt->above});
            if (left == leftBehind.end())
                element.excerpt->above.clear(); // they are at what they were at
            else
                goingWithComments.insert(Key(&list, left->second));
        }
        coming.emplace(Key(&list, number), std::move(element));
    }
}

// Comments above an element that I have taken out go with it when they have gone here, too, or to another
// one.
void ListArrangement::takeGoing(const ListPlan& list, const std::array<const Document*, 3>& sides)
{
    for (const std::size_t number : list.order.getNumbers(MergeSide::Base)) {
        const ElementNode* const there = list.order.find(MergeSide::Theirs, number);
        if (!there || list.order.find(MergeSide::Mine, number))
            continue;
        const auto was = sides[0]->excerpt(list.order.find(MergeSide::Base, number)->path);
        const auto is = sides[2]->excerpt(there->path);
        if (!was || !is || is->above != was->above)
            continue;
        if (areGone(was->above))
            goingWithComments.insert(Key(&list, number));
        else
            leftBehind.emplace(std::pair(&list, was->above), number);
    }
}

bool ListArrangement::areNew(const std::string& comments) const
{
    const CommentCounts lines = countLines(comments);
    return std::any_of(lines.begin(), lines.end(), [this](const auto& line) {
        return countIn(mine, line.first) > countIn(known, line.first);
    });
}

bool ListArrangement::areGone(const std::string& comments) const
{
    const CommentCounts lines = countLines(comments);
    return !lines.empty() && std::all_of(lines.begin(), lines.end(), [this](const auto& line) {
        return countIn(mine, line.first) < countIn(known, line.first);
    });
}

bool ListArrangement::apply(Document& document, MergeSide side) const
{
    const EntryList before(document);
    for (const ListPlan& list : plans.getPlans()) {
        if (list.changes(side) && !arrange(document, list, side))
            return false;
    }
    return isSameElsewhere(before, document, plans.getPlans());
}

bool ListArrangement::arrange(Document& document, const ListPlan& list, MergeSide side) const
{
    const Numbers& merged = list.order.getNumbers(MergeSide::Merged);
    const NumberSet wanted(merged.begin(), merged.end());
    ArrayChange array(document, list.path, list.order.getNumbers(side));
    const NumberSet old(array.getPresent().begin(), array.getPresent().end());
    const Numbers all = withGoing(array.getPresent(), merged);
    Numbers staying;
    std::copy_if(all.begin(), all.end(), std::back_inserter(staying),
                 [&old](std::size_t number) { return old.count(number) > 0; });
    if (!array.reorder(staying))
        return false;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (old.count(all[i]) > 0)
            continue;
        const Element& element = coming.at(Key(&list, all[i]));
        if (!array.insert(i, all[i], element.excerpt ? &*element.excerpt : nullptr, element.entries))
            return false;
    }
    for (std::size_t i = all.size(); i-- > 0;) {
        if (wanted.count(all[i]) == 0 &&
            !array.remove(i, side == MergeSide::Theirs && goingWithComments.count(Key(&list, all[i])) > 0))
            return false;
    }
    return holdsElements(document, list, side) &&
           (!list.texts || document.set(list.path, Value{Type::StringList, *list.texts}).ok());
}

} // namespace Repository
