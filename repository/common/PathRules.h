#pragma once

#include "host/FrameworkCore/AppConfig/AttributePath.h"

#include <string>
#include <string_view>

namespace Repository {

using FrameworkCore::AppConfig::isAtOrBelow;
using FrameworkCore::AppConfig::joinedPath;
using FrameworkCore::AppConfig::nameOf;
using FrameworkCore::AppConfig::parentPath;
using FrameworkCore::AppConfig::pathSeparator;

// The repository's own attributes lie below it; callers may only read them.
constexpr QStringView ownRoot(u"internal");

// No path has more components, as in files. Whoever lists a path and all that lead to it makes a text of
// each, so that the characters of all of them are bounded, too.
constexpr qsizetype deepestPath = 1024;
constexpr qsizetype mostPathCharacters = qsizetype(64) << 20;

// Whether the path or pattern is beyond these bounds.
bool isTooDeep(QStringView path);

// Whether the text names a place in the tree; "*" is for patterns only.
bool isValidPath(QStringView path);

// What of a path comes after that many characters and the separator; empty for no more than those.
inline QStringView pathAfter(QStringView path, qsizetype length)
{
    const qsizetype start = length == 0 ? 0 : length + 1;
    return start < path.size() ? path.mid(start) : QStringView();
}

// As joinedPath, of UTF-8.
QString joinedPath(const QString& parent, std::string_view below);

// The UTF-8 of a path, or a part of one.
std::string pathBytes(QStringView path);

} // namespace Repository
