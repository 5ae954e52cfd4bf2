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

void PatternIndex::add(const std::shared_ptr<Registration>& registration)
{
    const QString& text = registration->getPathOrPattern();
    const PathPattern pattern(text);
    const Key key = keyOf(pattern);
    const std::unique_lock lock(mutex);
    Group& group = groups[key.place];
    const auto [entry, isNew] = group.entries[key.text].try_emplace(text, Entry{pattern, {}});
    fileRegistration(entry->second.registrations, registration);
    if (isNew)
        ++group.lengths[key.text.size()];
    generation.fetch_add(1, std::memory_order_release);
}

void PatternIndex::remove(const Registration& registration)
{
    const QString& text = registration.getPathOrPattern();
    const Key key = keyOf(PathPattern(text));
    std::shared_ptr<Registration>
        removed; // may be the last owner of what the callback captured: let it go unlocked
    const std::unique_lock lock(mutex);
    Group& group = groups[key.place];
    const auto filed = group.entries.find(key.text);
    if (filed == group.entries.end())
        return;
    const auto entry = filed->second.find(text);
    if (entry == filed->second.end())
        return;
    removed = takeRegistration(entry->second.registrations, registration);
    generation.fetch_add(1, std::memory_order_release);
    if (!entry->second.registrations.empty())
        return;
    filed->second.erase(entry);
    if (filed->second.empty())
        group.entries.erase(filed);
    if (--group.lengths[key.text.size()] == 0)
        group.lengths.erase(key.text.size());
}

std::shared_ptr<const Registrations> PatternIndex::match(const QString& path) const
{
    Registrations found;
    const std::shared_lock lock(mutex);
    const auto collect = [&found, &path](const Group& group, int start, int length) {
        // The text is looked at in place: a look-up allocates nothing.
        const auto filed = group.entries.find(QString::fromRawData(path.constData() + start, length));
        if (filed == group.entries.end())
            return;
        for (const auto& [text, entry] : filed->second) {
            if (entry.pattern.matches(path))
                found.insert(found.end(), entry.registrations.begin(), entry.registrations.end());
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
    return found.empty() ? nullptr : std::make_shared<const Registrations>(std::move(found));
}

} // namespace Repository
