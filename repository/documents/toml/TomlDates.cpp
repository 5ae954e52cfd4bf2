#include "repository/documents/toml/TomlDates.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

constexpr auto npos = std::string_view::npos;
constexpr std::size_t dateLength = 10; // of 2024-01-02
constexpr std::string_view digits = "0123456789";

bool looksLikeDate(std::string_view text)
{
    return text.size() >= dateLength && text[4] == '-' && text[7] == '-' && digits.find(text[0]) != npos &&
           text.find_first_not_of("0123456789-") >= dateLength;
}

bool looksLikeTime(std::string_view text)
{
    return text.size() > 2 && text[2] == ':' && text.find_first_not_of("0123456789:.") == npos;
}

// Where the digits of a fraction begin and end; both the end of the text without any.
std::pair<std::size_t, std::size_t> fractionOf(std::string_view text)
{
    const std::size_t point = text.find('.');
    const std::size_t begin = point == npos ? text.size() : point + 1;
    return {begin, std::min(text.find_first_not_of(digits, begin), text.size())};
}

bool isNumericUtc(std::string_view text)
{
    return text.size() > 6 &&
           (text.substr(text.size() - 6) == "+00:00" || text.substr(text.size() - 6) == "-00:00");
}

} // namespace

std::optional<Value> readTomlDate(std::string_view spelled)
{
    const bool hasDate = looksLikeDate(spelled);
    if (!hasDate && !looksLikeTime(spelled))
        return {};
    std::string text(spelled);
    if (text.size() > dateLength && text[dateLength] == 't')
        text[dateLength] = 'T';
    if (text.back() == 'z')
        text.back() = 'Z';
    const Type type = !hasDate ? Type::Time : text.size() == dateLength ? Type::Date : Type::DateTime;
    auto read = readFileText(text, type);
    return read.ok() ? std::move(read.value) : Value{Type::String, std::string(spelled)};
}

std::string spellTomlDate(const Value& value, std::string_view former)
{
    std::string text = toText(value);
    const auto [formerBegin, formerEnd] = fractionOf(former);
    const auto [begin, end] = fractionOf(text);
    const std::size_t count = end - begin;
    const std::size_t formerCount = formerEnd - formerBegin;
    const bool isAlike = looksLikeDate(former) || looksLikeTime(former);
    if (isAlike && value.type != Type::Date && formerCount > count) {
        const std::size_t zone = value.type == Type::DateTime ? text.find_first_of("Z+-", dateLength) : npos;
        const std::size_t at = count > 0 ? end : std::min(zone, text.size());
        text.insert(at, (count > 0 ? "" : ".") + std::string(formerCount - count, '0'));
    }
    if (value.type != Type::DateTime || !looksLikeDate(former) || former.size() <= dateLength)
        return text;
    if (text.size() > dateLength)
        text[dateLength] = former[dateLength];
    if (text.back() == 'Z' && isNumericUtc(former))
        text.replace(text.size() - 1, 1, former.substr(former.size() - 6));
    else if (text.back() == 'Z' && former.back() == 'z')
        text.back() = 'z';
    return text;
}

} // namespace Repository::Documents
