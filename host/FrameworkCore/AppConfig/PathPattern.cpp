#include "host/FrameworkCore/AppConfig/PathPattern.h"

namespace FrameworkCore::AppConfig {

PathPattern::PathPattern(const QString& pattern, Qt::CaseSensitivity sensitivity)
    : literals(pattern.split(QLatin1Char('*'))), caseSensitivity(sensitivity)
{
}

bool PathPattern::matches(QStringView path) const
{
    const QString& first = literals.first();
    if (!hasWildcard())
        return path.compare(first, caseSensitivity) == 0;

    // A null path is taken as empty, for which Qt's comparisons have rules of their own.
    const QString& last = literals.last();
    if (path.size() < first.size() + last.size() ||
        path.left(first.size()).compare(first, caseSensitivity) != 0 ||
        path.right(last.size()).compare(last, caseSensitivity) != 0)
        return false;

    // Between the two ends the leftmost place of each literal is as good as any other.
    QStringView middle = path.mid(first.size(), path.size() - first.size() - last.size());
    for (int i = 1; i < literals.size() - 1; ++i) {
        const qsizetype at = middle.indexOf(literals.at(i), 0, caseSensitivity);
        if (at < 0)
            return false;
        middle = middle.mid(at + literals.at(i).size());
    }
    return true;
}

} // namespace FrameworkCore::AppConfig
