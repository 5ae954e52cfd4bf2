#include "tests/soak/ProcessUse.h"

#include <QDir>
#include <QFile>

#include <malloc.h>

namespace Soak {

namespace {

constexpr double megabyte = 1 << 20;

QList<QByteArray> linesOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QList<QByteArray>();
}

// The sum of the numbers behind the name in a file of /proc.
qint64 sumOf(const QList<QByteArray>& lines, const char* name)
{
    qint64 sum = 0;
    for (const QByteArray& line : lines) {
        if (line.startsWith(name))
            sum += line.mid(int(qstrlen(name))).simplified().split(' ').first().toLongLong();
    }
    return sum;
}

int countWatches()
{
    int count = 0;
    const QDir handles(QStringLiteral("/proc/self/fdinfo"));
    for (const QString& handle : handles.entryList(QDir::Files)) {
        for (const QByteArray& line : linesOf(handles.filePath(handle)))
            count += line.startsWith("inotify wd:") ? 1 : 0;
    }
    return count;
}

} // namespace

ProcessUse ProcessUse::now()
{
    ProcessUse use;
    const auto memory = linesOf(QStringLiteral("/proc/self/smaps_rollup"));
    use.resident =
        double(sumOf(memory, "Private_Clean:") + sumOf(memory, "Private_Dirty:")) * 1024 / megabyte;
    const struct mallinfo2 heap = ::mallinfo2();
    use.heapInUse = double(heap.uordblks + heap.hblkhd) / megabyte;
    use.heapHeld = double(heap.arena + heap.hblkhd) / megabyte;
    use.handles = QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size();
    use.watches = countWatches();
    use.threads = int(sumOf(linesOf(QStringLiteral("/proc/self/status")), "Threads:"));
    return use;
}

} // namespace Soak
