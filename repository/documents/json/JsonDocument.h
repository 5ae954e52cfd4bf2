#pragma once

#include "repository/documents/common/Document.h"
#include "repository/documents/json/JsonEditor.h"
#include "repository/documents/json/JsonMembers.h"
#include "repository/documents/json/JsonTree.h"
#include "repository/documents/json/JsonTypes.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Repository::Documents {

// A json file, with comments and trailing commas where it has them. Objects are groups; an array of texts is
// one list; any other array is a group of 0, 1, 2 ... A node's own value beside children is the member
// "#value". The types of entries that json would read as others stand in the member "$types" (see JsonTypes).
// A number that no type holds (thirty digits, 1e400) is shown as a text of its digits and stays a
// number in the file: another such number is written as a number too, any other text as a text.
class JsonDocument : public Document
{
public:
    JsonDocument();

    Outcome parse(std::string bytes) override;
    void visit(const std::function<void(const Entry&)>& visitor) const override;
    Outcome set(std::string_view path, const FrameworkCore::Values::Value& value) override;
    Outcome insert(std::string_view path, const FrameworkCore::Values::Value& value) override;
    Outcome insertAll(std::string_view path, const std::vector<Entry>& entries,
                      std::size_t& refused) override;
    bool keepsGivenOrder() const override { return true; }
    Outcome remove(std::string_view path) override;
    bool removalMovesSiblings(std::string_view path) const override;
    SiblingPlace placeOf(std::string_view path) const override;
    bool contains(std::string_view path) const override;
    std::optional<Span> locate(std::string_view path) const override;
    std::optional<std::string> spell(std::string_view path) const override;
    Outcome respell(std::string_view path, std::string_view spelling) override;
    std::string getBytes() const override;

private:
    // The parts of a text refer to each other, so that they stay where they are.
    struct Content
    {
        explicit Content(std::string bytes)
            : tree(std::move(bytes)), members(tree), editor(tree, members), types(tree, members, editor)
        {
        }

        JsonTree tree;
        JsonMembers members;
        JsonEditor editor;
        JsonTypes types;
    };

    // Where a path leads: the last of its nodes that is there, and the components behind it.
    struct Place
    {
        NodeId node = noNode;
        std::vector<std::string_view> missing;
        bool valid = false; // it is a path
    };

    Place resolve(std::string_view path) const;
    NodeId find(std::string_view path) const;

    // The node that holds the value of a node: itself, or its member for that; noNode without a value.
    NodeId holderOf(NodeId id) const;

    FrameworkCore::Values::Value read(NodeId holder, std::string_view path) const;

    // The same for a path; noNode for an unknown one, too.
    NodeId findHolder(std::string_view path) const;

    // True for the value that the node had in the file, whose spelling it gets again.
    bool isOriginal(NodeId holder, const FrameworkCore::Values::Value& value,
                    FrameworkCore::Values::Type mark) const;
    std::size_t depthOf(NodeId id) const;
    Outcome checkKind(std::string_view path, NodeId holder, JsonKind kind) const;
    Outcome checkNoTypes(NodeId object, NodeId member, std::string_view text) const;
    Outcome checkInsertion(std::string_view path, const Place& place, const JsonContent& wanted) const;
    Outcome checkMark(const FrameworkCore::Values::Value& value) const;
    Outcome checkName(NodeId container, std::string_view component) const;
    void insertAt(const Place& place, const JsonContent& wanted);

    // Puts the text of a whole subtree in the place of the value of a new entry, and reads it, or the file
    // anew. False when the entries are not plain, or too few for that to be worth while.
    bool graft(std::string_view path, const std::vector<Entry>& entries);

    std::unique_ptr<Content> content;
};

} // namespace Repository::Documents
