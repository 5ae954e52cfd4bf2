#include "fleet/etcd/CallStatus.h"

#include "host/FrameworkCore/Values/Reason.h"

#include <utility>

namespace Vantry::Etcd {

using FrameworkCore::Values::Reason;
using Repository::StoreResult;
using Status = StoreResult::Status;

namespace {

bool says(const CallEnd& end, std::string_view text)
{
    return end.message.find(text) != std::string::npos;
}

// What a failed connection means, by what its reason holds; empty where that says enough.
std::string meaningOf(const CallEnd& end)
{
    if (!says(end, "failed to connect") && !says(end, "DNS resolution failed"))
        return {};
    const std::string otherProgram = Reason::tr("no etcd answers there, but another program");
    const std::string nobody = Reason::tr("no etcd answers there");
    const std::string breaksOff = Reason::tr(
        "it breaks off the connection, as where TLS is on one side only, or where it asks for a certificate");
    const std::pair<std::string_view, std::string> meanings[] = {
        {"DNS resolution failed", Reason::tr("the name of its host is not known")},
        {"Failed parsing HTTP/2", otherProgram},
        {"http1.x server", otherProgram},
        {"SETTINGS frame", nobody},
        {"Handshake read failed", nobody},
        {"wrong version number", Reason::tr("no TLS is spoken there, but that is what etcds:// asks for")},
        {"Endpoint read failed", breaksOff},
        {"Socket closed", breaksOff}};
    for (const auto& [mark, meaning] : meanings) {
        if (says(end, mark))
            return meaning;
    }
    return {};
}

// Of a failed connection, the last attempt, after what it means.
std::string reasonIn(const CallEnd& end)
{
    if (says(end, "database space exceeded"))
        return Reason::tr("the server is full; compact and defragment it, then disarm its alarm (%1)",
                          {end.message});
    std::string reason = end.message;
    for (const std::string_view front : {"last error: ", "UNKNOWN: ", "INTERNAL: ", "UNAVAILABLE: "}) {
        const std::size_t place = reason.find(front);
        if (place != std::string::npos)
            reason.erase(0, place + front.size());
    }
    if (reason.rfind("ipv", 0) == 0) // the address comes first
        reason.erase(0, reason.find(": ") + 2);
    const std::string meaning = meaningOf(end);
    if (meaning.empty())
        return reason;
    const std::size_t colon = reason.rfind(": ");
    return meaning + " (" + reason.substr(colon == std::string::npos ? 0 : colon + 2) + ')';
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
    result.reason = endpoint + ": " + (isLate ? Reason::tr("no answer in time") : reasonIn(end));
    return result;
}

bool asksForToken(const CallEnd& end)
{
    return (end.code == CallEnd::Code::Unauthenticated && says(end, "invalid auth token")) ||
           says(end, "revision of auth store is old");
}

} // namespace Vantry::Etcd
