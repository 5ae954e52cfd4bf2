#include "host/Shared/Logging/LogRecord.h"
#include "tests/support/RepositoryTest.h"

#include <QDate>
#include <QFile>

#include <functional>

using namespace FrameworkCore::AppConfig;
using TestSupport::text;

class RefusalsTest;
using Operation = std::function<bool(RefusalsTest&)>;
Q_DECLARE_METATYPE(Operation)

// What the log says of everything that is refused: which path, which value, why, and what to do about it.
class RefusalsTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    bool addValidation(const char* path, const char* name)
    {
        return validations()->addValidation(text(path), text(name)) != 0;
    }

    bool undoOfWhatHasChangedSince()
    {
        {
            const auto step = history()->beginStep(text("Set the port"));
            write("rw.port", 81);
        }
        write("rw.port", 82); // by nobody whose steps are recorded
        return history()->undo() == Success;
    }

private slots:
    void init()
    {
        RepositoryTest::init();
        const QByteArray ini = "port=80\nhost=pump\n";
        QVERIFY(mount("ini", "rw", ini, AccessMode::ReadWrite));
        QVERIFY(mount("ini", "ro", ini, AccessMode::ReadOnly));
        QVERIFY(mount("ini", "wo", ini, AccessMode::WriteOnly));
        QVERIFY(create("memory.fixed", 1, 1));
        QVERIFY(create("memory.secret", 1, 2));
        QVERIFY(create("memory.natural", QVariant(7ULL << 62)));
        QVERIFY(create("memory.day", QDate(2024, 2, 29)));
        for (const char* path : {"rw.port", "memory.secret", "memory.new", "wo.port"})
            QVERIFY(addValidation(path, "range(1,1023)"));
    }

    void tellsPathValueAndReason_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QString>("line"); // ~ stands for the folder
        const auto row = [](const char* name, const char* line, const Operation& operation) {
            QTest::newRow(name) << operation << text(line);
        };
        const auto writeRow = [&row](const char* name, const char* path, const QVariant& value,
                                     const char* line) {
            row(name, line, [path, value](RefusalsTest& test) { return test.write(path, value).ok(); });
        };
        const auto createRow = [&row](const char* name, const char* path, const QVariant& value, int access,
                                      const char* line) {
            row(name, line,
                [path, value, access](RefusalsTest& test) { return test.create(path, value, access).ok(); });
        };
        const auto removeRow = [&row](const char* name, const char* path, const char* line) {
            row(name, line, [path](RefusalsTest& test) { return test.remove(path).ok(); });
        };

        writeRow("type", "rw.port", 80.5,
                 "'rw.port' was not set to '80.5' (a number): it holds a whole number, which this cannot "
                 "become without loss");
        writeRow("out of range", "memory.natural", -1,
                 "'memory.natural' was not set to '-1' (a whole number): it holds a whole number from 0 to "
                 "18446744073709551615, which this cannot become without loss");
        const auto retypeRow = [&row](const char* name, const char* path, const QVariant& value,
                                      const char* line) {
            row(name, line, [path, value](RefusalsTest& test) {
                return test.repository->getWriterInterface()->retype(text(path), value).ok();
            });
        };
        retypeRow("no tag", "rw.host", QDate(2024, 2, 29),
                  "'rw.host' was not set to '2024-02-29' (a date): no mark above the entry says that it is a "
                  "date; remove it and create it as a date");
        retypeRow(
            "text like a number", "rw.host", text("5"),
            "'rw.host' was not set to '5' (a text): an ini file would read \"5\" back as a whole number, "
            "not as a text; remove it and create it as a text");
        retypeRow(
            "validation of the new type", "rw.port", text("http"),
            "'rw.port' was not set to 'http' (a text): the validation 'range(1,1023)' asks for a number "
            "from 1 to 1023");
        retypeRow(
            "another type in a file that is read-only", "ro.port", text("http"),
            "'ro.port' was not set to 'http' (a text): ~/ro: it is open as read-only; open it for writing "
            "to change it");
        writeRow("no date", "memory.day", text("29.2.2024"),
                 "'memory.day' was not set to '29.2.2024' (a text): it holds a date as in 2024-12-31, which "
                 "this cannot become without loss");
        writeRow("list", "rw.port", QStringList{text("a;"), text("b")},
                 "'rw.port' was not set to 'a\\;;b' (a list of texts): it holds a whole number, which this "
                 "cannot become without loss");
        writeRow("long and of many lines", "rw.port", QString(70, QLatin1Char('x')) + text("\n\tend of it"),
                 "'rw.port' was not set to "
                 "'xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...xxxx\\n\\tend of it' "
                 "(a text, 81 characters long): it holds a whole number, which this cannot become without "
                 "loss");
        writeRow("rule", "rw.port", 1024,
                 "'rw.port' was not set to '1024' (a whole number): the validation 'range(1,1023)' asks for "
                 "a number from 1 to 1023");
        writeRow("rule of what is write-only", "memory.secret", 4711,
                 "'memory.secret' was not set: the validation 'range(1,1023)' asks for a number from 1 to "
                 "1023");
        writeRow("type of what is write-only", "wo.port", text("swordfish"),
                 "'wo.port' was not set: it holds a whole number, which this cannot become without loss");
        writeRow("unknown", "rw.none", true,
                 "'rw.none' was not set to 'true' (true or false): no such attribute; create it "
                 "first");
        writeRow("unknown in what is write-only", "wo.none", 4711,
                 "'wo.none' was not set: no such attribute; create it first");
        writeRow("no path", "rw..port", 1,
                 "'rw..port' was not set to '1' (a whole number): a path is names joined by '.', none of "
                 "them empty and none with '*' in it");
        writeRow("read-only backend", "ro.port", 1,
                 "'ro.port' was not set to '1' (a whole number): ~/ro: it is open as read-only; open it "
                 "for writing to change it");
        writeRow("read-only attribute", "memory.fixed", 2,
                 "'memory.fixed' was not set to '2' (a whole number): created as read-only");
        writeRow("the repository's own", "internal.repository.path_separator", text("/"),
                 "'internal.repository.path_separator' was not set to '/' (a text): it belongs to the "
                 "repository itself, which alone changes it");
        writeRow(
            "no form in the file", "rw.host", text("a\nb"),
            "'rw.host' was not set to 'a\\nb' (a text): a value of this ini file ends with its line; the "
            "text has line breaks; remove it and create it as a text");
        writeRow("no form in a file that is write-only", "wo.host", text("sword\nfish"),
                 "'wo.host' was not set: its file has no form for the value at this place");

        createRow("exists", "rw.port", 5, 3,
                  "'rw.port' was not set to '5' (a whole number): it exists already; write to it, or choose "
                  "another name");
        createRow("empty path", "", 5, 3,
                  "'' was not set to '5' (a whole number): a path is names joined by '.', none of them empty "
                  "and none with '*' in it");
        createRow("access", "a.b", 5, 0,
                  "'a.b' was not set: 0 is not an access mode; 1 is read-only, 2 write-only, 3 read-write");
        createRow("no type", "a.b", QVariantMap(), 3,
                  "'a.b' was not set to a value of the type QVariantMap: an attribute holds true or false, a "
                  "number, a text, a list of texts, bytes, a date or a time, and nothing else");
        createRow("own tree", "internal.mine", QVariant(), 3,
                  "'internal.mine' was not set to nothing: it belongs to the repository itself, which alone "
                  "changes it");
        createRow("new in a read-only backend", "ro.s.new", 5, 3,
                  "'ro.s.new' was not set to '5' (a whole number): ~/ro: it is open as read-only; open it "
                  "for writing to change it");
        createRow("rule of a new one", "memory.new", 0, 3,
                  "'memory.new' was not set to '0' (a whole number): the validation 'range(1,1023)' asks for "
                  "a number from 1 to 1023");
        createRow(
            "rule of a new one that is write-only", "memory.new", 0, 2,
            "'memory.new' was not set: the validation 'range(1,1023)' asks for a number from 1 to 1023");

        removeRow("remove nothing", "rw.none", "'rw.none' was left as it is: no such attribute");
        removeRow("remove a root", "rw",
                  "'rw' was left as it is: it holds the root of the backend; close that backend "
                  "instead");
        removeRow("remove what is read-only", "ro.port",
                  "'ro.port' was left as it is: ~/ro: it is open as read-only; open it for writing to "
                  "change it");
        removeRow("remove a group with one that is read-only", "memory",
                  "'memory' was left as it is: created as read-only: 'memory.fixed'");

        row("import",
            "'rw.port' was not set to '2000' (a whole number): the validation 'range(1,1023)' asks "
            "for a number from 1 to 1023",
            [](RefusalsTest& test) {
                return test.import("rw", "json", "{\"host\": \"x\", \"port\": 2000}").ok();
            });
        row("import into what is write-only",
            "'wo.port' was not set: the validation 'range(1,1023)' asks for a number from 1 to 1023",
            [](RefusalsTest& test) { return test.import("wo", "json", "{\"port\": 2000}").ok(); });
        row("close with edits",
            "The backend 'rw' was not closed: it has edits that are not saved; save or discard them first",
            [](RefusalsTest& test) { return test.write("rw.port", 81) && test.close("rw"); });
        row("unknown validation",
            "'rw.port' was not given the validation 'range(9,1)': range needs a lower and an upper bound, as "
            "in range(0,100)",
            [](RefusalsTest& test) { return test.addValidation("rw.port", "range(9,1)"); });
        row("undo",
            "'Set the port' was not undone: it has been changed since: 'rw.port' is '82' (a whole number) "
            "now, and the step left it '81' (a whole number); put that back first",
            &RefusalsTest::undoOfWhatHasChangedSince);
    }

    void tellsPathValueAndReason()
    {
        QFETCH(Operation, operation);
        QFETCH(QString, line);
        auto& record = Shared::Logging::LogRecord::instance();
        const auto earlier = record.getLines();
        QVERIFY(!operation(*this));
        const auto lines = record.getLines(earlier.isEmpty() ? 0 : earlier.last().number);
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines.first().text, line.replace(QLatin1Char('~'), folder->path()));
        QCOMPARE(lines.first().category, text("Repository"));
        QCOMPARE(lines.first().type, Shared::Logging::LogMessageType::Failure);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, RefusalsTest)

#include "refusals_test.moc"
