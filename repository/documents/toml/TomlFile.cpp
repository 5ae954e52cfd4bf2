#include "repository/documents/toml/TomlFile.h"

#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/TypeTag.h"
#include "repository/documents/toml/TomlValue.h"

#include <algorithm>
#include <vector>

namespace Repository::Documents {

TomlFile::TomlFile(std::string text, TextEncoding textEncoding)
    : tree(std::move(text)), encoding(std::move(textEncoding)), lineEnd(lineEndOf(tree.getOriginal()))
{
}

PathMatch TomlFile::match(std::string_view path) const
{
    if (path.empty()) {
        PathMatch whole;
        whole.isPath = true;
        whole.node = tree.getRoot();
        return whole;
    }
    return matchPath(path, tree.getRoot(), [this](NodeId parent, std::string_view component) {
        return tree.find(parent, component);
    });
}

NodeId TomlFile::valueNodeOf(NodeId id) const
{
    return tree.node(id).kind == TomlKind::Value ? id : tree.findOwnValue(id);
}

NodeId TomlFile::findValueNode(std::string_view path) const
{
    const NodeId id = find(path);
    return id == noNode ? noNode : valueNodeOf(id);
}

Value TomlFile::read(NodeId valueNode) const
{
    return readTomlValue(tree.valueText(valueNode), tree.node(valueNode).tag);
}

bool TomlFile::isList(NodeId id) const
{
    return tree.node(id).kind == TomlKind::Value && startsWith(tree.valueText(id), "[");
}

bool TomlFile::isInInlineTable(NodeId id) const
{
    while (id != noNode && tree.node(id).isInline() && tree.node(id).kind != TomlKind::InlineTable)
        id = tree.node(id).parent;
    return id != noNode && tree.node(id).kind == TomlKind::InlineTable;
}

void TomlFile::setTag(NodeId valueNode, Type type)
{
    const StatementId statement = tree.node(valueNode).statement;
    const std::string lead(tree.leadOf(statement));
    const std::size_t line = withoutTypeTags(lead).size();
    const std::string tag = type == Type::Group ? std::string() : renameTypeTag(lead.substr(line), type);
    tree.setLead(statement, lead.substr(0, line) + tag);
    tree.node(valueNode).tag = type;
}

void TomlFile::appendEdited(std::string& target, NodeId top, std::size_t begin, std::size_t end,
                            NodeId located, Span* span) const
{
    std::vector<NodeId> edited;
    std::vector<NodeId> pending{top};
    while (!pending.empty()) {
        const NodeId id = pending.back();
        pending.pop_back();
        if (tree.node(id).kind == TomlKind::Value && (tree.node(id).hasOwnTexts || id == located))
            edited.push_back(id);
        if (tree.node(id).touched || located != noNode) {
            for (NodeId child = tree.node(id).first; child != noNode; child = tree.node(child).next)
                pending.push_back(child);
        }
    }
    std::sort(edited.begin(), edited.end(),
              [this](NodeId a, NodeId b) { return tree.node(a).value < tree.node(b).value; });
    for (const NodeId id : edited) {
        target += tree.text(begin, tree.node(id).value);
        const std::string_view value = tree.valueText(id);
        if (id == located)
            *span = {target.size(), value.size()};
        target += value;
        begin = tree.node(id).valueEnd;
    }
    target += tree.text(begin, end);
}

void TomlFile::appendStatement(std::string& target, StatementId id, NodeId located, Span* span) const
{
    const TomlStatement& statement = tree.statement(id);
    if (!statement.isHeader && (tree.node(statement.node).touched || located != noNode))
        appendEdited(target, statement.node, statement.begin, statement.end, located, span);
    else
        target += tree.text(statement.begin, statement.end);
}

std::string TomlFile::textOf(NodeId id) const
{
    if (tree.node(id).kind == TomlKind::Value)
        return std::string(tree.valueText(id));
    std::string text;
    appendEdited(text, id, tree.node(id).value, tree.node(id).valueEnd, noNode, nullptr);
    return text;
}

std::string TomlFile::statementText(StatementId id) const
{
    std::string text;
    appendStatement(text, id);
    return text;
}

// Of a text in which nothing but values was edited.
std::string TomlFile::writeValues(NodeId located, Span* span) const
{
    std::vector<StatementId> statements = tree.getStatementsWithEdits();
    if (located != noNode)
        statements.push_back(tree.node(located).statement);
    std::sort(statements.begin(), statements.end());
    statements.erase(std::unique(statements.begin(), statements.end()), statements.end());
    const std::string_view original = tree.getFileText();
    std::string text;
    text.reserve(original.size());
    std::size_t from = 0;
    for (const StatementId id : statements) {
        const TomlStatement& statement = tree.statement(id);
        text += tree.text(from, statement.begin);
        appendStatement(text, id, located != noNode && id == tree.node(located).statement ? located : noNode,
                        span);
        from = statement.end;
    }
    return text += tree.text(from, original.size());
}

// What follows each other in the text that was read is copied at once.
std::string TomlFile::write(NodeId located, Span* span) const
{
    if (tree.isArrangedAsRead())
        return writeValues(located, span);
    std::string text;
    text.reserve(tree.getOriginal().size());
    std::size_t from = 0; // of what is not copied yet
    std::size_t to = 0;
    const auto copy = [&](std::size_t nextFrom, std::size_t nextTo) {
        text += tree.text(from, to);
        from = nextFrom;
        to = nextTo;
    };
    const auto keep = [&](std::size_t begin, std::size_t end) {
        if (begin != to)
            copy(begin, begin);
        to = end;
    };
    const StatementId place = located == noNode ? noStatement : tree.node(located).statement;
    for (StatementId id = TomlTree::rootStatement; id != noStatement; id = tree.statement(id).next) {
        const TomlStatement& statement = tree.statement(id);
        keep(statement.lead, statement.leadEnd);
        if (id == place || statement.mayHoldEdits) {
            copy(statement.end, statement.end);
            appendStatement(text, id, id == place ? located : noNode, span);
        } else {
            keep(statement.begin, statement.end);
        }
        const bool isLast = statement.next == noStatement && tree.getTail().empty();
        if (!isLast && !endsLine(from < to ? tree.text(from, to) : text)) {
            copy(to, to);
            text += lineEnd;
        }
    }
    copy(to, to);
    return text += tree.getTail();
}

std::string TomlFile::write() const
{
    return encoding.encode(write(noNode, nullptr));
}

Span TomlFile::locate(NodeId valueNode, Span part) const
{
    Span span;
    const std::string text = write(valueNode, &span);
    const std::string_view whole = text;
    const std::size_t begin = span.offset + part.offset;
    return {encoding.byteOrderMarkSize() + encoding.sizeOf(whole.substr(0, begin)),
            encoding.sizeOf(whole.substr(begin, part.length))};
}

} // namespace Repository::Documents
