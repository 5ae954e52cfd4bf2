#pragma once

#include <QString>
#include <QStringList>

namespace Vantry {

// Finds out in a process of its own whether plug-ins can be loaded, shown and ended: a damaged or faulty one
// can kill whoever does it, or hold it for ever. The child ends with this process. GUI thread.
class PluginTrial
{
public:
    // The program that is run, as a rule this program itself, and the milliseconds that it may take.
    explicit PluginTrial(QString program, int timeLimit = 10000);

    // Empty when the plug-in may be loaded, otherwise the reason. Waits for the child process. A plug-in that
    // has passed, one that did not end and one that is left out are not tried again until the file changes.
    QString run(const QString& file) const;

    // A plug-in that does not end well beside the others.
    struct Culprit
    {
        int number = -1; // among the files; -1 when there is none
        QString reason;
    };

    // Tries all of them together, as they will be in the desk, and remembers nothing.
    Culprit rehearse(const QStringList& files) const;

private:
    struct Outcome
    {
        Culprit culprit;
        bool isEndless = false;
    };

    Outcome runChild(const QString& option, const QStringList& files) const;

    QString program;
    int timeLimit;
};

} // namespace Vantry
