#include "cli/Output.h"
#include "cli/Session.h"
#include "cli/commands/Commands.h"

#include <QHash>

#include <csignal>
#include <mutex>
#include <system_error>
#include <thread>

namespace CommandLine::Commands {

namespace {

using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

// Prints what has changed, on whatever thread it is notified. It knows the values, since a file that is
// read anew notifies for every attribute.
class ChangePrinter
{
public:
    explicit ChangePrinter(const Source& watched) : source(watched) {}

    void remember(const QString& path, const QVariant& value) { values.insert(path, value); }

    void print(const QString& path, UpdateResult result, const QVariant& value)
    {
        const std::lock_guard lock(mutex);
        const QString shown = source.relativePath(path);
        const auto known = values.find(path);
        if (result == UpdateResult::Removed) {
            values.remove(path);
            Output::line(QStringLiteral("removed ") + shown);
        } else if (known == values.end() || *known != value) {
            const QString what =
                known == values.end() ? QStringLiteral("created") : QStringLiteral("changed");
            Output::line(QStringLiteral("%1 %2 = %3").arg(what, shown, Output::valueInLine(value)));
            values.insert(path, value);
        }
        Output::flush();
    }

private:
    const Source& source; // not owned
    std::mutex mutex;     // guards what follows, and stdout
    QHash<QString, QVariant> values;
};

// Blocked before any thread starts, so that none but this one gets them.
sigset_t blockEndSignals()
{
    sigset_t endSignals;
    sigemptyset(&endSignals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&endSignals, number);
    pthread_sigmask(SIG_BLOCK, &endSignals, nullptr);
    return endSignals;
}

// The reason if a thread for watching files cannot be started; empty otherwise.
QString findNoThread()
{
    try {
        std::thread([] {}).join();
    } catch (const std::system_error& error) {
        return QString::fromStdString(error.code().message());
    }
    return {};
}

ExitCode run(Session& session, const Invocation& invocation)
{
    const sigset_t endSignals = blockEndSignals();
    const QString noThread = findNoThread();
    if (!noThread.isEmpty())
        return Session::fail(
            ExitCode::BadFile,
            QStringLiteral("%1: it cannot be watched: %2").arg(invocation.arguments.first(), noThread));
    const Source* source = session.open(invocation.arguments.at(0), Session::Opening::Read);
    if (!source)
        return session.getFailure();
    if (source->isStandardInput)
        return Session::fail(ExitCode::Usage,
                             QStringLiteral("%1: only files can be watched").arg(source->given));
    const QString pattern = source->fullPath(invocation.arguments.value(1, QStringLiteral("*")));
    auto& repository = session.getRepository();
    ChangePrinter printer(*source);
    const QStringList paths = repository.getTreeInterface()->findPaths({pattern});
    for (const QString& path : paths) {
        if (const auto attribute = repository.getReaderInterface()->getAttribute(path))
            printer.remember(path, attribute->getValue());
    }
    const auto registration = repository.getNotificationInterface()->registerUpdateCallback(
        pattern,
        [&printer](const QString& path, const UpdatePoint&, const UpdateResult& result, const QVariant& value,
                   const QString&) { printer.print(path, result, value); },
        int(UpdatePoint::AfterStore));
    if (!registration)
        return Session::fail(
            ExitCode::Usage,
            QStringLiteral("'%1' is not a path or pattern: names joined by \".\", none of them empty")
                .arg(invocation.arguments.value(1)));
    int number = 0;
    sigwait(&endSignals, &number);
    registration->end();
    return ExitCode::Done;
}

} // namespace

Command watch()
{
    Command command{
        "watch",
        "print changes as they happen, until interrupted",
        "Prints a line for each attribute that another program changes in the file: \"changed PATH = "
        "VALUE\", \"created PATH = VALUE\" or \"removed PATH\". In PATTERN \"*\" stands for any run of "
        "characters; without it all attributes are watched. Ctrl+C ends it with exit code 0.",
        {{{"FILE", Word::File}, {"PATTERN", Word::Pattern, Argument::Count::Optional}}},
        {},
        {"vantry watch app.ini", "vantry watch app.ini 'server.*'"},
        run};
    command.watchesFiles = true;
    return command;
}

} // namespace CommandLine::Commands
