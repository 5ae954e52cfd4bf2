#include "fleet/etcd/CallStatus.h"

namespace Vantry::Etcd {

using Repository::StoreResult;
using Status = StoreResult::Status;

namespace {

bool says(const CallEnd& end, std::string_view text)
{
    return end.message.find(text) != std::string::npos;
}

// What a failed connection means, by what its reason holds.
struct Hint
{
    std::string_view mark;
    std::string_view meaning;
};

constexpr std::string_view breaksOff =
    "it breaks off the connection, as where TLS is on one side only, or where it asks for a certificate";

constexpr Hint hints[] = {
    {"DNS resolution failed", "the name of its host is not known"},
    {"Failed parsing HTTP/2", "no etcd answers there, but another program"},
    {"http1.x server", "no etcd answers there, but another program"},
    {"SETTINGS frame", "no etcd answers there"},
    {"Handshake read failed", "no etcd answers there"},
    {"wrong version number", "no TLS is spoken there, but that is what etcds:// asks for"},
    {"Endpoint read failed", breaksOff},
    {"Socket closed", breaksOff}};

std::string_view meaningOf(const std::string& message)
{
    if (message.find("failed to connect") == std::string::npos &&
        message.find("DNS resolution failed") == std::string::npos)
        return {};
    for (const Hint& hint : hints) {
        if (message.find(hint.mark) != std::string::npos)
            return hint.meaning;
    }
    return {};
}

constexpr std::string_view full = "database space exceeded";

// Of a failed connection, the last attempt, after what it means.
std::string reasonIn(const std::string& message)
{
    if (message.find(full) != std::string::npos)
        return "the server is full; compact and defragment it, then disarm its alarm (" + message + ')';
    const std::string_view meaning = meaningOf(message);
    std::string reason = message;
    for (const std::string_view front : {"last error: ", "UNKNOWN: ", "INTERNAL: ", "UNAVAILABLE: "}) {
        const std::size_t place = reason.find(front);
        if (place != std::string::npos)
            reason.erase(0, place + front.size());
    }
    if (reason.rfind("ipv", 0) == 0) // the address comes first
        reason.erase(0, reason.find(": ") + 2);
    if (meaning.empty())
        return reason;
    const std::size_t colon = reason.rfind(": ");
    return std::string(meaning) + " (" + reason.substr(colon == std::string::npos ? 0 : colon + 2) + ')';
}

Status statusOf(const CallEnd& end)
{
    switch (end.code) {
    case CallEnd::Code::Ok:
        return Status::Done;
    case CallEnd::Code::OutOfRange:
        return says(end, "compacted") ? Status::Compacted : Status::Unavailable;
    case CallEnd::Code::InvalidArgument:
        return says(end, "too large") || says(end, "too many operations") ? Status::TooLarge
                                                                          : Status::Refused;
    case CallEnd::Code::PermissionDenied:
    case CallEnd::Code::Unauthenticated:
    case CallEnd::Code::FailedPrecondition:
        return Status::Refused;
    case CallEnd::Code::ResourceExhausted: // full, or too many requests for now
        return says(end, "too many requests") ? Status::Unavailable : Status::Refused;
    default:
        return Status::Unavailable;
    }
}

} // namespace

StoreResult resultOf(const CallEnd& end, const std::string& endpoint)
{
    StoreResult result{statusOf(end), {}};
    if (result.ok())
        return result;
    const bool isLate = end.code == CallEnd::Code::DeadlineExceeded;
    result.reason = endpoint + ": " + (isLate ? "no answer in time" : reasonIn(end.message));
    return result;
}

bool asksForToken(const CallEnd& end)
{
    return (end.code == CallEnd::Code::Unauthenticated && says(end, "invalid auth token")) ||
           says(end, "revision of auth store is old");
}

} // namespace Vantry::Etcd
