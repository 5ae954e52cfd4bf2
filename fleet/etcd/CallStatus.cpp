#include "fleet/etcd/CallStatus.h"

namespace Vantry::Etcd {

using Repository::StoreResult;
using Status = StoreResult::Status;

namespace {

bool says(const grpc::Status& status, std::string_view text)
{
    return status.error_message().find(text) != std::string::npos;
}

// Of a failed connection, the last attempt.
std::string reasonIn(const std::string& message)
{
    std::string reason = message;
    for (const std::string_view front : {"last error: ", "UNKNOWN: ", "UNAVAILABLE: "}) {
        const std::size_t place = reason.find(front);
        if (place != std::string::npos)
            reason.erase(0, place + front.size());
    }
    if (reason.rfind("ipv", 0) == 0) // the address, which is told before it
        reason.erase(0, reason.find(": ") + 2);
    return reason;
}

Status statusOf(const grpc::Status& status)
{
    switch (status.error_code()) {
    case grpc::StatusCode::OK:
        return Status::Done;
    case grpc::StatusCode::OUT_OF_RANGE:
        return says(status, "compacted") ? Status::Compacted : Status::Unavailable;
    case grpc::StatusCode::PERMISSION_DENIED:
    case grpc::StatusCode::UNAUTHENTICATED:
    case grpc::StatusCode::INVALID_ARGUMENT:
    case grpc::StatusCode::FAILED_PRECONDITION:
        return Status::Refused;
    case grpc::StatusCode::RESOURCE_EXHAUSTED: // full, or too many requests for now
        return says(status, "too many requests") ? Status::Unavailable : Status::Refused;
    default:
        return Status::Unavailable;
    }
}

} // namespace

StoreResult resultOf(const grpc::Status& status, const std::string& endpoint)
{
    StoreResult result{statusOf(status), {}};
    if (result.ok())
        return result;
    const bool isLate = status.error_code() == grpc::StatusCode::DEADLINE_EXCEEDED;
    result.reason = endpoint + ": " + (isLate ? "no answer in time" : reasonIn(status.error_message()));
    return result;
}

bool asksForToken(const grpc::Status& status)
{
    return (status.error_code() == grpc::StatusCode::UNAUTHENTICATED && says(status, "invalid auth token")) ||
           says(status, "revision of auth store is old");
}

} // namespace Vantry::Etcd
