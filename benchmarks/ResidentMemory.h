#pragma once

#include <QFile>

#include <malloc.h>
#include <unistd.h>

inline qint64 residentBytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

// Without what other rows have freed, so that it must be asked for again.
inline qint64 trimmedResidentBytes()
{
    malloc_trim(0);
    return residentBytes();
}
