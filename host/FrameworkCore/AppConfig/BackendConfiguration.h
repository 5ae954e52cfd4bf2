#pragma once

#include "host/FrameworkCore/AppConfig/AccessMode.h"

#include <QString>
#include <QVariant>

namespace FrameworkCore::AppConfig {

// What createBackend needs to know of a new backend.
struct BackendConfiguration
{
    QVariant location;   // the file's name as text
    QString description; // shown to people, free text
    AccessMode accessMode = AccessMode::None;
};

} // namespace FrameworkCore::AppConfig
