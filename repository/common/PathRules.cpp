#include "repository/common/PathRules.h"

#include "host/FrameworkCore/Values/Utf8.h"
#include "host/FrameworkCore/Values/VariantText.h"

#include <algorithm>

namespace Repository {

bool isTooDeep(QStringView path)
{
    if (path.size() < 2 * deepestPath)
        return false;
    const auto isBetween = [](QChar c) { return c == pathSeparator || c == QLatin1Char('*'); };
    const qsizetype components = std::count_if(path.begin(), path.end(), isBetween) + 1;
    return components > deepestPath || components > mostPathCharacters / path.size();
}

bool isValidPath(QStringView path)
{
    if (isTooDeep(path))
        return false;
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

// Nearly all paths are ASCII, which needs no decoder and just one block of memory.
QString joinedPath(const QString& parent, std::string_view below)
{
    if (parent.isEmpty())
        return FrameworkCore::Values::decodeUtf8(below);
    if (below.empty())
        return parent;
    if (!FrameworkCore::Values::isAscii(below))
        return parent + pathSeparator + FrameworkCore::Values::decodeUtf8(below);
    QString path(parent.size() + 1 + int(below.size()), Qt::Uninitialized);
    QChar* end = std::copy(parent.begin(), parent.end(), path.begin());
    *end++ = pathSeparator;
    std::transform(below.begin(), below.end(), end, [](char c) { return QLatin1Char(c); });
    return path;
}

std::string pathBytes(QStringView path)
{
    std::string bytes(std::size_t(path.size()), '\0');
    ushort bits = 0;
    std::transform(path.begin(), path.end(), bytes.begin(), [&bits](QChar c) {
        bits |= c.unicode();
        return char(c.unicode());
    });
    return bits < 0x80 ? bytes : path.toUtf8().toStdString();
}

} // namespace Repository
