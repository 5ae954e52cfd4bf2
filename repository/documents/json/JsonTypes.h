#pragma once

#include "repository/documents/json/JsonEditor.h"
#include "repository/documents/json/JsonMembers.h"
#include "repository/documents/json/JsonTree.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace Repository::Documents {

// The member of the root object that holds the types of entries.
constexpr std::string_view typesKey = "$types";

// The types of entries whose plain json would be read as another type. They are in the file as the last
// member of the root object, from path to name of type, and are no entries themselves. What the file names
// but does not have is kept and means nothing.
class JsonTypes
{
public:
    JsonTypes(JsonTree& syntaxTree, JsonMembers& treeMembers, JsonEditor& treeEditor)
        : tree(syntaxTree), members(treeMembers), editor(treeEditor)
    {
    }

    // Takes over what the text that was read says. A member of that key that says anything else is an
    // ordinary one.
    void read();

    bool isEmpty() const { return tags.empty(); }

    // The member that holds them; noNode without one.
    NodeId getMember() const { return member; }

    // Group for an entry without a tag.
    Type find(std::string_view path) const;

    // The document's root must be an object, and what has this path must have no tag yet.
    void add(std::string_view path, Type type);

    void remove(std::string_view path);
    void removeBelow(std::string_view path);

    // An ordinary member of that key must not turn into types by an edit: true when it would with this text
    // in the place of a value, or for a new member of it, and when it would without this node.
    bool wouldReadWith(NodeId object, NodeId node, std::string_view text) const;
    bool wouldReadWithout(NodeId node) const;

    // Gives the tags at and below the siblings that move up their new paths, after this one was removed.
    void moveUp(std::string_view removedPath, bool inArray);

private:
    struct Tag
    {
        Type type;
        NodeId node;
    };
    using Tags = std::map<std::string, Tag, std::less<>>;

    // What the object says but for one of its members; nothing when it says anything else than types.
    Tags readTags(NodeId object, NodeId without = noNode) const;
    // The only member of that key when it says something else than types; noNode without one.
    NodeId findOrdinary() const;

    Tags::iterator take(Tags::iterator tag);
    void dropEmptyMember();

    JsonTree& tree;
    JsonMembers& members;
    JsonEditor& editor;
    NodeId member = noNode;
    Tags tags;
};

} // namespace Repository::Documents
