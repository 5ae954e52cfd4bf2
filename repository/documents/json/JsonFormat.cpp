#include "repository/documents/json/JsonFormat.h"

#include "repository/documents/common/ArrayGroups.h"
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

// Whether json has no key for a name of the path as it is.
bool needsCodes(const Entry& entry)
{
    if (EncodedNames::areNeededBy(entry.path))
        return true;
    if (entry.path.find('%') == std::string::npos)
        return false;
    const auto components = splitPath(entry.path);
    return components && std::any_of(components->begin(), components->end(), [](std::string_view component) {
               return !isUtf8(decodeKey(component).value_or(std::string()));
           });
}

} // namespace

bool JsonFormat::begins(std::string_view text) const
{
    text = afterComments(text);
    return startsWith(text, "{") || beginsLikeArray(text);
}

// A key that is in an object twice is not written again.
bool JsonFormat::takesText(const std::vector<Entry>& entries) const
{
    return std::none_of(entries.begin(), entries.end(), needsCodes);
}

std::optional<std::string> JsonFormat::writeWhole(std::vector<Entry>& entries) const
{
    if (!takesText(entries)) {
        const bool isArray = ArrayGroups(entries).contain({});
        for (Entry& entry : entries) {
            const bool isMember = entry.path.compare(0, entry.path.find('.'), EncodedNames::member) == 0;
            entry.path = EncodedNames::toDocument(isMember ? '@' + entry.path : entry.path);
            if (isArray)
                entry.path = joinPath(encodeKey(EncodedNames::whole), entry.path);
        }
        entries.push_back(
            {std::string(EncodedNames::member), {Type::String, std::string(EncodedNames::form)}});
    }
    auto whole = JsonText::write(entries, {});
    return whole ? std::optional(std::move(whole->text) + '\n') : std::nullopt;
}

bool JsonFormat::declaresNames(const Document& document) const
{
    return EncodedNames::isDeclaredIn(document);
}

std::optional<Entry> JsonFormat::originalOf(const Entry& entry) const
{
    if (entry.path == EncodedNames::member)
        return {};
    const std::string path = EncodedNames::fromDocument(entry.path);
    const std::string_view top = std::string_view(path).substr(0, path.find('.'));
    const std::size_t own = top == EncodedNames::whole ? std::min(top.size() + 1, path.size()) : 0;
    const bool isMember = top.substr(0, 1) == "@" && top.substr(1) == EncodedNames::member;
    return Entry{path.substr(isMember ? 1 : own), entry.value, entry.isArray};
}

std::string JsonFormat::explainTypeTag(const Value& value) const
{
    return holds(toContent(value), Type::Group, value)
               ? std::string()
               : "The file notes its type in \"$types\", since json has no form for it.";
}

} // namespace Repository::Documents
