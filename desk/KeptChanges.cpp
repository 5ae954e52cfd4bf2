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

QString folderName()
{
    return QFile::decodeName(Files::StateFolder::path().c_str()) + QStringLiteral("/unsaved");
}

} // namespace

QString KeptChanges::keep(const QString& fileName, const QString& diff, QString& error)
{
    constexpr int mostOfName = 60; // whatever its letters are, a file system takes that many of them
    std::string reason;
    if (!Files::StateFolder::make(Files::FileOps::system(), reason)) { // it is closed to other users
        error = QString::fromStdString(reason);
        return {};
    }
    const QDir folder(folderName());
    if (!folder.mkpath(QStringLiteral("."))) {
        error = tr("%1 cannot be made").arg(folder.path());
        return {};
    }
    const QString stem = fileName.left(mostOfName) +
                         QDateTime::currentDateTime().toString(QStringLiteral(" yyyy-MM-dd hh.mm.ss"));
    QString place = folder.filePath(stem + ending);
    for (int number = 2; QFileInfo::exists(place); ++number)
        place = folder.filePath(QStringLiteral("%1 (%2)%3").arg(stem, QString::number(number), ending));
    using Utilities::ModelViews::TextFile;
    error = TextFile::write(place, diff, TextFile::Readers::OwnerOnly);
    return error.isEmpty() ? place : QString();
}

QStringList KeptChanges::getNotices()
{
    std::string reason;
    bool isAbsent = false;
    if (!Files::StateFolder::open(Files::FileOps::system(), reason, isAbsent))
        return {};
    QStringList notices;
    const auto files =
        QDir(folderName())
            .entryInfoList({QLatin1Char('*') + ending}, QDir::Files, QDir::Time | QDir::Reversed);
    for (const QFileInfo& file : files)
        notices.append(tr("Changes were not saved when the program was told to end. They are kept in\n%1\n"
                          "The program \"patch\" puts them in; remove that file when nobody needs it.")
                           .arg(file.filePath()));
    return notices;
}

} // namespace Vantry
