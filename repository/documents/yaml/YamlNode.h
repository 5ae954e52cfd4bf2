#pragma once

#include "repository/documents/common/SyntaxTree.h"
#include "repository/documents/common/Values.h"
#include "repository/documents/yaml/YamlEvent.h"

#include <cstdint>

namespace Repository::Documents {

enum class YamlKind : std::uint8_t {
    Map,
    Sequence,
    List,   // a sequence of texts; its elements are no entries
    Scalar, // an alias that leads nowhere, too
    Merge   // aliases behind "<<"; whatever is in it is no entry
};

enum class YamlPart : std::uint8_t { Value };

// A value with its key, if it has one. Offsets are those of the tree's text. An alias has the kind of its
// target, and copies of what is below that.
struct YamlNode : SyntaxNode
{
    YamlKind kind = YamlKind::Scalar;
    YamlStyle style = YamlStyle::Plain;
    YamlStyle keyStyle =
        YamlStyle::Plain;   // Flow for a key that is no scalar, which is named as it is written
    Type tag = Type::Group; // the type that a comment line above it names
    bool hasKey : 1;
    bool isText : 1;      // a string that may be part of a list
    bool isAlias : 1;     // its value is "*name"
    bool isShared : 1;    // a copy below an alias, or one that a merge brings in
    bool isInherited : 1; // the latter; it comes after all that is written in its map, and is not counted
    bool isMerged : 1;    // "<<", of which all comes into its map
    bool isUsed : 1;      // an alias leads to it, or a merge
    bool namesKey : 1;    // by an alias that is one
    bool isAnchored : 1;  // has an anchor
    bool isTagged : 1;    // has a tag in front of its value that is no part of it
    bool lacksColon : 1;  // an empty value of a key without ":"
    bool hasKeyProperties : 1;
    bool mayHoldOwnValue : 1; // a child has the key of own values
    bool isRepeated : 1;      // a key that was there before
    bool isNamePlain : 1;     // its key is written as it stands in paths
    bool isIndexed : 1;
    std::uint32_t key = 0;
    std::uint32_t keyEnd = 0;
    std::uint32_t begin = 0; // of the anchor and the tag before the value, or the value
    std::uint32_t value = 0;
    std::uint32_t valueEnd = 0;
    std::uint32_t nonTexts = 0; // children that are no texts

    YamlNode()
        : hasKey(false), isText(false), isAlias(false), isShared(false), isInherited(false), isMerged(false),
          isUsed(false), namesKey(false), isAnchored(false), isTagged(false), lacksColon(false),
          hasKeyProperties(false), mayHoldOwnValue(false), isRepeated(false), isNamePlain(false),
          isIndexed(false)
    {
    }

    void adopt(const YamlNode& child)
    {
        count += child.isInherited ? 0 : 1;
        nonTexts += child.isText ? 0 : 1;
    }

    void disown(const YamlNode& child)
    {
        count -= child.isInherited ? 0 : 1;
        nonTexts -= child.isText ? 0 : 1;
    }

    bool isLeaf() const { return kind > YamlKind::Sequence; }
    bool isSequence() const { return kind == YamlKind::Sequence || kind == YamlKind::List; }
    bool isFlow() const { return style == YamlStyle::Flow || style == YamlStyle::Pair; }
    bool isBlockScalar() const { return style == YamlStyle::Literal || style == YamlStyle::Folded; }
};

} // namespace Repository::Documents
