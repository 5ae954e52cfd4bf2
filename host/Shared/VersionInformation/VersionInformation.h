#pragma once

#include "host/HostExport.h"

#include <QMap>
#include <QString>

namespace Shared::VersionInformation {

// The version description that a module carries as the resource ":/<identification>.vft". A value.
class VANTRY_HOST_EXPORT VersionInformation
{
public:
    VersionInformation() = default;

    // Reads the description of a loaded module; every field is empty when there is none.
    static VersionInformation ReadFromResource(const QString& identification);

    QString getComments() const;
    QString getCompanyName() const;
    QString getFileDescription() const;
    QString getFileVersion() const;
    QString getLegalCopyright() const;
    QString getOriginalFilename() const;
    QString getProductName() const;
    QString getProductVersion() const;
    QString getInternalName() const;
    QString getLegalTrademarks() const;
    QString getVersionHash() const;

private:
    QMap<QString, QString> fields;
};

} // namespace Shared::VersionInformation
