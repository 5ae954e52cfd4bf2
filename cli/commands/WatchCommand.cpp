#include "cli/EndSignals.h"
#include "cli/Output.h"
#include "cli/Records.h"
#include "cli/Session.h"
#include "cli/Texts.h"
#include "cli/TypedText.h"
#include "cli/commands/Commands.h"
#include "host/FrameworkCore/Notification/UpdateOrigin.h"

#include <QHash>

#include <memory>
#include <mutex>
#include <system_error>
#include <thread>

namespace CommandLine::Commands {

namespace {

using Registration = FrameworkCore::AppConfig::Interfaces::RegistrationInterface;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

// Prints what has changed, on whatever thread it is notified. It knows the values, since a file that is
// read anew notifies for every attribute.
class ChangePrinter
{
public:
    ChangePrinter(const Source& watched, const Invocation& invocation)
        : source(watched), records(invocation, Records::Ending::Open)
    {
    }

    // While it is held, what changes waits to be printed, and is not if it is known by then.
    std::unique_lock<std::mutex> hold() { return std::unique_lock(mutex); }

    // While it is held.
    void remember(const QString& path, const QVariant& value) { values.insert(path, value); }

    void print(const QString& path, UpdateResult result, const QVariant& value)
    {
        const std::lock_guard lock(mutex);
        const auto known = values.find(path);
        if (result == UpdateResult::Removed) {
            if (values.remove(path) > 0)
                add(QStringLiteral("removed"), source.relativePath(path), nullptr);
        } else if (known == values.end() || *known != value) {
            add(known == values.end() ? QStringLiteral("created") : QStringLiteral("changed"),
                source.relativePath(path), &value);
            values.insert(path, value);
        }
        Output::flush();
    }

private:
    // A removed one has no value.
    void add(const QString& change, const QString& path, const QVariant* value)
    {
        Records::Fields fields{{"change", change}, {"path", path}};
        const QString origin = FrameworkCore::Notification::UpdateOrigin::current();
        if (!origin.isEmpty())
            fields.emplace_back("origin", origin);
        if (value)
            fields.insert(fields.end(), {{"type", TypedText::nameOf(*value)}, {"value", *value}});
        if (records.areJson())
            records.add(fields);
        else
            records.add(change + QLatin1Char(' ') + path +
                        (value ? QStringLiteral(" = ") + records.valueText(*value) : QString()));
    }

    const Source& source; // not owned
    std::mutex mutex;     // guards what follows, and stdout
    Records records;
    QHash<QString, QVariant> values;
};

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

// Has the printer know all that matches, and print every change after that. Null for a pattern that is none.
std::shared_ptr<Registration> follow(Session::RepositoryInterface& repository, const QString& pattern,
                                     ChangePrinter& printer)
{
    const auto held = printer.hold(); // so that what changes meanwhile is either read here or printed
    auto registration = repository.getNotificationInterface()->registerUpdateCallback(
        pattern,
        [&printer](const QString& path, const UpdatePoint&, const UpdateResult& result, const QVariant& value,
                   const QString&) { printer.print(path, result, value); },
        int(UpdatePoint::AfterStore));
    if (!registration)
        return nullptr;
    const QStringList paths = repository.getTreeInterface()->findPaths({pattern});
    for (const QString& path : paths) {
        if (const auto attribute = repository.getReaderInterface()->getAttribute(path))
            printer.remember(path, attribute->getValue());
    }
    EndSignals::keep();
    return registration;
}

ExitCode run(Session& session, const Invocation& invocation)
{
    EndSignals::begin();
    const QString noThread = findNoThread();
    if (!noThread.isEmpty())
        return Session::fail(
            ExitCode::BadFile,
            Texts::tr("%1: it cannot be watched: %2").arg(invocation.arguments.first(), noThread));
    const Source* source = session.open(invocation.arguments.at(0), Session::Opening::Read);
    if (!source)
        return session.getFailure();
    if (source->isStandardInput)
        return Session::fail(ExitCode::Usage, Texts::tr("%1: only files can be watched").arg(source->given));
    const QString pattern = source->fullPath(invocation.arguments.value(1, QStringLiteral("*")));
    ChangePrinter printer(*source, invocation);
    const auto registration = follow(session.getRepository(), pattern, printer);
    if (!registration)
        return Session::fail(
            ExitCode::Usage,
            Texts::tr("'%1' is not a path or pattern: names joined by \".\", none of them empty")
                .arg(invocation.arguments.value(1)));
    EndSignals::wait();
    registration->endAndWait();
    return ExitCode::Done;
}

} // namespace

Command watch()
{
    Command command{
        "watch",
        QT_TRANSLATE_NOOP("CommandLine", "print changes as they happen, until interrupted"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "Prints a line for each attribute that another program changes in the file: \"changed PATH = "
            "VALUE\", \"created PATH = VALUE\" or \"removed PATH\". In PATTERN \"*\" stands for any run of "
            "characters; without it all attributes are watched. Ctrl+C ends it with exit code 0.\n"
            "With --json: an object a line, with \"change\" (changed, created or removed), \"path\" and, "
            "unless it is "
            "removed, \"type\" and \"value\"; \"origin\" is \"fleet\" for what comes from a store."),
        {{{"FILE", Word::File}, {"PATTERN", Word::Pattern, Argument::Count::Optional}}},
        {jsonOption, nullOption},
        {"vantry watch app.ini", "vantry watch app.ini 'server.*'"},
        run};
    command.watchesFiles = true;
    return command;
}

} // namespace CommandLine::Commands
