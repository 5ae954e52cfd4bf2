#include "host/Utilities/ModelViews/AttributeTreeItem.h"

#include <algorithm>
#include <iterator>

namespace Utilities::ModelViews {

namespace {

constexpr size_t fewChildren = 16; // so many are compared one by one
constexpr quint32 serialLimit = 1U << 30U;

} // namespace

AttributeTreeItem::AttributeTreeItem(AttributeTreeItem* parentItem, quint32 ownSerial,
                                     const QString& fullPath, bool hidesNothing)
    : parent(parentItem), path(fullPath), serial(ownSerial), complete(hidesNothing)
{
}

int AttributeTreeItem::row() const
{
    return parent ? parent->rowOfSerial(serial) : -1;
}

QString AttributeTreeItem::childPath(const QString& name) const
{
    return path.isEmpty() ? name : path + QLatin1Char('.') + name;
}

int AttributeTreeItem::rowOf(const QString& name) const
{
    if (children.size() <= fewChildren) {
        const auto found = std::find_if(children.begin(), children.end(),
                                        [&name](const Child& child) { return child.name == name; });
        return found == children.end() ? -1 : int(found - children.begin());
    }
    if (!serials) {
        serials = std::make_unique<SerialsByName>(children.size(), NameHash{this}, SameName{this});
        for (const Child& child : children)
            serials->insert(quint32(child.serial));
    }
    const auto found = serials->find(name);
    return found == serials->end() ? -1 : rowOfSerial(*found);
}

int AttributeTreeItem::rowOfSerial(quint32 wanted) const
{
    // Without gaps the row is known; otherwise it lies before that place.
    const size_t guess = wanted - children.front().serial;
    if (guess < children.size() && children[guess].serial == wanted)
        return int(guess);
    const auto end = children.begin() + std::ptrdiff_t(std::min(guess, children.size()));
    const auto found = std::lower_bound(children.begin(), end, wanted, [](const Child& child, quint32 value) {
        return child.serial < value;
    });
    return int(found - children.begin());
}

void AttributeTreeItem::insert(int row, const QVector<ChildInformation>& information)
{
    std::vector<Child> added(static_cast<size_t>(information.size()));
    for (size_t i = 0; i < added.size(); ++i) {
        added[i].name = information.at(int(i)).name;
        added[i].count = information.at(int(i)).childCount;
        added[i].serial = (nextSerial + quint32(i)) % serialLimit;
        added[i].shown = 0;
        added[i].due = 0;
    }
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
    if (last - first + 1 == size())
        serials.reset();
    for (int row = first; serials && row <= last; ++row)
        serials->erase(quint32(child(row).serial));
    children.erase(children.begin() + first, children.begin() + last + 1);
}

void AttributeTreeItem::renumber()
{
    serials.reset();
    nextSerial = 0;
    for (Child& child : children) {
        child.serial = nextSerial++ % serialLimit;
        if (child.item)
            child.item->serial = child.serial;
    }
}

} // namespace Utilities::ModelViews
