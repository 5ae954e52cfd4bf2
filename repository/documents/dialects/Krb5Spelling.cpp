#include "repository/documents/dialects/Krb5Spelling.h"

#include "repository/documents/common/TextLine.h"
#include "repository/documents/dialects/Brackets.h"
#include "repository/documents/dialects/Escapes.h"

namespace Repository::Documents {

namespace {

constexpr Escapes escapes{"ntb\"\\", "\n\t\b\"\\"};

Spelling::Reading read(std::string_view spelled)
{
    Spelling::Reading reading;
    reading.isText = startsWith(spelled, "\"");
    if (!reading.isText) {
        reading.text = spelled;
        return reading;
    }
    std::size_t at = 1;
    for (; at < spelled.size() && spelled[at] != '"'; ++at) {
        if (spelled[at] != '\\' || at + 1 == spelled.size()) {
            reading.text += spelled[at];
            continue;
        }
        const char escaped = escapes.characterOf(spelled[++at]);
        reading.text += escaped == '\0' ? spelled[at] : escaped;
    }
    reading.isValid = at + 1 == spelled.size();
    return reading;
}

std::vector<std::string> write(std::string_view text, std::string_view before)
{
    std::vector<std::string> spellings{std::string(text), quoted(escapes.write(text))};
    // Without a value, a brace is expected in the next line.
    if (text.empty() || quoteAround(before) == '"')
        spellings.erase(spellings.begin());
    return spellings;
}

std::string explainKey(std::string_view key)
{
    return key.find_first_of(" \t") == std::string_view::npos
               ? std::string()
               : Reason::tr("a key of a Kerberos profile has no blanks");
}

} // namespace

const Spelling krb5Spelling{read, write, nullptr, nullptr, nullptr, explainKey, explainBracket};

} // namespace Repository::Documents
