#pragma once

#include "cli/Source.h"
#include "host/FrameworkCore/AppConfig/TreeInterface.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace CommandLine {

// Calls the visitor with the path of each node below the given one, groups before what is in them, in the
// order of the file. What lies below a node is left out when it gives false.
void visitBelow(const FrameworkCore::AppConfig::Interfaces::TreeInterface& tree, const QString& fullPath,
                const std::function<bool(const QString& fullPath)>& visitor);

inline bool isPattern(const QString& path)
{
    return path.contains(QLatin1Char('*'));
}

// The paths in the repository that match the pattern, in the order of the file.
QStringList findMatches(const FrameworkCore::AppConfig::Interfaces::TreeInterface& tree, const Source& source,
                        const QString& pattern, bool topmostOnly = false);

} // namespace CommandLine
