#include "repository/documents/xml/XmlEditor.h"

#include <utility>

namespace Repository::Documents {

namespace {

// What is written without a blank after it, or before it.
constexpr std::string_view opening = "([{\"'/-";
constexpr std::string_view closing = ")]}\"'/-.,;:!?";

} // namespace

NodeId XmlEditor::createRoot(std::string_view name)
{
    const NodeId id = tree.insert(noNode, noNode, {XmlKind::Element, tree.getNames().intern(name), 1});
    tree.node(id).keepsBlanks = holdsXmlTexts(name);
    const std::string declared = spelling.isWide() ? "UTF-16" : "UTF-8";
    tree.setText(id, XmlPart::Leading,
                 "<?xml version=\"1.0\" encoding=\"" + declared + "\"?>" + spelling.lineEnd);
    tree.setEpilogue(spelling.lineEnd);
    fillElement(id);
    return id;
}

void XmlEditor::fillElement(NodeId id)
{
    tree.setText(id, XmlPart::Label, '<' + std::string(tree.getNames().nameOf(tree.node(id).name)));
    tree.setText(id, XmlPart::TagEnd, "/>");
}

NodeId XmlEditor::append(NodeId parent, const XmlKey& key, bool isInRun)
{
    if (key.kind == XmlKind::Attribute)
        return appendAttribute(parent, key);
    if (!tree.node(parent).isContainer())
        return appendFirst(parent, key);
    const bool isInOrder = isInRun && tree.node(parent).end == 0;
    NodeId sibling = noNode;
    if (key.number > 1 && key.kind == XmlKind::Element && !isInOrder)
        sibling = tree.find(parent, {key.kind, key.name, key.number - 1});
    if (sibling == noNode)
        sibling = tree.node(parent).last;
    // Two texts are never side by side; a run may begin with one that has no elements yet.
    if (tree.node(sibling).kind == XmlKind::Text && !isInOrder && tree.node(parent).count > 1)
        sibling = tree.node(sibling).previous;
    const NodeId id = tree.insert(parent, sibling, key);
    if (key.kind == XmlKind::Element)
        fillElement(id);
    layout.placeAfter(id, sibling);
    const std::string_view before = tree.text(sibling, XmlPart::Value);
    if (key.kind == XmlKind::Element && tree.node(sibling).kind == XmlKind::Text && !before.empty())
        setApart(id, opening, before.back());
    return id;
}

NodeId XmlEditor::appendFirst(NodeId parent, const XmlKey& key)
{
    const std::string content = contentOf(parent);
    values.open(parent);
    const NodeId id = tree.insert(parent, tree.lastAttribute(parent), key);
    if (key.kind == XmlKind::Text) {
        layout.setClosingTrivia(parent, content);
        return id;
    }
    fillElement(id);
    layout.placeOnly(id, content);
    return id;
}

NodeId XmlEditor::appendAttribute(NodeId element, const XmlKey& key)
{
    const std::string name(tree.getNames().nameOf(key.name));
    const char quote = quoteFor(element);
    const NodeId last = tree.lastAttribute(element);
    layout.dropTypeTags(element, name);
    const NodeId id = tree.insert(element, last, key);
    tree.setText(id, XmlPart::Leading, last == noNode ? " " : std::string(tree.text(last, XmlPart::Leading)));
    tree.setText(id, XmlPart::Label, name + '=' + quote);
    tree.setText(id, XmlPart::Closing, std::string(1, quote));
    return id;
}

char XmlEditor::quoteFor(NodeId element) const
{
    const NodeId last = element == noNode ? noNode : tree.lastAttribute(element);
    return last == noNode ? '"' : tree.text(last, XmlPart::Closing)[0];
}

// Amid texts, where words must not become one. No blank comes beside the punctuation.
void XmlEditor::setApart(NodeId id, std::string_view punctuation, char beside)
{
    const bool areApart = tree.node(tree.node(id).parent).keepsBlanks ||
                          !tree.text(id, XmlPart::Leading).empty() ||
                          punctuation.find(beside) != std::string_view::npos;
    if (!areApart)
        tree.setText(id, XmlPart::Leading, " ");
}

void XmlEditor::give(NodeId id, XmlValues::Spelled value)
{
    const XmlNode& node = tree.node(id);
    const bool isNewText = node.kind == XmlKind::Text && tree.text(id, XmlPart::Value).empty();
    const bool isAfterElement = node.previous != noNode && tree.node(node.previous).kind == XmlKind::Element;
    if (isNewText && isAfterElement && !value.text.empty())
        setApart(id, closing, value.text.front());
    const bool isAttribute = node.kind == XmlKind::Attribute;
    const bool isEmptyElement = node.kind == XmlKind::Element && isXmlBlank(contentOf(id));
    if (value.tag) {
        if (isAttribute)
            value.tag->attribute = tree.getNames().nameOf(node.name);
        layout.addTypeTag(isAttribute ? node.parent : id, value.tag->write());
        tree.node(id).isTagged = true;
        if (node.kind == XmlKind::Element && value.tag->type == Type::Null)
            return;
    }
    if (isEmptyElement) {
        tree.setText(id, XmlPart::Front, {});
        layout.setClosingTrivia(id, {});
    }
    values.put(id, std::move(value.text));
}

void XmlEditor::change(NodeId id, XmlValues::Spelled value)
{
    XmlNode& node = tree.node(id);
    if (node.isTagged) {
        const bool isAttribute = node.kind == XmlKind::Attribute;
        const NodeId element = isAttribute ? node.parent : id;
        const std::string attribute(isAttribute ? tree.getNames().nameOf(node.name) : std::string_view());
        node.isTagged = value.tag.has_value();
        if (value.tag)
            layout.rewriteTypeTag(element, attribute, *value.tag);
        else
            layout.dropTypeTags(element, attribute);
    }
    values.put(id, std::move(value.text));
}

void XmlEditor::respell(NodeId id, std::string_view spelled)
{
    const XmlKind kind = tree.node(id).kind;
    const std::string comments = kind == XmlKind::Attribute ? std::string() : xmlCommentsIn(spelled);
    if (!comments.empty() && xmlCommentsIn(tree.text(id, XmlPart::Value)).empty()) {
        const bool isElement = kind == XmlKind::Element;
        const std::string trivia(isElement ? layout.closingTrivia(id) : layout.triviaAfter(id));
        if (trivia.compare(0, comments.size(), comments) == 0 && isElement)
            layout.setClosingTrivia(id, trivia.substr(comments.size()));
        else if (trivia.compare(0, comments.size(), comments) == 0)
            layout.setTriviaAfter(id, trivia.substr(comments.size()));
    }
    values.put(id, std::string(spelled));
}

std::string XmlEditor::contentOf(NodeId element) const
{
    std::string content(tree.text(element, XmlPart::Front));
    content += tree.text(element, XmlPart::Value);
    return content += layout.closingTrivia(element);
}

bool XmlEditor::joinsTexts(NodeId id) const
{
    const XmlNode& node = tree.node(id);
    return node.kind == XmlKind::Element && node.parent != noNode && layout.isMixed(node.parent);
}

void XmlEditor::remove(NodeId id)
{
    const XmlNode node = tree.node(id);
    const NodeId parent = node.parent;
    if (node.kind == XmlKind::Attribute) {
        layout.dropTypeTags(parent, tree.getNames().nameOf(node.name));
        tree.remove(id);
        return;
    }
    layout.takeOut(id);
    if (tree.node(parent).count == 1) {
        std::string trivia(layout.closingTrivia(parent));
        tree.remove(id);
        empty(parent, std::move(trivia));
        return;
    }
    tree.remove(id);
    const auto isText = [this](NodeId sibling) {
        return sibling != noNode && tree.node(sibling).kind == XmlKind::Text;
    };
    if (isText(node.previous) && isText(node.next))
        joinTexts(node.previous, node.next);
    if (tree.node(parent).count == 1 && isText(tree.node(parent).last))
        dissolve(parent);
}

void XmlEditor::rename(NodeId id, std::string_view name)
{
    const XmlNode& node = tree.node(id);
    const std::string former(tree.getNames().nameOf(node.name));
    std::string label(tree.text(id, XmlPart::Label));
    if (node.kind == XmlKind::Attribute) {
        layout.renameTypeTags(node.parent, former, name);
        tree.setText(id, XmlPart::Label, label.replace(0, former.size(), name));
    } else {
        const std::string_view closing = tree.text(id, XmlPart::Closing);
        const std::size_t tag = layout.closingTrivia(id).size();
        tree.setText(id, XmlPart::Label, label.replace(1, former.size(), name));
        if (tag < closing.size())
            tree.setText(id, XmlPart::Closing, std::string(closing).replace(tag + 2, former.size(), name));
    }
    tree.rename(id, tree.getNames().intern(name));
}

bool XmlEditor::standsAlone(NodeId root) const
{
    std::string_view leading = tree.text(root, XmlPart::Leading);
    const auto tags = readXmlTypeTags(leading);
    if (!tags.empty())
        leading = leading.substr(0, tags.back().begin);
    if (leading.substr(0, 5) == "<?xml")
        leading = leading.substr(leading.find("?>") + 2);
    return isXmlBlank(leading) && isXmlBlank(tree.epilogue());
}

void XmlEditor::joinTexts(NodeId text, NodeId following)
{
    std::string joined(tree.text(text, XmlPart::Value));
    const std::string_view between = tree.text(following, XmlPart::Leading);
    const std::string_view value = tree.text(following, XmlPart::Value);
    // What was between has kept their words apart.
    const bool mayTouch = tree.node(tree.node(text).parent).keepsBlanks ||
                          opening.find(joined.back()) != std::string_view::npos ||
                          closing.find(value.front()) != std::string_view::npos;
    const bool areApart =
        mayTouch || (between.empty() ? isXmlBlank(joined.back()) || isXmlBlank(value.front())
                                     : isXmlBlank(between.front()) || isXmlBlank(between.back()));
    ((joined += between) += areApart ? "" : " ") += value;
    tree.setText(text, XmlPart::Value, std::move(joined));
    tree.remove(following);
}

// Leaves an element that lost its last child without a value, which a type tag would give it.
void XmlEditor::empty(NodeId element, std::string trivia)
{
    layout.dropTypeTags(element, {});
    tree.node(element).isTagged = false;
    tree.setText(element, XmlPart::Front, {});
    tree.setText(element, XmlPart::Value, {});
    const std::string_view tagEnd = tree.text(element, XmlPart::TagEnd);
    if (trivia.find_first_of("\r\n<") == std::string::npos) {
        tree.setText(element, XmlPart::TagEnd, std::string(tagEnd.substr(0, tagEnd.size() - 1)) + "/>");
        tree.setText(element, XmlPart::Closing, {});
    }
}

// Makes the only text of an element its value.
void XmlEditor::dissolve(NodeId element)
{
    const NodeId text = tree.node(element).last;
    std::string leading(tree.text(text, XmlPart::Leading));
    std::string value(tree.text(text, XmlPart::Value));
    tree.remove(text);
    tree.setText(element, XmlPart::Front, std::move(leading));
    tree.setText(element, XmlPart::Value, std::move(value));
}

} // namespace Repository::Documents
