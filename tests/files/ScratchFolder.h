#pragma once

#include "files/FileSaver.h"
#include "files/TemporaryName.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace TestSupport {

// A folder for one test, open to all users, and the state folder that goes with it. Names are relative to it.
class ScratchFolder
{
public:
    ScratchFolder()
    {
        if (!folder.isValid() || ::chmod(path().c_str(), 0777) != 0)
            qFatal("no folder for the test");
        qunsetenv("XDG_RUNTIME_DIR");
        qputenv("XDG_STATE_HOME", QFile::encodeName(folder.filePath(QStringLiteral("state"))));
    }

    std::string path() const { return folder.path().toStdString(); }
    std::string path(const std::string& name) const { return path() + '/' + name; }

    void makeFolder(const std::string& name, mode_t mode = 0777) const
    {
        QVERIFY(::mkdir(path(name).c_str(), mode) == 0 && ::chmod(path(name).c_str(), mode) == 0);
    }

    // Keeps the inode of a file that is there.
    void write(const std::string& name, const std::string& bytes, mode_t mode = 0644) const
    {
        QFile file(QString::fromStdString(path(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), qint64(bytes.size()));
        file.close();
        QVERIFY(::chmod(path(name).c_str(), mode) == 0);
    }

    std::string content(const std::string& name) const
    {
        QFile file(QString::fromStdString(path(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(missing)";
    }

    void remove(const std::string& name) const { ::unlink(path(name).c_str()); }

    void link(const std::string& target, const std::string& name) const
    {
        QVERIFY(::symlink(target.c_str(), path(name).c_str()) == 0);
    }

    void hardLink(const std::string& target, const std::string& name) const
    {
        QVERIFY(::link(path(target).c_str(), path(name).c_str()) == 0);
    }

    struct stat status(const std::string& name) const
    {
        struct stat result = {};
        ::lstat(path(name).c_str(), &result);
        return result;
    }

    // What saves have left, in the folder, its state folder and one below.
    QStringList leftovers() const
    {
        const QStringList ours(QLatin1String(Files::TemporaryName::prefix) + QLatin1Char('*'));
        QStringList names;
        for (const char* below : {"", "state/vantry", "sub"})
            names += QDir(folder.filePath(QLatin1String(below))).entryList(ours, QDir::Files | QDir::Hidden);
        return names;
    }

private:
    QTemporaryDir folder;
};

} // namespace TestSupport
