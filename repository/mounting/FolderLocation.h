#pragma once

#include "files/FolderScan.h"

#include <QString>

namespace Repository {

// Where a folder is, and which of its files are opened: "/etc", or with conditions, as in
// "/etc?include=*.conf&exclude=ssl&exclude=*.bak&depth=3&size=2M". What they mean, FolderFilter tells; a
// size is in bytes, or with K, M or G in 1024 of them and so on; any byte may be written as %XX. What has
// such a name is meant itself. Immutable.
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
    static QString with(const QString& location, const Files::FolderFilter& further);

private:
    void read(const QString& name, const QString& value);
    void readDepth(const QString& value);
    void readSize(const QString& value);

    QString folder;
    QString conditions; // as they are given
    Files::FolderFilter filter;
    QString error;
};

} // namespace Repository
