#include "repository/documents/yaml/YamlGuard.h"

#include "repository/documents/yaml/YamlTokens.h"

#include <algorithm>

namespace Repository::Documents {

YamlGuard::YamlGuard(const YamlFile& formerFile, const YamlFile& editedFile, const YamlEditor& editor)
    : YamlGuard(formerFile, {noNode, formerFile.tree.getRoot()}, editedFile,
                {noNode, editedFile.tree.getRoot()}, editor)
{
}

YamlGuard::YamlGuard(const YamlFile& formerFile, const YamlTree::Run& formerRun, const YamlFile& editedFile,
                     const YamlTree::Run& editedRun, const YamlEditor& editor)
    : former(formerFile), edited(editedFile), formerPart(formerRun), editedPart(editedRun),
      changed(editor.getChanged())
{
    std::size_t shift = editedPart.begin - formerPart.begin; // which may wrap around
    for (const YamlEditor::Edit& edit : editor.getSortedEdits()) {
        if (edit.end > edit.begin)
            removed.push_back({edit.begin, edit.end});
        if (!edit.text.empty())
            inserted.push_back({edit.begin + shift, edit.begin + shift + edit.text.size()});
        shift += edit.text.size() - (edit.end - edit.begin);
    }
}

bool YamlGuard::Cursor::isHidden() const
{
    const YamlNode& node = file.tree.node(id);
    if (node.isShared || node.parent == noNode)
        return false;
    const std::size_t begin = node.hasKey ? std::min(node.key, node.begin) : node.begin;
    return std::any_of(hidden.begin(), hidden.end(), [&](const Range& range) {
        return range.begin <= begin && node.valueEnd <= range.end && begin < range.end;
    });
}

void YamlGuard::Cursor::advance(bool goesIn)
{
    const YamlTree& tree = file.tree;
    if (goesIn && tree.node(id).first != noNode) {
        id = tree.node(id).first;
        ++depth;
        return;
    }
    while (depth > 0 && tree.node(id).next == noNode) {
        id = tree.node(id).parent;
        --depth;
    }
    id = tree.node(id).next;
    if (depth == 0 && id == end)
        id = noNode;
}

void YamlGuard::Cursor::skipHidden()
{
    while (id != noNode && (isCopy() || isHidden()))
        advance(false);
}

bool YamlGuard::isSameContent(NodeId before, NodeId after) const
{
    const YamlNode& old = former.tree.node(before);
    const YamlNode& now = edited.tree.node(after);
    if (old.isAlias && now.isAlias)
        return former.tree.text(old.begin, old.valueEnd) == edited.tree.text(now.begin, now.valueEnd) &&
               showsSame(before, after);
    if (old.kind != now.kind && !(old.isSequence() && now.isSequence()))
        return false;
    if (old.isAlias != now.isAlias || old.tag != now.tag || old.isTagged != now.isTagged ||
        former.tree.text(old.begin, old.value) != edited.tree.text(now.begin, now.value))
        return false;
    if (old.kind != YamlKind::Scalar && old.kind != YamlKind::Merge)
        return true;
    const std::string_view text = former.tree.valueText(before);
    return text == edited.tree.valueText(after) &&
           (!old.isBlockScalar() || Documents::isSame(former.read(before), edited.read(after)));
}

// Of aliases, whose targets are compared by themselves: an anchor of the same name may have come in between.
bool YamlGuard::showsSame(NodeId before, NodeId after) const
{
    const YamlTree::Origin origin = former.tree.originOf(before);
    const auto target = counterparts.find(origin.node);
    if (!origin.isKey && target != counterparts.end() && edited.tree.originOf(after).node != target->second)
        return false;
    const bool isValue = origin.node != noNode && origin.node != changed && !origin.isKey &&
                         former.tree.node(before).isLeaf() && edited.tree.node(after).isLeaf();
    return !isValue || Documents::isSame(former.read(before), edited.read(after));
}

bool YamlGuard::isSame(NodeId before, NodeId after) const
{
    const YamlNode& old = former.tree.node(before);
    const YamlNode& now = edited.tree.node(after);
    std::string oldKey;
    std::string nowKey;
    if (old.hasKey != now.hasKey)
        return false;
    if (old.hasKey && before != renamed &&
        former.tree.keyText(before, oldKey) != edited.tree.keyText(after, nowKey))
        return false;
    return before == changed || isSameContent(before, after);
}

std::string YamlGuard::nameOf(NodeId id) const
{
    if (id == noNode)
        return Reason::tr("its end");
    std::string buffer;
    const std::size_t at =
        former.tree.node(id).hasKey ? former.tree.node(id).key : former.tree.node(id).begin;
    const Outcome place = outcomeAt(former.tree.getOriginal(), at);
    return Reason::tr("line %1", {std::to_string(place.line)});
}

// Whether it is what is removed, or holds nothing else.
bool YamlGuard::goes(NodeId id) const
{
    NodeId each = removable;
    while (each != id) {
        const NodeId parent = former.tree.node(each).parent;
        if (parent == noNode || former.tree.node(parent).count != 1)
            return false;
        each = parent;
    }
    return true;
}

// Whether it was an element or a document without a text, whose whole text is new then.
bool YamlGuard::isFilled(NodeId id) const
{
    const YamlNode& node = former.tree.node(id);
    return id == changed && !node.hasKey && node.parent != noNode && node.begin == node.valueEnd;
}

std::string YamlGuard::findFault()
{
    if (removable != noNode && !Cursor{former, removed, removable, noNode}.isHidden())
        return Reason::tr("YAML would still read it there");
    Cursor before = atFormer();
    Cursor after = atEdited();
    while (true) {
        for (; before.id != noNode && (before.isCopy() || before.isHidden() || isFilled(before.id));
             before.advance(false)) {
            if (!before.isCopy() && removable != noNode && !goes(before.id))
                return Reason::tr("with it, the entry at %1 would go", {nameOf(before.id)});
        }
        after.skipHidden();
        if (before.id == noNode && after.id == noNode)
            return {};
        const bool isPair = before.id != noNode && after.id != noNode && before.depth == after.depth;
        if (!isPair || !isSame(before.id, after.id))
            return Reason::tr("with it, YAML would read other entries differently, from %1 on",
                              {nameOf(before.id)});
        if (former.tree.node(before.id).isUsed)
            counterparts[before.id] = after.id;
        const bool goesIn = before.id != changed;
        before.advance(goesIn);
        after.advance(goesIn);
    }
}

// Whether a merge names an anchor that is given several times, so that elsewhere it may be another one.
bool YamlGuard::mayMergeOther(NodeId id) const
{
    constexpr std::string_view ends = " \t\r\n,[]{}";
    const std::string_view text = former.tree.getOriginal();
    const bool isMerge = former.tree.node(id).kind == YamlKind::Merge;
    const std::string_view spelled = isMerge ? former.tree.readValueText(id) : std::string_view();
    for (std::size_t at = spelled.find('*'); at < spelled.size(); at = spelled.find('*', at + 1)) {
        const std::string_view name = spelled.substr(at + 1, spelled.find_first_of(ends, at) - at - 1);
        const std::string anchor = '&' + std::string(name);
        int count = 0;
        for (std::size_t found = text.find(anchor); found < text.size();
             found = text.find(anchor, found + 1)) {
            const std::size_t end = found + anchor.size();
            count += end == text.size() || ends.find(text[end]) < ends.size() ? 1 : 0;
        }
        if (count > 1)
            return true;
    }
    return false;
}

bool YamlGuard::keepsMoved() const
{
    const auto collect = [](Cursor cursor) {
        std::vector<std::vector<NodeId>> groups; // each with what is in it
        bool isWithin = false;
        std::size_t top = 0;
        while (cursor.id != noNode) {
            isWithin = isWithin && cursor.depth > top;
            if (!isWithin && cursor.isHidden()) {
                isWithin = true;
                top = cursor.depth;
                groups.emplace_back();
            }
            if (isWithin && !cursor.isCopy())
                groups.back().push_back(cursor.id);
            cursor.advance(true);
        }
        return groups;
    };
    const auto isSameGroup = [this](const std::vector<NodeId>& a, const std::vector<NodeId>& b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(), [this](NodeId before, NodeId after) {
            return isSame(before, after) && !mayMergeOther(before);
        });
    };
    auto before = collect(atFormer());
    const auto after = collect(atEdited());
    const auto isOrder = [&] {
        return std::equal(before.begin(), before.end(), after.begin(), after.end(), isSameGroup);
    };
    if (before.size() < 2)
        return isOrder();
    std::rotate(before.begin(), before.begin() + 1, before.end()); // where all between were written, too
    if (isOrder())
        return true;
    std::rotate(before.begin(), before.end() - 2, before.end());
    return isOrder();
}

} // namespace Repository::Documents
