#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace Repository::Documents {

enum class YamlStyle : std::uint8_t {
    Plain, // scalars
    Single,
    Double,
    Literal,
    Folded,
    Block, // collections
    Flow,
    Pair,  // a map of one entry in a flow sequence, without braces
    Stream // all documents of a file
};

// Where something lies in a text; both are npos for what is not there.
struct YamlRange
{
    static constexpr std::size_t npos = std::size_t(-1);

    std::size_t begin = npos;
    std::size_t end = npos;

    bool exists() const { return begin != npos; }
};

// One step of reading a text: what begins or ends there and where its tokens lie.
struct YamlEvent
{
    enum class Kind : std::uint8_t {
        DocumentStart,
        DocumentEnd,
        MapStart,
        MapEnd,
        SequenceStart,
        SequenceEnd,
        Scalar,
        Alias
    };

    Kind kind = Kind::DocumentStart;
    YamlStyle style = YamlStyle::Plain;
    YamlRange anchor; // with its "&"
    YamlRange tag;

    // A scalar with its quotes, but a block scalar from its first line on; an alias with its "*"; a bracket
    // or the document's marker. Empty where a block collection begins or ends.
    YamlRange token;

    bool isCollection() const { return kind == Kind::MapStart || kind == Kind::SequenceStart; }
    bool isEnd() const { return kind == Kind::MapEnd || kind == Kind::SequenceEnd; }

    // Of the anchor, the tag and the token, npos without any; and the end of the first two.
    std::size_t begin() const { return std::min({anchor.begin, tag.begin, token.begin}); }
    std::size_t propertiesEnd(std::size_t otherwise) const
    {
        const std::size_t end = std::max(anchor.exists() ? anchor.end : 0, tag.exists() ? tag.end : 0);
        return anchor.exists() || tag.exists() ? end : otherwise;
    }
};

} // namespace Repository::Documents
