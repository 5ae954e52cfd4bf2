#pragma once

#include "repository/documents/xml/XmlEntities.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace Repository::Documents {

// Spells a text as one that is much alike is spelled: what both begin and end with keeps its references, and
// entities between keep theirs as far as their texts are still there.
class XmlRespelling
{
public:
    // Spells a part of the new text anew.
    using SpellPart = std::function<std::string(std::size_t begin, std::size_t end)>;

    XmlRespelling(const XmlEntities& fileEntities, SpellPart spellPart)
        : entities(fileEntities), spellAnew(std::move(spellPart))
    {
    }

    // Nothing where the current spelling has no references, or more than text. With trimmed edges, no blank
    // of it may become the first or last character.
    std::optional<std::string> spell(std::string_view current, std::string_view text, bool trimsEdges) const;

private:
    const XmlEntities& entities; // not owned
    const SpellPart spellAnew;
};

} // namespace Repository::Documents
