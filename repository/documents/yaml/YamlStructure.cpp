#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/common/TextLine.h"
#include "repository/documents/yaml/YamlDocument.h"
#include "repository/documents/yaml/YamlDocuments.h"
#include "repository/documents/yaml/YamlEditor.h"
#include "repository/documents/yaml/YamlGuard.h"
#include "repository/documents/yaml/YamlLinks.h"
#include "repository/documents/yaml/YamlReread.h"
#include "repository/documents/yaml/YamlTokens.h"
#include "repository/documents/yaml/YamlValues.h"

#include <algorithm>

// The part of a document that changes its shape: each change edits the text, which is read again and
// compared.
namespace Repository::Documents {

namespace {

constexpr const char* otherwiseRead =
    QT_TRANSLATE_NOOP("FrameworkCore::Values", "YAML would read it as something else there");

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

// One value alone is read again with what is around it.
void YamlDocument::settle()
{
    if (!file->isEdited())
        return;
    const std::vector<NodeId> edited = file->editedNodes();
    if (edited.size() == 1 && settleValue(edited.front()))
        return;
    auto fresh = std::make_unique<YamlFile>(file->writeText(), file->encoding);
    if (fresh->readText().ok())
        file = std::move(fresh);
}

bool YamlDocument::settleValue(NodeId id)
{
    const std::string text(file->tree.valueText(id));
    YamlValues values(*file);
    values.restore(id);
    file->tree.takeValue(id);
    YamlEditor editor(*file);
    editor.replaceText(id, text);
    editor.noteChanged(id);
    const auto settled = rereadPart(editor, Kind::Insertion, noNode, {}); // proved when it was put there
    if (!settled)
        values.putText(id, text);
    return settled.has_value();
}

Outcome YamlDocument::commit(const YamlEditor& editor, Kind kind, NodeId node,
                             const std::function<bool(const YamlFile&)>& isAsWanted)
{
    for (const YamlEditor::Edit& edit : editor.getSortedEdits()) {
        const std::string error = file->encoding.findRefusal(edit.text);
        if (!error.empty())
            return refused(error);
    }
    const auto isProved = [&](const YamlFile& changed) {
        return (!isSmall() || isReadAlike()) && (!isAsWanted || isAsWanted(changed));
    };
    if (const auto reread = rereadPart(editor, kind, node, isProved))
        return *reread;
    std::string text = editor.apply();
    if (!file->encoding.mayBegin(text))
        return refused(Reason::tr("the file would begin like one in another encoding"));
    auto fresh = std::make_unique<YamlFile>(std::move(text), file->encoding);
    const Outcome outcome = fresh->readText();
    if (!outcome.ok())
        return refused(Reason::tr("the file would not be YAML any more: %1", {outcome.error}));
    YamlGuard guard(*file, *fresh, editor);
    if (kind == Kind::Renaming)
        guard.allowRenaming(node);
    if (kind == Kind::Removal)
        guard.allowRemoval(node);
    std::string fault = guard.findFault();
    if (fault.empty() && kind == Kind::Moving && !guard.keepsMoved())
        fault = Reason::tr("moved, YAML would read it differently");
    if (fault.empty() && isAsWanted && !isAsWanted(*fresh))
        fault = Reason::tr(otherwiseRead);
    if (!fault.empty())
        return refused(fault);
    fresh->lineEnd = file->lineEnd;
    file = std::move(fresh);
    return {};
}

// The same without reading what is far from the edits; nothing where all must be read.
std::optional<Outcome> YamlDocument::rereadPart(const YamlEditor& editor, Kind kind, NodeId node,
                                                const std::function<bool(const YamlFile&)>& isAsWanted)
{
    YamlReread reread(*file, editor);
    while (reread.read()) {
        YamlGuard guard(*file, reread.getFormer(), reread.getPartFile(), reread.getPart(), editor);
        if (kind == Kind::Renaming)
            guard.allowRenaming(node);
        if (kind == Kind::Removal)
            guard.allowRemoval(node);
        if (!guard.findFault().empty() || (kind == Kind::Moving && !guard.keepsMoved()))
            continue;
        reread.install();
        if (!isAsWanted || isAsWanted(*file))
            return Outcome();
        auto former = std::make_unique<YamlFile>(reread.formerText(), file->encoding);
        former->readText();
        former->lineEnd = file->lineEnd;
        file = std::move(former);
        return refused(Reason::tr(otherwiseRead));
    }
    return {};
}

// Whether the shape of a collection, or a node as a whole, may be changed.
Outcome YamlDocument::checkShape(std::string_view path, NodeId id, bool isGone) const
{
    const YamlTree& tree = file->tree;
    const YamlNode& node = tree.node(id);
    if (node.isShared || (node.isAlias && !isGone))
        return YamlLinks(*file).explainCopy(path, id);
    const bool isDocument = node.parent != noNode && tree.node(node.parent).style == YamlStyle::Stream;
    const NodeId used = isGone && !isDocument ? tree.findUsed(id) : noNode;
    if (used == noNode)
        return {};
    Outcome place = outcomeAt(tree.getOriginal(), tree.findAliasOf(used));
    place.error = Reason::tr(
        "an anchor in %1 is used at line %2; remove what uses it, or give that a value of its own, first",
        {quoted(path), std::to_string(place.line)});
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
    PathMatch place = file->match(path);
    if (!place.isPath)
        return refused(
            Reason::tr("%1 is not a path: its parts between the dots must not be empty", {quoted(path)}));
    // What is inherited gives way to an entry of the map's own; not so in what another map merges.
    if (place.missing.empty() && tree.node(place.node).isInherited && !tree.isInMerge(place.node)) {
        place.node = tree.node(place.node).parent;
        place.missing.push_back(splitLast(path).last);
    }
    const NodeId parent = place.node;
    Value own; // of the entry below which it comes
    YamlEditor editor(*file);
    Outcome outcome = checkShape(path, parent, false);
    if (!outcome.ok())
        return outcome;
    const auto wanted = [&](const YamlFile& fresh) { return holds(fresh, expected); };
    if (place.missing.empty()) {
        const bool isWhole = path.empty() && tree.node(parent).count == 0 && !branch.value &&
                             tree.node(parent).style == YamlStyle::Block;
        const bool isMap = tree.node(parent).kind == YamlKind::Map && file->valueNodeOf(parent) == noNode;
        if (isWhole)
            outcome = editor.fill(parent, branch);
        else if (!isMap || !branch.value || !branch.children.empty())
            return refused(
                tree.node(parent).isSequence() && branch.value && branch.children.empty()
                    ? Reason::tr("%1 is an array, which cannot have a value of its own", {quoted(path)})
                    : Reason::tr("there is already an entry %1", {quoted(path)}));
        else if (tree.findKey(parent, yamlOwnValueKey) != noNode)
            return refused(
                Reason::tr("a group is in the member \"#value\", where the value of its own would go"));
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
        return refused(Reason::tr("%1 cannot be added to an array, whose next element is %2",
                                  {quoted(place.missing.front()), std::to_string(count)}));
    if (tree.node(parent).isLeaf()) {
        if (tree.node(parent).kind == YamlKind::Merge || tree.node(parent).isAlias)
            return refused(Reason::tr("%1 would lie below an alias", {quoted(path)}));
        own = file->read(parent);
        if (own.type == Type::Null && !tree.node(parent).isTagged && tree.node(parent).tag == Type::Group) {
            YamlBranch whole; // in the place of what is nothing
            whole.children.push_back(std::move(branch));
            outcome = tree.node(parent).lacksColon && !file->isInFlow(parent)
                          ? refused(Reason::tr("its key has no \":\", after which its entries would come"))
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
    if (id != noNode && file->tree.node(id).isInherited)
        return insertAll(path, entries, index);
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
    if (!error.empty())
        return refused(error);
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
    YamlEditor editor(*file);
    if (outcome.ok())
        outcome = editor.moveElement(array, *oldPosition, *newPosition);
    return outcome.ok() ? commit(editor, Kind::Moving) : outcome;
}

Outcome YamlDocument::remove(std::string_view path, bool withComments)
{
    if (path.empty())
        return refused(Reason::tr("the whole document cannot be removed"));
    settle();
    const NodeId id = file->findElement(path);
    if (id == noNode)
        return refused(Reason::tr("there is no entry %1", {quoted(path)}));
    const Outcome outcome = checkShape(path, id, true);
    if (!outcome.ok())
        return outcome;
    const NodeId parent = file->tree.node(id).parent;
    if (file->tree.node(parent).style == YamlStyle::Stream && file->tree.node(parent).count == 2)
        return refused(Reason::tr(
            "of two documents none can be removed, since the paths of all entries would change, which in a "
            "file of one document do not begin with its number; edit the text instead"));
    if (withComments && isOneOfSeveral(id) && YamlDocuments(*file).hasCommentsBehind(id))
        return refused(
            Reason::tr("the comments after it have no place where it is to go, and would be lost; copy "
                       "it, and remove it here"));
    YamlEditor editor(*file);
    editor.remove(id, withComments ? YamlEditor::Comments::All : YamlEditor::Comments::FurtherIn);
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
    const std::string key = yamlKeyOf(name, error, tree.text(tree.node(id).key, tree.node(id).keyEnd));
    if (!error.empty())
        return refused(error);
    Outcome outcome = checkShape(path, parent, false);
    if (outcome.ok() && tree.node(id).isInherited)
        outcome = YamlLinks(*file).explainCopy(path, id);
    if (!outcome.ok())
        return outcome;
    const NodeId other = tree.findKey(parent, key);
    if (other == id)
        return Outcome();
    if (other != noNode)
        return refused(
            Reason::tr("there is already an entry %1", {quoted(joinPath(splitLast(path).parent, name))}));
    if (tree.node(id).keyStyle > YamlStyle::Double || tree.node(id).kind == YamlKind::Merge)
        return refused(
            Reason::tr("the key of %1 is not a plain text, so that it keeps its name", {quoted(path)}));
    if (tree.ordinalOf(id) > 1 || removalMovesSiblings(path))
        return refused(Reason::tr("its map has the key of %1 more than once", {quoted(path)}));
    YamlEditor editor(*file);
    editor.replaceKey(id, key);
    const std::string renamed = joinPath(splitLast(path).parent, name);
    return commit(editor, Kind::Renaming, id,
                  [&](const YamlFile& fresh) { return fresh.find(renamed) != noNode; });
}

} // namespace Repository::Documents
