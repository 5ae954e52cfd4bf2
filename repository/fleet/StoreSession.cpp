#include "repository/fleet/StoreSession.h"

#include "repository/common/MemoryGuard.h"
#include "repository/common/RepositoryLog.h"
#include "repository/common/Texts.h"

#include <random>

namespace Repository {

using namespace std::chrono_literals;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using Clock = std::chrono::steady_clock;

namespace {

constexpr auto auditing = 5min;
constexpr auto newsDelay = 5s; // what the store has told by then is here

std::string newSession()
{
    std::random_device device;
    const quint64 number = quint64(device()) << 32 | device();
    return QString::number(number, 36).toStdString();
}

} // namespace

StoreSession::StoreSession(std::unique_ptr<StoreTransport> transport, std::string prefix,
                           std::size_t endpointCount, std::shared_ptr<StoreState> state,
                           const std::shared_ptr<EtcdBackend>& backend,
                           const std::shared_ptr<AttributeTree>& tree, BackendKind::Observer observer)
    : context{std::move(transport), std::move(prefix), newSession(), endpointCount, std::move(state)},
      applier(context, tree, backend), follower(context, applier),
      writer(context, applier, backend, std::move(observer)), presence(context),
      nextAudit(Clock::now() + auditing)
{
}

void StoreSession::start()
{
    {
        const std::lock_guard lock(context.state->mutex);
        context.state->sendNow = [session = weak_from_this()](StoreWriter::Lock& held) {
            const auto self = session.lock();
            return self && self->writer.sendNow(held);
        };
    }
    startThread([this] { applier.run(); });
    startThread([this] { keepRunning([this] { follower.run(); }); });
    startThread([this] {
        keepRunning([this] { writer.run([this] { tick(); }); });
        presence.end();
    });
}

// Which keeps the session alive until it ends.
void StoreSession::startThread(const std::function<void()>& work)
{
    threads.emplace_back([self = shared_from_this(), work] {
        work();
        --self->running;
    });
    ++running;
}

// Where memory was refused, nobody knows what was missed.
void StoreSession::keepRunning(const std::function<void()>& work)
{
    for (bool isDone = false; !isDone;) {
        const Outcome outcome = guardMemory([&work] {
            work();
            return Outcome();
        });
        isDone = outcome.ok() || context.pause(1s);
        if (!isDone) {
            logged(outcome);
            context.wantsReload = true;
        }
    }
}

Outcome StoreSession::waitForLoading()
{
    StoreState& state = *context.state;
    std::unique_lock lock(state.mutex);
    // Each server is tried again, since a connection fails now and then where machines are busy.
    const auto isGivenUp = [&] {
        return !state.isLoaded && (state.failedAttempts >= 2 * context.endpointCount ||
                                   (state.failedAttempts >= context.endpointCount && state.isAway()));
    };
    state.changed.wait(lock, [&] { return state.isConnected() || state.isStopping || isGivenUp(); });
    if (state.isConnected())
        return {};
    return Outcome(StatusCode::BackendFailure,
                   state.isStopping ? Texts::tr("it was closed before it was loaded") : state.news.reason);
}

void StoreSession::end()
{
    {
        const std::lock_guard lock(context.state->mutex);
        context.state->isStopping = true;
        context.state->changed.notify_all();
        context.state->work.notify_all();
    }
    context.transport->cancel();
    applier.stop();
    follower.interrupt();
}

void StoreSession::stop()
{
    end();
    for (std::thread& thread : threads) {
        if (thread.get_id() == std::this_thread::get_id())
            thread.detach();
        else
            thread.join();
    }
    threads.clear();
}

void StoreSession::tick()
{
    follower.checkLife();
    {
        const std::lock_guard lock(context.state->mutex);
        if (!context.state->isConnected())
            return;
    }
    presence.keep();
    if (Clock::now() > nextAudit)
        audit();
    if (context.wantsReload)
        follower.interrupt();
}

// Whether something has come into the store of which there was no news.
void StoreSession::audit()
{
    nextAudit = Clock::now() + auditing;
    const std::int64_t known = context.applied;
    StorePage page;
    const StoreRange newer{context.attributeKey({}), context.attributesEnd(), 0, 0, known + 1, true};
    if (!context.transport->read(newer, page).ok())
        return;
    std::int64_t newest = 0;
    for (const StoreEntry& entry : page.entries)
        newest = std::max(newest, entry.revision);
    if (context.pause(newest > 0 ? newsDelay : 0s))
        return;
    const std::lock_guard lock(context.state->mutex);
    const bool isQuiet = newest == 0 && context.applied == known;
    const bool hasOtherCount =
        isQuiet && std::size_t(page.count - context.unreadable) != context.state->entries.getStoredCount();
    if (newest > context.applied || hasOtherCount)
        context.wantsReload = true;
}

} // namespace Repository
