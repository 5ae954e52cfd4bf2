#include "repository/documents/json/JsonText.h"

#include "repository/documents/common/TypeTag.h"
#include "repository/documents/json/JsonContent.h"
#include "repository/documents/json/JsonMembers.h"
#include "repository/documents/json/JsonReader.h"
#include "repository/documents/json/JsonScalar.h"
#include "repository/documents/json/JsonTypes.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace Repository::Documents {

namespace {

// For most texts the literal is the text in quotes.
void appendLiteral(std::string& target, std::string_view text)
{
    const bool isPlain = std::none_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 || c == '"' || c == '\\' || c == '\x7F';
    });
    if (isPlain)
        ((target += '"') += text) += '"';
    else
        target += encodeString(text);
}

template <typename Integer>
void appendNumber(std::string& target, Integer number)
{
    char digits[24];
    target.append(digits, std::to_chars(std::begin(digits), std::end(digits), number).ptr);
}

} // namespace

std::optional<JsonText::Result> JsonText::write(const std::vector<Entry>& entries, const JsonTextStyle& style)
{
    JsonText writer(entries, style);
    if (entries.empty())
        writer.result.text = "{}";
    else if (!writer.writeNode({0, entries.size(), 0}, 0) || !writer.writeTags())
        return {};
    const bool hasTypes = !writer.tagged.empty() || !writer.result.types.empty();
    if (hasTypes && writer.result.hasArrays && !explainRefusal(entries).empty())
        return {};
    return std::move(writer.result);
}

std::string JsonText::explainRefusal(const std::vector<Entry>& entries)
{
    struct Elements
    {
        bool areTexts = true;
        const Entry* tagged = nullptr;
    };
    std::map<std::string_view, Elements> found;
    const ArrayGroups arrays(entries);
    for (const Entry& entry : entries) {
        const std::string_view parent = splitLast(entry.path).parent;
        for (std::string_view above = parent; !above.empty(); above = splitLast(above).parent)
            found[splitLast(above).parent].areTexts = false;
        if (entry.path.empty() || !arrays.contain(parent))
            continue;
        Elements& elements = found[parent];
        elements.areTexts = elements.areTexts && toTaggedContent(entry.value).kind == JsonKind::Text;
        if (entry.value.type != Type::String)
            elements.tagged = &entry;
    }
    for (const auto& [path, elements] : found) {
        if (elements.areTexts && elements.tagged)
            return Reason::tr(
                "%1 would be a list of texts, in which json cannot say that %2 is %3",
                {quoted(path), quoted(elements.tagged->path), describeType(elements.tagged->value.type)});
    }
    return {};
}

JsonText::Range JsonText::childAt(const Range& node, std::size_t begin) const
{
    const std::string& first = entries[begin].path;
    const std::size_t nameStart = node.pathLength == 0 ? 0 : node.pathLength + 1;
    Range child{begin, begin + 1, std::min(first.find('.', nameStart), first.size())};
    while (child.end < node.end) {
        const std::string& path = entries[child.end].path;
        if (path.size() <= child.pathLength || path[child.pathLength] != '.' ||
            path.compare(nameStart, child.pathLength - nameStart, first, nameStart,
                         child.pathLength - nameStart) != 0)
            break;
        ++child.end;
    }
    return child;
}

JsonText::Range JsonText::firstChild(const Range& node) const
{
    return childAt(node, node.begin + (hasValue(node) ? 1 : 0));
}

std::string_view JsonText::nameOf(const Range& node, const Range& child) const
{
    const std::size_t start = node.pathLength == 0 ? 0 : node.pathLength + 1;
    return std::string_view(entries[child.begin].path).substr(start, child.pathLength - start);
}

bool JsonText::isArray(const Range& node) const
{
    return arrays.contain(std::string_view(entries[node.begin].path).substr(0, node.pathLength));
}

// The elements of an array by their indexes, whatever order they come in.
std::vector<JsonText::Range> JsonText::childrenOf(const Range& node, bool asArray) const
{
    std::vector<Range> children;
    for (Range child = firstChild(node);; child = childAt(node, child.end)) {
        children.push_back(child);
        if (child.end == node.end)
            break;
    }
    if (asArray) {
        const auto indexOf = [&](const Range& child) { return *readIndex(nameOf(node, child)); };
        const auto isBefore = [&](const Range& a, const Range& b) { return indexOf(a) < indexOf(b); };
        if (!std::is_sorted(children.begin(), children.end(), isBefore))
            std::sort(children.begin(), children.end(), isBefore);
    }
    return children;
}

