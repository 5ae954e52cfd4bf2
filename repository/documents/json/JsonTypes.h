#pragma once

#include "repository/documents/json/JsonEditor.h"
#include "repository/documents/json/JsonMembers.h"
#include "repository/documents/json/JsonTree.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Repository::Documents {

// The member of the root object that holds the types of entries.
constexpr std::string_view typesKey = "$types";

// Types of entries that plain json would not preserve, from path to name of type in the last member of the
// root object, which is not an entry itself. Tags of missing entries are kept and ignored.
class JsonTypes
{
public:
    JsonTypes(JsonTree& syntaxTree, JsonMembers& treeMembers, JsonEditor& treeEditor)
        : tree(syntaxTree), members(treeMembers), editor(treeEditor)
    {
    }

    // Reads the tags of the text. A member of that key with any other content is an ordinary one.
    void read();

    bool isEmpty() const { return tags.empty(); }

    // The member that holds them; noNode without one.
    NodeId getMember() const { return member; }

    // Group for an entry without a tag.
    Type find(std::string_view path) const;

    // The document's root must be an object, and what has this path must have no tag yet.
    void add(std::string_view path, Type type);

    // Names another type in the tag of a path, or takes it out for Group.
    void set(std::string_view path, Type type);

    void remove(std::string_view path);
    void removeBelow(std::string_view path);

    // Those at and below a path, by relative paths.
    std::vector<std::pair<std::string, Type>> findBelow(std::string_view path) const;

    // Gives the tags at and below a path another beginning in its place.
    void rename(std::string_view path, std::string_view newPath);

    // Whether an edit would turn an ordinary member of that key into types: this text in place of a value or
    // as a new member, or the removal of this node.
    bool wouldReadWith(NodeId object, NodeId node, std::string_view text) const;
    bool wouldReadWithout(NodeId node) const;

    // Gives the tags at and below the siblings that move up their new paths, after this one was removed.
    void moveUp(std::string_view removedPath, bool inArray);

    // The same for the elements of an array that move down, before this one is inserted.
    void moveDown(std::string_view insertedPath);

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

    // Gives the siblings of a path other names, and the tags at and below them.
    void renameSiblings(std::string_view path,
                        const std::function<std::string(std::string_view component)>& rename);
    Tags::iterator take(Tags::iterator tag);
    void dropEmptyMember();

    JsonTree& tree;
    JsonMembers& members;
    JsonEditor& editor;
    NodeId member = noNode;
    Tags tags;
};

} // namespace Repository::Documents
