#pragma once

#include "repository/fleet/SharedEntries.h"
#include "repository/fleet/StoreState.h"
#include "repository/fleet/StoreTransport.h"

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Repository {

// What the threads of one connection to a store share. Its members are safe for any thread.
struct StoreContext
{
    // The kinds of keys: an attribute by its path, a session that has the store open, and what the keys mean.
    std::string attributeKey(std::string_view path) const;
    std::string sessionKey() const { return prefix + "s/" + session; }
    std::string metaKey() const { return prefix + "meta"; }
    std::string keysEnd() const;
    std::string attributesEnd() const;

    // What a new store is said to be: the format of its keys and values, and which one it is, so that another
    // one in its place is noticed.
    static std::string newMeta();
    static bool isKnownFormat(std::string_view meta);

    // The news of an attribute; nothing for another key.
    std::optional<SharedEntries::Arrival> readAttribute(const std::string& key,
                                                        const std::optional<std::string>& value,
                                                        std::int64_t revision) const;

    // The session of its key; nothing for another key.
    std::optional<std::string> readSession(const std::string& key) const;

    // Sleeps until the time is over, or the connection is to end, which it gives.
    bool pause(std::chrono::milliseconds time) const;

    const std::unique_ptr<StoreTransport> transport;
    const std::string prefix; // of all keys of the store
    const std::string
        session; // another one for each connection; the beginning of what its values name as writer
    const std::size_t endpointCount;
    const std::shared_ptr<StoreState> state;

    std::atomic<std::int64_t> applied{0};    // the revision up to which the tree shows all
    std::atomic<std::int64_t> unreadable{0}; // keys that are none of a path, when all was read
    std::atomic<bool> wantsReload{false};    // something was missed
    std::atomic<bool> isDoubtful{false};     // whether the store lives: a write was not answered
};

} // namespace Repository
