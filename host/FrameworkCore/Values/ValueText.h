#pragma once

#include "host/FrameworkCore/CoreExport.h"
#include "host/FrameworkCore/Values/Value.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace FrameworkCore::Values {

// What reading a text as a value gives: the value, or why the text is none.
struct ReadResult
{
    Value value;
    std::string error; // for a person; empty on success

    bool ok() const { return error.empty(); }
};

// The conversions between text and typed values, in one place for documents, editors, export and the command
// line. They follow no locale, and readText gives the very value that toText was given. Any thread.

// The value as text:
// - true, false; integers in decimal; a double by the shortest digits that give the same double, "inf", "nan"
// - a list by its elements with ";" between them; "\" stands before a ";" or "\" of an element, and a ";"
//   follows a last element that is empty
// - bytes that are text as that text, with "\\" for "\" and "\x" and two hex digits for all others
// - dates and times in ISO 8601 with milliseconds and offset as far as there are any, "" for no date
// - "" for null and for a group
VANTRY_CORE_EXPORT std::string toText(const Value& value);

// The value of that type which the text stands for. A number must be given exactly: no blanks, no fraction in
// an integer, nothing beyond the type's range. Signs, leading zeros and (for bool) 1 and 0 are understood.
VANTRY_CORE_EXPORT ReadResult readText(std::string_view text, Type type);

// What a plain text in a file without types is: true and false are bools, integers in their canonical form
// (no plus, no leading zero) are integers up to 64 bits, everything else is a text.
VANTRY_CORE_EXPORT Value plainValue(std::string_view text);

// All that tells one type from the others; walked in place of listing them.
struct TypeRow
{
    std::string_view name;        // in files and on the command line; empty for a group
    std::string_view description; // in messages: "a whole number"
    std::string_view example;     // of a text, where its form is not obvious
    std::string range;            // " from 0 to 255", for whole numbers
    bool isPlain;                 // a file without types may hold it, as plainValue reads it
    ReadResult (*read)(std::string_view text, Type type);
};

// In the order of Type.
VANTRY_CORE_EXPORT const std::array<TypeRow, typeCount>& typeTable();

inline const TypeRow& rowOf(Type type)
{
    return typeTable()[std::size_t(type)];
}

inline std::string describeType(Type type)
{
    return std::string(rowOf(type).description);
}

// Nothing for any other name.
VANTRY_CORE_EXPORT std::optional<Type> typeNamed(std::string_view name);

// A text with "\\" for each of the characters followed by its letter, and "\x" and two of the hex digits for
// any byte; nothing where a "\" is followed by anything else.
VANTRY_CORE_EXPORT std::optional<std::string> unescape(std::string_view text, std::string_view letters,
                                                       std::string_view characters,
                                                       std::string_view hexDigits);

// Exactly the same: unlike ==, zero is not minus zero, and "not a number" is itself.
VANTRY_CORE_EXPORT bool isSame(const Value& a, const Value& b);

// True when the double can hold the integer exactly.
VANTRY_CORE_EXPORT bool isExactDouble(std::int64_t number);
VANTRY_CORE_EXPORT bool isExactDouble(std::uint64_t number);

} // namespace FrameworkCore::Values
