#include "desk/files/KeptChanges.h"

#include "desk/files/FileNames.h"
#include "files/StateFolder.h"
#include "host/Utilities/ModelViews/AttributeValueText.h"
#include "host/Utilities/ModelViews/TextFile.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QDir>
#include <QLockFile>

namespace Vantry {

using FrameworkCore::AppConfig::Interfaces::UnsavedChange;
using Utilities::ModelViews::TextFile;

namespace {

const QLatin1String diffEnding(".diff");
const QLatin1String changesEnding(".changes"); // beside the diff
constexpr quint32 formatTag = 0x56434831;      // begins the changes

// What is translated here; a free tr() would be listed under another name than it is looked up by.
struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(Vantry::KeptChanges)
};

QString endedFolder()
{
    return QFile::decodeName(Files::StateFolder::path().c_str()) + QStringLiteral("/unsaved");
}

// With a folder for each running program, and a lock beside it.
QDir runningFolders()
{
    return QFile::decodeName(Files::StateFolder::path().c_str()) + QStringLiteral("/running");
}

// Null while a program that runs has the folder.
std::unique_ptr<QLockFile> lockRunning(const QString& name)
{
    auto lock = std::make_unique<QLockFile>(runningFolders().filePath(name + QStringLiteral(".lock")));
    lock->setStaleLockTime(0); // only by its process
    return lock->tryLock() ? std::move(lock) : nullptr;
}

// A name that is free there and says of which file.
QString freeName(const QDir& folder, const QString& stem)
{
    QString name = folder.filePath(stem + diffEnding);
    for (int number = 2; QFileInfo::exists(name); ++number)
        name = folder.filePath(QStringLiteral("%1 (%2)%3").arg(stem, QString::number(number), diffEnding));
    return name;
}

// Whether there is a folder, which is closed to other users.
bool hasStateFolder()
{
    std::string reason;
    bool isAbsent = false;
    return Files::StateFolder::open(Files::SystemCalls::system(), reason, isAbsent) != nullptr;
}

QString changesFileOf(const QString& diffFile)
{
    return diffFile.left(diffFile.size() - diffEnding.size()) + changesEnding;
}

QByteArray writtenChanges(const QString& file, const KeptChanges::Changes& changes)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << formatTag << file << quint32(changes.size());
    for (const UnsavedChange& change : changes)
        stream << change.path << qint32(change.kind) << change.before << change.after << change.isConflict;
    return bytes;
}

// The file that the changes are of; empty when they are none.
QString beginReading(QDataStream& stream)
{
    stream.setVersion(QDataStream::Qt_5_15);
    quint32 tag = 0;
    QString file;
    stream >> tag >> file;
    return tag == formatTag && stream.status() == QDataStream::Ok ? file : QString();
}

QVector<KeptChanges::Entry> entriesIn(const QDir& folder)
{
    QVector<KeptChanges::Entry> entries;
    const auto files =
        folder.entryInfoList({QLatin1Char('*') + diffEnding}, QDir::Files, QDir::Time | QDir::Reversed);
    for (const QFileInfo& diff : files) {
        KeptChanges::Entry entry{diff.filePath(), {}, diff.lastModified()};
        QFile changes(changesFileOf(entry.diffFile));
        if (changes.open(QIODevice::ReadOnly)) {
            QDataStream stream(&changes);
            entry.file = beginReading(stream);
        }
        entries.append(entry);
    }
    return entries;
}

// As a diff of the values alone.
QString diffOfValues(const QString& file, const KeptChanges::Changes& changes)
{
    const auto lines = [](QChar sign, const QVariant& value) {
        constexpr int longest = 20000;
        constexpr int mostLines = 200;
        QString text = Utilities::ModelViews::attributeValueLines(value, longest, mostLines);
        text.replace(QLatin1Char('\n'), QLatin1Char('\n') + QString(sign));
        return sign + text + QLatin1Char('\n');
    };
    QString diff = QStringLiteral("--- %1\n+++ %1\n").arg(file);
    for (const UnsavedChange& change : changes) {
        diff += QStringLiteral("@@ %1 @@\n").arg(change.path);
        if (change.kind != UnsavedChange::Kind::Created)
            diff += lines(QLatin1Char('-'), change.before);
        if (change.kind != UnsavedChange::Kind::Removed)
            diff += lines(QLatin1Char('+'), change.after);
    }
    return diff;
}

} // namespace

