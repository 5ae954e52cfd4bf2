#include "repository/documents/toml/TomlEditor.h"

#include "repository/documents/common/EndComments.h"
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

// Without those at its end.
std::string_view withoutBlankLines(std::string_view lines)
{
    return lines.substr(0, skipTomlLine(lines, lines.find_last_not_of(" \t\r\n") + 1));
}

std::string_view withoutFirstBlankLines(std::string_view lines)
{
    while (beginsWithBlankLine(lines))
        lines.remove_prefix(textLineAt(lines, 0).end);
    return lines;
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
    const StatementId last = TomlScanner(tree).readInto(begin, begin + text.size(), after, table);
    giveEndComments(last, std::string(tree.text(tree.statement(last).end, begin + text.size())));
    return last;
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

std::string_view TomlEditor::triviaBelow(StatementId id) const
{
    const StatementId next = tree.statement(id).next;
    return next == noStatement ? tree.getTail() : tree.leadOf(next);
}

void TomlEditor::setTriviaBelow(StatementId id, const std::string& text)
{
    const StatementId next = tree.statement(id).next;
    if (next == noStatement)
        tree.setTailText(text);
    else
        tree.setLead(next, text);
}

std::string_view TomlEditor::endCommentsOf(StatementId id) const
{
    const StatementId next = tree.statement(id).next;
    if (id == TomlTree::rootStatement || (next != noStatement && !tree.statement(next).isHeader))
        return {};
    const std::string_view below = triviaBelow(id);
    return below.substr(0, findEndComments(below, "#", next != noStatement));
}

std::string TomlEditor::takeEndComments(StatementId id)
{
    std::string comments(endCommentsOf(id));
    if (!comments.empty())
        setTriviaBelow(id, std::string(triviaBelow(id).substr(comments.size())));
    return comments;
}

// An empty line keeps them apart from what follows, where they would be read as part of that.
void TomlEditor::giveEndComments(StatementId id, const std::string& comments)
{
    if (comments.empty())
        return;
    const StatementId next = tree.statement(id).next;
    const std::string following(triviaBelow(id));
    const std::string ended = comments + (endsLine(comments) || following.empty() ? "" : file.lineEnd);
    const bool isApart = findEndComments(ended + following, "#", next != noStatement) == ended.size();
    setTriviaBelow(id, ended + (isApart ? "" : file.lineEnd) + following);
}

std::size_t TomlEditor::findOwnComments(StatementId id) const
{
    const std::string_view lead = tree.leadOf(id);
    const StatementId above = tree.statement(id).previous;
    const std::size_t ofAbove =
        tree.statement(id).isHeader && above != noStatement ? endCommentsOf(above).size() : 0;
    return std::max(findCommentsAbove(lead), ofAbove);
}

void TomlEditor::remove(NodeId id, bool withComments)
{
    const std::vector<StatementId> gone = statementsOf(id);
    for (std::size_t i = 0; i < gone.size();) {
        const StatementId first = gone[i];
        std::size_t end = i + 1;
        while (end < gone.size() && gone[end] == tree.statement(gone[end - 1]).next)
            ++end;
        const std::size_t own = findOwnComments(first);
        std::string lead(tree.leadOf(first));
        if (withComments)
            lead.resize(own);
        else if (tree.node(tree.statement(first).node).tag != Type::Group)
            lead.resize(withoutTypeTags(lead).size());
        if (tree.statement(first).isHeader)
            takeEndComments(gone[end - 1]);
        const StatementId next = tree.statement(gone[end - 1]).next;
        for (; i < end; ++i)
            removeStatement(gone[i]);
        giveLead(next, lead);
    }
    tree.drop(id);
    for (const StatementId each : gone)
        tree.freeStatement(each);
}

// What is about neither of two tables, and what is at the beginning of the file, stays there.
std::string TomlEditor::takeComments(StatementId above)
{
    const StatementId next = tree.statement(above).next;
    const std::string lead(next == noStatement ? std::string_view() : tree.leadOf(next));
    const std::size_t own = next == noStatement ? 0 : findOwnComments(next);
    std::string comments = lead.substr(0, own);
    if (!hasComment(comments))
        return {};
    tree.setLead(next, lead.substr(own));
    return comments;
}

void TomlEditor::moveStatements(const std::vector<StatementId>& moved, StatementId after)
{
    struct Comments
    {
        StatementId above;
        std::string text;
        std::string others = {}; // that are below them
    };
    std::vector<Comments> left;
    std::vector<Comments> taken;
    for (std::size_t i = 0; i < moved.size(); ++i) {
        const StatementId previous = tree.statement(moved[i]).previous;
        const StatementId next = tree.statement(moved[i]).next;
        if (i == 0 || previous != moved[i - 1]) {
            std::string comments = takeEndComments(previous);
            left.push_back({previous, std::move(comments), takeComments(previous)});
        }
        if (i + 1 == moved.size() || next != moved[i + 1])
            taken.push_back({moved[i], takeEndComments(moved[i])});
    }
    for (const StatementId each : moved)
        tree.unlinkStatement(each);
    for (const Comments& comments : left) {
        giveLead(tree.statement(comments.above).next, comments.others);
        giveEndComments(comments.above, comments.text);
    }
    const std::string head = after == TomlTree::rootStatement ? takeComments(after) : std::string();
    taken.push_back({after, takeEndComments(after)});
    for (const StatementId each : moved) {
        tree.linkStatement(each, after);
        after = each;
    }
    giveLead(moved.front(), head);
    for (const Comments& comments : taken)
        giveEndComments(comments.above, comments.text);
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
// sides, one part is enough, and none at the beginning of the file.
void TomlEditor::giveLead(StatementId next, std::string lead)
{
    const std::string_view following = next == noStatement ? tree.getTail() : tree.leadOf(next);
    const bool isAtEnd = next == noStatement && following.empty();
    const bool isAtBegin = tree.statement(TomlTree::rootStatement).next == next;
    if (isAtBegin && !hasComment(lead)) {
        setTriviaBelow(TomlTree::rootStatement, std::string(withoutFirstBlankLines(following)));
        return;
    }
    if (lead.empty() || (!hasComment(lead) && (isAtEnd || beginsWithBlankLine(following))))
        return;
    if (isAtEnd || beginsWithBlankLine(following))
        lead.resize(withoutBlankLines(lead).size());
    const bool wouldTag =
        next != noStatement && !tree.statement(next).isHeader && following.empty() && endsInTypeTag(lead);
    const std::string whole = lead.append(wouldTag ? file.lineEnd : "").append(following);
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
