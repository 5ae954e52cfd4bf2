#pragma once

#include "cli/Session.h"
#include "host/FrameworkCore/AppConfig/FilePosition.h"

#include <QHash>
#include <QString>

#include <unordered_map>

namespace CommandLine {

// Where values are in their files, of which each is looked through once, however many are asked for.
class ValuePlaces
{
public:
    using FilePosition = FrameworkCore::AppConfig::FilePosition;

    explicit ValuePlaces(const Session& openSession) : session(openSession) {}

    // Of a node without a value, that of the first one below it; without a line where there is none.
    FilePosition of(const QString& fullPath);

private:
    struct File
    {
        QString name;
        QHash<QString, FilePosition> positions; // by path
    };

    const File& fileOf(const QString& backend);

    const Session& session;                      // not owned
    std::unordered_map<std::string, File> files; // by backend
};

} // namespace CommandLine
