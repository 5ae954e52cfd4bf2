#include "repository/documents/dialects/MysqlSpelling.h"

#include "repository/documents/common/TextLine.h"
#include "repository/documents/dialects/Brackets.h"
#include "repository/documents/dialects/Escapes.h"

namespace Repository::Documents {

namespace {

constexpr Escapes readEscapes{"ntrbs\"'\\", "\n\t\r\b \"'\\"};
constexpr Escapes bareEscapes{"ntrb\\", "\n\t\r\b\\"};
constexpr Escapes quotedEscapes{"ntrb\"\\", "\n\t\r\b\"\\"};

Spelling::Reading read(std::string_view spelled)
{
    Spelling::Reading reading;
    const char quote = spelled.size() < 2 ? '\0' : spelled.front();
    reading.isText = (quote == '"' || quote == '\'') && spelled.back() == quote;
    if (reading.isText)
        spelled = spelled.substr(1, spelled.size() - 2);
    for (std::size_t at = 0; at < spelled.size(); ++at) {
        const char escaped =
            spelled[at] == '\\' && at + 1 < spelled.size() ? readEscapes.characterOf(spelled[at + 1]) : '\0';
        reading.text += escaped == '\0' ? spelled[at] : escaped;
        at += escaped == '\0' ? 0 : 1;
    }
    return reading;
}

std::vector<std::string> write(std::string_view text, std::string_view before)
{
    std::vector<std::string> spellings{std::string(text), bareEscapes.write(text),
                                       quoted(quotedEscapes.write(text))};
    // A backslash that is alone is a trap for the next who edits.
    if (text.find('\\') != std::string_view::npos)
        spellings.erase(spellings.begin());
    // MySQL takes the last byte for a blank, as it is one in ISO-8859-1: that of "\xC3\xA0", a with a grave.
    if (!text.empty() && text.back() == '\xA0')
        return {spellings.back()};
    if (quoteAround(before) != '\0')
        spellings.insert(spellings.begin(), spellings.back());
    return spellings;
}

// A quote would open there what a comment sign after the value is then looked for behind.
std::string explainKey(std::string_view key)
{
    return key.find_first_of("\"'") == std::string_view::npos
               ? std::string()
               : Reason::tr("MySQL does not take that for a name");
}

std::string explainSection(std::string_view name)
{
    return name.empty() || !isBlank(name.back()) ? explainBracket(name)
                                                 : Reason::tr("MySQL does not take that for a name");
}

} // namespace

const Spelling mysqlSpelling{read, write, nullptr, nullptr, nullptr, explainKey, explainSection};

} // namespace Repository::Documents
