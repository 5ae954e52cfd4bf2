#pragma once

#include <functional>
#include <optional>
#include <string>

namespace Repository {

// The difference between two texts in the unified format with three lines of context, as `patch` takes it;
// empty for equal texts. The name is in both header lines, quoted when it has control characters, quotes
// or backslashes. Its cost is that of the texts and of what
// differs, whether or not that is the shortest way to say it.
std::string unifiedDiff(const std::string& before, const std::string& after, const std::string& name);

// The text that has of the hunks of that diff only the chosen ones. A hunk is told by its text, from "@@" on.
using HunkChoice = std::function<bool(const std::string& hunk)>;
std::string withHunks(const std::string& before, const std::string& after, const HunkChoice& isChosen);

// Where a line of the text after, both from 1, is in the text before: itself or what it has replaced, or
// else, where it is new, the line that it comes before.
struct LineBefore
{
    std::size_t line;
    bool isThere;
};
LineBefore lineBefore(const std::string& before, const std::string& after, std::size_t line);

} // namespace Repository
