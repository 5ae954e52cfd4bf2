#include "host/FrameworkCore/Values/PrintableText.h"
#include "host/FrameworkCore/Values/Utf8.h"
#include "tests/cli/TerminalRun.h"
#include "tests/support/Columns.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>

using FrameworkCore::Values::printableLine;
using FrameworkCore::Values::printableLines;

namespace {

// Control characters of both ranges, overrides and isolates of direction, separators, and a tag.
const QByteArray hostile = "a\x1B[2Jb\x07"
                           "c\x7F\x01\xC2\x9B"
                           "31m\xE2\x80\xAE"
                           "d\xE2\x81\xA6\xE2\x80\x8F\xE2\x80\xA8\xF3\xA0\x81\x81";
const QByteArray hostileName = "n\x1B]0;t\x07\xE2\x80\xAE\xC2\x9B";

// Where the first thing is that no terminal may get; -1 without one. Its driver ends lines with "\r\n".
int findUnprintable(QByteArray shown)
{
    shown.replace("\r\n", "\n");
    const std::string text = shown.toStdString();
    const std::string clean = printableLines(text);
    return clean == text ? -1
                         : int(std::mismatch(text.begin(), text.end(), clean.begin()).first - text.begin());
}

} // namespace

class TerminalTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> folder;

    QByteArray pathOf(const QByteArray& name) const { return QFile::encodeName(folder->path()) + '/' + name; }

    void write(const QByteArray& name, const QByteArray& bytes) const
    {
        TestSupport::writeFile(QFile::decodeName(pathOf(name)), bytes);
    }

private slots:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        QVERIFY(folder->isValid());
        const QByteArray file = hostileName + ".ini";
        write(file, "k = " + hostile + "\n; @type bytes\nbytes = \\xff\\x9b\x1B[2J\n\n[" + hostile + "]\n" +
                        hostile + " = 1\n");
        write("b.txt", "k = " + hostile + "\n");
        write(hostileName + ".json", "{\"a" + hostileName.mid(6) + "\": 1, \"b\": [1 \x1B[2J");
        write("good.json", "{\"a\": \"\xC2\x9B\xE2\x80\xAE\x7F\", \"b\xE2\x80\xAE\": 1}");
        write("in.json", "{\"in\": 1}");
    }

    void escapes_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray>("text", "line");
        row("plain", "a \\ \xC3\xA4 \xF0\x9F\x98\x80", "a \\ \xC3\xA4 \xF0\x9F\x98\x80");
        row("line break", "a\r\nb", "a\\x0d\\nb");
        row("tab", "\t", "\\x09");
        row("escape", "\x1B[2J\x7F", "\\x1b[2J\\x7f");
        row("second range", "\xC2\x80\xC2\x9B\xC2\x9F\xC2\xA0", "\\u0080\\u009b\\u009f\xC2\xA0");
        row("direction", "\xE2\x80\xAA\xE2\x80\xAE\xE2\x81\xA6\xE2\x81\xA9\xE2\x80\x8E\xD8\x9C",
            "\\u202a\\u202e\\u2066\\u2069\\u200e\\u061c");
        row("joiners of letters", "\xE2\x80\x8C\xE2\x80\x8D", "\xE2\x80\x8C\xE2\x80\x8D");
        row("separators", "\xE2\x80\xA8\xE2\x80\xA9", "\\u2028\\u2029");
        row("tags", "\xF3\xA0\x80\x81\xF3\xA0\x81\xBF", "\\U000e0001\\U000e007f");
        row("no UTF-8", "\xFF\x9B\xC3\xE2\x80", "\\xff\\x9b\\xc3\\xe2\\x80");
        row("half a pair", "\xED\xA0\x80", "\\xed\\xa0\\x80");
    }

    void escapes()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, line);
        QCOMPARE(QByteArray::fromStdString(printableLine(text.toStdString())), line);
        QCOMPARE(printableLines("a\t" + text.toStdString() + "\r\n"),
                 "a\t" + line.replace("\\x0d\\n", "\r\n").replace("\\x09", "\t").toStdString() + "\r\n");
    }

    void showsNothingThatSteersATerminal_data()
    {
        // shown: a part of it
        const auto row = TestSupport::columns<QByteArrayList, QByteArray>("arguments", "shown");
        for (const Case& each : cases())
            row(each.name, each.arguments, each.shown);
    }

    void showsNothingThatSteersATerminal()
    {
        QFETCH(QByteArrayList, arguments);
        QFETCH(QByteArray, shown);
        const QByteArray screen =
            TerminalRun(VANTRY_PROGRAM, arguments, QFile::encodeName(folder->path())).read();
        const int at = findUnprintable(screen);
        QVERIFY2(at < 0, screen.mid(at, 20).toHex(' ').constData());
        QVERIFY2(screen.contains(shown), screen.constData());
    }

    void watchesWithoutSteeringATerminal()
    {
        TerminalRun run(VANTRY_PROGRAM, {"watch", "b.txt"}, QFile::encodeName(folder->path()));
        QByteArray screen;
        for (int round = 0; round < 100 && !screen.contains("changed"); ++round) {
            write("b.txt", "k = x" + hostile + QByteArray::number(round) + "\nn" + hostile + " = 1\n");
            screen += run.read("changed k = ", 500);
        }
        screen += run.read("\n", 500);
        QVERIFY2(screen.contains("changed k = xa\\x1b"), screen.constData());
        QVERIFY2(findUnprintable(screen) < 0, screen.toHex(' ').constData());
    }

    // A command that is new needs its row above.
    void knowsAllCommands()
    {
        QSet<QByteArray> shown{"watch"};
        for (const Case& each : cases())
            shown.insert(each.arguments.first());
        const QByteArray commands = output({"help"});
        const int begin = commands.indexOf("Commands:\n") + 10;
        const auto lines = commands.mid(begin, commands.indexOf("\n\n", begin) - begin).split('\n');
        QVERIFY(lines.size() > 15);
        for (const QByteArray& line : lines) {
            const QByteArray name = line.mid(2).split(' ').first();
            QVERIFY2(name.isEmpty() || shown.contains(name), name.constData());
        }
    }

    // Programs that read it get values and diffs as they are; lines of lists are escaped all the same.
    void keepsDataForPrograms()
    {
        QCOMPARE(output({"get", "b.txt", "k"}), hostile + '\n');
        QVERIFY(output({"set", "b.txt", "k", "x", "--dry-run"}).contains("\n-k = " + hostile + '\n'));
        QVERIFY(output({"get", "good.json", "a", "--json"}).contains("\x7F\"\n"));
        QVERIFY(findUnprintable(output({"tree", "b.txt"})) < 0);
        QVERIFY(output({"tree", "b.txt"}).contains("\\u202e"));
        QVERIFY(findUnprintable(output({"find", hostileName + ".ini", "*"})) < 0);
    }

