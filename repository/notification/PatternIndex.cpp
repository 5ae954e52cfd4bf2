#include "repository/notification/PatternIndex.h"

#include "host/FrameworkCore/AppConfig/PathPattern.h"

#include <algorithm>
#include <mutex>

namespace Repository {

using FrameworkCore::AppConfig::PathPattern;

PatternIndex::Anchored PatternIndex::anchored(const QString& pattern)
{
    const QStringList literals = PathPattern(pattern).getLiterals();
    const auto longest =
        std::max_element(literals.begin(), literals.end(),
                         [](const QString& a, const QString& b) { return a.size() < b.size(); });
    if (!literals.first().isEmpty() || longest->isEmpty()) // the empty text is where every path begins
        return {atStart, literals.first()};
    if (!literals.last().isEmpty())
        return {atEnd, literals.last()};
    return {inside, *longest};
}

void PatternIndex::add(const QString& pattern, RegistrationPointer registration)
{
    const Anchored found = anchored(pattern);
    const std::unique_lock lock(mutex);
    found.group.add(found.text, pattern, std::move(registration));
    generation.fetch_add(1, std::memory_order_release);
}

void PatternIndex::remove(const QString& pattern, const Registration& registration)
{
    const Anchored found = anchored(pattern);
    RegistrationPointer removed; // may be the last owner of what the callback captured: let it go unlocked
    const std::unique_lock lock(mutex);
    removed = found.group.take(found.text, pattern, registration);
    generation.fetch_add(1, std::memory_order_release);
}

Registrations PatternIndex::match(const QString& path) const
{
    Registrations found;
    const std::shared_lock lock(mutex);
    atStart.collect(path, 0, found);
    atEnd.collect(path, 0, found);
    for (int start = 0; start < path.size(); ++start)
        inside.collect(path, start, found);
    return found;
}

} // namespace Repository
