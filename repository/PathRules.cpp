#include "repository/PathRules.h"

namespace Repository {

bool isValidPath(QStringView path)
{
    bool componentIsEmpty = true;
    for (const QChar character : path) {
        if (character == QLatin1Char('*'))
            return false;
        if (character != pathSeparator)
            componentIsEmpty = false;
        else if (componentIsEmpty)
            return false;
        else
            componentIsEmpty = true;
    }
    return !componentIsEmpty;
}

QStringView parentPath(QStringView path)
{
    qsizetype end = std::max<qsizetype>(path.size() - 1, 0);
    while (end > 0 && path[end] != pathSeparator)
        --end;
    return path.left(end);
}

bool isAtOrBelow(QStringView path, QStringView ancestor)
{
    return path.startsWith(ancestor) &&
           (path.size() == ancestor.size() || path[ancestor.size()] == pathSeparator);
}

} // namespace Repository
