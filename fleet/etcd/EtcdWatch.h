#pragma once

#include "repository/fleet/StoreTransport.h"

#include <etcd.grpc.pb.h>
#include <grpcpp/grpcpp.h>
#include <mutex>

namespace Vantry::Etcd {

// One watch on a connection of its own, so that large replies to other calls do not hold up its news.
class EtcdWatch : public Repository::StoreWatch
{
public:
    // The token is empty where there is no user. The store is asked by the first read, which may have to wait
    // for a connection.
    EtcdWatch(std::shared_ptr<grpc::Channel> watchChannel, std::string watchedEndpoint,
              const std::string& token, etcdserverpb::WatchCreateRequest watchRequest);
    ~EtcdWatch() override;

    bool read(Repository::StoreEvents& events, Repository::StoreResult& result) override;
    void ask() override;
    void cancel() override;

private:
    void begin();
    grpc::Status finish();

    const std::shared_ptr<grpc::Channel> channel;
    const std::string endpoint;
    const etcdserverpb::WatchCreateRequest request;
    grpc::ClientContext context;
    std::unique_ptr<grpc::ClientReaderWriter<etcdserverpb::WatchRequest, etcdserverpb::WatchResponse>> stream;
    std::mutex writing; // one request at a time; guards the next
    bool takesRequests = false;
};

} // namespace Vantry::Etcd
