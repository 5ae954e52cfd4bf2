#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Repository {

// The form of paths of the tree as keys of a store: names joined by ".", all bytes of them but ASCII letters,
// digits, "_" and "-" percent-encoded, also "%" itself. Every path has a key, and no two have the same. Names
// are those that files give to their entries, or they could not be exported. Any thread.
class KeyCodec
{
public:
    static std::string keyOf(std::string_view path);

    // Whether a path of the tree can lie in a store.
    static bool isPath(std::string_view path);

    // Nothing for a key that is none of a path.
    static std::optional<std::string> pathOf(std::string_view key);
};

} // namespace Repository
