#pragma once

#include "host/FrameworkCore/AppConfig/FilePosition.h"

#include <QStringList>

#include <optional>

namespace Vantry {

// How the editor of a person opens a file at a place. Any thread.
class EditorCommand
{
public:
    using FilePosition = FrameworkCore::AppConfig::FilePosition;

    struct Start
    {
        QString program;
        QStringList arguments;
    };

    // A program and its arguments, in double quotes where there are blanks in them; {file}, {line} and
    // {column} stand for the place. Without {file} the editor is given the place as it is known to take it,
    // or else the file alone. Nothing for no command.
    static std::optional<Start> of(const QString& command, const FilePosition& place);

    // The same with the environment's VISUAL or else EDITOR, in a terminal where the editor needs one;
    // nothing when they name none.
    static std::optional<Start> ofEnvironment(const FilePosition& place);

    // The command that the person has chosen; empty for that of the environment or the desktop.
    static QString chosen();
    static void choose(const QString& command);

    // Opens it with the chosen editor, that of the environment, or what the desktop has for the file. Gives
    // why not, or nothing.
    static QString open(const FilePosition& place);
};

} // namespace Vantry
