#include "repository/fleet/StoreWriter.h"

#include "repository/common/Texts.h"
#include "repository/fleet/EtcdBackend.h"
#include "repository/fleet/StoreApplier.h"
#include "repository/fleet/ValueCodec.h"

#include <algorithm>
#include <utility>

namespace Repository {

using namespace std::chrono_literals;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using Clock = std::chrono::steady_clock;
using Status = StoreResult::Status;

namespace {

// At once; by default a store takes no more entries, and 1.5 MiB.
constexpr std::size_t defaultEntries = 128;
constexpr std::size_t mostBytes = std::size_t(256) << 10;

constexpr auto retryingAfter = 200ms;
constexpr auto ticking = 1s;

} // namespace

StoreWriter::StoreWriter(StoreContext& storeContext, StoreApplier& storeApplier,
                         std::weak_ptr<EtcdBackend> storeBackend, BackendKind::Observer hearer)
    : context(storeContext), applier(storeApplier), backend(std::move(storeBackend)),
      observer(std::move(hearer)), mostEntries(defaultEntries)
{
}

void StoreWriter::run(const std::function<void()>& tick)
{
    StoreState& state = *context.state;
    auto nextTick = Clock::now();
    Lock lock(state.mutex);
    while (!state.isStopping) {
        if (!sendNow(lock))
            state.work.wait_until(lock, retry > Clock::now() ? std::min(nextTick, retry) : nextTick);
        if (state.isStopping || Clock::now() < nextTick)
            continue;
        nextTick = Clock::now() + ticking;
        reportTrouble(lock);
        lock.unlock();
        tick();
        lock.lock();
    }
}

bool StoreWriter::sendNow(Lock& lock)
{
    const bool isDue = !context.state->isStopping && canSend();
    if (isDue)
        send(lock);
    return isDue;
}

// The state's mutex is held.
bool StoreWriter::canSend()
{
    StoreState& state = *context.state;
    if (state.isSending || !state.isLoaded || !state.news.isOpen || Clock::now() < retry)
        return false;
    state.entries.dropUnwanted(outgoing);
    if (outgoing.empty())
        outgoing = state.entries.takeOutgoing(mostEntries, mostBytes,
                                              sendsOneBatch ? SharedEntries::From::OneBatch
                                                            : SharedEntries::From::AllBatches);
    if (outgoing.empty() && !state.edits.isOpen && state.open(state.edits))
        applier.push({});
    return !outgoing.empty();
}

std::vector<StoreChange> StoreWriter::changes() const
{
    std::vector<StoreChange> list;
    list.reserve(outgoing.size());
    for (const SharedEntries::Outgoing& edit : outgoing) {
        const std::string writer = context.session + '.' + std::to_string(edit.number);
        list.push_back({context.attributeKey(edit.path),
                        edit.value ? std::optional(ValueCodec::encode(*edit.value, writer)) : std::nullopt,
                        edit.expected, 0});
    }
    return list;
}

void StoreWriter::send(Lock& lock)
{
    StoreState& state = *context.state;
    const std::vector<StoreChange> list = changes();
    state.isSending = true;
    lock.unlock();
    StoreReply reply;
    const StoreResult result = context.transport->write(list, reply);
    lock.lock();
    state.isSending = false;
    const StoreState::Link before = state.link;
    settle(result, reply);
    state.changed.notify_all();
    if (!state.entries.getEdits().empty()) // who saves sends no more than his own
        state.work.notify_all();
    if (state.savers > 0) // before the save returns, which reports these conflicts and refusals itself
        reportTrouble(lock);
    if (state.link == before)
        return;
    lock.unlock();
    applier.push({});
    lock.lock();
}

void StoreWriter::settle(const StoreResult& result, const StoreReply& reply)
{
    StoreState& state = *context.state;
    if (result.status == Status::Unavailable || result.status == Status::Cancelled) {
        state.close(state.edits, result);
        context.isDoubtful = true;
        retry = Clock::now() + retryingAfter;
        return;
    }
    if (!state.edits.isOpen)
        state.open(state.edits);
    if (result.ok() && !reply.isWritten)
        takeFound(reply);
    // Where the server is set to take less, it gets less from now on.
    const bool isTooMuch = result.status == Status::TooLarge && outgoing.size() > 1;
    if (result.ok() || isTooMuch || !sendsOneBatch)
        state.entries.settle(outgoing, result.ok() && reply.isWritten ? reply.revision : 0);
    else
        refuse(result);
    if (!result.ok())
        mostEntries = isTooMuch ? outgoing.size() / 2 : defaultEntries;
    // Of several batches, each is tried alone, so that what is not refused is written.
    if (!isTooMuch)
        sendsOneBatch = !result.ok();
    outgoing.clear();
}

void StoreWriter::refuse(const StoreResult& result)
{
    context.state->entries.refuse(outgoing);
    context.state->writeRefusal = QString::fromStdString(result.reason);
}

// What the store holds instead of what was expected. Of entries that are not edited any more the tree learns
// by the news.
void StoreWriter::takeFound(const StoreReply& reply)
{
    SharedEntries& entries = context.state->entries;
    std::vector<SharedEntries::Arrival> arrivals;
    for (std::size_t i = 0; i < outgoing.size() && i < reply.found.size(); ++i) {
        const auto& found = reply.found[i];
        auto arrival = context.readAttribute(context.attributeKey(outgoing[i].path),
                                             found ? std::optional(found->value) : std::nullopt,
                                             found ? found->revision : reply.revision);
        if (arrival && entries.getEdits().count(arrival->path) > 0)
            arrivals.push_back(*std::move(arrival));
    }
    entries.take(arrivals);
}

// Each once, to those who did not ask.
void StoreWriter::reportTrouble(Lock& lock)
{
    StoreState& state = *context.state;
    // Whoever saves is told by that.
    const bool isTold = state.savers > 0;
    const bool hasConflicts = !state.entries.takeNewConflicts().empty() && !isTold;
    const bool isDown = state.isDownForLong(); // of less nobody needs to hear
    const auto down = isDown ? state.began : Clock::time_point();
    const bool isNewlyDown = std::exchange(reportedDown, down) != down && isDown;
    const QString reason = state.explainDown();
    const QString refusal = state.writeRefusal;
    const bool isNewlyRefused =
        std::exchange(reportedRefusal, refusal) != refusal && !refusal.isEmpty() && !isTold;
    lock.unlock();
    const auto open = backend.lock();
    if (hasConflicts && open)
        report(open->checkConflicts());
    if (isNewlyRefused)
        report(
            Outcome(StatusCode::BackendFailure, Texts::tr("the store does not take edits: %1").arg(refusal))
                .advise(Texts::tr("they stay unsaved; save them again when that is mended")));
    if (isNewlyDown)
        report(
            Outcome(StatusCode::BackendFailure, reason).advise(Texts::tr("it is tried again all the time")));
    lock.lock();
}

void StoreWriter::report(Outcome outcome)
{
    const auto open = backend.lock();
    if (!open || open->isClosed() || outcome.ok())
        return;
    BackendKind::report(outcome.in(open->getDescription().filePath), observer);
}

} // namespace Repository
