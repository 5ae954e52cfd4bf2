#include "repository/merge/ElementOrder.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace Repository {

namespace {

using Fate = ListSide::Fate;
using Numbers = ElementOrder::Numbers;
using NumberSet = std::unordered_set<std::size_t>;

} // namespace

ElementOrder::ElementOrder(const ElementNodes& baseElements, const ElementNodes& mine,
                           const ElementNodes& theirs, const ListSide::CommentTest& myTest,
                           const ListSide::CommentTest& theirTest)
    : base(baseElements), mySide(base, mine, myTest),
      theirSide(base, theirs, [](const ElementNode&, const ElementNode&) { return true; })
{
    auto& [ofBase, ofMine, ofTheirs, merged] = numbers;
    const auto numberOf = [](std::size_t origin, std::size_t fresh) {
        return origin == ListSide::none ? fresh : origin;
    };
    for (std::size_t i = 0; i < base.size(); ++i)
        ofBase.push_back(i);
    for (std::size_t i = 0; i < mine.size(); ++i)
        ofMine.push_back(numberOf(mySide.originOf(i), base.size() + i));
    for (std::size_t i = 0; i < theirs.size(); ++i)
        ofTheirs.push_back(numberOf(theirSide.originOf(i), base.size() + mine.size() + i));
    numberAlike();
    for (std::size_t i = 0; i < theirs.size(); ++i) {
        if (ofTheirs[i] >= base.size())
            newTheirs.emplace(ofTheirs[i], i);
    }
    conflict = clashes(mySide, theirSide, theirTest) || clashes(theirSide, mySide, myTest) || !weave();
    if (conflict)
        giveUp();
}

void ElementOrder::giveUp()
{
    conflict = true;
    numbers[std::size_t(MergeSide::Merged)] = getNumbers(MergeSide::Mine);
}

const ElementNode* ElementOrder::find(MergeSide side, std::size_t number) const
{
    const bool isOld = number < base.size();
    if (side == MergeSide::Base)
        return isOld ? &base[number] : nullptr;
    const ListSide& own = side == MergeSide::Mine ? mySide : theirSide;
    std::size_t place = ListSide::none;
    if (isOld)
        place = own.placeOf(number);
    else if (side == MergeSide::Mine)
        place = number - base.size();
    else if (const auto found = newTheirs.find(number); found != newTheirs.end())
        place = found->second;
    return place < own.getElements().size() ? &own.getElements()[place] : nullptr;
}

MergeSide ElementOrder::getSource(std::size_t number) const
{
    return find(MergeSide::Mine, number) ? MergeSide::Mine : MergeSide::Theirs;
}

// Hunks touch when they lie at one place of the base.
void ElementOrder::numberAlike()
{
    auto first = theirSide.getHunks().begin();
    for (const ListSide::Hunk& hunk : mySide.getHunks()) {
        while (first != theirSide.getHunks().end() && first->end < hunk.begin)
            ++first;
        for (auto other = first; other != theirSide.getHunks().end() && other->begin <= hunk.end; ++other)
            numberAlike(hunk, *other);
    }
}

void ElementOrder::numberAlike(const ListSide::Hunk& hunk, const ListSide::Hunk& other)
{
    auto& [ofBase, ofMine, ofTheirs, merged] = numbers;
    std::size_t next = other.ownBegin;
    for (std::size_t i = hunk.ownBegin; i < hunk.ownEnd; ++i) {
        std::size_t j = next;
        while (j < other.ownEnd && (ofTheirs[j] < ofBase.size() + ofMine.size() ||
                                    theirSide.getElements()[j].content != mySide.getElements()[i].content))
            ++j;
        if (mySide.originOf(i) != ListSide::none || j == other.ownEnd)
            continue;
        ofTheirs[j] = ofMine[i];
        next = j + 1;
    }
}

bool ElementOrder::haveReplacedAlike(std::size_t origin) const
{
    const ListSide::Hunk& one = mySide.hunkOf(origin);
    const ListSide::Hunk& other = theirSide.hunkOf(origin);
    return one.begin == other.begin && one.end == other.end && mySide.newIn(one) == theirSide.newIn(other);
}

