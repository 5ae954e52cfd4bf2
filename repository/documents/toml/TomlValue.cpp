#include "repository/documents/toml/TomlValue.h"

#include "repository/documents/common/NumberStyle.h"
#include "repository/documents/common/TypeTag.h"
#include "repository/documents/toml/TomlDates.h"
#include "repository/documents/toml/TomlItems.h"
#include "repository/documents/toml/TomlReader.h"
#include "repository/documents/toml/TomlTokens.h"

#include <algorithm>
#include <charconv>

namespace Repository::Documents {

namespace {

using Texts = std::vector<std::string>;

bool isString(std::string_view spelled)
{
    return !spelled.empty() && (spelled[0] == '"' || spelled[0] == '\'');
}

std::string withoutUnderscores(std::string_view spelled)
{
    std::string digits;
    std::copy_if(spelled.begin(), spelled.end(), std::back_inserter(digits), [](char c) { return c != '_'; });
    return digits;
}

// 16, 8 or 2 for a number that says so, or 10.
int baseOf(std::string_view spelled)
{
    const std::string_view prefix = spelled.substr(0, 2);
    return prefix == "0x" ? 16 : prefix == "0o" ? 8 : prefix == "0b" ? 2 : 10;
}

Value readNumber(std::string_view spelled)
{
    const Value asText{Type::String, std::string(spelled)};
    std::string buffer;
    if (spelled.find('_') != std::string_view::npos)
        spelled = buffer = withoutUnderscores(spelled);
    const int base = baseOf(spelled);
    std::string_view digits = spelled;
    digits.remove_prefix(base != 10 ? 2 : !digits.empty() && digits[0] == '+' ? 1 : 0);
    const char* const end = digits.data() + digits.size();
    std::int64_t integer = 0;
    auto read = std::from_chars(digits.data(), end, integer, base);
    if (!digits.empty() && read.ec == std::errc() && read.ptr == end)
        return {Type::Integer, integer};
    double number = 0;
    read = std::from_chars(digits.data(), end, number);
    const bool isNumber = !digits.empty() && read.ec == std::errc() && read.ptr == end;
    return isNumber ? Value{Type::Double, number} : asText;
}

// In the base of the former number, with as many digits at least.
std::string spellInteger(std::int64_t number, std::string_view former)
{
    const int base = baseOf(former);
    if (base == 10 || number < 0)
        return std::to_string(number);
    const std::string formerDigits = withoutUnderscores(former.substr(2));
    const bool isUpper = formerDigits.find_first_of("ABCDEF") != std::string::npos;
    char buffer[64];
    std::string digits(buffer, std::to_chars(std::begin(buffer), std::end(buffer), number, base).ptr);
    if (isUpper)
        std::transform(digits.begin(), digits.end(), digits.begin(),
                       [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
    const bool isPadded = formerDigits.size() > 1 && formerDigits[0] == '0';
    if (isPadded && digits.size() < formerDigits.size())
        digits.insert(0, formerDigits.size() - digits.size(), '0');
    return std::string(former.substr(0, 2)) + digits;
}

std::string spellDouble(double number, std::string_view former)
{
    const auto alike = spellLike(number, withoutUnderscores(former));
    std::string spelled = alike.value_or(toText({Type::Double, number}));
    if (spelled.find_first_of(".einfaE") == std::string::npos)
        spelled += ".0";
    return spelled;
}

std::string spellNewList(const Texts& list, const TomlStringPlace& place)
{
    constexpr std::size_t longest = 80;
    std::string line;
    std::string lines;
    for (const std::string& text : list) {
        const std::string item = encodeTomlString(text);
        line += (line.empty() ? "" : ", ") + item;
        lines += std::string(place.lineEnd) + "    " + item + ",";
    }
    const bool isLong = place.mayBreak && list.size() > 1 && line.size() > longest;
    return isLong ? '[' + lines + std::string(place.lineEnd) + ']' : '[' + line + ']';
}

// Elements that both lists share at the beginning or end keep their bytes.
std::string spellList(const Texts& list, std::string_view former, const TomlStringPlace& place)
{
    const Value old = readTomlValue(former);
    const bool isFilled =
        old.type == Type::StringList && former.find_first_of("\"'#") != std::string_view::npos;
    if (!isFilled)
        return spellNewList(list, place);
    const Texts& texts = std::get<Texts>(old.data);
    TomlItems items(former, place.lineEnd);
    const auto begin = std::mismatch(texts.begin(), texts.end(), list.begin(), list.end());
    const auto end = std::mismatch(texts.rbegin(), std::reverse_iterator(begin.first), list.rbegin(),
                                   std::reverse_iterator(begin.second));
    const auto from = std::size_t(begin.first - texts.begin());
    const auto oldCount = std::size_t(end.first.base() - begin.first);
    const auto newCount = std::size_t(end.second.base() - begin.second);
    const std::size_t common = std::min(oldCount, newCount);
    for (std::size_t i = from; i < from + common; ++i) {
        if (texts[i] != list[i])
            items.replace(i, encodeTomlStringLike(list[i], items.item(i), {place.lineEnd, false}));
    }
    Texts added;
    std::transform(begin.second + std::ptrdiff_t(common), begin.second + std::ptrdiff_t(newCount),
                   std::back_inserter(added), encodeTomlString);
    items.insert(from + common, added);
    items.remove(from + common, oldCount - common);
    return items.apply();
}

} // namespace

Value readTomlValue(std::string_view spelled)
{
    if (spelled.empty())
        return {Type::String, std::string()};
    if (isString(spelled))
        return {Type::String, decodeTomlString(spelled)};
    if (spelled[0] == '[') {
        Texts texts;
        for (std::size_t at = skipTomlTrivia(spelled, 1);
             at < spelled.size() && isString(spelled.substr(at));) {
            const std::size_t end = skipTomlString(spelled, at);
            texts.push_back(decodeTomlString(spelled.substr(at, end - at)));
            at = skipTomlTrivia(spelled, end);
            at = spelled[at] == ',' ? skipTomlTrivia(spelled, at + 1) : at;
        }
        return {Type::StringList, std::move(texts)};
    }
    if (spelled == "true" || spelled == "false")
        return {Type::Bool, spelled == "true"};
    if (const auto date = readTomlDate(spelled))
        return *date;
    return readNumber(spelled);
}

Value readTomlValue(std::string_view spelled, Type tag)
{
    Value plain = readTomlValue(spelled);
    if (tag == Type::Group || plain.type == Type::StringList)
        return plain;
    const std::string text = toText(plain);
    return readTaggedValue(tag, text, std::move(plain));
}

std::optional<std::string> spellTomlValue(const Value& value, std::string_view former,
                                          const TomlStringPlace& place)
{
    switch (value.type) {
    case Type::Bool:
        return toText(value);
    case Type::Integer:
        return spellInteger(std::get<std::int64_t>(value.data), former);
    case Type::Double:
        return spellDouble(std::get<double>(value.data), former);
    case Type::String: {
        const auto& text = std::get<std::string>(value.data);
        return isUtf8(text) ? std::optional(encodeTomlStringLike(text, isString(former) ? former : "", place))
                            : std::nullopt;
    }
    case Type::StringList: {
        const auto& list = std::get<Texts>(value.data);
        const bool isValid =
            std::all_of(list.begin(), list.end(), [](const auto& text) { return isUtf8(text); });
        return isValid ? std::optional(spellList(list, former, place)) : std::nullopt;
    }
    case Type::Date:
    case Type::Time:
    case Type::DateTime: {
        std::string spelled = spellTomlDate(value, former);
        const bool isHeld = isSame(readTomlValue(spelled), value) && TomlReader::check("k=" + spelled).ok();
        return isHeld ? std::optional(std::move(spelled)) : std::nullopt;
    }
    default:
        return {};
    }
}

TomlContent spellTaggedTomlValue(const Value& value, std::string_view former, const TomlStringPlace& place)
{
    const std::string text = toText(value);
    std::int64_t integer = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), integer);
    if (value.type == Type::Unsigned && read.ec == std::errc())
        return {spellInteger(integer, former), {}};
    if (auto plain = spellTomlValue(value, former, place))
        return {*std::move(plain), {}};
    if (value.type == Type::String || value.type == Type::StringList || value.type == Type::Group)
        return {{}, Reason::tr("the text is not valid UTF-8, which TOML demands")};
    return {encodeTomlStringLike(text, isString(former) ? former : "", place), {}};
}

} // namespace Repository::Documents
