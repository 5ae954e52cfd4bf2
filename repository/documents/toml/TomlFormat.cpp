#include "repository/documents/toml/TomlFormat.h"

#include "repository/documents/common/EncodedNames.h"
#include "repository/documents/toml/TomlBranch.h"

namespace Repository::Documents {

std::optional<std::string> TomlFormat::writeWhole(std::vector<Entry>& entries) const
{
    EncodedNames::encodeWhole(entries, true);
    TomlBranch root;
    const TomlStyle style;
    TomlBranchWriter writer(style);
    if (!growTomlBranch(entries, root).empty())
        return {};
    writer.writeMembers({}, root);
    return writer.error.empty() ? std::optional(std::move(writer.text)) : std::nullopt;
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
