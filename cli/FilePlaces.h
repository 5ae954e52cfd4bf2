#pragma once

#include "cli/DocumentFile.h"
#include "cli/Session.h"

#include <QString>

#include <map>

namespace CommandLine {

// Where attributes are in their files, also in those of a folder. Files are read when they are asked about
// first.
class FilePlaces
{
public:
    struct Place
    {
        QString file;        // as people here give it
        qulonglong line = 0; // of the value, from 1; 0 for a group
        qulonglong column = 0;
    };

    explicit FilePlaces(const Session& openSession) : session(openSession) {}

    Place of(const Source& source, const QString& fullPath);

private:
    const Session& session;                // not owned
    std::map<QString, DocumentFile> files; // by their backends
};

} // namespace CommandLine
