#include "repository/documents/yaml/YamlTypes.h"

#include "repository/documents/common/NumberStyle.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

namespace Repository::Documents {

namespace {

constexpr auto npos = std::string_view::npos;
constexpr std::string_view base64Letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// The words of a type in lower case, capitalised and in upper case.
bool isWord(std::string_view text, std::string_view word)
{
    if (text.size() != word.size() || lowered(text) != word)
        return false;
    const auto isUpper = [](char c) { return c >= 'A' && c <= 'Z'; };
    const auto letters = std::count_if(word.begin(), word.end(), [](char c) { return c != '.'; });
    const auto upper = std::count_if(text.begin(), text.end(), isUpper);
    const std::size_t first = text.find_first_not_of('.');
    return upper == 0 || upper == letters || (upper == 1 && isUpper(text[first]));
}

std::string_view withoutSign(std::string_view text)
{
    return text.substr(!text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0);
}

bool isDigits(std::string_view text)
{
    return !text.empty() && text.find_first_not_of("0123456789") == npos;
}

// [0-9]+ or [0-9]*\.[0-9]*, with a digit before or after, and an exponent.
bool isFloat(std::string_view text)
{
    text = withoutSign(text);
    const std::size_t mark = text.find_first_of("eE");
    if (mark != npos && !isDigits(withoutSign(text.substr(mark + 1))))
        return false;
    text = text.substr(0, mark);
    const std::size_t dot = text.find('.');
    const std::string_view whole = text.substr(0, dot);
    const std::string_view fraction = dot == npos ? std::string_view() : text.substr(dot + 1);
    return (isDigits(whole) && (fraction.empty() || isDigits(fraction))) ||
           (whole.empty() && isDigits(fraction));
}

// What some readers take for octal digits.
bool hasLeadingZero(std::string_view text)
{
    text = withoutSign(text);
    return text.size() > 1 && text[0] == '0' && isDigits(text);
}

std::optional<Value> readInteger(std::string_view digits, int base)
{
    const bool isNegative = digits[0] == '-';
    if (digits[0] == '+')
        digits.remove_prefix(1);
    const char* const end = digits.data() + digits.size();
    std::int64_t number = 0;
    auto read = std::from_chars(digits.data(), end, number, base);
    if (read.ec == std::errc() && read.ptr == end)
        return Value{Type::Integer, number};
    std::uint64_t unsignedNumber = 0;
    read = std::from_chars(digits.data(), end, unsignedNumber, base);
    if (!isNegative && read.ec == std::errc() && read.ptr == end)
        return Value{Type::Unsigned, unsignedNumber};
    return {};
}

// Nothing for what is no number, or one that no type holds.
std::optional<Value> readNumber(std::string_view text)
{
    const std::string_view prefix = text.substr(0, 2);
    if (prefix == "0x" || prefix == "0o") {
        const bool isDigit = text.size() > 2 && text[2] != '-' && text[2] != '+';
        return isDigit ? readInteger(text.substr(2), prefix == "0x" ? 16 : 8) : std::nullopt;
    }
    if (isDigits(withoutSign(text)))
        return hasLeadingZero(text) ? std::nullopt : readInteger(text, 10);
    if (isWord(withoutSign(text), ".inf"))
        return Value{Type::Double, text[0] == '-' ? -INFINITY : INFINITY};
    if (isWord(text, ".nan"))
        return Value{Type::Double, double(NAN)};
    if (!isFloat(text))
        return {};
    std::string_view digits = text.substr(text[0] == '+' ? 1 : 0);
    double number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return read.ec == std::errc() ? std::optional(Value{Type::Double, number}) : std::nullopt;
}

std::optional<std::string> decodeBase64(std::string_view text)
{
    std::string bytes;
    std::uint32_t bits = 0;
    int count = 0;
    std::size_t padding = 0;
    for (const char c : text) {
        if (c == ' ' || c == '\n' || c == '\t' || c == '\r')
            continue;
        const std::size_t value = base64Letters.find(c);
        padding += c == '=' ? 1 : 0;
        if ((value == npos && c != '=') || (c != '=' && padding > 0))
            return {};
        bits = bits << 6 | (c == '=' ? 0 : static_cast<std::uint32_t>(value));
        if (++count % 4 == 0) {
            for (const int shift : {16, 8, 0})
                bytes += static_cast<char>(bits >> shift & 0xFF);
            bits = 0;
        }
    }
    if (count % 4 != 0 || padding > 2)
        return {};
    bytes.resize(bytes.size() - padding);
    return bytes;
}

// What may be a number, a time or a date of YAML 1.1.
bool mayBeNumber(std::string_view text)
{
    const std::string_view digits = withoutSign(text);
    if (digits.empty())
        return false;
    if (digits[0] == '.') {
        const std::string lower = lowered(digits);
        return lower == ".inf" || lower == ".nan" || digits.find_first_not_of("0123456789_.eE+-") == npos;
    }
    if (digits[0] < '0' || digits[0] > '9')
        return false;
    const std::string_view prefix = digits.substr(0, 2);
    if (prefix == "0x" || prefix == "0b" || prefix == "0o")
        return digits.find_first_not_of("0123456789abcdefABCDEF_", 2) == npos;
    if (digits.size() > 5 && isDigits(digits.substr(0, 4)) && digits[4] == '-')
        return true;
    if (digits.find_first_not_of("0123456789_,:.eE+-") != npos)
        return false;
    const bool isVersion =
        std::count(digits.begin(), digits.end(), '.') > 1 && digits.find_first_of(":eE") == npos;
    return !isVersion;
}

} // namespace

Type typeOfYamlTag(std::string_view tag)
{
    constexpr std::string_view whole = "!<tag:yaml.org,2002:";
    if (tag == "!")
        return Type::String;
    std::string_view name;
    if (startsWith(tag, "!!"))
        name = tag.substr(2);
    else if (startsWith(tag, whole) && tag.back() == '>')
        name = tag.substr(whole.size(), tag.size() - whole.size() - 1);
    return name == "str"      ? Type::String
           : name == "int"    ? Type::Integer
           : name == "bool"   ? Type::Bool
           : name == "float"  ? Type::Double
           : name == "null"   ? Type::Null
           : name == "binary" ? Type::ByteArray
                              : Type::Group;
}

Value readYamlPlain(std::string_view text)
{
    if (text.empty() || text == "~" || isWord(text, "null"))
        return {Type::Null, {}};
    const char first = text[0];
    if ((first == 't' || first == 'T') && isWord(text, "true"))
        return {Type::Bool, true};
    if ((first == 'f' || first == 'F') && isWord(text, "false"))
        return {Type::Bool, false};
    if ((first >= '0' && first <= '9') || first == '-' || first == '+' || first == '.') {
        if (const auto number = readNumber(text))
            return *number;
    }
    return {Type::String, std::string(text)};
}

Value readYamlTagged(Type type, std::string text)
{
    if (type == Type::Null)
        return {Type::Null, {}};
    if (type == Type::ByteArray) {
        const auto bytes = decodeBase64(text);
        return bytes ? Value{Type::ByteArray, *bytes} : Value{Type::String, std::move(text)};
    }
    const Value plain = type == Type::String ? Value() : readYamlPlain(text);
    if (plain.type == type)
        return plain;
    if (type == Type::Double && plain.type == Type::Integer)
        return {Type::Double, static_cast<double>(std::get<std::int64_t>(plain.data))};
    if (type == Type::Integer && plain.type == Type::Unsigned)
        return plain;
    return {Type::String, std::move(text)};
}

bool isYamlKeyword(std::string_view text)
{
    static constexpr std::array<std::string_view, 14> words{"~",   "null", "true", "false", "yes", "no", "on",
                                                            "off", "y",    "n",    "=",     "<<",  ".",  ""};
    const std::string lower = lowered(text);
    return std::find(words.begin(), words.end(), lower) != words.end() || mayBeNumber(text);
}

bool isHugeYamlInteger(std::string_view text)
{
    const std::string_view digits = withoutSign(text);
    return isDigits(digits) && digits[0] != '0' && readYamlPlain(text).type == Type::String;
}

std::string spellYamlInteger(std::int64_t number, std::string_view former)
{
    const std::string_view prefix = former.substr(0, 2);
    const int base = prefix == "0x" ? 16 : prefix == "0o" ? 8 : 10;
    if (base == 10 || number < 0 || readYamlPlain(former).type != Type::Integer)
        return std::to_string(number);
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, base).ptr;
    std::string digits(buffer.data(), std::size_t(end - buffer.data()));
    const std::string_view formerDigits = former.substr(2);
    if (formerDigits.find_first_of("ABCDEF") != npos)
        std::transform(digits.begin(), digits.end(), digits.begin(),
                       [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
    if (formerDigits[0] == '0' && digits.size() < formerDigits.size())
        digits.insert(0, formerDigits.size() - digits.size(), '0');
    return std::string(prefix) + digits;
}

std::string spellYamlDouble(double number, std::string_view former)
{
    if (std::isnan(number))
        return ".nan";
    if (std::isinf(number))
        return number < 0 ? "-.inf" : ".inf";
    std::string spelled = spellLike(number, former).value_or(toText({Type::Double, number}));
    const std::size_t mark = std::min(spelled.find_first_of("eE"), spelled.size());
    if (mark < spelled.size() && spelled[mark + 1] != '-' && spelled[mark + 1] != '+')
        spelled.insert(mark + 1, 1, '+');
    if (spelled.find('.') >= mark)
        spelled.insert(mark, ".0");
    return spelled;
}

std::string encodeBase64(std::string_view bytes)
{
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        std::uint32_t bits = 0;
        for (std::size_t i = at; i < at + 3; ++i)
            bits = bits << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
        for (std::size_t i = 0; i < 4; ++i)
            text += at + i > bytes.size() ? '=' : base64Letters[bits >> (18 - 6 * i) & 63];
    }
    return text;
}

} // namespace Repository::Documents
