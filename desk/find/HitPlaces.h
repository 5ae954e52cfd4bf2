#pragma once

#include "desk/files/BackendFiles.h"

#include <QHash>
#include <QObject>

namespace Vantry {

// In which files attributes are, for people. GUI thread.
class HitPlaces : public QObject
{
    Q_OBJECT

public:
    // Both outlive it.
    HitPlaces(BackendFiles& files, BackendFiles::Repository& repository, QObject* parent = nullptr);

    void clear(); // what is known, as files may have changed

    // The file's name, with as much of its folder as distinguishes it, and its whole path; empty for what is
    // in no file.
    QString textOf(const QString& path);
    QString longTextOf(const QString& path) const;

signals:
    void changed(); // more is known

private:
    QString backendOf(const QString& path) const;

    BackendFiles& files;
    BackendFiles::Repository& repository;
    QHash<QString, QString> fileNames; // by backend
};

} // namespace Vantry
