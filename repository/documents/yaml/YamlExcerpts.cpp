#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/yaml/YamlDocument.h"
#include "repository/documents/yaml/YamlDocuments.h"
#include "repository/documents/yaml/YamlSubtrees.h"

#include <vector>

// The part of a document that gives and takes subtrees as they are written.
namespace Repository::Documents {

std::optional<Excerpt> YamlDocument::excerpt(std::string_view path) const
{
    if (file->isEdited()) {
        YamlDocument settled;
        return settled.parse(getBytes()).ok() ? settled.excerpt(path) : std::nullopt;
    }
    const NodeId id = path.empty() ? noNode : file->findElement(path);
    if (id == noNode)
        return {};
    return isOneOfSeveral(id) ? YamlDocuments(*file).excerptOf(id) : YamlLayout(*file).excerptOf(id);
}

bool YamlDocument::hasComments(std::string_view path) const
{
    if (file->isEdited()) {
        YamlDocument settled;
        return settled.parse(getBytes()).ok() && settled.hasComments(path);
    }
    const NodeId id = path.empty() ? noNode : file->findElement(path);
    if (id == noNode)
        return false;
    return YamlLayout(*file).hasComments(id) ||
           (isOneOfSeveral(id) && YamlDocuments(*file).hasCommentsAround(id));
}

std::size_t YamlDocument::countTags(std::string_view path) const
{
    std::size_t count = 0;
    const YamlTree& tree = file->tree;
    std::vector<NodeId> pending;
    if (const NodeId id = path.empty() ? tree.getRoot() : file->findElement(path); id != noNode)
        pending.push_back(id);
    while (!pending.empty()) {
        const YamlNode& node = tree.node(pending.back());
        pending.pop_back();
        if (node.isAlias || node.isShared)
            continue;
        count += node.isTagged ? 1 : 0;
        for (NodeId child = node.first; child != noNode; child = tree.node(child).next)
            pending.push_back(child);
    }
    return count;
}

bool YamlDocument::isOneOfSeveral(NodeId document) const
{
    const NodeId parent = file->tree.node(document).parent;
    return parent != noNode && file->tree.node(parent).style == YamlStyle::Stream;
}

bool YamlDocument::insertExcerpt(std::string_view path, const Excerpt& excerpt)
{
    settle();
    const PathEnds ends = splitLast(path);
    const NodeId parent = path.empty() || excerpt.names.empty() ? noNode : file->find(ends.parent);
    if (parent == noNode || !checkShape(path, parent, false).ok())
        return false;
    const YamlNode& node = file->tree.node(parent);
    const YamlSubtrees subtrees(*file);
    YamlEditor editor(*file);
    Outcome outcome;
    if (node.isSequence()) {
        const auto position = readIndex(ends.last);
        if (!position || *position > node.count)
            return false;
        outcome = node.style == YamlStyle::Stream
                      ? subtrees.insertDocument(editor, *position, excerpt)
                      : subtrees.insertElement(editor, parent, *position, excerpt);
    } else {
        const std::string key = yamlKeyOf(ends.last, outcome.error);
        if (!outcome.ok() || node.kind != YamlKind::Map || file->tree.findKey(parent, key) != noNode)
            return false;
        outcome = subtrees.insertMember(editor, parent, key, excerpt);
    }
    return outcome.ok() && commit(editor, Kind::Insertion, noNode, [&](const YamlFile& fresh) {
                               return fresh.findElement(path) != noNode;
                           }).ok();
}

} // namespace Repository::Documents
