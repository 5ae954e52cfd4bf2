#pragma once

#include "repository/documents/common/Document.h"

#include <QString>

#include <memory>
#include <string>

namespace CommandLine {

// A file parsed apart from the repository, for what is asked about its bytes.
struct DocumentFile
{
    // A file, or standard input by the name "-". Without a format, which is a backend type, its own.
    static DocumentFile read(const QString& given, const QString& format);

    // The error with the file's name before it.
    QString explain() const;

    // Line and column of the value of an entry, from 1; 0 when they are not known.
    struct Position
    {
        qulonglong line = 0;
        qulonglong column = 0;
    };
    Position positionOf(const QString& entryPath) const;

    QString name; // in messages
    QString format;
    std::string bytes;                                         // as they were read
    QString error;                                             // "LINE:COLUMN: reason" where it has a place
    bool hasPlace = false;                                     // the error
    std::unique_ptr<Repository::Documents::Document> document; // null when there is an error

private:
    void readBytes(const QString& given);
};

} // namespace CommandLine
