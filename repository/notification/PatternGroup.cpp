#include "repository/notification/PatternGroup.h"

#include <algorithm>

namespace Repository {

using FrameworkCore::AppConfig::PathPattern;

namespace {

bool isPowerOfTwo(int length)
{
    return (length & (length - 1)) == 0;
}

} // namespace

void PatternGroup::add(const QString& text, const QString& pattern, RegistrationPointer registration)
{
    const auto [filed, isNew] = entries.try_emplace(text);
    const auto entry = filed->second.try_emplace(pattern, Entry{PathPattern(pattern), {}}).first;
    entry->second.registrations.add(std::move(registration));
    if (!isNew)
        return;
    if (textsOfLength.size() <= std::size_t(text.size()))
        textsOfLength.resize(std::size_t(text.size()) + 1);
    ++textsOfLength[std::size_t(text.size())];
    addToFilter(text);
    if (filter.isFull())
        fillFilter(2 * filter.getCount());
}

RegistrationPointer PatternGroup::take(const QString& text, const QString& pattern,
                                       const Registration& registration)
{
    const auto filed = entries.find(text);
    if (filed == entries.end())
        return {};
    const auto entry = filed->second.find(pattern);
    if (entry == filed->second.end())
        return {};
    RegistrationPointer taken = entry->second.registrations.take(registration);
    if (!entry->second.registrations.isEmpty())
        return taken;
    filed->second.erase(entry);
    if (!filed->second.empty())
        return taken;
    entries.erase(filed);
    --textsOfLength[std::size_t(text.size())];
    while (!textsOfLength.empty() && textsOfLength.back() == 0)
        textsOfLength.pop_back();
    if (++takenTexts > entries.size())
        fillFilter(filter.getCount() / 2);
    return taken;
}

void PatternGroup::collect(const QString& path, int start, Registrations& found) const
{
    const int longest = std::min(path.size() - start, int(textsOfLength.size()) - 1);
    if (longest >= 0 && textsOfLength[0] > 0)
        collectFiled(path, start, 0, found);
    BloomFilter::Hash hash;
    for (int length = 1; length <= longest; ++length) {
        hash.append(characterOf(path, start + length - 1));
        const bool isText = textsOfLength[std::size_t(length)] > 0;
        if (!isText && !isPowerOfTwo(length))
            continue;
        if (!filter.mayHold(hash)) {
            if (isPowerOfTwo(length))
                return;
        } else if (isText) {
            collectFiled(path, start, length, found);
        }
    }
}

void PatternGroup::collectFiled(const QString& path, int start, int length, Registrations& found) const
{
    const int first = reading == Reading::Forward ? start : path.size() - start - length;
    // The text is looked at in place.
    const auto filed = entries.find(QString::fromRawData(path.constData() + first, length));
    if (filed == entries.end())
        return;
    if (start > 0 && path.midRef(0, start + length - 1).contains(filed->first))
        return;
    for (const auto& [text, entry] : filed->second) {
        if (!entry.pattern.matches(path))
            continue;
        entry.registrations.forEach(
            [&found](const RegistrationPointer& registration) { found.append(registration); });
    }
}

void PatternGroup::addToFilter(const QString& text)
{
    BloomFilter::Hash hash;
    for (int length = 1; length <= text.size(); ++length) {
        hash.append(characterOf(text, length - 1));
        if (isPowerOfTwo(length) || length == text.size())
            filter.insert(hash);
    }
}

void PatternGroup::fillFilter(std::size_t room)
{
    filter = BloomFilter(room);
    takenTexts = 0;
    for (const auto& [text, patterns] : entries)
        addToFilter(text);
}

} // namespace Repository
