#pragma once

#include "host/HostExport.h"

#include <QAbstractTableModel>
#include <QStringList>

#include <functional>
#include <memory>

namespace Utilities::ModelViews {

// The table of watched attributes: a row for each path, in the order in which the person put them. Rows
// follow their attributes by themselves, whatever thread writes, with at most one change signalled per frame
// and less when showing them takes long. A path that names no attribute yet, and every path without a
// repository, is a grey row that comes alive with its attribute. GUI thread; may be destroyed while other
// threads write.
//
// Rows are added by dropping items of the attribute tree, or text with a path a line. What has children
// stands for the attributes there and below. A drop adds no attribute twice and none that is watched already;
// it inserts at the row that it points to, at the end otherwise. Rows dragged onto their own table are moved.
// All drags and drops are copies (Qt::CopyAction): nothing is ever taken out of where it came from.
class VANTRY_HOST_EXPORT AdvancedAttributeModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { NameColumn, ValueColumn, TypeColumn, LastChangeColumn, PathColumn, ColumnCount };

    explicit AdvancedAttributeModel(QObject* parent = nullptr);
    ~AdvancedAttributeModel() override;

    // The watched paths, in row order.
    QStringList getAttributeFullPathList() const;

    // Replaces the rows by these, in this order; a path that comes twice gives two rows. Empty paths give no
    // row, and carriage returns at a path's end are not taken for a part of it.
    void loadCustomAttributeList(const QStringList& paths);

    // Asked before a drop adds more than 500 attributes, with their number; false leaves all as it is.
    // Without it they are added. It is asked when control is back in the event loop, so that it may show a
    // dialog: view, model and drag may go while that is open.
    void setLargeDropConfirmation(std::function<bool(int attributes)> confirm);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    // The edit role of the value column gives the value itself, invalid when it cannot be read.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    // Never editable. Drops go between rows only, so that a view points to the nearest gap.
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    bool removeRows(int row, int count, const QModelIndex& parent = {}) override;
    bool moveRows(const QModelIndex& sourceParent, int sourceRow, int count,
                  const QModelIndex& destinationParent, int destinationChild) override;

    Qt::DropActions supportedDropActions() const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                         const QModelIndex& parent) const override;
    // False when nothing was to be added or moved. A large drop is taken, and asked about later.
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Utilities::ModelViews
