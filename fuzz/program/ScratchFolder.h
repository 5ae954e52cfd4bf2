#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

namespace Fuzz {

// A folder of its own for the files that an exercise makes, emptied for each input. It is the state folder of
// the process, too, so that nothing else of the disk is touched. TMPDIR says where; in memory is best.
class ScratchFolder
{
public:
    static const ScratchFolder& instance()
    {
        static const ScratchFolder one;
        return one;
    }

    QString path() const { return folder.path(); }
    QString path(const QString& name) const { return folder.path() + QLatin1Char('/') + name; }

    void write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            std::abort();
    }

    QByteArray read(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    // Names of all files, hidden ones too.
    QStringList names() const { return QDir(path()).entryList(QDir::Files | QDir::Hidden | QDir::System); }

    void clear() const
    {
        for (const QString& name : names())
            QFile::remove(path(name));
    }

private:
    ScratchFolder()
    {
        if (!folder.isValid())
            std::abort();
        qputenv("XDG_STATE_HOME", QFile::encodeName(folder.path()));
    }

    QTemporaryDir folder;
};

} // namespace Fuzz
