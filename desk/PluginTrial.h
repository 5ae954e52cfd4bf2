#pragma once

#include <QString>

namespace Vantry {

// Finds out whether a plug-in can be loaded at all, in a process of its own: a damaged library can kill
// whoever loads it, or hold it for ever. A plug-in that has passed, and one that did not end, is known by its
// path, size, time and digest, and is not tried again.
class PluginTrial
{
public:
    // The program that is run with --try-plugin FILE, as a rule this program itself, and the milliseconds
    // that it may take.
    explicit PluginTrial(QString program, int timeLimit = 10000);

    // Empty when the plug-in may be loaded, otherwise the reason. Waits for the child process.
    QString run(const QString& file) const;

    // The child's side: loads the plug-in, says on standard output how it went, and gives the exit code.
    static int runAsChild(const QString& file);

private:
    QString program;
    int timeLimit;
};

} // namespace Vantry
