#include "repository/documents/toml/TomlInsertion.h"

#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/common/TypeTag.h"
#include "repository/documents/toml/TomlItems.h"
#include "repository/documents/toml/TomlScanner.h"
#include "repository/documents/toml/TomlTokens.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

std::size_t depthOf(const TomlBranch& branch)
{
    std::size_t deepest = 0;
    for (const TomlBranch& child : branch.children)
        deepest = std::max(deepest, depthOf(child));
    return deepest + 1;
}

} // namespace

Outcome TomlInsertion::insert(std::string_view path, const std::vector<Entry>& entries)
{
    TomlBranch branch;
    const std::string error = growTomlBranch(entries, branch);
    return error.empty() ? insert(path, std::move(branch)) : refused(error);
}

Outcome TomlInsertion::insert(std::string_view path, TomlBranch branch)
{
    const PathMatch place = file.match(path);
    if (!place.isPath)
        return refused(
            Reason::tr("%1 is not a path: its parts between the dots must not be empty", {quoted(path)}));
    std::string error;
    NodeId parent = place.node;
    if (place.missing.empty()) {
        const bool isTable = tree.node(parent).isTable() && file.valueNodeOf(parent) == noNode;
        const bool isValue = branch.value && branch.children.empty();
        if (!isTable || !isValue)
            return refused(
                tree.node(parent).isArray() && isValue
                    ? Reason::tr("%1 is an array, which cannot have a value of its own", {quoted(path)})
                    : Reason::tr("there is already an entry %1", {quoted(path)}));
        if (tree.findKey(parent, tomlOwnValueKey) != noNode)
            return refused(
                Reason::tr("a group is in the member \"#value\", where the value of its own would go"));
        branch.key = tomlOwnValueKey;
        return insertInto(parent, std::move(branch));
    }
    const bool isInArray = tree.node(parent).isArray();
    for (std::size_t i = place.missing.size(); i-- > 0;) {
        const std::string_view component = place.missing[i];
        branch.key = i == 0 && isInArray ? std::string() : tomlKeyOf(component, error);
        if (i == 0)
            break;
        TomlBranch above;
        above.children.push_back(std::move(branch));
        branch = std::move(above);
    }
    if (!error.empty())
        return refused(error);
    if (tree.node(parent).depth + depthOf(branch) > TomlScanner::maximumDepth)
        return refused(Reason::tr("%1 lies too deep: more than %2 tables would lie within each other",
                                  {quoted(path), std::to_string(TomlScanner::maximumDepth)}));
    if (!isInArray)
        return insertInto(parent, std::move(branch));
    const std::uint32_t count = tree.node(parent).count;
    if (place.missing.front() != std::to_string(count))
        return refused(Reason::tr("%1 cannot be added to an array, whose next element is %2",
                                  {quoted(place.missing.front()), std::to_string(count)}));
    return insertElement(parent, count, std::move(branch));
}

Outcome TomlInsertion::insertInto(NodeId parent, TomlBranch branch)
{
    if (tree.node(parent).kind == TomlKind::Value)
        return wrap(parent, std::move(branch));
    return tree.node(parent).kind == TomlKind::InlineTable ? insertMember(parent, branch)
                                                           : insertIntoTable(parent, branch);
}

