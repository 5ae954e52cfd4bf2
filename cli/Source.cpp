#include "cli/Source.h"

namespace CommandLine {

QString Source::fullPath(const QString& path) const
{
    const QString below = path.endsWith(QLatin1Char('.')) ? path.chopped(1) : path;
    return below.isEmpty() ? root : root + QLatin1Char('.') + below;
}

QString Source::relativePath(const QString& fullPath) const
{
    return fullPath.mid(root.size() + 1);
}

} // namespace CommandLine
