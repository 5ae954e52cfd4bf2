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

// What is encoded stays so where it could not be seen, or would not be what it seems.
QString decodedName(const QString& name)
{
    constexpr int hexadecimal = 16;
    QString decoded;
    for (int at = 0; at < name.size(); ++at) {
        const int code =
            name[at] == QLatin1Char('%') ? name.midRef(at + 1, 2).toInt(nullptr, hexadecimal) : 0;
        const bool isVisible = code > 0x20 && code < 0x7F;
        decoded += isVisible ? QChar(code) : name[at];
        at += isVisible ? 2 : 0;
    }
    return decoded;
}

QString readablePath(const QString& path, const QString& backend, bool isFolder)
{
    const int length = isFolder ? path.size() : backend.size();
    return decodedName(path.left(length)) + path.mid(length);
}

} // namespace FrameworkCore::AppConfig
