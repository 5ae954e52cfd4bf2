#include "repository/documents/toml/TomlFormat.h"

#include "repository/documents/common/EncodedNames.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/toml/TomlBranch.h"

namespace Repository::Documents {

namespace {

// The reason of a refusal; empty on success.
std::string writeTables(const std::vector<Entry>& entries, std::string& text)
{
    TomlBranch root;
    const TomlStyle style;
    TomlBranchWriter writer(style);
    std::string error = growTomlBranch(entries, root);
    if (!error.empty())
        return error;
    writer.writeMembers({}, root);
    text = std::move(writer.text);
    return writer.error;
}

// Whether a value or a key begins in it as none does in a file of lines, or an element of an array of tables.
bool isOfTomlAlone(std::string_view line)
{
    const std::size_t equals = line.find('=');
    const std::string_view value =
        equals == std::string_view::npos ? std::string_view() : trimBlanks(line.substr(equals + 1));
    return startsWith(line, "[[") || (startsWith(line, "\"") && equals != std::string_view::npos) ||
           startsWith(value, "[") || startsWith(value, "{") || startsWith(value, "\"\"\"") ||
           startsWith(value, "'''");
}

// Whether it is a key with a text in quotes and with blanks in between, as no shell reads it.
bool isSpacedText(std::string_view line)
{
    const std::size_t equals = line.find('=');
    if (equals == 0 || equals == std::string_view::npos || line[equals - 1] != ' ')
        return false;
    const std::string_view value = line.substr(equals + 1);
    return startsWith(value, " \"") || startsWith(value, " '");
}

template <class Predicate>
bool hasLine(std::string_view text, Predicate isWanted)
{
    for (std::size_t at = 0; at < text.size();) {
        const TextLine line = textLineAt(text, at);
        const std::string_view content = trimBlanks(line.content);
        if (!startsWith(content, "#") && isWanted(content))
            return true;
        at = line.end;
    }
    return false;
}

// Whether the text is valid, or is cut off within a value.
bool isValidSoFar(std::string_view text)
{
    const Outcome outcome = TomlDocument().parse(std::string(text));
    const Outcome end = outcomeAt(text, text.size() - 1);
    return outcome.ok() || (outcome.line == end.line && outcome.column >= end.column);
}

} // namespace

bool TomlFormat::claims(std::string_view text) const
{
    return hasLine(text, isOfTomlAlone) && isValidSoFar(text);
}

bool TomlFormat::suits(std::string_view text) const
{
    const auto isHeader = [](std::string_view line) { return startsWith(line, "["); };
    return hasLine(text, isHeader) && hasLine(text, isSpacedText) && isValidSoFar(text);
}

std::optional<std::string> TomlFormat::writeWhole(std::vector<Entry>& entries) const
{
    EncodedNames::encodeWhole(entries, true);
    std::string text;
    return writeTables(entries, text).empty() ? std::optional(std::move(text)) : std::nullopt;
}

// Of an array that is inserted element by element, a table with numbers for keys would remain.
std::string TomlFormat::explainRefusal(const std::vector<Entry>& entries) const
{
    std::string text;
    return writeTables(entries, text);
}

bool TomlFormat::declaresNames(const Document& document) const
{
    return EncodedNames::isDeclaredIn(document);
}

std::optional<Entry> TomlFormat::originalOf(const Entry& entry) const
{
    return EncodedNames::originalOf(entry);
}

} // namespace Repository::Documents
