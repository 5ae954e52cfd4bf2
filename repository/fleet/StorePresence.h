#pragma once

#include "repository/fleet/StoreContext.h"

#include <QString>

#include <chrono>

namespace Repository {

// Tells those who have the same store open that this program has it, too: by a key with a lease, which goes
// with the program, however that ends. One thread.
class StorePresence
{
public:
    explicit StorePresence(StoreContext& storeContext) : context(storeContext) {}

    // To be called about each second while the store is connected.
    void keep();

    // Says goodbye.
    void end();

    // Who it is, for people; empty for a text of another form.
    static QString userIn(const std::string& value);

private:
    using Clock = std::chrono::steady_clock;

    void begin();

    StoreContext& context; // not owned
    std::int64_t lease = 0;
    Clock::time_point due; // when there is something to do again
};

} // namespace Repository
