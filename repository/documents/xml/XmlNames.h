#pragma once

#include "repository/documents/common/HashIndex.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// The attribute that says whether blanks in its element belong to texts, and the roots of files for which
// they do without: of translations.
constexpr std::string_view xmlSpace = "xml:space";
inline bool holdsXmlTexts(std::string_view root)
{
    return root == "TS" || root == "xliff";
}

// The names of elements and attributes, each kept once, with its component of a path.
class XmlNames
{
public:
    static constexpr std::uint32_t none = 0; // the empty name, which is always there

    XmlNames();

    std::uint32_t intern(std::string_view name);

    // The name at the front of a tag. Names recur in the same order, so the expected one is tried first.
    std::uint32_t internFront(std::string_view tag);
    std::optional<std::uint32_t> find(std::string_view name) const;

    // The views are good until the next name comes.
    std::string_view nameOf(std::uint32_t id) const { return view(entries[id].name, entries[id].nameSize); }
    std::string_view componentOf(std::uint32_t id) const
    {
        return view(entries[id].component, entries[id].componentSize);
    }

private:
    struct Entry
    {
        std::uint32_t name;
        std::uint32_t nameSize;
        std::uint32_t component;
        std::uint32_t componentSize;
        std::uint32_t follower = none; // the name that came after it last time
    };

    std::string_view view(std::uint32_t at, std::uint32_t size) const
    {
        return std::string_view(letters).substr(at, size);
    }
    std::uint32_t append(std::string_view text);

    std::string letters;
    std::vector<Entry> entries;
    HashIndex index;
    std::uint32_t latest = none; // that came with internFront
};

} // namespace Repository::Documents
