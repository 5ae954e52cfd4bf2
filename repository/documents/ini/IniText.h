#pragma once

#include "host/FrameworkCore/Values/Value.h"
#include "repository/documents/common/TextEncoding.h"
#include "repository/documents/ini/IniScanner.h"

#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Paths of all sections on the way to a section cost the square of its depth, so there is an end to it.
constexpr int deepestIniSection = 1000;
bool isIniTooDeep(std::string_view sectionName);

// How a file writes its entries; what an edit adds follows it.
struct IniStyle
{
    std::string lineEnd = "\n";
    std::string indent;          // of an entry
    std::string separator = "="; // with the blanks around it
    std::string continuation;    // indent of further lines of a value; empty when no value has any
    char quote = '\0';           // around values; none when no value is quoted
    char comment = '\0';         // that begins comments; none when there are none
    bool bareKeys = false;       // there are keys without a separator
    IniComments comments = IniComments::BehindValues;
};

// The value of an entry: nothing for a key without separator, of a marked one what the mark makes of its
// text, the text between quotes when they stand around the whole value, otherwise what plainValue makes of
// it. The lines of a value that goes on are joined by a line feed, or by a blank where a backslash ends the
// line. Bytes that are no UTF-8 are a ByteArray.
FrameworkCore::Values::Value readIniValue(const IniLine& entry);

// The quote around the value of the entry; 0 for none.
char quoteOf(const IniLine& entry);

// The text of the entry with another value, of which readIniValue gives back this very value, and with all
// else as it was; nothing when no form of the value does that.
std::optional<std::string> writeIniValue(const IniLine& entry, const FrameworkCore::Values::Value& value,
                                         const IniStyle& style);

// Why there is no such form, for a person.
std::string explainIniRefusal(const FrameworkCore::Values::Value& value, const IniStyle& style);

} // namespace Repository::Documents
