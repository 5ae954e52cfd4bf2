#include "desk/find/HitWatch.h"

#include "desk/find/HitModel.h"

#include <QEvent>
#include <QTreeView>

namespace Vantry {

using Utilities::NotificationWrapper;

HitWatch::HitWatch(std::shared_ptr<Repository> attributes, HitModel& model, QTreeView& shown)
    : QObject(&shown), repository(std::move(attributes)), hits(model), view(shown)
{
    view.viewport()->installEventFilter(this);
    connect(&hits, &QAbstractItemModel::modelAboutToBeReset, this, [this] { watchers.clear(); });
}

// Whatever brings other rows into sight has them painted.
bool HitWatch::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint && !painted.isActive())
        painted.start(0, this);
    else if (event->type() == QEvent::Hide)
        watchers.clear();
    return QObject::eventFilter(watched, event);
}

void HitWatch::timerEvent(QTimerEvent*)
{
    painted.stop();
    if (!view.isVisible())
        return;
    const QRect area = view.viewport()->rect();
    const int first = view.indexAt(area.topLeft()).row();
    const QModelIndex last = view.indexAt(area.bottomLeft());
    const int end = first < 0 ? first : last.isValid() ? last.row() + 1 : hits.rowCount();
    watchers.erase(watchers.begin(), watchers.lower_bound(first));
    watchers.erase(watchers.lower_bound(end), watchers.end());
    for (int row = first; row < end; ++row) {
        if (watchers.count(row) == 0)
            watch(row);
    }
}

// What is delivered on activation covers a change since the row was painted.
void HitWatch::watch(int row)
{
    auto watcher = std::make_unique<NotificationWrapper>(hits.getHit(row).path, true, true, repository);
    watcher->valueChangedCallbacks.append([this, row](const QVariant&) { hits.tellValueChanged(row); });
    watcher->setActive(true);
    watchers.emplace(row, std::move(watcher));
}

} // namespace Vantry
