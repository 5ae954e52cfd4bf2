#include "desk/files/FileNames.h"

#include "repository/fleet/EtcdLocation.h"

#include <QHash>
#include <QVector>

#include <algorithm>
#include <numeric>

namespace Vantry {

namespace {

// Of a store, without what says how it is reached.
QString placeOf(const QString& path)
{
    return Repository::EtcdLocation::isMeant(path) ? path.section(QLatin1Char('?'), 0, 0) : path;
}

} // namespace

QStringList distinctFileNames(const QStringList& given)
{
    QStringList paths;
    std::transform(given.begin(), given.end(), std::back_inserter(paths), placeOf);
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