// Turns a value into a table that holds it as its own value, and the new entry.
Outcome TomlInsertion::wrap(NodeId id, TomlBranch branch)
{
    const std::string ownKey = encodeTomlKey(tomlOwnValueKey);
    if (tree.node(tree.node(id).parent).isInline()) {
        std::string error;
        TomlBranch table;
        table.children.push_back(std::move(branch));
        std::string text = inlineText(table, id, error);
        const std::string own = ownKey + " = " + file.textOf(id) + ", ";
        if (error.empty() && own.find('\n') != std::string::npos)
            error = Reason::tr("a value of several lines cannot lie in an inline table");
        if (error.empty())
            editor.rewrite(id, text.insert(2, own));
        return refused(error);
    }
    const StatementId statement = tree.node(id).statement;
    const TomlStyle style = styles.at(statement);
    TomlBranchWriter writer(style);
    const NodeId block = editor.blockOf(id);
    writer.writePairs(joinTomlKey(keyPathOf(id, block), encodeTomlKey(branch.key)), branch);
    if (writer.error.empty())
        writer.error = file.encoding.findRefusal(writer.text);
    if (!writer.error.empty())
        return refused(writer.error);
    std::string text = file.statementText(statement);
    std::size_t at = skipTomlBlanks(text, 0);
    TomlKeyPart part = readTomlKeyPart(text, at);
    while (!part.isLast)
        part = readTomlKeyPart(text, part.next);
    text.insert(part.end, '.' + ownKey);
    insertLines(editor.replace(statement, text), block, writer.text);
    return {};
}

std::string TomlInsertion::inlineText(const TomlBranch& branch, NodeId place, std::string& error) const
{
    const TomlStyle style = styles.inBraces(place);
    TomlBranchWriter writer(style);
    writer.writeInline(branch, file.isInInlineTable(place));
    error = writer.error.empty() ? file.encoding.findRefusal(writer.text) : writer.error;
    return std::move(writer.text);
}

Outcome TomlInsertion::replace(NodeId id, const TomlBranch& branch)
{
    const bool isInline = tree.node(tree.node(id).parent).isInline() || tree.node(id).kind != TomlKind::Value;
    if (!isInline && !branch.isPair())
        return refused(Reason::tr("a table of its own comes in another place"));
    std::string error;
    std::string text = inlineText(branch, id, error);
    if (!error.empty())
        return refused(error);
    editor.rewrite(id, std::move(text));
    if (tree.node(id).tag != Type::Group) // which said nothing of an array or a table
        file.setTag(id, Type::Group);
    return {};
}

Outcome TomlInsertion::insertMember(NodeId parent, const TomlBranch& branch)
{
    std::string error;
    const std::string value = inlineText(branch, parent, error);
    if (!error.empty())
        return refused(error);
    std::string key = encodeTomlKey(branch.key);
    NodeId container = parent;
    for (; !tree.node(container).hasSpan(); container = tree.node(container).parent)
        key.insert(0, encodeTomlKey(tree.keyText(container)) + '.');
    const std::string text = file.textOf(container);
    TomlItems items(text, file.lineEnd);
    const bool isTight = items.count() > 0 && items.item(0).find(" =") == std::string_view::npos;
    items.insert(items.count(), {key.append(isTight ? "=" : " = ").append(value)});
    editor.rewrite(container, items.apply());
    return {};
}

Outcome TomlInsertion::insertElement(NodeId array, std::size_t position, TomlBranch branch)
{
    branch.key.clear();
    std::string error;
    if (tree.node(array).kind != TomlKind::Tables) {
        const std::string value = inlineText(branch, array, error);
        if (!error.empty())
            return refused(error);
        const std::string text = file.textOf(array);
        TomlItems items(text, file.lineEnd);
        items.insert(position, {value});
        editor.rewrite(array, items.apply());
        return {};
    }
    if (branch.isPair() || branch.isTables())
        return refused(Reason::tr("an element of an array of tables has to be a table"));
    const NodeId next = tree.elementAt(array, position);
    const NodeId neighbour = next == noNode ? tree.node(array).last : next;
    const StatementId header = tree.node(neighbour).statement;
    const TomlStyle style = styles.at(header);
    TomlBranchWriter writer(style);
    writer.writeElement(keyPathOf(array, tree.getRoot()), branch);
    return write(next == noNode ? endOf(neighbour) : tree.statement(header).previous, tree.getRoot(), writer);
}

