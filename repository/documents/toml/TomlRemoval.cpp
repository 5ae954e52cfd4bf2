#include "repository/documents/toml/TomlRemoval.h"

#include "repository/documents/toml/TomlItems.h"
#include "repository/documents/toml/TomlTokens.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace Repository::Documents {

namespace {

// The part of a key that comes after some others; nothing where the key does not begin with these.
std::optional<TomlKeyPart> partAfter(std::string_view key, const std::vector<std::string>& path)
{
    TomlKeyPart part = readTomlKeyPart(key, 0);
    for (std::size_t i = 0;; ++i) {
        if (decodeTomlKey(key.substr(part.begin, part.end - part.begin)) != path[i])
            return {};
        if (i + 1 == path.size())
            return part;
        if (part.isLast)
            return {};
        part = readTomlKeyPart(key, part.next);
    }
}

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
    NodeId container = tree.node(id).parent;
    if (tree.node(container).kind == TomlKind::Array) {
        const std::string text = file.textOf(container);
        TomlItems items(text, file.lineEnd);
        items.remove(tree.positionOf(id), 1, withComments);
        editor.rewrite(container, items.apply());
        return;
    }
    std::vector<std::string> path{std::string(tree.keyText(id))};
    for (; !tree.node(container).hasSpan(); container = tree.node(container).parent)
        path.insert(path.begin(), std::string(tree.keyText(container)));
    std::string text = file.textOf(container);
    for (std::size_t i = TomlItems(text, file.lineEnd).count(); i-- > 0;) {
        TomlItems items(text, file.lineEnd);
        if (partAfter(items.item(i), path)) {
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
    std::vector<std::string> path{std::string(tree.keyText(id))};
    NodeId container = tree.node(id).parent;
    for (; !tree.node(container).hasSpan(); container = tree.node(container).parent)
        path.insert(path.begin(), std::string(tree.keyText(container)));
    const std::string text = file.textOf(container);
    TomlItems items(text, file.lineEnd);
    for (std::size_t i = 0; i < items.count(); ++i) {
        const std::string item(items.item(i));
        if (const auto part = partAfter(item, path))
            items.replace(i, withPart(item, *part, key));
    }
    editor.rewrite(container, items.apply());
}

} // namespace Repository::Documents