private:
    struct Case
    {
        const char* name;
        QByteArrayList arguments;
        QByteArray shown; // a part of it
    };

    static std::vector<Case> cases()
    {
        const QByteArray ini = hostileName + ".ini";
        const QByteArray broken = hostileName + ".json";
        const QByteArray escape = "\\x1b";
        return {
            {"get",
             {"get", ini, "k"},
             "a\\x1b[2Jb\\x07c\\x7f\\x01\\u009b31m\\u202ed\\u2066\\u200f\\u2028\\U000e0041"},
            {"get bytes", {"get", ini, "bytes"}, "\\xff\\x9b\\x1b"},
            {"get as json", {"get", "good.json", "a", "--json"}, "\\u009b\\u202e"},
            {"get a group as json", {"get", "good.json", "", "--json"}, "\\u009b\\u202e"},
            {"get nothing", {"get", ini, hostile}, escape},
            {"set", {"set", ini, "k.\x1B[2J", "x"}, escape},
            {"set as a dry run", {"set", "b.txt", "k", hostile + "x", "--dry-run"}, "+k = a\\x1b[2J"},
            {"set a wrong type", {"set", ini, "k", "\x1B[2J", "--type", "integer"}, escape},
            {"set to an unknown type", {"set", ini, "k", "1", "--type", "\x1B[2J"}, escape},
            {"create as a dry run", {"create", "b.txt", "z", hostile, "--dry-run"}, escape},
            {"create", {"create", ini, "a..\x1B[2J", "1"}, escape},
            {"rm", {"rm", ini, "\x1B[2J"}, escape},
            {"rm as a dry run", {"rm", ini, "k", "--dry-run"}, escape},
            {"mv", {"mv", ini, "\x1B[2J", "x"}, escape},
            {"cp", {"cp", ini, "k", "k"}, escape},
            {"append", {"append", ini, "\x1B[2J", "x"}, escape},
            {"insert", {"insert", ini, "k", "0", "x"}, "vantry: "},
            {"set a pattern", {"set", "b.txt", "\x1B*", "x"}, escape},
            {"ls", {"ls", ini}, "%1B"},
            {"ls as json", {"ls", ini, "--json"}, "\"value\": "},
            {"list", {"list", "b.txt"}, "k = $'a\\x1b"},
            {"list with NUL", {"list", "b.txt", "-0"}, "\\x00"},
            {"tree", {"tree", ini}, "k = a\\x1b[2J"},
            {"find", {"find", ini, "*"}, "%E2%80%AE"},
            {"find nothing", {"find", "\x1B[2J", "*"}, escape},
            {"replace in nothing", {"replace", "\x1B[2J", "x", "y"}, escape},
            {"locate", {"locate", ini, "k"}, escape},
            {"locate a line", {"locate", "\x1B[2J:1"}, escape},
            {"diff", {"diff", ini, "b.txt"}, "- bytes = "},
            {"convert as a dry run", {"convert", ini, "x\x1B[2J.json", "--dry-run"}, escape},
            {"convert over a file", {"convert", "b.txt", ini}, escape},
            {"export", {"export", "good.json", "\x1B[2J", "x.xml"}, escape},
            {"import", {"import", "good.json", "", broken}, escape},
            {"validate", {"validate", ini, "--rule", "k=integer"}, escape},
            {"validate by an unknown rule", {"validate", ini, "--rule", "k=\x1B[2J"}, escape},
            {"roundtrip", {"roundtrip", ini, broken, "missing\x1B[2J"}, escape},
            {"complete", {"complete", "--", "get", ini, ""}, "%1B"},
            {"complete a backend", {"complete", "--", "--backend", "\x1B[2J=a.ini", "get", ""}, escape},
            {"completion", {"completion", "\x1B[2J"}, escape},
            {"help", {"help", "\x1B[2J"}, escape},
            {"unknown command", {"\x1B[2J"}, escape},
            {"unknown option", {"get", "--\x1B[2J"}, escape},
            {"backend", {"--backend", "\x1B[2J", "get", "a", "b"}, escape},
            {"format", {"--format", "\x1B[2J", "get", "a", "b"}, escape},
        };
    }

    QByteArray output(const QByteArrayList& arguments) const
    {
        QStringList words;
        for (const QByteArray& argument : arguments)
            words.append(QString::fromUtf8(argument));
        QProcess program;
        program.setWorkingDirectory(folder->path());
        program.start(QStringLiteral(VANTRY_PROGRAM), words);
        return program.waitForFinished() ? program.readAllStandardOutput() : QByteArray();
    }
};

VANTRY_TEST_MAIN(QCoreApplication, TerminalTest)

#include "terminal_test.moc"
