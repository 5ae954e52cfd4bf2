#pragma once

#include "host/FrameworkCore/AppConfig/FilePosition.h"
#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "host/FrameworkCore/CoreExport.h"

#include <QString>
#include <QVector>

namespace FrameworkCore::AppConfig::Interfaces {

// Where the value of an attribute is in its file, once that is saved.
struct TextPlace
{
    FilePosition position; // the file is the location that the backend was given
    QString comment; // of the attribute: the lines above it, then the rest of its line; empty without one

    // The line of the file as it is on the disk: while that has no such line yet, the one that it would come
    // before.
    int lineOnDisk = 0;
    bool isOnDisk = true;
};

// The bytes of a value in a text.
struct TextSpan
{
    QString path;
    int offset = 0; // in QChars
    int length = 0;
    bool isUnsaved = false; // it was created or changed since the file was read or saved
};

// What saving would write into a file, as people read it.
struct BackendText
{
    QString text;
    QVector<TextSpan> values; // in the order of the text
};

// The texts of backends, with all edits, and where in them the values are. Any thread. Costs grow with the
// size of a text, so that a thread with a window to serve asks on another one. Refusals are not logged.
class VANTRY_CORE_EXPORT TextInterface
{
public:
    virtual ~TextInterface() = default;

    // Gives the place of an attribute; that of a node without a value is the one of the first value below it.
    // The comment of what may not be read stays empty. NotFound where there is no value, or it is in no file.
    virtual Outcome locate(const QString& path, TextPlace& place) const = 0;

    // Gives the attribute that somebody means by a line and a column of a backend's file as it is on the
    // disk, both from 1: the one whose value is there, else on this line the next one or else the last, and
    // where the line has no value, as that of a comment, the next one. NotFound where there is none.
    virtual Outcome findAt(const QString& backend, int line, int column, QString& path) const = 0;

    // Gives the text of a backend; NotReadable for one whose values may not be read.
    virtual Outcome getText(const QString& backend, BackendText& text) const = 0;

    // Another number after every change of the backend's text; 0 for an unknown one. Cheap enough to be asked
    // often.
    virtual quint64 getRevision(const QString& backend) const = 0;
};

} // namespace FrameworkCore::AppConfig::Interfaces
