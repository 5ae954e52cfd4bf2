#pragma once

#include "repository/documents/common/Document.h"

#include <string>
#include <string_view>

namespace Repository::Documents {

// The text of an excerpt in another place, where its name and the indentation of its line are these.
std::string excerptText(const Excerpt& excerpt, std::string_view name, std::string_view indentation);

// A text of an excerpt with these line ends, which it keeps as they are where they are those of its file.
std::string withLineEnds(std::string text, const Excerpt& excerpt, std::string_view lineEnd);

// Notes all line starts of an excerpt's text as such whose indentation may change.
void findLines(Excerpt& excerpt);

// The lines of a text with this indentation in place of the former one. The text ends with its last line.
std::string indentedLines(std::string_view lines, std::string_view before, std::string_view indentation);

// Comments for a person: each line without the blanks around it, and the one after an entry as the last.
std::string joinComments(std::string_view above, std::string_view after);

} // namespace Repository::Documents
