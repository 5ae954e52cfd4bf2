#pragma once

#include <cstddef>
#include <string>

namespace Repository {

// A text of which thousands are kept that nobody looks at: packed, it takes a third to a half of its size,
// until somebody does. One thread at a time.
class PackedText
{
public:
    PackedText() = default;
    PackedText& operator=(std::string text) noexcept;

    // Unpacked from then on. Throws std::bad_alloc.
    const std::string& get() const;

    // The texts change places, which needs no memory where it is unpacked.
    void swap(std::string& other);

    std::size_t getSize() const { return isPacked() ? size : bytes.size(); }

    // Leaves a text as it is that would shrink little, or for which memory runs out.
    void pack() noexcept;

private:
    bool isPacked() const { return size > 0; }

    mutable std::string bytes;    // of the text, or packed
    mutable std::size_t size = 0; // of the text when it is packed
};

} // namespace Repository
