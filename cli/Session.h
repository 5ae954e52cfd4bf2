#pragma once

#include "cli/Invocation.h"
#include "cli/Source.h"
#include "files/FolderScan.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QString>
#include <QTemporaryDir>

#include <deque>
#include <memory>
#include <optional>
#include <string_view>

namespace CommandLine {

// One run of the program: the repository, the files that are mounted in it, and what is reported of them.
// Every failure is reported once, on stderr, by the one who gives its exit code.
class Session
{
public:
    using RepositoryInterface = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;
    using NodeInformation = FrameworkCore::AppConfig::Interfaces::NodeInformation;
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using StatusCode = FrameworkCore::AppConfig::StatusCode;

    // Read and Edit want a file that is there; Create takes one that is yet to come, too.
    enum class Opening { Read, Edit, Create };

    // What is wrong with the options is reported, and getFailure gives its exit code.
    explicit Session(const Invocation& invocation);

    RepositoryInterface& getRepository() const { return *repository; }

    // Files are not written.
    bool isDryRun() const { return dryRun; }

    // Mounts the file that the argument names, itself, as a declared backend or as "-"; the same file is
    // mounted once. Null on failure, whose exit code getFailure gives. Files that are written are to be
    // opened first.
    const Source* open(const QString& argument, Opening opening, std::string_view formatOption = "--format");
    ExitCode getFailure() const { return failure; }

    // What is there. When it is nothing, that is a failure, reported with the nearest name, or else the hint.
    NodeInformation find(const Source& source, const QString& path, const QString& hint = {});

    // What the arguments FILE PATH name; a file alone names all of it. Nothing on failure.
    struct Place
    {
        const Source* source = nullptr; // not owned
        QString path;                   // in the repository
        NodeInformation node;
    };
    std::optional<Place> locate(Opening opening, const QString& hint = {});

    // Tells what came of an operation of the repository, a failure or warnings, in this program's words:
    // paths relative to their files, which are called as they were given. Any thread, once the files are
    // open.
    void tell(const Outcome& outcome) const;

    // The same, and the exit code of it: NotFound and the like have one each.
    ExitCode finish(const Outcome& outcome) const;

    // Writes the edits of the file, or with --dry-run prints the diff. What came from standard input goes to
    // standard output, changed or not.
    ExitCode save(const Source& source);

    // What came of an edit, and of saving it when it succeeded.
    ExitCode finish(const Outcome& outcome, const Source& edited);

    // Tells it and gives the code.
    // Tells that comments are not in a file that was written.
    static void tellLeftOut(const QString& file,
                            const FrameworkCore::AppConfig::Interfaces::TransferReport& report);

    static ExitCode fail(ExitCode code, const QString& message);

private:
    struct Declared
    {
        QString name;
        QString file;
        FrameworkCore::AppConfig::AccessMode access;
    };

    const Source* refuse(ExitCode code, const QString& message);
    const Declared* declaredBackend(const QString& name) const;
    QString declareBackends();
    QString freeRoot() const;
    const Source* findOpen(const Source& wanted) const;
    QString examineStore(Source& source, Opening opening) const;
    QString examineFile(Source& source, Opening opening, std::string_view formatOption) const;
    QString copyStandardInput(Source& source);
    static ExitCode printSaved(const Source& source);
    Files::FolderFilter chosenFiles() const;
    const Source* mount(Source source, FrameworkCore::AppConfig::AccessMode access);
    const Source* sourceOf(const Outcome& outcome) const;
    QString shownPath(const QString& path) const;
    std::shared_ptr<RepositoryInterface> makeRepository();

    const Invocation& invocation; // not owned
    const bool dryRun;
    QVector<Declared> declared;
    std::unique_ptr<QTemporaryDir> scratch;          // for a copy of standard input
    std::deque<Source> sources;                      // whose addresses stay
    std::shared_ptr<RepositoryInterface> repository; // whose threads end before the rest goes
    ExitCode failure = ExitCode::Done;
};

} // namespace CommandLine
