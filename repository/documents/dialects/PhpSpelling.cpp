#include "repository/documents/dialects/PhpSpelling.h"

#include "repository/documents/common/TextLine.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

bool isWordCharacter(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool hasAny(std::string_view text, std::string_view set)
{
    return text.find_first_of(set) != std::string_view::npos;
}

// In double quotes; a backslash that escapes nothing stays.
std::string unescape(std::string_view inner, bool& isValid)
{
    std::string text;
    for (std::size_t at = 0; at < inner.size(); ++at) {
        const char next = at + 1 < inner.size() ? inner[at + 1] : '\0';
        isValid = isValid && inner[at] != '"' && !(inner[at] == '$' && next == '{');
        if (inner[at] == '\\' && (next == '"' || next == '\\' || next == '\''))
            ++at;
        text += inner[at];
    }
    return text;
}

Spelling::Reading read(std::string_view spelled)
{
    Spelling::Reading reading{std::string(spelled)};
    const char quote = spelled.size() < 2 ? '\0' : spelled.front();
    if ((quote != '"' && quote != '\'') || spelled.back() != quote) {
        reading.isValid = !hasAny(spelled, "\"'");
        return reading;
    }
    const std::string_view inner = spelled.substr(1, spelled.size() - 2);
    if (quote == '\'')
        reading.isValid = inner.find('\'') == std::string_view::npos;
    const std::string text = quote == '"' ? unescape(inner, reading.isValid) : std::string(inner);
    // Several quoted parts, and references to the environment, are shown as they are spelled.
    reading.isText = reading.isValid;
    if (reading.isValid)
        reading.text = text;
    return reading;
}

// Words and numbers, as paths and lists of extensions are made of.
bool isPlain(std::string_view text)
{
    const auto isPlainCharacter = [](char c) {
        return isWordCharacter(c) || std::string_view("./:,@+%-# ").find(c) != std::string_view::npos;
    };
    return !text.empty() && std::all_of(text.begin(), text.end(), isPlainCharacter);
}

// Constants and what joins them, as in E_ALL & ~E_NOTICE.
bool isExpression(std::string_view text)
{
    const auto belongs = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
               std::string_view("_&|^~!() ").find(c) != std::string_view::npos;
    };
    return std::all_of(text.begin(), text.end(), belongs) && hasAny(text, "_") && text.front() != ' ';
}

std::vector<std::string> write(std::string_view text, std::string_view before)
{
    std::vector<std::string> spellings;
    const char own = quoteAround(before);
    if (own == '\'' && !hasAny(text, "'"))
        spellings.push_back('\'' + std::string(text) + '\'');
    if (own == '\0' && (isPlain(text) || isExpression(text) || text.empty()))
        spellings.emplace_back(text);
    if (!hasAny(text, "\"\\$"))
        spellings.push_back(quoted(text));
    if (!hasAny(text, "'"))
        spellings.push_back('\'' + std::string(text) + '\'');
    std::string escaped;
    for (const char c : text) {
        if (c == '"' || c == '\\')
            escaped += '\\';
        escaped += c;
    }
    spellings.push_back(quoted(escaped));
    return spellings;
}

} // namespace

const Spelling phpSpelling{read, write};

} // namespace Repository::Documents
