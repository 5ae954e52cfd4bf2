#pragma once

#include "cli/Texts.h"

#include <QString>

#include <string>

namespace CommandLine {

// What "-" stands for where a command reads a file. It is read once, whoever asks for it, as far as the size
// of a file may go.
struct StandardInput
{
    static const StandardInput& read();

    static bool isMeant(const QString& file) { return file == QLatin1String("-"); }
    static QString name() { return Texts::tr("standard input"); } // in messages

    static QString explainUnknown()
    {
        return Texts::tr("how it begins does not tell its format; give it with --format");
    }

    QString error; // empty on success
    std::string bytes;
    QString format; // a backend type, by how it begins; empty when that does not tell
};

} // namespace CommandLine
