#pragma once

#include <string>

namespace Repository {

// The difference between two texts in the unified format with three lines of context, as `patch` takes it;
// empty for equal texts. The name is in both header lines, quoted when it has control characters, quotes
// or backslashes. Its cost is that of the texts and of what
// differs, whether or not that is the shortest way to say it.
std::string unifiedDiff(const std::string& before, const std::string& after, const std::string& name);

} // namespace Repository
