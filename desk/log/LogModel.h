#pragma once

#include "host/Shared/Logging/LogRecord.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <QVector>

#include <deque>

namespace Vantry {

// Log lines as a table, the oldest first. It keeps as many as the process's record does. GUI thread.
class LogModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { TimeColumn, TypeColumn, CategoryColumn, TextColumn, ColumnCount };
    // Of every cell: the line's type as a number, and the whole line as plain text.
    enum Role { LineTypeRole = Qt::UserRole, PlainTextRole };

    using QAbstractTableModel::QAbstractTableModel;

    void addLines(const QVector<Shared::Logging::LogLine>& lines);
    void clear() { dropOldest(rowCount()); }

    // What people call a type of lines.
    static QString nameOf(Shared::Logging::LogMessageType type);
    static QIcon iconOf(Shared::Logging::LogMessageType type);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

signals:
    // Around each addition, which may drop the oldest lines.
    void linesAboutToBeAdded();
    void linesAdded();

private:
    void dropOldest(int count);

    std::deque<Shared::Logging::LogLine> lines;
};

} // namespace Vantry
