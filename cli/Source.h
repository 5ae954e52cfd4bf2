#pragma once

#include "host/FrameworkCore/AppConfig/AttributePath.h"

#include <QString>

namespace CommandLine {

// A file that a command works on, mounted in the session's repository. People give and are shown paths that
// are relative to its root.
struct Source
{
    QString given;                // as the command line names its file
    QString absolutePath;         // of standard input, that of a copy which is edited
    QString format;               // a backend type
    QString root;                 // the path of its root in the repository, and the backend's name
    bool isNew = false;           // there was no such file when it was opened
    bool isStandardInput = false; // what is saved goes to standard output
    bool isStore = false;         // a part of a distributed store instead of a file

    // The format without its dialect.
    QString family() const { return format.section(QLatin1Char(':'), 0, 0); }

    // Whether it is the file, or a folder with the file in it; and how that is called then.
    bool holds(const QString& file) const
    {
        return file == absolutePath || file.startsWith(absolutePath + QLatin1Char('/'));
    }
    QString shownFile(const QString& file) const { return given + file.mid(absolutePath.size()); }

    // As a result for other programs, which is the same in all languages.
    QString recordedFile(const QString& file) const
    {
        return isStandardInput ? QStringLiteral("standard input") : shownFile(file);
    }

    // The path in the repository; "" and "." are the root, and a "." at the end does not count.
    QString fullPath(const QString& path) const
    {
        const QString below = path.endsWith(QLatin1Char('.')) ? path.chopped(1) : path;
        return FrameworkCore::AppConfig::joinedPath(root, below);
    }
    QString relativePath(const QString& fullPath) const { return fullPath.mid(root.size() + 1); }
};

} // namespace CommandLine
