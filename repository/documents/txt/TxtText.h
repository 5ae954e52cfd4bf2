#pragma once

#include "host/FrameworkCore/Values/Value.h"
#include "repository/documents/txt/TxtScanner.h"

#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// How a file writes its entries; what an edit adds follows it.
struct TxtStyle
{
    std::string lineEnd = "\n";
    std::string indent;
    std::string separator = " = ";
    char quote = '\0'; // around values; none when no value is quoted
};

// The value of an entry: of a marked one what the mark makes of its text, else the text between quotes when
// they stand around the whole value, else what plainValue makes of it. Lines that a backslash ends are
// joined. Bytes that are no UTF-8 are a ByteArray. The text of a marked value may stand between double
// quotes; there \n, \r, \t, \", \\ and \x with two hex digits are escapes.
FrameworkCore::Values::Value readTxtValue(const TxtLine& entry);

// True when an entry below that of the text would be read as part of its value.
bool goesOnBelow(std::string_view text);

// The text of the entry with another value, of which readTxtValue gives back this very value, and with all
// else as it was; nothing when no form of the value does that. One that goes on below is the last choice.
std::optional<std::string> writeTxtValue(const TxtLine& entry, const FrameworkCore::Values::Value& value,
                                         const TxtStyle& style);

// Why there is no such form, for a person.
std::string explainTxtRefusal(const TxtLine& entry, const FrameworkCore::Values::Value& value);

} // namespace Repository::Documents
