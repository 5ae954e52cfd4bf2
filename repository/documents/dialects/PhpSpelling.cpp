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
    const bool mayBeBare = isPlain(text) || isExpression(text) || text.empty();
    if (own == '\0' && mayBeBare)
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
    if (own != '\0' && mayBeBare)
        spellings.emplace_back(text);
    return spellings;
}

// Words that are values everywhere.
bool isConstant(std::string_view key)
{
    std::string word(key);
    std::transform(word.begin(), word.end(), word.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    constexpr std::string_view constants[]{"null", "none", "true", "false", "yes", "no", "on", "off"};
    return std::find(std::begin(constants), std::end(constants), word) != std::end(constants);
}

// "a[b]" is an element of a.
std::string explainKey(std::string_view key)
{
    const std::string_view name = key.substr(0, key.find('['));
    const bool isElement = name.size() < key.size();
    const bool isClosed = !isElement || (key.back() == ']' && !hasAny(key, "\"';"));
    return isClosed && !isConstant(key) && !hasAny(name, "&|^$~(){}!\"\t")
               ? std::string()
               : Reason::tr("PHP does not take that for a key");
}

std::string explainSection(std::string_view name)
{
    return hasAny(name, "\"';]") || name.find("${") != std::string_view::npos
               ? Reason::tr("PHP does not take that for the name of a section")
               : std::string();
}

} // namespace

const Spelling phpSpelling{read, write, nullptr, nullptr, nullptr, explainKey, explainSection};

} // namespace Repository::Documents
