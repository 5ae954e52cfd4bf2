// What of the entries of a store is on its way there.

#include "repository/fleet/SharedEntries.h"

#include <algorithm>

namespace Repository {

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;

namespace {

// About what the value takes on its way.
std::size_t sizeOf(const Value& value)
{
    std::size_t size = 32;
    if (const auto* text = std::get_if<std::string>(&value.data))
        size += text->size() * (value.type == Type::ByteArray ? 4 : 3) / 3;
    if (const auto* list = std::get_if<std::vector<std::string>>(&value.data)) {
        for (const std::string& each : *list)
            size += each.size() + 4;
    }
    return size;
}

} // namespace

std::vector<SharedEntries::Outgoing> SharedEntries::takeOutgoing(std::size_t mostEntries,
                                                                 std::size_t mostBytes, From from)
{
    std::vector<Outgoing> outgoing;
    std::size_t bytes = 0;
    for (auto& [number, batch] : queue) {
        for (; number != openBatch && batch.heldBack == 0 && batch.next < batch.paths.size(); ++batch.next) {
            const std::string& path = batch.paths[batch.next];
            const auto known = edits.find(path);
            if (known == edits.end() || known->second.batch != number || known->second.sent != 0)
                continue;
            auto value = valueHere(path);
            bytes += path.size() + (value ? sizeOf(*value) : 0);
            if (outgoing.size() == mostEntries || (!outgoing.empty() && bytes > mostBytes))
                return outgoing;
            Edit& edited = known->second;
            edited.sent = edited.number;
            outgoing.push_back({path, std::move(value), edited.base.revision, edited.number});
        }
        if (from == From::OneBatch && !outgoing.empty())
            return outgoing;
    }
    return outgoing;
}

bool SharedEntries::isSomethingSent() const
{
    return std::any_of(edits.begin(), edits.end(), [](const auto& edit) { return edit.second.sent != 0; });
}

void SharedEntries::refuse(const std::vector<Outgoing>& outgoing)
{
    settle(outgoing, 0);
    for (const Outgoing& sent : outgoing) {
        const auto known = edits.find(sent.path);
        if (known != edits.end() && known->second.number == sent.number)
            change(known->second, [&edited = known->second] { edited.isRefused = true; });
    }
}

void SharedEntries::retryRefused()
{
    for (auto& [path, edited] : edits) {
        if (edited.isRefused)
            change(edited, [&refused = edited.isRefused] { refused = false; });
    }
}

void SharedEntries::dropUnwanted(std::vector<Outgoing>& outgoing) const
{
    const auto isGone = [this](const Outgoing& sent) {
        const auto known = edits.find(sent.path);
        return known == edits.end() || known->second.sent != sent.number;
    };
    outgoing.erase(std::remove_if(outgoing.begin(), outgoing.end(), isGone), outgoing.end());
}

void SharedEntries::settle(const std::vector<Outgoing>& outgoing, std::int64_t writtenRevision)
{
    for (const Outgoing& sent : outgoing) {
        const auto known = edits.find(sent.path);
        if (known == edits.end())
            continue; // the store has told of it already, or it was given up meanwhile
        Edit& edited = known->second;
        edited.sent = 0;
        if (writtenRevision > 0 && !sent.value)
            removed[sent.path] = writtenRevision;
        if (writtenRevision > edited.stored.revision)
            change(edited, [&] {
                edited.stored = {sent.value, sent.value ? writtenRevision : 0, false};
                edited.base = edited.stored;
            });
        if (!dropIfDone(sent.path))
            queue[edited.batch].next = 0; // which comes again, in its place
    }
}

} // namespace Repository
