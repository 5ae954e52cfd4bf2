#pragma once

#include "host/FrameworkCore/AppConfig/TreeInterface.h"

#include <QString>
#include <QVector>

#include <memory>
#include <tsl/robin_set.h>
#include <vector>

namespace Utilities::ModelViews {

// The listed children of one node. A child is a small record in its parent's item and gets an item of its own
// when its children are listed, so that a million leaves cost a million records. Serial numbers rise along
// the rows; by them a child finds its row again when rows before it have gone.
class AttributeTreeItem
{
public:
    using ChildInformation = FrameworkCore::AppConfig::Interfaces::ChildInformation;

    struct Child
    {
        Child() : serial(0), shown(0), due(0) {}

        QString name;
        std::unique_ptr<AttributeTreeItem> item; // its listed children, if they are listed
        qint32 count = -1;                       // how many children it has, as reported; negative: unknown
        quint32 serial : 30;
        quint32 shown : 1; // its cells have been read since the last change was announced
        quint32 due : 1;   // a change is still to be announced
    };

    // complete: the filter hides nothing at or below this node.
    AttributeTreeItem(AttributeTreeItem* parent, quint32 serial, const QString& path, bool complete);
    Q_DISABLE_COPY(AttributeTreeItem) // its children point to it

    AttributeTreeItem* getParent() const { return parent; }
    const QString& getPath() const { return path; }
    bool isComplete() const { return complete; }
    int row() const { return parent ? parent->rowOfSerial(serial) : -1; } // in the parent; -1 for the top

    int size() const { return int(children.size()) - gapSize; }
    Child& child(int row) { return children[placeOf(row)]; }
    const Child& child(int row) const { return children[placeOf(row)]; }
    QString childPath(int row) const { return childPath(child(row).name); }
    QString childPath(const QString& name) const;
    int rowOf(const QString& name) const; // -1 when there is none

    void insert(int row, const QVector<ChildInformation>& added);
    void remove(int first, int last);
    void reorder(const std::vector<int>& rows); // by row before, the row after

private:
    // Finds children by their names without keeping the names again: the set holds serial numbers.
    struct NameHash
    {
        using is_transparent = void;
        const AttributeTreeItem* item;

        size_t operator()(quint32 child) const { return (*this)(item->nameOfSerial(child)); }
        size_t operator()(const QString& name) const { return qHash(name); }
    };
    struct SameName
    {
        using is_transparent = void;
        const AttributeTreeItem* item;

        bool operator()(quint32 a, quint32 b) const { return a == b; }
        bool operator()(quint32 a, const QString& b) const { return item->nameOfSerial(a) == b; }
        bool operator()(const QString& a, quint32 b) const { return item->nameOfSerial(b) == a; }
    };
    using SerialsByName = tsl::robin_set<quint32, NameHash, SameName, std::allocator<quint32>, true>;

    size_t placeOf(int row) const { return size_t(row < gapBegin ? row : row + gapSize); }
    void moveGapTo(int row);
    void closeGap();
    int rowOfSerial(quint32 wanted) const;
    const QString& nameOfSerial(quint32 wanted) const { return child(rowOfSerial(wanted)).name; }
    void renumber();

    AttributeTreeItem* parent; // not owned
    QString path;
    std::vector<Child> children; // with the gap that the last removal left
    int gapBegin = 0;            // removals in the order of rows move each child once
    int gapSize = 0;
    mutable std::unique_ptr<SerialsByName> serials; // made at the first search among many children
    quint32 nextSerial = 0;
    quint32 serial;
    bool complete;
};

} // namespace Utilities::ModelViews
