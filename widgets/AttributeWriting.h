#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QString>
#include <QVariant>

namespace Widgets {

// How editors write a value and log what went wrong. GUI thread.

void logFailure(const QString& text);

// For a text that cannot become a value of the attribute's type.
void logConversionFailure(const QVariant& attributeValue);

// Writes what an edit of an attribute has ended with and tells those who listen for stored values; false when
// it was refused. When the person has left the value as it was shown and somebody else has changed it
// meanwhile, that change stays.
bool writeEdited(FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository, const QString& path,
                 const QVariant& shown, const QVariant& edited);

// As writeEdited; a refusal is logged with the path.
void writeEditedOrLog(FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository,
                      const QString& path, const QVariant& shown, const QVariant& edited);

} // namespace Widgets
