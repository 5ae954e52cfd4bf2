#pragma once

#include "host/FrameworkCore/AppConfig/PathPattern.h"
#include "repository/RegistrationList.h"

#include <QString>

#include <atomic>
#include <map>
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
    void add(const QString& pattern, RegistrationPointer registration);
    void remove(const QString& pattern, const Registration& registration);

    // Registrations whose pattern matches, in no particular order.
    Registrations match(const QString& path) const;

    // Changes whenever a registration is added or removed; 0 while there has been none. Narrow, since each
    // node keeps one.
    static constexpr int generationBits = 29;
    static constexpr quint32 lastGeneration = (1U << generationBits) - 1;
    quint32 getGeneration() const { return generation.load(std::memory_order_acquire) & lastGeneration; }

private:
    // Registrations of equal patterns are told together.
    struct Entry
    {
        FrameworkCore::AppConfig::PathPattern pattern;
        RegistrationList registrations;
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
