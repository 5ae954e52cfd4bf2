#pragma once

#include <QString>
#include <QStringView>

namespace Repository {

// The rules of attribute paths, in one place: one or more components, none of them empty, joined by the
// separator.
constexpr QLatin1Char pathSeparator('.');

// The repository's own attributes lie below it; callers may only read them.
constexpr QStringView ownRoot(u"internal");

// Whether the text names a place in the tree; "*" stands in patterns only.
bool isValidPath(QStringView path);

// The path of the parent; empty at the top.
QStringView parentPath(QStringView path);

// Whether the path is the other one or lies below it.
bool isAtOrBelow(QStringView path, QStringView ancestor);

// What of a path stands behind that many characters and the separator; empty for no more than those.
inline QStringView pathBehind(QStringView path, qsizetype length)
{
    const qsizetype start = length == 0 ? 0 : length + 1;
    return start < path.size() ? path.mid(start) : QStringView();
}

} // namespace Repository
