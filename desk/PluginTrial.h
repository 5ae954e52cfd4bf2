#pragma once

#include <QString>

namespace Vantry {

// Finds out whether a plug-in can be loaded at all, in a process of its own: a damaged library can kill
// whoever loads it. A plug-in that has passed is known by its path, size, time and digest, and is not tried
// again.
class PluginTrial
{
public:
    // The program that is run with --try-plugin FILE; as a rule this program itself.
    explicit PluginTrial(QString program);

    // Empty when the plug-in may be loaded, otherwise the reason. Waits for the child process, 10 s at most.
    QString run(const QString& file) const;

    // The child's side: loads the plug-in, says on standard output what is wrong, and gives the exit code.
    static int runAsChild(const QString& file);

private:
    QString program;
};

} // namespace Vantry
