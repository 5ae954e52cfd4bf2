#pragma once

#include <QString>

namespace Vantry {

// What is remembered of a plug-in from one start to the next, until its file is another: its size, time and
// content count. GUI thread.
class PluginMemory
{
public:
    enum class Verdict {
        None,
        Passed,  // its trial went well
        Endless, // its trial did not end
        LeftOut, // the desk died in it
    };

    static Verdict getVerdict(const QString& file);
    static void setVerdict(const QString& file, Verdict verdict);
};

} // namespace Vantry
