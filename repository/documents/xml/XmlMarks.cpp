#include "repository/documents/common/TextLine.h"
#include "repository/documents/xml/XmlDocument.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

// Markup in which nothing is a comment.
struct Enclosure
{
    std::string_view begin;
    std::string_view end;
};
constexpr Enclosure enclosures[] = {{"<![CDATA[", "]]>"}, {"<?", "?>"}};

} // namespace

TextMarks XmlDocument::getMarks() const
{
    const XmlTree& tree = file->tree;
    TextMarks marks{tree.getOriginal(), {}, {}, "<!--", " -->", true};
    walk([&](const std::string& path, NodeId id) {
        if (tree.node(id).kind == XmlKind::Element)
            marks.begins.push_back({path, tree.node(id).label, tree.node(id).end});
    });
    const std::string_view text = marks.text;
    for (std::size_t at = text.find('<'); at != std::string_view::npos;) {
        const std::string_view rest = text.substr(at);
        const auto* const enclosure =
            std::find_if(std::begin(enclosures), std::end(enclosures),
                         [&](const Enclosure& each) { return startsWith(rest, each.begin); });
        std::size_t end = at + 1;
        const bool isComment = startsWith(rest, "<!--");
        if (isComment)
            end = std::min(text.find("-->", at + 4), text.size() - 3) + 3;
        else if (enclosure != std::end(enclosures))
            end = std::min(text.find(enclosure->end, at), text.size() - enclosure->end.size()) +
                  enclosure->end.size();
        const bool isInstruction =
            startsWith(rest, "<?") && !startsWith(rest, "<?xml ") && !startsWith(rest, "<?vantry ");
        if (isComment || isInstruction)
            marks.comments.push_back({at, std::string(text.substr(at, end - at))});
        at = text.find('<', end);
    }
    return marks;
}

} // namespace Repository::Documents
