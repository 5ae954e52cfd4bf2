#pragma once

#include "host/Utilities/ModelViews/monitor/WatchedAttribute.h"

#include <QStringList>

#include <vector>

namespace Utilities::ModelViews {

// The watched attributes in the order of their rows. GUI thread.
class WatchedRows
{
public:
    using Attributes = WatchedAttributeInbox::Attributes;

    int size() const { return int(attributes.size()); }
    WatchedAttribute& at(int row) const { return *attributes[std::size_t(row)]; }
    QStringList paths() const;
    int rowOf(WatchedAttribute& attribute) const; // -1 when it is none any more

    void insert(int row, const Attributes& added);
    Attributes take(int row, int count);
    void rotate(int row, int count, int destination);

    // Gathers the rows, which are in ascending order, before the one that is the destination now. Gives, by
    // row before, the row after.
    std::vector<int> gather(const std::vector<int>& moved, int destination);

private:
    void number() const;

    Attributes attributes;
    mutable bool isNumbered = true; // each attribute knows its row
};

} // namespace Utilities::ModelViews
