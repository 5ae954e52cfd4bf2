#include "repository/merge/ListSide.h"

#include "repository/documents/common/ComponentCodec.h"

#include <algorithm>
#include <unordered_map>

namespace Repository {

using Documents::splitLast;

namespace {

constexpr std::size_t mostCompared = 10000; // pairs of elements

// By content; the nodes must stay.
Sequence sequenceOf(const ElementNodes& nodes)
{
    Sequence sequence;
    for (const ElementNode& node : nodes)
        sequence.emplace_back(reinterpret_cast<const char*>(&node.content), sizeof node.content);
    return sequence;
}

// Of the member that comes first, by which people tell the elements of most lists; 0 where it has none.
std::uint64_t headOf(const ElementNode& node)
{
    return node.isArray || node.children.empty() || !node.children.front().children.empty()
               ? 0
               : std::hash<std::string>()(std::string(splitLast(node.children.front().path).last)) ^
                     node.children.front().content;
}

// Whether they have the same members, or as many elements.
bool haveSameShape(const ElementNode& one, const ElementNode& other)
{
    const auto haveSameName = [](const ElementNode& a, const ElementNode& b) {
        return splitLast(a.path).last == splitLast(b.path).last;
    };
    return one.isArray == other.isArray && one.value.type == other.value.type &&
           std::is_permutation(one.children.begin(), one.children.end(), other.children.begin(),
                               other.children.end(), haveSameName);
}

// The numbers from begin to end of those that have none.
std::vector<std::size_t> withoutPartner(const std::vector<std::size_t>& partners, std::size_t begin,
                                        std::size_t end)
{
    std::vector<std::size_t> found;
    for (std::size_t i = begin; i < end; ++i) {
        if (partners[i] == ListSide::none)
            found.push_back(i);
    }
    return found;
}

bool isLeaf(const ElementNode& node)
{
    return node.children.empty() && node.value.type != FrameworkCore::Values::Type::Group;
}

} // namespace

ListSide::ListSide(const ElementNodes& baseElements, const ElementNodes& ownElements, CommentTest test)
    : base(baseElements), own(ownElements), haveSameComments(std::move(test)), origins(own.size(), none),
      places(base.size(), none), fates(base.size(), Fate::Kept), uncertain(base.size(), false),
      reshaped(base.size(), false)
{
    for (const ElementNode& node : base)
        ++heads[headOf(node)].inBase;
    for (const ElementNode& node : own)
        ++heads[headOf(node)].inOwn;
    align();
    pairMoved();
    for (const Hunk& hunk : hunks)
        pairChanged(hunk);
    const std::vector<std::size_t> gone = withoutPartner(places, 0, base.size());
    const std::vector<std::size_t> come = withoutPartner(origins, 0, own.size());
    if (gone.size() * come.size() <= mostCompared)
        pairSimilar(gone, come, false); // moved and changed
    for (const Hunk& hunk : hunks)
        pairReshaped(hunk);
    for (const Hunk& hunk : hunks)
        judge(hunk);
}

void ListSide::pair(std::size_t origin, std::size_t element)
{
    origins[element] = origin;
    places[origin] = element;
}

// Finds the elements that are the same, in the same order. Where as many are as could be, each has stayed in
// its place.
void ListSide::align()
{
    const Sequence before = sequenceOf(base);
    const Sequence after = sequenceOf(own);
    std::vector<SequenceStep> steps = stepsBetween(before, after);
    const auto common =
        std::count_if(steps.begin(), steps.end(), [](const auto& step) { return step.sign == ' '; });
    std::size_t inPlace = 0;
    for (std::size_t i = 0; i < before.size() && before.size() == after.size(); ++i)
        inPlace += before[i] == after[i] ? 1U : 0U;
    if (before.size() == after.size() && inPlace >= std::size_t(common)) {
        steps.clear();
        for (std::size_t i = 0; i < before.size(); ++i) {
            steps.push_back({before[i] == after[i] ? ' ' : '-', before[i]});
            if (before[i] != after[i])
                steps.push_back({'+', after[i]});
        }
    }
    takeSteps(steps);
}

void ListSide::takeSteps(const std::vector<SequenceStep>& steps)
{
    std::size_t origin = 0;
    std::size_t element = 0;
    bool isOpen = false;
    for (const SequenceStep& step : steps) {
        if (step.sign == ' ') {
            pair(origin++, element++);
            isOpen = false;
            continue;
        }
        if (!isOpen)
            hunks.push_back({origin, origin, element, element});
        isOpen = true;
        origin += step.sign == '-' ? 1U : 0U;
        element += step.sign == '+' ? 1U : 0U;
        hunks.back().end = origin;
        hunks.back().ownEnd = element;
    }
}

// One that went and came as it is, and only once.
void ListSide::pairMoved()
{
    struct Found
    {
        std::size_t counts[2] = {0, 0};
        std::size_t origin = 0;
        std::size_t element = 0;
    };
    std::unordered_map<std::uint64_t, Found> found;
    for (const Hunk& hunk : hunks) {
        for (std::size_t i = hunk.begin; i < hunk.end; ++i) {
            Found& each = found[base[i].content];
            ++each.counts[0];
            each.origin = i;
        }
        for (std::size_t i = hunk.ownBegin; i < hunk.ownEnd; ++i) {
            Found& each = found[own[i].content];
            ++each.counts[1];
            each.element = i;
        }
    }
    for (const auto& [content, each] : found) {
        if (each.counts[0] == 1 && each.counts[1] == 1 &&
            haveSameComments(base[each.origin], own[each.element]))
            pair(each.origin, each.element);
    }
}

// Values of which as many went as came, and what else is like no other one.
void ListSide::pairChanged(const Hunk& hunk)
{
    const std::vector<std::size_t> gone = withoutPartner(places, hunk.begin, hunk.end);
    const std::vector<std::size_t> come = withoutPartner(origins, hunk.ownBegin, hunk.ownEnd);
    const bool isShort = gone.size() * come.size() <= mostCompared;
    for (std::size_t i = 0; i < gone.size() && gone.size() == come.size(); ++i) {
        const bool areLeaves = isLeaf(base[gone[i]]) && isLeaf(own[come[i]]);
        if ((areLeaves || (!isShort && countCommon(gone[i], come[i]) > 0)) &&
            haveSameComments(base[gone[i]], own[come[i]]))
            pair(gone[i], come[i]);
    }
    if (isShort)
        pairSimilar(gone, come, gone.size() == come.size());
}

// What has stayed in its place, whatever it has become.
void ListSide::pairReshaped(const Hunk& hunk)
{
    const std::vector<std::size_t> gone = withoutPartner(places, hunk.begin, hunk.end);
    const std::vector<std::size_t> come = withoutPartner(origins, hunk.ownBegin, hunk.ownEnd);
    for (std::size_t i = 0; i < gone.size() && gone.size() == come.size(); ++i) {
        if (haveSameShape(base[gone[i]], own[come[i]]) && haveSameComments(base[gone[i]], own[come[i]])) {
            pair(gone[i], come[i]);
            reshaped[gone[i]] = true;
        }
    }
}

// Those that have more in common with each other than with any other one; of as many, those in one place.
void ListSide::pairSimilar(const std::vector<std::size_t>& gone, const std::vector<std::size_t>& come,
                           bool areInPlace)
{
    struct Best
    {
        std::size_t score = 0;
        std::size_t partner = none; // while it is the only one

        void take(std::size_t other, std::size_t otherScore)
        {
            if (otherScore > 0 && otherScore >= score)
                *this = {otherScore, otherScore > score ? other : none};
        }
    };
    std::vector<Best> ofGone(gone.size());
    std::vector<Best> ofCome(come.size());
    for (std::size_t i = 0; i < gone.size(); ++i) {
        for (std::size_t j = 0; j < come.size(); ++j) {
            const std::size_t common = countCommon(gone[i], come[j]);
            const std::size_t score = 2 * common + (common > 0 && i == j && areInPlace ? 1 : 0);
            ofGone[i].take(j, score);
            ofCome[j].take(i, score);
        }
    }
    for (std::size_t i = 0; i < gone.size(); ++i) {
        const std::size_t partner = ofGone[i].partner;
        if (partner != none && ofCome[partner].partner == i &&
            haveSameComments(base[gone[i]], own[come[partner]]))
            pair(gone[i], come[partner]);
    }
}

std::size_t ListSide::countCommon(std::size_t origin, std::size_t element) const
{
    const ElementNode& one = base[origin];
    const ElementNode& other = own[element];
    if (isLeaf(one) || isLeaf(other) || one.isArray != other.isArray)
        return 0;
    return std::max<std::size_t>(countCommonValues(one, other), haveName(one, other) ? 1 : 0);
}

// Whether they begin with the same value, and no other element does.
bool ListSide::haveName(const ElementNode& one, const ElementNode& other) const
{
    const std::uint64_t head = headOf(one);
    const auto found = heads.find(head);
    return head != 0 && head == headOf(other) && found != heads.end() && found->second.inBase == 1 &&
           found->second.inOwn == 1;
}

void ListSide::judge(const Hunk& hunk)
{
    const bool hasNew = !newIn(hunk).empty();
    std::size_t first = hunk.begin; // of those that went side by side
    for (std::size_t i = hunk.begin; i < hunk.end; ++i) {
        const std::size_t place = places[i];
        if (place == none) {
            fates[i] = hasNew ? Fate::Replaced : Fate::Removed;
            continue;
        }
        fates[i] = own[place].content == base[i].content ? Fate::Kept : Fate::Changed;
        if (!hasNew)
            markUncertain(first, i);
        first = i + 1;
    }
    if (!hasNew)
        markUncertain(first, hunk.end);
}

// What went between two others may as well be some places on where the same follows, or before.
void ListSide::markUncertain(std::size_t begin, std::size_t end)
{
    if (begin == end)
        return;
    const std::size_t length = end - begin;
    const auto isSame = [this](std::size_t i, std::size_t j) { return base[i].content == base[j].content; };
    while (begin > 0 && isSame(begin - 1, begin - 1 + length))
        --begin;
    while (end < base.size() && isSame(end, end - length))
        ++end;
    std::fill(uncertain.begin() + std::ptrdiff_t(begin), uncertain.begin() + std::ptrdiff_t(end), true);
}

const ListSide::Hunk& ListSide::hunkOf(std::size_t origin) const
{
    return *std::upper_bound(hunks.begin(), hunks.end(), origin,
                             [](std::size_t place, const Hunk& hunk) { return place < hunk.end; });
}

std::vector<std::uint64_t> ListSide::newIn(const Hunk& hunk) const
{
    std::vector<std::uint64_t> contents;
    for (std::size_t i = hunk.ownBegin; i < hunk.ownEnd; ++i) {
        if (origins[i] == none)
            contents.push_back(own[i].content);
    }
    return contents;
}

} // namespace Repository
