#include "repository/documents/toml/TomlScanner.h"

#include "repository/documents/common/TypeTag.h"
#include "repository/documents/toml/TomlTokens.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

std::uint32_t offset(std::size_t at)
{
    return static_cast<std::uint32_t>(at);
}

} // namespace

Outcome TomlScanner::readFile()
{
    const std::size_t size = tree.getOriginal().size();
    const StatementId last = readInto(0, size, TomlTree::rootStatement, tree.getRoot());
    tree.setTail(tree.statement(last).end, size);
    if (tooDeep == std::string_view::npos)
        return {};
    return outcomeAt(source(), tooDeep,
                     Reason::tr("more than %1 tables lie within each other", {std::to_string(maximumDepth)}));
}

StatementId TomlScanner::readInto(std::size_t begin, std::size_t end, StatementId previous, NodeId context)
{
    limit = end;
    after = previous;
    table = context;
    header = context == noNode ? TomlTree::rootStatement : tree.node(context).statement;
    isAppending = tree.getLastStatement() == previous;
    for (std::size_t at = begin; at < end;) {
        const std::size_t body = skipTomlTrivia(source(), at);
        if (body >= end)
            break;
        at = readStatement(at, body);
    }
    return after;
}

std::size_t TomlScanner::readStatement(std::size_t lead, std::size_t body)
{
    const std::string_view text = source();
    std::size_t begin = body;
    while (begin > lead && (text[begin - 1] == ' ' || text[begin - 1] == '\t'))
        --begin;
    TomlStatement statement;
    statement.lead = offset(lead);
    statement.leadEnd = statement.begin = offset(begin);
    statement.isHeader = text[body] == '[';
    const StatementId id = tree.addStatement(statement, after);
    const std::size_t bodyEnd = statement.isHeader ? readHeader(id, body) : readPair(id, body);
    TomlStatement& made = tree.statement(id);
    made.bodyEnd = offset(bodyEnd);
    made.end = offset(skipTomlLine(source(), bodyEnd));
    if (made.isHeader) {
        header = made.last = id;
    } else if (tree.statement(header).last == after) {
        tree.statement(header).last = id;
    }
    after = id;
    return made.end;
}

std::size_t TomlScanner::readHeader(StatementId id, std::size_t at)
{
    const bool isElement = source()[at + 1] == '[';
    NodeId node = tree.getRoot();
    at = skipTomlBlanks(source(), at + (isElement ? 2 : 1));
    while (true) {
        const TomlKeyPart part = readTomlKeyPart(source(), at);
        const std::string_view spelled = tree.text(part.begin, part.end);
        if (part.isLast && isElement) {
            const std::string key = decodeTomlKey(spelled);
            NodeId tables = tree.findKey(node, key);
            if (tables == noNode)
                tables = addNode(node, spelled, part.begin, noStatement, TomlKind::Tables);
            TomlNode element;
            element.statement = id;
            const NodeId made = tree.add(tables, element, isAppending);
            noteDepth(made, part.begin);
            if (!isAppending)
                tree.settle(tables);
            node = made;
        } else {
            node = step(node, spelled, id, part.begin, false);
        }
        at = part.next;
        if (part.isLast)
            break;
    }
    tree.node(node).statement = id;
    tree.statement(id).node = table = node;
    if (!isAppending)
        tree.settle(node);
    return at + (isElement ? 2 : 1);
}

std::size_t TomlScanner::readPair(StatementId id, std::size_t at)
{
    NodeId node = table;
    while (true) {
        const TomlKeyPart part = readTomlKeyPart(source(), at);
        at = part.next;
        if (!part.isLast) {
            node = step(node, tree.text(part.begin, part.end), id, part.begin, false);
            continue;
        }
        node = addNode(node, tree.text(part.begin, part.end), part.begin, id, TomlKind::Value);
        break;
    }
    tree.statement(id).node = node;
    at = readValue(node, skipTomlBlanks(source(), at + 1));
    readTag(id, node);
    if (!isAppending)
        tree.settle(node);
    return at;
}

// The table that a part of a key before the last one names.
NodeId TomlScanner::step(NodeId parent, std::string_view part, StatementId statement, std::size_t at,
                         bool isInline)
{
    const bool isQuoted = !part.empty() && (part[0] == '"' || part[0] == '\'');
    NodeId child = isQuoted ? tree.findKey(parent, decodeTomlKey(part)) : tree.findKey(parent, part);
    if (child == noNode)
        child = addNode(parent, part, at, isInline ? statement : noStatement,
                        isInline ? TomlKind::InlineTable : TomlKind::Table);
    return tree.node(child).kind == TomlKind::Tables ? elementBefore(child, statement) : child;
}

