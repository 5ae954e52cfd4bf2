#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

namespace Vantry {

// What the command line asks for.
struct Options
{
    Q_DECLARE_TR_FUNCTIONS(Vantry::Options)

public:
    QStringList files;
    QStringList pluginFolders;       // empty: the usual places
    QStringList sharedPluginFolders; // beside those, although others may write there
    bool isSafe = false;             // load no plug-in
    QString pictureFile;             // not empty: draw the window into this file and end
    QString language;                // not empty: that of this start
    QStringList triedPlugins;        // not empty: only try these plug-ins, and say how it went

    QString error; // not empty: the command line was wrong, and why
    bool wantsHelp = false;
    bool wantsVersion = false;
    bool wantsManual = false;

    static Options parse(const QStringList& arguments);
    static QString helpText();
    static QString manPage(); // vantry-desk(1)
};

} // namespace Vantry