std::unique_ptr<KeptChanges::RunningPlace> KeptChanges::RunningPlace::take()
{
    std::string reason;
    if (!Files::StateFolder::make(Files::SystemCalls::system(), reason) ||
        !runningFolders().mkpath(QStringLiteral(".")))
        return nullptr;
    constexpr int mostPlaces = 100; // where no lock can be made, there is none at any number
    for (int number = 1; number <= mostPlaces; ++number) {
        const QString name = QString::number(number);
        if (auto lock = lockRunning(name)) {
            runningFolders().mkpath(name);
            auto place = std::make_unique<RunningPlace>();
            place->folder = runningFolders().filePath(name);
            place->lock = std::move(lock);
            return place;
        }
    }
    return nullptr;
}

KeptChanges::RunningPlace::~RunningPlace() = default;

QString KeptChanges::keep(const QString& file, const QString& diff, const Changes& changes, QString& error,
                          const RunningPlace* place)
{
    constexpr int mostOfName = 60; // whatever its letters are, a file system takes that many of them
    std::string reason;
    if (!Files::StateFolder::make(Files::SystemCalls::system(), reason)) { // it is closed to other users
        error = QString::fromStdString(reason);
        return {};
    }
    const QDir folder(place ? place->folder : endedFolder());
    if (!folder.mkpath(QStringLiteral("."))) {
        error = Texts::tr("%1 cannot be made").arg(folder.path());
        return {};
    }
    const QString name =
        freeName(folder, distinctFileNames({file}).first().left(mostOfName) +
                             QDateTime::currentDateTime().toString(QStringLiteral(" yyyy-MM-dd hh.mm.ss")));
    error = TextFile::write(name, diff, TextFile::Readers::OwnerOnly);
    if (!error.isEmpty())
        return {};
    error = TextFile::writeBytes(changesFileOf(name), writtenChanges(file, changes),
                                 TextFile::Readers::OwnerOnly);
    return name; // people can put the diff in by hand
}

QVector<KeptChanges::Entry> KeptChanges::getEntries()
{
    return hasStateFolder() ? entriesIn(endedFolder()) : QVector<Entry>();
}

QVector<KeptChanges::Entry> KeptChanges::takeOver(const RunningPlace& place)
{
    const QDir folder(endedFolder());
    folder.mkpath(QStringLiteral("."));
    QVector<Entry> entries = entriesIn(runningFolders()); // from when there were no places
    const QStringList names = runningFolders().entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    std::vector<std::unique_ptr<QLockFile>> locks; // until all are moved
    for (const QString& name : names) {
        const QString running = runningFolders().filePath(name);
        if (running != place.folder) {
            locks.push_back(lockRunning(name));
            if (!locks.back())
                continue;
        }
        entries += entriesIn(running);
    }
    for (Entry& entry : entries) {
        const QString name = freeName(folder, QFileInfo(entry.diffFile).completeBaseName());
        QFile::rename(changesFileOf(entry.diffFile), changesFileOf(name));
        QFile::rename(entry.diffFile, name);
        entry.diffFile = name;
    }
    return entries;
}

QString KeptChanges::readDiff(const Entry& entry, QString& error)
{
    QString diff;
    error = TextFile::read(entry.diffFile, diff);
    return diff;
}

KeptChanges::Changes KeptChanges::readChanges(const Entry& entry, QString& error)
{
    QByteArray bytes;
    error = TextFile::readBytes(changesFileOf(entry.diffFile), bytes);
    if (!error.isEmpty())
        return {};
    QDataStream stream(bytes);
    quint32 count = 0;
    bool isWhole = !beginReading(stream).isEmpty();
    stream >> count;
    Changes changes;
    while (isWhole && changes.size() < int(count)) {
        UnsavedChange change;
        qint32 kind = 0;
        stream >> change.path >> kind >> change.before >> change.after >> change.isConflict;
        change.kind = UnsavedChange::Kind(kind);
        isWhole =
            stream.status() == QDataStream::Ok && kind >= 0 && kind <= int(UnsavedChange::Kind::Removed);
        changes.append(change);
    }
    if (isWhole)
        return changes;
    error = Texts::tr("%1 is damaged").arg(changesFileOf(entry.diffFile));
    return {};
}

QString KeptChanges::replace(const Entry& entry, const Changes& changes)
{
    const QString changesFile = changesFileOf(entry.diffFile);
    if (!changes.isEmpty()) {
        const QString error = TextFile::writeBytes(changesFile, writtenChanges(entry.file, changes),
                                                   TextFile::Readers::OwnerOnly);
        return error.isEmpty() ? TextFile::write(entry.diffFile, diffOfValues(entry.file, changes),
                                                 TextFile::Readers::OwnerOnly)
                               : error;
    }
    for (const QString& file : {entry.diffFile, changesFile}) {
        if (!QFile::remove(file) && QFile::exists(file))
            return Texts::tr("%1 cannot be removed").arg(file);
    }
    return {};
}

} // namespace Vantry
