#include "repository/merge/UnifiedDiff.h"

#include <algorithm>
#include <dtl/dtl.hpp>
#include <string_view>
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

// The way from one to the other, line by line.
std::vector<Step> stepsBetween(const Lines& before, const Lines& after)
{
    std::vector<Step> steps;
    const auto [headEnd, otherHeadEnd] =
        std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    const auto [tail, otherTail] = std::mismatch(before.rbegin(), std::make_reverse_iterator(headEnd),
                                                 after.rbegin(), std::make_reverse_iterator(otherHeadEnd));
    for (auto line = before.begin(); line != headEnd; ++line)
        steps.push_back({' ', *line});
    dtl::Diff<std::string_view, Lines> difference(Lines(headEnd, tail.base()),
                                                  Lines(otherHeadEnd, otherTail.base()));
    difference.compose();
    for (const auto& [line, information] : difference.getSes().getSequence())
        steps.push_back({information.type == dtl::SES_COMMON   ? ' '
                         : information.type == dtl::SES_DELETE ? '-'
                                                               : '+',
                         line});
    for (auto line = tail.base(); line != before.end(); ++line)
        steps.push_back({' ', *line});
    // What goes precedes what comes, as people are used to.
    const auto isCommon = [](const Step& step) { return step.sign == ' '; };
    for (auto begin = steps.begin(); begin != steps.end();) {
        const auto end = std::find_if(begin, steps.end(), isCommon);
        std::stable_partition(begin, end, [](const Step& step) { return step.sign == '-'; });
        begin = std::find_if_not(end, steps.end(), isCommon);
    }
    return steps;
}

// A range of lines in a hunk's header; the line before it where it is empty.
std::string range(std::size_t first, std::size_t count)
{
    return std::to_string(count == 0 ? first : first + 1) + ',' + std::to_string(count);
}

// Writes the steps from one to another as a hunk; counts the lines of the two texts on.
class Hunks
{
public:
    explicit Hunks(const std::vector<Step>& allSteps) : steps(allSteps) {}

    std::string write()
    {
        constexpr std::size_t context = 3;
        std::size_t at = 0;
        while (true) {
            std::size_t change = at;
            while (change < steps.size() && steps[change].sign == ' ')
                ++change;
            if (change == steps.size())
                return text;
            const std::size_t begin = change - std::min(context, change - at);
            // A hunk ends where more than two contexts of common lines follow.
            std::size_t end = change;
            std::size_t common = 0;
            for (; end < steps.size() && common <= 2 * context; ++end)
                common = steps[end].sign == ' ' ? common + 1 : 0;
            end -= common - std::min(common, context);
            skip(at, begin);
            writeOne(begin, end);
            at = end;
        }
    }

private:
    void skip(std::size_t begin, std::size_t end)
    {
        lineBefore += end - begin;
        lineAfter += end - begin;
    }

    void writeOne(std::size_t begin, std::size_t end)
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
        text += "@@ -" + range(lineBefore, counts[0]) + " +" + range(lineAfter, counts[1]) + " @@\n" + body;
        lineBefore += counts[0];
        lineAfter += counts[1];
    }

    const std::vector<Step>& steps;
    std::string text;
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
    return "--- " + header + "\n+++ " + header + '\n' + Hunks(steps).write();
}

} // namespace Repository
