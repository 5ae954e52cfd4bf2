#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QString>
#include <QVariant>

namespace Widgets {

// How editors write a value and log what went wrong. What was entered in vain is handed on, so that it is not
// lost. GUI thread.

// Logs the line. The cause is what the repository was not asked to say: why the attribute cannot hold what
// was entered.
void refuseEdit(const QString& line, const QString& path, const QString& entered, const QString& cause = {});

// For what cannot become a value of the attribute's type.
void refuseConversion(const QString& path, const QVariant& attributeValue, const QString& entered);

// Why the attribute, which is there and not writable, cannot be written.
QString whyReadOnly(FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository,
                    const QString& path);

// For an editor that goes, with its row or its page, before the edit has ended.
void refuseUnended(const QString& path, const QString& entered);

// Whether the attribute has got another value since an editor has shown this one. To be asked only when the
// editor was left without being touched: the newer value then stays, and the log says so.
bool yieldsToNewer(FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository, const QString& path,
                   const QVariant& shown);

// Writes what an edit of an attribute has ended with and notifies those who listen for stored values; false
// when it was refused.
bool writeEdited(FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository, const QString& path,
                 const QVariant& edited);

// As writeEdited; a refusal is logged with the path.
void writeEditedOrLog(FrameworkCore::AppConfig::Interfaces::RepositoryInterface& repository,
                      const QString& path, const QVariant& edited, const QString& entered);

} // namespace Widgets
