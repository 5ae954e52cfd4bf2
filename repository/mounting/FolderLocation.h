#pragma once

#include "files/FolderScan.h"

#include <QString>

namespace Repository {

// Where a folder is, and which of its files are opened: "/etc", or with conditions, as in
// "/etc?include=*.conf&exclude=ssl&exclude=*.bak&depth=3". What they mean, FolderFilter tells; any byte may
// be written as %XX. What has such a name is meant itself. Immutable.
class FolderLocation
{
public:
    explicit FolderLocation(const QString& location);

    const QString& getFolder() const { return folder; }
    const Files::FolderFilter& getFilter() const { return filter; }

    // Why the conditions cannot be read; empty where they can.
    const QString& getError() const { return error; }

    // With the absolute path of the folder.
    QString toText() const;

    // A location with further conditions.
    static QString with(const QString& location, const QStringList& include, const QStringList& exclude);

private:
    void read(const QString& name, const QString& value);

    QString folder;
    QString conditions; // as they are given
    Files::FolderFilter filter;
    QString error;
};

} // namespace Repository
