#include "repository/documents/yaml/YamlTree.h"

#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/yaml/YamlScalar.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <utility>

namespace Repository::Documents {

std::string_view YamlTree::valueText(NodeId id) const
{
    const std::string* const own = ownText(id, YamlPart::Value);
    return own ? std::string_view(*own) : readValueText(id);
}

void YamlTree::restoreValue(NodeId id)
{
    ownTexts.erase(id);
    nodes[id].hasOwnTexts = false;
}

void YamlTree::takeValue(NodeId id)
{
    restoreValue(id);
    for (YamlNode& node : nodes) // also where a value was edited and restored
        node.touched = false;
}

std::string_view YamlTree::keyText(NodeId id, std::string& buffer) const
{
    const YamlNode& node = this->node(id);
    const std::string_view spelled = text(node.key, node.keyEnd);
    if (node.isNamePlain)
        return spelled;
    switch (node.keyStyle) {
    case YamlStyle::Plain:
        if (!hasYamlBreak(spelled))
            return spelled;
        buffer = decodeYamlPlain(spelled);
        return buffer;
    case YamlStyle::Single:
    case YamlStyle::Double:
        if (spelled.find_first_of("\\'\r\n", 1) >= spelled.size() - 1)
            return spelled.substr(1, spelled.size() - 2);
        buffer = decodeYamlQuoted(spelled);
        return buffer;
    case YamlStyle::Literal:
    case YamlStyle::Folded:
        buffer = decodeYamlBlock(spelled, columnOfYaml(original, this->node(node.parent).value));
        return buffer;
    default:
        break;
    }
    const auto known = keyTexts.find(id);
    return known == keyTexts.end() ? spelled : std::string_view(known->second);
}

NodeId YamlTree::following(NodeId id) const
{
    if (nodes[id].first != noNode)
        return nodes[id].first;
    while (id != noNode && nodes[id].next == noNode)
        id = nodes[id].parent;
    return id == noNode ? noNode : nodes[id].next;
}

YamlTree::Origin YamlTree::originOf(NodeId id) const
{
    const auto found = origins.find(id);
    return found == origins.end() ? Origin() : found->second;
}

void YamlTree::setOrigin(NodeId id, Origin origin)
{
    origins[id] = origin;
    if (!origin.isKey)
        sharers[origin.node].push_back(id);
}

const std::vector<NodeId>& YamlTree::sharersOf(NodeId origin) const
{
    static const std::vector<NodeId> none;
    const auto found = sharers.find(origin);
    return found == sharers.end() ? none : found->second;
}

bool YamlTree::isLinked(NodeId id) const
{
    const bool isAlias = nodes[id].isAlias && nodes[id].kind != YamlKind::Merge; // maybe within its anchor
    const bool leadsOn = isAlias || origins.count(id) > 0;
    return (leadsOn && !isEdited(id)) || sharers.count(id) > 0;
}

bool YamlTree::isMergeKey(NodeId id) const
{
    const YamlNode& node = this->node(id);
    return node.hasKey && node.keyStyle == YamlStyle::Plain && text(node.key, node.keyEnd) == "<<";
}

bool YamlTree::isInMerge(NodeId id) const
{
    while (id != noNode && !nodes[id].isMerged)
        id = nodes[id].parent;
    return id != noNode;
}

NodeId YamlTree::lastOwn(NodeId collection) const
{
    NodeId id = nodes[collection].last;
    while (id != noNode && nodes[id].isInherited)
        id = nodes[id].previous;
    return id;
}

bool YamlTree::hasName(NodeId id, std::string_view key, std::size_t ordinal) const
{
    std::string buffer;
    return ordinalOf(id) == ordinal && keyText(id, buffer) == key;
}

NodeId YamlTree::find(NodeId parent, std::string_view component) const
{
    const YamlNode& node = nodes[parent];
    if (node.isLeaf())
        return noNode;
    if (node.kind == YamlKind::Sequence) {
        const auto position = readIndex(component);
        return position ? elementAt(parent, *position) : noNode;
    }
    const NumberedComponent name = splitNumber(component);
    const auto key = decodeKey(name.name);
    const NodeId id = key ? findKey(parent, *key, name.number) : noNode;
    return id != noNode && isOwnValue(id) ? noNode : id;
}

NodeId YamlTree::findKey(NodeId parent, std::string_view key, std::size_t ordinal) const
{
    if (nodes[parent].kind != YamlKind::Map)
        return noNode;
    const auto matches = [&](NodeId id) { return hasName(id, key, ordinal); };
    if (nodes[parent].isIndexed)
        return indexes.at(parent).find(HashIndex::hashOf(key, std::uint32_t(ordinal)), matches);
    NodeId id = nodes[parent].first;
    while (id != noNode && !matches(id))
        id = nodes[id].next;
    return id;
}

NodeId YamlTree::elementAt(NodeId sequence, std::size_t position) const
{
    auto& list = elements[sequence];
    if (list.empty()) {
        list.reserve(nodes[sequence].count);
        for (NodeId id = nodes[sequence].first; id != noNode; id = nodes[id].next)
            list.push_back(id);
    }
    return position < list.size() ? list[position] : noNode;
}

std::size_t YamlTree::positionOf(NodeId element) const
{
    std::size_t position = 0;
    for (NodeId id = nodes[element].previous; id != noNode; id = nodes[id].previous)
        ++position;
    return position;
}

void YamlTree::appendName(std::string& path, NodeId id, std::size_t position) const
{
    if (nodes[nodes[id].parent].isSequence()) {
        path += std::to_string(position);
        return;
    }
    std::string buffer;
    if (nodes[id].isNamePlain)
        path += text(node(id).key, node(id).keyEnd);
    else
        appendKey(path, keyText(id, buffer));
    appendNumber(path, ordinalOf(id));
}

NodeId YamlTree::findOwnValue(NodeId id) const
{
    const NodeId found = nodes[id].mayHoldOwnValue ? findKey(id, yamlOwnValueKey) : noNode;
    return found != noNode && nodes[found].isLeaf() ? found : noNode;
}

bool YamlTree::isOwnValue(NodeId id) const
{
    const NodeId parent = nodes[id].parent;
    return parent != noNode && nodes[parent].mayHoldOwnValue && nodes[id].isLeaf() &&
           hasName(id, yamlOwnValueKey, 1);
}

NodeId YamlTree::findUsed(NodeId id) const
{
    std::vector<NodeId> pending{id};
    while (!pending.empty()) {
        const NodeId next = pending.back();
        pending.pop_back();
        if (nodes[next].isUsed)
            return next;
        for (NodeId child = nodes[next].first; child != noNode; child = nodes[child].next)
            pending.push_back(child);
    }
    return noNode;
}

std::size_t YamlTree::findAliasOf(NodeId id) const
{
    const auto found = aliases.find(id);
    return found == aliases.end() ? std::string_view::npos : found->second;
}

void YamlTree::setRoot(NodeId id)
{
    root = id;
    nodes[id].parent = noNode;
}

void YamlTree::copyKeyText(NodeId from, NodeId to)
{
    const auto known = keyTexts.find(from);
    if (known != keyTexts.end())
        setKeyText(to, std::string(known->second));
}

// Finds the keys that a map has more than once.
void YamlTree::numberMembers(NodeId map)
{
    std::uint32_t count = nodes[map].count;
    for (NodeId id = nodes[map].last; id != noNode && nodes[id].isInherited; id = nodes[id].previous)
        ++count;
    const bool isLarge = count > fewChildren;
    HashIndex index;
    if (isLarge)
        index.reserve(count);
    for (NodeId id = nodes[map].first; id != noNode; id = nodes[id].next)
        numberMember(id, isLarge ? &index : nullptr);
    if (isLarge) {
        nodes[map].isIndexed = true;
        indexes.insert_or_assign(map, std::move(index));
    }
}

// The same for a member that was added to those that are numbered.
void YamlTree::numberLast(NodeId map)
{
    const YamlNode& node = nodes[map];
    if (node.isIndexed)
        numberMember(node.last, &indexes.at(map));
    else if (node.count > fewChildren)
        numberMembers(map);
    else
        numberMember(node.last, nullptr);
}

// Among those before it in its map, which are in the index if there is one.
void YamlTree::numberMember(NodeId id, HashIndex* index)
{
    const NodeId map = nodes[id].parent;
    std::string buffer;
    std::string other;
    const std::string_view key = keyText(id, buffer);
    nodes[id].isNamePlain =
        nodes[id].keyStyle == YamlStyle::Plain && key.data() != buffer.data() && isPlainKey(key);
    if (key == yamlOwnValueKey)
        nodes[map].mayHoldOwnValue = true;
    std::size_t ordinal = 1;
    if (index) {
        const auto isThere = [&](NodeId before) { return hasName(before, key, ordinal); };
        std::uint32_t hash = HashIndex::hashOf(key, 1);
        while (index->find(hash, isThere) != noNode)
            hash = HashIndex::hashOf(key, std::uint32_t(++ordinal));
        index->insert(hash, id);
    } else {
        for (NodeId before = nodes[map].first; before != id; before = nodes[before].next)
            ordinal += keyText(before, other) == key ? 1 : 0;
    }
    nodes[id].isRepeated = ordinal > 1;
    if (ordinal > 1)
        ordinals[id] = ordinal;
}

} // namespace Repository::Documents