NodeId TomlScanner::elementBefore(NodeId tables, StatementId statement) const
{
    const std::uint64_t order = tree.statement(statement).order;
    NodeId id = tree.node(tables).last;
    while (tree.node(id).previous != noNode && tree.statement(tree.node(id).statement).order > order)
        id = tree.node(id).previous;
    return id;
}

NodeId TomlScanner::addNode(NodeId parent, std::string_view part, std::size_t at, StatementId statement,
                            TomlKind kind)
{
    TomlNode node;
    node.kind = kind;
    node.statement = statement;
    node.key = offset(at);
    node.keyEnd = offset(at + part.size());
    if (!part.empty() && (part[0] == '"' || part[0] == '\'')) {
        const std::string key = decodeTomlKey(part);
        node.key = tree.keep(key);
        node.keyEnd = offset(node.key + key.size());
    }
    const NodeId id = tree.add(parent, node, isAppending || kind > TomlKind::Tables);
    noteDepth(id, at);
    return id;
}

void TomlScanner::noteDepth(NodeId id, std::size_t at)
{
    const std::size_t depth = tree.node(tree.node(id).parent).depth + std::size_t(1);
    tree.node(id).depth = static_cast<std::uint16_t>(std::min<std::size_t>(depth, UINT16_MAX - 1));
    if (depth > maximumDepth && tooDeep == std::string_view::npos)
        tooDeep = at;
}

void TomlScanner::readTag(StatementId id, NodeId node)
{
    const std::string_view lead = tree.leadOf(id);
    if (tree.node(node).kind != TomlKind::Value || lead.find("@type") == std::string_view::npos)
        return;
    if (!endsInTypeTag(lead))
        return;
    const std::string_view line = lead.substr(0, lead.find_last_not_of("\r\n") + 1);
    tree.node(node).tag = *readTypeTag(line.substr(line.find_last_of('\n') + 1));
}

void TomlScanner::reread(NodeId id, std::size_t begin, std::size_t end)
{
    limit = end;
    tree.dropChildren(id);
    tree.node(id).kind = TomlKind::Value;
    tree.setReadValue(id, begin, end);
    readValue(id, begin);
    tree.node(id).tag = Type::Group;
    readTag(tree.node(id).statement, id);
}

std::size_t TomlScanner::readValue(NodeId id, std::size_t at)
{
    const std::string_view text = source();
    tree.node(id).value = offset(at);
    const char first = text[at];
    std::size_t end = 0;
    if (first == '[')
        end = readArray(id, at);
    else if (first == '{')
        end = readInlineTable(id, at);
    else
        end = skipTomlScalar(text, at);
    tree.node(id).valueEnd = offset(end);
    return end;
}

std::size_t TomlScanner::readArray(NodeId id, std::size_t at)
{
    const std::size_t listEnd = skipTomlTextList(source(), at);
    if (listEnd > 0)
        return listEnd;
    tree.node(id).kind = TomlKind::Array;
    const StatementId statement = tree.node(id).statement;
    at = skipTomlTrivia(source(), at + 1);
    while (source()[at] != ']') {
        const char first = source()[at];
        TomlNode node;
        node.kind = TomlKind::Value;
        node.statement = statement;
        node.isText = first == '"' || first == '\'';
        const NodeId element = tree.add(id, node, true);
        noteDepth(element, at);
        at = readValue(element, at); // which may move the text
        at = skipTomlTrivia(source(), at);
        if (source()[at] == ',')
            at = skipTomlTrivia(source(), at + 1);
    }
    return at + 1;
}

std::size_t TomlScanner::readInlineTable(NodeId id, std::size_t at)
{
    tree.node(id).kind = TomlKind::InlineTable;
    const StatementId statement = tree.node(id).statement;
    at = skipTomlTrivia(source(), at + 1);
    while (source()[at] != '}') {
        NodeId node = id;
        for (TomlKeyPart part = readTomlKeyPart(source(), at);; part = readTomlKeyPart(source(), at)) {
            const std::string_view spelled = tree.text(part.begin, part.end);
            at = part.next;
            if (part.isLast) {
                node = addNode(node, spelled, part.begin, statement, TomlKind::Value);
                break;
            }
            node = step(node, spelled, statement, part.begin, true);
        }
        at = readValue(node, skipTomlBlanks(source(), at + 1));
        at = skipTomlTrivia(source(), at);
        if (source()[at] == ',')
            at = skipTomlTrivia(source(), at + 1);
    }
    return at + 1;
}

} // namespace Repository::Documents
