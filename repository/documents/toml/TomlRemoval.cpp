#include "repository/documents/toml/TomlRemoval.h"

#include "repository/documents/toml/TomlItems.h"
#include "repository/documents/toml/TomlTokens.h"

#include <vector>

namespace Repository::Documents {

namespace {

std::string withPart(const std::string& text, const TomlKeyPart& part, const std::string& key)
{
    const std::string_view before = std::string_view(text).substr(part.begin, part.end - part.begin);
    return text.substr(0, part.begin) + encodeTomlKeyLike(key, before) + text.substr(part.end);
}

} // namespace

void TomlRemoval::remove(NodeId id, bool withComments)
{
    if (tree.node(tree.node(id).parent).isInline())
        removeItems(id, withComments);
    else
        editor.remove(id, withComments);
}

void TomlRemoval::removeItems(NodeId id, bool withComments)
{
    std::vector<std::string> path;
    const NodeId container = tree.bracketsAround(id, path);
    if (tree.node(container).kind == TomlKind::Array) {
        const std::string text = file.textOf(container);
        TomlItems items(text, file.lineEnd);
        items.remove(tree.positionOf(id), 1, withComments);
        editor.rewrite(container, items.apply());
        return;
    }
    std::string text = file.textOf(container);
    for (std::size_t i = TomlItems(text, file.lineEnd).count(); i-- > 0;) {
        TomlItems items(text, file.lineEnd);
        if (findTomlKeyPart(items.item(i), path)) {
            items.remove(i, 1);
            text = items.apply();
        }
    }
    editor.rewrite(container, std::move(text));
}

void TomlRemoval::rename(NodeId id, const std::string& key)
{
    if (tree.node(tree.node(id).parent).isInline())
        return renameItems(id, key);
    for (const StatementId statement : editor.statementsOf(id)) {
        if (const auto part = editor.findName(statement, id))
            editor.replaceLine(statement, withPart(file.statementText(statement), *part, key));
    }
    tree.renameKey(id, key);
}

void TomlRemoval::renameItems(NodeId id, const std::string& key)
{
    std::vector<std::string> path;
    const NodeId container = tree.bracketsAround(id, path);
    const std::string text = file.textOf(container);
    TomlItems items(text, file.lineEnd);
    for (std::size_t i = 0; i < items.count(); ++i) {
        const std::string item(items.item(i));
        if (const auto part = findTomlKeyPart(item, path))
            items.replace(i, withPart(item, *part, key));
    }
    editor.rewrite(container, items.apply());
}

} // namespace Repository::Documents
