#include "repository/documents/json/JsonMembers.h"

#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/json/JsonScalar.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

namespace Repository::Documents {

namespace {

constexpr std::uint32_t searchedCount = 8; // up to this many children are searched without an index

} // namespace

std::optional<std::uint32_t> readPosition(std::string_view text)
{
    const auto index = readIndex(text);
    return index && *index < noNode ? std::optional(static_cast<std::uint32_t>(*index)) : std::nullopt;
}

void JsonMembers::dropAll()
{
    indexes.clear();
    elements.clear();
    ordinals.clear();
}

void JsonMembers::addAll(NodeId container)
{
    JsonNode& node = tree.node(container);
    if (node.kind == JsonKind::Object && node.count > 0) {
        HashIndex index = numberMembers(container);
        node.indexed = node.count > searchedCount;
        if (node.indexed)
            indexes.emplace(container, std::move(index));
    } else if (node.count > searchedCount) {
        buildIndex(container);
    }
}

// Finds the keys that an object has more than once.
HashIndex JsonMembers::numberMembers(NodeId object)
{
    HashIndex index;
    std::string buffer;
    std::unordered_map<NodeId, std::uint32_t> counts; // by the first member of a key
    for (NodeId id = tree.node(object).first; id != noNode; id = tree.node(id).next) {
        const std::string_view key = keyOf(id, buffer);
        if (key == ownValueKey)
            tree.node(object).mayHoldOwnValue = true;
        const std::uint32_t hash = HashIndex::hashOf(key, 1);
        const NodeId first = index.find(hash, [this, key](NodeId other) { return hasName(other, key, 1); });
        if (first == noNode) {
            index.insert(hash, id);
            continue;
        }
        const std::uint32_t ordinal = counts.emplace(first, 1).first->second += 1;
        setOrdinal(id, ordinal);
        index.insert(HashIndex::hashOf(key, ordinal), id);
    }
    return index;
}

void JsonMembers::buildIndex(NodeId container)
{
    JsonNode& node = tree.node(container);
    node.indexed = true;
    if (node.kind == JsonKind::Array) {
        std::vector<NodeId>& children = elements[container];
        children.reserve(node.count);
        for (NodeId id = node.first; id != noNode; id = tree.node(id).next)
            children.push_back(id);
        return;
    }
    std::string buffer;
    HashIndex& index = indexes[container];
    for (NodeId id = node.first; id != noNode; id = tree.node(id).next)
        index.insert(HashIndex::hashOf(keyOf(id, buffer), ordinalOf(id)), id);
}

void JsonMembers::add(NodeId child)
{
    std::string buffer;
    const NodeId container = tree.node(child).parent;
    JsonNode& node = tree.node(container);
    const bool inObject = node.kind == JsonKind::Object;
    const std::string_view key = inObject ? keyOf(child, buffer) : std::string_view();
    if (inObject)
        setOrdinal(child, 1);
    node.mayHoldOwnValue = node.mayHoldOwnValue || key == ownValueKey;
    if (!node.indexed && node.count > searchedCount)
        buildIndex(container);
    else if (node.indexed && inObject)
        indexes[container].insert(HashIndex::hashOf(key, 1), child);
    else if (node.indexed)
        addElement(elements[container], child);
}

void JsonMembers::addElement(std::vector<NodeId>& children, NodeId child) const
{
    const NodeId next = tree.node(child).next;
    children.insert(next == noNode ? children.end() : std::find(children.begin(), children.end(), next),
                    child);
}

void JsonMembers::reorder(NodeId array)
{
    if (!tree.node(array).indexed)
        return;
    elements.erase(array);
    buildIndex(array);
}

void JsonMembers::remove(NodeId child)
{
    removeAll(child);
    const NodeId container = tree.node(child).parent;
    if (tree.node(container).kind == JsonKind::Object) {
        removeMember(child);
    } else if (tree.node(container).indexed) {
        std::vector<NodeId>& children = elements[container];
        children.erase(std::find(children.rbegin(), children.rend(), child).base() - 1);
    }
}

void JsonMembers::removeMember(NodeId member)
{
    std::string buffer;
    const NodeId object = tree.node(member).parent;
    const std::string_view key = keyOf(member, buffer);
    HashIndex* const index = tree.node(object).indexed ? &indexes[object] : nullptr;
    std::uint32_t ordinal = ordinalOf(member);
    if (index)
        index->erase(HashIndex::hashOf(key, ordinal), member);
    setOrdinal(member, 1);
    while (true) {
        const NodeId successor = findMember(object, key, ordinal + 1);
        if (successor == noNode)
            return;
        if (index) {
            index->erase(HashIndex::hashOf(key, ordinal + 1), successor);
            index->insert(HashIndex::hashOf(key, ordinal), successor);
        }
        setOrdinal(successor, ordinal);
        ++ordinal;
    }
}

void JsonMembers::removeAll(NodeId container)
{
    NodeId id = container;
    while (true) {
        forgetIndex(id);
        if (tree.node(id).first != noNode) {
            id = tree.node(id).first;
            setOrdinal(id, 1);
            continue;
        }
        while (id != container && tree.node(id).next == noNode)
            id = tree.node(id).parent;
        if (id == container)
            return;
        id = tree.node(id).next;
        setOrdinal(id, 1);
    }
}

void JsonMembers::forgetIndex(NodeId container)
{
    JsonNode& node = tree.node(container);
    if (node.indexed)
        indexes.erase(container), elements.erase(container);
    node.indexed = node.mayHoldOwnValue = false;
}

NodeId JsonMembers::find(NodeId container, std::string_view name) const
{
    const JsonNode& node = tree.node(container);
    if (node.isLeaf())
        return noNode;
    if (node.kind == JsonKind::Array)
        return findElement(container, name);
    const NumberedComponent parts = splitNumber(name);
    const std::optional<std::string> key = decodeKey(parts.name);
    if (!key || parts.number > node.count)
        return noNode;
    const NodeId member = findMember(container, *key, static_cast<std::uint32_t>(parts.number));
    return member != noNode && isOwnValue(member) ? noNode : member;
}

NodeId JsonMembers::findMember(NodeId object, std::string_view key, std::uint32_t ordinal) const
{
    const auto matches = [this, key, ordinal](NodeId id) { return hasName(id, key, ordinal); };
    if (tree.node(object).indexed)
        return indexes.at(object).find(HashIndex::hashOf(key, ordinal), matches);
    NodeId id = tree.node(object).first;
    while (id != noNode && !matches(id))
        id = tree.node(id).next;
    return id;
}

NodeId JsonMembers::findElement(NodeId array, std::string_view name) const
{
    const std::optional<std::uint32_t> position = readPosition(name);
    return position ? elementAt(array, *position) : noNode;
}

NodeId JsonMembers::elementAt(NodeId array, std::uint32_t position) const
{
    const JsonNode& node = tree.node(array);
    if (position >= node.count)
        return noNode;
    if (node.indexed)
        return elements.at(array)[position];
    NodeId id = node.first;
    for (std::uint32_t i = 0; i < position; ++i)
        id = tree.node(id).next;
    return id;
}

void JsonMembers::appendName(std::string& path, NodeId child, std::size_t position) const
{
    if (tree.node(tree.node(child).parent).kind == JsonKind::Array) {
        path += std::to_string(position);
        return;
    }
    std::string buffer;
    appendKey(path, keyOf(child, buffer));
    appendNumber(path, ordinalOf(child));
}

NodeId JsonMembers::findOwnValue(NodeId object) const
{
    if (!tree.node(object).mayHoldOwnValue)
        return noNode;
    const NodeId member = findMember(object, ownValueKey, 1);
    return member != noNode && tree.node(member).isLeaf() ? member : noNode;
}

bool JsonMembers::isOwnValue(NodeId child) const
{
    const JsonNode& node = tree.node(child);
    return node.isLeaf() && node.parent != noNode && tree.node(node.parent).mayHoldOwnValue &&
           hasName(child, ownValueKey, 1);
}

bool JsonMembers::hasSuccessor(NodeId child) const
{
    const JsonNode& node = tree.node(child);
    if (tree.node(node.parent).kind == JsonKind::Array)
        return node.next != noNode;
    std::string buffer;
    return findMember(node.parent, keyOf(child, buffer), ordinalOf(child) + 1) != noNode;
}

std::string_view JsonMembers::keyOf(NodeId member, std::string& buffer) const
{
    const std::string_view literal = tree.keyLiteral(member);
    if (literal.find('\\') == std::string_view::npos)
        return literal.substr(1, literal.size() - 2);
    buffer = decodeString(literal);
    return buffer;
}

bool JsonMembers::hasName(NodeId member, std::string_view key, std::uint32_t ordinal) const
{
    std::string buffer;
    return ordinalOf(member) == ordinal && keyOf(member, buffer) == key;
}

std::uint32_t JsonMembers::ordinalOf(NodeId member) const
{
    return tree.node(member).repeated ? ordinals.at(member) : 1;
}

void JsonMembers::setOrdinal(NodeId member, std::uint32_t ordinal)
{
    if (ordinal > 1)
        ordinals[member] = ordinal;
    else if (tree.node(member).repeated)
        ordinals.erase(member);
    tree.node(member).repeated = ordinal > 1;
}

} // namespace Repository::Documents
