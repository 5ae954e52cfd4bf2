#include "repository/documents/toml/TomlSubtrees.h"

#include "repository/documents/common/ExcerptText.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/toml/TomlInsertion.h"
#include "repository/documents/toml/TomlItems.h"
#include "repository/documents/toml/TomlTokens.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

bool hasBreak(std::string_view text)
{
    return text.find('\n') != std::string_view::npos;
}

// Notes the lines that begin outside of strings, of which the indentation may change.
void noteLines(Excerpt& target, std::size_t from)
{
    const std::string_view text = target.text;
    for (std::size_t at = from; at < text.size();) {
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

} // namespace

std::optional<Excerpt> TomlSubtrees::excerpt(NodeId id) const
{
    const NodeId parent = tree.node(id).parent;
    if (parent == noNode || tree.node(parent).kind == TomlKind::Tables)
        return {};
    return tree.node(parent).isInline() ? ofItem(id) : ofStatements(id);
}

std::optional<Excerpt> TomlSubtrees::ofItem(NodeId id) const
{
    if (!tree.node(id).hasSpan())
        return {};
    Excerpt found;
    found.lineEnd = file.lineEnd;
    found.text = "k = " + file.textOf(id);
    found.names.emplace_back(0, 1);
    noteLines(found, 0);
    return found;
}

std::optional<Excerpt> TomlSubtrees::ofStatements(NodeId id) const
{
    Excerpt found;
    found.lineEnd = file.lineEnd;
    const std::vector<StatementId> statements = TomlEditor(file).statementsOf(id);
    const TomlStatement& first = tree.statement(statements.front());
    const std::string_view lead = tree.leadOf(statements.front());
    found.above = lead.substr(findTomlComments(lead));
    const std::string_view line = tree.text(first.begin, first.end);
    found.indentation = line.substr(0, skipTomlBlanks(line, 0));
    for (const StatementId statement : statements) {
        if (statement != statements.front()) {
            found.text += endsLine(found.text) ? "" : file.lineEnd;
            found.text += tree.leadOf(statement);
        }
        if (!appendStatement(found, statement, id, first.isHeader))
            return {};
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
    noteLines(found, 0);
    return found;
}

// Notes where the statement names the node; false where it names it as lines of another kind do.
bool TomlSubtrees::appendStatement(Excerpt& target, StatementId statement, NodeId id, bool inHeaders) const
{
    const std::string text = file.statementText(statement);
    const bool isHeader = tree.statement(statement).isHeader;
    const NodeId block = isHeader ? tree.getRoot() : TomlEditor(file).blockOf(tree.statement(statement).node);
    std::size_t before = 0;
    NodeId above = tree.node(id).parent;
    for (; above != block && above != tree.getRoot(); above = tree.node(above).parent)
        before += tree.node(tree.node(above).parent).isArray() ? 0 : 1;
    const std::size_t offset = target.text.size();
    target.text += text;
    if (above != block)
        return true; // in a block of the excerpt
    if (isHeader != inHeaders)
        return false;
    std::size_t at = skipTomlBlanks(text, 0);
    if (isHeader)
        at = skipTomlBlanks(text, at + (text[at + 1] == '[' ? 2 : 1));
    TomlKeyPart part = readTomlKeyPart(text, at);
    for (; before > 0; --before)
        part = readTomlKeyPart(text, part.next);
    target.names.emplace_back(offset + at, offset + part.end);
    return true;
}

std::string TomlSubtrees::adapted(const std::string& text, const Excerpt& excerpt) const
{
    return withLineEnds(text, excerpt, file.lineEnd);
}

bool TomlSubtrees::insert(std::string_view path, const Excerpt& excerpt)
{
    const PathMatch place = file.match(path);
    if (!place.isPath || place.missing.size() != 1 || excerpt.names.empty())
        return false;
    std::string error;
    const std::string key = tomlKeyOf(place.missing.front(), error);
    const std::string added = excerpt.above + excerpt.text + excerpt.after + key;
    const NodeId parent = place.node;
    if (!error.empty() || !file.encoding.findRefusal(added).empty() || !tree.node(parent).isTable())
        return false;
    const std::string spelled = encodeTomlKey(key);
    if (tree.node(parent).kind == TomlKind::InlineTable)
        return insertItem(parent, spelled, excerpt);
    return excerpt.text[0] == '[' ? insertHeaders(parent, spelled, excerpt)
                                  : insertLines(parent, spelled, excerpt);
}

bool TomlSubtrees::insertItem(NodeId parent, const std::string& key, const Excerpt& excerpt)
{
    const std::string text = excerptText(excerpt, key, {});
    const bool isOneLine = excerpt.text[0] != '[' && excerpt.names.size() == 1 && !hasBreak(text) &&
                           excerpt.above.empty() && excerpt.after.empty();
    if (!isOneLine || !tree.node(parent).hasSpan())
        return false;
    const std::string former = file.textOf(parent);
    TomlItems items(former, file.lineEnd);
    items.insert(items.count(), {text});
    TomlEditor(file).rewrite(parent, items.apply());
    return true;
}

bool TomlSubtrees::insertLines(NodeId parent, const std::string& key, const Excerpt& excerpt)
{
    TomlInsertion insertion(file);
    const TomlInsertion::PairPlace place = insertion.pairPlaceOf(parent);
    const std::string indentation =
        insertion.styleAt(place.needsHeader ? tree.firstStatementOf(parent) : place.after).indentation;
    std::string text = indentedLines(excerpt.above, excerpt.indentation, indentation) + indentation;
    text += excerptText(excerpt, joinTomlKey(place.prefix, key), indentation) + excerpt.after;
    text = adapted(text, excerpt);
    if (!endsLine(text))
        text += file.lineEnd;
    if (place.needsHeader)
        text.insert(0, '[' + insertion.keyPathOf(parent, tree.getRoot()) + ']' + file.lineEnd);
    insertion.insertLines(place.after, place.block, std::move(text));
    return true;
}

bool TomlSubtrees::insertHeaders(NodeId parent, const std::string& key, const Excerpt& excerpt)
{
    TomlInsertion insertion(file);
    const TomlInsertion::PairPlace place = insertion.pairPlaceOf(parent);
    if (!place.prefix.empty())
        return false;
    const std::string name = joinTomlKey(insertion.keyPathOf(parent, tree.getRoot()), key);
    std::string text = adapted(
        excerpt.above + excerpt.indentation + excerptText(excerpt, name, excerpt.indentation), excerpt);
    if (!endsLine(text))
        text += file.lineEnd;
    insertion.insertLines(insertion.endOf(parent), tree.getRoot(), std::move(text));
    return true;
}

} // namespace Repository::Documents
