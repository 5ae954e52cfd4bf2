#include "desk/plugins/LoadingNote.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <memory>
#include <sys/file.h>
#include <utility>

namespace Vantry {

namespace {

const QLatin1String notePrefix("plug-ins-being-called-");

// Beside the settings rather than among them: those are written to outlast a power cut, which takes longer
// than loading a plug-in. A plug-in ends the process only, and what that has written stays.
QDir noteFolder()
{
    return QFileInfo(QSettings().fileName()).dir();
}

bool lock(QFile& file)
{
    return flock(file.handle(), LOCK_EX | LOCK_NB) == 0;
}

// The note of this process. It is locked while it is open, by which others see that its process lives.
class NoteFile
{
public:
    static NoteFile& own()
    {
        static NoteFile one;
        return one;
    }

    const QStringList& getNoted() const { return noted; }

    void keepNone() { isKept = false; }

    void write(const QStringList& files)
    {
        noted = files;
        if (!isKept)
            return;
        if (noted.isEmpty()) {
            if (file)
                file->remove();
            file.reset();
            return;
        }
        if (!file && !open())
            return;
        file->resize(0);
        file->seek(0);
        file->write(noted.join(QLatin1Char('\n')).toUtf8());
        file->flush();
    }

private:
    // False where it cannot be kept, as on a full disk.
    bool open()
    {
        const QDir folder = noteFolder();
        folder.mkpath(QStringLiteral("."));
        auto opened = std::make_unique<QFile>(
            folder.filePath(notePrefix + QString::number(QCoreApplication::applicationPid())));
        if (!opened->open(QIODevice::ReadWrite) || !lock(*opened))
            return false;
        file = std::move(opened);
        return true;
    }

    bool isKept = true;
    std::unique_ptr<QFile> file;
    QStringList noted;
};

} // namespace

LoadingNote::LoadingNote(const QStringList& files) : outer(NoteFile::own().getNoted())
{
    NoteFile::own().write(files);
}

LoadingNote::~LoadingNote()
{
    NoteFile::own().write(outer);
}

void LoadingNote::keepNone()
{
    NoteFile::own().keepNone();
}

QStringList LoadingNote::takeCulprits()
{
    QStringList culprits;
    const QDir folder = noteFolder();
    for (const QString& name : folder.entryList({notePrefix + QLatin1Char('*')}, QDir::Files)) {
        QFile note(folder.filePath(name));
        if (!note.open(QIODevice::ReadWrite) || !lock(note))
            continue; // of a desk that lives
        culprits += QString::fromUtf8(note.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        note.remove();
    }
    culprits.removeDuplicates();
    return culprits;
}

} // namespace Vantry
