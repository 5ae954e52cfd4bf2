#include "repository/store/NodeTable.h"

#include <QtAlgorithms>
#include <QtMath>

namespace Repository {

unsigned NodeTable::Group::placesOf(quint32 hash) const
{
    unsigned places = 0;
    for (std::size_t i = 0; i < placesOfGroup; ++i)
        places |= unsigned(hashes[i] == hash) << i;
    return places;
}

Node* NodeTable::find(QStringView path, quint32 hash) const
{
    for (std::size_t number = firstGroup(hash);; number = groupBehind(number)) {
        const Group& group = groups[number];
        for (unsigned places = group.placesOf(hash); places != 0; places &= places - 1) {
            const NodePointer& node = group.nodes[qCountTrailingZeroBits(places)];
            if (node && node->hasPath(path))
                return node.get();
        }
        if (group.passedOn == 0)
            return nullptr;
    }
}

Node& NodeTable::insert(NodePointer node, quint32 hash)
{
    reserveMore(1);
    ++used;
    return place(std::move(node), hash);
}

Node& NodeTable::place(NodePointer node, quint32 hash)
{
    for (std::size_t number = firstGroup(hash);; number = groupBehind(number)) {
        Group& group = groups[number];
        for (std::size_t i = 0; i < placesOfGroup; ++i) {
            if (group.nodes[i])
                continue;
            group.nodes[i] = std::move(node);
            group.hashes[i] = hash;
            return *group.nodes[i];
        }
        ++group.passedOn;
    }
}

NodePointer NodeTable::take(const Node& node)
{
    for (std::size_t number = firstGroup(node.pathHash);; number = groupBehind(number)) {
        Group& group = groups[number];
        for (NodePointer& place : group.nodes) {
            if (place.get() != &node)
                continue;
            --used;
            return std::move(place);
        }
        --group.passedOn;
    }
}

void NodeTable::reserveMore(std::size_t count)
{
    const std::size_t wanted = used + count;
    if (wanted <= groups.size() * mostOfGroup)
        return;
    std::vector<Group> former(qNextPowerOfTwo(quint64((wanted - 1) / mostOfGroup)));
    former.swap(groups);
    for (Group& group : former) {
        for (std::size_t i = 0; i < placesOfGroup; ++i) {
            if (group.nodes[i])
                place(std::move(group.nodes[i]), group.hashes[i]);
        }
    }
}

} // namespace Repository
