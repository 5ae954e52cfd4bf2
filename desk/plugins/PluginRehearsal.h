#pragma once

#include <QLatin1String>
#include <QStringList>

namespace Vantry {

// The child's side of a trial: does with plug-ins all that the desk does, from their loading to their end, in
// a window that nobody sees. Each line on standard output says what it is about to do with which plug-in, so
// that the parent knows what the child died of.
class PluginRehearsal
{
public:
    // What the lines begin with. "doing" is followed by the plug-in's number, a blank and a verb.
    static inline const QLatin1String doing{"doing "};
    static inline const QLatin1String refused{"refused: "};
    static inline const QLatin1String passed{"passed"};

    // Gives the exit code. Needs a QApplication.
    static int run(const QStringList& files);
};

} // namespace Vantry
