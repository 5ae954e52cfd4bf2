#include "desk/plugins/PluginMemory.h"

#include "files/FileDigest.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

namespace Vantry {

namespace {

// What the file is, so that another file of the same name is judged anew. Empty when it cannot be read.
QString fingerprint(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const std::string content = file.readAll().toStdString();
    if (file.error() != QFile::NoError)
        return {};
    const std::string digest = Files::FileDigest::of(content).hash; // a quick one: each start waits for it
    const QFileInfo info(file);
    return QStringLiteral("%1 %2 %3")
        .arg(info.size())
        .arg(info.lastModified().toMSecsSinceEpoch())
        .arg(QLatin1String(QByteArray::fromStdString(digest).toHex()));
}

QString settingsKey(const QString& fileName)
{
    const QByteArray name = QFileInfo(fileName).absoluteFilePath().toUtf8();
    return QLatin1String("plugins/") + QLatin1String(name.toBase64(QByteArray::Base64UrlEncoding));
}

} // namespace

PluginMemory::Verdict PluginMemory::getVerdict(const QString& file)
{
    const QStringList remembered = QSettings().value(settingsKey(file)).toStringList();
    if (remembered.size() != 2)
        return Verdict::None;
    const QString print = fingerprint(file);
    return !print.isEmpty() && remembered.first() == print ? Verdict(remembered.last().toInt())
                                                           : Verdict::None;
}

void PluginMemory::setVerdict(const QString& file, Verdict verdict)
{
    QSettings settings;
    if (verdict == Verdict::None)
        settings.remove(settingsKey(file));
    else
        settings.setValue(settingsKey(file), QStringList{fingerprint(file), QString::number(int(verdict))});
}

} // namespace Vantry
