#include "repository/documents/common/HashIndex.h"

#include <utility>

namespace Repository::Documents {

void HashIndex::reserve(std::size_t nodes)
{
    if (nodes * 3 > slots.size() * 2)
        rebuild(nodes * 3 / 2 + 1);
}

void HashIndex::insert(std::uint32_t hash, std::uint32_t node)
{
    if ((taken + 1) * 3 > slots.size() * 2)
        rebuild((used + 1) * 3);
    std::size_t i = hash & mask();
    while (slots[i].node < erased)
        i = (i + 1) & mask();
    taken += slots[i].node == none ? 1 : 0;
    slots[i] = {hash, node};
    ++used;
}

void HashIndex::erase(std::uint32_t hash, std::uint32_t node)
{
    for (std::size_t i = hash & mask(); slots[i].node != none; i = (i + 1) & mask()) {
        if (slots[i].node == node) {
            slots[i].node = erased;
            --used;
            return;
        }
    }
}

void HashIndex::rebuild(std::size_t room)
{
    std::size_t size = 4;
    while (size < room)
        size *= 2;
    const std::vector<Slot> old = std::exchange(slots, std::vector<Slot>(size));
    taken = used = 0;
    for (const Slot& slot : old) {
        if (slot.node < erased)
            insert(slot.hash, slot.node);
    }
}

} // namespace Repository::Documents
