#include "cli/Suggestion.h"

#include "cli/Texts.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace CommandLine {

namespace {

// How many letters must be added, dropped, replaced or swapped with their neighbour to make one of the other.
int distanceOf(const QString& a, const QString& b)
{
    const auto width = std::size_t(b.size()) + 1;
    std::vector<std::vector<int>> rows(std::size_t(a.size()) + 1, std::vector<int>(width));
    std::iota(rows[0].begin(), rows[0].end(), 0);
    for (int i = 1; i <= a.size(); ++i) {
        auto& row = rows[std::size_t(i)];
        row[0] = i;
        for (int j = 1; j <= b.size(); ++j) {
            const auto at = std::size_t(j);
            const auto& above = rows[std::size_t(i - 1)];
            const bool isSame = a.at(i - 1) == b.at(j - 1);
            row[at] = std::min({above[at] + 1, row[at - 1] + 1, above[at - 1] + (isSame ? 0 : 1)});
            if (i > 1 && j > 1 && a.at(i - 1) == b.at(j - 2) && a.at(i - 2) == b.at(j - 1))
                row[at] = std::min(row[at], rows[std::size_t(i - 2)][at - 2] + 1);
        }
    }
    return rows.back().back();
}

} // namespace

QString suggestionFor(const QString& word, const QStringList& known, const QString& prefix)
{
    constexpr int longest = 200; // what is longer is not a name that somebody typed
    if (word.size() > longest)
        return {};
    QString nearest;
    int least = std::max(2, word.size() / 3) + 1;
    for (const QString& name : known) {
        if (std::abs(name.size() - word.size()) >= least)
            continue;
        const int distance = std::min(distanceOf(word, name), distanceOf(word.toLower(), name.toLower()) + 1);
        if (distance < least && distance < std::max(word.size(), name.size())) {
            least = distance;
            nearest = name;
        }
    }
    return nearest.isEmpty() ? QString() : Texts::tr("; did you mean '%1'?").arg(prefix + nearest);
}

} // namespace CommandLine
