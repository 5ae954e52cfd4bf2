#include "host/Utilities/ModelViews/monitor/WatchedRows.h"

#include <algorithm>
#include <functional>
#include <iterator>

namespace Utilities::ModelViews {

QStringList WatchedRows::paths() const
{
    QStringList paths;
    paths.reserve(size());
    for (const auto& attribute : attributes)
        paths.append(attribute->path);
    return paths;
}

int WatchedRows::rowOf(WatchedAttribute& attribute) const
{
    if (attribute.row >= 0)
        number();
    return attribute.row;
}

void WatchedRows::number() const
{
    for (int row = 0; !isNumbered && row < size(); ++row)
        at(row).row = row;
    isNumbered = true;
}

void WatchedRows::insert(int row, const Attributes& added)
{
    for (const auto& attribute : added)
        attribute->row = 0; // some row, until they are numbered
    attributes.insert(attributes.begin() + row, added.begin(), added.end());
    isNumbered = false;
}

WatchedRows::Attributes WatchedRows::take(int row, int count)
{
    const auto first = attributes.begin() + row;
    Attributes taken(std::make_move_iterator(first), std::make_move_iterator(first + count));
    attributes.erase(first, first + count);
    for (const auto& attribute : taken)
        attribute->row = -1;
    isNumbered = false;
    return taken;
}

void WatchedRows::rotate(int row, int count, int destination)
{
    const auto first = attributes.begin() + row;
    if (destination < row)
        std::rotate(attributes.begin() + destination, first, first + count);
    else
        std::rotate(first, first + count, attributes.begin() + destination);
    isNumbered = false;
}

std::vector<int> WatchedRows::gather(const std::vector<int>& moved, int destination)
{
    const Attributes before = attributes;
    const auto isMoved = [&](const std::shared_ptr<WatchedAttribute>& attribute) {
        return std::binary_search(moved.begin(), moved.end(), attribute->row);
    };
    number();
    const auto middle = attributes.begin() + destination;
    std::stable_partition(attributes.begin(), middle, std::not_fn(isMoved));
    std::stable_partition(middle, attributes.end(), isMoved);
    isNumbered = false;
    std::vector<int> after;
    after.reserve(before.size());
    for (const auto& attribute : before)
        after.push_back(rowOf(*attribute));
    return after;
}

} // namespace Utilities::ModelViews
