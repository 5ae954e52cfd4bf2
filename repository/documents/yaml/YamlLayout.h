#pragma once

#include "repository/documents/common/BracketItems.h"
#include "repository/documents/yaml/YamlFile.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Where the entries of a file lie whose tree is as it was read. Places are offsets in its text.
class YamlLayout
{
public:
    explicit YamlLayout(const YamlFile& yamlFile) : file(yamlFile), tree(yamlFile.tree) {}

    // The first character of an entry: "-", "?", a property or the key.
    std::size_t beginOf(NodeId id) const;

    // After its last character, and after the comment on that line.
    std::size_t endOf(NodeId id) const { return tree.node(id).valueEnd; }
    std::size_t tailOf(NodeId id) const;

    // After the comments below an entry in a block that are indented further than it; its tail without any.
    std::size_t endWithComments(NodeId id) const;

    // Whether nothing is in front of an entry on its line.
    bool beginsLine(NodeId id) const;

    // Where the comments right above an entry begin that are indented as it is, or its own line.
    std::size_t commentsAbove(NodeId id) const;

    // The line of the comment that tags the type of what begins with an entry, or its own line.
    std::size_t tagAbove(NodeId id) const;

    // Whether an empty line, which is part of no text, sets an entry and the comments above it apart from the
    // one before; and whether it sets an entry apart that comes before another one, or last.
    bool isApart(NodeId id) const;
    bool keepsApart(NodeId collection, NodeId next) const;

    // Whether a line is empty, and the one above it.
    bool isEmptyLine(std::size_t line) const;
    bool isEmptyAbove(std::size_t line) const;

    // Where a new line goes after the last entry of a block: before what belongs to another one.
    std::size_t endOfBlock(NodeId collection) const;

    std::size_t columnOf(NodeId collection) const;

    // After the "-" or ":" in front of a value, and after its anchor and tag; npos where there is none.
    std::size_t afterIndicator(NodeId id) const;

    // Of items in brackets that have lines of their own; nothing where they have not.
    std::optional<std::string> itemIndentation(NodeId collection) const;

    // What lies between the brackets of a collection, by offsets in its own text.
    std::vector<BracketItems::Item> itemsOf(NodeId collection) const;

    // What the author has written of a member or an element, after "- "; nothing where it can only be copied
    // by its values.
    std::optional<Excerpt> excerptOf(NodeId id) const;
    bool hasComments(NodeId id) const;

    // Whether an entry or what is below it has an anchor, or ends with a text that takes all lines after it.
    bool hasAnchors(NodeId id) const;
    bool endsOpen(NodeId id) const;

    // The sign of a block of text with which an entry ends that says what becomes of its last line ends: '+',
    // '-', or a blank for none; nothing where it ends otherwise.
    std::optional<char> chompingAtEnd(NodeId id) const;

    // The comments above an entry in a block and behind it, as people read them.
    std::string commentOf(NodeId id) const;

    // A collection that lies in a document of its own.
    bool isDocument(NodeId id) const;

    // Whether lists in maps are further in than their keys.
    bool indentsLists() const;

private:
    BracketItems bracketsAround(NodeId item) const;
    std::string_view text() const { return tree.getOriginal(); }

    const YamlFile& file;
    const YamlTree& tree;
};

} // namespace Repository::Documents
