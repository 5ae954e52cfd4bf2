#pragma once

#include "repository/notification/PatternGroup.h"

#include <QString>

#include <atomic>
#include <shared_mutex>

namespace Repository {

// Which registrations with a pattern match a path. Each pattern is filed under one run of its literal text:
// the one it begins with, else the one it ends with, else the longest inside. The cost of a match follows
// the path's length and not the number of patterns. Any thread. Callers that keep a result compare
// generations to learn that it is out of date.
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
    struct Anchored
    {
        PatternGroup& group;
        QString text;
    };

    Anchored anchored(const QString& pattern);

    mutable std::shared_mutex mutex;
    PatternGroup atStart{PatternGroup::Reading::Forward};
    PatternGroup atEnd{PatternGroup::Reading::Backward};
    PatternGroup inside{PatternGroup::Reading::Forward};
    std::atomic<quint32> generation{0};
};

} // namespace Repository
