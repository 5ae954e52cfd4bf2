#include "desk/places/EditorCommand.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QSettings>
#include <QUrl>

#include <algorithm>
#include <array>

namespace Vantry {

namespace {

const QLatin1String commandKey("editor/command");

// How an editor takes a place, and whether it is one of terminals.
struct Editor
{
    QLatin1String names; // of its programs
    QLatin1String arguments;
    bool needsTerminal = false;
};

const std::array<Editor, 12> editors{{
    {QLatin1String("vi vim nvim view joe ne"), QLatin1String("+{line} {file}"), true},
    {QLatin1String("nano rnano pico"), QLatin1String("+{line},{column} {file}"), true},
    {QLatin1String("kak"), QLatin1String("+{line}:{column} {file}"), true},
    {QLatin1String("micro"), QLatin1String("{file} +{line}:{column}"), true},
    {QLatin1String("hx helix"), QLatin1String("{file}:{line}:{column}"), true},
    {QLatin1String("mcedit"), QLatin1String("{file}:{line}"), true},
    {QLatin1String("emacs emacsclient gedit gnome-text-editor"), QLatin1String("+{line}:{column} {file}")},
    {QLatin1String("gvim xed pluma featherpad"), QLatin1String("+{line} {file}")},
    {QLatin1String("kate kwrite geany"), QLatin1String("--line {line} --column {column} {file}")},
    {QLatin1String("mousepad"), QLatin1String("--line={line} --column={column} {file}")},
    {QLatin1String("code codium code-insiders"), QLatin1String("--goto {file}:{line}:{column}")},
    {QLatin1String("subl"), QLatin1String("{file}:{line}:{column}")},
}};

const Editor* knownEditor(const QString& program)
{
    const QString name = QFileInfo(program).fileName();
    const auto found = std::find_if(editors.begin(), editors.end(), [&name](const Editor& editor) {
        return QString(editor.names).split(QLatin1Char(' ')).contains(name);
    });
    return found == editors.end() ? nullptr : &*found;
}

// The words of the command with the place in them.
QStringList filled(QStringList words, const EditorCommand::FilePosition& place)
{
    for (QString& word : words) {
        word.replace(QLatin1String("{line}"), QString::number(place.line));
        word.replace(QLatin1String("{column}"), QString::number(place.column));
        word.replace(QLatin1String("{file}"), place.file); // last, as it may hold any text
    }
    return words;
}

std::optional<EditorCommand::Start> startOf(QStringList words)
{
    if (words.isEmpty())
        return {};
    const QString program = words.takeFirst();
    return EditorCommand::Start{program, words};
}

} // namespace

std::optional<EditorCommand::Start> EditorCommand::of(const QString& command, const FilePosition& place)
{
    QStringList words = QProcess::splitCommand(command);
    if (words.isEmpty())
        return {};
    if (!command.contains(QLatin1String("{file}"))) {
        const Editor* const editor = knownEditor(words.first());
        words += (editor ? QString(editor->arguments) : QStringLiteral("{file}")).split(QLatin1Char(' '));
    }
    return startOf(filled(words, place));
}

std::optional<EditorCommand::Start> EditorCommand::ofEnvironment(const FilePosition& place)
{
    QString command = qEnvironmentVariable("VISUAL");
    if (command.isEmpty())
        command = qEnvironmentVariable("EDITOR");
    const auto start = of(command, place);
    if (!start)
        return {};
    const Editor* const editor = knownEditor(start->program);
    const bool isInTerminal = editor
                                  ? editor->needsTerminal || start->arguments.contains(QLatin1String("-nw"))
                                  : true; // as those of the environment mostly are
    if (!isInTerminal)
        return start;
    const QString terminal = qEnvironmentVariable("TERMINAL", QStringLiteral("x-terminal-emulator"));
    return startOf(QProcess::splitCommand(terminal) + QStringList{QStringLiteral("-e"), start->program} +
                   start->arguments);
}

QString EditorCommand::chosen()
{
    return QSettings().value(commandKey).toString();
}

void EditorCommand::choose(const QString& command)
{
    QSettings().setValue(commandKey, command.trimmed());
}

QString EditorCommand::open(const FilePosition& place)
{
    auto start = of(chosen(), place);
    if (!start)
        start = ofEnvironment(place);
    if (start)
        return QProcess::startDetached(start->program, start->arguments)
                   ? QString()
                   : QCoreApplication::translate("Vantry::EditorCommand",
                                                 "%1 was not opened: '%2' cannot be started; Edit > Editor "
                                                 "chooses another one")
                         .arg(place.toText(), start->program);
    return QDesktopServices::openUrl(QUrl::fromLocalFile(place.file))
               ? QString()
               : QCoreApplication::translate("Vantry::EditorCommand",
                                             "%1 was not opened: the desktop has no program for it; Edit > "
                                             "Editor chooses one")
                     .arg(place.toText());
}

} // namespace Vantry
