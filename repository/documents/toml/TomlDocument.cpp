#include "repository/documents/toml/TomlDocument.h"

#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/common/SpanEncoder.h"
#include "repository/documents/common/SyntaxVisit.h"
#include "repository/documents/common/TextParse.h"
#include "repository/documents/common/TypeTag.h"
#include "repository/documents/toml/TomlElements.h"
#include "repository/documents/toml/TomlInsertion.h"
#include "repository/documents/toml/TomlReader.h"
#include "repository/documents/toml/TomlRemoval.h"
#include "repository/documents/toml/TomlScanner.h"
#include "repository/documents/toml/TomlSubtrees.h"
#include "repository/documents/toml/TomlTokens.h"
#include "repository/documents/toml/TomlValue.h"

namespace Repository::Documents {

namespace {

bool isTextLiteral(std::string_view spelling)
{
    return startsWith(spelling, "\"") || startsWith(spelling, "'");
}

} // namespace

Outcome TomlDocument::parse(std::string bytes)
{
    return parseText(std::move(bytes), "toml", [this](std::string text, const TextEncoding& encoding) {
        Outcome outcome = TomlReader::check(text);
        if (!outcome.ok())
            return outcome;
        auto fresh = std::make_unique<TomlFile>(std::move(text), encoding);
        outcome = TomlScanner(fresh->tree).readFile();
        if (outcome.ok())
            file = std::move(fresh);
        return outcome;
    });
}

void TomlDocument::visit(const std::function<void(const Entry&)>& visitor) const
{
    visitEntries(*file, visitor);
}

Outcome TomlDocument::set(std::string_view path, const Value& value)
{
    NodeId valueNode = noNode;
    Outcome outcome = findSettable(*file, path, value, valueNode);
    if (!outcome.ok())
        return outcome;
    const Value present = file->read(valueNode);
    if (isSame(present, value))
        return {};
    TomlTree& tree = file->tree;
    const std::string_view former = tree.valueText(valueNode);
    const auto plain = spellTomlValue(value, former, file->placeOf(valueNode));
    const Type formerTag = tree.node(valueNode).tag;
    const Type tag = tagWith(value, present.type, formerTag, plain, [](std::string_view spelling, Type type) {
        return readTomlValue(spelling, type);
    });
    if (tag == Type::Group && !plain)
        return refused(Reason::tr("TOML has no form for %1, and no comment above this entry tags its type",
                                  {describeType(value.type)}));
    const TomlContent wanted = tag == Type::Group
                                   ? TomlContent{*plain, {}}
                                   : spellTaggedTomlValue(value, former, file->placeOf(valueNode));
    if (!wanted.error.empty())
        return refused(wanted.error);
    const std::string_view original = tree.readValueText(valueNode);
    const bool restores = isSame(readTomlValue(original, tag), value);
    const std::string& spelling = wanted.spelling;
    outcome = checkKind(path, valueNode, restores ? original : std::string_view(spelling));
    if (outcome.ok() && !restores)
        outcome.error = file->encoding.findRefusal(spelling);
    if (!outcome.ok())
        return outcome;
    if (tag != formerTag)
        file->setTag(valueNode, tag);
    if (restores)
        tree.restoreValue(valueNode);
    else
        tree.setValue(valueNode, spelling, isTextLiteral(spelling));
    return {};
}

Outcome TomlDocument::checkKind(std::string_view path, NodeId valueNode, std::string_view spelling) const
{
    const TomlNode& node = file->tree.node(valueNode);
    const std::string_view present = file->tree.valueText(valueNode);
    if (present[0] == '[' && spelling[0] != '[' && hasTomlListComment(present))
        return refused(Reason::tr("%1 is a list with comments, which would be lost", {quoted(path)}));
    if (!isTextLiteral(spelling) || node.isText || node.parent == noNode)
        return {};
    const TomlNode& parent = file->tree.node(node.parent);
    if (parent.kind != TomlKind::Array || parent.nonTexts > 1)
        return {};
    return refused(
        Reason::tr("%1 cannot become a text: all elements of its array would be texts, which are one list",
                   {quoted(path)}));
}

SiblingPlace TomlDocument::placeOf(std::string_view path) const
{
    const TomlTree& tree = file->tree;
    const NodeId id = path.empty() ? noNode : file->find(path);
    if (id == noNode)
        return {SiblingPlace::Kind::Last, {}};
    NodeId previous = tree.node(id).previous;
    if (previous != noNode && tree.isOwnValue(previous))
        previous = tree.node(previous).previous;
    if (previous == noNode)
        return {SiblingPlace::Kind::First, {}};
    const PathEnds ends = splitLast(path);
    std::string sibling(ends.parent);
    if (!sibling.empty())
        sibling += '.';
    const NodeId parent = tree.node(id).parent;
    const std::size_t position = tree.node(parent).isArray() ? *readIndex(ends.last) - 1 : 0;
    tree.appendName(sibling, previous, position);
    return {SiblingPlace::Kind::After, std::move(sibling)};
}

std::optional<bool> TomlDocument::isArray(std::string_view path) const
{
    const NodeId id = file->find(path);
    return id != noNode && (file->tree.node(id).isArray() || file->isList(id));
}

// The tag of a null goes when it becomes anything else.
bool TomlDocument::isLinked(std::string_view path) const
{
    const NodeId valueNode = path.empty() ? noNode : file->findValueNode(path);
    return valueNode != noNode && file->tree.node(valueNode).tag == Type::Null;
}

std::optional<Value> TomlDocument::valueAt(std::string_view path) const
{
    const NodeId valueNode = file->findValueNode(path);
    return valueNode == noNode ? std::nullopt : std::optional(file->read(valueNode));
}

std::optional<Span> TomlDocument::locate(std::string_view path) const
{
    const NodeId entry = file->find(path);
    if (entry == noNode)
        return TomlElements(*file).locate(path);
    const NodeId valueNode = file->valueNodeOf(entry);
    return valueNode == noNode ? std::nullopt : std::optional(file->locate(valueNode));
}

void TomlDocument::visitSpans(const SpanVisitor& visitor) const
{
    const TomlTree& tree = file->tree;
    bool isAsRead = getBytes() == file->encoding.encode(std::string(tree.getFileText()));
    walkEntries(*file, [&](const std::string&, NodeId, NodeId valueNode) {
        isAsRead =
            isAsRead && (valueNode == noNode || tree.node(valueNode).value < tree.getFileText().size());
    });
    if (!isAsRead) {
        Document::visitSpans(visitor);
        return;
    }
    SpanEncoder encoder(file->encoding, tree.getFileText());
    walkEntries(*file, [&](const std::string& path, NodeId, NodeId valueNode) {
        if (valueNode == noNode)
            return;
        const TomlNode& node = tree.node(valueNode);
        visitor(path, encoder.encode({node.value, node.valueEnd - node.value}));
    });
}

std::optional<std::string> TomlDocument::spell(std::string_view path) const
{
    const NodeId valueNode = file->findValueNode(path);
    return valueNode == noNode ? std::nullopt : std::optional(std::string(file->tree.valueText(valueNode)));
}

Outcome TomlDocument::respell(std::string_view path, std::string_view spelling)
{
    const NodeId valueNode = file->findValueNode(path);
    if (valueNode == noNode)
        return refused(Reason::tr("there is no value %1", {quoted(path)}));
    const bool isInline = file->isInInlineTable(valueNode);
    const std::string head = isInline ? "k = {k = " : "k = ";
    const std::string text = head + std::string(spelling) + (isInline ? "}" : "");
    const bool isValue = !spelling.empty() && TomlReader::check(text).ok() &&
                         skipTomlValue(text, head.size()) == head.size() + spelling.size() &&
                         spelling[0] != '{' &&
                         (spelling[0] != '[' || skipTomlTextList(spelling, 0) == spelling.size());
    if (!isValue)
        return refused(Reason::tr("%1 is not how TOML spells a value", {quoted(spelling)}));
    Outcome outcome = checkKind(path, valueNode, spelling);
    if (outcome.ok())
        outcome.error = file->encoding.findRefusal(spelling);
    if (!outcome.ok())
        return outcome;
    if (file->tree.readValueText(valueNode) == spelling)
        file->tree.restoreValue(valueNode);
    else
        file->tree.setValue(valueNode, std::string(spelling), isTextLiteral(spelling));
    return {};
}

bool TomlDocument::removalMovesSiblings(std::string_view path) const
{
    const NodeId id = path.empty() ? noNode : file->find(path);
    if (id == noNode || !file->tree.node(file->tree.node(id).parent).isArray())
        return false;
    const TomlNode& parent = file->tree.node(file->tree.node(id).parent);
    const bool leavesList =
        parent.kind == TomlKind::Array && parent.nonTexts == (file->tree.node(id).isText ? 0U : 1U);
    return leavesList || file->tree.node(id).next != noNode;
}

void TomlDocument::makeRoom()
{
    if (!file->tree.hasRoom())
        parseAgain(getBytes());
}

Outcome TomlDocument::insert(std::string_view path, const Value& value)
{
    makeRoom();
    TomlBranch branch;
    branch.value = value.type == Type::Group ? nullptr : &value;
    return TomlInsertion(*file).insert(path, std::move(branch));
}

Outcome TomlDocument::insertAll(std::string_view path, const std::vector<Entry>& entries,
                                std::size_t& refused)
{
    makeRoom();
    refused = 0;
    if (path.empty())
        return Document::insertAll(path, entries, refused);
    // What is an element as a whole may not become another one entry by entry.
    Outcome outcome = TomlInsertion(*file).insert(path, entries);
    const bool isElement = TomlElements(*file).arrayAround(path) != noNode;
    return outcome.ok() || isElement ? outcome : Document::insertAll(path, entries, refused);
}

Outcome TomlDocument::replaceAll(std::string_view path, const std::vector<Entry>& entries,
                                 std::size_t& refused)
{
    makeRoom();
    refused = 0;
    const NodeId id = path.empty() ? noNode : file->find(path);
    const bool isInline = id != noNode && file->tree.node(id).isInline() && file->tree.node(id).hasSpan() &&
                          file->tree.node(id).tag == Type::Group;
    TomlBranch branch;
    if (isInline && growTomlBranch(entries, branch).empty() && TomlInsertion(*file).replace(id, branch).ok())
        return {};
    return Document::replaceAll(path, entries, refused);
}

std::optional<Outcome> TomlDocument::insertElement(std::string_view path, const std::vector<Entry>& entries)
{
    makeRoom();
    return TomlElements(*file).insert(path, entries);
}

std::optional<Outcome> TomlDocument::moveElement(std::string_view path, std::string_view newPath)
{
    makeRoom();
    return TomlElements(*file).move(path, newPath);
}

Outcome TomlDocument::remove(std::string_view path)
{
    return remove(path, false);
}

std::optional<Excerpt> TomlDocument::excerpt(std::string_view path) const
{
    const NodeId id = path.empty() ? noNode : file->find(path);
    const TomlSubtrees subtrees(*file);
    return id == noNode ? subtrees.excerptOfText(path) : subtrees.excerpt(id);
}

bool TomlDocument::hasComments(std::string_view path) const
{
    const NodeId id = path.empty() ? noNode : file->find(path);
    const TomlSubtrees subtrees(*file);
    const auto element = id == noNode ? subtrees.excerptOfText(path) : std::nullopt;
    return id == noNode ? element && !element->after.empty() : subtrees.hasComments(id);
}

bool TomlDocument::insertExcerpt(std::string_view path, const Excerpt& excerpt)
{
    makeRoom();
    return TomlSubtrees(*file).insert(path, excerpt);
}

Outcome TomlDocument::removeExcerpt(std::string_view path)
{
    return remove(path, true);
}

Outcome TomlDocument::remove(std::string_view path, bool withComments)
{
    if (path.empty())
        return refused(Reason::tr("the whole document cannot be removed"));
    makeRoom();
    const NodeId id = file->find(path);
    if (id == noNode) {
        const auto removed = TomlElements(*file).remove(path, withComments);
        return removed ? *removed : refused(Reason::tr("there is no entry %1", {quoted(path)}));
    }
    TomlRemoval(*file).remove(id, withComments);
    return {};
}

bool TomlDocument::removalMovesGroups(std::string_view path) const
{
    const TomlTree& tree = file->tree;
    const NodeId id = path.empty() ? noNode : file->find(path);
    if (id == noNode || tree.node(tree.node(id).parent).isInline())
        return false;
    const std::uint64_t order = tree.orderOf(id);
    for (NodeId above = tree.node(id).parent; above != tree.getRoot(); above = tree.node(above).parent) {
        if (tree.orderOf(above) == order && tree.node(above).next != noNode)
            return true;
    }
    return false;
}

std::optional<Outcome> TomlDocument::rename(std::string_view path, std::string_view name)
{
    makeRoom();
    const NodeId id = path.empty() ? noNode : file->find(path);
    const NodeId parent = id == noNode ? noNode : file->tree.node(id).parent;
    if (parent == noNode || file->tree.node(parent).isArray() || splitNumber(name).number > 1)
        return {};
    std::string error;
    const std::string key = tomlKeyOf(name, error);
    if (!error.empty())
        return refused(error);
    const NodeId other = file->tree.findKey(parent, key);
    if (other == id)
        return Outcome();
    if (other != noNode)
        return refused(
            Reason::tr("there is already an entry %1", {quoted(joinPath(splitLast(path).parent, name))}));
    error = file->encoding.findRefusal(key);
    if (error.empty())
        TomlRemoval(*file).rename(id, key);
    return refused(error);
}

} // namespace Repository::Documents
