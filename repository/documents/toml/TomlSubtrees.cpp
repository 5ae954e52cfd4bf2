#include "repository/documents/toml/TomlSubtrees.h"

#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/common/ExcerptText.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/toml/TomlElements.h"
#include "repository/documents/toml/TomlInsertion.h"
#include "repository/documents/toml/TomlItems.h"
#include "repository/documents/toml/TomlReader.h"
#include "repository/documents/toml/TomlTokens.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

bool hasBreak(std::string_view text)
{
    return text.find('\n') != std::string_view::npos;
}

// Notes the lines that begin outside of strings, of which the indentation may change.
void noteLines(Excerpt& target)
{
    const std::string_view text = target.text;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == '"' || text[at] == '\'') {
            at = skipTomlString(text, at);
        } else if (text[at] == '#' || text[at] == '\n') {
            at = skipTomlLine(text, at);
            if (at < text.size())
                target.lines.push_back(at);
        } else {
            ++at;
        }
    }
}

// Takes out a character before the lines are noted.
void erase(Excerpt& target, std::size_t at)
{
    target.text.erase(at, 1);
    for (auto& [begin, end] : target.names) {
        if (begin > at) {
            --begin;
            --end;
        }
    }
}

std::size_t bracketDepth(std::string_view text)
{
    std::size_t depth = 0;
    std::size_t deepest = 0;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (c == '[' || c == '{')
            deepest = std::max(deepest, ++depth);
        else if (c == ']' || c == '}')
            --depth;
        at = c == '"' || c == '\'' ? skipTomlString(text, at) : c == '#' ? skipTomlLine(text, at) : at + 1;
    }
    return deepest;
}

// Whether it is a key and a value.
bool isOneItem(const Excerpt& excerpt)
{
    return excerpt.text[0] != '[' && excerpt.names.size() == 1;
}

// After the key and the separator of a line that is no header.
std::size_t valueBegin(std::string_view line)
{
    TomlKeyPart part = readTomlKeyPart(line, 0);
    while (!part.isLast)
        part = readTomlKeyPart(line, part.next);
    return skipTomlBlanks(line, part.next + 1);
}

} // namespace

std::optional<Excerpt> TomlSubtrees::excerpt(NodeId id) const
{
    const NodeId parent = tree.node(id).parent;
    if (parent == noNode)
        return {};
    if (tree.node(parent).isInline())
        return ofItem(id);
    const bool isElement = tree.node(parent).kind == TomlKind::Tables;
    auto found = ofStatements(id, isElement ? parent : id);
    if (found && isElement) {
        erase(*found, found->names.front().first - 1);
        erase(*found, found->text.find(']', found->names.front().second));
    }
    if (found)
        noteLines(*found);
    return found;
}

bool TomlSubtrees::hasComments(NodeId id) const
{
    const auto isIn = [](std::string_view text) {
        for (std::size_t at = 0; at < text.size();) {
            if (text[at] == '#')
                return true;
            at = text[at] == '"' || text[at] == '\'' ? skipTomlString(text, at) : at + 1;
        }
        return false;
    };
    if (tree.node(tree.node(id).parent).isInline())
        return isIn(file.textOf(id)) || !commentBehind(id).empty();
    const TomlEditor editor(file);
    const auto statements = editor.statementsOf(id);
    return std::any_of(statements.begin(), statements.end(), [&](StatementId each) {
        return isIn(file.statementText(each)) || (each != statements.front() && isIn(tree.leadOf(each))) ||
               (tree.statement(statements.front()).isHeader && !editor.endCommentsOf(each).empty());
    });
}

// That of an element of an array, since inline tables have none.
std::string TomlSubtrees::commentBehind(NodeId item) const
{
    const NodeId array = tree.node(item).parent;
    if (tree.node(array).kind != TomlKind::Array)
        return {};
    const std::string text = file.textOf(array);
    return std::string(TomlItems(text, file.lineEnd).commentBehind(tree.positionOf(item)));
}

