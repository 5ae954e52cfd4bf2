#include "repository/documents/json/JsonEditor.h"

#include "repository/documents/json/JsonScalar.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Repository::Documents {

void JsonEditor::createRoot()
{
    const std::string& lineEnd = layout.getStyle().lineEnd;
    std::string leading = tree.getOriginal();
    const bool onlyByteOrderMark = leading == utf8ByteOrderMark;
    if (!leading.empty() && !onlyByteOrderMark && leading.back() != '\n' && leading.back() != '\r')
        leading += lineEnd;
    const NodeId root = tree.insert(noNode, noNode, JsonKind::Object);
    tree.setText(root, JsonPart::Leading, std::move(leading));
    tree.setText(root, JsonPart::Trailing, lineEnd);
}

NodeId JsonEditor::appendMember(NodeId object, std::string_view key, const JsonContent& content)
{
    std::string label = encodeString(key) + layout.colonFor(object);
    const NodeId id = insert(object);
    tree.setText(id, JsonPart::Label, std::move(label));
    place(id);
    members.add(id);
    setContent(id, content);
    return id;
}

NodeId JsonEditor::insertElement(NodeId array, NodeId previous, const JsonContent& content)
{
    tree.unfold(array);
    const bool wasList = tree.node(array).isList();
    const NodeId id = tree.insert(array, previous, JsonKind::Null);
    place(id);
    if (wasList)
        members.addAll(array);
    else
        members.add(id);
    setContent(id, content);
    if (tree.node(array).isList())
        members.removeAll(array);
    return id;
}

void JsonEditor::moveElement(NodeId id, NodeId previous)
{
    const JsonLayout::Comments comments = layout.commentsOf(id);
    const std::string indentation = lineIndentation(tree, id);
    layout.dropCommentsAbove(id);
    layout.takeOut(id);
    tree.setText(id, JsonPart::Trailing, {}); // it was laid out as a last one, maybe
    tree.move(id, previous);
    place(id);
    layout.addComments(id, comments, indentation);
    members.reorder(tree.node(id).parent);
}

NodeId JsonEditor::insert(NodeId container)
{
    const NodeId last = tree.node(container).last;
    const bool isKept = last != noNode && last == keptLast;
    return tree.insert(container, isKept ? tree.node(last).previous : last, JsonKind::Null);
}

void JsonEditor::place(NodeId id)
{
    const NodeId container = tree.node(id).parent;
    if (tree.node(container).count == 1)
        layout.placeOnly(id, layout.opensLines(container));
    else if (tree.node(id).previous == noNode)
        layout.placeFirst(id, true);
    else
        layout.placeAfter(id);
}

void JsonEditor::setContent(NodeId id, const JsonContent& content)
{
    if (content.kind == JsonKind::Array && tree.node(id).isList()) {
        changeList(id, content.list);
        return;
    }
    members.removeAll(id);
    tree.clear(id);
    tree.setKind(id, content.kind);
    if (content.kind == JsonKind::Array)
        fillList(id, content.list);
    else if (content.kind != JsonKind::Object)
        tree.setText(id, JsonPart::Value, content.spelling);
}

void JsonEditor::copyValue(NodeId id, JsonTree& from, NodeId source)
{
    members.removeAll(id);
    tree.clear(id);
    tree.setKind(id, from.node(source).kind);
    if (!from.node(source).isContainer()) {
        tree.setText(id, JsonPart::Value, std::string(from.text(source, JsonPart::Value)));
        return;
    }
    from.unfold(source);
    for (NodeId text = from.node(source).first; text != noNode; text = from.node(text).next) {
        const NodeId copy = tree.insert(id, tree.node(id).last, JsonKind::Text);
        for (const JsonPart part : {JsonPart::Leading, JsonPart::Value, JsonPart::Trailing})
            tree.setText(copy, part, std::string(from.text(text, part)));
    }
    tree.setTrailingComma(id, from.node(source).trailingComma);
    tree.setText(id, JsonPart::Closing, std::string(from.text(source, JsonPart::Closing)));
}

void JsonEditor::restore(NodeId id)
{
    members.removeAll(id);
    tree.restore(id);
}

void JsonEditor::remove(NodeId id)
{
    const NodeId container = tree.node(id).parent;
    layout.takeOut(id);
    members.remove(id);
    tree.remove(id);
    if (tree.node(container).isList())
        members.removeAll(container);
}

void JsonEditor::rename(NodeId member, std::string_view key)
{
    const std::string_view label = tree.text(member, JsonPart::Label);
    std::string renamed = encodeString(key);
    renamed += label.substr(tree.keyLiteral(member).size());
    members.removeMember(member);
    tree.setText(member, JsonPart::Label, std::move(renamed));
    members.add(member);
}

void JsonEditor::wrap(NodeId id)
{
    const NodeId inner = tree.wrap(id);
    tree.setText(inner, JsonPart::Label, encodeString(ownValueKey) + layout.colonFor(id));
    layout.placeOnly(inner, layout.opensLines(id));
    members.add(inner);
}

// Gives an empty array its elements.
void JsonEditor::fillList(NodeId id, const std::vector<std::string>& list)
{
    const bool isLong = isLongList(list);
    NodeId last = noNode;
    for (const std::string& text : list) {
        const NodeId previous = last;
        last = tree.insert(id, previous, JsonKind::Text);
        tree.setText(last, JsonPart::Value, encodeString(text));
        if (previous == noNode)
            layout.placeOnly(last, isLong && layout.opensLines(id));
        else
            layout.placeAfter(last);
    }
}

// Elements that both lists share at the beginning or end keep their text and comments.
void JsonEditor::changeList(NodeId id, const std::vector<std::string>& list)
{
    const std::vector<std::string> old = tree.readList(id);
    tree.unfold(id);
    if (old.empty()) {
        fillList(id, list);
        return;
    }
    const auto begin = std::mismatch(old.begin(), old.end(), list.begin(), list.end());
    const auto end = std::mismatch(old.rbegin(), std::reverse_iterator(begin.first), list.rbegin(),
                                   std::reverse_iterator(begin.second));
    auto wanted = begin.second;
    NodeId element = tree.node(id).first;
    for (auto same = old.begin(); same != begin.first; ++same)
        element = tree.node(element).next;
    NodeId previous = element == noNode ? tree.node(id).last : tree.node(element).previous;
    for (auto existing = begin.first; existing != end.first.base(); ++existing) {
        const NodeId next = tree.node(element).next;
        if (wanted == end.second.base()) {
            layout.takeOut(element);
            tree.remove(element);
        } else {
            if (*existing != *wanted)
                tree.setText(element, JsonPart::Value, encodeString(*wanted));
            previous = element;
            ++wanted;
        }
        element = next;
    }
    for (; wanted != end.second.base(); ++wanted)
        previous = insertText(id, previous, *wanted);
}

NodeId JsonEditor::insertText(NodeId list, NodeId previous, const std::string& text)
{
    const NodeId id = tree.insert(list, previous, JsonKind::Text);
    tree.setText(id, JsonPart::Value, encodeString(text));
    if (previous == noNode)
        layout.placeFirst(id, false);
    else
        layout.placeAfter(id);
    return id;
}

} // namespace Repository::Documents
