#include "repository/documents/HashIndex.h"

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
    while (slots[i].state == State::Used)
        i = (i + 1) & mask();
    taken += slots[i].state == State::Free ? 1 : 0;
    slots[i] = {hash, node, State::Used};
    ++used;
}

void HashIndex::erase(std::uint32_t hash, std::uint32_t node)
{
    for (std::size_t i = hash & mask(); slots[i].state != State::Free; i = (i + 1) & mask()) {
        if (slots[i].state == State::Used && slots[i].node == node) {
            slots[i].state = State::Erased;
            --used;
            return;
        }
    }
}

void HashIndex::rebuild(std::size_t room)
{
    std::size_t size = 16;
    while (size < room)
        size *= 2;
    const std::vector<Slot> old = std::exchange(slots, std::vector<Slot>(size));
    taken = used = 0;
    for (const Slot& slot : old) {
        if (slot.state == State::Used)
            insert(slot.hash, slot.node);
    }
}

} // namespace Repository::Documents
