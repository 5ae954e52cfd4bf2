#include "fleet/etcd/EtcdConnection.h"

#include <cstdlib>
#include <etcd.grpc.pb.h>
#include <grpc/support/log.h>
#include <grpcpp/grpcpp.h>
#include <mutex>

namespace Vantry::Etcd {

using namespace etcdserverpb;

namespace {

constexpr int shortestReconnect = 50; // milliseconds
constexpr int longestReconnect = 1000;

// Results say what failed; lines on the terminal are for those who ask for them.
void silenceLibrary()
{
    static std::once_flag isSilent;
    std::call_once(isSilent, [] {
        if (!std::getenv("GRPC_VERBOSITY"))
            gpr_set_log_function([](gpr_log_func_args*) {});
    });
}

// The reply to a large read has no bound; connections are made anew soon after they were lost.
std::shared_ptr<grpc::Channel> makeChannel(const Repository::StoreSettings& settings,
                                           const std::string& endpoint)
{
    silenceLibrary();
    grpc::ChannelArguments arguments;
    arguments.SetMaxReceiveMessageSize(-1);
    arguments.SetInt(GRPC_ARG_INITIAL_RECONNECT_BACKOFF_MS, shortestReconnect);
    arguments.SetInt(GRPC_ARG_MIN_RECONNECT_BACKOFF_MS, longestReconnect);
    arguments.SetInt(GRPC_ARG_MAX_RECONNECT_BACKOFF_MS, longestReconnect);
    arguments.SetInt(GRPC_ARG_USE_LOCAL_SUBCHANNEL_POOL, 1);
    // A proxy for pages of the web is none for stores.
    arguments.SetInt(GRPC_ARG_ENABLE_HTTP_PROXY, std::getenv("grpc_proxy") ? 1 : 0);
    const auto credentials =
        settings.usesTls ? grpc::SslCredentials({settings.authority, settings.key, settings.certificate})
                         : grpc::InsecureChannelCredentials();
    // Named as an address, or a host called "unix" would be taken for the way to it.
    return grpc::CreateCustomChannel("dns:///" + endpoint, credentials, arguments);
}

CallEnd endOf(const grpc::Status& status)
{
    return {CallEnd::Code(status.error_code()), status.error_message()};
}

class Stream : public EtcdStream
{
public:
    using Ways = grpc::ClientReaderWriter<WatchRequest, WatchResponse>;

    explicit Stream(std::unique_ptr<Ways> openWays) : ways(std::move(openWays)) {}

    void write(const WatchRequest& request) override { ways->Write(request); }
    bool read(WatchResponse& response) override { return ways->Read(&response); }
    CallEnd finish() override { return endOf(ways->Finish()); }

private:
    const std::unique_ptr<Ways> ways;
};

} // namespace

struct EtcdCall::Context
{
    grpc::ClientContext call;
};

EtcdCall::EtcdCall() : context(std::make_unique<Context>())
{
}
EtcdCall::~EtcdCall() = default;

void EtcdCall::endAfter(std::chrono::milliseconds time)
{
    context->call.set_deadline(std::chrono::system_clock::now() + time);
}

void EtcdCall::addMetadata(const std::string& name, const std::string& value)
{
    context->call.AddMetadata(name, value);
}

void EtcdCall::cancel()
{
    context->call.TryCancel();
}

struct EtcdConnection::Channel
{
    std::shared_ptr<grpc::Channel> way;
};

EtcdConnection::EtcdConnection(const Repository::StoreSettings& settings, const std::string& endpoint)
    : channel(new Channel{makeChannel(settings, endpoint)})
{
}

EtcdConnection::~EtcdConnection() = default;

CallEnd EtcdConnection::call(EtcdCall& call, const AuthenticateRequest& request,
                             AuthenticateResponse& response) const
{
    return endOf(Auth::NewStub(channel->way)->Authenticate(&call.context->call, request, &response));
}

CallEnd EtcdConnection::call(EtcdCall& call, const RangeRequest& request, RangeResponse& response) const
{
    return endOf(KV::NewStub(channel->way)->Range(&call.context->call, request, &response));
}

CallEnd EtcdConnection::call(EtcdCall& call, const TxnRequest& request, TxnResponse& response) const
{
    return endOf(KV::NewStub(channel->way)->Txn(&call.context->call, request, &response));
}

CallEnd EtcdConnection::call(EtcdCall& call, const LeaseGrantRequest& request,
                             LeaseGrantResponse& response) const
{
    return endOf(Lease::NewStub(channel->way)->LeaseGrant(&call.context->call, request, &response));
}

CallEnd EtcdConnection::call(EtcdCall& call, const LeaseKeepAliveRequest& request,
                             LeaseKeepAliveResponse& response) const
{
    const auto stream = Lease::NewStub(channel->way)->LeaseKeepAlive(&call.context->call);
    stream->Write(request);
    stream->WritesDone();
    const bool isAnswered = stream->Read(&response);
    LeaseKeepAliveResponse left;
    while (stream->Read(&left)) {
    }
    const CallEnd end = endOf(stream->Finish());
    return isAnswered ? CallEnd() : end;
}

CallEnd EtcdConnection::call(EtcdCall& call, const LeaseRevokeRequest& request,
                             LeaseRevokeResponse& response) const
{
    return endOf(Lease::NewStub(channel->way)->LeaseRevoke(&call.context->call, request, &response));
}

std::unique_ptr<EtcdStream> EtcdConnection::watch(EtcdCall& call) const
{
    return std::make_unique<Stream>(Watch::NewStub(channel->way)->Watch(&call.context->call));
}

} // namespace Vantry::Etcd
