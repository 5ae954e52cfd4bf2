#pragma once

#include "repository/fleet/StoreTransport.h"

#include <chrono>
#include <etcd.pb.h>
#include <memory>
#include <string>

namespace Vantry::Etcd {

// How a call ended, by the numbers of gRPC.
struct CallEnd
{
    enum class Code {
        Ok = 0,
        Cancelled = 1,
        InvalidArgument = 3,
        DeadlineExceeded = 4,
        PermissionDenied = 7,
        ResourceExhausted = 8,
        FailedPrecondition = 9,
        OutOfRange = 11,
        Unauthenticated = 16
    };

    Code code = Code::Ok; // or another number, which means that nobody answered as expected
    std::string message;

    bool ok() const { return code == Code::Ok; }
};

// One call to a server, with what goes along with it. One thread, but cancel.
class EtcdCall
{
public:
    EtcdCall();
    ~EtcdCall();

    void endAfter(std::chrono::milliseconds time);
    void addMetadata(const std::string& name, const std::string& value);

    // Ends it, and the wait for its answer; also before it has begun. Any thread.
    void cancel();

private:
    friend class EtcdConnection;
    struct Context;
    const std::unique_ptr<Context> context;
};

// The two ways of a watch. One thread reads, one at a time writes.
class EtcdStream
{
public:
    virtual ~EtcdStream() = default;

    virtual void write(const etcdserverpb::WatchRequest& request) = 0;

    // Waits for the next response; false at the end.
    virtual bool read(etcdserverpb::WatchResponse& response) = 0;

    // Once, after the last response was read.
    virtual CallEnd finish() = 0;
};

// The connection to one endpoint, and all that is compiled of gRPC's headers: the thread sanitizer does not
// see how gRPC's library hands data to the code in them, so that they are compiled without it, as the library
// is, and all other code of the module with it. Each call waits for its answer. Any thread.
class EtcdConnection
{
public:
    EtcdConnection(const Repository::StoreSettings& settings, const std::string& endpoint);
    ~EtcdConnection();

    CallEnd call(EtcdCall& call, const etcdserverpb::AuthenticateRequest& request,
                 etcdserverpb::AuthenticateResponse& response) const;
    CallEnd call(EtcdCall& call, const etcdserverpb::RangeRequest& request,
                 etcdserverpb::RangeResponse& response) const;
    CallEnd call(EtcdCall& call, const etcdserverpb::TxnRequest& request,
                 etcdserverpb::TxnResponse& response) const;
    CallEnd call(EtcdCall& call, const etcdserverpb::LeaseGrantRequest& request,
                 etcdserverpb::LeaseGrantResponse& response) const;
    CallEnd call(EtcdCall& call, const etcdserverpb::LeaseKeepAliveRequest& request,
                 etcdserverpb::LeaseKeepAliveResponse& response) const;
    CallEnd call(EtcdCall& call, const etcdserverpb::LeaseRevokeRequest& request,
                 etcdserverpb::LeaseRevokeResponse& response) const;

    // The call must outlive it.
    std::unique_ptr<EtcdStream> watch(EtcdCall& call) const;

private:
    struct Channel;
    const std::unique_ptr<Channel> channel;
};

} // namespace Vantry::Etcd
