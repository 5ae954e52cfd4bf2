#include "repository/documents/common/SyntaxVisit.h"
#include "repository/documents/json/JsonDocument.h"
#include "repository/documents/json/JsonFile.h"

#include <algorithm>

namespace Repository::Documents {

// Comments are read and kept, but no file gets its first one.
TextMarks JsonDocument::getMarks() const
{
    TextMarks marks{file->tree.getOriginal(), {}, {}, {}, {}, false};
    walkEntries(*file, [&](const std::string& path, NodeId id, NodeId) {
        if (!path.empty())
            marks.begins.push_back({path, file->tree.node(id).label, file->tree.node(id).valueEnd});
    });
    const std::string_view text = marks.text;
    for (std::size_t at = 0; at < text.size();) {
        const std::string_view start = text.substr(at, 2);
        if (text[at] == '"') {
            for (++at; at < text.size() && text[at] != '"'; ++at)
                at += text[at] == '\\' ? 1 : 0;
            ++at;
        } else if (start == "//" || start == "/*") {
            const std::size_t end = start == "//" ? std::min(text.find_first_of("\r\n", at), text.size())
                                                  : std::min(text.find("*/", at + 2), text.size() - 2) + 2;
            marks.comments.push_back({at, std::string(text.substr(at, end - at))});
            at = end;
        } else {
            ++at;
        }
    }
    return marks;
}

} // namespace Repository::Documents
