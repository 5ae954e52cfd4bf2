#pragma once

#include "repository/documents/common/LineDialect.h"

#include <optional>
#include <string>

namespace Repository::Documents {

// The text of an entry with another value, where the lines of the value that stay are as they were, and so
// are the comments that were between them: each above its line, or the one that is there now, or above the
// entry where there are more comments than lines. Nothing where they have no place.
std::optional<std::string> withFormerLines(const LineDialect& dialect, const Statement& before,
                                           const std::string& text);

// The same for a text that stays as it is: the comments that it lacks come above the entry.
std::optional<std::string> withFormerComments(const LineDialect& dialect, const Statement& before,
                                              const std::string& text);

// Those comments, and the ones between its lines.
std::string ownComments(const Statement& entry, const LineDialect& dialect);

// An entry without the comments that the above have put there.
Statement withoutCommentsAbove(Statement entry);

} // namespace Repository::Documents
