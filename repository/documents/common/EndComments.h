#pragma once

#include <cstddef>
#include <string_view>

namespace Repository::Documents {

// Which of the comments below the last entry of a section or table belong to it, as a person reads them:
// those right below that entry, and further down those with entries that are commented out. What is right
// above the next header belongs to that, unless it is right below the entry, too, where commented entries do
// not; and a header that is commented out begins another section.

// Where they end in the blank lines and comments below the entry; 0 without any. The signs begin comments.
std::size_t findEndComments(std::string_view trivia, std::string_view signs, bool hasHeaderBelow);

} // namespace Repository::Documents
