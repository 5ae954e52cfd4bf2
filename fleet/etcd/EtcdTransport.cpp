#include "fleet/etcd/EtcdTransport.h"

#include "fleet/etcd/CallStatus.h"
#include "fleet/etcd/EtcdWatch.h"

#include <cstdlib>
#include <grpc/support/log.h>

namespace Vantry::Etcd {

using namespace Repository;
using Clock = std::chrono::system_clock;

namespace {

constexpr auto patience = std::chrono::seconds(3);
constexpr auto patienceForReading = std::chrono::seconds(10); // of a large page
constexpr auto patienceForFarewell = std::chrono::milliseconds(300);
constexpr int shortestReconnect = 50; // milliseconds
constexpr int longestReconnect = 1000;

using Compare = etcdserverpb::Compare;

void addCompare(etcdserverpb::TxnRequest& request, const StoreChange& change)
{
    if (change.expected == StoreChange::anyRevision)
        return;
    Compare& compare = *request.add_compare();
    compare.set_result(Compare::EQUAL);
    compare.set_target(Compare::MOD);
    compare.set_key(change.key);
    compare.set_mod_revision(change.expected);
}

void addChange(etcdserverpb::TxnRequest& request, const StoreChange& change)
{
    if (change.value) {
        etcdserverpb::PutRequest& put = *request.add_success()->mutable_request_put();
        put.set_key(change.key);
        put.set_value(*change.value);
        put.set_lease(change.lease);
    } else {
        request.add_success()->mutable_request_delete_range()->set_key(change.key);
    }
    request.add_failure()->mutable_request_range()->set_key(change.key);
}

StoreEntry entryOf(etcdserverpb::KeyValue& entry)
{
    return {std::move(*entry.mutable_key()), std::move(*entry.mutable_value()), entry.mod_revision()};
}

} // namespace

EtcdTransport::EtcdTransport(StoreSettings storeSettings)
    : settings(std::move(storeSettings)), channel(makeChannel())
{
}

EtcdTransport::~EtcdTransport() = default;

// The reply to a large read has no bound; connections are made anew soon after they were lost.
std::shared_ptr<grpc::Channel> EtcdTransport::makeChannel() const
{
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
    return grpc::CreateCustomChannel("dns:///" + settings.endpoints[endpoint], credentials, arguments);
}

void EtcdTransport::rotate()
{
    const std::lock_guard lock(mutex);
    turn();
}

void EtcdTransport::turn()
{
    endpoint = (endpoint + 1) % settings.endpoints.size();
    channel = makeChannel();
}

void EtcdTransport::cancel()
{
    const std::lock_guard lock(mutex);
    isCancelled = true;
    for (grpc::ClientContext* context : active)
        context->TryCancel();
}

EtcdTransport::Answer EtcdTransport::callOnce(const Call& operation, const std::string& withToken,
                                              Purpose purpose)
{
    grpc::ClientContext context;
    const std::chrono::milliseconds most = purpose == Purpose::Farewell ? patienceForFarewell
                                           : purpose == Purpose::Reading
                                               ? patienceForReading
                                               : std::chrono::milliseconds(patience);
    context.set_deadline(Clock::now() + most);
    if (!withToken.empty())
        context.AddMetadata("token", withToken);
    std::shared_ptr<grpc::Channel> used;
    std::string asked;
    {
        const std::lock_guard lock(mutex);
        if (isCancelled && purpose != Purpose::Farewell)
            return {{StoreResult::Status::Cancelled, "the connection is being closed"}, false};
        if (purpose != Purpose::Farewell)
            active.insert(&context);
        used = channel;
        asked = settings.endpoints[endpoint];
    }
    const grpc::Status status = operation(used, context);
    const std::lock_guard lock(mutex);
    active.erase(&context);
    if (isCancelled && !status.ok())
        return {{StoreResult::Status::Cancelled, "the connection is being closed"}, false};
    const Answer answer{resultOf(status, asked), asksForToken(status)};
    // Also where there is one server only: a channel may take long to notice that it is back.
    if (answer.result.status == StoreResult::Status::Unavailable && used == channel)
        turn();
    return answer;
}

EtcdTransport::Answer EtcdTransport::authenticate(std::string& given)
{
    given.clear();
    if (settings.user.empty())
        return {};
    etcdserverpb::AuthenticateRequest request;
    request.set_name(settings.user);
    request.set_password(settings.password);
    etcdserverpb::AuthenticateResponse response;
    Answer answer = callOnce(
        [&](const auto& used, auto& context) {
            return etcdserverpb::Auth::NewStub(used)->Authenticate(&context, request, &response);
        },
        {}, Purpose::Work);
    given = response.token();
    const std::lock_guard lock(mutex);
    token = given;
    return answer;
}

StoreResult EtcdTransport::call(const Call& operation, Purpose purpose)
{
    std::string known;
    {
        const std::lock_guard lock(mutex);
        known = token;
    }
    Answer answer;
    if (known.empty())
        answer = authenticate(known);
    if (answer.result.ok())
        answer = callOnce(operation, known, purpose);
    if (answer.asksForToken && !settings.user.empty()) {
        answer = authenticate(known);
        if (answer.result.ok())
            answer = callOnce(operation, known, purpose);
    }
    return answer.result;
}

StoreResult EtcdTransport::read(const StoreRange& range, StorePage& page)
{
    etcdserverpb::RangeRequest request;
    request.set_key(range.begin);
    request.set_range_end(range.end);
    request.set_limit(range.limit);
    request.set_revision(range.revision);
    request.set_min_mod_revision(range.sinceRevision);
    request.set_keys_only(range.keysOnly);
    etcdserverpb::RangeResponse response;
    const StoreResult result = call(
        [&](const auto& used, auto& context) {
            return etcdserverpb::KV::NewStub(used)->Range(&context, request, &response);
        },
        Purpose::Reading);
    page.hasMore = response.more();
    page.count = response.count();
    page.revision = response.header().revision();
    page.entries.clear();
    page.entries.reserve(std::size_t(response.kvs_size()));
    for (etcdserverpb::KeyValue& entry : *response.mutable_kvs())
        page.entries.push_back(entryOf(entry));
    return result;
}

StoreResult EtcdTransport::write(const std::vector<StoreChange>& changes, StoreReply& reply)
{
    etcdserverpb::TxnRequest request;
    for (const StoreChange& change : changes) {
        addCompare(request, change);
        addChange(request, change);
    }
    etcdserverpb::TxnResponse response;
    const StoreResult result = call([&](const auto& used, auto& context) {
        return etcdserverpb::KV::NewStub(used)->Txn(&context, request, &response);
    });
    reply.isWritten = response.succeeded();
    reply.revision = response.header().revision();
    reply.found.clear();
    for (etcdserverpb::ResponseOp& operation : *response.mutable_responses()) {
        if (!operation.has_response_range())
            continue;
        auto& entries = *operation.mutable_response_range()->mutable_kvs();
        reply.found.push_back(entries.empty() ? std::nullopt : std::optional(entryOf(entries[0])));
    }
    return result;
}

std::unique_ptr<StoreWatch> EtcdTransport::watch(const std::string& begin, const std::string& end,
                                                 std::int64_t revision, StoreResult& result)
{
    etcdserverpb::WatchCreateRequest request;
    request.set_key(begin);
    request.set_range_end(end);
    request.set_start_revision(revision);
    request.set_progress_notify(true);
    std::string fresh; // a watch is refused with an old token, and outlives the one that it began with
    result = authenticate(fresh).result;
    if (!result.ok())
        return nullptr;
    const std::lock_guard lock(mutex);
    return std::make_unique<EtcdWatch>(makeChannel(), settings.endpoints[endpoint], fresh, request);
}

StoreResult EtcdTransport::grantLease(std::chrono::seconds timeToLive, std::int64_t& lease)
{
    etcdserverpb::LeaseGrantRequest request;
    request.set_ttl(timeToLive.count());
    etcdserverpb::LeaseGrantResponse response;
    const StoreResult result = call([&](const auto& used, auto& context) {
        return etcdserverpb::Lease::NewStub(used)->LeaseGrant(&context, request, &response);
    });
    lease = response.id();
    return result;
}

StoreResult EtcdTransport::keepLease(std::int64_t lease, bool& isAlive)
{
    etcdserverpb::LeaseKeepAliveRequest request;
    request.set_id(lease);
    etcdserverpb::LeaseKeepAliveResponse response;
    const StoreResult result = call([&](const auto& used, auto& context) {
        const auto stream = etcdserverpb::Lease::NewStub(used)->LeaseKeepAlive(&context);
        stream->Write(request);
        stream->WritesDone();
        const bool isAnswered = stream->Read(&response);
        etcdserverpb::LeaseKeepAliveResponse left;
        while (stream->Read(&left)) {
        }
        const grpc::Status status = stream->Finish();
        return isAnswered ? grpc::Status::OK : status;
    });
    isAlive = response.ttl() > 0;
    return result;
}

StoreResult EtcdTransport::revokeLease(std::int64_t lease)
{
    etcdserverpb::LeaseRevokeRequest request;
    request.set_id(lease);
    etcdserverpb::LeaseRevokeResponse response;
    return call(
        [&](const auto& used, auto& context) {
            return etcdserverpb::Lease::NewStub(used)->LeaseRevoke(&context, request, &response);
        },
        Purpose::Farewell);
}

} // namespace Vantry::Etcd

// The entry of the module, see StoreTransport.
extern "C" __attribute__((visibility("default"))) Repository::StoreTransport*
vantryOpenStoreTransport(int version, const Repository::StoreSettings& settings)
{
    if (version != Repository::StoreTransport::version)
        return nullptr;
    // Results say what failed; lines on the terminal are for those who ask for them.
    if (!std::getenv("GRPC_VERBOSITY"))
        gpr_set_log_function([](gpr_log_func_args*) {});
    try {
        return new Vantry::Etcd::EtcdTransport(settings);
    } catch (const std::exception&) {
        return nullptr;
    }
}
