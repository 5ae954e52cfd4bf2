#pragma once

#include <QAbstractTableModel>
#include <QStringList>

namespace Widgets {

// The elements of a list, numbered, as rows that can be edited; one that is too long for that says so in its
// tool tip.
class ListModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { NumberColumn, TextColumn, ColumnCount };

    explicit ListModel(const QStringList& elements, QObject* parent = nullptr);

    const QStringList& getElements() const { return elements; }
    void replace(const QStringList& texts);
    void append(const QString& element);
    void removeLast(); // of at least one

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    QStringList elements;
};

} // namespace Widgets
