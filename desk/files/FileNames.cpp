#include "desk/files/FileNames.h"

#include <QHash>
#include <QVector>

#include <algorithm>
#include <numeric>

namespace Vantry {

QStringList distinctFileNames(const QStringList& paths)
{
    QStringList names = paths;
    QVector<int> open(paths.size()); // numbers of those that have no name of their own yet
    std::iota(open.begin(), open.end(), 0);
    for (int parts = 1; !open.isEmpty(); ++parts) {
        QHash<QString, int> counts;
        for (const int number : qAsConst(open)) {
            names[number] = paths[number].section(QLatin1Char('/'), -parts);
            ++counts[names[number]];
        }
        const auto isSettled = [&](int number) {
            return counts[names[number]] == 1 || names[number] == paths[number];
        };
        open.erase(std::remove_if(open.begin(), open.end(), isSettled), open.end());
    }
    return names;
}

} // namespace Vantry
