#include "desk/RecentFiles.h"

#include <QFileInfo>
#include <QSettings>

namespace Vantry {

namespace {

const QLatin1String filesKey("recentFiles");
constexpr int mostKept = 10;

} // namespace

QStringList RecentFiles::get()
{
    return QSettings().value(filesKey).toStringList();
}

void RecentFiles::add(const QStringList& files)
{
    QStringList kept = get();
    for (const QString& file : files)
        kept.prepend(QFileInfo(file).absoluteFilePath());
    kept.removeDuplicates();
    QSettings().setValue(filesKey, QStringList(kept.mid(0, mostKept)));
}

void RecentFiles::clear()
{
    QSettings().remove(filesKey);
}

} // namespace Vantry
