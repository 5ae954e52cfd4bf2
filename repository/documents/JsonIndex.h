#pragma once

#include "repository/documents/JsonNode.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Repository::Documents {

// Finds the members of one large object by the hash of their names: open addressing over node numbers, since
// a map with a heap block for each member would be larger than the tree.
class JsonIndex
{
public:
    void insert(std::uint32_t hash, JsonNodeId node);
    void erase(std::uint32_t hash, JsonNodeId node);

    // The first member with the hash for which `matches(node)` holds; noJsonNode without one.
    template <typename Match>
    JsonNodeId find(std::uint32_t hash, const Match& matches) const
    {
        if (slots.empty())
            return noJsonNode;
        for (std::size_t i = hash & mask(); slots[i].state != State::Free; i = (i + 1) & mask()) {
            if (slots[i].state == State::Used && slots[i].hash == hash && matches(slots[i].node))
                return slots[i].node;
        }
        return noJsonNode;
    }

private:
    enum class State : std::uint8_t { Free, Used, Erased };
    struct Slot
    {
        std::uint32_t hash = 0;
        JsonNodeId node = noJsonNode;
        State state = State::Free;
    };

    std::size_t mask() const { return slots.size() - 1; }
    void rebuild();

    std::vector<Slot> slots; // a power of two, or none
    std::size_t taken = 0;   // used and erased
    std::size_t used = 0;
};

} // namespace Repository::Documents
