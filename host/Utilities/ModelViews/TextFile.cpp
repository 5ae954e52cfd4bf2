#include "host/Utilities/ModelViews/TextFile.h"

#include "host/FrameworkCore/Values/Utf8.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <tuple>
#include <unistd.h>

namespace Utilities::ModelViews {

namespace {

constexpr qint64 largestSize = qint64(256) << 20;

using Status = struct stat;

QString tr(const char* text)
{
    return QCoreApplication::translate("Utilities::ModelViews::TextFile", text);
}

QString systemReason()
{
    return qt_error_string(errno);
}

// Nothing when the file is missing; an error when it is no regular file or cannot be reached.
std::optional<Status> examine(const QString& name, QString& error)
{
    Status status = {};
    if (stat(QFile::encodeName(name).constData(), &status) != 0) {
        if (errno != ENOENT)
            error = systemReason();
        return {};
    }
    if (S_ISDIR(status.st_mode))
        error = tr("it is a folder");
    else if (!S_ISREG(status.st_mode))
        error = tr("it is no regular file");
    return status;
}

QString textError(const QByteArray& bytes)
{
    const std::string_view all(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    const std::size_t zero = all.find('\0');
    if (zero == std::string_view::npos && FrameworkCore::Values::isUtf8(all))
        return {};
    std::size_t wrong = 0;
    while (wrong < zero) {
        const std::size_t length = FrameworkCore::Values::utf8Length(all.substr(wrong));
        if (length == 0)
            break;
        wrong += length;
    }
    const auto line = 1 + std::count(bytes.begin(), bytes.begin() + static_cast<int>(wrong), '\n');
    return tr("it is no text in UTF-8 (line %1)").arg(line);
}

// The new file belongs to whom the old one did. Another owner is given by the administrator only, a group by
// its members.
void keepOwner(int file, const Status& original)
{
    if (fchown(file, original.st_uid, original.st_gid) != 0)
        std::ignore = fchown(file, uid_t(-1), original.st_gid);
}

// Access lists are among them. What a file system does not take is left out.
void keepExtendedAttributes(int file, const QByteArray& originalName)
{
    QByteArray names(1 << 16, '\0'); // the most there can be
    names.resize(int(std::max<ssize_t>(0, listxattr(originalName, names.data(), std::size_t(names.size())))));
    QByteArray value(1 << 16, '\0');
    const QList<QByteArray> all = names.split('\0');
    for (const QByteArray& name : all) {
        const ssize_t size = getxattr(originalName, name, value.data(), std::size_t(value.size()));
        if (size >= 0)
            std::ignore = fsetxattr(file, name, value.constData(), std::size_t(size), 0);
    }
}

// Without this a power cut may bring the old file back, whole.
void syncFolderOf(const QString& name)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(QFileInfo(name).canonicalFilePath()).path());
    const int opened = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened < 0)
        return;
    fsync(opened);
    close(opened);
}

QString readAll(const QString& name, QByteArray& bytes)
{
    QString error;
    if (!examine(name, error) || !error.isEmpty())
        return error.isEmpty() ? qt_error_string(ENOENT) : error;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return file.errorString();
    if (file.size() <= largestSize)
        bytes = file.readAll();
    if (file.size() > largestSize || bytes.size() > largestSize)
        return tr("it is larger than %1 MiB").arg(largestSize >> 20);
    return file.error() == QFile::NoError ? QString() : file.errorString();
}

QString writeAll(QFileDevice& file, const QByteArray& bytes)
{
    for (qint64 done = 0; done < bytes.size();) { // what there is no room for is not written at once
        const qint64 count = file.write(bytes.constData() + done, bytes.size() - done);
        if (count <= 0)
            return file.errorString();
        done += count;
    }
    return {};
}

QString overwrite(QFile& file, const QByteArray& bytes)
{
    if (!file.seek(0))
        return file.errorString();
    const QString error = writeAll(file, bytes);
    if (!error.isEmpty())
        return error;
    if (!file.resize(bytes.size()))
        return file.errorString();
    return fsync(file.handle()) == 0 ? QString() : systemReason();
}

// A new file would leave the old content to the other names of this one.
QString writeInPlace(const QString& name, const QByteArray& bytes)
{
    QByteArray before;
    QString error = readAll(name, before);
    QFile file(name);
    if (error.isEmpty() && !file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        error = file.errorString();
    if (!error.isEmpty())
        return error;
    const int noRoom = bytes.size() > before.size() ? posix_fallocate(file.handle(), 0, bytes.size()) : 0;
    error = noRoom == 0 ? overwrite(file, bytes) : qt_error_string(noRoom);
    if (!error.isEmpty())
        overwrite(file, before);
    return error;
}

QString replace(const QString& name, const QByteArray& bytes)
{
    QString error;
    const std::optional<Status> original = examine(name, error);
    if (!error.isEmpty())
        return error;
    const QByteArray encodedName = QFile::encodeName(name);
    if (original && faccessat(AT_FDCWD, encodedName, W_OK, AT_EACCESS) != 0)
        return systemReason();
    if (original && original->st_nlink > 1)
        return writeInPlace(name, bytes);
    QSaveFile file(name);
    // A buffer would be written at the commit, which takes no notice of a full disk. Nor does it of a sync
    // that fails, so that is done before.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return file.errorString();
    error = writeAll(file, bytes);
    if (!error.isEmpty())
        return error;
    if (original) {
        keepOwner(file.handle(), *original);
        keepExtendedAttributes(file.handle(), encodedName);
    }
    if (fsync(file.handle()) != 0)
        return systemReason();
    if (!file.commit())
        return file.errorString();
    syncFolderOf(name);
    return {};
}

QString unread(const QString& name, const QString& error)
{
    return tr("%1 cannot be read: %2").arg(name, error);
}

QString unsaved(const QString& name, const QString& error)
{
    return tr("%1 is not saved: %2").arg(name, error);
}

} // namespace

QString TextFile::read(const QString& name, QString& text)
{
    QByteArray bytes;
    QString error = readAll(name, bytes);
    if (error.isEmpty())
        error = textError(bytes);
    if (!error.isEmpty())
        return unread(name, error);
    bytes.replace("\r\n", "\n");
    text = QString::fromUtf8(bytes); // without the mark
    return {};
}

QString TextFile::readBytes(const QString& name, QByteArray& bytes)
{
    const QString error = readAll(name, bytes);
    return error.isEmpty() ? QString() : unread(name, error);
}

QString TextFile::write(const QString& name, const QString& text)
{
    return text.isValidUtf16() ? writeBytes(name, text.toUtf8())
                               : unsaved(name, tr("the text has a character that UTF-8 cannot hold"));
}

QString TextFile::writeBytes(const QString& name, const QByteArray& bytes)
{
    const QString error = replace(name, bytes);
    return error.isEmpty() ? QString() : unsaved(name, error);
}

} // namespace Utilities::ModelViews
