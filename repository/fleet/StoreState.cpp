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
    const bool isFirstFailure = !isLoaded && way.reason.isEmpty();
    way = {false, result.isRefused(), QString::fromStdString(result.reason)};
    return updateLink() || isFirstFailure;
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
    if (link != before) {
        since = QDateTime::currentDateTime();
        began = std::chrono::steady_clock::now();
    }
    changed.notify_all();
    work.notify_all();
    return link != before;
}

bool StoreState::isDownForLong() const
{
    constexpr std::chrono::seconds shortWhile(5);
    const bool isDown = link == Link::Loading ? !news.reason.isEmpty() : !isConnected();
    return isDown && std::chrono::steady_clock::now() - began >= shortWhile;
}

QString StoreState::describeLink() const
{
    const QString& reason = news.isOpen ? edits.reason : news.reason;
    switch (link) {
    case Link::Loading:
        return reason.isEmpty() ? Texts::tr("loading") : Texts::tr("not reached yet: %1").arg(reason);
    case Link::Connected:
        return Texts::tr("connected");
    case Link::Stale:
        return Texts::tr("stale since %1: %2").arg(since.toString(Qt::ISODate), reason);
    case Link::Refused:
        break;
    }
    return Texts::tr("refused: %1").arg(reason);
}

QString StoreState::explainDown() const
{
    if (!isLoaded)
        return Texts::tr("the store is not loaded yet (%1)").arg(describeLink());
    return Texts::tr("the store is not connected: %1; its values are those of %2")
        .arg(news.isOpen ? edits.reason : news.reason, since.toString(Qt::ISODate));
}

Outcome StoreState::checkWritable() const
{
    if (!isLoaded)
        return Outcome(StatusCode::BackendFailure, explainDown());
    const bool isShort = link == Link::Stale && !isDownForLong();
    if (link == Link::Connected || queues || isShort)
        return {};
    return Outcome(StatusCode::BackendFailure, explainDown())
        .advise(Texts::tr("try again when it is, or open it with offline=queue to keep edits meanwhile"));
}

} // namespace Repository
