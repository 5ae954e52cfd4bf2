#include "repository/merge/UnifiedDiff.h"

#include "repository/merge/SequenceDifference.h"

#include <algorithm>

namespace Repository {

namespace {

using Lines = Sequence;
using Step = SequenceStep;

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
            body += steps[i].item;
            if (steps[i].item.back() != '\n')
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
                text += steps[written].item;
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
