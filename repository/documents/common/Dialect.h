#pragma once

#include "repository/documents/common/Values.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// How the values of a dialect are spelled: escapes, quotes and what joins lines.
struct Spelling
{
    struct Reading
    {
        std::string text;
        bool isText = false; // whatever it looks like: it is quoted, or goes over several lines
        bool isValid = true; // false where the dialect's program refuses the spelling
    };

    // All lines of a value, as they are in the file.
    Reading (*read)(std::string_view spelled);

    // Spellings of a text in place of another, the best first; "\n" where a line of the file ends. One that
    // does not read as the text is passed over.
    std::vector<std::string> (*write)(std::string_view text, std::string_view before);

    // Why there are none, for a person; empty when the spellings tell. Null where they always do.
    std::string (*explain)(std::string_view text) = nullptr;

    // A key as it is meant, and how it is spelled. Null where it is spelled as it is.
    std::string (*readKey)(std::string_view spelled) = nullptr;
    std::string (*writeKey)(std::string_view key) = nullptr;

    // Why the program refuses a file with such a key, or with a section of that name; empty when it does not.
    // Null where it takes all that a line can hold.
    std::string (*explainKey)(std::string_view key) = nullptr;
    std::string (*explainSection)(std::string_view name) = nullptr;

    // A section in a chain of them as it is meant, and how it is spelled. Null where it is spelled as it is.
    std::string (*readGroup)(std::string_view spelled) = nullptr;
    std::string (*writeGroup)(std::string_view name) = nullptr;
};

// How one program reads its files of lines: a row of the table of dialects. Sets of characters are texts;
// lists have blanks between their items, or "|" where an item may hold one.
struct Dialect
{
    enum class Continuation : std::uint8_t {
        None,
        Backslash,    // at the end of a line, not written by one before it
        AnyBackslash, // at the end of a line but for blanks
        Indentation,  // of a line deeper than the key
        Guessed       // a backslash or indentation, by what files of unknown programs mean
    };

    enum class Sections : std::uint8_t {
        Nested,     // [a.b] is b in a
        Flat,       // [a.b] is one component
        Subsection, // [a "b.c"] is b.c in a; an entry may follow in the line
        Chain       // [a][b] is b in a
    };

    // How keys compare beyond being the same bytes.
    enum class Keys : std::uint8_t { Exact, IgnoreCase, IgnoreCaseAndBlanks, DashIsUnderscore };

    // What a key without a separator has.
    enum class BareKeys : std::uint8_t { Null, True, Empty };

    std::string_view name;   // "git", given as ini:git
    std::string_view format; // whose dialect it is
    const char* title = "";  // for people, with its article

    // Recognition: globs of file names, or of the ends of paths where they hold a "/"; "|"-separated globs of
    // the first section's name; of a line, blanks around it left out.
    std::string_view names;
    std::string_view firstSections;
    std::string_view signs;

    Continuation continuation = Continuation::None;
    Sections sections = Sections::Flat;
    bool needsSections = false; // the program refuses keys before the first one
    Keys keys = Keys::Exact;
    std::string_view separators = "="; // the first one counts
    std::string_view comments = "#;";  // begin a line
    std::string_view skipped;          // begin a line that is not an entry either
    std::string_view directives;       // the first word of such a line
    std::string_view commentsAfter;    // begin a comment after a value, outside of quotes
    std::string_view quotes;           // keep those from doing so
    bool quotesRunOn = false;          // to the line that closes them
    bool commentsBetweenLines = false; // of one value
    bool escapesOutsideQuotes = false; // a backslash takes the next character, a quote too, with it
    bool keepsTrailingBlanks = false;  // of values
    bool hasKeyMarks = false;          // key[$e] has options of the key behind it
    bool hasBraces = false;            // "name = {" and "}" enclose a group; a "*" after a name is an option
    bool blanksSeparate = false;       // a key from its value
    std::size_t longestLine = 0; // in bytes, of which its program reads longer ones as several; 0 for any
    BareKeys bareKeys = BareKeys::Null;
    std::string_view separator = "=";   // of a file that shows none
    std::string_view indent;            // of its entries
    const Spelling* spelling = nullptr; // null where no program is known that reads the values
};

// A key as its dialect compares it.
std::string foldedKey(std::string_view key, Dialect::Keys keys);

// How far a value goes.
struct ValueExtent
{
    std::size_t end = 0;      // of the value, blanks after it included
    std::size_t linesEnd = 0; // of its lines
    bool continued = false;
    char openQuote = '\0'; // which a further line would close
};

// That of a value which begins with the text, or of a line that begins in it, by comments, quotes and
// backslashes; not for a continuation by indentation.
ValueExtent measureValue(std::string_view text, const Dialect& dialect);

// Where a comment begins that a blank separates from what it follows; the end of the content without one.
std::size_t findCommentAfterBlank(std::string_view content, std::size_t from, std::string_view marks);

// True for a line that is neither an entry nor a section, nor blank.
bool isSkipped(std::string_view content, const Dialect& dialect);

} // namespace Repository::Documents
