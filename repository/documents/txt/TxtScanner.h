#pragma once

#include "repository/documents/common/Dialect.h"
#include "repository/documents/common/Statement.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Splits a txt file into statements. Where the dialect has a spelling, each line is an entry that is neither
// blank nor a comment. Otherwise there may be prose, and a line is an entry only if what precedes
// its separator looks like a path:
// - The separator is "=", or ":" before a blank, but not the "=" of an operator ("==", "=>", "<=", "+=" ...).
// - A path has letters, digits and the punctuation of real paths, and begins with none of "-+([{". It is one
//   word, or up to three with single blanks between before an "=" set off by a blank.
// - A backslash before other punctuation or a blank makes it part of the path.
// - "export" before a path, as in files of environment variables, is not part of it.
// "#" and "!" begin lines of comments. A line that ends with a backslash continues in the next, unless that
// is blank or, with no blank before the backslash (as after a folder's path), an entry or comment itself.
class TxtScanner
{
public:
    TxtScanner(std::string_view txtText, const Dialect& fileDialect) : text(txtText), dialect(fileDialect) {}

    // The next statement; nothing at the end of the text.
    std::optional<Statement> next();

private:
    std::optional<Statement> takeEntry(std::size_t begin, std::size_t lineBegin, Type tag);
    std::optional<Statement> takeGuessed(std::size_t lineBegin);
    std::optional<Statement> takeSpelled(std::size_t lineBegin);

    std::string_view text;
    const Dialect& dialect;
    std::size_t position = 0;
};

// The entry that the text is as a whole, which must outlive it; nothing when it is anything else.
std::optional<Statement> scanTxtEntry(std::string_view text, const Dialect& dialect);
std::optional<Statement> scanTxtEntry(std::string&& text, const Dialect& dialect) = delete;

// True when the text below, in which a line begins, would be read as part of the entry above it.
bool wouldSwallow(const Statement& above, std::string_view below, const Dialect& dialect);

// The path of a key, and the key of a path with backslashes where they are needed.
std::string txtKeyPath(std::string_view key, const Dialect& dialect);
std::string escapeTxtKey(std::string_view path, const Dialect& dialect);

} // namespace Repository::Documents
