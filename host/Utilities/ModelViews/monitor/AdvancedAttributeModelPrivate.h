#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "host/Utilities/ModelViews/monitor/WatchedAttributeCells.h"
#include "host/Utilities/ModelViews/monitor/WatchedAttributeUpdates.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>
#include <QUuid>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace Utilities::ModelViews {

// The rows, and what keeps them up to date.
class AdvancedAttributeModel::Private : public QObject
{
public:
    using Rows = WatchedAttributeInbox::Attributes;

    explicit Private(AdvancedAttributeModel& model);
    ~Private() override;

    void replace(const QStringList& paths);
    void insert(int row, const QStringList& paths);
    void remove(int row, int count);
    void reorder(const std::vector<int>& moved, int destination);
    void rotate(int row, int count, int destination);

    bool dropRows(const QMimeData& data, int destination);
    bool dropPaths(const QMimeData& data, int destination);

    Rows rows;
    WatchedAttributeCells cells;
    std::function<bool(int)> confirmLargeDrop;
    // Names this table in what is dragged out of it, so that it knows its own rows.
    const QByteArray identity = QUuid::createUuid().toByteArray();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void takeRepository();
    QStringList missing(const QStringList& paths) const;
    void askAndInsert(const QStringList& paths, int attributes, const QPersistentModelIndex& place);
    Rows makeRows(const QStringList& paths);
    void serveWatches();
    void beginWatches(int most);
    void endWatches(int most);
    void retire(Rows::iterator first, Rows::iterator last);
    void number();
    void showChanges(const Rows& changed);
    void light(const std::shared_ptr<WatchedAttribute>& attribute);
    void endLights();
    void announce(std::vector<int> changedRows, const QVector<int>& roles = {}); // of all without any

    AdvancedAttributeModel& model;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    WatchedAttributeUpdates updates;
    bool isNumbered = true; // each row's attribute knows its place

    std::deque<std::shared_ptr<WatchedAttribute>> unwatched; // rows whose watch waits for its turn to begin
    Rows retired;                                            // no rows any more; their watch waits to end
    QBasicTimer watchTimer;

    Rows lit;
    QElapsedTimer clock;
    QBasicTimer lightTimer;
};

} // namespace Utilities::ModelViews
