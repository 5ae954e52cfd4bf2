#include "tests/support/EtcdClient.h"

#include <chrono>
#include <etcd.grpc.pb.h>
#include <grpcpp/grpcpp.h>
#include <thread>

namespace TestSupport {

namespace {

using namespace etcdserverpb;

constexpr std::chrono::seconds answerTime(5);
constexpr std::chrono::seconds historyTime(60);
constexpr int readAttempts = 3;

// Ends the range of what begins so.
std::string endOf(std::string prefix)
{
    ++prefix.back();
    return prefix;
}

struct Call : grpc::ClientContext
{
    Call()
    {
        set_wait_for_ready(true);
        set_deadline(std::chrono::system_clock::now() + answerTime);
    }
};

std::shared_ptr<grpc::Channel> connect(const std::string& endpoints)
{
    grpc::ChannelArguments arguments;
    arguments.SetMaxReceiveMessageSize(-1);
    arguments.SetLoadBalancingPolicyName("round_robin");
    arguments.SetInt(GRPC_ARG_INITIAL_RECONNECT_BACKOFF_MS, 50);
    arguments.SetInt(GRPC_ARG_MIN_RECONNECT_BACKOFF_MS, 1000);
    arguments.SetInt(GRPC_ARG_MAX_RECONNECT_BACKOFF_MS, 500);
    return grpc::CreateCustomChannel("ipv4:" + endpoints, grpc::InsecureChannelCredentials(), arguments);
}

EtcdClient::Change changeOf(const Event& event)
{
    return {event.kv().key(), event.kv().value(), event.type() == Event::DELETE, event.kv().mod_revision()};
}

using Stream = grpc::ClientReaderWriter<WatchRequest, WatchResponse>;

// Gives whether the server accepted it.
bool create(Stream& stream, const std::string& key, const std::string& end, std::int64_t revision)
{
    WatchRequest request;
    request.mutable_create_request()->set_key(key);
    request.mutable_create_request()->set_range_end(end);
    request.mutable_create_request()->set_start_revision(revision);
    WatchResponse response;
    return stream.Write(request) && stream.Read(&response) && response.created() && !response.canceled();
}

} // namespace

struct EtcdClient::Connection
{
    explicit Connection(const std::string& endpoints)
        : channel(connect(endpoints)), store(KV::NewStub(channel)),
          watches(etcdserverpb::Watch::NewStub(channel))
    {
    }

    // Again when the connection broke meanwhile, since reading twice does no harm.
    bool read(const RangeRequest& request, RangeResponse& response) const
    {
        for (int attempt = 0; attempt < readAttempts; ++attempt) {
            Call call;
            const grpc::Status status = store->Range(&call, request, &response);
            if (status.error_code() != grpc::StatusCode::UNAVAILABLE)
                return status.ok();
        }
        return false;
    }

    std::int64_t commit(const TxnRequest& request) const
    {
        Call call;
        TxnResponse response;
        return store->Txn(&call, request, &response).ok() && response.succeeded()
                   ? response.header().revision()
                   : 0;
    }

