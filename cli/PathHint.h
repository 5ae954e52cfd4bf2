#pragma once

#include "cli/Source.h"
#include "host/FrameworkCore/AppConfig/TreeInterface.h"

#include <QString>

namespace CommandLine {

// What somebody may have meant by a path of the source that is not found: the same path as Vantry writes it,
// or the nearest name, as "; did you mean 'server.port'?". Empty when nothing is near.
QString hintForPath(const FrameworkCore::AppConfig::Interfaces::TreeInterface& tree, const Source& source,
                    const QString& path);

} // namespace CommandLine
