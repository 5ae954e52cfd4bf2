#include "repository/documents/yaml/YamlTokens.h"
#include "repository/documents/yaml/YamlTree.h"

#include <algorithm>
#include <utility>

// The part of a tree that takes over what was read again. Distances of texts wrap around.
namespace Repository::Documents {

namespace {

// Those from one on; the key of a node without one has none.
void shiftOffsets(YamlNode& node, std::uint32_t from, std::uint32_t by)
{
    for (std::uint32_t* const offset : {&node.key, &node.keyEnd, &node.begin, &node.value, &node.valueEnd})
        *offset += *offset >= from ? by : 0;
}

} // namespace

void YamlTree::replace(const Run& run, const YamlTree& from, const Run& part)
{
    NodeId previous = nodes[run.first].previous;
    const bool wasFirst = previous == noNode;
    const std::size_t column = columnOfYaml(original, node(run.collection).value);
    for (NodeId id = run.first; id != run.end;)
        drop(std::exchange(id, nodes[id].next));
    const std::string_view text = from.text(part.begin, part.textEnd);
    original.replace(run.begin, run.textEnd - run.begin, text);
    shift(run.textEnd, std::uint32_t(run.begin + text.size() - run.textEnd));
    for (NodeId id = part.first; id != part.end; id = from.node(id).next)
        previous = graft(from, id, run.collection, previous, std::uint32_t(run.begin - part.begin));
    if (wasFirst) {
        const bool isEmpty = part.first == part.end;
        const std::size_t begin = isEmpty ? run.begin + text.size() + column
                                          : from.node(part.collection).value + run.begin - part.begin;
        node(run.collection).begin = node(run.collection).value = std::uint32_t(begin);
        forgetBounds(run.collection);
    }
    elements.erase(run.collection);
    settleEnds(run.collection);
}

void YamlTree::drop(NodeId id)
{
    const NodeId parent = nodes[id].parent;
    if (nodes[parent].isIndexed) {
        std::string buffer;
        indexes.at(parent).erase(HashIndex::hashOf(keyText(id, buffer), 1), id);
    }
    const auto forget = [this](NodeId each) {
        elements.erase(each);
        indexes.erase(each);
    };
    unlink(id);
    forget(id);
    release(id, forget);
}

// Of a node of another tree and all below it.
NodeId YamlTree::graft(const YamlTree& from, NodeId id, NodeId parent, NodeId previous, std::uint32_t by)
{
    const auto copyOf = [&](NodeId each, NodeId above) {
        YamlNode node = from.node(each);
        static_cast<SyntaxNode&>(node) = SyntaxNode();
        node.parent = above;
        node.nonTexts = 0;
        node.isIndexed = false;
        shiftOffsets(node, 0, by);
        return node;
    };
    const NodeId top = place(copyOf(id, parent), previous);
    std::string buffer;
    if (nodes[parent].isIndexed)
        indexes.at(parent).insert(HashIndex::hashOf(keyText(top, buffer), 1), top);
    else if (nodes[parent].kind == YamlKind::Map && nodes[parent].count > fewChildren)
        numberMembers(parent);
    if (nodes[parent].kind == YamlKind::Map && keyText(top, buffer) == yamlOwnValueKey)
        nodes[parent].mayHoldOwnValue = true;
    std::vector<std::pair<NodeId, NodeId>> pending{{id, top}};
    while (!pending.empty()) {
        const auto [source, target] = pending.back();
        pending.pop_back();
        for (NodeId child = from.node(source).first; child != noNode; child = from.node(child).next)
            pending.emplace_back(child, place(copyOf(child, target), nodes[target].last));
        if (nodes[target].kind == YamlKind::Map)
            numberMembers(target);
    }
    return top;
}

NodeId YamlTree::place(const YamlNode& node, NodeId previous)
{
    const NodeId id = allocate();
    forgetBounds(id);
    nodes[id] = node;
    attach(id, previous);
    return id;
}

void YamlTree::shift(std::size_t from, std::uint32_t by)
{
    pages.resize(nodes.size() / pageSize + 1);
    const auto first = std::uint32_t(from);
    for (std::size_t number = 0; number < pages.size(); ++number) {
        Page& page = pages[number];
        if (page.most < first)
            continue;
        if (page.least >= first) {
            page.least += by;
            page.most += by;
            page.by += by;
            hasShifts = true;
            continue;
        }
        settlePage(number);
        page = {UINT32_MAX, 0, 0};
        const std::size_t end = std::min((number + 1) * pageSize, nodes.size());
        for (std::size_t id = number * pageSize; id < end; ++id) {
            YamlNode& node = nodes[id];
            shiftOffsets(node, first, by);
            page.least = std::min({page.least, node.hasKey ? node.key : node.begin, node.begin});
            page.most = std::max(page.most, node.valueEnd);
        }
    }
    for (auto& [node, offset] : aliases)
        offset += offset >= from ? std::size_t(std::int32_t(by)) : 0;
}

void YamlTree::settle(NodeId id)
{
    const std::size_t number = id / pageSize;
    if (number < pages.size() && pages[number].by != 0)
        settlePage(number);
}

void YamlTree::settlePage(std::size_t number)
{
    const std::uint32_t by = std::exchange(pages[number].by, 0);
    const std::size_t end = std::min((number + 1) * pageSize, nodes.size());
    for (std::size_t id = number * pageSize; by != 0 && id < end; ++id)
        shiftOffsets(nodes[id], 1, by);
}

// Of a node that gets other offsets.
void YamlTree::forgetBounds(NodeId id)
{
    settle(id);
    if (id / pageSize < pages.size())
        pages[id / pageSize] = Page();
}

// The ends of a block, and of those that end with it.
void YamlTree::settleEnds(NodeId collection)
{
    for (NodeId id = collection; id != noNode; id = nodes[id].parent) {
        forgetBounds(id);
        YamlNode& node = nodes[id];
        if (node.style == YamlStyle::Stream) {
            node.valueEnd = std::uint32_t(original.size());
            return;
        }
        node.valueEnd = this->node(lastOwn(id)).valueEnd;
        if (node.isSequence())
            node.kind = node.nonTexts == 0 ? YamlKind::List : YamlKind::Sequence;
        if (node.kind == YamlKind::List)
            node.valueEnd = std::uint32_t(endOfYamlList(original, node.valueEnd));
        if (node.next != noNode && !nodes[node.next].isInherited)
            return;
    }
}

} // namespace Repository::Documents
