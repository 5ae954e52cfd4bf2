#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace Vantry {

// What a window had open and how it showed that, for the next start. It lies in the folder in which a
// person's programs keep their state. Any thread.
struct SessionState
{
    struct File
    {
        QString type; // of the backend
        QString name;
        QString location;
    };

    // Empty where there is none, or none that can be read.
    static SessionState read();

    // Gives why it was not written, or nothing.
    QString write() const;

    QByteArray toJson() const;

    QVector<File> files;   // without those of folders
    QStringList expanded;  // paths in the tree of attributes, those of parents first
    QString current;       // the path that is selected there
    int scroll = 0;        // of its vertical scroll bar
    QStringList monitored; // paths
};

} // namespace Vantry
