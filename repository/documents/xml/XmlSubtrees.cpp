#include "repository/documents/xml/XmlSubtrees.h"

#include "repository/documents/common/ExcerptText.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/xml/XmlInsertion.h"
#include "repository/documents/xml/XmlWriter.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Repository::Documents {

namespace {

// Calls back with a node and all below it, until one of them gives false; whether none did.
template <typename Callback>
bool forAll(const XmlTree& tree, NodeId top, const Callback& callback)
{
    for (NodeId id = top;;) {
        if (!callback(id))
            return false;
        if (tree.node(id).first != noNode) {
            id = tree.node(id).first;
            continue;
        }
        while (id != top && tree.node(id).next == noNode)
            id = tree.node(id).parent;
        if (id == top)
            return true;
        id = tree.node(id).next;
    }
}

// Writes an element, and notes where the lines begin in it that are only layout.
class ExcerptWriter
{
public:
    ExcerptWriter(const XmlTree& xmlTree, const XmlLayout& xmlLayout, Excerpt& written)
        : tree(xmlTree), layout(xmlLayout), excerpt(written)
    {
    }

    void write(NodeId top)
    {
        for (NodeId id = top;;) {
            const NodeId child = open(id, id != top);
            if (child != noNode) {
                id = child;
                continue;
            }
            append(id, XmlPart::Closing, mayIndent(id));
            while (id != top && tree.node(id).next == noNode) {
                id = tree.node(id).parent;
                append(id, XmlPart::Closing, mayIndent(id));
            }
            if (id == top)
                break;
            id = tree.node(id).next;
        }
        const std::size_t size = tree.getNames().nameOf(tree.node(top).name).size();
        const std::size_t end = excerpt.text.rfind("</");
        excerpt.names.emplace_back(1, 1 + size);
        if (!tree.text(top, XmlPart::Closing).empty())
            excerpt.names.emplace_back(end + 2, end + 2 + size);
    }

private:
    // Gives the first child to go on with.
    NodeId open(NodeId id, bool isInside)
    {
        if (isInside)
            append(id, XmlPart::Leading, mayIndent(tree.node(id).parent));
        append(id, XmlPart::Label, false);
        if (tree.node(id).kind != XmlKind::Element) {
            append(id, XmlPart::Value, false);
            return noNode;
        }
        NodeId child = tree.node(id).first;
        for (; child != noNode && tree.node(child).kind == XmlKind::Attribute;
             child = tree.node(child).next) {
            append(child, XmlPart::Leading, true);
            for (const XmlPart part : {XmlPart::Label, XmlPart::Value, XmlPart::Closing})
                append(child, part, false);
        }
        append(id, XmlPart::TagEnd, true);
        if (child != noNode)
            return child;
        append(id, XmlPart::Front, mayIndent(id));
        append(id, XmlPart::Value, false);
        return noNode;
    }

    bool mayIndent(NodeId element) const
    {
        return tree.node(element).kind == XmlKind::Element && !layout.isMixed(element);
    }

    void append(NodeId id, XmlPart part, bool isLayout)
    {
        const std::string_view piece = tree.text(id, part);
        for (std::size_t at = textLineAt(piece, 0).end; isLayout && at <= piece.size() && at > 0;) {
            if (endsLine(piece.substr(0, at)))
                excerpt.lines.push_back(excerpt.text.size() + at);
            at = at < piece.size() ? textLineAt(piece, at).end : 0;
        }
        excerpt.text += piece;
    }

    const XmlTree& tree;
    const XmlLayout& layout;
    Excerpt& excerpt;
};

// Comments and processing instructions without what sets them off from each other.
std::string withoutLineEndsBetween(std::string_view comments)
{
    std::string joined;
    for (std::size_t at = 0; at < comments.size();) {
        const std::size_t begin = std::min(comments.find('<', at), comments.size());
        std::copy_if(comments.begin() + std::ptrdiff_t(at), comments.begin() + std::ptrdiff_t(begin),
                     std::back_inserter(joined), [](char c) { return c != '\r' && c != '\n'; });
        if (begin == comments.size())
            break;
        const std::string_view close = startsWith(comments.substr(begin), "<?") ? "?>" : "-->";
        at = std::min(comments.find(close, begin), comments.size() - close.size()) + close.size();
        joined += comments.substr(begin, at - begin);
    }
    return joined;
}

} // namespace

std::optional<Outcome> XmlSubtrees::rename(std::string_view path, std::string_view name)
{
    const NodeId id = file.find(path);
    const auto step = readXmlComponent(name);
    if (id == noNode || !step || step->number > 1 || step->kind == XmlKind::Text ||
        step->kind != tree.node(id).kind)
        return std::nullopt;
    const std::string renamed = joinPath(splitLast(path).parent, name);
    if (file.find(renamed) != noNode)
        return refused(Reason::tr("there is already an entry %1", {quoted(renamed)}));
    const bool isAttribute = step->kind == XmlKind::Attribute;
    XmlInsertion insertion(file);
    Outcome outcome = insertion.checkName(step->name);
    if (outcome.ok())
        outcome = insertion.checkPrefix(isAttribute ? tree.node(id).parent : id, step->name);
    if (outcome.ok() && isAttribute)
        outcome.error = explainUse(path, id);
    if (outcome.ok())
        file.editor.rename(id, step->name);
    return outcome;
}

