#include "desk/plugins/PluginLoader.h"

#include "desk/plugins/LoadingNote.h"
#include "desk/plugins/PluginMemory.h"
#include "desk/plugins/PluginPlace.h"
#include "desk/plugins/PluginTexts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

#include <algorithm>

namespace Vantry {

QStringList PluginLoader::usualFolders()
{
    const QDir program(QCoreApplication::applicationDirPath());
    const QString installed = QDir::cleanPath(program.filePath(QStringLiteral(VANTRY_PLUGINS_FROM_PROGRAMS)));
    return {QDir(installed).exists() ? installed : program.path()};
}

void PluginLoader::load(const Choice& choice)
{
    if (choice.culprits.size() == 1)
        PluginMemory::setVerdict(choice.culprits.first(), PluginMemory::Verdict::LeftOut);
    for (const QString& folder : choice.folders)
        look(folder, false, choice);
    for (const QString& folder : choice.sharedFolders)
        look(folder, true, choice);
    if (!choice.culprits.isEmpty())
        leaveOutCulprits(choice.culprits);
    for (const QString& file : getWanted()) {
        const LoadingNote note({file});
        QString reason;
        if (auto library = PluginLibrary::load(file, reason))
            libraries.push_back(std::move(library));
        else
            refuse(file, reason);
    }
}

void PluginLoader::look(const QString& folder, bool isShared, const Choice& choice)
{
    const QDir dir(folder);
    if (!dir.exists()) {
        if (!usualFolders().contains(folder))
            findings.push_back({folder, PluginTexts::tr("no such folder")});
        return;
    }
    const QStringList names = dir.entryList(QDir::Files, QDir::Name);
    for (const QString& name : names) {
        const QString file = QFileInfo(dir.filePath(name)).absoluteFilePath();
        if (QLibrary::isLibrary(file) && !isKnown(file))
            findings.push_back({file, judge(file, isShared, choice)});
    }
}

QString PluginLoader::judge(const QString& file, bool isShared, const Choice& choice) const
{
    const QString fault = isShared ? QString() : faultOfPluginPlace(file);
    if (!fault.isEmpty())
        return fault;
    if (!choice.reasonForNone.isEmpty())
        return choice.reasonForNone;
    return trial.run(file);
}

void PluginLoader::leaveOutCulprits(const QStringList& culprits)
{
    bool isFound = culprits.size() == 1;
    for (QStringList wanted = getWanted(); !wanted.isEmpty(); wanted = getWanted()) {
        const PluginTrial::Culprit found = trial.rehearse(wanted);
        if (found.number < 0 || found.number >= wanted.size())
            break;
        isFound = true;
        PluginMemory::setVerdict(wanted.at(found.number), PluginMemory::Verdict::LeftOut);
        refuse(wanted.at(found.number), found.reason);
    }
    if (isFound)
        return;
    for (const QString& file : getWanted()) {
        if (culprits.contains(file)) {
            PluginMemory::setVerdict(file, PluginMemory::Verdict::LeftOut);
            refuse(file, trial.run(file));
        }
    }
}

QStringList PluginLoader::getWanted() const
{
    QStringList files;
    for (const Finding& finding : findings) {
        if (finding.refusal.isEmpty())
            files.append(finding.file);
    }
    return files;
}

QStringList PluginLoader::getLoadedFiles() const
{
    QStringList files;
    for (const auto& library : libraries)
        files.append(library->getFile());
    return files;
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

} // namespace Vantry
