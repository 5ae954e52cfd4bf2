#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QString>
#include <QVariant>

namespace Widgets {

// How editors write a value and log what went wrong. GUI thread.

void logFailure(const QString& text);

// For a text that cannot become a value of the attribute's type.
void logConversionFailure(const QVariant& attributeValue);

// Writes and tells those who listen for stored values; whether it was written.
bool writeStored(FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository, const QString& path,
                 const QVariant& value);

// As writeStored; a failure is logged with the path.
void writeAttribute(FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository,
                    const QString& path, const QVariant& value);

} // namespace Widgets
