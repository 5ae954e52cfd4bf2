#include "desk/files/MonitorLists.h"

#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "host/Utilities/ModelViews/TextFile.h"

#include <QFileInfo>

#include <algorithm>

namespace Vantry {

QStringList MonitorLists::takeFrom(QStringList& files)
{
    const auto isConfiguration = [](const QString& file) {
        return QFileInfo(file).suffix().compare(QLatin1String("dap"), Qt::CaseInsensitive) != 0;
    };
    const auto firstList = std::stable_partition(files.begin(), files.end(), isConfiguration);
    const QStringList lists(firstList, files.end());
    files.erase(firstList, files.end());
    return lists;
}

QString MonitorLists::show(const QString& list, const QObject& window)
{
    auto* const monitor = window.findChild<Utilities::ModelViews::AdvancedAttributeModel*>();
    if (!monitor)
        return QObject::tr("%1: no plug-in shows a monitor").arg(list);
    QString text;
    const QString problem = Utilities::ModelViews::TextFile::read(list, text);
    if (problem.isEmpty())
        monitor->loadCustomAttributeList(text.split(QLatin1Char('\n')));
    return problem;
}

} // namespace Vantry
