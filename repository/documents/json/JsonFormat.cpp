#include "repository/documents/json/JsonFormat.h"

#include "repository/documents/common/EncodedNames.h"
#include "repository/documents/json/JsonContent.h"
#include "repository/documents/json/JsonText.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

constexpr std::string_view blanks = " \t\n\v\f\r";

std::string_view withoutBlanks(std::string_view text)
{
    return text.substr(std::min(text.find_first_not_of(blanks), text.size()));
}

std::string_view afterComments(std::string_view text)
{
    for (text = withoutBlanks(text); startsWith(text, "//") || startsWith(text, "/*");
         text = withoutBlanks(text)) {
        const bool isLine = startsWith(text, "//");
        const std::size_t end = isLine ? text.find('\n') : text.find("*/", 2);
        if (end == std::string_view::npos)
            return {};
        text.remove_prefix(isLine ? end : end + 2);
    }
    return text;
}

// A section of an ini file has its name right after the bracket.
bool beginsLikeArray(std::string_view text)
{
    if (!startsWith(text, "["))
        return false;
    text.remove_prefix(1);
    const std::string_view rest = withoutBlanks(text);
    const std::string_view between = text.substr(0, text.size() - rest.size());
    if (between.find('\n') != std::string_view::npos)
        return true;
    if (startsWith(rest, "]"))
        return withoutBlanks(rest.substr(1)).empty();
    return !rest.empty() && std::string_view("[{\"").find(rest.front()) != std::string_view::npos;
}

} // namespace

bool JsonFormat::begins(std::string_view text) const
{
    text = afterComments(text);
    return startsWith(text, "{") || beginsLikeArray(text);
}

bool JsonFormat::rulesOut(std::string_view text) const
{
    text = afterComments(text);
    return !text.empty() && std::string_view("{[\"").find(text.front()) == std::string_view::npos;
}

// A key that is in an object twice is not written again.
bool JsonFormat::takesText(const std::vector<Entry>& entries) const
{
    return !EncodedNames::areNeededBy(entries);
}

std::optional<std::string> JsonFormat::writeWhole(std::vector<Entry>& entries) const
{
    EncodedNames::encodeWhole(entries, false);
    auto whole = JsonText::write(entries, {});
    return whole ? std::optional(std::move(whole->text) + '\n') : std::nullopt;
}

std::string JsonFormat::explainRefusal(const std::vector<Entry>& entries) const
{
    return JsonText::explainRefusal(entries);
}

bool JsonFormat::declaresNames(const Document& document) const
{
    return EncodedNames::isDeclaredIn(document);
}

std::optional<Entry> JsonFormat::originalOf(const Entry& entry) const
{
    return EncodedNames::originalOf(entry);
}

std::string JsonFormat::explainTypeTag(const Value& value) const
{
    return holds(toContent(value), Type::Group, value)
               ? std::string()
               : Reason::tr("The file notes its type in \"$types\", since json has no form for it.");
}

} // namespace Repository::Documents
