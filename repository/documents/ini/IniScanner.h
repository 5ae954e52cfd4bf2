#pragma once

#include "host/FrameworkCore/Values/Value.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/ini/IniComments.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// A piece of an ini file: a run of blank and comment lines, the header of a section, or an entry with the
// marks of its type above it and all lines over which its value goes on. The pieces of a file, one behind the
// other, are the file. Offsets count from the beginning of the piece.
struct IniLine
{
    enum class Kind : std::uint8_t { Gap, Header, Entry };

    Kind kind = Kind::Gap;
    bool separated = false; // an entry with "=" or ":"; one without has a key only
    bool continued = false; // the value goes on over further lines
    FrameworkCore::Values::Type mark = FrameworkCore::Values::Type::Group; // Group for an entry without one
    std::uint32_t indent = 0;                                              // blanks before the key
    std::uint32_t keyBegin = 0; // key of an entry, name of a section
    std::uint32_t keyEnd = 0;
    std::uint32_t valueBegin = 0; // both at the end of the key where there is no separator
    std::uint32_t valueEnd = 0;
    std::string_view text; // line ends included

    std::string_view marks() const { return text.substr(0, keyBegin - indent); }
    // Behind the marks above.
    std::string_view lines() const { return text.substr(keyBegin - indent); }
    std::string_view blanksBefore() const { return lines().substr(0, indent); }
    std::string_view key() const { return text.substr(keyBegin, keyEnd - keyBegin); }
    std::string_view value() const { return text.substr(valueBegin, valueEnd - valueBegin); }
    // What leads to the value: blanks and the separator.
    std::string_view separator() const { return text.substr(keyEnd, valueBegin - keyEnd); }
    // What stands behind the value: blanks, a comment, the line end.
    std::string_view tail() const { return text.substr(valueEnd); }
};

// Cuts the text of an ini file into its pieces. It reads as the readers of real files do:
// - A line that begins with ";" or "#" is a comment; so is, in files with comments behind values, the rest of
//   a line from a ";" or "#" on that has blanks on both sides and stands outside of quotes.
// - The separator is the first "=", or an earlier ":" with a blank behind it, or without any "=" the first
//   ":", unless it is that of "://".
// - A line that is indented deeper than an entry with a separator belongs to the entry's value, whatever
//   blank and comment lines stand between (as Python's reader has it).
// - A comment right above an entry that marks a type says how the entry's value is read (see TypeMark).
// - A line that ends with a backslash goes on in the next, unless that begins a section or, with no blank
//   before the backslash (as behind a folder's path), has a separator itself.
class IniScanner
{
public:
    IniScanner(std::string_view iniText, IniComments iniComments) : text(iniText), comments(iniComments) {}

    // The next piece; nothing at the end of the text and at a line that is no ini.
    std::optional<IniLine> next();

    // Where and why reading stopped before the end; the reason is empty when it did not.
    std::size_t getErrorOffset() const { return errorOffset; }
    const std::string& getError() const { return error; }

private:
    // Both take the line at the position, and what goes on behind it.
    std::optional<IniLine> takeHeader(const TextLine& physical);
    IniLine takeEntry(std::size_t begin, const TextLine& first, FrameworkCore::Values::Type mark);
    // Where the value of an entry ends that goes on over further lines; 0 when it does not.
    std::size_t takeFurtherLines(std::string_view content, std::size_t indent);

    std::string_view text;
    IniComments comments;
    std::size_t position = 0;
    std::size_t errorOffset = 0;
    std::string error;
};

// Where the comments of a text stand.
IniComments findIniComments(std::string_view text);

// The only piece of a text, which must outlive it; nothing when it has none or several.
std::optional<IniLine> scanSingle(std::string_view text, IniComments comments);
std::optional<IniLine> scanSingle(std::string&& text, IniComments comments) = delete;

// What of blank and comment lines stands between two others.
struct IniGap
{
    bool any = false;
    bool blank = false; // a blank line among them
};

IniGap operator|(IniGap a, IniGap b);
IniGap describeGap(std::string_view text);

// True when the lower piece, no gap, would be read as part of the value above it.
bool wouldSwallow(const IniLine& above, const IniLine& below, IniGap between);

bool isIniComment(std::string_view line);

} // namespace Repository::Documents
