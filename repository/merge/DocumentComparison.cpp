#include "repository/merge/DocumentComparison.h"

#include <algorithm>

namespace Repository {

using Documents::Document;
using Documents::Entry;
using Kind = DocumentChange::Kind;

namespace {

constexpr std::size_t nearby = 16; // so far ahead an entry is searched

bool isPowerOfTwo(std::size_t number)
{
    return (number & (number - 1)) == 0;
}

} // namespace

DocumentChanges DocumentComparison::run(const Document& after)
{
    after.visit([this](const Entry& entry) { take(entry); });
    for (; expected < before.size(); ++expected)
        passed.push_back(expected);
    return settle();
}

void DocumentComparison::take(const Entry& entry)
{
    const std::size_t position = find(entry.path);
    if (position == before.size()) {
        strangers.emplace_back(place, entry);
    } else {
        for (; expected < position; ++expected)
            passed.push_back(expected);
        ++expected;
        compareAt(position, place, entry);
    }
    ++place;
}

// Gives the number of all entries where there is none. The more were missed in a row, the farther it looks,
// but the less often, so that a long piece that was taken out is got over at a cost that its length bounds.
std::size_t DocumentComparison::find(const std::string& path)
{
    const std::size_t range = isPowerOfTwo(misses) ? nearby * (misses + 1) : 1;
    const std::size_t end = std::min(before.size(), expected + range);
    std::size_t position = expected;
    while (position < end && before.getPath(position) != path)
        ++position;
    const bool isFound = position < end;
    misses = isFound ? 0 : misses + 1;
    return isFound ? position : before.size();
}

void DocumentComparison::compareAt(std::size_t position, std::size_t at, const Entry& entry)
{
    const auto& was = before.getValue(position);
    if (!isSame(was, entry.value))
        changes.emplace_back(at, DocumentChange{entry.path, Kind::Changed, was, entry.value});
}

// Brings together what has moved. What is left of the ones has gone, of the others is new.
DocumentChanges DocumentComparison::settle()
{
    DocumentChanges result;
    std::unordered_map<std::string_view, std::size_t> waiting;
    if (!strangers.empty()) {
        for (const std::size_t position : passed)
            waiting.emplace(before.getPath(position), position);
    }
    for (auto& [at, entry] : strangers) {
        const auto found = waiting.find(entry.path);
        if (found == waiting.end()) {
            changes.emplace_back(at, DocumentChange{entry.path, Kind::Created, {}, entry.value});
        } else {
            compareAt(found->second, at, entry);
            waiting.erase(found);
            result.areMoved = true;
        }
    }
    for (const std::size_t position : passed) {
        const std::string_view path = before.getPath(position);
        if (strangers.empty() || waiting.count(path) > 0)
            result.entries.push_back({std::string(path), Kind::Removed, before.getValue(position), {}});
    }
    std::sort(changes.begin(), changes.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (auto& [at, change] : changes)
        result.entries.push_back(std::move(change));
    return result;
}

} // namespace Repository
