#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace TestSupport {

// A bare client of an etcd without TLS and users: what other programs do with a store, what is true of it,
// and the measure of what a repository takes. Calls fail after some seconds without an answer. Any thread.
class EtcdClient
{
public:
    // One event, as the server has it.
    struct Change
    {
        std::string key;
        std::string value; // empty when it is removed
        bool isRemoved = false;
        std::int64_t revision = 0;
    };

    struct Entry
    {
        std::string key;
        std::string value;
        std::int64_t revision = 0; // of its last change; 0 when it is not there
    };

    using Pairs = std::vector<std::pair<std::string, std::string>>; // keys and values

    // Follows the keys that begin so until it is dropped. It holds the connection of its client.
    class Watch;

    // The endpoints are "address:port", joined by ",".
    explicit EtcdClient(const std::string& endpoints);
    ~EtcdClient();
    EtcdClient(const EtcdClient&) = delete;
    EtcdClient& operator=(const EtcdClient&) = delete;

    // The revision that the change got; 0 when it failed, or may have.
    std::int64_t put(const std::string& key, const std::string& value) const;
    std::int64_t remove(const std::string& key) const;
    // In one transaction: puts these and removes those.
    std::int64_t commit(const Pairs& puts, const std::vector<std::string>& removals = {}) const;
    // Only if the key has still that revision.
    std::int64_t putIf(const std::string& key, const std::string& value, std::int64_t revision) const;

    Entry get(const std::string& key) const;
    // What begins so, at one moment, in pages of so many; `revision` becomes that moment.
    std::vector<Entry> readAll(const std::string& prefix, std::int64_t* revision = nullptr,
                               int pageSize = 5000) const;

    // Each change of the keys that begin so since the store was made, in the server's order. Writes a key of
    // its own to know the end. Empty when the server has forgotten some of it.
    std::vector<Change> readHistory(const std::string& prefix) const;

    // Calls back on a thread of its own, from when it is returned; the callbacks of one end before it does.
    std::unique_ptr<Watch> watch(const std::string& prefix,
                                 const std::function<void(const Change&)>& callback) const;

private:
    struct Connection;
    std::shared_ptr<Connection> connection;
};

class EtcdClient::Watch
{
public:
    virtual ~Watch() = default;
};

} // namespace TestSupport
