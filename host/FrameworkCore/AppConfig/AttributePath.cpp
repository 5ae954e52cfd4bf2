#include "host/FrameworkCore/AppConfig/AttributePath.h"

#include <algorithm>

namespace FrameworkCore::AppConfig {

QStringView parentPath(QStringView path)
{
    qsizetype end = std::max<qsizetype>(path.size() - 1, 0);
    while (end > 0 && path[end] != pathSeparator)
        --end;
    return path.left(end);
}

QString nameOf(const QString& path)
{
    return path.mid(path.lastIndexOf(pathSeparator) + 1);
}

QString joinedPath(const QString& parent, QStringView below)
{
    if (below.isEmpty())
        return parent;
    QString path;
    path.reserve(parent.size() + 1 + int(below.size()));
    path += parent;
    if (!parent.isEmpty())
        path += pathSeparator;
    return path.append(below.data(), int(below.size()));
}

bool isAtOrBelow(QStringView path, QStringView ancestor)
{
    const bool endsThere = path.size() == ancestor.size() ||
                           (path.size() > ancestor.size() && path[ancestor.size()] == pathSeparator);
    return endsThere && path.startsWith(ancestor);
}

} // namespace FrameworkCore::AppConfig
