#pragma once

#include "repository/documents/common/Values.h"

#include <cstdint>
#include <string_view>

namespace Repository::Documents {

// A statement of a file of lines: a run of trivia (blank and comment lines), the header of a section, an
// entry with its type tags and all lines of its value, or a line that opens or closes a group in braces.
// Together the statements are the file. Offsets count from its beginning.
struct Statement
{
    enum class Kind : std::uint8_t { Trivia, Header, Entry, Open, Close };

    Kind kind = Kind::Trivia;
    bool continued = false;     // the value goes on over further lines
    bool plainKey = false;      // the key is in the file just as it is in a path
    std::uint16_t markSize = 0; // of the options of the key that are behind it, as in key[$e]
    Type tag = Type::Group;     // the type that the tag right above names; Group without one
    std::uint32_t begin = 0;    // of its own line; what is above are tags
    std::uint32_t keyBegin = 0; // key of an entry, name of a section or group
    std::uint32_t keyEnd = 0;
    std::uint32_t valueBegin = 0; // both at the end of the key where there is no separator
    std::uint32_t valueEnd = 0;
    std::string_view text; // line ends included

    bool isEntry() const { return kind == Kind::Entry; }
    bool isHeader() const { return kind == Kind::Header; }
    bool isSeparated() const { return valueBegin > keyEnd; } // an entry without a separator has a key only

    void shift(std::size_t by)
    {
        for (std::uint32_t* const offset : {&begin, &keyBegin, &keyEnd, &valueBegin, &valueEnd})
            *offset += static_cast<std::uint32_t>(by);
    }

    std::string_view tags() const { return text.substr(0, begin); }
    std::string_view lines() const { return text.substr(begin); }
    std::string_view indent() const { return text.substr(begin, keyBegin - begin - (isHeader() ? 1 : 0)); }
    std::string_view key() const { return text.substr(keyBegin, keyEnd - keyBegin); }
    std::string_view value() const { return text.substr(valueBegin, valueEnd - valueBegin); }
    // What leads to the value: blanks and the separator.
    std::string_view separator() const
    {
        return text.substr(keyEnd + markSize, valueBegin - keyEnd - markSize);
    }
    // What follows the value: blanks, a comment, the line end.
    std::string_view trailing() const { return text.substr(valueEnd); }
};

} // namespace Repository::Documents
