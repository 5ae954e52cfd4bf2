#include "desk/places/EditorCommand.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

using Vantry::EditorCommand;

// How editors are started at a place.
class EditorCommandTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        for (const char* const name : {"VISUAL", "EDITOR", "TERMINAL"})
            qunsetenv(name);
    }

    void startsAtThePlace_data()
    {
        const auto row = TestSupport::columns<QString, QString>("command", "started");
        row("as given", "ed --at {line},{column} \"{file}\" -x", "ed|--at|12,5|/a b/{line}.ini|-x");
        row("in one word", "\"my ed\" {file}:{line}", "my ed|/a b/{line}.ini:12");
        row("known", "/usr/bin/kate -n", "/usr/bin/kate|-n|--line|12|--column|5|/a b/{line}.ini");
        row("known, another form", "code", "code|--goto|/a b/{line}.ini:12:5");
        row("unknown", "ed -s", "ed|-s|/a b/{line}.ini");
        row("none", "  ", "");
    }

    void startsAtThePlace()
    {
        QFETCH(QString, command);
        QFETCH(QString, started);
        QCOMPARE(textOf(EditorCommand::of(command, place)), started);
    }

    void asksTheEnvironment_data()
    {
        const auto row = TestSupport::columns<QString, QString, QString, QString>("visual", "editor",
                                                                                  "terminal", "started");
        row("in the terminal", "", "nano", "", "x-terminal-emulator|-e|nano|+12,5|/a b/{line}.ini");
        row("in that of the person", "vim", "nano", "term -q", "term|-q|-e|vim|+12|/a b/{line}.ini");
        row("in a window", "gedit", "vi", "", "gedit|+12:5|/a b/{line}.ini");
        row("of both kinds", "emacs -nw", "", "", "x-terminal-emulator|-e|emacs|-nw|+12:5|/a b/{line}.ini");
        row("unknown", "", "ed", "", "x-terminal-emulator|-e|ed|/a b/{line}.ini");
        row("none", "", "", "term", "");
    }

    void asksTheEnvironment()
    {
        QFETCH(QString, visual);
        QFETCH(QString, editor);
        QFETCH(QString, terminal);
        QFETCH(QString, started);
        qputenv("VISUAL", visual.toUtf8());
        qputenv("EDITOR", editor.toUtf8());
        if (!terminal.isEmpty())
            qputenv("TERMINAL", terminal.toUtf8());
        QCOMPARE(textOf(EditorCommand::ofEnvironment(place)), started);
    }

private:
    static QString textOf(const std::optional<EditorCommand::Start>& start)
    {
        return start ? (QStringList(start->program) + start->arguments).join(QLatin1Char('|')) : QString();
    }

    const EditorCommand::FilePosition place{QStringLiteral("/a b/{line}.ini"), 12, 5};
};

VANTRY_TEST_MAIN(QCoreApplication, EditorCommandTest)

#include "editor_command_test.moc"
