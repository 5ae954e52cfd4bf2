#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

namespace Vantry {

// An outcome for people: in its text, files and folders have their names on the disk. Any thread.
QString readableText(const FrameworkCore::AppConfig::Outcome& outcome,
                     FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository);

} // namespace Vantry
