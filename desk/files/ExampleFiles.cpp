#include "desk/files/ExampleFiles.h"

#include "host/Utilities/ModelViews/TextFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

// Resources of a static library are registered on request; Q_INIT_RESOURCE works outside namespaces only.
static void initialiseResources()
{
    Q_INIT_RESOURCE(example);
}

namespace Vantry {

QStringList makeExampleFiles(QString& error)
{
    initialiseResources();
    const QDir source(QStringLiteral(":/VantryDesk/example"));
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                      QStringLiteral("/vantry/example"));
    if (!folder.mkpath(QStringLiteral("."))) {
        error = QCoreApplication::translate("Vantry::ExampleFiles", "%1 cannot be made").arg(folder.path());
        return {};
    }
    QStringList files;
    const QStringList names = source.entryList(QDir::Files, QDir::Name);
    for (const QString& name : names) {
        const QString file = folder.filePath(name);
        QFile content(source.filePath(name));
        content.open(QIODevice::ReadOnly); // it is compiled in
        if (!QFileInfo::exists(file))
            error = Utilities::ModelViews::TextFile::writeBytes(file, content.readAll());
        if (!error.isEmpty())
            return {};
        files.append(file);
    }
    return files;
}

} // namespace Vantry
