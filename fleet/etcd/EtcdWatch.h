#pragma once

#include "fleet/etcd/EtcdConnection.h"

#include <mutex>

namespace Vantry::Etcd {

// One watch on a connection of its own, so that large replies to other calls do not hold up its news.
class EtcdWatch : public Repository::StoreWatch
{
public:
    // The token is empty where there is no user. The store is asked by the first read, which may have to wait
    // for a connection.
    EtcdWatch(std::shared_ptr<EtcdConnection> ownConnection, std::string watchedEndpoint,
              const std::string& token, etcdserverpb::WatchCreateRequest watchRequest);
    ~EtcdWatch() override;

    bool read(Repository::StoreEvents& events, Repository::StoreResult& result) override;
    void ask() override;
    void cancel() override;

private:
    void begin();
    CallEnd finish();

    const std::shared_ptr<EtcdConnection> connection;
    const std::string endpoint;
    const etcdserverpb::WatchCreateRequest request;
    EtcdCall call;
    std::unique_ptr<EtcdStream> stream;
    std::mutex writing; // one request at a time; guards the next
    bool takesRequests = false;
};

} // namespace Vantry::Etcd
