#include "desk/PluginTrial.h"

#include "desk/PluginLibrary.h"
#include "files/FileStamp.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSettings>

#include <cstdio>

namespace Vantry {

namespace {

// The child's last line. An exit code alone proves nothing: the plug-in may have ended the child.
const QLatin1String passed("passed");
const QLatin1String refused("refused: ");

// What the file is, so that another file of the same name is tried anew. Empty when it cannot be read.
QString fingerprint(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const std::string content = file.readAll().toStdString();
    if (file.error() != QFile::NoError)
        return {};
    const std::string digest = Files::FileStamp::of(content).digest; // a quick one: each start waits for it
    const QFileInfo info(file);
    return QStringLiteral("%1 %2 %3")
        .arg(info.size())
        .arg(info.lastModified().toMSecsSinceEpoch())
        .arg(QLatin1String(QByteArray::fromStdString(digest).toHex()));
}

const QLatin1String passedPlugins("passedPlugins/");
const QLatin1String endlessPlugins("endlessPlugins/"); // each start would wait for them anew

QString settingsKey(QLatin1String group, const QString& fileName)
{
    const QByteArray name = QFileInfo(fileName).absoluteFilePath().toUtf8();
    return group + QLatin1String(name.toBase64(QByteArray::Base64UrlEncoding));
}

} // namespace

PluginTrial::PluginTrial(QString childProgram, int mostMilliseconds)
    : program(std::move(childProgram)), timeLimit(mostMilliseconds)
{
}

QString PluginTrial::run(const QString& file) const
{
    const QString print = fingerprint(file);
    if (print.isEmpty())
        return QStringLiteral("the file cannot be read");
    QSettings settings;
    if (settings.value(settingsKey(passedPlugins, file)).toString() == print)
        return {};
    if (settings.value(settingsKey(endlessPlugins, file)).toString() == print)
        return QStringLiteral(
            "it did not finish loading at an earlier start; it is tried again when the file "
            "changes");

    QProcess child;
    child.setProcessChannelMode(QProcess::SeparateChannels);
    child.start(program, {QStringLiteral("--try-plugin"), file}, QIODevice::ReadOnly);
    if (!child.waitForStarted())
        return QStringLiteral("it could not be tried: %1").arg(child.errorString());
    if (!child.waitForFinished(timeLimit)) {
        child.kill();
        child.waitForFinished();
        settings.setValue(settingsKey(endlessPlugins, file), print);
        return QStringLiteral("it did not finish loading within %1 s").arg(timeLimit / 1000.0);
    }
    if (child.exitStatus() == QProcess::CrashExit)
        return QStringLiteral("it is damaged: loading it ends the program (signal %1)").arg(child.exitCode());
    const QStringList said =
        QString::fromUtf8(child.readAllStandardOutput()).trimmed().split(QLatin1Char('\n'));
    if (said.last().startsWith(refused))
        return said.last().mid(refused.size());
    if (said.last() != passed)
        return QStringLiteral("it is damaged: loading it ends the program with code %1")
            .arg(child.exitCode());
    settings.setValue(settingsKey(passedPlugins, file), print);
    return {};
}

int PluginTrial::runAsChild(const QString& file)
{
    QString reason;
    const bool isLoaded = PluginLibrary::load(file, reason) != nullptr;
    // On a line of its own, whatever the plug-in wrote.
    std::printf("\n%s\n", qUtf8Printable(isLoaded ? QString(passed) : refused + reason));
    std::fflush(stdout);
    return isLoaded ? 0 : 1;
}

} // namespace Vantry
