#pragma once

#include "repository/fleet/StoreApplier.h"
#include "repository/fleet/StoreFollower.h"
#include "repository/fleet/StorePresence.h"
#include "repository/fleet/StoreWriter.h"

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace Repository {

// The connection of one backend to its store, with its threads. Any thread.
class StoreSession : public std::enable_shared_from_this<StoreSession>
{
public:
    StoreSession(std::unique_ptr<StoreTransport> transport, std::string prefix, std::size_t endpointCount,
                 std::shared_ptr<StoreState> state, const std::shared_ptr<EtcdBackend>& backend,
                 const std::shared_ptr<AttributeTree>& tree, BackendKind::Observer observer);

    void start();

    // Waits until the store is loaded and followed, or could not be for the first time, which the outcome is
    // then.
    StoreState::Outcome waitForLoading();

    // Tells its threads to end, which takes them as long as saying goodbye to the store.
    void end();
    bool isOver() const { return running == 0; }

    // Waits for its threads, if it is not one of them.
    void stop();

private:
    void startThread(const std::function<void()>& work);
    void keepRunning(const std::function<void()>& work);
    void tick();
    void audit();

    StoreContext context;
    StoreApplier applier;
    StoreFollower follower;
    StoreWriter writer;
    StorePresence presence;
    std::chrono::steady_clock::time_point nextAudit;
    std::vector<std::thread> threads;
    std::atomic<int> running{0}; // of these
};

} // namespace Repository
