#include "repository/documents/xml/XmlDocument.h"

#include "repository/documents/common/ComponentCodec.h"
#include "repository/documents/common/Refusal.h"
#include "repository/documents/common/TextPosition.h"
#include "repository/documents/xml/XmlDeclaration.h"
#include "repository/documents/xml/XmlInsertion.h"
#include "repository/documents/xml/XmlReader.h"
#include "repository/documents/xml/XmlWriter.h"

#include <new>
#include <utility>

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

XmlDocument::XmlDocument() : file(std::make_unique<XmlFile>(std::string()))
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
        auto fresh = std::make_unique<XmlFile>(std::move(bytes));
        fresh->spelling.encoding = encoding;
        fresh->spelling.isAscii = declaration.encoding == XmlEncoding::Ascii;
        fresh->spelling.lineEnd = lineEndOf(fresh->tree.getOriginal());
        const SyntaxFault fault = XmlReader(fresh->tree, fresh->entities).read();
        if (!fault.message.empty()) {
            const TextPosition position = positionOf(fresh->tree.getOriginal(), fault.offset);
            return {fault.message, position.line, position.column};
        }
        file = std::move(fresh);
    } catch (const std::bad_alloc&) {
        return refused("there is not enough memory for a file of this size");
    }
    return {};
}

void XmlDocument::visit(const std::function<void(const Entry&)>& visitor) const
{
    const XmlTree& tree = file->tree;
    Entry entry;
    std::vector<std::size_t> lengths; // of the paths of the elements above
    NodeId id = tree.getRoot();
    while (id != noNode) {
        const std::size_t length = entry.path.size();
        file->appendComponent(entry.path, id);
        entry.value = file->values.read(id);
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

Outcome XmlDocument::set(std::string_view path, const Value& value)
{
    Outcome outcome;
    const NodeId id = findValue(path, outcome);
    if (!outcome.ok())
        return outcome;
    if (value.type == Type::Group)
        return refused(quoted(path) + " has a value and cannot become a group");
    if (file->values.holds(id, value))
        return {};
    XmlValues::Spelled spelled = file->values.spell(id, value);
    if (!spelled.error.empty())
        return refused(spelled.error);
    file->values.put(id, std::move(spelled.text));
    return {};
}

SiblingPlace XmlDocument::placeOf(std::string_view path) const
{
    const NodeId id = file->find(path);
    if (id == noNode || file->tree.node(id).next == noNode)
        return {SiblingPlace::Kind::Last, {}};
    const XmlNode& node = file->tree.node(id);
    if (node.previous == noNode)
        return {SiblingPlace::Kind::First, {}};
    SiblingPlace place{SiblingPlace::Kind::After, std::string(splitLast(path).parent)};
    file->appendComponent(place.sibling, node.previous);
    return place;
}

bool XmlDocument::contains(std::string_view path) const
{
    return file->find(path) != noNode;
}

std::string XmlDocument::getBytes() const
{
    const XmlTree& tree = file->tree;
    return file->spelling.encoding.encode(tree.isOriginal() ? tree.getOriginal() : XmlWriter(tree).write());
}

std::optional<Span> XmlDocument::locate(std::string_view path) const
{
    Outcome outcome;
    const NodeId id = findValue(path, outcome);
    if (!outcome.ok())
        return std::nullopt;
    XmlWriter writer(file->tree, id);
    const std::string text = writer.write();
    const TextEncoding& encoding = file->spelling.encoding;
    const std::string_view before = std::string_view(text).substr(0, writer.getLocation());
    return Span{encoding.byteOrderMarkSize() + encoding.sizeOf(before),
                encoding.sizeOf(file->tree.text(id, XmlPart::Value))};
}

std::optional<std::string> XmlDocument::spell(std::string_view path) const
{
    Outcome outcome;
    const NodeId id = findValue(path, outcome);
    return outcome.ok() ? std::optional(file->values.spellingOf(id)) : std::nullopt;
}

Outcome XmlDocument::respell(std::string_view path, std::string_view spelling)
{
    Outcome outcome;
    const NodeId id = findValue(path, outcome);
    if (!outcome.ok())
        return outcome;
    const std::string error = file->values.explainMisspelling(id, spelling);
    if (!error.empty())
        return refused(quoted(spelling) + " does not spell a value: " + error);
    file->editor.respell(id, spelling);
    return {};
}

NodeId XmlDocument::findValue(std::string_view path, Outcome& outcome) const
{
    const NodeId id = file->find(path);
    if (id == noNode)
        outcome = refused("there is no entry " + quoted(path));
    else if (file->values.read(id).type == Type::Group)
        outcome = refused(quoted(path) + " is a group, which has no value of its own");
    return id;
}

Outcome XmlDocument::insert(std::string_view path, const Value& value)
{
    return XmlInsertion(*file).insert(path, value);
}

void XmlDocument::beginRun()
{
    file->run.emplace();
}

Outcome XmlDocument::endRun(std::string& refusedPath)
{
    Outcome outcome;
    const auto run = std::exchange(file->run, std::nullopt);
    for (const XmlFile::Lacking& lacking : run.value_or(std::vector<XmlFile::Lacking>())) {
        outcome = XmlInsertion(*file).checkSurroundings(lacking.node);
        refusedPath = lacking.path;
        if (!outcome.ok())
            break;
    }
    return outcome;
}

Outcome XmlDocument::remove(std::string_view path)
{
    const NodeId id = file->find(path);
    if (id == noNode)
        return path.empty() ? refused("the whole document cannot be removed")
                            : refused("there is no entry " + quoted(path));
    if (id != file->tree.getRoot()) {
        file->editor.remove(id);
        return {};
    }
    if (!file->editor.standsAlone(id))
        return refused(quoted(path) + " is the root element, without which the comments and declarations "
                                      "around it would be no xml");
    auto fresh = std::make_unique<XmlFile>(std::string());
    fresh->spelling.lineEnd = file->spelling.lineEnd;
    if (file->spelling.hasByteOrderMark())
        fresh->spelling.encoding = file->spelling.encoding;
    file = std::move(fresh);
    return {};
}

bool XmlDocument::removalMovesSiblings(std::string_view path) const
{
    const NodeId id = file->find(path);
    if (id == noNode)
        return false;
    const XmlNode& node = file->tree.node(id);
    const bool hasSuccessor = file->tree.find(node.parent, {node.kind, node.name, node.number + 1}) != noNode;
    return hasSuccessor || file->editor.joinsTexts(id);
}

} // namespace Repository::Documents