std::string TomlInsertion::keyPathOf(NodeId id, NodeId from) const
{
    std::string path;
    for (; id != from; id = tree.node(id).parent) {
        if (tree.node(tree.node(id).parent).isArray())
            continue;
        std::string part = encodeTomlKey(tree.keyText(id));
        path = path.empty() ? std::move(part) : part.append(1, '.').append(path);
    }
    return path;
}

// Following the last children leads to a place that is right in all files, and the last one in nearly all.
StatementId TomlInsertion::endOf(NodeId table) const
{
    if (table == tree.getRoot())
        return tree.getLastStatement();
    NodeId id = table;
    while (!tree.node(id).isInline() && tree.node(id).last != noNode)
        id = tree.node(id).last;
    StatementId end = tree.node(id).statement;
    const StatementId own = tree.node(table).statement;
    if (own != noStatement && tree.statement(own).order > tree.statement(end).order)
        end = own;
    return tree.statement(tree.node(editor.blockOf(tree.statement(end).node)).statement).last;
}

// The last line whose dotted key leads through a table without a header; noStatement without one.
StatementId TomlInsertion::lastDottedOf(NodeId table) const
{
    for (NodeId id = tree.node(table).last; id != noNode; id = tree.node(id).previous) {
        const TomlNode& node = tree.node(id);
        if (node.isInline())
            return node.statement;
        const bool mayBeDotted = node.kind == TomlKind::Table && node.statement == noStatement;
        const StatementId found = mayBeDotted ? lastDottedOf(id) : noStatement;
        if (found != noStatement)
            return found;
    }
    return noStatement;
}

TomlInsertion::PairPlace TomlInsertion::pairPlaceOf(NodeId table) const
{
    const TomlNode& node = tree.node(table);
    if (node.statement != noStatement)
        return {tree.statement(node.statement).last, table, {}, false};
    const StatementId dotted = lastDottedOf(table);
    if (dotted != noStatement) {
        const NodeId block = editor.blockOf(table);
        return {dotted, block, keyPathOf(table, block), false};
    }
    const StatementId first = tree.firstStatementOf(table);
    return {tree.statement(first).previous, table, {}, true};
}

TomlStyle TomlInsertion::tableStyleIn(NodeId table) const
{
    NodeId model = tree.node(table).last;
    const auto hasHeader = [&](NodeId id) {
        return !tree.node(id).isInline() && tree.node(id).statement != noStatement;
    };
    while (model != noNode && !hasHeader(model))
        model = tree.node(model).kind == TomlKind::Tables ? tree.node(model).last : tree.node(model).previous;
    for (model = model == noNode ? table : model; !hasHeader(model);)
        model = tree.node(model).parent;
    const StatementId header = tree.node(model).statement;
    TomlStyle style = styles.at(endOf(table));
    style.indentation = style.headerIndentation = styles.indentationOf(header);
    const StatementId key = tree.statement(header).next;
    if (key != noStatement && !tree.statement(key).isHeader)
        style.indentation = styles.indentationOf(key);
    return style;
}

// The last table in this one that has a key of the new one, which is written in the same way; noNode where
// none decides it.
NodeId TomlInsertion::modelOf(NodeId table, const TomlBranch& branch) const
{
    constexpr int enough = 100;
    const auto isMember = [](const TomlBranch& child) { return child.isPair(); };
    if (branch.value || branch.isArray ||
        !std::all_of(branch.children.begin(), branch.children.end(), isMember))
        return noNode;
    NodeId id = tree.node(table).last;
    for (int i = 0; i < enough && id != noNode; ++i, id = tree.node(id).previous) {
        const auto isShared = [&](const TomlBranch& child) { return tree.findKey(id, child.key) != noNode; };
        if (tree.node(id).isTable() && std::any_of(branch.children.begin(), branch.children.end(), isShared))
            return id;
    }
    return noNode;
}

