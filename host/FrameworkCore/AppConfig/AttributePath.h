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

} // namespace FrameworkCore::AppConfig
