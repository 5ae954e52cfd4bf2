#include "repository/PatternIndex.h"

#include <algorithm>
#include <mutex>

namespace Repository {

using FrameworkCore::AppConfig::PathPattern;

PatternIndex::Key PatternIndex::keyOf(const PathPattern& pattern)
{
    const QStringList& literals = pattern.getLiterals();
    if (!literals.first().isEmpty())
        return {AtStart, literals.first()};
    if (!literals.last().isEmpty())
        return {AtEnd, literals.last()};
    const auto longest =
        std::max_element(literals.begin(), literals.end(),
                         [](const QString& a, const QString& b) { return a.size() < b.size(); });
    return {Inside, *longest};
}

void PatternIndex::add(const QString& text, RegistrationPointer registration)
{
    const PathPattern pattern(text);
    const Key key = keyOf(pattern);
    const std::unique_lock lock(mutex);
    Group& group = groups[key.place];
    const auto [entry, isNew] = group.entries[key.text].try_emplace(text, Entry{pattern, {}});
    entry->second.registrations.add(std::move(registration));
    if (isNew)
        ++group.lengths[key.text.size()];
    generation.fetch_add(1, std::memory_order_release);
}

void PatternIndex::remove(const QString& text, const Registration& registration)
{
    const Key key = keyOf(PathPattern(text));
    RegistrationPointer removed; // may be the last owner of what the callback captured: let it go unlocked
    const std::unique_lock lock(mutex);
    Group& group = groups[key.place];
    const auto filed = group.entries.find(key.text);
    if (filed == group.entries.end())
        return;
    const auto entry = filed->second.find(text);
    if (entry == filed->second.end())
        return;
    removed = entry->second.registrations.take(registration);
    generation.fetch_add(1, std::memory_order_release);
    if (!entry->second.registrations.isEmpty())
        return;
    filed->second.erase(entry);
    if (filed->second.empty())
        group.entries.erase(filed);
    if (--group.lengths[key.text.size()] == 0)
        group.lengths.erase(key.text.size());
}

Registrations PatternIndex::match(const QString& path) const
{
    Registrations found;
    const std::shared_lock lock(mutex);
    const auto collect = [&found, &path](const Group& group, int start, int length) {
        // The text is looked at in place: a look-up allocates nothing.
        const auto filed = group.entries.find(QString::fromRawData(path.constData() + start, length));
        if (filed == group.entries.end())
            return;
        for (const auto& [text, entry] : filed->second) {
            if (!entry.pattern.matches(path))
                continue;
            entry.registrations.forEach(
                [&found](const RegistrationPointer& registration) { found.append(registration); });
        }
    };
    const auto lengthsOf = [&path](const Group& group) {
        return std::pair(group.lengths.begin(), group.lengths.upper_bound(path.size()));
    };

    for (auto [length, end] = lengthsOf(groups[AtStart]); length != end; ++length)
        collect(groups[AtStart], 0, length->first);
    for (auto [length, end] = lengthsOf(groups[AtEnd]); length != end; ++length)
        collect(groups[AtEnd], path.size() - length->first, length->first);
    for (auto [length, end] = lengthsOf(groups[Inside]); length != end; ++length) {
        const int lastStart = length->first == 0 ? 0 : path.size() - length->first;
        for (int start = 0; start <= lastStart; ++start) {
            const bool seenBefore =
                start > 0 &&
                path.midRef(0, start + length->first - 1).contains(path.midRef(start, length->first));
            if (!seenBefore)
                collect(groups[Inside], start, length->first);
        }
    }
    return found;
}

} // namespace Repository
