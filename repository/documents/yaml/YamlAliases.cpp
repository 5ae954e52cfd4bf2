#include "repository/documents/yaml/YamlBuilder.h"
#include "repository/documents/yaml/YamlSpelling.h"

#include <unordered_set>
#include <utility>

// The part of a builder that follows aliases to what they show.
namespace Repository::Documents {

void YamlBuilder::addAlias(const YamlEvent& event)
{
    const Frame& frame = frames.back();
    const bool isMerge = frame.isMap ? namesMerge(frame) : tree.isMergeKey(frame.id);
    const std::string name = nameOf(event.token);
    const bool showsOwnKey = frame.isMap && name == frame.keyAnchor;
    const auto found = showsOwnKey ? anchors.end() : anchors.find(name);
    if (found == anchors.end() && !showsOwnKey && !isPart)
        fault = outcomeAt(
            source(), event.token.begin,
            Reason::tr("no anchor above has the name %1; a text that begins with \"*\" must be in quotes",
                       {quoted(name)}));
    Anchor anchor = found == anchors.end() ? Anchor() : found->second;
    YamlNode node;
    node.begin = node.value = std::uint32_t(event.token.begin);
    node.valueEnd = std::uint32_t(event.token.end);
    lastEnd = event.token.end;
    node.isAlias = true;
    const bool isKnown = anchor.node != noNode && !anchor.isOpen;
    const bool isCollectionAlias = isKnown && !anchor.isKey && !tree.node(anchor.node).isLeaf();
    const bool fits = !isCollectionAlias || copies + sizeOf(anchor.node, mostCopies - copies) <= mostCopies;
    if (isMerge)
        node.kind = YamlKind::Merge;
    else if (isKnown && fits && !anchor.isKey)
        node.kind = tree.node(anchor.node).kind;
    node.isText = !frame.isMap && node.kind == YamlKind::Scalar && isTextBehind(isKnown ? anchor : Anchor());
    const NodeId id = add(node, event);
    if (showsOwnKey)
        anchor = {id, true, false};
    if (anchor.node == noNode)
        return;
    tree.node(anchor.node).isUsed = true;
    tree.noteAlias(anchor.node, event.token.begin);
    if (isMerge && isKnown && !anchor.isKey)
        mergeTargets[id] = anchor.node;
    if (isMerge || anchor.isOpen || !fits)
        return;
    tree.setOrigin(id, originBehind(anchor));
    if (isCollectionAlias)
        copyBelow(anchor.node, id);
}

// What an alias of it shows: what that shows itself, where its value is an alias.
YamlTree::Origin YamlBuilder::originBehind(const Anchor& anchor) const
{
    const YamlTree::Origin origin = anchor.isKey ? YamlTree::Origin() : tree.originOf(anchor.node);
    return origin.node == noNode ? YamlTree::Origin{anchor.node, anchor.isKey} : origin;
}

// Whether an alias of it shows a text.
bool YamlBuilder::isTextBehind(const Anchor& anchor) const
{
    if (anchor.node == noNode)
        return true;
    const YamlTree::Origin origin = originBehind(anchor);
    const YamlNode& node = tree.node(origin.node);
    const std::string_view spelled =
        origin.isKey ? tree.text(node.key, node.keyEnd) : tree.readValueText(origin.node);
    if (!origin.isKey && (node.isAlias || node.isTagged))
        return true;
    return node.tag == Type::Group && readYamlScalar(spelled, 0).type == Type::String;
}

std::size_t YamlBuilder::sizeOf(NodeId id, std::size_t most) const
{
    std::size_t size = 0;
    std::vector<NodeId> pending{id};
    while (!pending.empty() && size <= most) {
        const NodeId next = pending.back();
        pending.pop_back();
        ++size;
        if (tree.node(next).isLeaf())
            continue;
        for (NodeId child = tree.node(next).first; child != noNode && size <= most;
             child = tree.node(child).next)
            pending.push_back(child);
    }
    return size;
}

NodeId YamlBuilder::copyOne(NodeId id, NodeId parent, bool isInherited)
{
    YamlNode node = tree.node(id);
    static_cast<SyntaxNode&>(node) = SyntaxNode();
    node.parent = parent;
    node.isShared = true;
    node.isInherited = isInherited;
    node.isUsed = node.namesKey = node.isAnchored = node.isIndexed = node.isRepeated = false;
    const NodeId made = tree.read(node);
    ++copies;
    const YamlTree::Origin origin = tree.originOf(id);
    tree.setOrigin(made, origin.node == noNode ? YamlTree::Origin{id, false} : origin);
    tree.copyKeyText(id, made);
    return made;
}

// Below an alias there are copies of what is below its target. What a merge brings in is shown without that.
void YamlBuilder::copyBelow(NodeId target, NodeId alias)
{
    std::vector<std::pair<NodeId, NodeId>> pending{{target, alias}};
    while (!pending.empty()) {
        const auto [from, to] = pending.back();
        pending.pop_back();
        for (NodeId child = tree.node(from).first; child != noNode; child = tree.node(child).next) {
            if (tree.node(child).isMerged)
                continue;
            const NodeId made = copyOne(child, to, tree.node(child).isInherited);
            if (!tree.node(made).isLeaf())
                pending.emplace_back(child, made);
        }
        if (tree.node(to).kind == YamlKind::Map)
            tree.numberMembers(to);
    }
}

bool YamlBuilder::namesMerge(const Frame& frame) const
{
    return frame.isMap && frame.keyStyle == YamlStyle::Plain &&
           source().substr(frame.key, frame.keyEnd - frame.key) == "<<";
}

// The maps that "<<" merges, the first of which wins; none where it has something else.
std::vector<NodeId> YamlBuilder::mapsBehind(NodeId merge) const
{
    const auto behind = [this](NodeId id) {
        const auto found = mergeTargets.find(id);
        return found == mergeTargets.end() ? id : found->second;
    };
    const NodeId target = behind(merge);
    if (tree.node(target).kind == YamlKind::Map)
        return {target};
    std::vector<NodeId> maps;
    for (NodeId id = tree.node(target).first; id != noNode; id = tree.node(id).next) {
        maps.push_back(behind(id));
        if (tree.node(maps.back()).kind != YamlKind::Map)
            return {};
    }
    return maps;
}

// What maps bring into another one that has no such keys; nothing of what an earlier one brings.
std::vector<NodeId> YamlBuilder::membersOf(NodeId map, const std::vector<NodeId>& sources) const
{
    std::vector<NodeId> members;
    std::unordered_set<std::string> known;
    std::string buffer;
    for (const NodeId each : sources) {
        std::vector<std::string> keys;
        for (NodeId child = tree.node(each).first; child != noNode; child = tree.node(child).next) {
            std::string key(tree.keyText(child, buffer));
            if (tree.isMergeKey(child) || key == yamlOwnValueKey || tree.findKey(map, key) != noNode ||
                known.count(key) > 0)
                continue;
            members.push_back(child);
            keys.push_back(std::move(key));
        }
        known.insert(keys.begin(), keys.end());
    }
    return members;
}

// A map shows what it merges after what is written in it. Of several "<<", the last wins, as readers have it.
void YamlBuilder::inherit(NodeId map)
{
    std::vector<NodeId> merges;
    std::vector<NodeId> sources;
    for (NodeId id = tree.node(map).last; id != noNode && mayInherit; id = tree.node(id).previous) {
        const std::vector<NodeId> maps = tree.isMergeKey(id) ? mapsBehind(id) : std::vector<NodeId>();
        if (!maps.empty())
            merges.push_back(id);
        sources.insert(sources.end(), maps.begin(), maps.end());
    }
    const std::vector<NodeId> members = membersOf(map, sources);
    std::size_t size = copies;
    for (auto member = members.begin(); member != members.end() && mayInherit; ++member) {
        size += sizeOf(*member, mostCopies);
        mayInherit = size <= mostCopies;
    }
    if (!mayInherit || merges.empty())
        return;
    for (const NodeId id : merges)
        tree.node(id).isMerged = true;
    for (const NodeId member : members) {
        const NodeId made = copyOne(member, map, true);
        if (!tree.node(made).isLeaf())
            copyBelow(member, made);
    }
    tree.numberMembers(map);
}

} // namespace Repository::Documents
