#pragma once

#include "cli/Session.h"

#include <string>

namespace CommandLine {

// A file that a command writes as a whole: one that is yet to come, or one that is to be replaced.
class OutputFile
{
public:
    // Its format is told by the option, or by its name. On failure getFailure of the session is not asked:
    // what is wrong is told, and `failure` is its exit code.
    static OutputFile prepare(const Invocation& invocation, const QString& given,
                              std::string_view formatOption);

    bool ok() const { return failure == ExitCode::Done; }
    ExitCode getFailure() const { return failure; }
    const QString& getFormat() const { return format; }

    // Writes it whole or not at all, or with --dry-run prints the diff. A new file with something private in
    // it is for the user alone.
    ExitCode write(const std::string& text, bool isPrivate, bool isDryRun);

private:
    QString given;
    QString format;
    std::string path;
    bool replaces = false;
    ExitCode failure = ExitCode::Done;
};

} // namespace CommandLine
