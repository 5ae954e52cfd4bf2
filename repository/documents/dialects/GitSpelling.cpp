#include "repository/documents/dialects/GitSpelling.h"

#include "repository/documents/common/TextLine.h"
#include "repository/documents/dialects/Escapes.h"

#include <algorithm>
#include <utility>

namespace Repository::Documents {

namespace {

constexpr Escapes escapes{"ntb\"\\", "\n\t\b\"\\"};

Spelling::Reading read(std::string_view spelled)
{
    Spelling::Reading reading;
    bool isQuoted = false;
    for (std::size_t at = 0; at < spelled.size(); ++at) {
        const char c = spelled[at];
        if (c == '"') {
            isQuoted = !isQuoted;
            reading.isText = true;
        } else if (c != '\\') {
            reading.text += isBlank(c) && !isQuoted ? ' ' : c;
        } else if (at + 1 < spelled.size() && !isLineEnd(spelled[at + 1])) {
            const char escaped = escapes.characterOf(spelled[++at]);
            reading.isValid = reading.isValid && escaped != '\0';
            reading.text += escaped;
        } else {
            at += spelled.substr(at + 1, 2) == "\r\n" ? 2 : 1; // it joins two lines
            reading.isText = true;
        }
    }
    reading.isValid = reading.isValid && !isQuoted;
    if (!reading.isValid)
        reading.text = spelled;
    return reading;
}

std::vector<std::string> write(std::string_view text, std::string_view before)
{
    const std::string escaped = escapes.write(text);
    std::vector<std::string> spellings{escaped, quoted(escaped)};
    const bool mustQuote = text != trimBlanks(text) || text.find_first_of(";#") != std::string_view::npos;
    if (mustQuote)
        spellings.erase(spellings.begin());
    else if (quoteAround(before) == '"')
        std::swap(spellings.front(), spellings.back());
    return spellings;
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isNameCharacter(char c)
{
    return isLetter(c) || (c >= '0' && c <= '9') || c == '-';
}

std::string explainKey(std::string_view key)
{
    const bool isKey =
        !key.empty() && isLetter(key.front()) && std::all_of(key.begin(), key.end(), isNameCharacter);
    return isKey ? std::string() : Reason::tr("a key of git is a letter, then letters, digits and hyphens");
}

// What is in quotes may be anything, and blanks come before it only.
std::string explainSection(std::string_view name)
{
    const std::size_t quote = name.find('"');
    const std::string_view section =
        quote == std::string_view::npos ? name : trimBlanks(name.substr(0, quote));
    const bool isSection = !section.empty() && std::all_of(section.begin(), section.end(), [](char c) {
        return isNameCharacter(c) || c == '.';
    });
    return isSection ? std::string() : Reason::tr("a section of git has letters, digits and hyphens only");
}

} // namespace

const Spelling gitSpelling{read, write, nullptr, nullptr, nullptr, explainKey, explainSection};

} // namespace Repository::Documents
