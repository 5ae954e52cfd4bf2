#pragma once

#include "repository/documents/common/Document.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Entries that come from one document into another of the same type as their author wrote them.

// Whether a document holds these entries at and below a path and no others there, groups and references
// aside. Their paths are relative to it, and their order does not count.
bool holdsEntries(const Document& document, std::string_view path, std::vector<Entry> expected);

// Adds a new entry and all below it; false, with the document as it was, where the excerpt does not give the
// expected entries there.
bool insertAsWritten(Document& document, std::string_view path, const Excerpt& excerpt,
                     std::vector<Entry> expected);

// Gives an excerpt the comments of another one that it has not, above it. False where it has them all, or one
// of them goes over several lines.
bool addComments(Excerpt& excerpt, const Excerpt& other);

// Whether a text of that size can take so many excerpts in a short time: each of them has all of it read some
// times.
bool canTakeExcerpts(std::size_t count, std::size_t textSize);

} // namespace Repository::Documents
