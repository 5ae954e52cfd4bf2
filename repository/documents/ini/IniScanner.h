#pragma once

#include "repository/documents/common/Statement.h"
#include "repository/documents/common/TextLine.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Where comments are in an ini file. The readers of many files take what follows a ";" or "#" with blanks
// on both sides for one; those of unit and desktop files know comments on lines of their own only, and
// "ExecStart=/bin/a ; /bin/b" is one value there.
enum class IniComments : std::uint8_t { AfterValues, OwnLines };

// Cuts the text of an ini file into its statements. It reads as the readers of real files do:
// - A line that begins with ";" or "#" is a comment; so is, in files with comments after values, the rest of
//   a line from a ";" or "#" on that has blanks on both sides and is outside of quotes.
// - The separator is the first "=", or an earlier ":" with a blank after it, or without any "=" the first
//   ":", unless it is that of "://".
// - A line that is indented deeper than an entry with a separator belongs to the entry's value, whatever
//   blank and comment lines are between (as Python's reader has it).
// - A comment right above an entry that tags a type says how the entry's value is read (see TypeTag).
// - A line that ends with a backslash goes on in the next, unless that begins a section or, with no blank
//   before the backslash (as after a folder's path), has a separator itself.
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
