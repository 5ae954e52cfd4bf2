#pragma once

#include "repository/documents/yaml/YamlLayout.h"
#include "repository/documents/yaml/YamlWriter.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// Collects the edits that change the shape of a file whose tree is as it was read; its text with all of them
// is read again. What cannot be done gives the reason.
class YamlEditor
{
public:
    struct Edit
    {
        std::size_t begin;
        std::size_t end;
        std::string text;
    };

    // What goes with an entry: the comment behind it, those below that are indented further than it as well,
    // or those above, too.
    enum class Comments { Behind, FurtherIn, All };

    explicit YamlEditor(const YamlFile& yamlFile) : file(yamlFile), tree(yamlFile.tree), layout(yamlFile) {}

    void replace(std::size_t begin, std::size_t end, std::string text) { edit(begin, end, std::move(text)); }
    void noteChanged(NodeId id) { changed = id; }
    void replaceText(NodeId value, std::string text);
    void replaceKey(NodeId member, const std::string& key);

    // A new member, an element before the one of that position or after the last, and texts in the same way.
    Outcome insertMember(NodeId map, const YamlBranch& branch);
    Outcome insertElement(NodeId sequence, std::size_t position, const YamlBranch& branch);
    Outcome insertTexts(NodeId sequence, std::size_t position, const std::vector<std::string>& texts);

    // One between brackets that is written already, and a comment behind it.
    Outcome insertItem(NodeId flow, std::size_t position, const std::string& item, std::string_view comment)
    {
        return insertFlow(flow, position, {item}, comment);
    }

    // All that an empty document gets.
    Outcome fill(NodeId root, const YamlBranch& branch);

    // Lines that are written already, for the column of its entries.
    Outcome insertLines(NodeId collection, std::string lines);
    Outcome insertLinesAt(NodeId sequence, std::size_t position, std::string lines);

    // The column of what is or would be in a block; nothing for what stays between brackets.
    std::optional<std::size_t> blockColumnOf(NodeId collection) const;

    // Makes a value a map that holds it as its own value, and the new member.
    Outcome wrap(NodeId leaf, const YamlBranch& branch);

    void remove(NodeId id, Comments comments);
    void removeElements(NodeId sequence, std::size_t from, std::size_t count);
    Outcome moveElement(NodeId sequence, std::size_t from, std::size_t to);

    // Puts a value, or a collection with all in it, in the place of another.
    Outcome replaceValue(NodeId id, const YamlBranch& branch);

    // In the order of the text.
    std::vector<Edit> getSortedEdits() const;
    std::string apply() const { return apply(0, text().size()); }

    // The same of a part of the text in which all of them are.
    std::string apply(std::size_t begin, std::size_t end) const;

    // The node whose value has become another one; noNode for none.
    NodeId getChanged() const { return changed; }

    // A node at the edits.
    NodeId getPlace() const { return place; }

private:
    void edit(std::size_t begin, std::size_t end, std::string text);
    void take(NodeId collection, const BracketItems& brackets);
    YamlBlockStyle style() const;
    Outcome insertFlow(NodeId collection, std::size_t position, const std::vector<std::string>& items,
                       std::string_view comment = {});
    Outcome replaceByBlock(NodeId id, std::string lines);
    std::size_t newColumnOf(NodeId id, bool isArray) const;
    bool mayBecomeBlock(NodeId collection) const;
    Outcome becomeBlock(NodeId collection, const YamlBranch& branch);
    Outcome wrapList(NodeId list, const YamlBranch& branch);
    bool isEmptyDocument(NodeId id) const;
    Outcome fillEmpty(NodeId root, const std::string& lines);
    void removeFlow(NodeId collection, std::size_t from, std::size_t count, bool withComments);
    void removeBlock(NodeId id, Comments comments);
    std::size_t beginWith(NodeId id, Comments comments) const;
    std::size_t endWith(NodeId id, Comments comments) const;
    void removeLines(NodeId id, Comments comments);
    void removeCompact(NodeId id, Comments comments);
    void empty(NodeId collection, Comments comments);
    std::string_view text() const { return tree.getOriginal(); }

    const YamlFile& file;
    const YamlTree& tree;
    YamlLayout layout;
    std::vector<Edit> edits;
    NodeId changed = noNode;
    NodeId place = noNode;
};

} // namespace Repository::Documents
