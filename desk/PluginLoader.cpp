#include "desk/PluginLoader.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibrary>
#include <QSettings>

namespace Vantry {

namespace {

const QLatin1String noteKey("pluginBeingLoaded");

void note(const QString& file)
{
    QSettings settings;
    settings.setValue(noteKey, file);
    settings.sync(); // must be on disk before the library gets a chance to end the process
}

void removeNote()
{
    QSettings().remove(noteKey);
}

} // namespace

PluginLoader::PluginLoader(PluginTrial pluginTrial) : trial(std::move(pluginTrial))
{
}

QStringList PluginLoader::usualFolders()
{
    const QDir program(QCoreApplication::applicationDirPath());
    return {program.path(), QDir::cleanPath(program.filePath(QStringLiteral("../lib/vantry/plugins")))};
}

QString PluginLoader::takeCulprit()
{
    const QString culprit = QSettings().value(noteKey).toString();
    removeNote();
    return culprit;
}

void PluginLoader::load(const QStringList& folders, const QString& leftOut)
{
    for (const QString& folder : folders) {
        const QDir dir(folder);
        if (!dir.exists()) {
            if (!usualFolders().contains(folder))
                findings.push_back({folder, QStringLiteral("there is no such folder")});
            continue;
        }
        const QStringList names = dir.entryList(QDir::Files, QDir::Name);
        for (const QString& name : names) {
            const QString file = dir.absoluteFilePath(name);
            if (!QLibrary::isLibrary(file))
                continue;
            findings.push_back(
                {file, file == leftOut ? QStringLiteral("left out: the last start ended while it was loaded")
                                       : loadFile(file)});
        }
    }
}

QString PluginLoader::loadFile(const QString& file)
{
    QString reason = trial.run(file);
    if (!reason.isEmpty())
        return reason;
    note(file);
    auto library = PluginLibrary::load(file, reason);
    removeNote();
    if (library)
        libraries.push_back(std::move(library));
    return reason;
}

} // namespace Vantry
