#pragma once

#include "repository/documents/common/ArrayGroups.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Repository::Documents {

// How a new text lies in its file.
struct JsonTextStyle
{
    std::string lineBreak = "\n"; // with the indentation of the line on which the text begins
    std::string indentation = "    ";
    std::string colon = ": ";
    bool inLines = true; // each member in a line of its own
    bool canTag = true;  // it is a whole file, which may say the types of entries at its end
};

// Writes a whole subtree at once, with the result of inserting its entries one by one. A group of 0, 1, 2 ...
// becomes an array as ArrayGroups tells. Numbered siblings are left to the document.
class JsonText
{
public:
    struct Result
    {
        std::string text;
        std::size_t depth = 0; // of objects and arrays within each other
        bool hasArrays = false;
        std::vector<std::pair<std::string, Type>> types; // that a part of a file cannot say itself
    };

    // Entries in document order; that of the empty path is the value itself. Nothing when one of them is not
    // plain.
    static std::optional<Result> write(const std::vector<Entry>& entries, const JsonTextStyle& style);

    // Why these entries cannot be in arrays of json: texts alone are one list, so that no tag says that an
    // element of it is something else. Empty where they can.
    static std::string explainRefusal(const std::vector<Entry>& entries);

private:
    // The entries of one node and those below it.
    struct Range
    {
        std::size_t begin;
        std::size_t end;
        std::size_t pathLength; // of the node
    };

    JsonText(const std::vector<Entry>& textEntries, const JsonTextStyle& textStyle)
        : entries(textEntries), style(textStyle), arrays(textEntries)
    {
    }

    // False when something is not plain.
    bool writeNode(const Range& node, std::size_t depth);
    bool writeContainer(const Range& node, std::size_t depth, bool isArray);
    bool writeValue(const Entry& entry, std::size_t depth);
    bool writeList(const std::vector<std::string>& list, std::size_t depth);
    bool writeTags();
    bool writeKey(std::string_view component, bool isInRoot);
    void beginItem(bool isFirst, std::size_t depth);
    void endItems(char bracket, std::size_t depth);
    void breakLine(std::size_t depth);

    bool hasValue(const Range& node) const { return entries[node.begin].path.size() == node.pathLength; }
    Range firstChild(const Range& node) const;
    Range childAt(const Range& node, std::size_t begin) const;
    std::string_view nameOf(const Range& node, const Range& child) const;
    bool isArray(const Range& node) const;
    std::vector<Range> childrenOf(const Range& node, bool asArray) const;

    const std::vector<Entry>& entries; // not owned
    const JsonTextStyle& style;        // not owned
    const ArrayGroups arrays;
    Result result;
    std::vector<const Entry*> tagged; // not owned; entries whose type json cannot tell
    std::size_t membersEnd = 0;       // in the container that was written last
};

} // namespace Repository::Documents
