#include "host/FrameworkCore/Values/ValueText.h"

#include "host/FrameworkCore/Values/IsoText.h"
#include "host/FrameworkCore/Values/Text.h"
#include "host/FrameworkCore/Values/Utf8.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace FrameworkCore::Values {

namespace {

using List = std::vector<std::string>;

template <typename Number>
std::string numberText(Number number)
{
    char text[40];
    const auto end = std::to_chars(text, text + sizeof text, number);
    return std::string(text, end.ptr);
}

std::string doubleText(double number)
{
    // The sign and payload of a nan mean nothing to a person.
    std::string text = std::isnan(number) ? "nan" : numberText(number);
    return text.find_first_not_of("-0123456789") == std::string::npos ? text + ".0" : text;
}

std::string listText(const List& list)
{
    std::string text;
    for (const std::string& element : list) {
        if (&element != &list.front())
            text += ';';
        for (const char c : element) {
            if (c == ';' || c == '\\')
                text += '\\';
            text += c;
        }
    }
    if (!list.empty() && list.back().empty())
        text += ';';
    return text;
}

std::string bytesText(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t length = utf8Length(bytes.substr(at));
        const auto byte = static_cast<unsigned char>(bytes[at]);
        if (length == 0 || byte < 0x20 || byte == 0x7F) {
            text += "\\x";
            appendHex(text, byte, 2);
            ++at;
            continue;
        }
        if (byte == '\\')
            text += '\\';
        text += bytes.substr(at, length);
        at += length;
    }
    return text;
}

ReadResult refused(std::string_view form, std::vector<std::string> parts = {})
{
    return {Value(), filledText(form, parts), form, std::move(parts)};
}

template <typename Data>
ReadResult read(Type type, Data&& data)
{
    return {Value{type, Value::Data(std::forward<Data>(data))}, {}};
}

ReadResult readBool(std::string_view text, Type)
{
    if (text == "true" || text == "1")
        return read(Type::Bool, true);
    if (text == "false" || text == "0")
        return read(Type::Bool, false);
    return refused(QT_TRANSLATE_NOOP("FrameworkCore::Values", "%1 is neither true nor false"),
                   {quoted(text)});
}

// from_chars takes no plus sign, but people write one.
std::string_view withoutPlus(std::string_view text)
{
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    return text;
}

template <typename Integer>
ReadResult readInteger(std::string_view text, Type type)
{
    const std::string_view digits = withoutPlus(text);
    const char* const end = digits.data() + digits.size();
    Integer number = 0;
    const auto result = std::from_chars(digits.data(), end, number);
    // A huge number is a number still, and so is one below zero, though the type has no room for them.
    const bool belowZero = std::is_unsigned_v<Integer> && digits.size() > 1 && digits[0] == '-' &&
                           digits.find_first_not_of("0123456789", 1) == std::string_view::npos;
    if (belowZero || (result.ec == std::errc::result_out_of_range && result.ptr == end)) {
        return refused(QT_TRANSLATE_NOOP("FrameworkCore::Values", "%1 is outside of %2 to %3"),
                       {quoted(text), rowOf(type).lowest, rowOf(type).highest});
    }
    if (result.ec != std::errc() || result.ptr != end)
        return refused(QT_TRANSLATE_NOOP("FrameworkCore::Values", "%1 is not a whole number"),
                       {quoted(text)});
    return read(type, number);
}

ReadResult readDouble(std::string_view text, Type)
{
    const std::string_view digits = withoutPlus(text);
    const char* const end = digits.data() + digits.size();
    double number = 0;
    const auto result = std::from_chars(digits.data(), end, number);
    if (result.ec == std::errc::result_out_of_range && result.ptr == end)
        return refused(
            QT_TRANSLATE_NOOP("FrameworkCore::Values", "%1 is too large or too small for a double"),
            {quoted(text)});
    const bool named = result.ec == std::errc() && !std::isfinite(number);
    if (result.ec != std::errc() || result.ptr != end ||
        (named && digits != "inf" && digits != "-inf" && digits != "nan"))
        return refused(QT_TRANSLATE_NOOP("FrameworkCore::Values", "%1 is not a number"), {quoted(text)});
    std::int64_t integer = 0;
    const auto whole = std::from_chars(digits.data(), end, integer);
    if (whole.ec == std::errc() && whole.ptr == end && !isExactDouble(integer))
        return refused(
            QT_TRANSLATE_NOOP("FrameworkCore::Values", "%1 has more digits than a double can hold"),
            {quoted(text)});
    return read(Type::Double, number);
}

