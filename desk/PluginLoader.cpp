#include "desk/PluginLoader.h"

#include "desk/LoadingNote.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

#include <algorithm>

namespace Vantry {

PluginLoader::PluginLoader(PluginTrial pluginTrial) : trial(std::move(pluginTrial))
{
}

QStringList PluginLoader::usualFolders()
{
    const QDir program(QCoreApplication::applicationDirPath());
    return {program.path(), QDir::cleanPath(program.filePath(QStringLiteral("../lib/vantry/plugins")))};
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
            const QString file = QFileInfo(dir.filePath(name)).absoluteFilePath();
            if (!QLibrary::isLibrary(file) || isKnown(file))
                continue;
            findings.push_back(
                {file, file == leftOut ? QStringLiteral("left out: the last start ended while it was loaded")
                                       : loadFile(file)});
        }
    }
}

bool PluginLoader::isKnown(const QString& file) const
{
    const QString real = QFileInfo(file).canonicalFilePath();
    return std::any_of(findings.begin(), findings.end(), [&real](const Finding& finding) {
        return QFileInfo(finding.file).canonicalFilePath() == real;
    });
}

void PluginLoader::refuse(const QString& file, const QString& reason)
{
    for (Finding& finding : findings) {
        if (finding.file == file)
            finding.refusal += (finding.refusal.isEmpty() ? QString() : QStringLiteral("; ")) + reason;
    }
}

QString PluginLoader::loadFile(const QString& file)
{
    QString reason = trial.run(file);
    if (!reason.isEmpty())
        return reason;
    const LoadingNote note(file);
    auto library = PluginLibrary::load(file, reason);
    if (library)
        libraries.push_back(std::move(library));
    return reason;
}

} // namespace Vantry
