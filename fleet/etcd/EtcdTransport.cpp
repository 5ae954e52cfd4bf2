#include "fleet/etcd/EtcdTransport.h"

#include "fleet/etcd/CallStatus.h"
#include "fleet/etcd/EtcdWatch.h"
#include "host/FrameworkCore/Values/Reason.h"

namespace Vantry::Etcd {

using namespace Repository;
using FrameworkCore::Values::Reason;

namespace {

constexpr auto patience = std::chrono::seconds(3);
constexpr auto patienceForReading = std::chrono::seconds(10); // of a large page
constexpr auto patienceForFarewell = std::chrono::milliseconds(300);

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
    : settings(std::move(storeSettings)), connection(connect())
{
}

EtcdTransport::~EtcdTransport() = default;

std::shared_ptr<EtcdConnection> EtcdTransport::connect() const
{
    return std::make_shared<EtcdConnection>(settings, settings.endpoints[endpoint]);
}

void EtcdTransport::rotate()
{
    const std::lock_guard lock(mutex);
    turn();
}

void EtcdTransport::turn()
{
    endpoint = (endpoint + 1) % settings.endpoints.size();
    connection = connect();
}

void EtcdTransport::cancel()
{
    const std::lock_guard lock(mutex);
    isCancelled = true;
    for (EtcdCall* const call : active)
        call->cancel();
}

EtcdTransport::Answer EtcdTransport::callOnce(const Call& operation, const std::string& withToken,
                                              Purpose purpose)
{
    EtcdCall call;
    const std::chrono::milliseconds most = purpose == Purpose::Farewell ? patienceForFarewell
                                           : purpose == Purpose::Reading
                                               ? patienceForReading
                                               : std::chrono::milliseconds(patience);
    call.endAfter(most);
    if (!withToken.empty())
        call.addMetadata("token", withToken);
    std::shared_ptr<EtcdConnection> used;
    std::string asked;
    {
        const std::lock_guard lock(mutex);
        if (isCancelled && purpose != Purpose::Farewell)
            return {{StoreResult::Status::Cancelled, Reason::tr("the connection is being closed")}, false};
        if (purpose != Purpose::Farewell)
            active.insert(&call);
        used = connection;
        asked = settings.endpoints[endpoint];
    }
    const CallEnd end = operation(*used, call);
    const std::lock_guard lock(mutex);
    active.erase(&call);
    if (isCancelled && !end.ok())
        return {{StoreResult::Status::Cancelled, Reason::tr("the connection is being closed")}, false};
    const Answer answer{resultOf(end, asked), asksForToken(end)};
    // Also where there is one server only: a connection may take long to notice that it is back.
    if (answer.result.status == StoreResult::Status::Unavailable && used == connection)
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
        [&](const EtcdConnection& used, EtcdCall& call) { return used.call(call, request, response); }, {},
        Purpose::Work);
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

template <typename Request, typename Response>
StoreResult EtcdTransport::ask(const Request& request, Response& response, Purpose purpose)
{
    return call([&](const EtcdConnection& used, EtcdCall& one) { return used.call(one, request, response); },
                purpose);
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
    const StoreResult result = ask(request, response, Purpose::Reading);
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
    const StoreResult result = ask(request, response);
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
    return std::make_unique<EtcdWatch>(connect(), settings.endpoints[endpoint], fresh, request);
}

StoreResult EtcdTransport::grantLease(std::chrono::seconds timeToLive, std::int64_t& lease)
{
    etcdserverpb::LeaseGrantRequest request;
    request.set_ttl(timeToLive.count());
    etcdserverpb::LeaseGrantResponse response;
    const StoreResult result = ask(request, response);
    lease = response.id();
    return result;
}

StoreResult EtcdTransport::keepLease(std::int64_t lease, bool& isAlive)
{
    etcdserverpb::LeaseKeepAliveRequest request;
    request.set_id(lease);
    etcdserverpb::LeaseKeepAliveResponse response;
    const StoreResult result = ask(request, response);
    isAlive = response.ttl() > 0;
    return result;
}

StoreResult EtcdTransport::revokeLease(std::int64_t lease)
{
    etcdserverpb::LeaseRevokeRequest request;
    request.set_id(lease);
    etcdserverpb::LeaseRevokeResponse response;
    return ask(request, response, Purpose::Farewell);
}

} // namespace Vantry::Etcd

// The entry of the module, see StoreTransport.
extern "C" __attribute__((visibility("default"))) Repository::StoreTransport*
vantryOpenStoreTransport(int version, const Repository::StoreSettings& settings)
{
    if (version != Repository::StoreTransport::version)
        return nullptr;
    try {
        return new Vantry::Etcd::EtcdTransport(settings);
    } catch (const std::exception&) {
        return nullptr;
    }
}
