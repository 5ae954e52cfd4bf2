#include "repository/documents/yaml/YamlBuilder.h"
#include "repository/documents/yaml/YamlSpelling.h"

#include <utility>

// The part of a builder that follows aliases to what they show.
namespace Repository::Documents {

void YamlBuilder::addAlias(const YamlEvent& event)
{
    const Frame& frame = frames.back();
    const bool isMerge = frame.isMap && frame.keyStyle == YamlStyle::Plain &&
                         source().substr(frame.key, frame.keyEnd - frame.key) == "<<";
    const auto found = anchors.find(nameOf(event.token));
    const Anchor anchor = found == anchors.end() ? Anchor() : found->second;
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
    if (anchor.node == noNode)
        return;
    tree.node(anchor.node).isUsed = true;
    tree.noteAlias(anchor.node, event.token.begin);
    if (isMerge || !isKnown || !fits)
        return;
    tree.node(anchor.node).isCopied = true;
    const YamlTree::Origin origin = tree.originOf(anchor.node);
    tree.setOrigin(id, origin.node == noNode ? YamlTree::Origin{anchor.node, anchor.isKey} : origin);
    if (isCollectionAlias)
        copy(anchor.node, id);
}

// Whether an alias of it shows a text.
bool YamlBuilder::isTextBehind(const Anchor& anchor) const
{
    if (anchor.node == noNode)
        return true;
    const YamlTree::Origin origin = tree.originOf(anchor.node);
    const NodeId id = origin.node == noNode ? anchor.node : origin.node;
    const YamlNode& node = tree.node(id);
    const bool isKey = origin.node == noNode ? anchor.isKey : origin.isKey;
    const std::string_view spelled = isKey ? tree.text(node.key, node.keyEnd) : tree.readValueText(id);
    if (node.isAlias || (!isKey && node.isTagged))
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

// Below an alias there are copies of what is below its target.
void YamlBuilder::copy(NodeId target, NodeId alias)
{
    std::vector<std::pair<NodeId, NodeId>> pending{{target, alias}};
    while (!pending.empty()) {
        const auto [from, to] = pending.back();
        pending.pop_back();
        for (NodeId child = tree.node(from).first; child != noNode; child = tree.node(child).next) {
            YamlNode node = tree.node(child);
            static_cast<SyntaxNode&>(node) = SyntaxNode();
            node.parent = to;
            node.isShared = true;
            node.isUsed = node.isCopied = node.isAnchored = node.isIndexed = node.isRepeated = false;
            const NodeId made = tree.read(node);
            ++copies;
            const YamlTree::Origin origin = tree.originOf(child);
            tree.setOrigin(made, origin.node == noNode ? YamlTree::Origin{child, false} : origin);
            tree.copyKeyText(child, made);
            if (!node.isLeaf())
                pending.emplace_back(child, made);
        }
        if (tree.node(to).kind == YamlKind::Map)
            tree.numberMembers(to);
    }
}

} // namespace Repository::Documents