    std::shared_ptr<grpc::Channel> channel;
    std::unique_ptr<KV::Stub> store;
    std::unique_ptr<etcdserverpb::Watch::Stub> watches;
};

EtcdClient::EtcdClient(const std::string& endpoints) : connection(std::make_shared<Connection>(endpoints))
{
}
EtcdClient::~EtcdClient() = default;

std::int64_t EtcdClient::put(const std::string& key, const std::string& value) const
{
    Call call;
    PutRequest request;
    request.set_key(key);
    request.set_value(value);
    PutResponse response;
    return connection->store->Put(&call, request, &response).ok() ? response.header().revision() : 0;
}

std::int64_t EtcdClient::remove(const std::string& key) const
{
    return commit({}, {key});
}

std::int64_t EtcdClient::commit(const Pairs& puts, const std::vector<std::string>& removals) const
{
    TxnRequest request;
    for (const auto& [key, value] : puts) {
        PutRequest* const put = request.add_success()->mutable_request_put();
        put->set_key(key);
        put->set_value(value);
    }
    for (const std::string& key : removals)
        request.add_success()->mutable_request_delete_range()->set_key(key);
    return connection->commit(request);
}

std::int64_t EtcdClient::putIf(const std::string& key, const std::string& value, std::int64_t revision) const
{
    TxnRequest request;
    Compare* const compare = request.add_compare();
    compare->set_target(Compare::MOD);
    compare->set_key(key);
    compare->set_mod_revision(revision);
    PutRequest* const put = request.add_success()->mutable_request_put();
    put->set_key(key);
    put->set_value(value);
    return connection->commit(request);
}

EtcdClient::Entry EtcdClient::get(const std::string& key) const
{
    RangeRequest request;
    request.set_key(key);
    RangeResponse response;
    if (!connection->read(request, response) || response.kvs().empty())
        return {key, {}, 0};
    return {key, response.kvs(0).value(), response.kvs(0).mod_revision()};
}

std::vector<EtcdClient::Entry> EtcdClient::readAll(const std::string& prefix, std::int64_t* revision,
                                                   int pageSize) const
{
    std::vector<Entry> entries;
    RangeRequest request;
    request.set_key(prefix);
    request.set_range_end(endOf(prefix));
    request.set_limit(pageSize);
    RangeResponse response;
    do {
        if (!connection->read(request, response))
            return {};
        if (entries.empty())
            entries.reserve(std::size_t(response.count()));
        for (KeyValue& found : *response.mutable_kvs())
            entries.push_back(
                {std::move(*found.mutable_key()), std::move(*found.mutable_value()), found.mod_revision()});
        if (request.revision() == 0)
            request.set_revision(response.header().revision());
        if (!entries.empty())
            request.set_key(entries.back().key + '\0');
    } while (response.more());
    if (revision)
        *revision = request.revision();
    return entries;
}

std::vector<EtcdClient::Change> EtcdClient::readHistory(const std::string& prefix) const
{
    const std::int64_t end = put("end of the history", {});
    grpc::ClientContext context;
    context.set_deadline(std::chrono::system_clock::now() + historyTime);
    const std::unique_ptr<Stream> stream = connection->watches->Watch(&context);
    const std::string all(1, '\0');
    std::vector<Change> changes;
    WatchResponse response;
    bool isComplete = false;
    if (end > 0 && create(*stream, all, all, 1)) {
        while (!isComplete && stream->Read(&response) && !response.canceled()) {
            for (const Event& event : response.events()) {
                if (event.kv().mod_revision() < end &&
                    event.kv().key().compare(0, prefix.size(), prefix) == 0)
                    changes.push_back(changeOf(event));
                isComplete = isComplete || event.kv().mod_revision() == end;
            }
        }
    }
    context.TryCancel();
    while (stream->Read(&response)) {
    }
    stream->Finish();
    return isComplete ? changes : std::vector<Change>();
}

namespace {

class RunningWatch : public EtcdClient::Watch
{
public:
    RunningWatch(etcdserverpb::Watch::Stub& stub, const std::string& prefix,
                 std::function<void(const EtcdClient::Change&)> given)
        : callback(std::move(given)), stream(stub.Watch(&context))
    {
        if (create(*stream, prefix, endOf(prefix), 0))
            reader = std::thread([this] { read(); });
    }

    ~RunningWatch() override
    {
        context.TryCancel();
        if (reader.joinable())
            reader.join();
        stream->Finish();
    }

private:
    void read()
    {
        WatchResponse response;
        while (stream->Read(&response)) {
            for (const Event& event : response.events())
                callback(changeOf(event));
        }
    }

    std::function<void(const EtcdClient::Change&)> callback;
    grpc::ClientContext context;
    std::unique_ptr<Stream> stream;
    std::thread reader;
};

} // namespace

std::unique_ptr<EtcdClient::Watch> EtcdClient::watch(const std::string& prefix,
                                                     const std::function<void(const Change&)>& callback) const
{
    return std::make_unique<RunningWatch>(*connection->watches, prefix, callback);
}

} // namespace TestSupport
