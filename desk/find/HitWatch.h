#pragma once

#include "host/Utilities/NotificationWrapper.h"

#include <QBasicTimer>
#include <QObject>

#include <map>
#include <memory>

class QTreeView;

namespace Vantry {

class HitModel;

// Has the rows of a list of hits that are in sight painted anew when the values of their attributes change.
// However many were found, it watches no others. GUI thread.
class HitWatch : public QObject
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // The model outlives it; the view owns it.
    HitWatch(std::shared_ptr<Repository> repository, HitModel& hits, QTreeView& view);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void watch(int row);

    const std::shared_ptr<Repository> repository;
    HitModel& hits;
    QTreeView& view;
    QBasicTimer painted;                                                     // runs out after a painting
    std::map<int, std::unique_ptr<Utilities::NotificationWrapper>> watchers; // by row
};

} // namespace Vantry
