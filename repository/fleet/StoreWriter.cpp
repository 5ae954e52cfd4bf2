#include "repository/fleet/StoreWriter.h"

#include "repository/common/Texts.h"
#include "repository/fleet/EtcdBackend.h"
#include "repository/fleet/StoreApplier.h"
#include "repository/fleet/ValueCodec.h"

#include <algorithm>

namespace Repository {

using namespace std::chrono_literals;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
using Clock = std::chrono::steady_clock;
using Status = StoreResult::Status;

namespace {

// Of one transaction; by default a store takes no more entries, and 1.5 MiB.
constexpr std::size_t mostEntries = 128;
constexpr std::size_t mostBytes = std::size_t(256) << 10;

constexpr auto retryingAfter = 200ms;
constexpr auto ticking = 1s;
constexpr qint64 shortWhile = 5000; // milliseconds, of an interruption that nobody needs to hear of

} // namespace

StoreWriter::StoreWriter(StoreContext& storeContext, StoreApplier& storeApplier,
                         std::weak_ptr<EtcdBackend> storeBackend, BackendKind::Observer hearer)
    : context(storeContext), applier(storeApplier), backend(std::move(storeBackend)),
      observer(std::move(hearer))
{
}

void StoreWriter::run(const std::function<void()>& tick)
{
    StoreState& state = *context.state;
    auto nextTick = Clock::now();
    Lock lock(state.mutex);
    while (!state.isStopping) {
        const auto wake = retry > Clock::now() ? std::min(nextTick, retry) : nextTick;
        state.changed.wait_until(lock, wake, [&] { return state.isStopping || canSend(); });
        if (!state.isStopping && canSend())
            send(lock);
        if (state.isStopping || Clock::now() < nextTick)
            continue;
        nextTick = Clock::now() + ticking;
        reportTrouble(lock);
        lock.unlock();
        tick();
        lock.lock();
    }
}

// The state's mutex is held.
bool StoreWriter::canSend()
{
    StoreState& state = *context.state;
    if (!state.isLoaded || !state.news.isOpen || Clock::now() < retry)
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
    const bool isOther = state.link != before;
    if (!isOther && !state.entries.hasConflicts() && state.writeRefusal.isEmpty())
        return;
    reportTrouble(lock);
    lock.unlock();
    if (isOther)
        applier.push({});
    lock.lock();
}

void StoreWriter::settle(const StoreResult& result, const StoreReply& reply)
{
    StoreState& state = *context.state;
    if (result.status == Status::Unavailable || result.status == Status::Cancelled) {
        state.close(state.edits, result);
        retry = Clock::now() + retryingAfter;
        return;
    }
    state.open(state.edits);
    if (result.ok() && !reply.isWritten)
        takeFound(reply);
    if (result.ok() || !sendsOneBatch)
        state.entries.settle(outgoing, result.ok() && reply.isWritten ? reply.revision : 0);
    else
        refuse(result);
    // Of several batches, each is tried alone, so that what is not refused is written.
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
    const bool hasConflicts = !state.entries.takeNewConflicts().empty() && state.savers == 0;
    const bool isDown = state.isLoaded && !state.isConnected() &&
                        state.since.msecsTo(QDateTime::currentDateTime()) > shortWhile;
    const QString link = isDown ? state.since.toString(Qt::ISODateWithMs) : QString();
    const QString description = state.describeLink();
    const QString refusal = state.writeRefusal;
    lock.unlock();
    const auto open = backend.lock();
    if (hasConflicts && open)
        report(open->checkConflicts());
    if (!refusal.isEmpty() && refusal != reportedRefusal)
        report(
            Outcome(StatusCode::BackendFailure, Texts::tr("the store does not take edits: %1").arg(refusal))
                .advise(Texts::tr("they stay unsaved; save them again when that is mended")));
    if (!link.isEmpty() && link != reportedLink)
        report(
            Outcome(StatusCode::BackendFailure, Texts::tr("the store is not connected (%1)").arg(description))
                .advise(Texts::tr("values stay as they were; it is tried again all the time")));
    reportedRefusal = refusal;
    reportedLink = link;
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
