#pragma once

#include "repository/documents/yaml/YamlEditor.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace Repository::Documents {

// Looks whether a file that was read after edits holds all that it held before, in the same order, and
// nothing else but what the edits wrote.
class YamlGuard
{
public:
    YamlGuard(const YamlFile& formerFile, const YamlFile& editedFile, const YamlEditor& editor);

    // The same of parts of both.
    YamlGuard(const YamlFile& formerFile, const YamlTree::Run& formerRun, const YamlFile& editedFile,
              const YamlTree::Run& editedRun, const YamlEditor& editor);

    // The key of a member may have become another one.
    void allowRenaming(NodeId member) { renamed = member; }

    // Nothing but this node may go.
    void allowRemoval(NodeId node) { removable = node; }

    // What is not so, for a person; empty where all is.
    std::string findFault();

    // Whether what the edits took out is what they wrote, one of it perhaps in another place.
    bool keepsMoved() const;

private:
    struct Range
    {
        std::size_t begin;
        std::size_t end;
    };

    // A walk over the nodes of a run in their order.
    struct Cursor
    {
        const YamlFile& file;
        const std::vector<Range>& hidden;
        NodeId id;
        NodeId end;
        std::size_t depth = 0;

        bool isCopy() const { return file.tree.node(id).isShared; } // it is as what it shows
        bool isHidden() const;
        void advance(bool goesIn);
        void skipHidden();
    };

    std::string nameOf(NodeId id) const;
    bool goes(NodeId id) const;
    bool isFilled(NodeId id) const;
    bool isSame(NodeId before, NodeId after) const;
    bool isSameContent(NodeId before, NodeId after) const;
    bool showsSame(NodeId before, NodeId after) const;
    bool mayMergeOther(NodeId id) const;

    Cursor atFormer() const { return {former, removed, formerPart.first, formerPart.end}; }
    Cursor atEdited() const { return {edited, inserted, editedPart.first, editedPart.end}; }

    const YamlFile& former;
    const YamlFile& edited;
    YamlTree::Run formerPart;
    YamlTree::Run editedPart;
    NodeId changed;
    NodeId renamed = noNode;
    NodeId removable = noNode;
    std::unordered_map<NodeId, NodeId> counterparts; // of what aliases lead to, where both were compared
    std::vector<Range> removed;                      // in the former text
    std::vector<Range> inserted;                     // in the edited one
};

} // namespace Repository::Documents
