#include "repository/documents/json/JsonEditor.h"

#include "repository/documents/json/JsonList.h"
#include "repository/documents/json/JsonScalar.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Repository::Documents {

JsonEditor::JsonEditor(JsonTree& syntaxTree, JsonMembers& treeMembers)
    : tree(syntaxTree), members(treeMembers), layout(syntaxTree)
{
}

void JsonEditor::detectStyle()
{
    layout.detect();
}

void JsonEditor::createRoot()
{
    const std::string& lineEnd = layout.getStyle().lineEnd;
    std::string lead = tree.getOriginal();
    const bool onlyMark = lead == "\xEF\xBB\xBF";
    if (!lead.empty() && !onlyMark && lead.back() != '\n' && lead.back() != '\r')
        lead += lineEnd;
    const JsonNodeId root = tree.insert(noJsonNode, noJsonNode, JsonKind::Object);
    tree.setText(root, JsonPart::Lead, std::move(lead));
    tree.setText(root, JsonPart::Tail, lineEnd);
}

JsonNodeId JsonEditor::appendMember(JsonNodeId object, std::string_view key, std::uint32_t ordinal,
                                    const JsonContent& content)
{
    std::string label = encodeString(key) + layout.colonFor(object);
    const JsonNodeId id = insert(object);
    tree.setText(id, JsonPart::Label, std::move(label));
    place(id);
    members.add(id, ordinal);
    setContent(id, content);
    return id;
}

JsonNodeId JsonEditor::appendElement(JsonNodeId array, const JsonContent& content)
{
    const JsonNodeId id = insert(array);
    place(id);
    members.add(id);
    setContent(id, content);
    return id;
}

JsonNodeId JsonEditor::insert(JsonNodeId container)
{
    const JsonNodeId last = tree.node(container).last;
    const bool isKept = last != noJsonNode && last == keptLast;
    return tree.insert(container, isKept ? tree.node(last).previous : last, JsonKind::Null);
}

void JsonEditor::place(JsonNodeId id)
{
    const JsonNodeId container = tree.node(id).parent;
    if (tree.node(container).count == 1)
        layout.placeOnly(id, layout.opensLines(container));
    else if (tree.node(id).previous == noJsonNode)
        layout.placeFirst(id);
    else
        layout.placeBehind(id);
}

void JsonEditor::setContent(JsonNodeId id, const JsonContent& content)
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

void JsonEditor::copyValue(JsonNodeId id, JsonTree& from, JsonNodeId source)
{
    members.removeAll(id);
    tree.clear(id);
    tree.setKind(id, from.node(source).kind);
    if (!from.node(source).isContainer()) {
        tree.setText(id, JsonPart::Value, std::string(from.text(source, JsonPart::Value)));
        return;
    }
    from.unfold(source);
    for (JsonNodeId text = from.node(source).first; text != noJsonNode; text = from.node(text).next) {
        const JsonNodeId copy = tree.insert(id, tree.node(id).last, JsonKind::Text);
        for (const JsonPart part : {JsonPart::Lead, JsonPart::Value, JsonPart::Tail})
            tree.setText(copy, part, std::string(from.text(text, part)));
    }
    tree.setTrailingComma(id, from.node(source).trailingComma);
    tree.setText(id, JsonPart::Closing, std::string(from.text(source, JsonPart::Closing)));
}

void JsonEditor::restore(JsonNodeId id)
{
    members.removeAll(id);
    tree.restore(id);
}

void JsonEditor::remove(JsonNodeId id)
{
    const JsonNodeId container = tree.node(id).parent;
    layout.takeOut(id);
    members.remove(id);
    tree.remove(id);
    if (tree.node(container).isList())
        members.removeAll(container);
}

void JsonEditor::wrap(JsonNodeId id)
{
    const JsonNodeId inner = tree.wrap(id);
    tree.setText(inner, JsonPart::Label, encodeString(ownValueKey) + layout.colonFor(id));
    layout.placeOnly(inner, layout.opensLines(id));
    members.add(inner);
}

// Gives an empty array its elements.
void JsonEditor::fillList(JsonNodeId id, const std::vector<std::string>& list)
{
    const bool isLong = isLongList(list);
    JsonNodeId last = noJsonNode;
    for (const std::string& text : list) {
        const JsonNodeId previous = last;
        last = tree.insert(id, previous, JsonKind::Text);
        tree.setText(last, JsonPart::Value, encodeString(text));
        if (previous == noJsonNode)
            layout.placeOnly(last, isLong && layout.opensLines(id));
        else
            layout.placeBehind(last);
    }
}

// Elements that both lists share at the beginning or end keep their text and comments.
void JsonEditor::changeList(JsonNodeId id, const std::vector<std::string>& list)
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
    JsonNodeId element = tree.node(id).first;
    for (auto same = old.begin(); same != begin.first; ++same)
        element = tree.node(element).next;
    JsonNodeId previous = element == noJsonNode ? tree.node(id).last : tree.node(element).previous;
    for (auto existing = begin.first; existing != end.first.base(); ++existing) {
        const JsonNodeId next = tree.node(element).next;
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

JsonNodeId JsonEditor::insertText(JsonNodeId list, JsonNodeId previous, const std::string& text)
{
    const JsonNodeId id = tree.insert(list, previous, JsonKind::Text);
    tree.setText(id, JsonPart::Value, encodeString(text));
    if (previous == noJsonNode)
        layout.placeFirst(id);
    else
        layout.placeBehind(id);
    return id;
}

} // namespace Repository::Documents
