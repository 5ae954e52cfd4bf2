#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Finds nodes by the hash of their names, which stay with the nodes: open addressing over node numbers, since
// a map with a heap block each would outgrow the tree.
class HashIndex
{
public:
    static constexpr std::uint32_t none = UINT32_MAX; // no node

    static std::uint32_t hashOf(std::string_view name, std::uint32_t number = 0)
    {
        const std::uint64_t hash = std::hash<std::string_view>()(name) ^ number * 0x9E3779B97F4A7C15U;
        return static_cast<std::uint32_t>(hash ^ hash >> 32);
    }

    // Makes room for as many nodes in all.
    void reserve(std::size_t nodes);
    void insert(std::uint32_t hash, std::uint32_t node);
    void erase(std::uint32_t hash, std::uint32_t node);

    // The first member with the hash for which `matches(node)` holds.
    template <typename Match>
    std::uint32_t find(std::uint32_t hash, const Match& matches) const
    {
        if (slots.empty())
            return none;
        for (std::size_t i = hash & mask(); slots[i].node != none; i = (i + 1) & mask()) {
            if (slots[i].hash == hash && slots[i].node != erased && matches(slots[i].node))
                return slots[i].node;
        }
        return none;
    }

private:
    // No node either: a search goes on after it. Nodes have smaller numbers.
    static constexpr std::uint32_t erased = none - 1;

    struct Slot
    {
        std::uint32_t hash = 0;
        std::uint32_t node = none;
    };

    std::size_t mask() const { return slots.size() - 1; }
    void rebuild(std::size_t room);

    std::vector<Slot> slots; // a power of two, or none
    std::size_t taken = 0;   // used and erased
    std::size_t used = 0;
};

} // namespace Repository::Documents
