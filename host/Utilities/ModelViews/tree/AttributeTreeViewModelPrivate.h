#pragma once

#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "host/Utilities/ModelViews/tree/AttributeTreeCells.h"
#include "host/Utilities/ModelViews/tree/AttributeTreeChanges.h"
#include "host/Utilities/ModelViews/tree/AttributeTreeContents.h"
#include "host/Utilities/UnsavedBackends.h"
#include "host/Utilities/UnsavedPaths.h"

#include <memory>
#include <utility>
#include <vector>

namespace Utilities::ModelViews {

// Ties the parts together: the contents' rows become the model's signals, and the repository's changes are
// followed. While it signals changes nothing else may change, so what is asked for then waits for a later
// turn.
class AttributeTreeViewModel::Private : public AttributeTreeRowListener
{
public:
    explicit Private(AttributeTreeViewModel& model);

    void reset(const QString& searchPath);
    void announceCells(const QSet<QString>& paths);

    QModelIndex indexOf(const AttributeTreeNode& node, int column) const;
    static AttributeTreeNode nodeOf(const QModelIndex& index);

    void beginInsert(const AttributeTreeNode& parent, int first, int last) override
    {
        model.beginInsertRows(indexOf(parent, NameColumn), first, last);
    }
    void endInsert() override { model.endInsertRows(); }
    void beginRemove(const AttributeTreeNode& parent, int first, int last) override
    {
        model.beginRemoveRows(indexOf(parent, NameColumn), first, last);
    }
    void endRemove() override { model.endRemoveRows(); }
    void beginReorder(const AttributeTreeNode& parent) override
    {
        emit model.layoutAboutToBeChanged({indexOf(parent, NameColumn)});
    }
    void endReorder(const AttributeTreeNode& parent, AttributeTreeItem& item,
                    const std::vector<int>& rows) override;
    void foundStale() override { changes.requestBatch(); }

    AttributeTreeCells cells;
    std::unique_ptr<AttributeTreeContents> contents; // none before the first reset
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;

private:
    using Cell = std::pair<AttributeTreeItem*, int>; // of a row

    bool takeRepository();
    void resetFrom(const QString& searchPath);
    void deliver(const AttributeTreeBatch& batch);
    void announceBatch(const AttributeTreeBatch& batch);
    void markDue(const AttributeTreeNode& node);
    void announceRows(std::vector<Cell>& rows);
    void announceDue();
    void announce(AttributeTreeItem& item, int first, int last);
    void backendsChanged();
    void followRoots();
    void followStates();
    void followUnsaved();
    void refreshSoon();
    bool isPersonBusy() const;

    AttributeTreeViewModel& model;
    QString shownPath;
    AttributeTreeChanges changes;
    AttributeTreeChanges backendWatch;
    AttributeTreeChanges stateWatch;
    std::unique_ptr<UnsavedBackends> unsaved; // none before there is a repository
    std::unique_ptr<UnsavedPaths> unsavedPaths;
    QSet<QString> followedBackends; // whose roots are in the contents already
    bool anyDue = false;
    bool busy = false;
    bool refreshWaits = false;
};

} // namespace Utilities::ModelViews