bool JsonText::writeNode(const Range& node, std::size_t depth)
{
    if (node.end == node.begin + 1 && hasValue(node))
        return writeValue(entries[node.begin], depth);
    const bool asArray = isArray(node);
    result.hasArrays = result.hasArrays || asArray;
    return writeContainer(node, depth, asArray);
}

bool JsonText::writeContainer(const Range& node, std::size_t depth, bool asArray)
{
    if (depth + 1 >= JsonReader::maximumDepth)
        return false;
    result.depth = std::max(result.depth, depth + 1);
    result.text += asArray ? '[' : '{';
    bool isFirst = true;
    if (hasValue(node) && entries[node.begin].value.type != Type::Group) {
        beginItem(true, depth + 1);
        ((result.text += '"') += ownValueKey) += '"';
        result.text += style.colon;
        if (!writeValue(entries[node.begin], depth + 1))
            return false;
        isFirst = false;
    }
    for (const Range& child : childrenOf(node, asArray)) {
        beginItem(isFirst, depth + 1);
        isFirst = false;
        if ((!asArray && !writeKey(nameOf(node, child), node.pathLength == 0)) ||
            !writeNode(child, depth + 1))
            return false;
    }
    membersEnd = result.text.size();
    endItems(asArray ? ']' : '}', depth);
    return true;
}

// The tags are after all members of the root.
bool JsonText::writeTags()
{
    if (tagged.empty())
        return true;
    if (result.text.back() != '}' || entries.size() == 1)
        return false;
    result.text.resize(membersEnd);
    beginItem(false, 1);
    appendLiteral(result.text, typesKey);
    result.text += style.colon + '{';
    for (const Entry* const entry : tagged) {
        beginItem(entry == tagged.front(), 2);
        appendLiteral(result.text, entry->path);
        result.text += style.colon;
        appendLiteral(result.text, rowOf(entry->value.type).name);
    }
    endItems('}', 1);
    endItems('}', 0);
    return true;
}

bool JsonText::writeKey(std::string_view component, bool isInRoot)
{
    if (isInRoot && component == typesKey)
        return false;
    if (isPlainKey(component)) {
        appendLiteral(result.text, component);
    } else {
        const auto key = decodeKey(component);
        if (!key || *key == ownValueKey || !isUtf8(*key))
            return false;
        appendLiteral(result.text, *key);
    }
    result.text += style.colon;
    return true;
}

bool JsonText::writeValue(const Entry& entry, std::size_t depth)
{
    const Value& value = entry.value;
    switch (value.type) {
    case Type::Integer:
        appendNumber(result.text, std::get<std::int64_t>(value.data));
        return true;
    case Type::Bool:
        result.text += std::get<bool>(value.data) ? "true" : "false";
        return true;
    case Type::String: {
        const auto& text = std::get<std::string>(value.data);
        appendLiteral(result.text, text);
        return isUtf8(text);
    }
    case Type::Group:
        result.depth = std::max(result.depth, depth + 1);
        result.text += "{}";
        return true;
    default:
        break;
    }
    JsonContent content = toContent(value);
    if (!holds(content, Type::Group, value)) {
        content = toTaggedContent(value);
        if (!content.error.empty())
            return false;
        if (style.canTag)
            tagged.push_back(&entry);
        else
            result.types.emplace_back(entry.path, value.type);
    }
    if (content.kind == JsonKind::Array)
        return writeList(content.list, depth);
    result.text += content.spelling;
    return true;
}

bool JsonText::writeList(const std::vector<std::string>& list, std::size_t depth)
{
    result.depth = std::max(result.depth, depth + 1);
    const bool inLines = style.inLines && isLongList(list);
    const std::string_view between = style.colon.back() == ' ' ? ", " : ",";
    result.text += '[';
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (inLines)
            beginItem(i == 0, depth + 1);
        else if (i > 0)
            result.text += between;
        appendLiteral(result.text, list[i]);
    }
    if (inLines)
        endItems(']', depth);
    else
        result.text += ']';
    return true;
}

void JsonText::beginItem(bool isFirst, std::size_t depth)
{
    if (!isFirst)
        result.text += ',';
    if (style.inLines)
        breakLine(depth);
    else if (!isFirst && style.colon.back() == ' ')
        result.text += ' ';
}

void JsonText::endItems(char bracket, std::size_t depth)
{
    if (style.inLines)
        breakLine(depth);
    result.text += bracket;
}

void JsonText::breakLine(std::size_t depth)
{
    result.text += style.lineBreak;
    for (std::size_t i = 0; i < depth; ++i)
        result.text += style.indentation;
}

} // namespace Repository::Documents
