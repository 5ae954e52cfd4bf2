#pragma once

#include "host/FrameworkCore/AppConfig/AccessMode.h"

#include <QString>
#include <QVariant>

namespace FrameworkCore::AppConfig {

// What createBackend needs to know of a new backend.
struct BackendConfiguration
{
    QVariant location;   // as text: the name of the file or folder, or the address of a part of a store
    QString description; // shown to people, free text
    AccessMode accessMode = AccessMode::None;
};

} // namespace FrameworkCore::AppConfig
