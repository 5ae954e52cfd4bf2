#include "cli/OutputFile.h"

#include "cli/Messages.h"
#include "cli/Output.h"
#include "files/FileSaver.h"
#include "files/SizeLimit.h"
#include "repository/backends/FileFormat.h"
#include "repository/merge/UnifiedDiff.h"

#include <QDir>
#include <QFileInfo>

namespace CommandLine {

OutputFile OutputFile::prepare(const Invocation& invocation, const QString& given,
                               std::string_view formatOption)
{
    OutputFile file;
    file.given = given;
    file.format = invocation.valueOf(formatOption);
    if (file.format.isEmpty())
        file.format = Repository::FileFormat::ofName(given);
    file.path = QDir::current().absoluteFilePath(given).toStdString();
    file.replaces = QFileInfo::exists(given);
    if (given.isEmpty())
        file.failure = Session::fail(ExitCode::Usage, QStringLiteral("the name of a file is empty"));
    else if (file.format.isEmpty())
        file.failure = Session::fail(ExitCode::Usage,
                                     QStringLiteral("%1: its name does not tell its format; give it with %2")
                                         .arg(given, QString::fromStdString(std::string(formatOption))));
    else if (file.replaces && !invocation.has("--force"))
        file.failure = Session::fail(ExitCode::Refused,
                                     QStringLiteral("%1: it exists already; --force replaces it").arg(given));
    return file;
}

ExitCode OutputFile::write(const std::string& text, bool isPrivate, bool isDryRun)
{
    if (text.size() > Files::SizeLimit::get())
        return Session::fail(
            ExitCode::BadFile,
            QStringLiteral("%1: %2").arg(given, QString::fromStdString(Files::SizeLimit::refusal())));
    const QString mistaking = Repository::FileFormat::explainMistaking(given, format, {}, text);
    if (!mistaking.isEmpty())
        return Session::fail(ExitCode::Refused, QStringLiteral("%1: %2").arg(given, mistaking));
    const Files::FileSaver saver;
    Files::ReadFileResult present;
    if (replaces) {
        present = saver.read(path);
        if (!present.ok())
            return Session::fail(ExitCode::BadFile,
                                 QStringLiteral("%1: %2").arg(given, QString::fromStdString(present.reason)));
    }
    if (isDryRun) {
        Output::bytes(Repository::unifiedDiff(present.bytes, text, given.toStdString()));
        return ExitCode::Done;
    }
    const Files::SaveFileResult saved = saver.save(path, text, present.stamp, {}, isPrivate ? 0600 : 0666);
    if (!saved.ok())
        return Session::fail(
            ExitCode::BadFile,
            QStringLiteral("%1 is not saved: %2").arg(given, QString::fromStdString(saved.reason)));
    if (!saved.warning.empty())
        Messages::tell(QStringLiteral("%1: %2").arg(given, QString::fromStdString(saved.warning)));
    return ExitCode::Done;
}

} // namespace CommandLine
