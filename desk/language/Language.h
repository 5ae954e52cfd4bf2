#pragma once

#include <QString>

namespace Vantry {

// The language of the window and of its plug-ins: the one chosen, or else the first that the system names and
// Vantry speaks. Numbers and dates follow the system, unless another language than its own was chosen. GUI
// thread.
class Language
{
public:
    // What was chosen, as "de"; empty: as the system. It holds from the next start on.
    static QString chosen();
    static void choose(const QString& language);

    // Comes before what was chosen, until the program ends; empty for none.
    static void useInThisRun(const QString& language);

    // Shows the language from now on, in widgets that are not made yet. Called again once plug-ins are
    // loaded, it shows their translations, too.
    static void show();
};

} // namespace Vantry
