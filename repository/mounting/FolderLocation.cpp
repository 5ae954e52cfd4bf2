#include "repository/mounting/FolderLocation.h"

#include "repository/common/Texts.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QUrlQuery>

namespace Repository {

FolderLocation::FolderLocation(const QString& location) : folder(location)
{
    const int mark = location.indexOf(QLatin1Char('?'));
    if (mark < 0 || QFileInfo::exists(location))
        return;
    folder = location.left(mark);
    conditions = location.mid(mark + 1);
    const auto items = QUrlQuery(conditions).queryItems(QUrl::FullyDecoded);
    for (const auto& [name, value] : items)
        read(name, value);
}

void FolderLocation::read(const QString& name, const QString& value)
{
    const std::string glob = QFile::encodeName(value).toStdString();
    bool isNumber = true;
    if (name == QLatin1String("include"))
        filter.include.push_back(glob);
    else if (name == QLatin1String("exclude"))
        filter.exclude.push_back(glob);
    else if (name == QLatin1String("depth"))
        filter.deepest = value.toInt(&isNumber);
    else
        error = Texts::tr("unknown condition '%1'; valid are include, exclude and depth").arg(name);
    if (!isNumber || filter.deepest < 0 || filter.deepest > Files::FolderFilter::mostLevels)
        error = Texts::tr("the depth must be a number from 0 to %1, not '%2'")
                    .arg(QString::number(Files::FolderFilter::mostLevels), value);
}

QString FolderLocation::toText() const
{
    const QString path = folder.isEmpty() ? folder : QFileInfo(folder).absoluteFilePath();
    return conditions.isEmpty() ? path : path + QLatin1Char('?') + conditions;
}

QString FolderLocation::with(const QString& location, const QStringList& include, const QStringList& exclude)
{
    QString text = location;
    QChar separator = FolderLocation(location).conditions.isEmpty() ? QLatin1Char('?') : QLatin1Char('&');
    const auto append = [&](const QString& name, const QStringList& globs) {
        for (const QString& glob : globs) {
            text += separator + name + QLatin1Char('=') +
                    QString::fromLatin1(QUrl::toPercentEncoding(glob, "*/?[]!"));
            separator = QLatin1Char('&');
        }
    };
    append(QStringLiteral("include"), include);
    append(QStringLiteral("exclude"), exclude);
    return text;
}

} // namespace Repository
