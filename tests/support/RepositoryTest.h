#pragma once

#include "repository/AttributeRepository.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"

#include <QTemporaryDir>

#include <memory>

namespace TestSupport {

// Tests of the repository: each has a new one and a folder of its own for the files that it mounts. Files are
// named after their backends, most of which are "m". Any thread, apart from mount, restart and init.
class RepositoryTest : public QObject
{
    Q_OBJECT

protected:
    using AccessMode = FrameworkCore::AppConfig::AccessMode;
    using Outcome = FrameworkCore::AppConfig::Outcome;

    // A path, a name or a type, also as a literal.
    struct Name : QString
    {
        Name(const QString& name) : QString(name) {}
        Name(const char* utf8) : QString(QString::fromUtf8(utf8)) {}
    };

    auto backends() const { return repository->getBackendInterface(); }
    auto changes() const { return repository->getChangesInterface(); }
    auto history() const { return repository->getHistoryInterface(); }
    auto notifications() const { return repository->getNotificationInterface(); }
    auto transfer() const { return repository->getTransferInterface(); }
    auto tree() const { return repository->getTreeInterface(); }
    auto validations() const { return repository->getValidationInterface(); }

    QString fileOf(const Name& name) const { return folder->filePath(name); }
    QString put(const Name& name, const QByteArray& text) const { return writeFile(fileOf(name), text); }

    // Writes the file first.
    Outcome mount(const Name& type, const Name& name, const QByteArray& text,
                  AccessMode access = AccessMode::ReadWrite);
    // A file as it is, or is not.
    Outcome mountFile(const Name& type, const Name& name, const QString& file,
                      AccessMode access = AccessMode::ReadWrite, int option = 2);
    Outcome save(const Name& name = "m") { return backends()->save(name); }
    Outcome reload(const Name& name = "m") { return backends()->reloadBackend(name); }
    Outcome close(const Name& name = "m", bool discard = false)
    {
        return backends()->closeBackend(name, discard);
    }
    QByteArray saved(const Name& name = "m"); // the file after a save, or why there was none

    Outcome copy(const Name& from, const Name& to) { return transfer()->copyTree(from, to); }
    Outcome move(const Name& from, const Name& to) { return transfer()->moveTree(from, to); }
    Outcome import(const Name& path, const Name& type, const QByteArray& text)
    {
        return transfer()->importTree(path, type, text);
    }
    QByteArray exported(const Name& path, const Name& type); // the text, or why there is none

    QVariant read(const Name& path);
    Outcome write(const Name& path, const QVariant& value, int points = 15);
    Outcome create(const Name& path, const QVariant& value, int access = 3, int option = 2);
    Outcome remove(const Name& path) { return tree()->removeTree(path); }
    QStringList paths(const Name& pattern) { return tree()->findPaths({pattern}); }
    bool exists(const Name& path) { return tree()->getNodeInformation(path).exists; }

    // All nodes whose paths begin so, sorted: what follows the beginning, value, type, access, children.
    QStringList content(const Name& beginning = "m");

    // Stays until it is ended, although the handle is dropped.
    auto listen(const Name& target, const FrameworkCore::AppConfig::Interfaces::UpdateCallback& callback,
                int points = 8)
    {
        return notifications()->registerUpdateCallback(target, callback, points);
    }

    // Another repository, to which nothing is mounted yet; the files stay.
    void restart(const Repository::RepositoryOptions& options = {});

    std::shared_ptr<Repository::AttributeRepository> repository;
    std::unique_ptr<QTemporaryDir> folder;

protected slots:
    void init();
    void cleanup() { repository.reset(); } // watches no file of a folder that goes
};

} // namespace TestSupport
