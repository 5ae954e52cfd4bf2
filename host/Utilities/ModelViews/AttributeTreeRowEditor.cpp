#include "host/Utilities/ModelViews/AttributeTreeRowEditor.h"

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
    while (!rows.empty()) {
        const int last = rows.back();
        int first = last;
        for (rows.pop_back(); !rows.empty() && rows.back() == first - 1; rows.pop_back())
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
    const auto isMissing = [&](int place) { return item.rowOf(wanted.at(place).name) < 0; };

    removeUnwanted(item, row, item.size() - after, wanted.mid(row, end - row));
    while (row < end) {
        if (row < item.size() && item.child(row).name == wanted.at(row).name) {
            ++row;
        } else if (!isMissing(row)) {
            remove(item, row, row); // out of order; it comes again at its place
        } else {
            int next = row + 1;
            while (next < end && isMissing(next))
                ++next;
            insert(item, row, wanted.mid(row, next - row));
            row = next;
        }
    }
}

void AttributeTreeRowEditor::removeUnwanted(AttributeTreeItem& item, int begin, int end,
                                            const QVector<ChildInformation>& wanted)
{
    QSet<QString> names;
    for (const ChildInformation& child : wanted)
        names.insert(child.name);
    const auto isWanted = [&](int row) { return names.contains(item.child(row).name); };
    int last = end - 1;
    while (last >= begin) {
        int first = last;
        if (!isWanted(last)) {
            while (first > begin && !isWanted(first - 1))
                --first;
            remove(item, first, last);
        }
        last = first - 1;
    }
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
