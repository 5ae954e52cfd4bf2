#include "desk/plugins/PluginPlace.h"

#include "desk/plugins/PluginTexts.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace Vantry {

namespace {

struct stat statusOf(const QString& path)
{
    struct stat status = {};
    lstat(QFile::encodeName(path).constData(), &status);
    return status;
}

// Who may change this program may have it do anything, so he may change its plug-ins as well.
class Trust
{
public:
    Trust()
        : program(statusOf(QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath())),
          folder(QFileInfo(QCoreApplication::applicationDirPath()).canonicalFilePath())
    {
    }

    bool isOwnerTrusted(const struct stat& status) const
    {
        return status.st_uid == 0 || status.st_uid == geteuid() || status.st_uid == program.st_uid;
    }

    bool mayOthersWrite(const struct stat& status) const
    {
        const bool isGroupTrusted =
            status.st_gid == 0 || ((program.st_mode & S_IWGRP) && status.st_gid == program.st_gid);
        return ((status.st_mode & S_IWGRP) && !isGroupTrusted) ||
               ((status.st_mode & S_IWOTH) && !(program.st_mode & S_IWOTH));
    }

    bool isAboveProgram(const QString& path) const
    {
        return folder == path || path == QLatin1String("/") || folder.startsWith(path + QLatin1Char('/'));
    }

private:
    struct stat program;
    QString folder;
};

// Goes from the root to a file, through every link.
class Walk
{
public:
    explicit Walk(const QString& file) : components(file.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {}

    QString findFault()
    {
        while (!components.isEmpty()) {
            const QString name = components.takeFirst();
            if (name == QLatin1String(".."))
                folder = QFileInfo(folder).path();
            if (name == QLatin1String(".") || name == QLatin1String(".."))
                continue;
            const QString entry =
                folder == QLatin1String("/") ? folder + name : folder + QLatin1Char('/') + name;
            const struct stat status = statusOf(entry);
            const QString fault = findFaultOf(entry, status);
            if (!fault.isEmpty())
                return fault;
            if (!S_ISLNK(status.st_mode))
                folder = entry;
            else if (!follow(entry))
                return PluginTexts::tr("'%1' is a link that leads nowhere").arg(entry);
        }
        return {};
    }

private:
    QString findFaultOf(const QString& entry, const struct stat& status) const
    {
        const struct stat above = statusOf(folder);
        const bool isSticky = above.st_mode & S_ISVTX; // there nobody renames or removes what others own
        if (!trust.isAboveProgram(folder) && trust.mayOthersWrite(above) &&
            !(isSticky && trust.isOwnerTrusted(status)))
            return changeable(folder);
        const bool isJudged = !S_ISDIR(status.st_mode) || !trust.isAboveProgram(entry);
        if (isJudged && !trust.isOwnerTrusted(status))
            return changeable(entry);
        if (S_ISREG(status.st_mode) && trust.mayOthersWrite(status))
            return changeable(entry);
        return {};
    }

    static QString changeable(const QString& path)
    {
        return PluginTexts::tr(
                   "other users can change '%1'; take away their permission to write there, or name "
                   "the plug-in's folder with --shared-plugin-dir")
            .arg(path);
    }

    bool follow(const QString& link)
    {
        constexpr int mostLinks = 40; // as the system follows
        std::error_code error;
        const auto target = std::filesystem::read_symlink(QFile::encodeName(link).toStdString(), error);
        if (++links > mostLinks || error)
            return false;
        if (target.is_absolute())
            folder = QStringLiteral("/");
        const QString path = QFile::decodeName(QByteArray::fromStdString(target.string()));
        components = path.split(QLatin1Char('/'), Qt::SkipEmptyParts) + components;
        return true;
    }

    const Trust trust;
    QStringList components; // those still to come
    QString folder = QStringLiteral("/");
    int links = 0;
};

} // namespace

QString faultOfPluginPlace(const QString& file)
{
    return Walk(QFileInfo(file).absoluteFilePath()).findFault();
}

} // namespace Vantry