std::string XmlSubtrees::explainUse(std::string_view path, NodeId attribute) const
{
    return declaresUsedPrefix(attribute)
               ? Reason::tr("%1 declares a prefix that is used in its element", {quoted(path)})
               : std::string();
}

bool XmlSubtrees::declaresUsedPrefix(NodeId attribute) const
{
    constexpr std::string_view declaration = "xmlns:";
    const std::string name(tree.getNames().nameOf(tree.node(attribute).name));
    if (!startsWith(name, declaration))
        return false;
    const std::string prefix = name.substr(declaration.size()) + ':';
    return !forAll(tree, tree.node(attribute).parent, [&](NodeId id) {
        return !startsWith(tree.getNames().nameOf(tree.node(id).name), prefix);
    });
}

std::vector<NodeId> XmlSubtrees::withoutPrefix(NodeId id) const
{
    const XmlInsertion insertion(file);
    std::vector<NodeId> lacking;
    forAll(tree, id, [&](NodeId node) {
        if (tree.node(node).kind != XmlKind::Text && !insertion.checkSurroundings(node).ok())
            lacking.push_back(node);
        return true;
    });
    return lacking;
}

std::optional<Excerpt> XmlSubtrees::excerpt(std::string_view path) const
{
    const NodeId id = file.find(path);
    if (id == noNode || tree.node(id).kind == XmlKind::Text)
        return std::nullopt;
    Excerpt found;
    found.lineEnd = file.spelling.lineEnd;
    if (tree.node(id).kind == XmlKind::Attribute) {
        if (tree.node(id).isTagged)
            return std::nullopt;
        found.text = tree.text(id, XmlPart::Label).substr(tree.getNames().nameOf(tree.node(id).name).size());
        (found.text += tree.text(id, XmlPart::Value)) += tree.text(id, XmlPart::Closing);
        return found;
    }
    const XmlLayout& layout = file.editor.getLayout();
    found.indentation = layout.indentOf(id);
    found.above = layout.linesAbove(id);
    found.after = layout.commentAfter(id);
    ExcerptWriter(tree, layout, found).write(id);
    return found;
}

std::optional<std::string> XmlSubtrees::insertInText(std::string_view path, const Excerpt& excerpt)
{
    const auto step = readXmlComponent(splitLast(path).last);
    const bool isAttribute = step && step->kind == XmlKind::Attribute;
    const bool isOfElement = startsWith(excerpt.text, "<");
    if (!step || isAttribute == isOfElement || step->kind == XmlKind::Text ||
        !XmlInsertion(file).insert(path, isAttribute ? Value{Type::String, std::string("x")} : Value()).ok())
        return std::nullopt;
    const NodeId id = file.find(path);
    if (isAttribute)
        return insertAttribute(id, excerpt.text) ? std::optional(XmlWriter(tree).write()) : std::nullopt;
    const XmlLayout& layout = file.editor.getLayout();
    const std::string indent = layout.indentOf(id);
    std::string above = indentedLines(excerpt.above, excerpt.indentation, indent);
    const bool hasLine = layout.beginsLine(id) || tree.getRoot() == id;
    if (!hasLine)
        above = withoutLineEndsBetween(above);
    else if (!above.empty())
        above = above.substr(startsWith(above, indent) ? indent.size() : 0) + indent;
    std::string text = above + excerptText(excerpt, step->name, indent) + excerpt.after;
    text = withLineEnds(std::move(text), excerpt, file.spelling.lineEnd);
    if (!file.spelling.canHold(text))
        return std::nullopt;
    XmlWriter writer(tree, id);
    std::string whole = writer.write();
    const std::size_t size = tree.text(id, XmlPart::Label).size() + tree.text(id, XmlPart::TagEnd).size();
    return whole.replace(writer.getLocation() - size, size, text);
}

// What is written of an attribute is all after its name.
bool XmlSubtrees::insertAttribute(NodeId id, std::string_view written)
{
    const std::size_t quote = written.find_first_of("\"'");
    if (quote == std::string_view::npos || quote + 1 >= written.size())
        return false;
    const std::string value(written.substr(quote + 1, written.size() - quote - 2));
    const std::string name(tree.getNames().nameOf(tree.node(id).name));
    tree.setText(id, XmlPart::Label, name + std::string(written.substr(0, quote + 1)));
    tree.setText(id, XmlPart::Closing, std::string(1, written[quote]));
    if (!file.values.explainMisspelling(id, value).empty())
        return false;
    tree.setText(id, XmlPart::Value, value);
    return true;
}

} // namespace Repository::Documents
