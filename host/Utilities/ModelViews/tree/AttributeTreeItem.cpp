#include "host/Utilities/ModelViews/tree/AttributeTreeItem.h"

#include "host/FrameworkCore/AppConfig/AttributePath.h"

#include <algorithm>
#include <iterator>

namespace Utilities::ModelViews {

constexpr int fewChildren = 16; // so many are compared one by one
constexpr quint32 serialLimit = 1U << 30U;

AttributeTreeItem::AttributeTreeItem(AttributeTreeItem* parentItem, quint32 ownSerial,
                                     const QString& fullPath, bool hidesNothing)
    : parent(parentItem), path(fullPath), serial(ownSerial), complete(hidesNothing)
{
}

QString AttributeTreeItem::childPath(const QString& name) const
{
    return FrameworkCore::AppConfig::joinedPath(path, name);
}

int AttributeTreeItem::rowOf(const QString& name) const
{
    if (size() <= fewChildren) {
        int row = size() - 1;
        while (row >= 0 && child(row).name != name)
            --row;
        return row;
    }
    if (!serials) {
        serials = std::make_unique<SerialsByName>(size_t(size()), NameHash{this}, SameName{this});
        for (int row = 0; row < size(); ++row)
            serials->insert(quint32(child(row).serial));
    }
    const auto found = serials->find(name);
    return found == serials->end() ? -1 : rowOfSerial(*found);
}

int AttributeTreeItem::rowOfSerial(quint32 wanted) const
{
    // Where nothing has been removed the row is known; otherwise it lies before that place.
    const quint32 guess = wanted - child(0).serial;
    if (guess < quint32(size()) && child(int(guess)).serial == wanted)
        return int(guess);
    int first = 0;
    int end = int(std::min(guess, quint32(size())));
    while (first < end) {
        const int middle = first + (end - first) / 2;
        if (child(middle).serial < wanted)
            first = middle + 1;
        else
            end = middle;
    }
    return first;
}

void AttributeTreeItem::insert(int row, const QVector<ChildInformation>& information)
{
    std::vector<Child> added(static_cast<size_t>(information.size()));
    for (size_t i = 0; i < added.size(); ++i) {
        added[i].name = information.at(int(i)).name;
        added[i].count = information.at(int(i)).childCount;
        added[i].serial = (nextSerial + quint32(i)) % serialLimit;
    }
    closeGap();
    const bool atEnd = row == size() && nextSerial + added.size() < serialLimit;
    const quint32 firstSerial = nextSerial;
    nextSerial += quint32(added.size());
    if (children.empty())
        children.swap(added);
    else
        children.insert(children.begin() + row, std::make_move_iterator(added.begin()),
                        std::make_move_iterator(added.end()));
    if (!atEnd) {
        renumber();
    } else if (serials) {
        for (quint32 number = firstSerial; number < nextSerial; ++number)
            serials->insert(number);
    }
}

void AttributeTreeItem::remove(int first, int last)
{
    for (int row = first; serials && row <= last; ++row)
        serials->erase(quint32(child(row).serial));
    moveGapTo(std::clamp(gapBegin, first, last + 1));
    for (int row = first; row <= last; ++row)
        child(row) = Child();
    gapBegin = first;
    gapSize += last - first + 1;
    if (gapSize > size())
        closeGap();
}

void AttributeTreeItem::reorder(const std::vector<int>& rows)
{
    closeGap();
    std::vector<Child> ordered(children.size());
    for (size_t before = 0; before < rows.size(); ++before)
        ordered[size_t(rows[before])] = std::move(children[before]);
    children.swap(ordered);
    renumber();
}

void AttributeTreeItem::moveGapTo(int row)
{
    const auto begin = children.begin();
    if (gapSize > 0 && row > gapBegin)
        std::move(begin + gapBegin + gapSize, begin + row + gapSize, begin + gapBegin);
    else if (gapSize > 0)
        std::move_backward(begin + row, begin + gapBegin, begin + gapBegin + gapSize);
    gapBegin = row;
}

void AttributeTreeItem::closeGap()
{
    moveGapTo(size());
    children.resize(size_t(size()));
    gapBegin = gapSize = 0;
}

void AttributeTreeItem::renumber()
{
    serials.reset();
    nextSerial = 0;
    for (Child& child : children) { // without a gap
        child.serial = nextSerial++ % serialLimit;
        if (child.item)
            child.item->serial = child.serial;
    }
}

} // namespace Utilities::ModelViews
