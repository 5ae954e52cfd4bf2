#include "repository/fleet/StoreApplier.h"

#include "host/FrameworkCore/Notification/UpdateOrigin.h"
#include "repository/common/MemoryGuard.h"
#include "repository/common/RepositoryLog.h"
#include "repository/fleet/EtcdBackend.h"
#include "repository/store/AttributeTree.h"
#include "repository/transaction/ChangeApplier.h"
#include "repository/transaction/Projection.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using Arrivals = std::vector<SharedEntries::Arrival>;

namespace {

constexpr std::size_t mostPages = 4; // that wait

// Attributes about the backends, one each below its name.
const QLatin1String statesPath("internal.backends.states.");
const QLatin1String usersPath("internal.backends.users.");

} // namespace

StoreApplier::StoreApplier(StoreContext& storeContext, std::weak_ptr<AttributeTree> attributes,
                           std::weak_ptr<EtcdBackend> storeBackend)
    : context(storeContext), tree(std::move(attributes)), backend(std::move(storeBackend))
{
}

void StoreApplier::push(News news)
{
    if (takeAtOnce(news))
        return;
    std::unique_lock lock(mutex);
    if (news.kind == News::Kind::Page)
        changed.wait(lock, [this] { return isStopping || waiting.size() < mostPages; });
    waiting.push_back(std::move(news));
    changed.notify_all();
}

// The echoes of own edits, as long as nothing else of the store waits to be shown: of these the tree knows
// already.
bool StoreApplier::takeAtOnce(const News& news)
{
    if (news.kind != News::Kind::Events || !news.users.isEmpty())
        return false;
    {
        const std::lock_guard lock(mutex);
        if (isApplying || !waiting.empty())
            return false;
    }
    StoreState& state = *context.state;
    const std::lock_guard lock(state.mutex);
    if (state.entries.concernsEntries(news.arrivals))
        return false;
    takeEchoes(news);
    return true;
}

// The state's mutex is held. Who waits for edits, or holds some back, may go on.
void StoreApplier::takeEchoes(const News& news)
{
    StoreState& state = *context.state;
    const bool concernsEdits = !state.entries.getEdits().empty();
    state.entries.take(news.arrivals);
    context.applied = news.revision;
    if (!concernsEdits)
        return;
    state.changed.notify_all();
    if (!state.entries.getEdits().empty())
        state.work.notify_all();
}

void StoreApplier::stop()
{
    const std::lock_guard lock(mutex);
    isStopping = true;
    changed.notify_all();
}

void StoreApplier::run()
{
    std::unique_lock lock(mutex);
    while (true) {
        changed.wait(lock, [this] { return isStopping || !waiting.empty(); });
        if (isStopping)
            return;
        News news = std::move(waiting.front());
        waiting.pop_front();
        isApplying = true;
        lock.unlock();
        changed.notify_all();
        const Outcome outcome = guardMemory([&] {
            const FrameworkCore::Notification::UpdateOrigin origin(QStringLiteral("fleet"));
            apply(std::move(news));
            return Outcome();
        });
        if (!outcome.ok()) {
            logged(outcome);
            context.wantsReload = true;
        }
        lock.lock();
        isApplying = false;
    }
}

void StoreApplier::apply(News news)
{
    switch (news.kind) {
    case News::Kind::Begin:
        return begin();
    case News::Kind::Page:
        return applyPage(news);
    case News::Kind::Loaded:
        return applyLoaded(news);
    case News::Kind::Events:
        return applyEvents(news);
    case News::Kind::Link:
        return publish();
    }
}

// Also after an attempt that came to nothing.
void StoreApplier::begin()
{
    reloaded.clear();
    reloadedUsers.clear();
    const std::lock_guard lock(context.state->mutex);
    if (!context.state->isLoaded)
        context.state->entries.clear();
    context.state->loaded = 0;
}

void StoreApplier::applyPage(News& news)
{
    StoreState& state = *context.state;
    const std::lock_guard lock(state.mutex);
    for (auto user = news.users.begin(); user != news.users.end(); ++user)
        reloadedUsers.insert(user.key(), *user);
    if (state.isLoaded) {
        std::move(news.arrivals.begin(), news.arrivals.end(), std::back_inserter(reloaded));
        return;
    }
    state.loaded += int(news.arrivals.size());
    state.entries.fill(std::move(news.arrivals));
}

void StoreApplier::applyLoaded(const News& news)
{
    const auto attributes = tree.lock();
    const auto shown = backend.lock();
    if (!attributes || !shown)
        return;
    bool isFirst = false;
    {
        const std::lock_guard lock(context.state->mutex);
        isFirst = !context.state->isLoaded;
    }
    if (isFirst) {
        Transaction transaction(*attributes);
        if (!shown->isClosed())
            Projection(transaction).showAll(*shown);
    } else {
        ChangeApplier applier(*attributes, *shown);
        applier([&] { return shown->takeAll(std::exchange(reloaded, {})); });
    }
    context.applied = news.revision;
    {
        const std::lock_guard lock(context.state->mutex);
        context.state->users = std::exchange(reloadedUsers, {});
        context.state->finishLoading();
    }
    publish();
}

void StoreApplier::applyEvents(const News& news)
{
    const auto attributes = tree.lock();
    const auto shown = backend.lock();
    if (!attributes || !shown)
        return;
    bool concernsTree = false;
    {
        const std::lock_guard lock(context.state->mutex);
        concernsTree = context.state->entries.concernsEntries(news.arrivals);
        if (!concernsTree)
            takeEchoes(news);
    }
    if (concernsTree) {
        ChangeApplier applier(*attributes, *shown);
        applier([&] { return shown->take(news.arrivals); });
        context.applied = news.revision;
        context.state->changed.notify_all();
    }
    if (!news.users.isEmpty())
        takeUsers(news.users);
}

void StoreApplier::takeUsers(const QMap<QString, QString>& users)
{
    {
        const std::lock_guard lock(context.state->mutex);
        for (auto user = users.begin(); user != users.end(); ++user) {
            if (user->isEmpty())
                context.state->users.remove(user.key());
            else
                context.state->users.insert(user.key(), *user);
        }
    }
    publish();
}

// In the tree, where everybody can look and be notified.
void StoreApplier::publish()
{
    const auto attributes = tree.lock();
    const auto shown = backend.lock();
    if (!attributes || !shown)
        return;
    QString link;
    QStringList users;
    {
        const std::lock_guard lock(context.state->mutex);
        link = context.state->describeLink();
        users = context.state->users.values();
    }
    users.sort();
    Transaction transaction(*attributes);
    if (shown->isClosed())
        return;
    NodeWriter& nodes = transaction.getNodes();
    const auto set = [&](const QString& path, const QVariant& value) {
        Node& node = nodes.ensure(path);
        if (!node.isAttribute() || !node.value.isSame(value))
            nodes.setAttribute(node, value, FrameworkCore::AppConfig::AccessMode::ReadOnly);
    };
    set(statesPath + shown->getName(), link);
    set(usersPath + shown->getName(), users);
}

} // namespace Repository
