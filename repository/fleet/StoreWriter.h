#pragma once

#include "repository/backends/BackendKind.h"
#include "repository/fleet/StoreContext.h"

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace Repository {

class EtcdBackend;
class StoreApplier;

// Writes edits to their store as they come, on a thread of its own, or on that of who saves: each only where
// the store holds what the edit began with. What a lost answer leaves open is found out by writing it again:
// had it been written, the store says so by the writer that it names. Edits stay until the store has
// acknowledged them.
class StoreWriter
{
public:
    StoreWriter(StoreContext& storeContext, StoreApplier& storeApplier,
                std::weak_ptr<EtcdBackend> storeBackend, BackendKind::Observer hearer);

    using Lock = std::unique_lock<std::mutex>;

    // Until the end. Calls back about each second, holding no lock.
    void run(const std::function<void()>& tick);

    // As StoreState has it. Any thread.
    bool sendNow(Lock& lock);

private:
    bool canSend();
    void send(Lock& lock);
    void settle(const StoreResult& result, const StoreReply& reply);
    std::vector<StoreChange> changes() const;
    void refuse(const StoreResult& result);
    void takeFound(const StoreReply& reply);
    void reportTrouble(Lock& lock);
    void report(BackendKind::Outcome outcome);

    StoreContext& context; // not owned
    StoreApplier& applier; // not owned
    const std::weak_ptr<EtcdBackend> backend;
    const BackendKind::Observer observer;
    // The state's mutex guards what follows.
    std::vector<SharedEntries::Outgoing> outgoing; // on its way; kept until its outcome is known
    std::size_t mostEntries;                       // at once, as far as this store takes them
    bool sendsOneBatch = false;                    // after a refusal, until it is known whose it was
    std::chrono::steady_clock::time_point retry;   // not before
    QString reportedRefusal;
    std::chrono::steady_clock::time_point reportedDown; // when that began; none while it is up
};

} // namespace Repository
