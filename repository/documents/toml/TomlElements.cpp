#include "repository/documents/toml/TomlElements.h"

#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/toml/TomlInsertion.h"
#include "repository/documents/toml/TomlItems.h"

namespace Repository::Documents {

NodeId TomlElements::arrayAround(std::string_view path) const
{
    const PathEnds ends = splitLast(path);
    const NodeId id = path.empty() || !readIndex(ends.last) ? noNode : file.find(ends.parent);
    return id != noNode && (tree.node(id).isArray() || file.isList(id)) ? id : noNode;
}

std::optional<Span> TomlElements::locate(std::string_view path) const
{
    const NodeId list = arrayAround(path);
    if (list == noNode || !file.isList(list))
        return {};
    const TomlItems items(tree.valueText(list), file.lineEnd);
    const std::size_t position = *readIndex(splitLast(path).last);
    if (position >= items.count())
        return {};
    const BracketItems::Item& item = items.getItems()[position];
    return file.locate(list, {item.begin, item.end - item.begin});
}

std::size_t TomlElements::countOf(NodeId array) const
{
    return tree.node(array).isArray() ? tree.node(array).count
                                      : TomlItems(tree.valueText(array), file.lineEnd).count();
}

std::optional<Outcome> TomlElements::insert(std::string_view path, const std::vector<Entry>& entries)
{
    const NodeId array = arrayAround(path);
    if (array == noNode)
        return {};
    const std::size_t position = *readIndex(splitLast(path).last);
    if (position > countOf(array))
        return beyondEnd(path, countOf(array));
    TomlBranch branch;
    const std::string error = growTomlBranch(entries, branch);
    return error.empty() ? TomlInsertion(file).insertElement(array, position, std::move(branch))
                         : refused(error);
}

std::optional<Outcome> TomlElements::remove(std::string_view path, bool withComments)
{
    const NodeId list = arrayAround(path);
    const std::size_t position = list == noNode ? 0 : *readIndex(splitLast(path).last);
    if (list == noNode || !file.isList(list) || position >= countOf(list))
        return {};
    const std::string text = file.textOf(list);
    TomlItems items(text, file.lineEnd);
    items.remove(position, 1, withComments);
    TomlEditor(file).rewrite(list, items.apply());
    return Outcome();
}

std::optional<Outcome> TomlElements::move(std::string_view path, std::string_view newPath)
{
    const NodeId array = arrayAround(path);
    if (array == noNode || array != arrayAround(newPath))
        return {};
    const std::size_t from = *readIndex(splitLast(path).last);
    const std::size_t to = *readIndex(splitLast(newPath).last);
    const std::size_t count = countOf(array);
    if (from >= count)
        return {};
    if (to >= count)
        return beyondEnd(newPath, count - 1);
    if (from == to)
        return Outcome();
    if (tree.node(array).kind == TomlKind::Tables)
        moveTable(array, from, to);
    else
        moveItem(array, from, to);
    return Outcome();
}

void TomlElements::moveItem(NodeId array, std::size_t from, std::size_t to)
{
    const std::string text = file.textOf(array);
    TomlItems items(text, file.lineEnd);
    items.move(from, to);
    TomlEditor(file).rewrite(array, items.apply());
}

void TomlElements::moveTable(NodeId array, std::size_t from, std::size_t to)
{
    const NodeId element = tree.elementAt(array, from);
    const NodeId there = tree.elementAt(array, to);
    const NodeId first = tree.node(array).first;
    TomlInsertion insertion(file);
    TomlEditor editor(file);
    const bool isSpaced = TomlStyles(file).areSpaced(tree.node(tree.node(array).last).statement, true);
    const StatementId after =
        from < to ? insertion.endOf(there) : tree.statement(tree.node(there).statement).previous;
    editor.moveStatements(editor.statementsOf(element), after);
    tree.moveChild(element, from < to ? there : tree.node(there).previous);
    for (const NodeId moved : {element, first}) {
        const StatementId header = tree.node(moved).statement;
        const bool isFirst = tree.statement(header).previous == TomlTree::rootStatement;
        std::string lead(tree.leadOf(header));
        while (isFirst && beginsWithBlankLine(lead))
            lead.erase(0, lead.find('\n') + 1);
        const std::size_t ends = editor.endCommentsOf(tree.statement(header).previous).size();
        if (isSpaced && !isFirst && !beginsWithBlankLine(std::string_view(lead).substr(ends)))
            lead.insert(ends, file.lineEnd);
        tree.setLead(header, lead);
    }
    tree.settle(array);
}

} // namespace Repository::Documents
