#pragma once

#include "repository/documents/common/Statement.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Cuts the text of a txt file into its statements. Entries and prose are in the same files, so that a line
// is an entry only when what is before its separator looks like a path:
// - The separator is "=", or ":" with a blank after it; an "=" that is part of an operator ("==", "=>",
// "<=",
//   "+=" ...) is none.
// - A path has letters, digits and the marks that paths of real files have; it begins with none of "-+([{".
// It
//   has one word, or before an "=" that stands apart up to three with single blanks between.
// - A backslash before any other mark or blank makes it part of the path.
// - "export" before a path, as in files of environment variables, is not part of it.
// A line that begins with "#" or "!" is a comment. A line that ends with a backslash goes on in the next,
// unless that is blank or, with no blank before the backslash (as after a folder's path), an entry or
// comment itself.
class TxtScanner
{
public:
    explicit TxtScanner(std::string_view txtText) : text(txtText) {}

    // The next statement; nothing at the end of the text.
    std::optional<Statement> next();

private:
    std::optional<Statement> takeEntry(std::size_t begin, std::size_t lineBegin, Type tag);

    std::string_view text;
    std::size_t position = 0;
};

// The entry that the text is as a whole, which must outlive it; nothing when it is anything else.
std::optional<Statement> scanTxtEntry(std::string_view text);
std::optional<Statement> scanTxtEntry(std::string&& text) = delete;

// True when the text below, in which a line begins, would be read as part of the entry above it.
bool wouldSwallow(const Statement& above, std::string_view below);

// The key as the path has it, and the text of a key for a path, in which everything that needs a backslash
// has one.
std::string txtKeyPath(std::string_view key);
std::string escapeTxtKey(std::string_view path);

} // namespace Repository::Documents
