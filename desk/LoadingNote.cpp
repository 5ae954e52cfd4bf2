#include "desk/LoadingNote.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

namespace Vantry {

namespace {

// Beside the settings rather than among them: those are written to outlast a power cut, which takes longer
// than loading a plug-in. A plug-in ends the process only, and what that has written stays.
QString noteFile()
{
    return QFileInfo(QSettings().fileName()).dir().filePath(QStringLiteral("plug-in-being-loaded"));
}

} // namespace

LoadingNote::LoadingNote(const QString& file) : note(noteFile())
{
    QDir().mkpath(QFileInfo(note).path());
    QFile written(note);
    if (written.open(QIODevice::WriteOnly | QIODevice::Truncate))
        written.write(file.toUtf8());
}

LoadingNote::~LoadingNote()
{
    QFile::remove(note);
}

QString LoadingNote::takeCulprit()
{
    QFile note(noteFile());
    if (!note.open(QIODevice::ReadOnly))
        return {};
    const QString culprit = QString::fromUtf8(note.readAll());
    note.remove();
    return culprit;
}

} // namespace Vantry
