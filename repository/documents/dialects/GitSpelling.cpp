#include "repository/documents/dialects/GitSpelling.h"

#include "repository/documents/common/TextLine.h"
#include "repository/documents/dialects/Escapes.h"

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
    if (mustQuote || quoteAround(before) == '"')
        spellings.erase(spellings.begin());
    return spellings;
}

} // namespace

const Spelling gitSpelling{read, write};

} // namespace Repository::Documents