std::optional<Excerpt> TomlSubtrees::ofItem(NodeId id) const
{
    const NodeId container = tree.node(id).parent;
    if (tree.node(id).hasSpan())
        return tree.node(container).kind == TomlKind::Array ? ofElement(container, tree.positionOf(id))
                                                            : ofValue(file.textOf(id));
    Excerpt found;
    found.lineEnd = file.lineEnd;
    std::vector<std::string> path;
    const std::string text = file.textOf(tree.bracketsAround(id, path));
    const TomlItems items(text, file.lineEnd);
    for (std::size_t i = 0; i < items.count(); ++i) {
        const std::string_view item = items.item(i);
        const auto part = findTomlKeyPart(item, path);
        if (!part)
            continue;
        found.text += found.text.empty() ? "" : file.lineEnd;
        found.names.emplace_back(found.text.size(), found.text.size() + 1);
        found.text.append("k").append(item.substr(part->end));
    }
    noteLines(found);
    return found;
}

Excerpt TomlSubtrees::ofElement(NodeId array, std::size_t position) const
{
    const std::string text = file.textOf(array);
    const TomlItems items(text, file.lineEnd);
    Excerpt found = ofValue(items.item(position));
    found.above = indentedLines(items.commentsAbove(position), items.indentationOf(position), {});
    found.after = items.commentBehind(position);
    return found;
}

Excerpt TomlSubtrees::ofValue(std::string_view value) const
{
    Excerpt found;
    found.lineEnd = file.lineEnd;
    found.text = std::string("k = ").append(value);
    found.names.emplace_back(0, 1);
    noteLines(found);
    return found;
}

std::optional<Excerpt> TomlSubtrees::excerptOfText(std::string_view path) const
{
    const NodeId list = TomlElements(file).arrayAround(path);
    if (list == noNode || !file.isList(list))
        return {};
    const std::size_t position = *readIndex(splitLast(path).last);
    return position < TomlItems(tree.valueText(list), file.lineEnd).count()
               ? std::optional(ofElement(list, position))
               : std::nullopt;
}

// The last part of the name of each header is that of the named node: the subtree, or the array around it.
// Keys with dots that headers follow are written below a header of their own.
std::optional<Excerpt> TomlSubtrees::ofStatements(NodeId id, NodeId named) const
{
    Excerpt found;
    found.lineEnd = file.lineEnd;
    const TomlEditor editor(file);
    const std::vector<StatementId> statements = editor.statementsOf(id);
    const TomlStatement& first = tree.statement(statements.front());
    found.above = tree.leadOf(statements.front()).substr(editor.findOwnComments(statements.front()));
    const std::string_view line = tree.text(first.begin, first.end);
    found.indentation = line.substr(0, skipTomlBlanks(line, 0));
    const auto isHeader = [this](StatementId each) { return tree.statement(each).isHeader; };
    const auto headers = std::find_if(statements.begin(), statements.end(), isHeader);
    const bool hasHeaders = headers != statements.end();
    if (hasHeaders && !first.isHeader) {
        const std::size_t name = found.indentation.size() + 1;
        found.text = found.indentation + "[k]" + file.lineEnd;
        found.names.emplace_back(name, name + 1);
    }
    for (std::size_t i = 0; i < statements.size(); ++i) {
        const StatementId each = statements[i];
        if (i > 0)
            found.text += endsLine(found.text) ? "" : file.lineEnd;
        if (i > 0 && tree.statement(each).previous == statements[i - 1])
            found.text += tree.leadOf(each);
        else if (i > 0)
            (found.text += file.lineEnd) += tree.leadOf(each).substr(editor.findOwnComments(each));
        const bool isBelowHeader = hasHeaders && i >= std::size_t(headers - statements.begin());
        const bool isWritten = hasHeaders && !isBelowHeader ? appendShortened(found, each, named)
                                                            : appendStatement(found, each, named, hasHeaders);
        if (!isWritten)
            return {};
        const bool isFollowed = i + 1 < statements.size() && tree.statement(each).next == statements[i + 1];
        if (isBelowHeader && !isFollowed)
            found.text += editor.endCommentsOf(each);
    }
    found.text.erase(0, found.indentation.size());
    for (auto& [begin, end] : found.names) {
        begin -= found.indentation.size();
        end -= found.indentation.size();
    }
    if (!first.isHeader && statements.size() == 1) {
        const std::size_t tail = first.end - first.bodyEnd;
        const std::size_t bodyEnd = found.text.size() - tail;
        const std::size_t end = found.text.find_last_not_of("\r\n") + 1;
        if (end > bodyEnd)
            found.after = found.text.substr(bodyEnd, end - bodyEnd);
        found.text.resize(bodyEnd);
    }
    return found;
}

