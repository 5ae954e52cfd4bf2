#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/common/ExcerptText.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/yaml/YamlDocument.h"
#include "repository/documents/yaml/YamlEditor.h"
#include "repository/documents/yaml/YamlGuard.h"
#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>

// The part of a document that changes its shape: each change edits the text, which is read again and
// compared.
namespace Repository::Documents {

namespace {

// Whether a file has the entries, of which groups may have values.
bool holds(const YamlFile& file, const std::vector<YamlWanted>& entries)
{
    return std::all_of(entries.begin(), entries.end(), [&](const YamlWanted& entry) {
        const NodeId id = file.find(entry.path);
        if (id == noNode || entry.value->type == Type::Group)
            return id != noNode;
        const NodeId valueNode = file.valueNodeOf(id);
        return valueNode != noNode && isSame(file.read(valueNode), *entry.value);
    });
}

std::vector<YamlWanted> wantedAt(std::string_view path, const std::vector<Entry>& entries)
{
    std::vector<YamlWanted> wanted;
    wanted.reserve(entries.size() + 1);
    for (const Entry& entry : entries)
        wanted.push_back({entry.path.empty() ? std::string(path) : joinPath(path, entry.path), &entry.value});
    return wanted;
}

} // namespace

void YamlDocument::settle()
{
    if (!file->isEdited())
        return;
    auto fresh = std::make_unique<YamlFile>(file->writeText(), file->encoding);
    if (fresh->readText().ok())
        file = std::move(fresh);
}

Outcome YamlDocument::commit(const YamlEditor& editor, Kind kind, NodeId node,
                             const std::function<bool(const YamlFile&)>& isAsWanted)
{
    for (const YamlEditor::Edit& edit : editor.getSortedEdits()) {
        const std::string error = file->encoding.findRefusal(edit.text);
        if (!error.empty())
            return refused(error);
    }
    std::string text = editor.apply();
    if (!file->encoding.mayBegin(text))
        return refused("the file would begin like one in another encoding");
    auto fresh = std::make_unique<YamlFile>(std::move(text), file->encoding);
    const Outcome outcome = fresh->readText();
    if (!outcome.ok())
        return refused("the file would not be YAML any more: " + outcome.error);
    YamlGuard guard(*file, *fresh, editor);
    if (kind == Kind::Renaming)
        guard.allowRenaming(node);
    if (kind == Kind::Removal)
        guard.allowRemoval(node);
    std::string fault = guard.findFault();
    if (fault.empty() && kind == Kind::Moving && !guard.keepsMoved())
        fault = "moved, YAML would read it differently";
    if (fault.empty() && isAsWanted && !isAsWanted(*fresh))
        fault = "YAML would read it as something else there";
    if (!fault.empty())
        return refused(fault);
    fresh->lineEnd = file->lineEnd;
    file = std::move(fresh);
    return {};
}

// Whether the shape of a collection, or a node as a whole, may be changed.
Outcome YamlDocument::checkShape(std::string_view path, NodeId id, bool isGone) const
{
    const YamlTree& tree = file->tree;
    const YamlNode& node = tree.node(id);
    const std::string_view text = tree.getOriginal();
    if (node.isShared || (node.isAlias && !isGone))
        return outcomeAt(text, node.isAlias ? node.value : node.begin,
                         quoted(path) +
                             " is what an alias shows; change what that leads to, or give the alias a "
                             "value of its own");
    const NodeId copied = tree.findCopied(isGone ? node.parent : id);
    if (copied != noNode) {
        Outcome place = outcomeAt(text, tree.findAliasOf(copied));
        place.error = quoted(path) + " is also shown by an alias, at line " + std::to_string(place.line) +
                      "; replace the alias by a value of its own first";
        return place;
    }
    const NodeId used = isGone ? tree.findUsed(id) : noNode;
    if (used == noNode)
        return {};
    Outcome place = outcomeAt(text, tree.findAliasOf(used));
    place.error = "an anchor in " + quoted(path) + " is used at line " + std::to_string(place.line);
    return place;
}

Outcome YamlDocument::insert(std::string_view path, const Value& value)
{
    YamlBranch branch;
    branch.value = value.type == Type::Group ? nullptr : &value;
    return insertBranch(path, std::move(branch), {{std::string(path), &value}});
}

Outcome YamlDocument::insertAll(std::string_view path, const std::vector<Entry>& entries, std::size_t& index)
{
    index = 0;
    YamlBranch branch;
    const std::string error = growYamlBranch(entries, branch);
    if (error.empty() && insertBranch(path, std::move(branch), wantedAt(path, entries)).ok())
        return {};
    return Document::insertAll(path, entries, index);
}

Outcome YamlDocument::insertBranch(std::string_view path, YamlBranch branch, std::vector<YamlWanted> expected)
{
    settle();
    const YamlTree& tree = file->tree;
    const PathMatch place = file->match(path);
    if (!place.isPath)
        return refused(quoted(path) + " is not a path: its parts between the dots must not be empty");
    const NodeId parent = place.node;
    Value own; // of the entry below which it comes
    YamlEditor editor(*file);
    Outcome outcome = checkShape(path, parent, false);
    if (!outcome.ok())
        return outcome;
    const auto wanted = [&](const YamlFile& fresh) { return holds(fresh, expected); };
    if (tree.node(parent).style == YamlStyle::Stream && tree.node(parent).kind == YamlKind::Sequence)
        return refused("a file of several documents can get no other one here");
    if (place.missing.empty()) {
        const bool isWhole = path.empty() && tree.node(parent).count == 0 && !branch.value &&
                             tree.node(parent).style == YamlStyle::Block;
        const bool isMap = tree.node(parent).kind == YamlKind::Map && file->valueNodeOf(parent) == noNode;
        if (isWhole)
            outcome = editor.fill(parent, branch);
        else if (!isMap || !branch.value || !branch.children.empty())
            return refused(tree.node(parent).isSequence() && branch.value && branch.children.empty()
                               ? quoted(path) + " is an array, which cannot have a value of its own"
                               : "there is already an entry " + quoted(path));
        else if (tree.findKey(parent, yamlOwnValueKey) != noNode)
            return refused("a group is in the member \"#value\", where the value of its own would go");
        branch.key = yamlOwnValueKey;
        if (!isWhole)
            outcome = editor.insertMember(parent, branch);
        return outcome.ok() ? commit(editor, Kind::Insertion, noNode, wanted) : outcome;
    }
    std::string error;
    const bool isInArray = tree.node(parent).kind == YamlKind::Sequence;
    for (std::size_t i = place.missing.size(); i-- > 0;) {
        branch.key = i == 0 && isInArray ? std::string() : yamlKeyOf(place.missing[i], error);
        if (i == 0)
            break;
        YamlBranch above;
        above.children.push_back(std::move(branch));
        branch = std::move(above);
    }
    if (!error.empty())
        return refused(error);
    const std::uint32_t count = tree.node(parent).count;
    if (isInArray && place.missing.front() != std::to_string(count))
        return refused(quoted(place.missing.front()) +
                       " cannot be added to an array, whose next element is " + std::to_string(count));
    if (tree.node(parent).isLeaf()) {
        if (tree.node(parent).kind == YamlKind::Merge || tree.node(parent).isAlias)
            return refused(quoted(path) + " would lie below an alias");
        own = file->read(parent);
        if (own.type == Type::Null && !tree.node(parent).isTagged && tree.node(parent).tag == Type::Group) {
            YamlBranch whole; // in the place of what is nothing
            whole.children.push_back(std::move(branch));
            outcome = tree.node(parent).lacksColon && !file->isInFlow(parent)
                          ? refused("its key has no \":\", after which its entries would come")
                          : editor.replaceValue(parent, whole);
            return outcome.ok() ? commit(editor, Kind::Insertion, noNode, wanted) : outcome;
        }
        expected.push_back({file->pathOf(parent), &own});
        outcome = editor.wrap(parent, branch);
    } else {
        outcome =
            isInArray ? editor.insertElement(parent, count, branch) : editor.insertMember(parent, branch);
    }
    return outcome.ok() ? commit(editor, Kind::Insertion, noNode, wanted) : outcome;
}

Outcome YamlDocument::replaceAll(std::string_view path, const std::vector<Entry>& entries, std::size_t& index)
{
    settle();
    index = 0;
    const NodeId id = path.empty() ? noNode : file->find(path);
    YamlBranch branch;
    if (id != noNode && checkShape(path, id, true).ok() && growYamlBranch(entries, branch).empty()) {
        YamlEditor editor(*file);
        const auto wanted = [&](const YamlFile& fresh) { return holds(fresh, wantedAt(path, entries)); };
        if (editor.replaceValue(id, branch).ok() && commit(editor, Kind::Insertion, noNode, wanted).ok())
            return {};
    }
    return Document::replaceAll(path, entries, index);
}

std::optional<Outcome> YamlDocument::insertElement(std::string_view path, const std::vector<Entry>& entries)
{
    settle();
    const PathEnds ends = splitLast(path);
    const auto position = readIndex(ends.last);
    const NodeId array = path.empty() || !position ? noNode : file->find(ends.parent);
    if (array == noNode || !file->tree.node(array).isSequence())
        return {};
    Outcome outcome = checkShape(path, array, false);
    if (!outcome.ok())
        return outcome;
    const std::size_t count = file->tree.node(array).count;
    if (*position > count)
        return beyondEnd(path, count);
    YamlBranch branch;
    const std::string error = growYamlBranch(entries, branch);
    if (!error.empty() || file->tree.node(array).style == YamlStyle::Stream)
        return refused(error.empty() ? "a file of several documents can get no other one here" : error);
    YamlEditor editor(*file);
    outcome = editor.insertElement(array, *position, branch);
    return outcome.ok() ? commit(editor) : outcome;
}

std::optional<Outcome> YamlDocument::moveElement(std::string_view path, std::string_view newPath)
{
    settle();
    const PathEnds from = splitLast(path);
    const PathEnds to = splitLast(newPath);
    const auto oldPosition = readIndex(from.last);
    const auto newPosition = readIndex(to.last);
    const NodeId array = from.parent == to.parent && !path.empty() ? file->find(from.parent) : noNode;
    if (array == noNode || !oldPosition || !newPosition || !file->tree.node(array).isSequence())
        return {};
    const std::size_t count = file->tree.node(array).count;
    if (*oldPosition >= count)
        return {};
    if (*newPosition >= count)
        return beyondEnd(newPath, count - 1);
    if (*oldPosition == *newPosition)
        return Outcome();
    Outcome outcome = checkShape(path, array, false);
    if (outcome.ok())
        outcome = checkShape(path, file->tree.elementAt(array, *oldPosition), true);
    if (outcome.ok() && file->tree.node(array).style == YamlStyle::Stream)
        outcome = refused("documents cannot change places");
    YamlEditor editor(*file);
    if (outcome.ok())
        outcome = editor.moveElement(array, *oldPosition, *newPosition);
    return outcome.ok() ? commit(editor, Kind::Moving) : outcome;
}

Outcome YamlDocument::remove(std::string_view path, bool withComments)
{
    if (path.empty())
        return refused("the whole document cannot be removed");
    settle();
    const NodeId id = file->findElement(path);
    if (id == noNode)
        return refused("there is no entry " + quoted(path));
    const Outcome outcome = checkShape(path, id, true);
    if (!outcome.ok())
        return outcome;
    const NodeId parent = file->tree.node(id).parent;
    if (file->tree.node(parent).style == YamlStyle::Stream)
        return refused("a document cannot be removed here");
    YamlEditor editor(*file);
    editor.remove(id, withComments);
    return commit(editor, Kind::Removal, id);
}

std::optional<Outcome> YamlDocument::rename(std::string_view path, std::string_view name)
{
    settle();
    const YamlTree& tree = file->tree;
    const NodeId id = path.empty() ? noNode : file->find(path);
    const NodeId parent = id == noNode ? noNode : tree.node(id).parent;
    if (parent == noNode || tree.node(parent).kind != YamlKind::Map || splitNumber(name).number > 1)
        return {};
    std::string error;
    const std::string key = yamlKeyOf(name, error);
    if (!error.empty())
        return refused(error);
    const Outcome outcome = checkShape(path, parent, false);
    if (!outcome.ok())
        return outcome;
    const NodeId other = tree.findKey(parent, key);
    if (other == id)
        return Outcome();
    if (other != noNode)
        return refused("there is already an entry " + quoted(joinPath(splitLast(path).parent, name)));
    if (tree.node(id).keyStyle > YamlStyle::Double || tree.node(id).kind == YamlKind::Merge)
        return refused("the key of " + quoted(path) + " is not a plain text, so that it keeps its name");
    if (tree.ordinalOf(id) > 1 || removalMovesSiblings(path))
        return refused("its map has the key of " + quoted(path) + " more than once");
    YamlEditor editor(*file);
    editor.replaceKey(id, key);
    const std::string renamed = joinPath(splitLast(path).parent, name);
    return commit(editor, Kind::Renaming, id,
                  [&](const YamlFile& fresh) { return fresh.find(renamed) != noNode; });
}

std::optional<Excerpt> YamlDocument::excerpt(std::string_view path) const
{
    if (file->isEdited()) {
        YamlDocument settled;
        return settled.parse(getBytes()).ok() ? settled.excerpt(path) : std::nullopt;
    }
    const NodeId id = path.empty() ? noNode : file->find(path);
    return id == noNode ? std::nullopt : YamlLayout(*file).excerptOf(id);
}

bool YamlDocument::hasComments(std::string_view path) const
{
    if (file->isEdited()) {
        YamlDocument settled;
        return settled.parse(getBytes()).ok() && settled.hasComments(path);
    }
    const NodeId id = path.empty() ? noNode : file->findElement(path);
    return id != noNode && YamlLayout(*file).hasComments(id);
}

bool YamlDocument::insertExcerpt(std::string_view path, const Excerpt& excerpt)
{
    settle();
    const PathMatch place = file->match(path);
    if (!place.isPath || place.missing.size() != 1 || excerpt.names.empty())
        return false;
    const NodeId parent = place.node;
    const YamlNode& node = file->tree.node(parent);
    std::string error;
    const std::string key = yamlKeyOf(place.missing.front(), error);
    if (!error.empty() || node.kind != YamlKind::Map || !checkShape(path, parent, false).ok())
        return false;
    const auto [begin, end] = excerpt.names.front();
    const std::string name =
        spellYamlKey(key, std::string_view(excerpt.text).substr(begin, end - begin), node.isFlow());
    YamlEditor editor(*file);
    Outcome outcome;
    if (node.isFlow()) {
        const auto indentation = YamlLayout(*file).itemIndentation(parent);
        const std::string text = excerptText(excerpt, name, indentation.value_or(std::string()));
        const bool isOneLine = text.find_first_of("\r\n") == std::string::npos;
        const bool fits = excerpt.above.empty() && excerpt.after.empty() && (isOneLine || indentation);
        outcome = fits ? editor.insertItem(parent, withLineEnds(text, excerpt, file->lineEnd))
                       : refused("it does not fit");
    } else {
        const std::string indentation(node.count == 0 ? 0 : YamlLayout(*file).columnOf(parent), ' ');
        std::string text = indentedLines(excerpt.above, excerpt.indentation, indentation) + indentation;
        text += excerptText(excerpt, name, indentation) + excerpt.after;
        text = withLineEnds(text, excerpt, file->lineEnd);
        outcome = editor.insertLines(parent, text + file->lineEnd);
    }
    return outcome.ok() && commit(editor, Kind::Insertion, noNode, [&](const YamlFile& fresh) {
                               return fresh.find(path) != noNode;
                           }).ok();
}

} // namespace Repository::Documents
