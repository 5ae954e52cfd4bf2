#pragma once

#include "host/FrameworkCore/CoreExport.h"
#include "host/FrameworkCore/Values/Reason.h"
#include "host/FrameworkCore/Values/Value.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace FrameworkCore::Values {

// What reading a text as a value gives: the value, or why the text is none.
struct ReadResult
{
    Value value;
    std::string error; // for a person; empty on success

    // What the error was made of: the text that is translated, with "%1" and so on for the parts.
    std::string_view form = {};
    std::vector<std::string> parts = {};

    bool ok() const { return error.empty(); }
};

// Conversions between text and typed values, free of locale; readFileText(toText(v), type) is v. Any thread.

// - true, false; integers in decimal; the shortest digits that round-trip a double, "inf", "nan"
// - list elements joined by ";", with "\" before a ";" or "\" of an element and a ";" after a last one that
//   is empty
// - bytes as text where they are text, with "\\" for "\" and "\x" and two hex digits for the rest
// - ISO 8601 with milliseconds and offset where there are any; "" for an invalid date, null and a group
VANTRY_CORE_EXPORT std::string toText(const Value& value);

// Numbers must be exact: no blanks, no fraction in an integer, nothing out of range, no more than three
// digits of a second, which an attribute holds. A plus sign, leading zeros and 1 and 0 for bool are accepted.
VANTRY_CORE_EXPORT ReadResult readText(std::string_view text, Type type);

// The same for what a file holds, with any number of digits of a second.
VANTRY_CORE_EXPORT ReadResult readFileText(std::string_view text, Type type);

// Whether a time or date-time has more digits of a second than an attribute holds.
VANTRY_CORE_EXPORT bool isFinerThanAttributes(const Value& value);

// The value of an untyped text: true and false, integers in canonical form up to 64 bits, numbers that toText
// would spell so or that have an exponent, or else a text.
VANTRY_CORE_EXPORT Value plainValue(std::string_view text);

// All that distinguishes one type from the others.
struct TypeRow
{
    std::string_view name;    // in files and on the command line; empty for a group
    const char* description;  // in messages: "a whole number"
    std::string_view example; // of a text, where its form is not obvious
    std::string lowest;       // of whole numbers
    std::string highest;
    bool isPlain; // a file without types may hold it, as plainValue reads it
    ReadResult (*read)(std::string_view text, Type type);
};

// In the order of Type.
VANTRY_CORE_EXPORT const std::array<TypeRow, typeCount>& typeTable();

inline const TypeRow& rowOf(Type type)
{
    return typeTable()[std::size_t(type)];
}

// "a whole number", in the language that is shown.
inline std::string describeType(Type type)
{
    return Reason::tr(rowOf(type).description);
}

// Nothing for any other name.
VANTRY_CORE_EXPORT std::optional<Type> typeNamed(std::string_view name);

// Replaces "\" and a letter by the character of the same index, and "\x" and two of the hex digits by a byte;
// nothing where anything else follows a "\".
VANTRY_CORE_EXPORT std::optional<std::string> unescape(std::string_view text, std::string_view letters,
                                                       std::string_view characters,
                                                       std::string_view hexDigits);

// Exactly the same: unlike ==, zero is not minus zero, and "not a number" is itself.
VANTRY_CORE_EXPORT bool isSame(const Value& a, const Value& b);

// True when the double can hold the integer exactly.
VANTRY_CORE_EXPORT bool isExactDouble(std::int64_t number);
VANTRY_CORE_EXPORT bool isExactDouble(std::uint64_t number);

} // namespace FrameworkCore::Values
