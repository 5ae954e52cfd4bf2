#include "repository/documents/common/LineIndex.h"

#include "repository/documents/common/ComponentCodec.h"

#include <algorithm>
#include <functional>

namespace Repository::Documents {

NumberedPath numberedPath(std::string_view path)
{
    const PathEnds ends = splitLast(path);
    const NumberedComponent last = splitNumber(ends.last);
    return {joinPath(ends.parent, last.name), last.number};
}

LineIndex::LineIndex()
{
    nodes.emplace_back();
}

std::uint32_t LineIndex::findChild(std::uint32_t parent, std::string_view name, std::uint32_t number) const
{
    const HashIndex* const children = nodes[parent].children.get();
    if (!children)
        return none;
    return children->find(HashIndex::hashOf(name, number), [&](std::uint32_t id) {
        return nodes[id].number == number && nodes[id].name == name;
    });
}

std::uint32_t LineIndex::find(std::string_view path) const
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

std::uint32_t LineIndex::findSibling(std::uint32_t id, std::uint32_t number) const
{
    return findChild(nodes[id].parent, nodes[id].name, number);
}

std::uint32_t LineIndex::getOrCreate(std::string_view path, bool lasts)
{
    std::uint32_t id = root;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('.'), path.size());
        id = getOrCreateChild(id, path.substr(0, end), 1, lasts);
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return id;
}

std::uint32_t LineIndex::getOrCreateNext(std::uint32_t parent, std::string_view name, bool lasts)
{
    const std::uint32_t first = getOrCreateChild(parent, name, 1, lasts);
    const std::uint32_t number = ++nodes[first].count;
    return number == 1 ? first : getOrCreateChild(parent, name, number, lasts);
}

std::uint32_t LineIndex::getOrCreateSection(std::string_view path, bool lasts)
{
    std::uint32_t id = root;
    for (std::string_view rest = path; !rest.empty();) {
        const std::size_t end = std::min(rest.find('.'), rest.size());
        id = getOrCreateChild(id, rest.substr(0, end), 1, lasts);
        becomeSection(id);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    const std::uint32_t number = ++nodes[id].section->headers;
    if (number > 1) {
        id = getOrCreateChild(nodes[id].parent, splitLast(path).last, number, lasts);
        becomeSection(id);
    }
    return id;
}

void LineIndex::becomeSection(std::uint32_t id)
{
    if (nodes[id].section)
        return;
    nodes[id].section = std::make_unique<LineSection>();
    if (id == root)
        return;
    sectionBytes += bytesOf(id);
    ++nodes[nodes[id].parent].section->deeper;
}

std::size_t LineIndex::countOfEntries(std::uint32_t first) const
{
    return first == none ? 0 : nodes[first].count;
}

std::size_t LineIndex::countOfSections(std::uint32_t first) const
{
    return first == none || !nodes[first].section ? 0 : nodes[first].section->headers;
}

std::size_t LineIndex::bytesOf(std::uint32_t section) const
{
    std::size_t bytes = sizeof(LineNode) + sizeof(LineSection) + sizeof(HashIndex);
    for (std::uint32_t id = section; id != root; id = nodes[id].parent)
        bytes += nodes[id].name.size() + 1;
    return bytes;
}

std::uint32_t LineIndex::getOrCreateChild(std::uint32_t parent, std::string_view name, std::uint32_t number,
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
    LineNode& child = nodes[id];
    child.ownName = lasts ? nullptr : std::make_unique<std::string>(name);
    child.name = lasts ? name : std::string_view(*child.ownName);
    child.number = number;
    child.parent = parent;
    LineNode& group = nodes[parent];
    link(id, group.lastChild);
    if (!group.children)
        group.children = std::make_unique<HashIndex>();
    group.children->insert(HashIndex::hashOf(name, number), id);
    return id;
}

void LineIndex::link(std::uint32_t id, std::uint32_t previous)
{
    LineNode& node = nodes[id];
    LineNode& group = nodes[node.parent];
    std::uint32_t& place = previous == none ? group.firstChild : nodes[previous].next;
    node.previous = previous;
    node.next = place;
    (node.next == none ? group.lastChild : nodes[node.next].previous) = id;
    place = id;
}

void LineIndex::unlink(std::uint32_t id)
{
    const LineNode& node = nodes[id];
    LineNode& group = nodes[node.parent];
    (node.previous == none ? group.firstChild : nodes[node.previous].next) = node.next;
    (node.next == none ? group.lastChild : nodes[node.next].previous) = node.previous;
}

void LineIndex::moveAfter(std::uint32_t id, std::uint32_t sibling)
{
    if (id == sibling || nodes[id].previous == sibling)
        return;
    unlink(id);
    link(id, sibling);
}

void LineIndex::rename(std::uint32_t id, std::string_view name)
{
    LineNode& node = nodes[id];
    HashIndex& siblings = *nodes[node.parent].children;
    siblings.erase(HashIndex::hashOf(node.name, node.number), id);
    node.ownName = std::make_unique<std::string>(name);
    node.name = *node.ownName;
    siblings.insert(HashIndex::hashOf(node.name, node.number), id);
}

void LineIndex::prune(std::uint32_t id)
{
    while (id != root && nodes[id].firstChild == none && !nodes[id].hasHeader()) {
        LineNode& node = nodes[id];
        const std::uint32_t parent = node.parent;
        if (node.section) {
            sectionBytes -= bytesOf(id);
            --nodes[parent].section->deeper;
            node.section.reset();
        }
        if (node.entry != none)
            return;
        erase(id);
        id = parent;
    }
}

void LineIndex::erase(std::uint32_t id)
{
    LineNode& gone = nodes[id];
    LineNode& group = nodes[gone.parent];
    group.children->erase(HashIndex::hashOf(gone.name, gone.number), id);
    unlink(id);
    gone = LineNode();
    unused.push_back(id);
}

bool LineIndex::isWithin(std::uint32_t id, std::uint32_t group) const
{
    while (id != group && id != root)
        id = nodes[id].parent;
    return id == group;
}

std::uint32_t LineIndex::groupLeftWithout(std::uint32_t id) const
{
    std::uint32_t group = nodes[id].parent;
    while (group != root && nodes[group].entry == none && !nodes[group].hasHeader() &&
           nodes[group].firstChild == nodes[group].lastChild)
        group = nodes[group].parent;
    return group;
}

std::string LineIndex::pathOf(std::uint32_t id) const
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

void LineIndex::appendComponent(std::string& path, const LineNode& node)
{
    path += node.name;
    appendNumber(path, node.number);
}

std::vector<std::uint32_t> LineIndex::subtree(std::uint32_t id) const
{
    std::vector<std::uint32_t> all{id};
    for (std::size_t at = 0; at < all.size(); ++at) {
        for (std::uint32_t child = nodes[all[at]].firstChild; child != none; child = nodes[child].next)
            all.push_back(child);
    }
    return all;
}

} // namespace Repository::Documents