// In braces as the model is; empty where that is none, would be a long line, or has no form for a value.
std::string TomlInsertion::bracedText(const TomlBranch& branch, NodeId model) const
{
    constexpr std::size_t longest = 100;
    if (tree.node(model).kind != TomlKind::InlineTable)
        return {};
    std::string error;
    std::string text = inlineText(branch, model, error);
    return error.empty() && text.size() <= longest ? text : std::string();
}

bool TomlInsertion::isDottedTable(NodeId id) const
{
    return id != noNode && tree.node(id).kind == TomlKind::Table && tree.node(id).statement == noStatement &&
           lastDottedOf(id) != noStatement;
}

Outcome TomlInsertion::insertIntoTable(NodeId table, const TomlBranch& branch)
{
    const std::string key = encodeTomlKey(branch.key);
    const NodeId model = branch.isPair() ? noNode : modelOf(table, branch);
    const std::string braced = model == noNode ? std::string() : bracedText(branch, model);
    if (branch.isPair() || isDottedTable(table) || !braced.empty() || isDottedTable(model)) {
        const PairPlace place = pairPlaceOf(table);
        const TomlStyle style = styles.at(place.needsHeader ? tree.firstStatementOf(table) : place.after);
        TomlBranchWriter writer(style);
        if (place.needsHeader)
            writer.text = style.indentation + '[' + keyPathOf(table, tree.getRoot()) + ']' + file.lineEnd;
        const std::string path = joinTomlKey(place.prefix, key);
        if (!braced.empty())
            writer.text += style.indentation + path + style.separator + braced + file.lineEnd;
        else
            writer.writePairs(path, branch);
        return write(place.after, place.block, writer);
    }
    const TomlStyle style = tableStyleIn(table);
    TomlBranchWriter writer(style);
    writer.writeTable(joinTomlKey(keyPathOf(table, tree.getRoot()), key), branch);
    return write(endOf(table), tree.getRoot(), writer);
}

Outcome TomlInsertion::write(StatementId after, NodeId block, const TomlBranchWriter& writer)
{
    if (writer.error.empty() && file.encoding.findRefusal(writer.text).empty()) {
        insertLines(after, block, writer.text);
        return {};
    }
    return refused(writer.error.empty() ? file.encoding.findRefusal(writer.text) : writer.error);
}

void TomlInsertion::insertLines(StatementId after, NodeId block, std::string text)
{
    const StatementId next = tree.statement(after).next;
    const bool isHeader = text[skipTomlTrivia(text, 0)] == '[';
    const bool isFirst = after == TomlTree::rootStatement;
    std::string above = isHeader ? editor.takeEndComments(after) : std::string();
    above += endsLine(above) ? "" : file.lineEnd;
    if (isFirst && next == noStatement && !tree.getTail().empty()) {
        std::string tail(tree.getTail());
        tail += endsLine(tail) ? "" : file.lineEnd;
        text.insert(0, tail + (isHeader || endsInTypeTag(tail) ? file.lineEnd : std::string()));
        tree.setTail(0, 0);
    } else if (isHeader && !isFirst && !beginsWithBlankLine(text) &&
               (!above.empty() || styles.areSpaced(after, startsWith(text, "[[")))) {
        text.insert(0, file.lineEnd);
    }
    if (next != noStatement && tree.statement(next).isHeader && (isFirst || isHeader)) {
        // What is at the beginning of the file stays there, but for the comments of the first header.
        const std::string lead(tree.leadOf(next));
        const std::size_t own = isFirst ? findCommentsAbove(lead) : 0;
        text.insert(0, lead.substr(0, own));
        const bool needsBlank = !beginsWithBlankLine(std::string_view(lead).substr(own)) &&
                                (isFirst || beginsWithBlankLine(text));
        if (isFirst || needsBlank)
            tree.setLead(next, (needsBlank ? file.lineEnd : std::string()) + lead.substr(own));
    }
    editor.insert(after, block, above + text);
}

} // namespace Repository::Documents
