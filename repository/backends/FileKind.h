#pragma once

#include "files/FileLocation.h"

#include <QString>

namespace Repository {

// Why what the path leads to cannot be read as a file that has an end, found out without opening it: a
// folder, a pipe, a device, or a view of the kernel that only some may read, such as its log. Empty for every
// other file, and where there is nothing. Any thread.
QString refusalOfKind(const QString& path);

// Where a path leads. Any thread.
Files::FileLocation locationOf(const QString& path);

// Two paths of one file compare equal, also of one that is yet to be made. Any thread.
QString fileIdentity(const QString& path);
QString fileIdentity(const QString& path, const Files::FileLocation& location); // which is that of the path

} // namespace Repository
