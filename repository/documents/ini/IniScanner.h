#pragma once

#include "repository/documents/common/Dialect.h"
#include "repository/documents/common/Statement.h"
#include "repository/documents/common/TextLine.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Splits an ini file into statements, as its dialect has it. That of files of unknown programs reads as most
// readers of real files do:
// - A line that begins with ";" or "#" is a comment, and the rest of a line from an unquoted ";" or "#"
//   between blanks.
// - The separator is the first "=", or an earlier ":" before a blank, or without "=" the first ":" but that
//   of "://".
// - A line without "=" that is indented deeper than an entry with a separator continues its value, across
//   blank and comment lines.
// - A line that ends with a backslash continues in the next, unless that begins a section or, with no blank
//   before the backslash (as after a folder's path), has a separator.
// A comment right above an entry may be its type tag (TypeTag).
class IniScanner
{
public:
    IniScanner(std::string_view iniText, const Dialect& fileDialect) : text(iniText), dialect(fileDialect) {}

    // The next statement; nothing at the end of the text and at a line that is no ini.
    std::optional<Statement> next();

    // Where and why reading stopped before the end; the reason is empty when it did not.
    std::size_t getErrorOffset() const { return errorOffset; }
    const std::string& getError() const { return error; }

private:
    // Both take the line at the position, and what goes on after it.
    std::optional<Statement> takeHeader(const TextLine& physical);
    Statement takeEntry(std::size_t begin, const TextLine& first, Type tag);
    // Place the key and the value, of which further lines follow by indentation or by a guess, or by what is
    // in the value.
    void takeByLines(Statement& line, const TextLine& first, std::size_t indent);
    void takeMeasured(Statement& line, const TextLine& first, std::size_t indent);
    void placeKey(Statement& line, std::string_view content, std::size_t end) const;
    void placeValue(Statement& line, std::string_view content, std::size_t after, std::size_t comment) const;
    // Where the value of an entry ends that goes on over further lines; 0 when it does not.
    std::size_t takeFurtherLines(std::string_view content, std::size_t indent);

    std::string_view text;
    const Dialect& dialect;
    std::size_t position = 0;
    std::size_t errorOffset = 0;
    std::string error;
};

// The only statement of a text, which must outlive it; nothing when it has none or several.
std::optional<Statement> scanSingle(std::string_view text, const Dialect& dialect);
std::optional<Statement> scanSingle(std::string&& text, const Dialect& dialect) = delete;

// The same, with comments above that an edit has put there, and which come before the tags of the entry.
std::optional<Statement> scanCommented(std::string_view text, const Dialect& dialect);

// What of blank and comment lines is between two others.
struct IniTrivia
{
    bool any = false;
    bool blank = false; // a blank line among them
};

IniTrivia operator|(IniTrivia a, IniTrivia b);
IniTrivia describeTrivia(std::string_view text);

// True when a blank line below an entry would be read as part of its value.
bool takesInBlankLine(const Statement& entry, const Dialect& dialect);

// True when the lower statement, which is not trivia, would be read as part of the value above it.
bool wouldSwallow(const Statement& above, const Statement& below, IniTrivia between, const Dialect& dialect);

} // namespace Repository::Documents
