#include "fleet/etcd/EtcdWatch.h"

#include "fleet/etcd/CallStatus.h"

namespace Vantry::Etcd {

using Repository::StoreEvents;
using Repository::StoreResult;
using Status = StoreResult::Status;

EtcdWatch::EtcdWatch(std::shared_ptr<grpc::Channel> watchChannel, std::string watchedEndpoint,
                     const std::string& token, etcdserverpb::WatchCreateRequest watchRequest)
    : channel(std::move(watchChannel)), endpoint(std::move(watchedEndpoint)), request(std::move(watchRequest))
{
    context.AddMetadata("hasleader", "true"); // a server that has lost the others ends it then
    if (!token.empty())
        context.AddMetadata("token", token);
}

// The stream must be finished before it goes.
EtcdWatch::~EtcdWatch()
{
    context.TryCancel();
    etcdserverpb::WatchResponse left;
    while (stream && stream->Read(&left)) {
    }
    if (stream)
        finish();
}

void EtcdWatch::begin()
{
    stream = etcdserverpb::Watch::NewStub(channel)->Watch(&context);
    etcdserverpb::WatchRequest create;
    *create.mutable_create_request() = request;
    stream->Write(create);
    const std::lock_guard lock(writing);
    takesRequests = true;
}

grpc::Status EtcdWatch::finish()
{
    {
        const std::lock_guard lock(writing);
        takesRequests = false;
    }
    const grpc::Status status = stream->Finish();
    stream.reset();
    return status;
}

bool EtcdWatch::read(StoreEvents& events, StoreResult& result)
{
    if (!stream)
        begin();
    etcdserverpb::WatchResponse response;
    if (!stream->Read(&response)) {
        const grpc::Status status = finish();
        const bool isCancelled = status.error_code() == grpc::StatusCode::CANCELLED;
        result = isCancelled ? StoreResult{Status::Unavailable, endpoint + ": no sign of life"}
                             : resultOf(status, endpoint);
        if (result.ok())
            result = {Status::Unavailable, endpoint + ": it has ended the connection"};
        return false;
    }
    // A refused watch is created and canceled in one response.
    if (response.compact_revision() > 0) {
        result = {Status::Compacted, endpoint + ": its history from there on is gone"};
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
        stream->Write(question);
}

void EtcdWatch::cancel()
{
    context.TryCancel();
}

} // namespace Vantry::Etcd
