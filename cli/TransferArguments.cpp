#include "cli/TransferArguments.h"

namespace CommandLine {

TransferArguments TransferArguments::open(Session& session, const Invocation& invocation,
                                          Session::Opening fromOpening)
{
    const QStringList& words = invocation.arguments;
    const bool isWithinFile = words.size() == 3;
    TransferArguments arguments;
    // The one that is written first: should both be one file, it is opened once.
    arguments.to = isWithinFile ? session.open(words.at(0), Session::Opening::Edit)
                                : session.open(words.at(2), Session::Opening::Create, "--to-format");
    if (arguments.to)
        arguments.from = isWithinFile ? arguments.to : session.open(words.at(0), fromOpening);
    if (!arguments.ok())
        return arguments;
    arguments.fromPath = arguments.from->fullPath(words.at(1));
    arguments.toPath = arguments.to->fullPath(words.last());
    return arguments;
}

} // namespace CommandLine
