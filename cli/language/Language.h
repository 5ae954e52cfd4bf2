#pragma once

#include <QString>

namespace CommandLine {

// The language of help and messages. From one thread, before others start.
class Language
{
public:
    // The one chosen, as "de", or when that is empty, the first that the system names and the program speaks.
    // Numbers are written as without it. False for one that it does not speak.
    static bool show(const QString& chosen);

    // For what programs read.
    static void showEnglish() { show(QStringLiteral("en")); }
};

} // namespace CommandLine
