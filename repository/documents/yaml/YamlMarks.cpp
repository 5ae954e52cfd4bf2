#include "repository/documents/common/SyntaxVisit.h"
#include "repository/documents/yaml/YamlDocument.h"
#include "repository/documents/yaml/YamlDocuments.h"
#include "repository/documents/yaml/YamlLayout.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>
#include <utility>

namespace Repository::Documents {

namespace {

using Range = std::pair<std::size_t, std::size_t>;

// Keys and scalars, in which nothing is a comment; the line of a block scalar's indicators is none of it.
std::vector<Range> scalarsOf(const YamlTree& tree)
{
    std::vector<Range> ranges;
    for (NodeId id = tree.getRoot(); id != noNode;) {
        const YamlNode& node = tree.node(id);
        if (node.hasKey && !node.isShared)
            ranges.emplace_back(node.key, node.keyEnd);
        if (node.kind == YamlKind::Scalar && !node.isShared)
            ranges.emplace_back(node.isBlockScalar() ? findYamlLineEnd(tree.getOriginal(), node.value)
                                                     : node.value,
                                node.valueEnd);
        if (node.first != noNode && !node.isAlias) {
            id = node.first;
            continue;
        }
        while (id != noNode && tree.node(id).next == noNode)
            id = tree.node(id).parent;
        id = id == noNode ? noNode : tree.node(id).next;
    }
    std::sort(ranges.begin(), ranges.end());
    return ranges;
}

} // namespace

TextMarks YamlDocument::getMarks() const
{
    const YamlTree& tree = file->tree;
    const YamlLayout layout(*file);
    const YamlDocuments documents(*file);
    TextMarks marks{tree.getOriginal(), {}, {}, "#", {}, true};
    const auto endOf = [&](NodeId id) -> std::size_t { // where comments below it are in it
        const NodeId parent = tree.node(id).parent;
        if (parent != noNode && tree.node(parent).style == YamlStyle::Stream)
            return documents.endOf(id);
        const bool isInBlock = parent != noNode && tree.node(parent).style == YamlStyle::Block;
        const std::size_t end = isInBlock ? layout.endWithComments(id) : 0;
        return isInBlock && end > layout.tailOf(id) ? end : 0;
    };
    walkEntries(*file, [&](const std::string& path, NodeId id, NodeId) {
        if (!tree.node(id).isShared && !path.empty())
            marks.begins.push_back({path, layout.beginOf(id), endOf(id)});
    });
    const std::vector<Range> scalars = scalarsOf(tree);
    auto scalar = scalars.begin();
    for (std::size_t at = marks.text.find('#'); at != std::string_view::npos;) {
        while (scalar != scalars.end() && scalar->second <= at)
            ++scalar;
        const bool isScalar = scalar != scalars.end() && scalar->first <= at;
        const bool isComment =
            !isScalar && (at == 0 || isYamlBlank(marks.text[at - 1]) || isYamlBreak(marks.text[at - 1]));
        const std::size_t end = isComment ? findYamlLineEnd(marks.text, at) : at + 1;
        if (isComment)
            marks.comments.push_back({at, std::string(marks.text.substr(at, end - at))});
        at = marks.text.find('#', end);
    }
    return marks;
}

} // namespace Repository::Documents
