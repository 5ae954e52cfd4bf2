#include "repository/documents/toml/TomlEditor.h"

#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/TypeTag.h"
#include "repository/documents/toml/TomlScanner.h"
#include "repository/documents/toml/TomlTokens.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

bool hasComment(std::string_view text)
{
    return text.find('#') != std::string_view::npos;
}

} // namespace

std::size_t keyBegin(std::string_view text, bool isHeader)
{
    const std::size_t at = skipTomlBlanks(text, 0);
    return isHeader ? skipTomlBlanks(text, at + (text[at + 1] == '[' ? 2 : 1)) : at;
}

bool beginsWithBlankLine(std::string_view text)
{
    return !text.empty() && isBlankLine(textLineAt(text, 0).content);
}

StatementId TomlEditor::insert(StatementId after, NodeId table, std::string_view text)
{
    const std::uint32_t begin = tree.keep(text);
    return TomlScanner(tree).readInto(begin, begin + text.size(), after, table);
}

std::vector<StatementId> TomlEditor::statementsOf(NodeId id) const
{
    std::vector<StatementId> found;
    std::vector<NodeId> pending{id};
    while (!pending.empty()) {
        const TomlNode& node = tree.node(pending.back());
        pending.pop_back();
        if (node.statement != noStatement)
            found.push_back(node.statement);
        for (NodeId child = node.isInline() ? noNode : node.first; child != noNode;
             child = tree.node(child).next)
            pending.push_back(child);
    }
    std::sort(found.begin(), found.end(), [this](StatementId a, StatementId b) {
        return tree.statement(a).order < tree.statement(b).order;
    });
    return found;
}

NodeId TomlEditor::blockOf(NodeId id) const
{
    while (id != tree.getRoot() &&
           (tree.node(id).kind != TomlKind::Table || tree.node(id).statement == noStatement))
        id = tree.node(id).parent;
    return id;
}

// The key has a part for each node above that is no element, from the root or from the block on.
std::optional<TomlKeyPart> TomlEditor::findName(StatementId statement, NodeId id) const
{
    const bool isHeader = tree.statement(statement).isHeader;
    const NodeId from = isHeader ? tree.getRoot() : blockOf(tree.statement(statement).node);
    std::size_t before = 0;
    NodeId above = tree.node(id).parent;
    for (; above != from && above != tree.getRoot(); above = tree.node(above).parent)
        before += tree.node(tree.node(above).parent).isArray() ? 0 : 1;
    if (above != from)
        return {};
    const std::string text = file.statementText(statement);
    TomlKeyPart part = readTomlKeyPart(text, keyBegin(text, isHeader));
    for (; before > 0; --before)
        part = readTomlKeyPart(text, part.next);
    return part;
}

void TomlEditor::remove(NodeId id, bool withComments)
{
    const std::vector<StatementId> gone = statementsOf(id);
    std::size_t i = 0;
    while (i < gone.size()) {
        const StatementId first = gone[i];
        const bool isTagged = tree.node(tree.statement(first).node).tag != Type::Group;
        std::string_view above = tree.leadOf(first);
        above = isTagged ? withoutTypeTags(above) : above;
        if (withComments)
            above = above.substr(0, findCommentsAbove(above));
        const std::string lead(above);
        StatementId next = tree.statement(first).next;
        for (removeStatement(gone[i++]); i < gone.size() && gone[i] == next; removeStatement(gone[i++]))
            next = tree.statement(next).next;
        giveLead(next, lead);
    }
    tree.drop(id);
    for (const StatementId each : gone)
        tree.freeStatement(each);
}

void TomlEditor::removeStatement(StatementId id)
{
    const TomlStatement& own = tree.statement(id);
    if (!own.isHeader) {
        TomlStatement& header = tree.statement(tree.node(blockOf(own.node)).statement);
        if (header.last == id)
            header.last = own.previous;
    }
    tree.unlinkStatement(id);
}

// What was above a removed statement goes to the next one, whose type it does not tag; of blank lines on both
// sides, one part is enough.
void TomlEditor::giveLead(StatementId next, std::string_view lead)
{
    const std::string_view following = next == noStatement ? tree.getTail() : tree.leadOf(next);
    const bool isAtEnd = next == noStatement && following.empty();
    const bool isAtBegin = tree.statement(TomlTree::rootStatement).next == next;
    if (lead.empty() || (!hasComment(lead) && (isAtEnd || isAtBegin || beginsWithBlankLine(following))))
        return;
    const bool wouldTag =
        next != noStatement && !tree.statement(next).isHeader && following.empty() && endsInTypeTag(lead);
    const std::string whole = std::string(lead).append(wouldTag ? file.lineEnd : "").append(following);
    if (next == noStatement)
        tree.setTailText(whole);
    else
        tree.setLead(next, whole);
}

void TomlEditor::rewrite(NodeId id, std::string text)
{
    tree.dropChildren(id);
    tree.node(id).kind = TomlKind::Value;
    tree.setValue(id, std::move(text), tree.node(id).isText);
    const StatementId statement = tree.node(id).statement;
    replaceLine(statement, file.statementText(statement));
}

StatementId TomlEditor::replace(StatementId id, const std::string& text)
{
    const std::string whole = std::string(tree.leadOf(id)).append(text);
    const NodeId node = tree.statement(id).node;
    const NodeId block = blockOf(node);
    const StatementId previous = tree.statement(id).previous;
    removeStatement(id);
    tree.drop(node);
    tree.freeStatement(id);
    return insert(previous, block, whole);
}

void TomlEditor::replaceLine(StatementId id, const std::string& text)
{
    const std::uint32_t begin = tree.keep(text);
    const std::size_t end = begin + text.size();
    TomlStatement& statement = tree.statement(id);
    const std::string_view source = tree.text(0, end);
    statement.begin = begin;
    statement.end = static_cast<std::uint32_t>(end);
    std::size_t at = skipTomlBlanks(source, begin);
    const std::size_t brackets = !statement.isHeader ? 0 : source[at + 1] == '[' ? 2 : 1;
    at = skipTomlBlanks(source, at + brackets);
    for (bool isLast = false; !isLast;) {
        const TomlKeyPart part = readTomlKeyPart(source, at);
        isLast = part.isLast;
        at = part.next;
    }
    if (statement.isHeader) {
        statement.bodyEnd = static_cast<std::uint32_t>(at + brackets);
        return;
    }
    at = skipTomlBlanks(source, at + 1);
    const std::size_t valueEnd = skipTomlValue(source, at);
    statement.bodyEnd = static_cast<std::uint32_t>(valueEnd);
    TomlScanner(tree).reread(statement.node, at, valueEnd);
}

} // namespace Repository::Documents
