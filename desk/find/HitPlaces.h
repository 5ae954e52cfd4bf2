#pragma once

#include "desk/common/LatestTask.h"
#include "desk/files/BackendFiles.h"

#include <QHash>
#include <QObject>

namespace Vantry {

// In which files and lines attributes are, for people. Lines take a walk over the file each, so that they are
// looked up on another thread, for what is shown. GUI thread.
class HitPlaces : public QObject
{
    Q_OBJECT

public:
    // Both outlive it.
    HitPlaces(BackendFiles& files, BackendFiles::Repository& repository, QObject* parent = nullptr);

    void clear(); // what is known, as files may have changed

    // The file's name, with as much of its folder as distinguishes it, and the line once that is known; empty
    // for what is in no file. The same with its whole path.
    QString textOf(const QString& path);
    QString longTextOf(const QString& path) const;

signals:
    void changed(); // more is known

private:
    QString backendOf(const QString& path) const;
    QString withLine(const QString& file, const QString& path) const;
    void locate();

    BackendFiles& files;
    BackendFiles::Repository& repository;
    QHash<QString, QString> fileNames; // by backend
    QHash<QString, int> lines;         // by path; 0 for what is on none
    QStringList wanted; // paths whose line is to be found, those that are in sight now at the end
    LatestTask lookUp;
};

} // namespace Vantry
