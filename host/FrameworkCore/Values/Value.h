#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace FrameworkCore::Values {

// The types that an attribute may have, and Group for a node that holds children only.
enum class Type : std::uint8_t {
    Group,
    Null,
    Bool,
    Integer,  // 64 bit, signed
    Unsigned, // 64 bit, unsigned
    Double,
    String,
    StringList,
    ByteArray,
    Date,
    Time,
    DateTime
};
constexpr std::size_t typeCount = std::size_t(Type::DateTime) + 1;

// A typed value on the standard library alone. Texts are UTF-8. ByteArray holds its raw bytes in a
// std::string; Date, Time and DateTime hold their ISO 8601 text, with all digits of a second and the offset
// where the value has them.
struct Value
{
    using Data = std::variant<std::monostate, bool, std::int64_t, std::uint64_t, double, std::string,
                              std::vector<std::string>>;

    Type type = Type::Group;
    Data data;

    friend bool operator==(const Value& a, const Value& b) { return a.type == b.type && a.data == b.data; }
    friend bool operator!=(const Value& a, const Value& b) { return !(a == b); }
};

} // namespace FrameworkCore::Values
