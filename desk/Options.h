#pragma once

#include <QString>
#include <QStringList>

namespace Vantry {

// What the command line asks for.
struct Options
{
    QStringList files;
    QStringList pluginFolders; // empty: the usual places
    QString pictureFile;       // not empty: draw the window into this file and end
    QString triedPlugin;       // not empty: only try to load this plug-in, and say how it went

    QString error; // not empty: the command line was wrong, and why
    bool wantsHelp = false;
    bool wantsVersion = false;

    static Options parse(const QStringList& arguments);
    static QString helpText();
};

} // namespace Vantry
