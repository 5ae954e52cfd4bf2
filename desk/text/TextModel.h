#pragma once

#include "desk/text/TextRows.h"

#include <QAbstractTableModel>

namespace Vantry {

// The rows of a text, with their line numbers. GUI thread.
class TextModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { LineColumn, TextColumn };

    using QAbstractTableModel::QAbstractTableModel;

    void setRows(std::shared_ptr<const TextRows> textRows);
    const TextRows* getRows() const { return rows.get(); } // null before there are some

    // The attribute whose value is marked.
    void mark(const QString& path);
    const TextRows::TextSpan* getMarked() const { return marked; } // null for none

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return TextColumn + 1; }
    QVariant data(const QModelIndex& index, int role) const override;

private:
    std::shared_ptr<const TextRows> rows;
    const TextRows::TextSpan* marked = nullptr; // of the rows
};

} // namespace Vantry
