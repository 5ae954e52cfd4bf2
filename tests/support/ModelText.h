#pragma once

#include <QAbstractItemModel>
#include <QStringList>

namespace TestSupport {

// The model below an index as lines, two blanks of indent a level: "name", or "name = value" when the second
// column shows something. With a depth only so many levels are looked at.
QStringList modelText(const QAbstractItemModel& model, const QModelIndex& parent = {}, int depth = -1);

// The text of the first lines that differ; empty when there are none.
QString firstDifference(const QStringList& actual, const QStringList& expected);

} // namespace TestSupport
