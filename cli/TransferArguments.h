#pragma once

#include "cli/Session.h"

namespace CommandLine {

// What "cp" and "mv" are told: FILE PATH PATH within a file, or FILE PATH FILE PATH.
struct TransferArguments
{
    const Source* from = nullptr; // null on failure, whose exit code the session has
    const Source* to = nullptr;
    QString fromPath; // full paths
    QString toPath;

    static TransferArguments open(Session& session, const Invocation& invocation,
                                  Session::Opening fromOpening);
    bool ok() const { return from && to; }
};

} // namespace CommandLine
