#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <QString>
#include <QStringView>

namespace FrameworkCore::AppConfig {

// How paths of attributes are made: names joined by the separator, the empty path being the top. Any thread.
constexpr QLatin1Char pathSeparator('.');

// The path of the parent; empty at the top.
VANTRY_CORE_EXPORT QStringView parentPath(QStringView path);

// The last name.
VANTRY_CORE_EXPORT QString nameOf(const QString& path);

// The path of what lies below a parent under that name, or path; an empty one is the other.
VANTRY_CORE_EXPORT QString joinedPath(const QString& parent, QStringView below);

// Whether the path is the other one or lies below it.
VANTRY_CORE_EXPORT bool isAtOrBelow(QStringView path, QStringView ancestor);

// The name of a file or folder as it is on the disk, of the name that encodes it in a path.
VANTRY_CORE_EXPORT QString decodedName(const QString& name);

// A path as people read it: with the names of files and folders as they are on the disk. All of it is such
// names where it lies in a folder as a backend, else those of the root of its backend; the rest is in the
// file.
VANTRY_CORE_EXPORT QString readablePath(const QString& path, const QString& backend, bool isFolder);

} // namespace FrameworkCore::AppConfig
