#include "repository/documents/xml/XmlTree.h"

#include <utility>

namespace Repository::Documents {

namespace {

std::uint32_t hashOf(XmlNodeId parent, const XmlKey& key)
{
    std::uint64_t hash = (std::uint64_t(parent) << 32 | key.name) * 0x9E3779B97F4A7C15U;
    hash = (hash ^ hash >> 32 ^ key.number) * 0xD6E8FEB86659FD93U;
    return static_cast<std::uint32_t>(hash >> 32);
}

XmlKey keyOf(const XmlNode& node)
{
    return {node.kind, node.name, node.number};
}

bool isNamed(const XmlNode& node, XmlNodeId parent, const XmlKey& key)
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
    root = noXmlNode;
}

XmlNodeId XmlTree::read(const XmlNode& node)
{
    const auto id = static_cast<XmlNodeId>(nodes.size());
    nodes.push_back(node);
    if (node.parent == noXmlNode)
        root = id;
    else
        link(id, nodes[node.parent].last);
    return id;
}

void XmlTree::complete(XmlNodeId element)
{
    XmlNode& node = nodes[element];
    if (node.count < 2)
        return;
    for (XmlNodeId id = firstInside(element); id != noXmlNode; id = nodes[id].next) {
        if (nodes[id].name >= counts.size())
            counts.resize(nodes[id].name + 1 + counts.size());
        Count& count = counts[nodes[id].name];
        count = {element, count.parent == element ? count.number + 1 : 1};
        nodes[id].number = count.number;
    }
}

void XmlTree::buildIndex(XmlNodeId element)
{
    nodes[element].isIndexed = true;
    index.reserve(indexed += nodes[element].count);
    for (XmlNodeId id = firstInside(element); id != noXmlNode; id = nodes[id].next)
        index.insert(hashOf(element, keyOf(nodes[id])), id);
}

XmlNodeId XmlTree::find(XmlNodeId parent, const XmlKey& key)
{
    if (parent == noXmlNode)
        return root != noXmlNode && isNamed(nodes[root], parent, key) ? root : noXmlNode;
    const auto matches = [this, parent, &key](XmlNodeId id) { return isNamed(nodes[id], parent, key); };
    if (key.kind != XmlKind::Attribute && nodes[parent].count > searchedCount && !nodes[parent].isIndexed)
        buildIndex(parent);
    if (key.kind != XmlKind::Attribute && nodes[parent].isIndexed)
        return index.find(hashOf(parent, key), matches);
    XmlNodeId id = nodes[parent].first;
    while (id != noXmlNode && !matches(id))
        id = nodes[id].next;
    return id;
}

XmlNodeId XmlTree::firstInside(XmlNodeId element) const
{
    if (!nodes[element].isContainer())
        return noXmlNode;
    const XmlNodeId attribute = lastAttribute(element);
    return attribute == noXmlNode ? nodes[element].first : nodes[attribute].next;
}

XmlNodeId XmlTree::lastAttribute(XmlNodeId element) const
{
    XmlNodeId last = noXmlNode;
    for (XmlNodeId id = nodes[element].first; id != noXmlNode; id = nodes[id].next) {
        if (nodes[id].kind != XmlKind::Attribute)
            break;
        last = id;
    }
    return last;
}

XmlNodeId XmlTree::insert(XmlNodeId parent, XmlNodeId previous, const XmlKey& key)
{
    XmlNodeId id = static_cast<XmlNodeId>(nodes.size());
    if (released.empty()) {
        nodes.emplace_back();
    } else {
        id = released.back();
        released.pop_back();
        nodes[id] = XmlNode();
    }
    nodes[id].parent = parent;
    nodes[id].kind = key.kind;
    nodes[id].name = key.name;
    nodes[id].number = key.number;
    if (parent == noXmlNode) {
        root = id;
    } else {
        link(id, previous);
        if (nodes[parent].isIndexed && key.kind != XmlKind::Attribute)
            index.insert(hashOf(parent, key), id);
    }
    touch(id);
    return id;
}

void XmlTree::remove(XmlNodeId id)
{
    const XmlNodeId parent = nodes[id].parent;
    if (parent == noXmlNode) {
        root = noXmlNode;
    } else {
        touch(parent);
        leaveIndex(id);
        unlink(id);
        if (nodes[id].kind != XmlKind::Attribute)
            moveUp(parent, keyOf(nodes[id]));
    }
    release(id);
}

void XmlTree::leaveIndex(XmlNodeId id)
{
    const XmlNode& node = nodes[id];
    if (node.parent != noXmlNode && nodes[node.parent].isIndexed && node.kind != XmlKind::Attribute)
        index.erase(hashOf(node.parent, keyOf(node)), id);
}

// The siblings behind one that has gone take the numbers before theirs.
void XmlTree::moveUp(XmlNodeId parent, XmlKey key)
{
    while (true) {
        ++key.number;
        const XmlNodeId sibling = find(parent, key);
        if (sibling == noXmlNode)
            return;
        leaveIndex(sibling);
        --nodes[sibling].number;
        if (nodes[parent].isIndexed)
            index.insert(hashOf(parent, keyOf(nodes[sibling])), sibling);
    }
}

std::string_view XmlTree::span(const XmlNode& node, XmlPart part) const
{
    const auto between = [this](std::uint32_t from, std::uint32_t to) {
        return std::string_view(original).substr(from, to - from);
    };
    switch (part) {
    case XmlPart::Lead:
        return between(node.lead, node.label);
    case XmlPart::Label:
        if (node.kind == XmlKind::Element)
            return node.end == 0
                       ? std::string_view()
                       : between(node.label,
                                 node.label + 1 + static_cast<std::uint32_t>(names.nameOf(node.name).size()));
        return between(node.label, node.tagEnd);
    case XmlPart::TagEnd:
        return between(node.tagEnd, node.front);
    case XmlPart::Front:
        return between(node.front, node.value);
    case XmlPart::Value:
        return between(node.value, node.closing);
    case XmlPart::Closing:
        break;
    }
    return between(node.closing, node.end);
}

std::string_view XmlTree::text(XmlNodeId id, XmlPart part) const
{
    const XmlNode& node = nodes[id];
    if (node.isContainer() && (part == XmlPart::Front || part == XmlPart::Value))
        return {};
    if (node.hasOwnTexts) {
        const auto& own = ownTexts.at(id)[std::size_t(part)];
        if (own)
            return *own;
    }
    return span(node, part);
}

void XmlTree::setText(XmlNodeId id, XmlPart part, std::string text)
{
    ownTexts[id][std::size_t(part)] = std::move(text);
    nodes[id].hasOwnTexts = true;
    touch(id);
}

std::optional<std::string_view> XmlTree::originalText(XmlNodeId id, XmlPart part) const
{
    const XmlNode& node = nodes[id];
    return node.end == 0 ? std::nullopt : std::optional(span(node, part));
}

std::string_view XmlTree::epilogue() const
{
    if (ownEpilogue)
        return *ownEpilogue;
    return std::string_view(original).substr(root == noXmlNode ? 0 : nodes[root].end);
}

bool XmlTree::isOriginal() const
{
    return !ownEpilogue && (root == noXmlNode || !nodes[root].touched);
}

void XmlTree::link(XmlNodeId id, XmlNodeId previous)
{
    XmlNode& node = nodes[id];
    XmlNode& parent = nodes[node.parent];
    node.previous = previous;
    node.next = previous == noXmlNode ? parent.first : nodes[previous].next;
    (previous == noXmlNode ? parent.first : nodes[previous].next) = id;
    (node.next == noXmlNode ? parent.last : nodes[node.next].previous) = id;
    parent.count += node.kind == XmlKind::Attribute ? 0 : 1;
}

void XmlTree::unlink(XmlNodeId id)
{
    const XmlNode& node = nodes[id];
    XmlNode& parent = nodes[node.parent];
    (node.previous == noXmlNode ? parent.first : nodes[node.previous].next) = node.next;
    (node.next == noXmlNode ? parent.last : nodes[node.next].previous) = node.previous;
    parent.count -= node.kind == XmlKind::Attribute ? 0 : 1;
}

void XmlTree::release(XmlNodeId id)
{
    std::vector<XmlNodeId> pending{id};
    while (!pending.empty()) {
        const XmlNodeId next = pending.back();
        pending.pop_back();
        for (XmlNodeId child = nodes[next].first; child != noXmlNode; child = nodes[child].next) {
            leaveIndex(child);
            pending.push_back(child);
        }
        if (nodes[next].hasOwnTexts)
            ownTexts.erase(next);
        released.push_back(next);
    }
}

void XmlTree::touch(XmlNodeId id)
{
    for (; id != noXmlNode && !nodes[id].touched; id = nodes[id].parent)
        nodes[id].touched = true;
}

} // namespace Repository::Documents
