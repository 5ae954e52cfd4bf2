#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "host/Utilities/ModelViews/monitor/WatchedAttributeCells.h"
#include "host/Utilities/ModelViews/monitor/WatchedAttributeLights.h"
#include "host/Utilities/ModelViews/monitor/WatchedAttributeUpdates.h"
#include "host/Utilities/ModelViews/monitor/WatchedAttributeWatches.h"
#include "host/Utilities/ModelViews/monitor/WatchedRows.h"
#include "host/Utilities/ModelViews/monitor/WatchedRowsDrag.h"

#include <functional>
#include <memory>

namespace Utilities::ModelViews {

// Makes the model's signals of what happens to its rows.
class AdvancedAttributeModel::Private
{
public:
    using Attributes = WatchedRows::Attributes;

    explicit Private(AdvancedAttributeModel& model);
    ~Private() { watches.endAll(rows.take(0, rows.size())); }

    void replace(const QStringList& paths);
    void insert(int row, const QStringList& paths);
    void remove(int row, int count);

    bool dropRows(const QMimeData& data, int destination);
    bool dropPaths(const QMimeData& data, int destination);

    WatchedRows rows;
    WatchedAttributeCells cells;
    WatchedRowsDrag drag;
    std::function<bool(int)> confirmLargeDrop;

private:
    void takeRepository();
    QStringList addedBy(const QStringList& paths) const;
    void askAndInsert(const QStringList& paths, int attributes, const QPersistentModelIndex& place);
    void insertRows(int row, const QStringList& paths);
    void showChanges(const Attributes& changed);
    void announce(const Attributes& changed, const QVector<int>& roles = {}); // all without any

    AdvancedAttributeModel& model;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    WatchedAttributeUpdates updates;
    WatchedAttributeWatches watches;
    WatchedAttributeLights lights;
};

} // namespace Utilities::ModelViews
