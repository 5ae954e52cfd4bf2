#include "fleet/etcd/EtcdWatch.h"

#include "fleet/etcd/CallStatus.h"
#include "host/FrameworkCore/Values/Reason.h"

namespace Vantry::Etcd {

using FrameworkCore::Values::Reason;
using Repository::StoreEvents;
using Repository::StoreResult;
using Status = StoreResult::Status;

EtcdWatch::EtcdWatch(std::shared_ptr<EtcdConnection> ownConnection, std::string watchedEndpoint,
                     const std::string& token, etcdserverpb::WatchCreateRequest watchRequest)
    : connection(std::move(ownConnection)), endpoint(std::move(watchedEndpoint)),
      request(std::move(watchRequest))
{
    call.addMetadata("hasleader", "true"); // a server that has lost the others ends it then
    if (!token.empty())
        call.addMetadata("token", token);
}

// The stream must be finished before it goes.
EtcdWatch::~EtcdWatch()
{
    call.cancel();
    etcdserverpb::WatchResponse left;
    while (stream && stream->read(left)) {
    }
    if (stream)
        finish();
}

void EtcdWatch::begin()
{
    stream = connection->watch(call);
    etcdserverpb::WatchRequest create;
    *create.mutable_create_request() = request;
    stream->write(create);
    const std::lock_guard lock(writing);
    takesRequests = true;
}

CallEnd EtcdWatch::finish()
{
    {
        const std::lock_guard lock(writing);
        takesRequests = false;
    }
    const CallEnd end = stream->finish();
    stream.reset();
    return end;
}

bool EtcdWatch::read(StoreEvents& events, StoreResult& result)
{
    if (!stream)
        begin();
    etcdserverpb::WatchResponse response;
    if (!stream->read(response)) {
        const CallEnd end = finish();
        const bool isCancelled = end.code == CallEnd::Code::Cancelled;
        result = isCancelled
                     ? StoreResult{Status::Unavailable, endpoint + ": " + Reason::tr("no sign of life")}
                     : resultOf(end, endpoint);
        if (result.ok())
            result = {Status::Unavailable, endpoint + ": " + Reason::tr("it has ended the connection")};
        return false;
    }
    // A refused watch is created and canceled in one response.
    if (response.compact_revision() > 0) {
        result = {Status::Compacted, endpoint + ": " + Reason::tr("its history from there on is gone")};
        return false;
    }
    if (response.canceled()) {
        const bool isRefused = response.cancel_reason().find("permission") != std::string::npos;
        result = {isRefused ? Status::Refused : Status::Unavailable,
                  endpoint + ": " + response.cancel_reason()};
        return false;
    }
    events.isBegin = response.created();
    events.revision = response.header().revision();
    events.events.reserve(std::size_t(response.events_size()));
    for (etcdserverpb::Event& event : *response.mutable_events()) {
        etcdserverpb::KeyValue& entry = *event.mutable_kv();
        StoreEvents::Event news;
        news.key = std::move(*entry.mutable_key());
        news.revision = entry.mod_revision();
        if (event.type() == etcdserverpb::Event::PUT)
            news.value = std::move(*entry.mutable_value());
        events.events.push_back(std::move(news));
    }
    return true;
}

void EtcdWatch::ask()
{
    etcdserverpb::WatchRequest question;
    question.mutable_progress_request();
    const std::lock_guard lock(writing);
    if (takesRequests)
        stream->write(question);
}

void EtcdWatch::cancel()
{
    call.cancel();
}

} // namespace Vantry::Etcd