ReadResult readList(std::string_view text, Type)
{
    List list;
    std::string element;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == ';') {
            list.push_back(std::move(element));
            element.clear();
            continue;
        }
        if (text[at] == '\\') {
            ++at;
            if (at == text.size() || (text[at] != ';' && text[at] != '\\'))
                return refused(QT_TRANSLATE_NOOP("FrameworkCore::Values",
                                                 "a \"\\\" in a list must be followed by \";\" or \"\\\""));
        }
        element += text[at];
    }
    if (!element.empty())
        list.push_back(std::move(element));
    return read(Type::StringList, std::move(list));
}

ReadResult readBytes(std::string_view text, Type type)
{
    std::optional<std::string> bytes = unescape(text, "\\", "\\", "0123456789abcdefABCDEF");
    if (!bytes)
        return refused(
            QT_TRANSLATE_NOOP("FrameworkCore::Values",
                              "a \"\\\" in bytes must be followed by \"\\\" or \"x\" and two hex digits"));
    return read(type, *std::move(bytes));
}

ReadResult readIso(std::string_view text, Type type)
{
    if (text.empty())
        return read(type, std::string());
    if (auto normal = normaliseIso(text, type))
        return read(type, *std::move(normal));
    return refused(type == Type::Date
                       ? QT_TRANSLATE_NOOP("FrameworkCore::Values", "%1 is not a date as in %2")
                   : type == Type::Time
                       ? QT_TRANSLATE_NOOP("FrameworkCore::Values", "%1 is not a time as in %2")
                       : QT_TRANSLATE_NOOP("FrameworkCore::Values", "%1 is not a date and time as in %2"),
                   {quoted(text), std::string(rowOf(type).example)});
}

ReadResult readNothing(std::string_view text, Type type)
{
    if (text.empty())
        return {Value{type, {}}, {}};
    return refused(QT_TRANSLATE_NOOP("FrameworkCore::Values", "%1 is more than nothing"), {quoted(text)});
}

ReadResult readString(std::string_view text, Type type)
{
    return read(type, std::string(text));
}

template <typename Integer>
std::string lowest()
{
    return numberText(std::numeric_limits<Integer>::min());
}

template <typename Integer>
std::string highest()
{
    return numberText(std::numeric_limits<Integer>::max());
}

// Canonical are "0" and digits that begin with none, with at most a minus before them.
bool isCanonicalInteger(std::string_view text)
{
    const bool minus = !text.empty() && text[0] == '-';
    const std::string_view digits = text.substr(minus ? 1 : 0);
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (digits.empty() || !std::all_of(digits.begin(), digits.end(), isDigit))
        return false;
    return digits[0] != '0' || (digits.size() == 1 && !minus);
}

// Whether a number that is not whole is spelled as such: with an exponent, or with no digit that the value
// does not need, as it is in a version like 3.10.
bool isCanonicalDouble(std::string_view text, double number)
{
    const std::size_t exponent = text.find_first_of("eE");
    const std::string_view mantissa = text.substr(0, exponent);
    const std::size_t point = mantissa.find('.');
    const bool hasDigits = isCanonicalInteger(mantissa.substr(0, point)) || startsWith(mantissa, "-0.");
    if (!hasDigits || mantissa.back() == '.')
        return false;
    return exponent == std::string_view::npos ? toText({Type::Double, number}) == text
                                              : std::isfinite(number);
}

} // namespace

std::string toText(const Value& value)
{
    struct Writer
    {
        Type type;

        std::string operator()(std::monostate) const { return {}; }
        std::string operator()(bool truth) const { return truth ? "true" : "false"; }
        std::string operator()(std::int64_t number) const { return numberText(number); }
        std::string operator()(std::uint64_t number) const { return numberText(number); }
        std::string operator()(double number) const { return doubleText(number); }
        std::string operator()(const std::string& text) const
        {
            return type == Type::ByteArray ? bytesText(text) : text;
        }
        std::string operator()(const List& list) const { return listText(list); }
    };
    return std::visit(Writer{value.type}, value.data);
}

