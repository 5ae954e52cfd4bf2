#include "cli/Output.h"
#include "cli/Session.h"
#include "cli/Texts.h"
#include "cli/commands/Commands.h"
#include "files/FileSaver.h"
#include "files/SizeLimit.h"
#include "repository/backends/FileFormat.h"
#include "repository/fleet/EtcdLocation.h"
#include "repository/merge/UnifiedDiff.h"

#include <QDir>
#include <QFileInfo>

namespace CommandLine::Commands {

namespace {

using FrameworkCore::AppConfig::Interfaces::TransferReport;

// A file that is written as a whole: one that is yet to come, or one that is to be replaced. "-" is standard
// output.
class OutputFile
{
public:
    // What is wrong with it is reported, and getFailure is its exit code.
    OutputFile(const Invocation& invocation, QString name)
        : isStandardOutput(name == QLatin1String("-")),
          given(isStandardOutput ? Texts::tr("standard output") : std::move(name)),
          format(invocation.valueOf("--to-format")), isDryRun(invocation.has("--dry-run")),
          path(QDir::current().absoluteFilePath(given).toStdString()),
          replaces(!isStandardOutput && QFileInfo::exists(given))
    {
        if (format.isEmpty())
            format = Repository::FileFormat::ofName(given);
        if (given.isEmpty())
            failure = Session::fail(ExitCode::Usage, Texts::tr("the name of a file is empty"));
        else if (Repository::EtcdLocation::isMeant(given))
            failure = Session::fail(ExitCode::Usage,
                                    Texts::tr("%1: it is a store, not a file; 'vantry import' writes into it")
                                        .arg(Repository::EtcdLocation(given).toText()));
        else if (format.isEmpty())
            failure =
                refuse(ExitCode::Usage,
                       isStandardOutput
                           ? Texts::tr("give its format with --to-format")
                           : Texts::tr("its name does not decide its format; give it with --to-format"));
        else if (replaces && !invocation.has("--force"))
            failure = refuse(ExitCode::Refused, Texts::tr("it exists already; --force replaces it"));
    }

    ExitCode getFailure() const { return failure; }
    const QString& getFormat() const { return format; }

    // Writes it whole or not at all, or with --dry-run prints the diff, and tells what is not in it. A new
    // file with something private in it is for the user alone.
    ExitCode write(const std::string& text, const TransferReport& report)
    {
        const ExitCode code = write(text, report.isPrivate());
        if (code == ExitCode::Done)
            Session::tellLeftOut(given, report);
        return code;
    }

private:
    ExitCode write(const std::string& text, bool isPrivate)
    {
        if (text.size() > Files::SizeLimit::get())
            return refuse(ExitCode::BadFile, QString::fromStdString(Files::SizeLimit::refusal()));
        if (isStandardOutput && !isDryRun) {
            Output::bytes(text);
            return ExitCode::Done;
        }
        const QString mistaking = Repository::FileFormat::tells(given, format, {})
                                      ? Repository::FileFormat::explainMistaking(given, format, text)
                                      : QString();
        if (!mistaking.isEmpty())
            return refuse(ExitCode::Refused, mistaking);
        const Files::FileSaver saver;
        Files::ReadFileResult present;
        if (replaces) {
            present = saver.read(path);
            if (!present.ok())
                return refuse(ExitCode::BadFile, QString::fromStdString(present.reason));
        }
        if (isDryRun) {
            Output::bytes(Repository::unifiedDiff(present.bytes, text, given.toStdString()));
            return ExitCode::Done;
        }
        const Files::SaveFileResult saved =
            saver.save(path, text, present.digest, {}, isPrivate ? 0600 : 0666);
        if (!saved.ok())
            return Session::fail(
                ExitCode::BadFile,
                Texts::tr("%1 is not saved: %2").arg(given, QString::fromStdString(saved.reason)));
        if (!saved.warning.empty())
            Output::message(QStringLiteral("%1: %2").arg(given, QString::fromStdString(saved.warning)));
        return ExitCode::Done;
    }

    ExitCode refuse(ExitCode code, const QString& reason) const
    {
        return Session::fail(code, QStringLiteral("%1: %2").arg(given, reason));
    }

    const bool isStandardOutput;
    const QString given;
    QString format;
    const bool isDryRun;
    const std::string path;
    const bool replaces;
    ExitCode failure = ExitCode::Done;
};

// FILE OUT for all that the file holds, or FILE PATH OUT.
ExitCode run(Session& session, const Invocation& invocation)
{
    const QStringList& words = invocation.arguments;
    OutputFile target(invocation, words.last());
    if (target.getFailure() != ExitCode::Done)
        return target.getFailure();
    const Source* source = session.open(words.first(), Session::Opening::Read);
    if (!source)
        return session.getFailure();
    const QString path = words.size() == 3 ? words.at(1) : QString();
    if (!session.find(*source, path).exists)
        return ExitCode::Negative;
    QByteArray text;
    TransferReport report;
    const ExitCode code = session.finish(session.getRepository().getTransferInterface()->exportTree(
        source->fullPath(path), target.getFormat(), text, report));
    return code == ExitCode::Done ? target.write(text.toStdString(), report) : code;
}

} // namespace

Command convert()
{
    return {
        "convert",
        QT_TRANSLATE_NOOP("CommandLine", "write what a file holds as a file of another format"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "The second FILE is written anew, in the format that its name says. Within one format it is as "
            "it was written; otherwise comments come along as far as the format has any, and types do, in "
            "type tags "
            "where the format has no form of its own for them. An array "
            "becomes a group of 0, 1, 2 ..., in xml of the elements <_x0030_>, <_x0031_> ...; a group of "
            "such "
            "names "
            "becomes an array of json, and an array of texts a list everywhere. Names that the format has no "
            "form "
            "for are written in codes, and the file says so: ini and txt in the line \"# @names encoded\", "
            "json "
            "in "
            "\"$names\", xml in <?vantry names=\"encoded\"?>. Converted back, such a file is what it was. "
            "What the format cannot hold is refused, and nothing is written."),
        {{{"FILE", Word::File}, {"FILE", Word::File}}},
        {toFormatOption, forceOption, dryRunOption},
        {"vantry convert app.ini app.json"},
        run};
}

Command exportTree()
{
    return {
        "export",
        QT_TRANSLATE_NOOP("CommandLine", "write a group as a file of its own"),
        QT_TRANSLATE_NOOP(
            "CommandLine",
            "OUT is written anew, in the format that its name says, within one format with its "
            "spelling, and with comments as far as the format has any; the paths in it are relative to PATH. "
            "\"\" is the path of the whole file."),
        {{{"FILE", Word::File}, {"PATH", Word::Path}, {"OUT", Word::File}}},
        {toFormatOption, forceOption, dryRunOption},
        {"vantry export app.ini server server.json"},
        run};
}

} // namespace CommandLine::Commands
