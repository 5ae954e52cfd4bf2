#include "repository/documents/xml/XmlTree.h"

namespace Repository::Documents {

namespace {

std::uint32_t hashOf(NodeId parent, const XmlKey& key)
{
    std::uint64_t hash = (std::uint64_t(parent) << 32 | key.name) * 0x9E3779B97F4A7C15U;
    hash = (hash ^ hash >> 32 ^ key.number) * 0xD6E8FEB86659FD93U;
    return static_cast<std::uint32_t>(hash >> 32);
}

XmlKey keyOf(const XmlNode& node)
{
    return {node.kind, node.name, node.number};
}

bool isNamed(const XmlNode& node, NodeId parent, const XmlKey& key)
{
    return node.name == key.name && node.number == key.number && node.kind == key.kind &&
           node.parent == parent;
}

} // namespace

void XmlTree::clear()
{
    nodes.clear();
    counts.clear();
    names = XmlNames();
    root = noNode;
}

void XmlTree::complete(NodeId element)
{
    XmlNode& node = nodes[element];
    if (node.count < 2)
        return;
    for (NodeId id = firstInside(element); id != noNode; id = nodes[id].next) {
        if (nodes[id].name >= counts.size())
            counts.resize(nodes[id].name + 1 + counts.size());
        Count& count = counts[nodes[id].name];
        count = {element, count.parent == element ? count.number + 1 : 1};
        nodes[id].number = count.number;
    }
}

void XmlTree::buildIndex(NodeId element)
{
    nodes[element].isIndexed = true;
    index.reserve(indexed += nodes[element].count);
    for (NodeId id = firstInside(element); id != noNode; id = nodes[id].next)
        index.insert(hashOf(element, keyOf(nodes[id])), id);
}

NodeId XmlTree::find(NodeId parent, const XmlKey& key)
{
    if (parent == noNode)
        return root != noNode && isNamed(nodes[root], parent, key) ? root : noNode;
    const auto matches = [this, parent, &key](NodeId id) { return isNamed(nodes[id], parent, key); };
    if (key.kind != XmlKind::Attribute && nodes[parent].count > searchedCount && !nodes[parent].isIndexed)
        buildIndex(parent);
    if (key.kind != XmlKind::Attribute && nodes[parent].isIndexed)
        return index.find(hashOf(parent, key), matches);
    NodeId id = nodes[parent].first;
    while (id != noNode && !matches(id))
        id = nodes[id].next;
    return id;
}

NodeId XmlTree::firstInside(NodeId element) const
{
    if (!nodes[element].isContainer())
        return noNode;
    const NodeId attribute = lastAttribute(element);
    return attribute == noNode ? nodes[element].first : nodes[attribute].next;
}

NodeId XmlTree::lastAttribute(NodeId element) const
{
    NodeId last = noNode;
    for (NodeId id = nodes[element].first; id != noNode; id = nodes[id].next) {
        if (nodes[id].kind != XmlKind::Attribute)
            break;
        last = id;
    }
    return last;
}

NodeId XmlTree::insert(NodeId parent, NodeId previous, const XmlKey& key)
{
    const NodeId id = allocate();
    nodes[id].parent = parent;
    nodes[id].kind = key.kind;
    nodes[id].name = key.name;
    nodes[id].number = key.number;
    if (parent != noNode)
        nodes[id].inheritBlanks(nodes[parent]);
    attach(id, previous);
    if (parent != noNode && nodes[parent].isIndexed && key.kind != XmlKind::Attribute)
        index.insert(hashOf(parent, key), id);
    touch(id);
    return id;
}

void XmlTree::remove(NodeId id)
{
    const NodeId parent = nodes[id].parent;
    if (parent == noNode) {
        root = noNode;
    } else {
        touch(parent);
        leaveIndex(id);
        unlink(id);
        if (nodes[id].kind != XmlKind::Attribute)
            moveUp(parent, keyOf(nodes[id]));
    }
    release(id, [this](NodeId child) { leaveIndex(child); });
}

void XmlTree::rename(NodeId id, std::uint32_t name)
{
    const XmlKey before = keyOf(nodes[id]);
    const NodeId parent = nodes[id].parent;
    leaveIndex(id);
    nodes[id].name = name;
    nodes[id].number = 1;
    if (parent == noNode || before.kind == XmlKind::Attribute)
        return;
    if (nodes[parent].isIndexed)
        index.insert(hashOf(parent, keyOf(nodes[id])), id);
    moveUp(parent, before);
}

void XmlTree::leaveIndex(NodeId id)
{
    const XmlNode& node = nodes[id];
    if (node.parent != noNode && nodes[node.parent].isIndexed && node.kind != XmlKind::Attribute)
        index.erase(hashOf(node.parent, keyOf(node)), id);
}

// The siblings after one that has gone take the numbers before theirs.
void XmlTree::moveUp(NodeId parent, XmlKey key)
{
    while (true) {
        ++key.number;
        const NodeId sibling = find(parent, key);
        if (sibling == noNode)
            return;
        leaveIndex(sibling);
        --nodes[sibling].number;
        if (nodes[parent].isIndexed)
            index.insert(hashOf(parent, keyOf(nodes[sibling])), sibling);
    }
}

std::string_view XmlTree::readText(const XmlNode& node, XmlPart part) const
{
    switch (part) {
    case XmlPart::Leading:
        return span(node.leading, node.label);
    case XmlPart::Label:
        if (node.kind == XmlKind::Element)
            return node.end == 0
                       ? std::string_view()
                       : span(node.label,
                              node.label + 1 + static_cast<std::uint32_t>(names.nameOf(node.name).size()));
        return span(node.label, node.tagEnd);
    case XmlPart::TagEnd:
        return span(node.tagEnd, node.front);
    case XmlPart::Front:
        return span(node.front, node.value);
    case XmlPart::Value:
        return span(node.value, node.closing);
    case XmlPart::Closing:
        break;
    }
    return span(node.closing, node.end);
}

std::string_view XmlTree::text(NodeId id, XmlPart part) const
{
    const XmlNode& node = nodes[id];
    if (node.isContainer() && (part == XmlPart::Front || part == XmlPart::Value))
        return {};
    const std::string* const own = ownText(id, part);
    return own ? std::string_view(*own) : readText(node, part);
}

std::optional<std::string_view> XmlTree::originalText(NodeId id, XmlPart part) const
{
    const XmlNode& node = nodes[id];
    return node.end == 0 ? std::nullopt : std::optional(readText(node, part));
}

std::string_view XmlTree::epilogue() const
{
    if (ownEpilogue)
        return *ownEpilogue;
    return std::string_view(original).substr(root == noNode ? 0 : nodes[root].end);
}

bool XmlTree::isOriginal() const
{
    return !ownEpilogue && !isTouched();
}

} // namespace Repository::Documents
