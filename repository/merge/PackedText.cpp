#include "repository/merge/PackedText.h"

#include <lz4.h>
#include <new>
#include <utility>

namespace Repository {

PackedText& PackedText::operator=(std::string text) noexcept
{
    bytes = std::move(text);
    size = 0;
    return *this;
}

const std::string& PackedText::get() const
{
    if (isPacked()) {
        std::string text(size, '\0');
        if (LZ4_decompress_safe(bytes.data(), text.data(), int(bytes.size()), int(size)) != int(size))
            throw std::bad_alloc(); // what came from memory is not there any more
        bytes = std::move(text);
        size = 0;
    }
    return bytes;
}

void PackedText::swap(std::string& other)
{
    get();
    bytes.swap(other);
}

void PackedText::pack() noexcept
{
    constexpr std::size_t least = 128; // bytes
    if (isPacked() || bytes.size() < least || bytes.size() > LZ4_MAX_INPUT_SIZE)
        return;
    try {
        std::string room(bytes.size() - bytes.size() / 8, '\0');
        const int packed =
            LZ4_compress_default(bytes.data(), room.data(), int(bytes.size()), int(room.size()));
        if (packed <= 0)
            return;
        std::string exact(room, 0, std::size_t(packed));
        size = bytes.size();
        bytes = std::move(exact);
    } catch (const std::bad_alloc&) {
        return;
    }
}

} // namespace Repository
