#include "host/Shared/VersionInformation/VersionInformation.h"

#include <QFile>
#include <QTextStream>

namespace Shared::VersionInformation {

VersionInformation VersionInformation::ReadFromResource(const QString& identification)
{
    VersionInformation information;
    QFile file(QLatin1String(":/") + identification + QLatin1String(".vft"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return information;

    // Not by QSettings, which makes a list of a value that holds a comma.
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    bool inSection = false;
    QString line;
    while (stream.readLineInto(&line)) {
        line = line.trimmed();
        if (line.startsWith(QLatin1Char('[')))
            inSection = line == QLatin1String("[Version]");
        const int equalSign = line.indexOf(QLatin1Char('='));
        if (inSection && equalSign > 0)
            information.fields.insert(line.left(equalSign).trimmed(), line.mid(equalSign + 1).trimmed());
    }
    return information;
}

QString VersionInformation::getComments() const
{
    return fields.value(QStringLiteral("Comments"));
}

QString VersionInformation::getCompanyName() const
{
    return fields.value(QStringLiteral("CompanyName"));
}

QString VersionInformation::getFileDescription() const
{
    return fields.value(QStringLiteral("FileDescription"));
}

QString VersionInformation::getFileVersion() const
{
    return fields.value(QStringLiteral("FileVersion"));
}

QString VersionInformation::getLegalCopyright() const
{
    return fields.value(QStringLiteral("LegalCopyright"));
}

QString VersionInformation::getOriginalFilename() const
{
    return fields.value(QStringLiteral("OriginalFilename"));
}

QString VersionInformation::getProductName() const
{
    return fields.value(QStringLiteral("ProductName"));
}

QString VersionInformation::getProductVersion() const
{
    return fields.value(QStringLiteral("ProductVersion"));
}

QString VersionInformation::getInternalName() const
{
    return fields.value(QStringLiteral("InternalName"));
}

QString VersionInformation::getLegalTrademarks() const
{
    return fields.value(QStringLiteral("LegalTrademarks"));
}

QString VersionInformation::getVersionHash() const
{
    return fields.value(QStringLiteral("VersionHash"));
}

} // namespace Shared::VersionInformation
