#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/HostExport.h"

#include <QAbstractItemModel>
#include <QStringList>

#include <memory>

namespace Utilities::ModelViews {

// The attributes of the repository as a tree with the columns name and value. It is empty until resetModel is
// called and from then on follows the repository by itself, whatever thread changes it. A node's children are
// listed when they are first asked for. GUI thread.
class VANTRY_HOST_EXPORT AttributeTreeViewModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column { NameColumn, ValueColumn, ColumnCount };
    // The full path (QString); whether it is a root (bool); the name as people know it (QString): that of a
    // file or folder as it is on the disk, where the path has it encoded.
    enum Role { PathRole = Qt::UserRole, BackendRootRole, ReadableNameRole };

    explicit AttributeTreeViewModel(QObject* parent = nullptr);
    ~AttributeTreeViewModel() override;

    // Shows what the search path asks for: without "*" that node and all below it; with "*" every node whose
    // full path matches, what is below it, and the ancestors that lead there; the empty path is everything.
    // With the path that is shown already only what differs changes.
    void resetModel(const QString& searchPath);

    // Names and paths of the backends' roots, by which they are marked.
    void setLstBackendName(const QStringList& names);
    void setLstBackendPath(const QStringList& paths);

    // The item of a path if the tree shows it, listing the nodes that lead to it; otherwise invalid.
    QModelIndex indexFromPath(const QString& path, int column = NameColumn) const;
    QString pathFromIndex(const QModelIndex& index) const;

    // The names of all children in the order of their rows, listing them, without an index of each.
    QStringList childNames(const QModelIndex& parent) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

    // Searches for whole names, in the whole tree too, and for their beginnings are answered without making
    // an index of every row.
    QModelIndexList match(const QModelIndex& start, int role, const QVariant& value, int hits = 1,
                          Qt::MatchFlags flags = Qt::MatchFlags(Qt::MatchStartsWith |
                                                                Qt::MatchWrap)) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;

signals:
    // The set of backends has changed, so that the page must read the tree again. At most once a turn of the
    // event loop, and not while a popup, a modal dialog or an editor in the tree is open.
    void refreshAttributeTree();

    // Emitted by whoever wants to lead a person to what the page's search leaves out: the page is to show
    // everything.
    void showAllRequested();

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace Utilities::ModelViews
