#pragma once

#include "repository/documents/common/Document.h"

#include <QString>

#include <memory>
#include <string>

namespace CommandLine {

// A file parsed apart from the repository, for what is asked about its bytes.
class DocumentFile
{
public:
    // The format is a backend type.
    static DocumentFile read(const QString& path, const QString& format);

    bool ok() const { return document != nullptr; }
    const QString& getError() const { return error; } // "LINE:COLUMN: reason" where it has a place

    // The error with the file's name before it.
    QString getErrorOf(const QString& given) const;

    Repository::Documents::Document& getDocument() const { return *document; }
    const std::string& getBytes() const { return bytes; } // as they were read

    // Where the value of an entry stands, as ":LINE:COLUMN"; empty when it is not known.
    QString positionOf(const QString& entryPath) const;

private:
    std::string bytes;
    QString error;
    bool hasPlace = false; // the error
    std::unique_ptr<Repository::Documents::Document> document;
};

} // namespace CommandLine
