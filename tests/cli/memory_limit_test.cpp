#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

using TestSupport::contentOf;

namespace {

// The program with so much address space; all there is for none.
class BoundedProgram : public QProcess
{
public:
    explicit BoundedProgram(rlim_t addressSpace) : bytes(addressSpace) {}

protected:
    void setupChildProcess() override
    {
        const rlimit limit{bytes, bytes};
        if (bytes > 0 && ::setrlimit(RLIMIT_AS, &limit) != 0)
            ::_exit(127);
        const rlimit noCore{0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
    }

private:
    const rlim_t bytes;
};

struct End
{
    bool isExit = false; // and no signal
    int code = 0;
    QByteArray output;
    QByteArray messages;
};

constexpr rlim_t mebibyte = 1 << 20;

} // namespace

// Memory that the system refuses is an error of the command, and the files are as they were.
class MemoryLimitTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> folder;
    rlim_t least = 0; // with which the program does small things

    QString path(const QString& name) const { return folder->filePath(name); }

    End run(const QStringList& arguments, rlim_t addressSpace) const
    {
        BoundedProgram program(addressSpace);
        program.setWorkingDirectory(folder->path());
        program.start(QStringLiteral(VANTRY_PROGRAM), arguments);
        if (!program.waitForFinished(120'000))
            return {};
        return {program.exitStatus() == QProcess::NormalExit, program.exitCode(),
                program.readAllStandardOutput(), program.readAllStandardError()};
    }

    // How a type writes a file, its groups and its entries.
    struct Form
    {
        const char* begin;
        const char* groupBegin;
        const char* entry;
        const char* between; // entries, and groups
        const char* groupEnd;
        const char* end;
    };

    static Form formOf(const QString& type)
    {
        if (type == QLatin1String("xml"))
            return {"<r>\n", "<%g>", "<%k>%v</%k>\n", "", "</%g>\n", "</r>\n"};
        if (type == QLatin1String("json"))
            return {"{\n", "\"%g\": {", "\"%k\": \"%v\"", ",\n", "}", "}\n"};
        if (type == QLatin1String("ini"))
            return {"", "[%g]\n", "%k = %v\n", "", "", ""};
        return {"", "", "%g.%k = %v\n", "", "", ""};
    }

    // Of thousands of entries, groups and long texts.
    static QByteArray large(const QString& type)
    {
        const Form form = formOf(type);
        QByteArray text = form.begin;
        for (int group = 0; group < 400; ++group) {
            text += group > 0 ? form.between : "";
            text += form.groupBegin;
            for (int entry = 0; entry < 40; ++entry) {
                const QByteArray value = entry % 8 == 0 ? QByteArray(300, 'x') : QByteArray::number(entry);
                text += entry > 0 ? form.between : "";
                text += QByteArray(form.entry)
                            .replace("%k", "key" + QByteArray::number(entry))
                            .replace("%v", value);
            }
            text += form.groupEnd;
            text.replace("%g", "g" + QByteArray::number(group));
        }
        return text + form.end;
    }

    static QList<QStringList> commandsFor(const QString& type)
    {
        const QString file = QStringLiteral("large.") + type;
        const QString root = type == QLatin1String("xml") ? QStringLiteral("r.") : QString();
        const auto words = [](const QString& line) { return line.split(QLatin1Char(' ')); };
        QList<QStringList> commands{
            words(QStringLiteral("get %1 %2g7.key8").arg(file, root)),
            words(QStringLiteral("get %1 %2g7 --json").arg(file, root)),
            words(QStringLiteral("ls %1").arg(file)),
            words(QStringLiteral("tree %1").arg(file)),
            words(QStringLiteral("find %1 *key3").arg(file)),
            words(QStringLiteral("find %1 * --value x*").arg(file)),
            words(QStringLiteral("diff %1 other.%2").arg(file, type)),
            words(QStringLiteral("validate %1 --rule *key9=regular-expression((a|b|[0-9])*)").arg(file)),
            words(QStringLiteral("roundtrip %1").arg(file)),
            words(QStringLiteral("set %1 %2g7.key1 5").arg(file, root)),
            words(QStringLiteral("set %1 %2g7.key1 5 --dry-run").arg(file, root)),
            words(QStringLiteral("create %1 %2new.key 5").arg(file, root)),
            words(QStringLiteral("rm %1 %2g7").arg(file, root)),
            words(QStringLiteral("mv %1 %2g7 %2g7b").arg(file, root)),
            words(QStringLiteral("cp %1 %2g7 %2g7b").arg(file, root)),
            words(QStringLiteral("export %1 %2g7 out.json --force").arg(file, root)),
            words(QStringLiteral("import %1 %2imported large.json").arg(file, root)),
            words(QStringLiteral("complete -- get %1 %2g").arg(file, root)),
        };
        for (const char* other : {"ini", "json", "xml", "txt"})
            commands.append(
                words(QStringLiteral("convert %1 out.%2 --force").arg(file, QLatin1String(other))));
        return commands;
    }

    QMap<QString, QByteArray> files() const
    {
        QMap<QString, QByteArray> contents;
        const auto names = QDir(folder->path()).entryList(QDir::Files | QDir::Hidden);
        for (const QString& name : names)
            contents.insert(name, contentOf(path(name)));
        return contents;
    }

    void restore(const QMap<QString, QByteArray>& contents) const
    {
        const auto now = files();
        for (const QString& name : now.keys()) {
            if (!contents.contains(name))
                QFile::remove(path(name));
        }
        for (auto file = contents.begin(); file != contents.end(); ++file) {
            if (now.value(file.key()) != file.value())
                TestSupport::writeFile(path(file.key()), file.value());
        }
    }

private slots:
    void initTestCase()
    {
        folder = std::make_unique<QTemporaryDir>();
        QVERIFY(folder->isValid());
        TestSupport::writeFile(path(QStringLiteral("small.ini")), "k = 1\n");
        for (const char* each : {"ini", "json", "xml", "txt"}) {
            const QString type = QLatin1String(each);
            TestSupport::writeFile(path(QStringLiteral("large.") + type), large(type));
            TestSupport::writeFile(path(QStringLiteral("other.") + type), large(type).replace("xxx", "yyy"));
        }
        const QStringList smallThing{QStringLiteral("get"), QStringLiteral("small.ini"), QStringLiteral("k")};
        for (least = 16 * mebibyte; run(smallThing, least).code != 0; least += mebibyte / 2)
            QVERIFY(least < 2048 * mebibyte);
    }

    void endsWithAMessage_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QStringList>("arguments");
        for (const char* type : {"ini", "json", "xml", "txt"}) {
            for (const QStringList& arguments : commandsFor(QLatin1String(type)))
                QTest::addRow("%s", qPrintable(arguments.join(QLatin1Char(' '))))
                    << QString::fromLatin1(type) << arguments;
        }
    }

    void endsWithAMessage()
    {
        QFETCH(QStringList, arguments);
        const auto before = files();
        const End wanted = run(arguments, 0);
        const auto after = files();
        restore(before);
        QVERIFY2(wanted.isExit && wanted.code <= 1, wanted.messages.constData());
        const bool isCompletion = arguments.first() == QLatin1String("complete"); // which fails for nobody
        bool isRefused = false;
        int enough = 0; // limits; a third would only be larger
        for (const rlim_t more : {0, 1, 2, 3, 5, 8, 13, 21, 34, 55, 144}) {
            const End end = run(arguments, least + more * mebibyte);
            const auto now = files();
            restore(before);
            const QByteArray context = arguments.join(QLatin1Char(' ')).toUtf8() + " with " +
                                       QByteArray::number(qulonglong(more)) + " MiB more ended with " +
                                       QByteArray::number(end.code) + ": " + end.messages.left(500);
            QVERIFY2(end.isExit, context.constData());
            if (end.code == wanted.code && end.messages.isEmpty()) {
                QVERIFY2(end.output == wanted.output, context.constData());
                QVERIFY2(now == after, context.constData());
                if (++enough == 2)
                    break;
                continue;
            }
            isRefused = true;
            QVERIFY2(isCompletion || (end.code >= 2 && end.code <= 4), context.constData());
            QVERIFY2(end.messages.startsWith("vantry: ") || end.output.contains(": refused: "),
                     context.constData());
            QVERIFY2(now == before, context.constData());
        }
        QVERIFY2(isRefused || isCompletion, "no limit was low enough to be met");
    }

    // What cannot be read for a while is reported, and what comes afterwards is seen.
    void watchesOn()
    {
        BoundedProgram program(least + 24 * mebibyte);
        program.setWorkingDirectory(folder->path());
        program.setProcessChannelMode(QProcess::MergedChannels);
        const QString file = path(QStringLiteral("watched.json"));
        TestSupport::writeFile(file, "{\"k\": 1}");
        program.start(QStringLiteral(VANTRY_PROGRAM),
                      {QStringLiteral("watch"), QStringLiteral("watched.json")});
        QByteArray told;
        const auto has = [&](const char* text) {
            told += program.readAll();
            return told.contains(text);
        };
        int round = 1;
        const auto isSeen = [&] {
            TestSupport::writeFile(file, "{\"k\": " + QByteArray::number(++round) + "}");
            return has("changed k = ");
        };
        QTRY_VERIFY_WITH_TIMEOUT(isSeen(), 20'000);
        TestSupport::writeFile(file, "[" + QByteArray(8 << 20, ' ').replace("  ", "1,") + "1]");
        QTRY_VERIFY_WITH_TIMEOUT(has("not enough memory"), 20'000);
        told.clear();
        QTRY_VERIFY_WITH_TIMEOUT(isSeen(), 20'000);
        ::kill(pid_t(program.processId()), SIGTERM);
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
    }

    // A thread needs address space for its stack.
    void tellsThatNoThreadWatches()
    {
        const End end = run({QStringLiteral("watch"), QStringLiteral("small.ini")}, least);
        QVERIFY(end.isExit);
        QCOMPARE(end.code, 4);
        QVERIFY2(end.messages.startsWith("vantry: small.ini: it cannot be watched: "),
                 end.messages.constData());
    }
};

VANTRY_TEST_MAIN(QCoreApplication, MemoryLimitTest)

#include "memory_limit_test.moc"
