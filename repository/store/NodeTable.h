#pragma once

#include "repository/store/Node.h"

#include <QStringView>

#include <array>
#include <memory>
#include <vector>

namespace Repository {

// Finds nodes by their path and its hash, and owns them. The places lie in groups that each fill a line of
// the processor's cache, with the hashes beside them: a look-up reads one line and the node that it finds,
// and growing neither looks at nodes nor computes a hash. A group that is full passes further nodes on to the
// next one and counts them, so that a look-up knows when to go on, and removing leaves no tombstone.
class NodeTable
{
public:
    NodeTable() : groups(fewestGroups) {}

    Node* find(QStringView path, quint32 hash) const;
    Node& insert(NodePointer node, quint32 hash); // there is none of that path
    NodePointer take(const Node& node);
    void reserveMore(std::size_t count);

private:
    static constexpr std::size_t placesOfGroup = 5;
    static constexpr std::size_t mostOfGroup = 4;  // on average; the table grows for more
    static constexpr std::size_t fewestGroups = 2; // a store's first thousand nodes seldom make one grow

    struct alignas(64) Group
    {
        // A bit for each place with that hash. All are compared without a branch: the processor can foretell
        // that there is one, but not which it is.
        unsigned placesOf(quint32 hash) const;

        std::array<NodePointer, placesOfGroup> nodes;
        std::array<quint32, placesOfGroup> hashes;
        quint32 passedOn = 0;
    };
    static_assert(sizeof(Group) == 64);

    std::size_t firstGroup(quint32 hash) const { return hash & (groups.size() - 1); }
    std::size_t groupBehind(std::size_t number) const { return (number + 1) & (groups.size() - 1); }
    Node& place(NodePointer node, quint32 hash);

    std::vector<Group> groups; // a power of two
    std::size_t used = 0;
};

} // namespace Repository
