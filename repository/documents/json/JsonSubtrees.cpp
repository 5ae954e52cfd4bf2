#include "repository/documents/json/JsonSubtrees.h"

#include "repository/documents/common/ExcerptText.h"
#include "repository/documents/json/JsonElements.h"
#include "repository/documents/json/JsonInsertion.h"
#include "repository/documents/json/JsonReader.h"
#include "repository/documents/json/JsonScalar.h"
#include "repository/documents/json/JsonTrivia.h"
#include "repository/documents/json/JsonWriter.h"

#include <algorithm>

namespace Repository::Documents {

namespace {

// An object of that name in the root may say the types of other entries, as long as it is all texts.
bool isAmongTypes(std::string_view path)
{
    return path.substr(0, path.find('.')) == typesKey;
}

bool hasJsonComment(std::string_view text)
{
    for (std::size_t at = 0; at < text.size();) {
        if (skipComment(text, at) != at)
            return true;
        at = text[at] == '"' ? findStringEnd(text, at) : at + 1;
    }
    return false;
}

} // namespace

std::size_t depthOfJson(std::string_view text)
{
    std::size_t depth = 0;
    std::size_t deepest = 0;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        const std::size_t end = c == '"' ? findStringEnd(text, at) : std::max(skipComment(text, at), at + 1);
        at = std::min(end, text.size());
        if (c == '{' || c == '[')
            deepest = std::max(deepest, ++depth);
        else if (c == '}' || c == ']')
            --depth;
    }
    return deepest;
}

std::optional<Outcome> JsonSubtrees::rename(std::string_view path, std::string_view name)
{
    const NodeId id = file.find(path);
    const NodeId object = id == noNode ? noNode : tree.node(id).parent;
    if (object == noNode || tree.node(object).kind != JsonKind::Object || splitNumber(name).number > 1 ||
        isAmongTypes(path) || (object == tree.getRoot() && name == typesKey))
        return std::nullopt;
    const PathEnds ends = splitLast(path);
    const std::string renamed = joinPath(ends.parent, name);
    if (file.find(renamed) != noNode)
        return refused(Reason::tr("there is already an entry %1", {quoted(renamed)}));
    Outcome outcome = JsonInsertion(file).checkName(object, name);
    if (!outcome.ok())
        return outcome;
    const bool othersMove = file.members.hasSuccessor(id);
    file.types.removeBelow(renamed); // said of entries that were not there
    file.types.rename(path, renamed);
    file.editor.rename(id, *decodeKey(name));
    if (othersMove)
        file.types.moveUp(path, false);
    return outcome;
}

std::optional<Excerpt> JsonSubtrees::excerpt(std::string_view path) const
{
    const NodeId known = file.find(path);
    const NodeId id = known == noNode ? JsonElements(file).find(path) : known;
    const bool isRoot = id != noNode && tree.node(id).parent == noNode;
    if (id == noNode || isAmongTypes(path) || (isRoot && !file.types.isEmpty()))
        return std::nullopt;
    Excerpt found;
    found.lineEnd = file.editor.getStyle().lineEnd;
    if (isRoot) {
        found.text = JsonWriter(tree).writeValue(id);
        findLines(found);
        return found;
    }
    const std::string_view label = tree.text(id, JsonPart::Label);
    if (!label.empty())
        found.text = label.substr(tree.keyLiteral(id).size());
    found.text += JsonWriter(tree).writeValue(id);
    findLines(found);
    found.indentation = lineIndentation(tree, id);
    JsonLayout::Comments comments = file.editor.getLayout().commentsOf(id);
    found.above = std::move(comments.above);
    found.after = std::move(comments.after);
    found.types = file.types.findBelow(path);
    return found;
}

// Those above it stay.
bool JsonSubtrees::hasComments(std::string_view path) const
{
    const auto found = excerpt(path);
    if (!found)
        return false;
    const NodeId known = file.find(path);
    const std::string_view leading =
        tree.text(known == noNode ? JsonElements(file).find(path) : known, JsonPart::Leading);
    return !found->after.empty() || hasJsonComment(found->text) ||
           hasJsonComment(leading.substr(JsonTrivia(leading).lastLineStart));
}

std::string JsonSubtrees::textOfWhole(const Excerpt& excerpt) const
{
    const std::string text = excerptText(excerpt, {}, {});
    const std::size_t colon = skipTrivia(text, 0);
    const std::size_t value = text[colon] == ':' ? skipTrivia(text, colon + 1) : colon;
    return indentedLines(excerpt.above, excerpt.indentation, {}) + text.substr(value) + excerpt.after +
           excerpt.lineEnd;
}

std::optional<std::string> JsonSubtrees::insertPlaceholder(std::string_view path, const Excerpt& excerpt)
{
    JsonInsertion insertion(file);
    const bool canTag = std::all_of(excerpt.types.begin(), excerpt.types.end(),
                                    [&](const auto& tag) { return insertion.checkTag(tag.second).ok(); });
    const bool isTooDeep =
        splitPath(path).value_or(std::vector<std::string_view>()).size() + depthOfJson(excerpt.text) >
        JsonReader::maximumDepth;
    if (path.empty() || isAmongTypes(path) || !canTag || isTooDeep)
        return std::nullopt;
    JsonElements elements(file);
    const Value placeholder{Type::String, std::string()};
    if (!elements.insert(path, placeholder).value_or(refused("no array")).ok() &&
        !insertion.insert(path, placeholder).ok())
        return std::nullopt;
    const NodeId element = elements.find(path);
    const NodeId id = element == noNode ? file.findValueNode(path) : element;
    const auto adapted = [&](std::string text) {
        return withLineEnds(std::move(text), excerpt, file.editor.getStyle().lineEnd);
    };
    const std::string text = adapted(excerptText(excerpt, {}, lineIndentation(tree, id)));
    std::size_t value = skipTrivia(text, 0);
    if (text[value] == ':')
        value = skipTrivia(text, value + 1);
    const std::string_view between = std::string_view(text).substr(0, value);
    if (!between.empty() && between.find('/') != std::string_view::npos &&
        !tree.text(id, JsonPart::Label).empty())
        tree.setText(id, JsonPart::Label, std::string(tree.keyLiteral(id)).append(between));
    file.editor.getLayout().addComments(id, {adapted(excerpt.above), excerpt.after}, excerpt.indentation);
    for (const auto& [below, type] : excerpt.types)
        file.types.add(below.empty() ? std::string(path) : joinPath(path, below), type);
    return text.substr(value);
}

} // namespace Repository::Documents
