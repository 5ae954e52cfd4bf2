#include "repository/merge/SequenceDifference.h"

#include <algorithm>
#include <dtl/dtl.hpp>
#include <unordered_map>

namespace Repository {

namespace {

// An item that each of two sequences has once.
struct Anchor
{
    std::size_t before; // its number in the one
    std::size_t after;  // and in the other
};

// Those of the anchors, which come in the order of the one, that are in the order of the other, too, as
// many as can be.
std::vector<Anchor> inOrderOfBoth(const std::vector<Anchor>& anchors)
{
    constexpr std::size_t none = std::size_t(-1);
    std::vector<std::size_t> last; // of each length the anchor that ends a row of it and comes first
    std::vector<std::size_t> previous(anchors.size(), none);
    for (std::size_t i = 0; i < anchors.size(); ++i) {
        const auto place =
            std::lower_bound(last.begin(), last.end(), anchors[i].after,
                             [&](std::size_t end, std::size_t after) { return anchors[end].after < after; });
        previous[i] = place == last.begin() ? none : *std::prev(place);
        if (place == last.end())
            last.push_back(i);
        else
            *place = i;
    }
    std::vector<Anchor> row;
    for (std::size_t i = last.empty() ? none : last.back(); i != none; i = previous[i])
        row.push_back(anchors[i]);
    std::reverse(row.begin(), row.end());
    return row;
}

std::vector<Anchor> findAnchors(const Sequence& before, const Sequence& after)
{
    struct Found
    {
        std::size_t counts[2] = {0, 0};
        std::size_t after = 0;
    };
    std::unordered_map<std::string_view, Found> found;
    for (const std::string_view item : before)
        ++found[item].counts[0];
    for (std::size_t i = 0; i < after.size(); ++i) {
        Found& item = found[after[i]];
        ++item.counts[1];
        item.after = i;
    }
    std::vector<Anchor> anchors;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const Found& item = found[before[i]];
        if (item.counts[0] == 1 && item.counts[1] == 1)
            anchors.push_back({i, item.after});
    }
    return inOrderOfBoth(anchors);
}

// Compares items that have little in common: in short ones finds the shortest way, of long ones, where that
// takes the time of both lengths, gives up all.
void appendDifference(std::vector<SequenceStep>& steps, const Sequence& before, const Sequence& after)
{
    constexpr std::size_t mostCompared = 500;
    if (before.size() + after.size() > mostCompared || before.empty() || after.empty()) {
        for (const std::string_view item : before)
            steps.push_back({'-', item});
        for (const std::string_view item : after)
            steps.push_back({'+', item});
        return;
    }
    dtl::Diff<std::string_view, Sequence> difference(before, after);
    difference.compose();
    for (const auto& [item, information] : difference.getSes().getSequence())
        steps.push_back({information.type == dtl::SES_COMMON   ? ' '
                         : information.type == dtl::SES_DELETE ? '-'
                                                               : '+',
                         item});
}

// Compares what is between two anchors, at both ends of which items may be the same.
void appendBetween(std::vector<SequenceStep>& steps, Sequence::const_iterator before,
                   Sequence::const_iterator beforeEnd, Sequence::const_iterator after,
                   Sequence::const_iterator afterEnd)
{
    const auto [headEnd, otherHeadEnd] = std::mismatch(before, beforeEnd, after, afterEnd);
    const auto [tail, otherTail] =
        std::mismatch(std::make_reverse_iterator(beforeEnd), std::make_reverse_iterator(headEnd),
                      std::make_reverse_iterator(afterEnd), std::make_reverse_iterator(otherHeadEnd));
    for (auto item = before; item != headEnd; ++item)
        steps.push_back({' ', *item});
    appendDifference(steps, Sequence(headEnd, tail.base()), Sequence(otherHeadEnd, otherTail.base()));
    for (auto item = tail.base(); item != beforeEnd; ++item)
        steps.push_back({' ', *item});
}

} // namespace

std::vector<SequenceStep> stepsBetween(const Sequence& before, const Sequence& after)
{
    std::vector<SequenceStep> steps;
    auto begin = before.begin();
    auto otherBegin = after.begin();
    for (const Anchor& anchor : findAnchors(before, after)) {
        const auto end = before.begin() + std::ptrdiff_t(anchor.before);
        const auto otherEnd = after.begin() + std::ptrdiff_t(anchor.after);
        appendBetween(steps, begin, end, otherBegin, otherEnd);
        steps.push_back({' ', *end});
        begin = end + 1;
        otherBegin = otherEnd + 1;
    }
    appendBetween(steps, begin, before.end(), otherBegin, after.end());
    // What goes precedes what comes, as people are used to.
    const auto isCommon = [](const SequenceStep& step) { return step.sign == ' '; };
    for (auto step = steps.begin(); step != steps.end();) {
        const auto end = std::find_if(step, steps.end(), isCommon);
        std::stable_partition(step, end, [](const SequenceStep& each) { return each.sign == '-'; });
        step = std::find_if_not(end, steps.end(), isCommon);
    }
    return steps;
}

} // namespace Repository