const std::array<TypeRow, typeCount>& typeTable()
{
    static const std::array<TypeRow, typeCount> table{
        {{"", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a group"), "", "", "", false, readNothing},
         {"null", QT_TRANSLATE_NOOP("FrameworkCore::Values", "nothing"), "", "", "", true, readNothing},
         {"bool", QT_TRANSLATE_NOOP("FrameworkCore::Values", "true or false"), "", "", "", true, readBool},
         {"integer", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a whole number"), "", lowest<std::int64_t>(),
          highest<std::int64_t>(), true, readInteger<std::int64_t>},
         {"unsigned", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a whole number"), "",
          lowest<std::uint64_t>(), highest<std::uint64_t>(), true, readInteger<std::uint64_t>},
         {"double", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a number"), "", "", "", false, readDouble},
         {"text", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a text"), "", "", "", true, readString},
         {"list", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a list of texts"), "", "", "", false, readList},
         {"bytes", QT_TRANSLATE_NOOP("FrameworkCore::Values", "bytes"), "", "", "", false, readBytes},
         {"date", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a date"), "2024-12-31", "", "", false, readIso},
         {"time", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a time"), "23:59:59.999", "", "", false,
          readIso},
         {"datetime", QT_TRANSLATE_NOOP("FrameworkCore::Values", "a date and time"),
          "2024-12-31T23:59:59.999+01:00", "", "", false, readIso}}};
    return table;
}

std::optional<Type> typeNamed(std::string_view name)
{
    const auto& table = typeTable();
    const auto found =
        std::find_if(table.begin() + 1, table.end(), [name](const TypeRow& row) { return row.name == name; });
    return found == table.end() ? std::nullopt : std::optional(static_cast<Type>(found - table.begin()));
}

ReadResult readFileText(std::string_view text, Type type)
{
    return rowOf(type).read(text, type);
}

ReadResult readText(std::string_view text, Type type)
{
    ReadResult result = readFileText(text, type);
    if (isFinerThanAttributes(result.value))
        return refused(
            QT_TRANSLATE_NOOP("FrameworkCore::Values", "%1 has more than three digits of a second"),
            {quoted(text)});
    return result;
}

bool isFinerThanAttributes(const Value& value)
{
    if (value.type != Type::Time && value.type != Type::DateTime)
        return false;
    constexpr std::string_view milliseconds = ".999";
    const std::string_view text = std::get<std::string>(value.data);
    const std::size_t point = std::min(text.find('.'), text.size());
    return text.find_first_not_of("0123456789", point + 1) > point + milliseconds.size() &&
           text.size() > point + milliseconds.size();
}

std::optional<std::string> unescape(std::string_view text, std::string_view letters,
                                    std::string_view characters, std::string_view hexDigits)
{
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            plain += text[at];
            continue;
        }
        const std::string_view escape = text.substr(at + 1, 3);
        const std::size_t letter = escape.empty() ? std::string_view::npos : letters.find(escape[0]);
        if (letter != std::string_view::npos) {
            plain += characters[letter];
            ++at;
            continue;
        }
        unsigned byte = 0;
        if (escape.size() != 3 || escape[0] != 'x' ||
            escape.find_first_not_of(hexDigits, 1) != std::string_view::npos)
            return std::nullopt;
        std::from_chars(escape.data() + 1, escape.data() + 3, byte, 16);
        plain += static_cast<char>(byte);
        at += 3;
    }
    return plain;
}

bool isSame(const Value& a, const Value& b)
{
    const auto* const number = std::get_if<double>(&a.data);
    const auto* const other = std::get_if<double>(&b.data);
    if (!number || !other || a.type != b.type)
        return a == b;
    if (std::isnan(*number) || std::isnan(*other))
        return std::isnan(*number) && std::isnan(*other);
    return *number == *other && std::signbit(*number) == std::signbit(*other);
}

Value plainValue(std::string_view text)
{
    if (text == "true" || text == "false")
        return Value{Type::Bool, text == "true"};
    if (isCanonicalInteger(text)) {
        for (const Type type : {Type::Integer, Type::Unsigned}) {
            ReadResult number = readText(text, type);
            if (number.ok())
                return std::move(number.value);
        }
    }
    const bool mayBeDouble = !text.empty() &&
                             text.find_first_not_of("-+.eE0123456789") == std::string_view::npos &&
                             text.find_first_of(".eE") != std::string_view::npos;
    const ReadResult number = mayBeDouble ? readText(text, Type::Double) : ReadResult();
    if (mayBeDouble && number.ok() && isCanonicalDouble(text, std::get<double>(number.value.data)))
        return number.value;
    return Value{Type::String, std::string(text)};
}

// A double holds 53 digits of the binary form, wherever they begin.
bool isExactDouble(std::uint64_t number)
{
    constexpr std::uint64_t tooLong = std::uint64_t(1) << 53;
    while (number > tooLong && number % 2 == 0)
        number /= 2;
    return number <= tooLong;
}

bool isExactDouble(std::int64_t number)
{
    const auto bits = static_cast<std::uint64_t>(number);
    return isExactDouble(number < 0 ? std::uint64_t(0) - bits : bits);
}

} // namespace FrameworkCore::Values
