#pragma once

#include "repository/documents/json/JsonTree.h"

#include <string>
#include <string_view>

namespace Repository::Documents {

// How the author of a json file lays it out, as far as an edit has to know when no sibling shows it.
struct JsonStyle
{
    std::string lineEnd = "\n";
    std::string indentation = "    "; // one step
    std::string colon = ": ";         // between a key and its value
    bool oneLine = false;             // all of it is in one line
};

// The blanks before the line on which a node begins.
std::string lineIndentation(const JsonTree& tree, NodeId id);

// What separates key and value; empty when it is more than a colon and single blanks.
std::string colonOf(const JsonTree& tree, NodeId member);

// Lays out nodes that come or go: a new one looks like its siblings, a removed one takes its line along, with
// the comments on that line only.
class JsonLayout
{
public:
    explicit JsonLayout(JsonTree& syntaxTree) : tree(syntaxTree) {}

    // Takes over the style of the text that was read, of which it looks at the beginning only.
    void detectStyle();

    const JsonStyle& getStyle() const { return style; }

    // Place a newly linked node: as the only child, before all others, of which the first may keep its
    // comments, or after another.
    void placeOnly(NodeId id, bool inLines);
    void placeFirst(NodeId id, bool isAboveComments);
    void placeAfter(NodeId id);

    // To be called before a node is unlinked.
    void takeOut(NodeId id);

    // What is written of a node beside itself: the lines of comments right above it, and a comment after it
    // on its line.
    struct Comments
    {
        std::string above;
        std::string after;
    };
    Comments commentsOf(NodeId id) const;

    // Gives a placed node such comments, which had this indentation, and takes away those above.
    void addComments(NodeId id, const Comments& comments, std::string_view indentation);
    void dropCommentsAbove(NodeId id);

    // True when a container that gets its first child should have it in a line of its own.
    bool opensLines(NodeId container) const;

    // What to put between key and value of a new member.
    std::string colonFor(NodeId object) const;

    // What to put after a comma that is followed by a value in the same line.
    std::string_view blankAfterComma() const;

private:
    // The text after a node's comma, or after its value when it is the last one and has none.
    struct Following
    {
        NodeId textNode; // whose text it is
        JsonPart part;
        bool afterComma;
    };

    Following followingOf(NodeId id) const;
    std::string textAfter(NodeId id) const;
    std::string leadingLike(NodeId sibling) const;
    std::string keptBefore(NodeId id) const;
    void addAbove(NodeId id, std::string_view lines, std::string_view indentation);
    std::string keptAfter(NodeId id, const std::string& following) const;
    std::string join(std::string first, std::string_view second, NodeId container) const;

    JsonTree& tree;
    JsonStyle style;
};

} // namespace Repository::Documents
