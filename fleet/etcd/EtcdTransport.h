#pragma once

#include "fleet/etcd/EtcdConnection.h"

#include <functional>
#include <mutex>
#include <set>

namespace Vantry::Etcd {

// The calls of a StoreTransport over gRPC, as etcd answers them. Who the user is, is told by a token that the
// store gives for a password; when it is not good any more, another one is asked for, and the call made
// again.
class EtcdTransport : public Repository::StoreTransport
{
public:
    using StoreResult = Repository::StoreResult;

    explicit EtcdTransport(Repository::StoreSettings storeSettings);
    ~EtcdTransport() override;

    StoreResult read(const Repository::StoreRange& range, Repository::StorePage& page) override;
    StoreResult write(const std::vector<Repository::StoreChange>& changes,
                      Repository::StoreReply& reply) override;
    std::unique_ptr<Repository::StoreWatch> watch(const std::string& begin, const std::string& end,
                                                  std::int64_t revision, StoreResult& result) override;
    StoreResult grantLease(std::chrono::seconds timeToLive, std::int64_t& lease) override;
    StoreResult keepLease(std::int64_t lease, bool& isAlive) override;
    StoreResult revokeLease(std::int64_t lease) override;
    void rotate() override;
    void cancel() override;

private:
    using Call = std::function<CallEnd(const EtcdConnection&, EtcdCall&)>;
    enum class Purpose { Work, Reading, Farewell };

    struct Answer
    {
        StoreResult result;
        bool asksForToken = false;
    };

    // The mutex is held.
    std::shared_ptr<EtcdConnection> connect() const;
    void turn();

    StoreResult call(const Call& operation, Purpose purpose);
    template <typename Request, typename Response>
    StoreResult ask(const Request& request, Response& response, Purpose purpose = Purpose::Work);
    Answer callOnce(const Call& operation, const std::string& withToken, Purpose purpose);
    Answer authenticate(std::string& given);

    const Repository::StoreSettings settings;
    mutable std::mutex mutex; // guards what follows
    std::size_t endpoint = 0; // of the settings
    std::shared_ptr<EtcdConnection> connection;
    std::string token;
    std::set<EtcdCall*> active; // not owned; calls under way
    bool isCancelled = false;
};

} // namespace Vantry::Etcd
