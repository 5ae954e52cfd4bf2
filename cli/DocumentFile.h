#pragma once

#include "repository/documents/common/Document.h"

#include <QString>

#include <memory>
#include <string>

namespace CommandLine {

// A file parsed apart from the repository, for what is asked about its bytes.
struct DocumentFile
{
    // The format is a backend type.
    static DocumentFile read(const QString& path, const QString& format);

    // The error with the file's name before it.
    QString errorOf(const QString& given) const;

    // Where the value of an entry is, as ":LINE:COLUMN"; empty when it is not known.
    QString positionOf(const QString& entryPath) const;

    std::string bytes;                                         // as they were read
    QString error;                                             // "LINE:COLUMN: reason" where it has a place
    bool hasPlace = false;                                     // the error
    std::unique_ptr<Repository::Documents::Document> document; // null when there is an error
};

} // namespace CommandLine
