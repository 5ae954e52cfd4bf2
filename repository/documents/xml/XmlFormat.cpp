#include "repository/documents/xml/XmlFormat.h"

#include "repository/documents/common/EncodedNames.h"
#include "repository/documents/xml/XmlEncodedNames.h"
#include "repository/documents/xml/XmlTypeTag.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

constexpr std::string_view nameStarts = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_";
constexpr std::string_view nameCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz_0123456789:.-";
constexpr std::string_view blanks = " \t\n\v\f\r";

// Takes the run of those characters off the text.
std::string_view takeRun(std::string_view& text, std::string_view characters)
{
    const std::string_view run = text.substr(0, text.find_first_not_of(characters));
    text.remove_prefix(run.size());
    return run;
}

bool startsWithOneOf(std::string_view text, std::string_view characters)
{
    return !text.empty() && characters.find(text.front()) != std::string_view::npos;
}

bool lieInOneElement(const std::vector<Entry>& entries)
{
    const std::string first = entries.empty() ? std::string() : entries.front().path;
    const std::string_view top = std::string_view(first).substr(0, first.find('.'));
    return !top.empty() && std::all_of(entries.begin(), entries.end(), [top](const Entry& entry) {
        const std::string_view path = entry.path;
        return path.substr(0, path.find('.')) == top && !EncodedNames::areNeededBy(top);
    });
}

} // namespace

// Some line formats have sections in angle brackets, too, but those are not tags.
bool XmlFormat::begins(std::string_view text) const
{
    if (!startsWithOneOf(text, "<"))
        return false;
    text.remove_prefix(1);
    if (startsWithOneOf(text, "?!"))
        return true;
    if (!startsWithOneOf(text, nameStarts))
        return false;
    const std::string_view name = takeRun(text, nameCharacters);
    takeRun(text, blanks);
    if (startsWithOneOf(text, ">") || text.substr(0, 2) == "/>")
        return true;
    if (!startsWithOneOf(text, nameStarts)) // the name of an attribute may run into that of the element
        return startsWithOneOf(text, "=") && name.find_first_of(nameStarts, 1) != std::string_view::npos;
    takeRun(text, nameCharacters);
    takeRun(text, blanks);
    return startsWithOneOf(text, "=");
}

bool XmlFormat::rulesOut(std::string_view text) const
{
    takeRun(text, blanks);
    return !text.empty() && !startsWith(text, "<");
}

std::string XmlFormat::rootOf(const std::vector<Entry>& entries, std::string_view name) const
{
    if (lieInOneElement(entries))
        return {};
    const std::string_view element = splitNumber(name).name;
    return std::string(element.substr(std::min(element.find_first_not_of("@#"), element.size())));
}

Entry XmlFormat::encodedEntry(const Entry& entry) const
{
    return XmlEncodedNames::encode(entry);
}

void XmlFormat::declareNames(std::string& text) const
{
    XmlEncodedNames::declareIn(text);
}

bool XmlFormat::declaresNames(const Document& document) const
{
    return XmlEncodedNames::areDeclaredIn(document);
}

std::optional<Entry> XmlFormat::originalOf(const Entry& entry) const
{
    Entry original = XmlEncodedNames::decode(entry);
    const bool isWrapper = original.path.empty() && entry.value.type == Type::Group && !original.isArray;
    return isWrapper ? std::nullopt : std::optional(std::move(original));
}

std::string XmlFormat::explainTypeTag(const Value& value) const
{
    const auto document = makeDocument();
    const bool isTagged = document->insert("name", value).ok() &&
                          document->getBytes().find(xmlTypeTagBegin) != std::string::npos;
    return isTagged ? Reason::tr("The file notes its type in an instruction <?vantry type=...?> before it.")
                    : std::string();
}

} // namespace Repository::Documents
