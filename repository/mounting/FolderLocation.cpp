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
    if (name == QLatin1String("include"))
        filter.include.push_back(glob);
    else if (name == QLatin1String("exclude"))
        filter.exclude.push_back(glob);
    else if (name == QLatin1String("depth"))
        readDepth(value);
    else if (name == QLatin1String("size"))
        readSize(value);
    else
        error = Texts::tr("unknown condition '%1'; valid are include, exclude, depth and size").arg(name);
}

void FolderLocation::readDepth(const QString& value)
{
    bool isNumber = false;
    filter.deepest = value.toInt(&isNumber);
    if (!isNumber || filter.deepest < 0 || filter.deepest > Files::FolderFilter::mostLevels)
        error = Texts::tr("the depth must be a number from 0 to %1, not '%2'")
                    .arg(QString::number(Files::FolderFilter::mostLevels), value);
}

void FolderLocation::readSize(const QString& value)
{
    const int unit = value.isEmpty() ? -1 : QStringLiteral("KMG").indexOf(value.back().toUpper());
    const int shift = 10 * (unit + 1);
    bool isNumber = false;
    const quint64 number = value.left(value.size() - (unit < 0 ? 0 : 1)).toULongLong(&isNumber);
    if (isNumber && number <= (Files::FolderFilter::anySize >> shift))
        filter.largest = number << shift;
    else
        error = Texts::tr("the size must be a number of bytes, or end with K, M or G, not '%1'").arg(value);
}

QString FolderLocation::toText() const
{
    const QString path = folder.isEmpty() ? folder : QFileInfo(folder).absoluteFilePath();
    return conditions.isEmpty() ? path : path + QLatin1Char('?') + conditions;
}

QString FolderLocation::with(const QString& location, const Files::FolderFilter& further)
{
    QStringList added;
    const auto append = [&added](const char* name, const std::vector<std::string>& globs) {
        for (const std::string& glob : globs)
            added.append(
                QLatin1String(name) + QLatin1Char('=') +
                QString::fromLatin1(QUrl::toPercentEncoding(QFile::decodeName(glob.c_str()), "*/?[]!")));
    };
    append("include", further.include);
    append("exclude", further.exclude);
    if (further.deepest != Files::FolderFilter::mostLevels)
        added.append(QStringLiteral("depth=%1").arg(further.deepest));
    if (further.largest != Files::FolderFilter::anySize)
        added.append(QStringLiteral("size=%1").arg(further.largest));
    if (added.isEmpty())
        return location;
    const QChar separator =
        FolderLocation(location).conditions.isEmpty() ? QLatin1Char('?') : QLatin1Char('&');
    return location + separator + added.join(QLatin1Char('&'));
}

} // namespace Repository
