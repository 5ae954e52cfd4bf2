#include "repository/merge/UnifiedDiff.h"

#include <algorithm>
#include <dtl/dtl.hpp>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Repository {

namespace {

using Lines = std::vector<std::string_view>;

// Each with its line end; the last one may have none.
Lines linesOf(std::string_view text)
{
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

struct Step
{
    char sign; // ' ', '-' or '+'
    std::string_view line;
};

// A line that each of two texts has once.
struct Anchor
{
    std::size_t before; // its number in the one
    std::size_t after;  // and in the other
};

// Those of the anchors, which come in the order of the one text, that are in the order of the other, too, as
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

std::vector<Anchor> findAnchors(const Lines& before, const Lines& after)
{
    struct Found
    {
        std::size_t counts[2] = {0, 0};
        std::size_t after = 0;
    };
    std::unordered_map<std::string_view, Found> found;
    for (const std::string_view line : before)
        ++found[line].counts[0];
    for (std::size_t i = 0; i < after.size(); ++i) {
        Found& line = found[after[i]];
        ++line.counts[1];
        line.after = i;
    }
    std::vector<Anchor> anchors;
    for (std::size_t i = 0; i < before.size(); ++i) {
        const Found& line = found[before[i]];
        if (line.counts[0] == 1 && line.counts[1] == 1)
            anchors.push_back({i, line.after});
    }
    return inOrderOfBoth(anchors);
}

// Compares lines that have little in common: in short ones finds the shortest way, of long ones, where that
// takes the time of both lengths, gives up all.
void appendDifference(std::vector<Step>& steps, const Lines& before, const Lines& after)
{
    constexpr std::size_t mostCompared = 500;
    if (before.size() + after.size() > mostCompared || before.empty() || after.empty()) {
        for (const std::string_view line : before)
            steps.push_back({'-', line});
        for (const std::string_view line : after)
            steps.push_back({'+', line});
        return;
    }
    dtl::Diff<std::string_view, Lines> difference(before, after);
    difference.compose();
    for (const auto& [line, information] : difference.getSes().getSequence())
        steps.push_back({information.type == dtl::SES_COMMON   ? ' '
                         : information.type == dtl::SES_DELETE ? '-'
                                                               : '+',
                         line});
}

// Compares what is between two anchors, at both ends of which lines may be the same.
void appendBetween(std::vector<Step>& steps, Lines::const_iterator before, Lines::const_iterator beforeEnd,
                   Lines::const_iterator after, Lines::const_iterator afterEnd)
{
    const auto [headEnd, otherHeadEnd] = std::mismatch(before, beforeEnd, after, afterEnd);
    const auto [tail, otherTail] =
        std::mismatch(std::make_reverse_iterator(beforeEnd), std::make_reverse_iterator(headEnd),
                      std::make_reverse_iterator(afterEnd), std::make_reverse_iterator(otherHeadEnd));
    for (auto line = before; line != headEnd; ++line)
        steps.push_back({' ', *line});
    appendDifference(steps, Lines(headEnd, tail.base()), Lines(otherHeadEnd, otherTail.base()));
    for (auto line = tail.base(); line != beforeEnd; ++line)
        steps.push_back({' ', *line});
}

// The way from one to the other, line by line. Its cost is that of the lines.
std::vector<Step> stepsBetween(const Lines& before, const Lines& after)
{
    std::vector<Step> steps;
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
    const auto isCommon = [](const Step& step) { return step.sign == ' '; };
    for (auto step = steps.begin(); step != steps.end();) {
        const auto end = std::find_if(step, steps.end(), isCommon);
        std::stable_partition(step, end, [](const Step& each) { return each.sign == '-'; });
        step = std::find_if_not(end, steps.end(), isCommon);
    }
    return steps;
}

// A range of lines in a hunk's header; the line before it where it is empty.
std::string range(std::size_t first, std::size_t count)
{
    return std::to_string(count == 0 ? first : first + 1) + ',' + std::to_string(count);
}

// Finds the hunks on the way from one text to another, and counts the lines of the two on.
class Hunks
{
public:
    explicit Hunks(const std::vector<Step>& allSteps) : steps(allSteps) {}

    // Calls back with the steps of each hunk, from begin to end, and its text.
    void
    visit(const std::function<void(std::size_t begin, std::size_t end, const std::string& text)>& visitor)
    {
        constexpr std::size_t context = 3;
        std::size_t at = 0;
        while (true) {
            std::size_t change = at;
            while (change < steps.size() && steps[change].sign == ' ')
                ++change;
            if (change == steps.size())
                return;
            const std::size_t begin = change - std::min(context, change - at);
            // A hunk ends where more than two contexts of common lines follow.
            std::size_t end = change;
            std::size_t common = 0;
            for (; end < steps.size() && common <= 2 * context; ++end)
                common = steps[end].sign == ' ' ? common + 1 : 0;
            end -= common - std::min(common, context);
            skip(at, begin);
            visitor(begin, end, write(begin, end));
            at = end;
        }
    }

private:
    void skip(std::size_t begin, std::size_t end)
    {
        lineBefore += end - begin;
        lineAfter += end - begin;
    }

    std::string write(std::size_t begin, std::size_t end)
    {
        std::string body;
        std::size_t counts[2] = {0, 0};
        for (std::size_t i = begin; i < end; ++i) {
            counts[0] += steps[i].sign == '+' ? 0U : 1U;
            counts[1] += steps[i].sign == '-' ? 0U : 1U;
            body += steps[i].sign;
            body += steps[i].line;
            if (steps[i].line.back() != '\n')
                body += "\n\\ No newline at end of file\n";
        }
        std::string head =
            "@@ -" + range(lineBefore, counts[0]) + " +" + range(lineAfter, counts[1]) + " @@\n";
        lineBefore += counts[0];
        lineAfter += counts[1];
        return head + body;
    }

    const std::vector<Step>& steps;
    std::size_t lineBefore = 0; // lines of the text that lie before the next step
    std::size_t lineAfter = 0;
};

// A name that would not stay on its line is quoted, as patch takes it.
std::string headerName(const std::string& name)
{
    const auto isSpecial = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || byte == 0x7F || c == '"' || c == '\\';
    };
    if (std::none_of(name.begin(), name.end(), isSpecial))
        return name;
    std::string quoted(1, '"');
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\')
            (quoted += '\\') += c;
        else if (isSpecial(c))
            quoted.append(
                {'\\', char('0' + (byte >> 6)), char('0' + ((byte >> 3) & 7)), char('0' + (byte & 7))});
        else
            quoted += c;
    }
    return quoted += '"';
}

} // namespace

