#pragma once

#include "host/FrameworkCore/AppConfig/PathPattern.h"
#include "repository/notification/BloomFilter.h"
#include "repository/notification/RegistrationList.h"

#include <QString>

#include <map>
#include <unordered_map>
#include <vector>

namespace Repository {

// Registrations with patterns, each filed under a text that occurs in every path which its pattern matches.
// Looking up what occurs somewhere in a path costs next to nothing where no filed text begins like it,
// however many there are: a filter knows the texts and their beginnings of 1, 2, 4, 8 ... characters, and
// reading goes on only as long as it has seen the like. Not locked.
class PatternGroup
{
public:
    // Where texts are read from: a path's characters on from some place, or back from its end.
    enum class Reading { Forward, Backward };

    explicit PatternGroup(Reading direction) : reading(direction) {}

    void add(const QString& text, const QString& pattern, RegistrationPointer registration);
    RegistrationPointer take(const QString& text, const QString& pattern, const Registration& registration);

    // Appends those whose pattern matches the path and whose text occurs there from `start` on; those only
    // whose text does not occur further ahead in the path, where it has been found before.
    void collect(const QString& path, int start, Registrations& found) const;

private:
    // Registrations of equal patterns are notified together.
    struct Entry
    {
        FrameworkCore::AppConfig::PathPattern pattern;
        RegistrationList registrations;
    };

    QChar characterOf(const QString& text, int number) const
    {
        return text.at(reading == Reading::Forward ? number : text.size() - 1 - number);
    }

    void collectFiled(const QString& path, int start, int length, Registrations& found) const;
    void addToFilter(const QString& text);
    void fillFilter(std::size_t room);

    const Reading reading;
    std::unordered_map<QString, std::map<QString, Entry>> entries; // by text, then by pattern
    std::vector<int> textsOfLength;                                // how many there are of each length
    BloomFilter filter;
    std::size_t takenTexts = 0; // which the filter still knows
};

} // namespace Repository
