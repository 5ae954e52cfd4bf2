#pragma once

#include <QByteArray>
#include <QMimeData>
#include <QString>

#include <vector>

namespace Utilities::ModelViews {

// Rows of a table as they are dragged inside of it, beside the paths that others get.

QString watchedRowsMimeType();

// The identity is that of the table; the rows are in ascending order.
void addWatchedRows(QMimeData& data, const QByteArray& identity, const std::vector<int>& rows);

bool areWatchedRowsOf(const QMimeData& data, const QByteArray& identity);
std::vector<int> watchedRowsFrom(const QMimeData& data);

} // namespace Utilities::ModelViews
