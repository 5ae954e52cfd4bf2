#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Repository {

// What makes one text of another: the one run of bytes in which they differ. Applied only to the very texts
// it was made of, which digests tell. Immutable; any thread.
class TextDelta
{
public:
    TextDelta(std::string_view before, std::string_view after);

    // The other text; nothing when this is not the text that it leads from.
    std::optional<std::string> undo(std::string_view after) const;
    std::optional<std::string> redo(std::string_view before) const;

    std::size_t getSize() const { return removed.size() + inserted.size(); }

private:
    struct Digest
    {
        std::uint64_t low;
        std::uint64_t high;
        std::size_t length;
    };

    static Digest digestOf(std::string_view text);
    static bool isSame(const Digest& a, const Digest& b);

    Digest digestBefore;
    Digest digestAfter;
    std::size_t offset = 0;
    std::string removed;
    std::string inserted;
};

} // namespace Repository
