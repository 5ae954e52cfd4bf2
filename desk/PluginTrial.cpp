#include "desk/PluginTrial.h"

#include "desk/PluginLibrary.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSettings>

#include <cstdio>

namespace Vantry {

namespace {

constexpr int timeLimit = 10000; // milliseconds

// What the file is, so that another file of the same name is tried anew. Empty when it cannot be read.
QString fingerprint(const QString& fileName)
{
    QFile file(fileName);
    QCryptographicHash digest(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !digest.addData(&file))
        return {};
    const QFileInfo info(file);
    return QStringLiteral("%1 %2 %3")
        .arg(info.size())
        .arg(info.lastModified().toMSecsSinceEpoch())
        .arg(QLatin1String(digest.result().toHex()));
}

QString settingsKey(const QString& fileName)
{
    const QByteArray name = QFileInfo(fileName).absoluteFilePath().toUtf8();
    return QStringLiteral("passedPlugins/") + QLatin1String(name.toBase64(QByteArray::Base64UrlEncoding));
}

} // namespace

PluginTrial::PluginTrial(QString childProgram) : program(std::move(childProgram))
{
}

QString PluginTrial::run(const QString& file) const
{
    const QString print = fingerprint(file);
    if (print.isEmpty())
        return QStringLiteral("the file cannot be read");
    QSettings settings;
    if (settings.value(settingsKey(file)).toString() == print)
        return {};

    QProcess child;
    child.setProcessChannelMode(QProcess::SeparateChannels);
    child.start(program, {QStringLiteral("--try-plugin"), file}, QIODevice::ReadOnly);
    if (!child.waitForStarted())
        return QStringLiteral("it could not be tried: %1").arg(child.errorString());
    if (!child.waitForFinished(timeLimit)) {
        child.kill();
        child.waitForFinished();
        return QStringLiteral("it did not finish loading within %1 seconds").arg(timeLimit / 1000);
    }
    if (child.exitStatus() == QProcess::CrashExit)
        return QStringLiteral("it is damaged: loading it ends the program (signal %1)").arg(child.exitCode());
    if (child.exitCode() != 0) {
        const QString said = QString::fromUtf8(child.readAllStandardOutput()).trimmed();
        return said.isEmpty() ? QStringLiteral("it is damaged: loading it ends the program with code %1")
                                    .arg(child.exitCode())
                              : said;
    }
    settings.setValue(settingsKey(file), print);
    return {};
}

int PluginTrial::runAsChild(const QString& file)
{
    QString reason;
    if (PluginLibrary::load(file, reason))
        return 0;
    std::puts(qUtf8Printable(reason));
    return 1;
}

} // namespace Vantry