bool ElementOrder::clashes(const ListSide& one, const ListSide& other,
                           const ListSide::CommentTest& otherTest) const
{
    for (std::size_t i = 0; i < base.size(); ++i) {
        const Fate fate = one.fateOf(i);
        const Fate otherFate = other.fateOf(i);
        const bool isGone = fate == Fate::Removed || fate == Fate::Replaced || one.mayBeRemoved(i);
        const bool isReplaced = otherFate == Fate::Replaced && !(fate == otherFate && haveReplacedAlike(i));
        if (isGone && (otherFate == Fate::Changed || isReplaced))
            return true;
        if (one.placeOf(i) == ListSide::none && other.placeOf(i) != ListSide::none &&
            !otherTest(base[i], other.getElements()[other.placeOf(i)]))
            return true;
        if (one.isReshaped(i) && otherFate == Fate::Changed &&
            one.getElements()[one.placeOf(i)].content != other.getElements()[other.placeOf(i)].content)
            return true;
    }
    return false;
}

// Theirs, with what went and came here; or mine, with what went and came there, where mine were ordered anew.
bool ElementOrder::weave()
{
    auto& [ofBase, ofMine, ofTheirs, merged] = numbers;
    const NumberSet inMine(ofMine.begin(), ofMine.end());
    const NumberSet inTheirs(ofTheirs.begin(), ofTheirs.end());
    const auto common = [&](const Numbers& own) {
        Numbers found;
        std::copy_if(own.begin(), own.end(), std::back_inserter(found), [&](std::size_t number) {
            return number < base.size() && inMine.count(number) > 0 && inTheirs.count(number) > 0;
        });
        return found;
    };
    const Numbers mine = common(ofMine);
    const Numbers theirs = common(ofTheirs);
    const bool isOnMine = mine != theirs && std::is_sorted(theirs.begin(), theirs.end());
    if (!isOnMine && mine != theirs && !std::is_sorted(mine.begin(), mine.end()))
        return false; // both have ordered them anew
    const Numbers& ground = isOnMine ? ofMine : ofTheirs;
    const Numbers& other = isOnMine ? ofTheirs : ofMine;
    const NumberSet& inGround = isOnMine ? inMine : inTheirs;
    const NumberSet& inOther = isOnMine ? inTheirs : inMine;
    merged = ground;
    const auto isNew = [&](std::size_t number) {
        return number >= base.size() && inGround.count(number) == 0;
    };
    for (std::size_t i = 0; i < other.size(); ++i) {
        const std::size_t begin = i;
        while (i < other.size() && isNew(other[i]))
            ++i;
        if (i > begin && !insert(other, begin, i, !isOnMine))
            return false;
    }
    const auto isGone = [&](std::size_t number) {
        return number < base.size() && inOther.count(number) == 0;
    };
    merged.erase(std::remove_if(merged.begin(), merged.end(), isGone), merged.end());
    return true;
}

// Puts new elements in the place of what they have replaced, else between those that are beside them, theirs
// before mine. False where these are not there any more, or not in this order.
bool ElementOrder::insert(const Numbers& from, std::size_t begin, std::size_t end, bool isMine)
{
    Numbers& merged = numbers[std::size_t(MergeSide::Merged)];
    const bool isFirst = begin == 0;
    const bool isLast = end == from.size();
    const auto previous = isFirst ? merged.end() : std::find(merged.begin(), merged.end(), from[begin - 1]);
    const auto next = isLast ? merged.end() : std::find(merged.begin(), merged.end(), from[end]);
    const bool hasPrevious = previous != merged.end();
    const bool hasNext = next != merged.end();
    if (hasPrevious && hasNext && next < previous)
        return false;
    const auto replaced =
        findReplaced(isMine ? mySide : theirSide, begin, hasPrevious ? previous + 1 : merged.begin(), next);
    auto place = merged.end();
    if (replaced != next)
        place = replaced + 1;
    else if (hasNext && (isMine || !hasPrevious))
        place = next;
    else if (hasPrevious && !(isMine && isLast))
        place = previous + 1;
    else if (isFirst && !isLast)
        place = merged.begin();
    else if (!isLast)
        return false;
    merged.insert(place, from.begin() + std::ptrdiff_t(begin), from.begin() + std::ptrdiff_t(end));
    return true;
}

// The last of some elements that went where a new one of a side came; the end for none.
Numbers::iterator ElementOrder::findReplaced(const ListSide& side, std::size_t element,
                                             Numbers::iterator begin, Numbers::iterator end) const
{
    const auto hunk = std::find_if(side.getHunks().begin(), side.getHunks().end(),
                                   [element](const ListSide::Hunk& each) { return element < each.ownEnd; });
    for (auto found = end; found != begin;) {
        --found;
        if (*found >= hunk->begin && *found < hunk->end && side.placeOf(*found) == ListSide::none)
            return found;
    }
    return end;
}

} // namespace Repository
