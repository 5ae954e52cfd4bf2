#pragma once

#include "repository/documents/json/JsonContent.h"
#include "repository/documents/json/JsonLayout.h"
#include "repository/documents/json/JsonMembers.h"
#include "repository/documents/json/JsonTree.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Edits a tree and keeps its names and its layout right. Whether an edit is allowed was decided before.
class JsonEditor
{
public:
    JsonEditor(JsonTree& syntaxTree, JsonMembers& treeMembers)
        : tree(syntaxTree), members(treeMembers), layout(syntaxTree)
    {
    }

    // Takes over the style of the text that was read.
    void detectStyle() { layout.detectStyle(); }

    const JsonStyle& getStyle() const { return layout.getStyle(); }

    // Makes the root, an empty object, in a text without a value.
    void createRoot();

    // The child of the root that stays after all others; none at first.
    void keepLast(NodeId child) { keptLast = child; }

    // A new last child of an object, the only one of this key.
    NodeId appendMember(NodeId object, std::string_view key, const JsonContent& content);

    // A new element of an array after a sibling; noNode: before all others.
    NodeId insertElement(NodeId array, NodeId previous, const JsonContent& content);

    // Gives an element that place, with its comments.
    void moveElement(NodeId id, NodeId previous);

    void setContent(NodeId id, const JsonContent& content);

    // Gives a node the value of one of another tree, with its bytes. The other tree may change inside.
    void copyValue(NodeId id, JsonTree& from, NodeId source);

    // Gives a node that has one its original value again.
    void restore(NodeId id);

    void remove(NodeId id);

    // Gives a member another key, of which it is the only one.
    void rename(NodeId member, std::string_view key);

    JsonLayout& getLayout() { return layout; }

    // Turns a value into an object that holds it as its own value.
    void wrap(NodeId id);

private:
    NodeId insert(NodeId container);
    void place(NodeId id);
    void fillList(NodeId id, const std::vector<std::string>& list);
    void changeList(NodeId id, const std::vector<std::string>& list);
    NodeId insertText(NodeId list, NodeId previous, const std::string& text);

    JsonTree& tree;
    JsonMembers& members;
    JsonLayout layout;
    NodeId keptLast = noNode;
};

} // namespace Repository::Documents