// Notes where the statement names the node; false where it names it as lines of another kind do.
bool TomlSubtrees::appendStatement(Excerpt& target, StatementId statement, NodeId named, bool inHeaders) const
{
    const std::string text = file.statementText(statement);
    const bool isHeader = tree.statement(statement).isHeader;
    const std::size_t offset = target.text.size();
    target.text += text;
    const auto part = TomlEditor(file).findName(statement, named);
    if (part)
        target.names.emplace_back(offset + keyBegin(text, isHeader), offset + part->end);
    return !part || isHeader == inHeaders;
}

// Without the name of the node and what is in front of that.
bool TomlSubtrees::appendShortened(Excerpt& target, StatementId statement, NodeId named) const
{
    const std::string text = file.statementText(statement);
    const auto part = TomlEditor(file).findName(statement, named);
    if (!part || part->isLast)
        return false;
    target.text.append(text, 0, keyBegin(text, false)).append(text, part->next);
    return true;
}

std::string TomlSubtrees::adapted(const std::string& text, const Excerpt& excerpt) const
{
    return withLineEnds(text, excerpt, file.lineEnd);
}

bool TomlSubtrees::insert(std::string_view path, const Excerpt& excerpt)
{
    const PathMatch place = file.match(path);
    if (!place.isPath || excerpt.names.empty() ||
        !file.encoding.findRefusal(excerpt.above + excerpt.text + excerpt.after).empty())
        return false;
    if (const NodeId array = TomlElements(file).arrayAround(path); array != noNode)
        return insertElement(array, *readIndex(splitLast(path).last), excerpt);
    if (place.missing.size() != 1)
        return false;
    std::string error;
    const std::string key = tomlKeyOf(place.missing.front(), error);
    const NodeId parent = place.node;
    if (!error.empty() || !file.encoding.findRefusal(key).empty() || !tree.node(parent).isTable())
        return false;
    const std::string spelled = encodeTomlKey(key);
    if (tree.node(parent).kind != TomlKind::InlineTable)
        return excerpt.text[0] == '[' ? insertHeaders(parent, spelled, excerpt)
                                      : insertLines(parent, spelled, excerpt);
    const bool isItem = isOneItem(excerpt) && excerpt.above.empty() && excerpt.after.empty() &&
                        !hasBreak(excerpt.text) && tree.node(parent).hasSpan();
    return isItem && insertItem(parent, tree.node(parent).count, excerptText(excerpt, spelled, {}), excerpt);
}

bool TomlSubtrees::insertElement(NodeId array, std::size_t position, const Excerpt& excerpt)
{
    if (tree.node(array).kind == TomlKind::Tables)
        return position <= tree.node(array).count && insertTable(array, position, excerpt);
    const std::string former = file.textOf(array);
    const TomlItems items(former, file.lineEnd);
    const bool hasPlace =
        position <= items.count() &&
        (items.insertsLines(position) || (excerpt.above.empty() && excerpt.after.empty())) &&
        (!hasBreak(excerpt.text) || !file.isInInlineTable(array));
    return hasPlace && isOneItem(excerpt) && readTomlKeyPart(excerpt.text, 0).isLast &&
           insertItem(array, position, adapted(excerpt.text.substr(valueBegin(excerpt.text)), excerpt),
                      excerpt);
}

