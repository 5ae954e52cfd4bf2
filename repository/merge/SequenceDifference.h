#pragma once

#include <string_view>
#include <vector>

namespace Repository {

// Items that somebody else keeps, as the lines of a text.
using Sequence = std::vector<std::string_view>;

// An item on the way from one sequence to another: ' ' is in both, '-' goes, '+' comes.
struct SequenceStep
{
    char sign;
    std::string_view item;
};

// The way from one to the other. What goes precedes what comes in its place. Its cost is that of the items
// and of what differs, whether or not that is the shortest way.
std::vector<SequenceStep> stepsBetween(const Sequence& before, const Sequence& after);

} // namespace Repository
