#include "host/Utilities/ModelViews/tree/AttributeTreeRowEditor.h"

#include <QSet>

#include <algorithm>

namespace Utilities::ModelViews {

namespace {

AttributeTreeNode nodeOf(const AttributeTreeItem& item)
{
    return {item.getParent(), item.row()};
}

} // namespace

void AttributeTreeRowEditor::remove(AttributeTreeItem& item, const QStringList& names)
{
    std::vector<int> rows;
    for (const QString& name : names)
        rows.push_back(item.rowOf(name));
    std::sort(rows.begin(), rows.end());
    removeRows(item, rows);
}

void AttributeTreeRowEditor::removeRows(AttributeTreeItem& item, const std::vector<int>& ascending)
{
    for (auto next = ascending.rbegin(); next != ascending.rend();) {
        const int last = *next;
        int first = last;
        for (++next; next != ascending.rend() && *next == first - 1; ++next)
            --first;
        remove(item, first, last);
    }
}

void AttributeTreeRowEditor::arrange(AttributeTreeItem& item, const QVector<ChildInformation>& wanted)
{
    const int shorter = std::min(item.size(), wanted.size());
    int row = 0;
    while (row < shorter && item.child(row).name == wanted.at(row).name)
        ++row;
    int after = 0; // so many agree at the end
    while (after < shorter - row &&
           item.child(item.size() - 1 - after).name == wanted.at(wanted.size() - 1 - after).name)
        ++after;
    const int end = wanted.size() - after;
    const int oldEnd = item.size() - after;
    if (row < oldEnd) {
        removeUnwanted(item, row, oldEnd, wanted.mid(row, end - row));
        order(item, wanted);
    }
    while (row < end) {
        const bool isThere = row < item.size() - after;
        int next = row;
        while (next < end && !(isThere && item.child(row).name == wanted.at(next).name))
            ++next;
        if (next > row)
            insert(item, row, wanted.mid(row, next - row));
        row = next + 1;
    }
}

// All rows are wanted; some that are wanted may be missing.
void AttributeTreeRowEditor::order(AttributeTreeItem& item, const QVector<ChildInformation>& wanted)
{
    std::vector<int> rows(size_t(item.size()));
    int now = 0;
    bool isOrdered = true;
    for (const ChildInformation& child : wanted) {
        const int row =
            now < item.size() && item.child(now).name == child.name ? now : item.rowOf(child.name);
        if (row < 0)
            continue;
        isOrdered = isOrdered && row == now;
        rows[size_t(row)] = now++;
    }
    if (isOrdered)
        return;
    const AttributeTreeNode node = nodeOf(item);
    listener.beginReorder(node);
    item.reorder(rows);
    listener.endReorder(node, item, rows);
}

void AttributeTreeRowEditor::removeUnwanted(AttributeTreeItem& item, int begin, int end,
                                            const QVector<ChildInformation>& wanted)
{
    // As a rule the wanted ones that are there follow each other as they shall.
    std::vector<int> rows;
    int matched = 0;
    for (int row = begin; row < end; ++row) {
        if (matched < wanted.size() && item.child(row).name == wanted.at(matched).name)
            ++matched;
        else
            rows.push_back(row);
    }
    QSet<QString> others;
    for (int i = matched; i < wanted.size(); ++i)
        others.insert(wanted.at(i).name);
    const auto isWanted = [&](int row) { return others.contains(item.child(row).name); };
    rows.erase(std::remove_if(rows.begin(), rows.end(), isWanted), rows.end());
    removeRows(item, rows);
}

void AttributeTreeRowEditor::insert(AttributeTreeItem& item, int row,
                                    const QVector<ChildInformation>& children)
{
    listener.beginInsert(nodeOf(item), row, row + children.size() - 1);
    item.insert(row, children);
    listener.endInsert();
}

void AttributeTreeRowEditor::remove(AttributeTreeItem& item, int first, int last)
{
    listener.beginRemove(nodeOf(item), first, last);
    item.remove(first, last);
    listener.endRemove();
}

} // namespace Utilities::ModelViews
