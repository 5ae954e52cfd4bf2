#include "repository/documents/txt/TxtIndex.h"

#include "repository/documents/common/KeyText.h"

#include <algorithm>
#include <functional>

namespace Repository::Documents {

namespace {

std::uint32_t hashOf(std::string_view name, std::uint32_t number)
{
    const std::uint64_t hash = std::hash<std::string_view>()(name) ^ number * 0x9E3779B97F4A7C15u;
    return static_cast<std::uint32_t>(hash ^ hash >> 32);
}

} // namespace

TxtIndex::TxtIndex()
{
    nodes.emplace_back();
}

std::uint32_t TxtIndex::findChild(std::uint32_t parent, std::string_view name, std::uint32_t number) const
{
    const HashIndex* const children = nodes[parent].children.get();
    if (!children)
        return none;
    return children->find(hashOf(name, number), [&](std::uint32_t id) {
        return nodes[id].number == number && nodes[id].name == name;
    });
}

std::uint32_t TxtIndex::find(std::string_view path) const
{
    std::uint32_t id = root;
    while (!path.empty() && id != none) {
        const std::size_t end = std::min(path.find('.'), path.size());
        const NumberedComponent part = splitNumber(path.substr(0, end));
        if (part.number >= none || end + 1 == path.size())
            return none;
        id = findChild(id, part.name, static_cast<std::uint32_t>(part.number));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return id;
}

std::uint32_t TxtIndex::findSibling(std::uint32_t id, std::uint32_t number) const
{
    return findChild(nodes[id].parent, nodes[id].name, number);
}

std::uint32_t TxtIndex::demand(std::string_view path, bool lasts)
{
    std::uint32_t id = root;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('.'), path.size());
        id = demandChild(id, path.substr(0, end), 1, lasts);
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return id;
}

std::uint32_t TxtIndex::demandNext(std::uint32_t parent, std::string_view name, bool lasts)
{
    const std::uint32_t first = demandChild(parent, name, 1, lasts);
    const std::uint32_t number = ++nodes[first].count;
    return number == 1 ? first : demandChild(parent, name, number, lasts);
}

std::uint32_t TxtIndex::demandChild(std::uint32_t parent, std::string_view name, std::uint32_t number,
                                    bool lasts)
{
    const std::uint32_t found = findChild(parent, name, number);
    if (found != none)
        return found;
    std::uint32_t id = static_cast<std::uint32_t>(nodes.size());
    if (unused.empty()) {
        nodes.emplace_back();
    } else {
        id = unused.back();
        unused.pop_back();
    }
    TxtNode& child = nodes[id];
    child.ownName = lasts ? nullptr : std::make_unique<std::string>(name);
    child.name = lasts ? name : std::string_view(*child.ownName);
    child.number = number;
    child.parent = parent;
    TxtNode& group = nodes[parent];
    link(id, group.lastChild);
    if (!group.children)
        group.children = std::make_unique<HashIndex>();
    group.children->insert(hashOf(name, number), id);
    return id;
}

void TxtIndex::link(std::uint32_t id, std::uint32_t previous)
{
    TxtNode& node = nodes[id];
    TxtNode& group = nodes[node.parent];
    std::uint32_t& place = previous == none ? group.firstChild : nodes[previous].next;
    node.previous = previous;
    node.next = place;
    (node.next == none ? group.lastChild : nodes[node.next].previous) = id;
    place = id;
}

void TxtIndex::unlink(std::uint32_t id)
{
    const TxtNode& node = nodes[id];
    TxtNode& group = nodes[node.parent];
    (node.previous == none ? group.firstChild : nodes[node.previous].next) = node.next;
    (node.next == none ? group.lastChild : nodes[node.next].previous) = node.previous;
}

void TxtIndex::moveAfter(std::uint32_t id, std::uint32_t sibling)
{
    if (id == sibling || nodes[id].previous == sibling)
        return;
    unlink(id);
    link(id, sibling);
}

void TxtIndex::dropEntry(std::uint32_t id)
{
    nodes[id].entry = none;
    while (id != root && nodes[id].entry == none && nodes[id].firstChild == none) {
        const std::uint32_t parent = nodes[id].parent;
        erase(id);
        id = parent;
    }
}

void TxtIndex::erase(std::uint32_t id)
{
    TxtNode& gone = nodes[id];
    TxtNode& group = nodes[gone.parent];
    group.children->erase(hashOf(gone.name, gone.number), id);
    unlink(id);
    gone = TxtNode();
    unused.push_back(id);
}

bool TxtIndex::isWithin(std::uint32_t id, std::uint32_t group) const
{
    while (id != group && id != root)
        id = nodes[id].parent;
    return id == group;
}

std::uint32_t TxtIndex::groupLeftWithout(std::uint32_t id) const
{
    std::uint32_t group = nodes[id].parent;
    while (group != root && nodes[group].entry == none && nodes[group].firstChild == nodes[group].lastChild)
        group = nodes[group].parent;
    return group;
}

std::string TxtIndex::pathOf(std::uint32_t id) const
{
    std::vector<std::uint32_t> way;
    for (; id != root; id = nodes[id].parent)
        way.push_back(id);
    std::string path;
    for (auto part = way.rbegin(); part != way.rend(); ++part) {
        if (!path.empty())
            path += '.';
        appendComponent(path, nodes[*part]);
    }
    return path;
}

void TxtIndex::appendComponent(std::string& path, const TxtNode& node)
{
    path += node.name;
    if (node.number > 1)
        path += '[' + std::to_string(node.number) + ']';
}

std::vector<std::uint32_t> TxtIndex::subtree(std::uint32_t id) const
{
    std::vector<std::uint32_t> all{id};
    for (std::size_t at = 0; at < all.size(); ++at) {
        for (std::uint32_t child = nodes[all[at]].firstChild; child != none; child = nodes[child].next)
            all.push_back(child);
    }
    return all;
}

} // namespace Repository::Documents
