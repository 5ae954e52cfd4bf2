#pragma once

#include "host/FrameworkCore/Values/Value.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// A piece of a txt file: an entry with the marks above it and all lines over which its value goes on, or a
// run of lines that hold no entry. The pieces of a file, one behind the other, are the file. Offsets count
// from the beginning of the piece.
struct TxtLine
{
    using Type = FrameworkCore::Values::Type;

    bool entry = false;
    bool continued = false;  // the value goes on over further lines
    bool plainKey = false;   // the key stands in the file just as it does in a path
    Type mark = Type::Group; // the type that the mark right above names; Group without one
    std::uint32_t begin = 0; // of the entry's own line; what is above are marks
    std::uint32_t keyBegin = 0;
    std::uint32_t keyEnd = 0;
    std::uint32_t valueBegin = 0;
    std::uint32_t valueEnd = 0;
    std::string_view text; // line ends included

    std::string_view key() const { return text.substr(keyBegin, keyEnd - keyBegin); }
    std::string_view value() const { return text.substr(valueBegin, valueEnd - valueBegin); }
    // What leads to the value: blanks and the separator.
    std::string_view separator() const { return text.substr(keyEnd, valueBegin - keyEnd); }
    std::string_view indent() const { return text.substr(begin, keyBegin - begin); }
    // What stands behind the value: blanks, the line end.
    std::string_view tail() const { return text.substr(valueEnd); }
};

// Cuts the text of a txt file into its pieces. Entries and prose stand in the same files, so that a line is
// an entry only when what stands before its separator looks like a path:
// - The separator is "=", or ":" with a blank behind it; an "=" that is part of an operator ("==", "=>",
// "<=",
//   "+=" ...) is none.
// - A path has letters, digits and the marks that paths of real files have; it begins with none of "-+([{".
// It
//   has one word, or before an "=" that stands apart up to three with single blanks between.
// - A backslash before any other mark or blank makes it part of the path.
// - "export" before a path, as in files of environment variables, is not part of it.
// A line that begins with "#" or "!" is a comment. A line that ends with a backslash goes on in the next,
// unless that is blank or, with no blank before the backslash (as behind a folder's path), an entry or
// comment itself.
class TxtScanner
{
public:
    explicit TxtScanner(std::string_view txtText) : text(txtText) {}

    // The next piece; nothing at the end of the text.
    std::optional<TxtLine> next();

private:
    std::optional<TxtLine> takeEntry(std::size_t begin, std::size_t lineBegin, TxtLine::Type mark);

    std::string_view text;
    std::size_t position = 0;
};

// The entry that the text is as a whole, which must outlive it; nothing when it is anything else.
std::optional<TxtLine> scanTxtEntry(std::string_view text);
std::optional<TxtLine> scanTxtEntry(std::string&& text) = delete;

// True when the text below, in which a line begins, would be read as part of the entry above it.
bool wouldSwallow(const TxtLine& above, std::string_view below);

// The key as the path has it, and the text of a key for a path, in which everything that needs a backslash
// has one.
std::string txtKeyPath(std::string_view key);
std::string escapeTxtKey(std::string_view path);

} // namespace Repository::Documents
