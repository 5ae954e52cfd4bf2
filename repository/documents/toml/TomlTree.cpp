#include "repository/documents/toml/TomlTree.h"

#include "repository/documents/common/ArrayGroups.h"

#include <algorithm>

namespace Repository::Documents {

TomlTree::TomlTree(std::string text) : SyntaxTree(std::move(text)), fileSize(original.size())
{
    TomlNode node;
    node.statement = rootStatement;
    read(node);
    TomlStatement header;
    header.isHeader = true;
    header.node = root;
    header.last = rootStatement;
    statements.push_back(header);
}

std::string_view TomlTree::valueText(NodeId id) const
{
    const std::string* const own = ownText(id, TomlPart::Value);
    return own ? std::string_view(*own) : readValueText(id);
}

void TomlTree::restoreValue(NodeId id)
{
    if (nodes[id].hasOwnTexts)
        ownTexts[id][0].reset();
    const char first = original[nodes[id].value];
    const bool isText = first == '"' || first == '\'';
    if (nodes[id].parent != noNode)
        nodes[nodes[id].parent].nonTexts += (nodes[id].isText ? 1 : 0) - (isText ? 1 : 0);
    nodes[id].isText = isText;
}

void TomlTree::setReadValue(NodeId id, std::size_t begin, std::size_t end)
{
    nodes[id].value = static_cast<std::uint32_t>(begin);
    nodes[id].valueEnd = static_cast<std::uint32_t>(end);
    restoreValue(id);
}

void TomlTree::setValue(NodeId id, std::string spelling, bool isText)
{
    if (nodes[id].parent != noNode)
        nodes[nodes[id].parent].nonTexts += (nodes[id].isText ? 1 : 0) - (isText ? 1 : 0);
    nodes[id].isText = isText;
    setText(id, TomlPart::Value, std::move(spelling));
    TomlStatement& statement = statements[nodes[id].statement];
    if (!statement.mayHoldEdits)
        statementsWithEdits.push_back(nodes[id].statement);
    statement.mayHoldEdits = true;
}

std::uint32_t TomlTree::keep(std::string_view text)
{
    const std::size_t begin = original.size();
    original += text;
    return static_cast<std::uint32_t>(begin);
}

bool TomlTree::hasRoom() const
{
    constexpr std::size_t mostTimesTheFile = 3;
    constexpr std::size_t always = 1U << 16;
    return original.size() <= mostTimesTheFile * fileSize + always;
}

NodeId TomlTree::findKey(NodeId parent, std::string_view key) const
{
    const TomlNode& node = nodes[parent];
    const NodeId last = node.last;
    if (last != noNode && keyText(last) == key)
        return last;
    if (node.count > fewChildren)
        return indexOf(parent).find(HashIndex::hashOf(key), [&](NodeId id) { return keyText(id) == key; });
    for (NodeId id = node.first; id != noNode; id = nodes[id].next) {
        if (keyText(id) == key)
            return id;
    }
    return noNode;
}

HashIndex& TomlTree::indexOf(NodeId parent) const
{
    const auto [place, isNew] = indexes.try_emplace(parent);
    if (isNew) {
        place->second.reserve(nodes[parent].count);
        for (NodeId id = nodes[parent].first; id != noNode; id = nodes[id].next)
            place->second.insert(HashIndex::hashOf(keyText(id)), id);
    }
    return place->second;
}

NodeId TomlTree::elementAt(NodeId array, std::size_t position) const
{
    auto& list = elements[array];
    if (list.empty()) {
        list.reserve(nodes[array].count);
        for (NodeId id = nodes[array].first; id != noNode; id = nodes[id].next)
            list.push_back(id);
    }
    return position < list.size() ? list[position] : noNode;
}

std::size_t TomlTree::positionOf(NodeId element) const
{
    std::size_t position = 0;
    for (NodeId id = nodes[element].previous; id != noNode; id = nodes[id].previous)
        ++position;
    return position;
}

NodeId TomlTree::find(NodeId parent, std::string_view component) const
{
    if (nodes[parent].isArray()) {
        const auto position = readIndex(component);
        return position ? elementAt(parent, *position) : noNode;
    }
    if (nodes[parent].kind == TomlKind::Value)
        return noNode;
    NodeId id = noNode;
    if (isPlainKey(component)) {
        id = findKey(parent, component);
    } else {
        const auto key = decodeKey(component);
        id = key ? findKey(parent, *key) : noNode;
    }
    return id != noNode && isOwnValue(id) ? noNode : id;
}

void TomlTree::appendName(std::string& path, NodeId id, std::size_t position) const
{
    if (nodes[nodes[id].parent].isArray())
        path += std::to_string(position);
    else
        appendKey(path, keyText(id));
}

NodeId TomlTree::findOwnValue(NodeId id) const
{
    const NodeId found = nodes[id].mayHoldOwnValue ? findKey(id, tomlOwnValueKey) : noNode;
    return found != noNode && nodes[found].kind == TomlKind::Value ? found : noNode;
}

bool TomlTree::isOwnValue(NodeId id) const
{
    const NodeId parent = nodes[id].parent;
    return parent != noNode && nodes[parent].mayHoldOwnValue && nodes[id].kind == TomlKind::Value &&
           keyText(id) == tomlOwnValueKey;
}

NodeId TomlTree::bracketsAround(NodeId id, std::vector<std::string>& path) const
{
    path.assign(1, std::string(keyText(id)));
    NodeId brackets = node(id).parent;
    for (; !node(brackets).hasSpan(); brackets = node(brackets).parent)
        path.insert(path.begin(), std::string(keyText(brackets)));
    return brackets;
}

NodeId TomlTree::add(NodeId parent, const TomlNode& node, bool isLast)
{
    const NodeId id = allocate();
    nodes[id] = node;
    nodes[id].parent = parent;
    link(id, nodes[parent].last);
    if (!isLast)
        place(id);
    takeUp(id);
    return id;
}

void TomlTree::takeUp(NodeId id)
{
    const NodeId parent = nodes[id].parent;
    if (!nodes[parent].isArray() && keyText(id) == tomlOwnValueKey)
        nodes[parent].mayHoldOwnValue = true;
    if (const auto index = indexes.find(parent); index != indexes.end())
        index->second.insert(HashIndex::hashOf(keyText(id)), id);
    if (const auto list = elements.find(parent); list != elements.end()) {
        if (nodes[id].next == noNode && list->second.size() + 1 == nodes[parent].count)
            list->second.push_back(id);
        else
            elements.erase(list);
    }
}

void TomlTree::forget(NodeId id)
{
    const NodeId parent = nodes[id].parent;
    if (const auto index = indexes.find(parent); index != indexes.end())
        index->second.erase(HashIndex::hashOf(keyText(id)), id);
    elements.erase(parent);
}

void TomlTree::dropChildren(NodeId id)
{
    while (nodes[id].first != noNode) {
        const NodeId child = nodes[id].first;
        unlink(child);
        release(child, [this](NodeId below) {
            indexes.erase(below);
            elements.erase(below);
        });
        indexes.erase(child);
        elements.erase(child);
    }
    indexes.erase(id);
    elements.erase(id);
}

void TomlTree::drop(NodeId id)
{
    const NodeId parent = nodes[id].parent;
    dropChildren(id);
    forget(id);
    unlink(id);
    release(id, [](NodeId) {});
    pruneFrom(parent);
}

void TomlTree::pruneFrom(NodeId id)
{
    while (id != root && id != noNode && nodes[id].first == noNode && !nodes[id].isInline() &&
           nodes[id].statement == noStatement) {
        const NodeId parent = nodes[id].parent;
        forget(id);
        unlink(id);
        release(id, [](NodeId) {});
        id = parent;
    }
    settle(id);
}

void TomlTree::renameKey(NodeId id, std::string_view key)
{
    forget(id);
    nodes[id].key = keep(key);
    nodes[id].keyEnd = static_cast<std::uint32_t>(original.size());
    takeUp(id);
}

void TomlTree::moveChild(NodeId id, NodeId previous)
{
    unlink(id);
    link(id, previous);
    elements.erase(nodes[id].parent);
}

StatementId TomlTree::firstStatementOf(NodeId id) const
{
    StatementId first = noStatement;
    while (id != noNode) {
        const StatementId own = nodes[id].statement;
        if (own != noStatement && (first == noStatement || statements[own].order < statements[first].order))
            first = own;
        id = nodes[id].isInline() ? noNode : nodes[id].first;
    }
    return first;
}

std::uint64_t TomlTree::orderOf(NodeId id) const
{
    const StatementId first = firstStatementOf(id);
    return first == noStatement ? UINT64_MAX : statements[first].order;
}

// Moves a node among its siblings, which are in order.
void TomlTree::place(NodeId id)
{
    const std::uint64_t order = orderOf(id);
    NodeId previous = nodes[id].previous;
    NodeId next = nodes[id].next;
    if ((previous == noNode || orderOf(previous) <= order) && (next == noNode || orderOf(next) >= order))
        return;
    while (next != noNode && orderOf(next) < order) {
        previous = next;
        next = nodes[next].next;
    }
    while (previous != noNode && (previous == id || orderOf(previous) > order))
        previous = nodes[previous].previous;
    unlink(id);
    link(id, previous);
    elements.erase(nodes[id].parent);
}

void TomlTree::settle(NodeId id)
{
    for (; id != noNode && id != root; id = nodes[id].parent) {
        if (!nodes[id].isInline() || !nodes[nodes[id].parent].isInline())
            place(id);
    }
}

StatementId TomlTree::addStatement(const TomlStatement& added, StatementId after)
{
    StatementId id = static_cast<StatementId>(statements.size());
    if (freeStatements.empty()) {
        statements.push_back(added);
    } else {
        id = freeStatements.back();
        freeStatements.pop_back();
        statements[id] = added;
    }
    linkStatement(id, after);
    return id;
}

void TomlTree::linkStatement(StatementId id, StatementId after)
{
    TomlStatement& own = statements[id];
    own.previous = after;
    own.next = statements[after].next;
    statements[after].next = id;
    (own.next == noStatement ? lastStatement : statements[own.next].previous) = id;
    number(id);
}

void TomlTree::unlinkStatement(StatementId id)
{
    isRearranged = true;
    const TomlStatement& own = statements[id];
    statements[own.previous].next = own.next;
    (own.next == noStatement ? lastStatement : statements[own.next].previous) = own.previous;
}

// Steps are such that many statements find room between two.
void TomlTree::number(StatementId id)
{
    constexpr std::uint64_t wide = std::uint64_t(1) << 32;
    constexpr std::uint64_t narrow = 256;
    const std::uint64_t before = statements[statements[id].previous].order;
    if (statements[id].next == noStatement) {
        statements[id].order = before + wide;
        return;
    }
    const std::uint64_t room = statements[statements[id].next].order - before;
    statements[id].order = before + std::min(narrow, room / 2);
    if (room > 1)
        return;
    std::uint64_t order = 0;
    for (StatementId each = rootStatement; each != noStatement; each = statements[each].next)
        statements[each].order = order += wide;
}

void TomlTree::setLead(StatementId id, std::string_view lead)
{
    isRearranged = true;
    const std::string kept(lead);
    statements[id].lead = keep(kept);
    statements[id].leadEnd = static_cast<std::uint32_t>(original.size());
}

void TomlTree::setTail(std::size_t begin, std::size_t end)
{
    tail = static_cast<std::uint32_t>(begin);
    tailEnd = static_cast<std::uint32_t>(end);
}

void TomlTree::setTailText(std::string_view text)
{
    const std::string kept(text);
    const std::uint32_t begin = keep(kept);
    setTail(begin, original.size());
}

} // namespace Repository::Documents
