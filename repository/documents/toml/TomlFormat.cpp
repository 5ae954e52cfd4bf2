#include "repository/documents/toml/TomlFormat.h"

#include "repository/documents/common/EncodedNames.h"
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

} // namespace

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
