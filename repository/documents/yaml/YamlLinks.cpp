#include "repository/documents/yaml/YamlLinks.h"

#include "repository/documents/yaml/YamlList.h"
#include "repository/documents/yaml/YamlScalar.h"

namespace Repository::Documents {

Document::Origin YamlLinks::originOf(std::string_view path) const
{
    const NodeId id = tree.hasLinks() && !path.empty() ? file.find(path) : noNode;
    if (id == noNode)
        return Document::Origin::Own;
    if (tree.isInMerge(id))
        return Document::Origin::Reference;
    if (tree.node(id).isShared)
        return Document::Origin::Copy;
    return shownBy(id) == noNode ? Document::Origin::Own : Document::Origin::Alias;
}

// What an alias or a copy shows; noNode for what has its own text, or shows a key.
NodeId YamlLinks::shownBy(NodeId id) const
{
    const YamlTree::Origin origin = tree.isEdited(id) ? YamlTree::Origin() : tree.originOf(id);
    return origin.isKey ? noNode : origin.node;
}

std::string YamlLinks::sourceOf(std::string_view path) const
{
    const NodeId id = tree.hasLinks() && !path.empty() ? file.find(path) : noNode;
    const NodeId source = id == noNode ? noNode : shownBy(id);
    return source == noNode ? std::string(path) : file.pathOf(source);
}

std::vector<std::string> YamlLinks::followersOf(std::string_view path) const
{
    std::vector<std::string> paths;
    const NodeId id = tree.hasLinks() ? file.findValueNode(path) : noNode;
    if (id == noNode)
        return paths;
    for (const NodeId each : tree.sharersOf(id)) {
        if (!tree.isEdited(each))
            paths.push_back(file.pathOf(each));
    }
    return paths;
}

bool YamlLinks::isLinked(std::string_view path) const
{
    if (!tree.hasLinks() || path.empty())
        return tree.hasLinks();
    const NodeId id = file.findValueNode(path);
    return id != noNode && tree.isLinked(id);
}

Outcome YamlLinks::explainCopy(std::string_view path, NodeId id) const
{
    const std::string_view text = tree.getOriginal();
    const auto lineAt = [text](std::size_t offset) { return std::to_string(outcomeAt(text, offset).line); };
    NodeId top = id; // what is no part of another copy
    while (!tree.node(top).isAlias || tree.node(top).isShared) {
        const NodeId parent = tree.node(top).parent;
        if (tree.node(top).isInherited && !tree.node(parent).isShared && !tree.node(parent).isAlias)
            break;
        top = parent;
    }
    const YamlNode& shown = tree.node(top);
    const NodeId known = shownBy(id);
    const YamlNode& source = tree.node(known == noNode ? top : known);
    const std::size_t place = source.hasKey ? source.key : source.begin;
    const std::string origin = known == noNode
                                   ? Reason::tr("elsewhere")
                                   : Reason::tr("%1 at line %2", {quoted(file.pathOf(known)), lineAt(place)});
    if (shown.isInherited) {
        Outcome outcome = outcomeAt(text, place);
        outcome.error =
            Reason::tr("%1 comes with \"<<\" from %2; change or remove that instead", {quoted(path), origin});
        return outcome;
    }
    Outcome outcome = outcomeAt(text, shown.value);
    outcome.error = Reason::tr(
        "%1 is shown by the alias %2 at line %3 and comes from %4; change that instead, or "
        "remove the alias %5 and create it anew",
        {quoted(path), tree.readValueText(top), lineAt(shown.value), origin, quoted(file.pathOf(top))});
    return outcome;
}

bool YamlLinks::isShownThrough(NodeId id) const
{
    NodeId around = tree.hasLinks() && tree.node(id).isAlias && !tree.isEdited(id) ? id : noNode;
    while (around != noNode && !tree.node(around).isUsed)
        around = tree.node(around).parent;
    return around != noNode;
}

bool YamlLinks::reshapesLists(NodeId id, std::string_view spelling) const
{
    const YamlNode& node = tree.node(id);
    const bool isText = node.tag == Type::Group && !isYamlList(spelling) &&
                        (node.isTagged || readYamlScalar(spelling, 0).type == Type::String);
    for (const NodeId each : tree.sharersOf(id)) {
        const YamlNode& sharer = tree.node(each);
        if (!sharer.hasKey && !tree.isEdited(each) && sharer.isText != isText)
            return true;
    }
    return false;
}

} // namespace Repository::Documents
