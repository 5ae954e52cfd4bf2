#include "desk/files/RecentFiles.h"

#include "repository/fleet/EtcdLocation.h"

#include <QDir>
#include <QFileInfo>
#include <QSettings>

namespace Vantry {

const QLatin1String filesKey("recentFiles");
constexpr int mostKept = 10;

bool RecentFiles::isStore(const QString& file)
{
    return Repository::EtcdLocation::isMeant(file);
}

QStringList RecentFiles::get()
{
    return QSettings().value(filesKey).toStringList();
}

void RecentFiles::add(const QStringList& files)
{
    const QStringList known = get();
    QStringList kept = known;
    for (const QString& file : files)
        kept.prepend(isStore(file) ? file : QFileInfo(file).absoluteFilePath());
    kept.removeDuplicates();
    kept = kept.mid(0, mostKept);
    if (kept != known) // who starts with the same files each time need not wait for the disk
        QSettings().setValue(filesKey, kept);
}

void RecentFiles::clear()
{
    QSettings().remove(filesKey);
}

QString RecentFiles::shownPath(const QString& file)
{
    const QString home = QDir::homePath() + QLatin1Char('/');
    return file.startsWith(home) ? QLatin1String("~/") + file.mid(home.size()) : file;
}

} // namespace Vantry