std::string unifiedDiff(const std::string& before, const std::string& after, const std::string& name)
{
    if (before == after)
        return {};
    const std::vector<Step> steps = stepsBetween(linesOf(before), linesOf(after));
    const std::string header = headerName(name);
    std::string diff = "--- " + header + "\n+++ " + header + '\n';
    Hunks(steps).visit([&diff](std::size_t, std::size_t, const std::string& text) { diff += text; });
    return diff;
}

std::string withHunks(const std::string& before, const std::string& after, const HunkChoice& isChosen)
{
    const std::vector<Step> steps = stepsBetween(linesOf(before), linesOf(after));
    std::string text;
    std::size_t written = 0;
    const auto append = [&](std::size_t end, char left) { // without the lines of this sign
        for (; written < end; ++written) {
            if (steps[written].sign != left)
                text += steps[written].line;
        }
    };
    Hunks(steps).visit([&](std::size_t begin, std::size_t end, const std::string& hunk) {
        append(begin, '-');
        append(end, isChosen(hunk) ? '-' : '+');
    });
    append(steps.size(), '-');
    return text;
}

LineBefore lineBefore(const std::string& before, const std::string& after, std::size_t line)
{
    std::size_t lineBefore = 1; // the next of each
    std::size_t lineAfter = 1;
    std::size_t replaced = 0; // of the lines that went just before
    for (const Step& step : stepsBetween(linesOf(before), linesOf(after))) {
        if (step.sign == ' ')
            replaced = 0;
        if (step.sign != '-' && lineAfter == line)
            return {lineBefore - replaced, step.sign == ' ' || replaced > 0};
        if (step.sign == '+') {
            replaced -= std::min<std::size_t>(replaced, 1);
            ++lineAfter;
        } else if (step.sign == '-') {
            ++replaced;
            ++lineBefore;
        } else {
            ++lineBefore;
            ++lineAfter;
        }
    }
    return {lineBefore, false};
}

} // namespace Repository
