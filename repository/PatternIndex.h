#pragma once

#include "host/FrameworkCore/AppConfig/PathPattern.h"
#include "repository/Registration.h"

#include <QString>

#include <atomic>
#include <map>
#include <memory>
#include <shared_mutex>
#include <unordered_map>

namespace Repository {

// Which registrations with a pattern match a path. Each pattern is filed under one run of its literal text:
// the one it begins with, else the one it ends with, else the longest inside. A path is then looked up once
// for each length of such texts that exists, so that the cost follows the path's length and not the number of
// patterns. Any thread. Callers that keep a result compare generations to learn that it is out of date.
class PatternIndex
{
public:
    void add(const std::shared_ptr<Registration>& registration);
    void remove(const Registration& registration);

    // Registrations whose pattern matches, in no particular order; null when there are none. The list never
    // changes, so that it may be kept and shared.
    std::shared_ptr<const Registrations> match(const QString& path) const;

    // Changes whenever a registration is added or removed; 0 while there has been none.
    quint32 getGeneration() const { return generation.load(std::memory_order_acquire); }

private:
    // Registrations of equal patterns are told together.
    struct Entry
    {
        FrameworkCore::AppConfig::PathPattern pattern;
        Registrations registrations;
    };

    // Patterns filed under texts of one place, and how many there are of each length of text.
    struct Group
    {
        std::unordered_map<QString, std::map<QString, Entry>> entries; // by literal text, then by pattern
        std::map<int, int> lengths;
    };

    enum Place { AtStart, AtEnd, Inside, PlaceCount };

    struct Key
    {
        Place place;
        QString text;
    };

    static Key keyOf(const FrameworkCore::AppConfig::PathPattern& pattern);

    mutable std::shared_mutex mutex;
    Group groups[PlaceCount];
    std::atomic<quint32> generation{0};
};

} // namespace Repository
