#include "repository/documents/yaml/YamlDocument.h"

#include "repository/documents/common/ArrayGroups.h"
#include "repository/documents/common/SpanEncoder.h"
#include "repository/documents/common/SyntaxVisit.h"
#include "repository/documents/common/TextParse.h"
#include "repository/documents/common/TypeTag.h"
#include "repository/documents/yaml/YamlEditor.h"
#include "repository/documents/yaml/YamlLinks.h"
#include "repository/documents/yaml/YamlList.h"
#include "repository/documents/yaml/YamlTokens.h"
#include "repository/documents/yaml/YamlValues.h"

#include <algorithm>

namespace Repository::Documents {

std::unique_ptr<YamlFile> YamlDocument::makeEmpty()
{
    auto empty = std::make_unique<YamlFile>(std::string(), TextEncoding());
    empty->readText();
    return empty;
}

Outcome YamlDocument::parse(std::string bytes)
{
    return parseText(std::move(bytes), "yaml", [this](std::string text, const TextEncoding& encoding) {
        auto fresh = std::make_unique<YamlFile>(std::move(text), encoding);
        const Outcome outcome = fresh->readText();
        if (outcome.ok())
            file = std::move(fresh);
        return outcome;
    });
}

void YamlDocument::visit(const std::function<void(const Entry&)>& visitor) const
{
    visitEntries(*file, visitor);
}

Outcome YamlDocument::set(std::string_view path, const Value& value)
{
    NodeId valueNode = noNode;
    Outcome outcome = findSettable(*file, path, value, valueNode);
    if (!outcome.ok())
        return outcome;
    const Value present = file->read(valueNode);
    if (isSame(present, value))
        return {};
    // One of its own takes the place of all that has its key: the entries of a group, and repeated ones.
    const bool isOnlyOne =
        splitNumber(splitLast(path).last).number == 1 && file->find(joinNumber(path, 2)) == noNode;
    if (file->tree.node(valueNode).isInherited && isOnlyOne && !file->tree.isInMerge(valueNode))
        return insert(path, value);
    YamlValues values(*file);
    if (value.type == Type::StringList && values.hasLinkedElements(valueNode))
        return setElements(path, value);
    outcome = values.check(path, valueNode);
    if (!outcome.ok())
        return outcome;
    const Type formerTag = file->tree.node(valueNode).tag;
    if (values.wasRead(valueNode, value))
        return restore(path, valueNode);
    const auto plain = values.spell(valueNode, value, Type::Group);
    const Type tag =
        tagWith(value, present.type, formerTag, plain, [&](std::string_view spelling, Type type) {
            return file->readAs(valueNode, spelling, type);
        });
    const auto spelled = tag == Type::Group ? plain : values.spell(valueNode, value, tag);
    if (!spelled)
        return refused(explainNoForm(valueNode, value));
    outcome = values.checkKind(path, valueNode, *spelled);
    if (outcome.ok())
        outcome.error = file->encoding.findRefusal(*spelled);
    if (!outcome.ok())
        return outcome;
    const YamlLinks links(*file);
    if (tag != formerTag || links.reshapesLists(valueNode, *spelled) || links.isShownThrough(valueNode))
        return rewrite(path, *spelled, tag);
    return put(valueNode, *spelled);
}

// To the spelling that was read.
Outcome YamlDocument::restore(std::string_view path, NodeId valueNode)
{
    YamlValues values(*file);
    const std::string spelling(file->tree.readValueText(valueNode));
    const Outcome outcome = values.checkKind(path, valueNode, spelling);
    if (!outcome.ok())
        return outcome;
    if (YamlLinks(*file).reshapesLists(valueNode, spelling))
        return rewrite(path, spelling, file->tree.node(valueNode).tag);
    values.restore(valueNode);
    return {};
}

// The elements of a list of which some are aliases or have some, so that each is read in the file.
Outcome YamlDocument::setElements(std::string_view path, const Value& value)
{
    settle();
    const NodeId list = file->findValueNode(path);
    const auto& texts = std::get<std::vector<std::string>>(value.data);
    const auto former = std::get<std::vector<std::string>>(file->read(list).data);
    if (!std::all_of(texts.begin(), texts.end(), [](const auto& text) { return isUtf8(text); }))
        return refused(explainNoForm(list, value));
    Outcome outcome = checkShape(path, list, false);
    const bool areSeveral = former.size() > texts.size() + 1;
    const std::size_t comment =
        areSeveral ? findCommentOfYamlElements(file->tree, list, former, texts) : std::string::npos;
    if (outcome.ok() && comment != std::string::npos)
        return outcomeAt(file->tree.getOriginal(), comment,
                         Reason::tr("this comment is between elements that would go; remove them one by one "
                                    "instead"));
    YamlEditor editor(*file);
    if (outcome.ok())
        outcome = editYamlList(editor, *file, list, former, texts);
    return outcome.ok() ? commit(editor, Kind::Insertion, noNode,
                                 [&](const YamlFile& fresh) {
                                     const NodeId now = fresh.findValueNode(path);
                                     return now != noNode && isSame(fresh.read(now), value);
                                 })
                        : outcome;
}

std::string YamlDocument::explainNoForm(NodeId valueNode, const Value& value) const
{
    const YamlNode& node = file->tree.node(valueNode);
    if (node.isTagged && value.type != Type::String)
        return Reason::tr("its tag, %1, says what it is, so that it stays a text",
                          {std::string(file->tree.text(node.begin, node.value))});
    if (value.type == Type::String || value.type == Type::StringList)
        return node.kind == YamlKind::List
                   ? Reason::tr("the list cannot be written without losing a comment in it")
                   : Reason::tr("the text is not valid UTF-8, which YAML demands");
    return Reason::tr("YAML has no form for %1, and no comment above this entry tags its type",
                      {describeType(value.type)});
}

// What is around a value may make something else of it, or of what follows.
Outcome YamlDocument::put(NodeId valueNode, const std::string& spelling)
{
    YamlValues values(*file);
    const bool wasEdited = file->tree.isEdited(valueNode);
    const std::string former(file->bareText(valueNode));
    values.put(valueNode, spelling);
    if ((!file->isDelicate(valueNode) && !isSmall()) || isReadAlike())
        return {};
    if (wasEdited)
        values.put(valueNode, former);
    else
        values.restore(valueNode);
    return refused(Reason::tr("YAML would read something else there, because of what is around it"));
}

// Whether all of it is read in about the time that a part takes, so that each edit is proved by that.
bool YamlDocument::isSmall() const
{
    constexpr std::size_t small = 16384;
    return file->tree.getOriginal().size() <= small;
}

// Whether the text with the edits so far has the entries that they should make.
bool YamlDocument::isReadAlike() const
{
    YamlFile fresh(file->writeText(), file->encoding);
    if (!fresh.readText().ok())
        return false;
    using Entries = std::vector<std::pair<std::string, Value>>;
    const auto entriesOf = [](const YamlFile& shown) {
        Entries entries;
        walkEntries(shown, [&](const std::string& path, NodeId, NodeId valueNode) {
            entries.emplace_back(path, valueNode == noNode ? Value() : shown.read(valueNode));
        });
        return entries;
    };
    const Entries wanted = entriesOf(*file);
    const Entries read = entriesOf(fresh);
    return std::equal(
        wanted.begin(), wanted.end(), read.begin(), read.end(),
        [](const auto& a, const auto& b) { return a.first == b.first && isSame(a.second, b.second); });
}

// Reads the text with another value, since more than that changes. The comment that tags its type is on the
// line above the entry.
Outcome YamlDocument::rewrite(std::string_view path, const std::string& spelling, Type tag)
{
    settle();
    const NodeId id = file->findValueNode(path);
    const std::string_view text = file->tree.getOriginal();
    const YamlNode& node = file->tree.node(id);
    const std::size_t line = findYamlLine(text, node.hasKey ? node.key : node.begin);
    const std::size_t above = endOfYamlContent(text, line);
    const std::size_t begin = findYamlLine(text, above);
    YamlEditor editor(*file);
    if (tag != node.tag)
        editor.replace(begin, line,
                       tag == Type::Group ? std::string()
                                          : renameTypeTag(text.substr(begin, line - begin), tag));
    editor.replaceText(id, YamlValues(*file).withLead(id, spelling));
    editor.noteChanged(id);
    const Value value = file->readAs(id, spelling, tag);
    return commit(editor, Kind::Insertion, noNode, [&](const YamlFile& fresh) {
        const NodeId changed = fresh.findValueNode(path);
        return changed != noNode && fresh.tree.node(changed).tag == tag && isSame(fresh.read(changed), value);
    });
}

SiblingPlace YamlDocument::placeOf(std::string_view path) const
{
    const YamlTree& tree = file->tree;
    const NodeId id = path.empty() ? noNode : file->find(path);
    if (id == noNode)
        return {SiblingPlace::Kind::Last, {}};
    NodeId previous = tree.node(id).previous;
    if (previous != noNode && tree.isOwnValue(previous))
        previous = tree.node(previous).previous;
    if (previous == noNode)
        return {SiblingPlace::Kind::First, {}};
    const PathEnds ends = splitLast(path);
    std::string sibling(ends.parent);
    if (!sibling.empty())
        sibling += '.';
    const bool isElement = tree.node(tree.node(id).parent).isSequence();
    tree.appendName(sibling, previous, isElement ? *readIndex(ends.last) - 1 : 0);
    return {SiblingPlace::Kind::After, std::move(sibling)};
}

bool YamlDocument::removalMovesSiblings(std::string_view path) const
{
    const YamlTree& tree = file->tree;
    const NodeId id = path.empty() ? noNode : file->findElement(path);
    if (id == noNode) {
        const NodeId list = path.empty() ? noNode : file->find(splitLast(path).parent);
        return list != noNode && tree.isEdited(list) && file->isArray(list);
    }
    const YamlNode& parent = tree.node(tree.node(id).parent);
    if (parent.isSequence())
        return tree.node(id).next != noNode ||
               (parent.kind == YamlKind::Sequence && parent.nonTexts == (tree.node(id).isText ? 0U : 1U));
    std::string buffer;
    const std::string_view key = tree.keyText(id, buffer);
    return tree.findKey(tree.node(id).parent, key, tree.ordinalOf(id) + 1) != noNode;
}

std::optional<bool> YamlDocument::isArray(std::string_view path) const
{
    const NodeId id = file->find(path);
    return id != noNode && file->isArray(id);
}

Document::Origin YamlDocument::originOf(std::string_view path) const
{
    return YamlLinks(*file).originOf(path);
}

std::vector<std::string> YamlDocument::followersOf(std::string_view path) const
{
    return YamlLinks(*file).followersOf(path);
}

bool YamlDocument::isLinked(std::string_view path) const
{
    const bool isLinked = YamlLinks(*file).isLinked(path);
    const NodeId id = isLinked || path.empty() ? noNode : file->findValueNode(path);
    if (id == noNode)
        return isLinked;
    // Comments of a list may come below it, and a value that was nothing gets a blank.
    const std::string_view value = file->tree.valueText(id);
    return value.empty() ||
           (file->tree.node(id).kind == YamlKind::List && hasYamlComment(value, 0, value.size()));
}

std::string YamlDocument::sourceOf(std::string_view path) const
{
    return YamlLinks(*file).sourceOf(path);
}

std::optional<Value> YamlDocument::valueAt(std::string_view path) const
{
    const NodeId valueNode = file->findValueNode(path);
    return valueNode == noNode ? std::nullopt : std::optional(file->read(valueNode));
}

std::optional<Span> YamlDocument::locate(std::string_view path) const
{
    const NodeId entry = path.empty() ? file->find(path) : file->findElement(path);
    const NodeId valueNode = entry == noNode ? noNode : file->valueNodeOf(entry);
    return valueNode == noNode ? std::nullopt : std::optional(file->locate(valueNode));
}

void YamlDocument::visitSpans(const SpanVisitor& visitor) const
{
    if (file->isEdited()) {
        Document::visitSpans(visitor);
        return;
    }
    const YamlTree& tree = file->tree;
    SpanEncoder encoder(file->encoding, tree.getOriginal());
    walkEntries(*file, [&](const std::string& path, NodeId, NodeId valueNode) {
        if (valueNode == noNode)
            return;
        const YamlNode& node = tree.node(valueNode);
        if (node.isShared)
            visitor(path, file->locate(valueNode));
        else
            visitor(path, encoder.encode({node.value, node.valueEnd - std::size_t(node.value)}));
    });
}

std::string YamlDocument::comment(std::string_view path) const
{
    const NodeId id = path.empty() || file->isEdited() ? noNode : file->findElement(path);
    if (id == noNode)
        return {};
    const YamlTree::Origin origin = file->tree.originOf(id);
    const bool isCopy = file->tree.node(id).isShared && origin.node != noNode && !origin.isKey;
    return YamlLayout(*file).commentOf(isCopy ? origin.node : id);
}

std::optional<std::string> YamlDocument::spell(std::string_view path) const
{
    const NodeId valueNode = file->findValueNode(path);
    return valueNode == noNode ? std::nullopt : std::optional(std::string(file->bareText(valueNode)));
}

Outcome YamlDocument::respell(std::string_view path, std::string_view spelling)
{
    const NodeId valueNode = file->findValueNode(path);
    if (valueNode == noNode)
        return refused(Reason::tr("there is no value %1", {quoted(path)}));
    if (file->tree.valueText(valueNode) == spelling)
        return {};
    YamlValues values(*file);
    Outcome outcome = values.check(path, valueNode);
    if (!outcome.ok())
        return outcome;
    const bool isOriginal = file->tree.readValueText(valueNode) == spelling;
    if (!isOriginal && startsWith(spelling, "*"))
        return respellAlias(path, valueNode, spelling);
    if (!isOriginal && !values.isSpelling(valueNode, spelling))
        return refused(Reason::tr("%1 is not how YAML spells a value", {quoted(spelling)}));
    outcome = values.checkKind(path, valueNode, spelling);
    if (outcome.ok())
        outcome.error = file->encoding.findRefusal(spelling);
    if (!outcome.ok())
        return outcome;
    if (isOriginal)
        return restore(path, valueNode);
    if (YamlLinks(*file).reshapesLists(valueNode, spelling))
        return rewrite(path, std::string(spelling), file->tree.node(valueNode).tag);
    outcome = put(valueNode, std::string(spelling));
    const bool mayLink = spelling.find('*') != std::string_view::npos;
    return outcome.ok() || !mayLink ? outcome : respellLinked(path, spelling);
}

// A list with aliases, which are only read with their file.
Outcome YamlDocument::respellLinked(std::string_view path, std::string_view spelling)
{
    settle();
    const NodeId id = file->findValueNode(path);
    YamlEditor editor(*file);
    editor.replaceText(id, YamlValues(*file).withLead(id, std::string(spelling)));
    editor.noteChanged(id);
    return commit(editor, Kind::Insertion, noNode,
                  [&](const YamlFile& fresh) { return fresh.findValueNode(path) != noNode; });
}

// Where it shows the same value.
Outcome YamlDocument::respellAlias(std::string_view path, NodeId valueNode, std::string_view spelling)
{
    const Value value = file->read(valueNode);
    settle();
    const NodeId id = file->findValueNode(path);
    YamlEditor editor(*file);
    editor.replaceText(id, std::string(spelling));
    editor.noteChanged(id);
    return commit(editor, Kind::Insertion, noNode, [&](const YamlFile& fresh) {
        const NodeId alias = fresh.findValueNode(path);
        return alias != noNode && fresh.tree.node(alias).isAlias && isSame(fresh.read(alias), value);
    });
}

} // namespace Repository::Documents
