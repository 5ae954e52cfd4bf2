#include "repository/fleet/StoreState.h"

#include "repository/common/Texts.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

bool StoreState::open(Way& way)
{
    way = {true, false, {}};
    return updateLink();
}

bool StoreState::close(Way& way, const StoreResult& result)
{
    way = {false, result.status == StoreResult::Status::Refused, QString::fromStdString(result.reason)};
    return updateLink();
}

bool StoreState::finishLoading()
{
    isLoaded = true;
    loaded = toLoad = 0;
    return updateLink();
}

bool StoreState::updateLink()
{
    const Link before = link;
    const bool isRefused = news.isRefused || edits.isRefused;
    if (isLoaded || isRefused)
        link = news.isOpen && edits.isOpen ? Link::Connected : isRefused ? Link::Refused : Link::Stale;
    if (link != before)
        since = QDateTime::currentDateTime();
    changed.notify_all();
    return link != before;
}

QString StoreState::describeLink() const
{
    const QString& reason = news.isOpen ? edits.reason : news.reason;
    switch (link) {
    case Link::Loading:
        return Texts::tr("loading");
    case Link::Connected:
        return Texts::tr("connected");
    case Link::Stale:
        return Texts::tr("stale since %1: %2").arg(since.toString(Qt::ISODate), reason);
    case Link::Refused:
        break;
    }
    return Texts::tr("refused: %1").arg(reason);
}

Outcome StoreState::checkWritable() const
{
    constexpr qint64 shortWhile = 5000; // milliseconds
    if (link == Link::Loading || !isLoaded)
        return Outcome(StatusCode::BackendFailure,
                       Texts::tr("the store is not loaded yet (%1)").arg(describeLink()));
    const bool isShort = link == Link::Stale && since.msecsTo(QDateTime::currentDateTime()) < shortWhile;
    if (link == Link::Connected || queues || isShort)
        return {};
    return Outcome(StatusCode::BackendFailure,
                   Texts::tr("the store is not connected (%1)").arg(describeLink()))
        .advise(Texts::tr("try again when it is, or open it with offline=queue to keep edits meanwhile"));
}

} // namespace Repository
