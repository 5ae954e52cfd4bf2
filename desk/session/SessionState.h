#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

namespace Vantry {

// What was open and how the windows showed it, for the next start. It lies in the folder in which a person's
// programs keep their state. Any thread.
struct SessionState
{
    struct File
    {
        QString type; // of the backend
        QString name;
        QString location;
    };

    // How one window shows that.
    struct View
    {
        QStringList expanded;  // paths in the tree of attributes, those of parents first
        QString current;       // the path that is selected there
        int scroll = 0;        // of its vertical scroll bar
        QStringList monitored; // paths
        QByteArray geometry;   // of the window, and where its docks are; as Qt keeps them
        QByteArray docks;
        QMap<QString, QString> pages; // by their applications
    };

    // Empty where there is none, or none that can be read.
    static SessionState read();

    // Gives why it was not written, or nothing.
    QString write() const;

    QByteArray toJson() const;

    QVector<File> files; // without those of folders
    QStringList locked;  // backends
    QVector<View> windows;
};

} // namespace Vantry
