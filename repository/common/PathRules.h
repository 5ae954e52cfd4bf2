#pragma once

#include <QString>
#include <QStringView>

#include <string>
#include <string_view>

namespace Repository {

// The rules of attribute paths, in one place: one or more components, none of them empty, joined by the
// separator.
constexpr QLatin1Char pathSeparator('.');

// The repository's own attributes lie below it; callers may only read them.
constexpr QStringView ownRoot(u"internal");

// No path has more components, as in files. Every node on the way keeps the path to it, so that the
// characters of all of them are bounded, too.
constexpr qsizetype deepestPath = 1024;
constexpr qsizetype mostPathCharacters = qsizetype(64) << 20;

// Whether the path or pattern is beyond these bounds.
bool isTooDeep(QStringView path);

// Whether the text names a place in the tree; "*" stands in patterns only.
bool isValidPath(QStringView path);

// The path of the parent; empty at the top.
QStringView parentPath(QStringView path);

// Whether the path is the other one or lies below it.
bool isAtOrBelow(QStringView path, QStringView ancestor);

// What of a path comes after that many characters and the separator; empty for no more than those.
inline QStringView pathAfter(QStringView path, qsizetype length)
{
    const qsizetype start = length == 0 ? 0 : length + 1;
    return start < path.size() ? path.mid(start) : QStringView();
}

// The path of what lies below a parent under that name, or path; an empty one is the other.
QString joinedPath(const QString& parent, QStringView below);
QString joinedPath(const QString& parent, std::string_view below); // of UTF-8

// The UTF-8 of a path, or a part of one.
std::string pathBytes(QStringView path);

} // namespace Repository
