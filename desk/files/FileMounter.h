#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QObject>
#include <QStringList>

#include <chrono>
#include <future>
#include <memory>
#include <vector>

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
        QStringList opened;     // files
        QStringList openBefore; // names of the backends whose files were given, but are open already
        QStringList problems;   // one text for each file that was not opened: its name and the reason
        QStringList unknown;    // those of the files that were not opened since nothing tells their format
    };

    struct Request
    {
        QString file; // or the location of a store
        QString type; // empty where the file tells its own
        QString name; // of the backend; empty, or taken meanwhile, for any that is free
    };
    using Requests = std::vector<Request>;

    explicit FileMounter(std::shared_ptr<Repository> repository, QObject* parent = nullptr);
    ~FileMounter() override; // waits for the files that are being opened

    // The backend whose file this is, by whatever path; empty when it is not open. Any thread.
    static QString backendOf(const QString& file, Repository& repository);

    // Opens the files one after the other; those given meanwhile follow. A file that takes more memory than
    // there is, is a problem of that file; without a thread to open them on, all given ones are problems.
    // Without a type, each file tells its own.
    void mount(const QStringList& files, const QString& type = {});
    void mount(const Requests& requests);

    bool isBusy() const { return worker.valid(); }

    // Blocks until what is being opened is, but no longer than that. True when it is: the events by which the
    // attributes and the result come to this thread are then posted.
    bool waitFor(std::chrono::milliseconds most) const;

    // Where a file is mounted; the name is free in the repository.
    static QString mountName(const QString& file, Repository& repository);

signals:
    void started(); // with some files, or with those given meanwhile
    void mounted(const Vantry::FileMounter::Result& result);

private:
    static Result mountFiles(const Requests& requests, const std::shared_ptr<Repository>& repository);
    void startNext();
    void finish(int run);
    Result takeResult();

    std::shared_ptr<Repository> repository;
    Requests waiting;
    Requests opening;           // what the worker was given
    std::future<Result> worker; // valid until its result is delivered, which is after it is ready
    int runs = 0;               // how many workers there were
};

} // namespace Vantry
