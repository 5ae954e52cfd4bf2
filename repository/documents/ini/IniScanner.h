#pragma once

#include "repository/documents/common/Statement.h"
#include "repository/documents/common/TextLine.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Where an ini file has comments. Many readers take a ";" or "#" between blanks for one; those of unit and
// desktop files know only lines of comments: "ExecStart=/bin/a ; /bin/b" is one value.
enum class IniComments : std::uint8_t { AfterValues, OwnLines };

// Splits an ini file into statements, as the readers of real files do:
// - A line that begins with ";" or "#" is a comment, and with IniComments::AfterValues the rest of a line
//   from an unquoted ";" or "#" between blanks.
// - The separator is the first "=", or an earlier ":" before a blank, or without "=" the first ":" but that
//   of "://".
// - A line indented deeper than an entry with a separator continues its value, across blank and comment
//   lines.
// - A comment right above an entry may be its type tag (TypeTag).
// - A line that ends with a backslash continues in the next, unless that begins a section or, with no blank
//   before the backslash (as after a folder's path), has a separator.
class IniScanner
{
public:
    IniScanner(std::string_view iniText, IniComments iniComments) : text(iniText), comments(iniComments) {}

    // The next statement; nothing at the end of the text and at a line that is no ini.
    std::optional<Statement> next();

    // Where and why reading stopped before the end; the reason is empty when it did not.
    std::size_t getErrorOffset() const { return errorOffset; }
    const std::string& getError() const { return error; }

private:
    // Both take the line at the position, and what goes on after it.
    std::optional<Statement> takeHeader(const TextLine& physical);
    Statement takeEntry(std::size_t begin, const TextLine& first, Type tag);
    // Where the value of an entry ends that goes on over further lines; 0 when it does not.
    std::size_t takeFurtherLines(std::string_view content, std::size_t indent);

    std::string_view text;
    IniComments comments;
    std::size_t position = 0;
    std::size_t errorOffset = 0;
    std::string error;
};

// Where the comments of a text are, which its first section that is not indented tells.
IniComments findIniComments(std::string_view text);
IniComments iniCommentsOf(std::string_view firstSection);

// The only statement of a text, which must outlive it; nothing when it has none or several.
std::optional<Statement> scanSingle(std::string_view text, IniComments comments);
std::optional<Statement> scanSingle(std::string&& text, IniComments comments) = delete;

// What of blank and comment lines is between two others.
struct IniTrivia
{
    bool any = false;
    bool blank = false; // a blank line among them
};

IniTrivia operator|(IniTrivia a, IniTrivia b);
IniTrivia describeTrivia(std::string_view text);

// True when the lower statement, which is not trivia, would be read as part of the value above it.
bool wouldSwallow(const Statement& above, const Statement& below, IniTrivia between);

bool isIniComment(std::string_view line);

} // namespace Repository::Documents
