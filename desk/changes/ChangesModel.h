#pragma once

#include "desk/changes/ChangedFile.h"

#include <QAbstractItemModel>

#include <vector>

namespace Vantry {

// The files with unsaved changes, and below each these: what the file holds, what it would hold, and of a
// conflict what both began with. Texts are made when they are shown. GUI thread.
class ChangesModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column { PathColumn, StateColumn, FileColumn, UnsavedColumn, BaseColumn };
    enum Role {
        PathRole = Qt::UserRole, // of a change the attribute's, of a file the backend's
        BackendRole,
        ConflictRole // whether it is one, or a file has one
    };

    using QAbstractItemModel::QAbstractItemModel;

    void setFiles(std::vector<ChangedFile> changedFiles);
    const std::vector<ChangedFile>& getFiles() const { return files; }

    QModelIndex find(const QString& path) const; // invalid when it is not there

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return BaseColumn + 1; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    using UnsavedChange = ChangedFile::UnsavedChange;

    static bool isFile(const QModelIndex& index) { return index.internalId() == 0; }
    const ChangedFile& fileOf(const QModelIndex& index) const;
    static QVariant fileData(const ChangedFile& file, int column, int role);
    static QVariant changeData(const ChangedFile& file, const UnsavedChange& change, int column, int role);
    static QString textOf(const ChangedFile& file, const UnsavedChange& change, int column);

    std::vector<ChangedFile> files;
};

} // namespace Vantry
