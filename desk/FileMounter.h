#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QObject>
#include <QSemaphore>
#include <QStringList>

#include <memory>
#include <thread>

namespace Vantry {

// Opens configuration files as backends of the repository, on a worker thread, so that a large file does not
// freeze the window. GUI thread.
class FileMounter : public QObject
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    struct Result
    {
        QStringList opened;   // files
        QStringList problems; // one text for each file that was not opened: its name and the reason
    };

    explicit FileMounter(std::shared_ptr<Repository> repository, QObject* parent = nullptr);
    ~FileMounter() override; // waits for the files that are being opened

    // Opens the files one after the other; those given meanwhile follow.
    void mount(const QStringList& files);

    bool isBusy() const;

    // Blocks until the files given first are opened, but no longer than that. True when they are: the events
    // by which their attributes and the result come to this thread are then posted.
    bool waitForFirst(int mostMilliseconds) const;

    // Where a file is mounted; the name is free in the repository.
    static QString mountName(const QString& file, Repository& repository);

signals:
    void mounted(const Vantry::FileMounter::Result& result);

private:
    void startNext();
    void finish(const Result& result);

    std::shared_ptr<Repository> repository;
    QStringList waiting;
    std::thread worker;
    std::shared_ptr<QSemaphore> firstOpened; // has one once they are
    bool isMounting = false; // until its result is told, which is later than until it is there
};

} // namespace Vantry
