#include "repository/backends/FileKind.h"

#include "repository/common/Texts.h"

#include <QFile>
#include <QFileInfo>

#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace Repository {

namespace {

// Their files say that they are regular, and some wait for news when they are read.
bool isViewOfKernel(const char* path)
{
    struct statfs system = {};
    return ::statfs(path, &system) == 0 && (system.f_type == PROC_SUPER_MAGIC ||
                                            system.f_type == TRACEFS_MAGIC || system.f_type == DEBUGFS_MAGIC);
}

} // namespace

QString refusalOfKind(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat status = {};
    if (::stat(name.constData(), &status) != 0)
        return {};
    if (S_ISDIR(status.st_mode))
        return Texts::tr("it is a folder");
    if (!S_ISREG(status.st_mode))
        return Texts::tr("it is not a regular file");
    if ((status.st_mode & S_IROTH) == 0 && isViewOfKernel(name.constData()))
        return Texts::tr("it is a view of the kernel, which may have no end");
    return {};
}

Files::FileLocation locationOf(const QString& path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    return Files::FileLocation::find(Files::SystemCalls::system(), QFile::encodeName(absolute).toStdString());
}

QString fileIdentity(const QString& path)
{
    return fileIdentity(path, locationOf(path));
}

QString fileIdentity(const QString& path, const Files::FileLocation& location)
{
    return location.error == 0 ? QFile::decodeName(location.path().c_str())
                               : QFileInfo(path).absoluteFilePath();
}

} // namespace Repository
