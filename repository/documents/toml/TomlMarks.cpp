#include "repository/documents/common/SyntaxVisit.h"
#include "repository/documents/toml/TomlDocument.h"
#include "repository/documents/toml/TomlEditor.h"
#include "repository/documents/toml/TomlFile.h"
#include "repository/documents/toml/TomlTokens.h"

#include <algorithm>

namespace Repository::Documents {

TextMarks TomlDocument::getMarks() const
{
    const TomlTree& tree = file->tree;
    TextMarks marks{tree.getFileText(), {}, {}, "#", {}, true};
    const TomlEditor editor(*file);
    const auto endOf = [&](StatementId id) -> std::size_t { // where comments below it are in the table
        if (!tree.statement(id).isHeader)
            return 0;
        const StatementId last = tree.statement(id).last;
        const std::size_t size = editor.endCommentsOf(last).size();
        return size == 0 ? 0 : tree.statement(last).end + size;
    };
    walkEntries(*file, [&](const std::string& path, NodeId id, NodeId) {
        const TomlNode& node = tree.node(id);
        const bool isPart = node.parent != noNode && tree.node(node.parent).isInline();
        const std::size_t inlineEnd = node.isInline() ? node.valueEnd : 0; // an array may end in comments
        if (isPart && !node.hasSpan())                                     // which only dotted keys make
            return;
        if (!path.empty() && isPart)
            marks.begins.push_back({path, node.value, inlineEnd});
        else if (!path.empty() && node.statement != noStatement)
            marks.begins.push_back({path, tree.statement(node.statement).begin,
                                    inlineEnd > 0 ? inlineEnd : endOf(node.statement)});
    });
    const NodeId lastNode = tree.statement(tree.getLastStatement()).node;
    marks.endsInSection = lastNode != noNode && editor.blockOf(lastNode) != tree.getRoot();
    for (std::size_t at = 0; at < marks.text.size();) {
        const char c = marks.text[at];
        if (c == '"' || c == '\'') {
            at = skipTomlString(marks.text, at);
        } else if (c == '#') {
            const std::size_t end = std::min(marks.text.find_first_of("\r\n", at), marks.text.size());
            marks.comments.push_back({at, std::string(marks.text.substr(at, end - at))});
            at = end;
        } else {
            ++at;
        }
    }
    return marks;
}

} // namespace Repository::Documents
