#include "repository/documents/xml/XmlDocument.h"

#include "repository/documents/common/KeyText.h"
#include "repository/documents/common/Refusal.h"
#include "repository/documents/common/TextPosition.h"
#include "repository/documents/xml/XmlComponent.h"
#include "repository/documents/xml/XmlDeclaration.h"
#include "repository/documents/xml/XmlReader.h"
#include "repository/documents/xml/XmlWriter.h"

#include <new>

namespace Repository::Documents {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

std::string lineEndOf(std::string_view text)
{
    const std::size_t end = text.find_first_of("\r\n");
    if (end == std::string_view::npos || text[end] == '\n')
        return "\n";
    return text.substr(end, 2) == "\r\n" ? "\r\n" : "\r";
}

} // namespace

XmlDocument::XmlDocument() : content(std::make_unique<Content>(std::string()))
{
}

Outcome XmlDocument::parse(std::string bytes)
{
    try {
        const XmlDeclaration declaration = readXmlDeclaration(bytes);
        if (declaration.encoding == XmlEncoding::Unknown) {
            const TextPosition position = positionOf(bytes, declaration.offset);
            return {"the encoding " + quoted(declaration.name) + " is not known; save the file as UTF-8",
                    position.line, position.column};
        }
        TextEncoding encoding;
        const bool isNamed = declaration.encoding == XmlEncoding::CharacterSet;
        const Outcome decoded = encoding.decode(bytes, {true, isNamed ? declaration.name : std::string()});
        if (!decoded.ok())
            return decoded;
        auto fresh = std::make_unique<Content>(std::move(bytes));
        fresh->spelling.encoding = encoding;
        fresh->spelling.isAscii = declaration.encoding == XmlEncoding::Ascii;
        fresh->spelling.lineEnd = lineEndOf(fresh->tree.getOriginal());
        const SyntaxFault fault = XmlReader(fresh->tree, fresh->entities).read();
        if (!fault.message.empty()) {
            const TextPosition position = positionOf(fresh->tree.getOriginal(), fault.offset);
            return {fault.message, position.line, position.column};
        }
        content = std::move(fresh);
    } catch (const std::bad_alloc&) {
        return refused("there is not enough memory for a file of this size");
    }
    return {};
}

void XmlDocument::visit(const std::function<void(const Entry&)>& visitor) const
{
    const XmlTree& tree = content->tree;
    Entry entry;
    std::vector<std::size_t> lengths; // of the paths of the elements above
    NodeId id = tree.getRoot();
    while (id != noNode) {
        const std::size_t length = entry.path.size();
        appendComponent(entry.path, id);
        entry.value = content->values.read(id);
        visitor(entry);
        const XmlNode* node = &tree.node(id);
        if (node->first != noNode) {
            lengths.push_back(length);
            id = node->first;
            continue;
        }
        entry.path.resize(length);
        while (node->next == noNode && !lengths.empty()) {
            entry.path.resize(lengths.back());
            lengths.pop_back();
            node = &tree.node(node->parent);
        }
        id = node->next;
    }
}

void XmlDocument::appendComponent(std::string& path, NodeId id) const
{
    const XmlNode& node = content->tree.node(id);
    if (!path.empty())
        path += '.';
    if (node.kind == XmlKind::Attribute)
        path += '@';
    path += node.kind == XmlKind::Text ? xmlTextComponent : content->tree.getNames().componentOf(node.name);
    if (node.number > 1)
        path += '[' + std::to_string(node.number) + ']';
}

Outcome XmlDocument::set(std::string_view path, const Value& value)
{
    Outcome outcome;
    const NodeId id = findValue(path, outcome);
    if (!outcome.ok())
        return outcome;
    if (value.type == Type::Group)
        return refused(quoted(path) + " has a value and cannot become a group");
    if (content->values.holds(id, value))
        return {};
    XmlValues::Spelled spelled = content->values.spell(id, value);
    if (!spelled.error.empty())
        return refused(spelled.error);
    content->values.put(id, std::move(spelled.text));
    return {};
}

SiblingPlace XmlDocument::placeOf(std::string_view path) const
{
    const NodeId id = find(path);
    if (id == noNode || content->tree.node(id).next == noNode)
        return {SiblingPlace::Kind::Last, {}};
    const XmlNode& node = content->tree.node(id);
    if (node.previous == noNode)
        return {SiblingPlace::Kind::First, {}};
    SiblingPlace place{SiblingPlace::Kind::After, std::string(splitLast(path).parent)};
    appendComponent(place.sibling, node.previous);
    return place;
}

bool XmlDocument::contains(std::string_view path) const
{
    return find(path) != noNode;
}

std::string XmlDocument::getBytes() const
{
    const XmlTree& tree = content->tree;
    return content->spelling.encoding.encode(tree.isOriginal() ? tree.getOriginal()
                                                               : XmlWriter(tree).write());
}

std::optional<Span> XmlDocument::locate(std::string_view path) const
{
    Outcome outcome;
    const NodeId id = findValue(path, outcome);
    if (!outcome.ok())
        return std::nullopt;
    XmlWriter writer(content->tree, id);
    const std::string text = writer.write();
    const TextEncoding& encoding = content->spelling.encoding;
    const std::string_view before = std::string_view(text).substr(0, writer.getLocation());
    return Span{encoding.markSize() + encoding.sizeOf(before),
                encoding.sizeOf(content->tree.text(id, XmlPart::Value))};
}

std::optional<std::string> XmlDocument::spell(std::string_view path) const
{
    Outcome outcome;
    const NodeId id = findValue(path, outcome);
    return outcome.ok() ? std::optional(content->values.spellingOf(id)) : std::nullopt;
}

Outcome XmlDocument::respell(std::string_view path, std::string_view spelling)
{
    Outcome outcome;
    const NodeId id = findValue(path, outcome);
    if (!outcome.ok())
        return outcome;
    const std::string error = content->values.explainMisspelling(id, spelling);
    if (!error.empty())
        return refused(quoted(spelling) + " does not spell a value: " + error);
    content->editor.respell(id, spelling);
    return {};
}

NodeId XmlDocument::findValue(std::string_view path, Outcome& outcome) const
{
    const NodeId id = find(path);
    if (id == noNode)
        outcome = refused("there is no entry " + quoted(path));
    else if (content->values.read(id).type == Type::Group)
        outcome = refused(quoted(path) + " is a group, which has no value of its own");
    return id;
}

XmlDocument::Way XmlDocument::wayTo(std::string_view path) const
{
    Way way;
    const auto components = splitPath(path);
    if (!components)
        return way;
    way.isPath = true;
    auto next = components->begin();
    while (next != components->end()) {
        const NodeId child = findChild(way.node, *next);
        if (child == noNode)
            break;
        way.node = child;
        ++way.depth;
        ++next;
    }
    way.missing.assign(next, components->end());
    return way;
}

NodeId XmlDocument::find(std::string_view path) const
{
    const Way way = wayTo(path);
    return way.missing.empty() ? way.node : noNode;
}

NodeId XmlDocument::findChild(NodeId parent, std::string_view component) const
{
    const auto step = readXmlComponent(component);
    const auto name = step ? content->tree.getNames().find(step->name) : std::nullopt;
    return name ? content->tree.find(parent, {step->kind, *name, step->number}) : noNode;
}

} // namespace Repository::Documents
