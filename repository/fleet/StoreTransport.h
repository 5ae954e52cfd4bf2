#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Repository {

// How a store is reached, and as whom. Certificates and the key are texts in PEM form; empty ones are not
// used.
struct StoreSettings
{
    std::vector<std::string> endpoints; // "host:port" each; there is one at least
    bool usesTls = false;
    std::string authority; // certificates to trust; empty for those of the system
    std::string certificate;
    std::string key;
    std::string user;
    std::string password;
};

// What came of a call.
struct StoreResult
{
    enum class Status {
        Done,
        Unavailable, // nobody answered in time: whether a write was done is not known
        Refused,     // by the store, for good: without permission, full, a wrong password
        TooLarge,    // as Refused, for one request
        Compacted,   // the store has no history any more from that revision on
        Cancelled    // from here
    };

    Status status = Status::Done;
    std::string reason; // for a person

    bool ok() const { return status == Status::Done; }
    bool isRefused() const { return status == Status::Refused || status == Status::TooLarge; }
};

struct StoreEntry
{
    std::string key;
    std::string value;
    std::int64_t revision = 0; // at which the entry was written last
};

// Keys from the first up to the end, exclusive, which begin after the one given.
struct StoreRange
{
    std::string begin;
    std::string end;
    std::int64_t limit = 0;         // 0 for no limit
    std::int64_t revision = 0;      // as the store was then; 0 for now
    std::int64_t sinceRevision = 0; // only those written then or later
    bool keysOnly = false;
};

struct StorePage
{
    std::vector<StoreEntry> entries;
    bool hasMore = false;
    std::int64_t count = 0;    // of all in the range
    std::int64_t revision = 0; // of the store when it answered
};

// One key of a write.
struct StoreChange
{
    static constexpr std::int64_t anyRevision = -1;

    std::string key;
    std::optional<std::string> value;    // nothing removes the key
    std::int64_t expected = anyRevision; // at which it must have been written last; 0 for no such key
    std::int64_t lease = 0;              // with which the key goes; 0 for none
};

struct StoreReply
{
    bool isWritten = false;                       // all of it, or else nothing: a key was not as expected
    std::int64_t revision = 0;                    // of the store after it
    std::vector<std::optional<StoreEntry>> found; // for each change, when nothing was written
};

// What a watch brings at once.
struct StoreEvents
{
    struct Event
    {
        std::string key;
        std::optional<std::string> value; // nothing when the key was removed
        std::int64_t revision = 0;
    };

    bool isBegin = false;      // the watch stands
    std::int64_t revision = 0; // of the store
    std::vector<Event> events; // in order; those of a revision come together
};

// Follows a range of keys. Ends by itself only on failure.
class StoreWatch
{
public:
    virtual ~StoreWatch() = default;

    // Waits for the next news; false at the end, whose reason the result has. One thread.
    virtual bool read(StoreEvents& events, StoreResult& result) = 0;

    // Asks the store for a sign of life, which comes as news without events. Any thread.
    virtual void ask() = 0;

    // Ends it, and the wait of its reader. Any thread.
    virtual void cancel() = 0;
};

// Calls to a distributed store of keys and values with one order of revisions. Each has a deadline. Any
// thread; nothing is thrown.
class StoreTransport
{
public:
    // Of this header. A module that was built for another one is not used.
    static constexpr int version = 3;

    virtual ~StoreTransport() = default;

    virtual StoreResult read(const StoreRange& range, StorePage& page) = 0;

    // All changes at once, no key twice; none of them when one key is not as expected.
    virtual StoreResult write(const std::vector<StoreChange>& changes, StoreReply& reply) = 0;

    // From a revision on, that one included; null, and the result says why, when the user is not known. The
    // watch asks the store when it is read first.
    virtual std::unique_ptr<StoreWatch> watch(const std::string& begin, const std::string& end,
                                              std::int64_t revision, StoreResult& result) = 0;

    // A lease that ends unless it is kept; keeping one that has ended sets isAlive to false.
    virtual StoreResult grantLease(std::chrono::seconds timeToLive, std::int64_t& lease) = 0;
    virtual StoreResult keepLease(std::int64_t lease, bool& isAlive) = 0;
    virtual StoreResult revokeLease(std::int64_t lease) = 0;

    // Turns to the next endpoint for all later calls, as a call without an answer does.
    virtual void rotate() = 0;

    // Ends all calls under way, and refuses later ones but those that revoke a lease.
    virtual void cancel() = 0;
};

// The entry of a module, by the name below: null where the version is another one, or memory is refused. The
// caller owns what it gives.
using OpenStoreTransport = StoreTransport* (*)(int version, const StoreSettings& settings);
constexpr char openStoreTransportName[] = "vantryOpenStoreTransport";

} // namespace Repository
