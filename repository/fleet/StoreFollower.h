#pragma once

#include "repository/fleet/StoreApplier.h"
#include "repository/fleet/StoreContext.h"

#include <chrono>
#include <memory>
#include <mutex>

namespace Repository {

// Reads all that a store holds as it is at one revision, and follows it from there on, on a thread of its
// own: in order, and again from where it was after each interruption. Where the store has no history from
// there on, or is another one than before, all is read anew. What it reads it hands to the applier.
class StoreFollower
{
public:
    StoreFollower(StoreContext& storeContext, StoreApplier& storeApplier);

    // Until the end.
    void run();

    // To be called about each second: a server that gives no sign of life is left for the next. Any thread.
    void checkLife();

    // Ends the watch, so that it begins anew. Any thread.
    void interrupt();

private:
    using Clock = std::chrono::steady_clock;

    StoreResult checkIdentity();
    StoreResult readPages();
    void pushPage(const StorePage& page);
    StoreResult follow();
    StoreResult takeEvents(StoreEvents& events);
    void fail(const StoreResult& result);
    void setOpen();

    StoreContext& context; // not owned
    StoreApplier& applier; // not owned
    bool isLoaded = false;
    std::int64_t next = 0; // the first revision that has not been read
    std::string meta;      // what the store says that it is; the thread's own, as the two above

    std::mutex mutex;                  // guards what follows
    std::unique_ptr<StoreWatch> watch; // while there is one
    Clock::time_point heard;           // the last sign of life
    Clock::time_point asked;           // for one, last
};

} // namespace Repository