bool TomlSubtrees::insertItem(NodeId container, std::size_t position, const std::string& item,
                              const Excerpt& excerpt)
{
    std::size_t depth = 1 + bracketDepth(item);
    for (NodeId id = container; tree.node(id).isInline(); id = tree.node(id).parent)
        ++depth;
    if (depth > TomlReader::maximumDepth)
        return false;
    const std::string former = file.textOf(container);
    TomlItems items(former, file.lineEnd);
    items.insert(std::min(position, items.count()), {item}, excerpt.after, excerpt.above);
    TomlEditor(file).rewrite(container, items.apply());
    return true;
}

// A header that names more than the table does not begin it.
bool TomlSubtrees::insertTable(NodeId tables, std::size_t position, const Excerpt& excerpt)
{
    if (excerpt.text[0] != '[' || excerpt.text[1] == '[')
        return false;
    TomlInsertion insertion(file);
    const std::string name = insertion.keyPathOf(tables, tree.getRoot());
    const NodeId next = tree.elementAt(tables, position);
    const StatementId header = tree.node(next == noNode ? tree.node(tables).last : next).statement;
    const std::string indentation = TomlStyles(file).at(header).indentation;
    std::string text = excerptText(excerpt, name, indentation);
    const std::size_t closing = skipTomlBlanks(text, excerpt.names.front().first + name.size());
    if (text[closing] != ']')
        return false;
    text.insert(closing, 1, ']').insert(0, 1, '[');
    insertion.insertLines(next == noNode ? insertion.endOf(tree.node(tables).last)
                                         : tree.statement(header).previous,
                          tree.getRoot(), linesOf(text, excerpt, indentation));
    return true;
}

// The whole lines of an excerpt whose text was adapted to its place.
std::string TomlSubtrees::linesOf(const std::string& text, const Excerpt& excerpt,
                                  const std::string& indentation) const
{
    const std::string above = indentedLines(excerpt.above, excerpt.indentation, indentation);
    std::string lines = adapted(above + indentation + text + excerpt.after, excerpt);
    return endsLine(lines) ? lines : lines + file.lineEnd;
}

bool TomlSubtrees::insertLines(NodeId parent, const std::string& key, const Excerpt& excerpt)
{
    TomlInsertion insertion(file);
    const TomlInsertion::PairPlace place = insertion.pairPlaceOf(parent);
    const std::string indentation =
        TomlStyles(file).at(place.needsHeader ? tree.firstStatementOf(parent) : place.after).indentation;
    std::string text =
        linesOf(excerptText(excerpt, joinTomlKey(place.prefix, key), indentation), excerpt, indentation);
    if (place.needsHeader)
        text.insert(0, '[' + insertion.keyPathOf(parent, tree.getRoot()) + ']' + file.lineEnd);
    insertion.insertLines(place.after, place.block, std::move(text));
    return true;
}

bool TomlSubtrees::insertHeaders(NodeId parent, const std::string& key, const Excerpt& excerpt)
{
    TomlInsertion insertion(file);
    if (!insertion.pairPlaceOf(parent).prefix.empty())
        return false;
    const std::string name = joinTomlKey(insertion.keyPathOf(parent, tree.getRoot()), key);
    const std::string indentation = insertion.tableStyleIn(parent).headerIndentation;
    insertion.insertLines(insertion.endOf(parent), tree.getRoot(),
                          linesOf(excerptText(excerpt, name, indentation), excerpt, indentation));
    return true;
}

} // namespace Repository::Documents
