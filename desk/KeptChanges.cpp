#include "desk/KeptChanges.h"

#include "files/StateFolder.h"
#include "host/Utilities/ModelViews/TextFile.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>

namespace Vantry {

namespace {

const QLatin1String ending(".diff");

QString tr(const char* text)
{
    return QCoreApplication::translate("Vantry::KeptChanges", text);
}

// Empty when the environment names no place.
QString folderName()
{
    const std::string state = Files::StateFolder::path();
    return state.empty() ? QString() : QFile::decodeName(state.c_str()) + QStringLiteral("/unsaved");
}

} // namespace

QString KeptChanges::keep(const QString& fileName, const QString& diff, QString& error)
{
    constexpr int mostOfName = 60; // whatever its letters are, a file system takes that many of them
    const QString name = folderName();
    const QDir folder(name);
    if (name.isEmpty() || !folder.mkpath(QStringLiteral("."))) {
        error = name.isEmpty() ? tr("HOME names no folder") : tr("%1 cannot be made").arg(name);
        return {};
    }
    // The values of a file may be for its owner's eyes only.
    QFile::setPermissions(name, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString stem = fileName.left(mostOfName) +
                         QDateTime::currentDateTime().toString(QStringLiteral(" yyyy-MM-dd hh.mm.ss"));
    QString place = folder.filePath(stem + ending);
    for (int number = 2; QFileInfo::exists(place); ++number)
        place = folder.filePath(QStringLiteral("%1 (%2)%3").arg(stem).arg(number).arg(ending));
    using Utilities::ModelViews::TextFile;
    error = TextFile::write(place, diff, TextFile::Readers::OwnerOnly);
    return error.isEmpty() ? place : QString();
}

QStringList KeptChanges::getNotices()
{
    const QString name = folderName();
    if (name.isEmpty())
        return {};
    QStringList notices;
    const auto files =
        QDir(name).entryInfoList({QLatin1Char('*') + ending}, QDir::Files, QDir::Time | QDir::Reversed);
    for (const QFileInfo& file : files)
        notices.append(tr("Changes were not saved when the program was told to end. They are kept in\n%1\n"
                          "The program \"patch\" puts them in; remove that file when nobody needs it.")
                           .arg(file.filePath()));
    return notices;
}

} // namespace Vantry
