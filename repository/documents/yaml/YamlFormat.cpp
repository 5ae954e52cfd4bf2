#include "repository/documents/yaml/YamlFormat.h"

#include "repository/documents/common/EncodedNames.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/yaml/YamlTokens.h"
#include "repository/documents/yaml/YamlWriter.h"

namespace Repository::Documents {

namespace {

// The reason of a refusal; empty on success.
std::string writeEntries(const std::vector<Entry>& entries, std::string& text)
{
    YamlBranch root;
    std::string error = growYamlBranch(entries, root);
    if (!error.empty())
        return error;
    YamlWriter writer({});
    writer.writeWhole(root);
    text = std::move(writer.text);
    return writer.error;
}

// The one of a key; npos without any.
std::size_t findColon(std::string_view line)
{
    std::size_t at = line.find(':');
    while (at < line.size() && at + 1 < line.size() && !isYamlBlank(line[at + 1]))
        at = line.find(':', at + 1);
    return at;
}

} // namespace

// Files of lines have neither maps and lists within others nor the marker of a document.
bool YamlFormat::claims(std::string_view text) const
{
    const std::string_view first = textLineAt(text, skipYamlTrivia(text, 0)).content;
    const bool hasKey = findColon(first) < first.find('=') && !startsWith(first, "[");
    const bool hasMarker = first == "---" || startsWith(first, "--- ");
    if (!hasKey && !hasMarker)
        return false;
    const auto document = makeDocument();
    if (!document->parse(std::string(text)).ok())
        return false;
    bool isTypical = false;
    document->visit([&isTypical, hasMarker](const Entry& entry) {
        isTypical = isTypical || (hasMarker && !entry.path.empty()) ||
                    entry.path.find('.') != std::string::npos || entry.value.type == Type::StringList;
    });
    return isTypical;
}

// A key that is in a map twice is not written again.
bool YamlFormat::takesText(const std::vector<Entry>& entries) const
{
    return !EncodedNames::areNeededBy(entries);
}

std::optional<std::string> YamlFormat::writeWhole(std::vector<Entry>& entries) const
{
    EncodedNames::encodeWhole(entries, false);
    std::string text;
    return writeEntries(entries, text).empty() ? std::optional(std::move(text)) : std::nullopt;
}

std::string YamlFormat::explainRefusal(const std::vector<Entry>& entries) const
{
    std::string text;
    return writeEntries(entries, text);
}

bool YamlFormat::declaresNames(const Document& document) const
{
    const auto spelling = document.spell(EncodedNames::member);
    return spelling == EncodedNames::form || spelling == quoted(EncodedNames::form);
}

std::optional<Entry> YamlFormat::originalOf(const Entry& entry) const
{
    return EncodedNames::originalOf(entry);
}

} // namespace Repository::Documents
