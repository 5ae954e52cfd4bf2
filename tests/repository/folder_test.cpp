#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <QDir>
#include <QFile>

#include <mutex>

using namespace FrameworkCore::AppConfig;
using TestSupport::writeFile;

// A folder is mounted as its files, and what comes into it and goes is followed.
class FolderTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    std::mutex mutex;
    QMap<QString, QString> problems; // reasons by file; guarded by mutex

    QString in(const char* name) { return fileOf(QLatin1String("d/") + QLatin1String(name)); }

    void add(const char* name, const QByteArray& bytes)
    {
        const QString file = in(name);
        QVERIFY(QDir().mkpath(QFileInfo(file).path()));
        writeFile(file, bytes);
    }

    QString problem(const char* name)
    {
        const std::lock_guard lock(mutex);
        return problems.value(in(name));
    }

    Outcome open(AccessMode access = AccessMode::ReadWrite)
    {
        return mountFile("folder", "m", fileOf("d"), access);
    }

private slots:
    void init()
    {
        RepositoryTest::init();
        Repository::RepositoryOptions options;
        options.observer = [this](const Outcome& outcome) {
            const std::lock_guard lock(mutex);
            if (outcome.ok())
                problems.remove(outcome.get().file);
            else
                problems[outcome.get().file] = outcome.place(QString()) + outcome.explain();
        };
        restart(options);
        problems.clear();
        QVERIFY(QDir(folder->path()).mkpath(QStringLiteral("d")));
        add("a.json", "{\"k\": 1}");
        add("conf.d/b.ini", "[s]\nk = 2\n");
        add("conf.d/c", "# words\nof a text\n");
        add("conf.d/grant.policy", "// words\ngrant {\n};\n");
        add("conf.d/image.ini", QByteArray("k=\0\1", 4));
        add("broken.json", "{\n  \"k\": 1,,\n}");
    }

    void mountsWhatItKnows()
    {
        QVERIFY(QFile::link(fileOf("d/a.json"), fileOf("d/z.json")));
        QVERIFY(QFile::link(QStringLiteral("."), fileOf("d/loop")));
        QVERIFY(QFile::link(QStringLiteral("/"), fileOf("d/all")));
        const Outcome opened = open();
        QVERIFY2(opened.ok(), qPrintable(opened.toText()));
        QVERIFY(opened.get().warnings.join(QString()).contains(QLatin1String("1 of its")));
        QCOMPARE(backends()->getBackendNames(),
                 QStringList({QStringLiteral("m"), QStringLiteral("m.a%2Ejson"),
                              QStringLiteral("m.conf%2Ed.b%2Eini")}));
        QCOMPARE(read("internal.backends.names"),
                 QVariant(backends()->getBackendNames().join(QLatin1Char(';'))));
        QCOMPARE(paths("m*.k"),
                 QStringList({QStringLiteral("m.a%2Ejson.k"), QStringLiteral("m.conf%2Ed.b%2Eini.s.k")}));
        QVERIFY(problem("broken.json").contains(QLatin1String("2:10")));
        QCOMPARE(problems.size(), 1);
    }

    void mountsWhatIsWanted_data()
    {
        const auto row = TestSupport::columns<QByteArray, QByteArray>("conditions", "mounted");
        row("kinds", "?include=*.json&include=*.ini", "a%2Ejson conf%2Ed.b%2Eini");
        row("all but", "?exclude=*.json", "conf%2Ed.b%2Eini");
        row("a folder", "?exclude=conf.d", "a%2Ejson");
        row("a path", "?exclude=conf.d/[b-c]*", "a%2Ejson");
        row("the upper ones", "?depth=0", "a%2Ejson");
        row("small ones", "?size=9", "a%2Ejson");
        row("all by their size", "?size=1k&depth=0", "a%2Ejson");
        row("encoded", "?include=%61.json", "a%2Ejson");
        row("nothing", "?include=b", "");
    }

    // By how they begin, however large they are. What is of no format is nobody's problem, wherever else it
    // is open.
    void tellsWhatItKnows()
    {
        add("large.ini", "[s]\n" + QByteArray("; words\n").repeated(4096) + "k = 3\n");
        add("large", "# words\n" + QByteArray("of a text\n").repeated(4096));
        QVERIFY(mountFile("txt", "words", fileOf("d/conf.d/c")).ok());
        QVERIFY(mountFile("json", "own", fileOf("d/a.json")).ok());
        QVERIFY(open().ok());
        QCOMPARE(read("m.large%2Eini.s.k"), QVariant(3));
        QCOMPARE(paths("m*.k"), QStringList({QStringLiteral("m.large%2Eini.s.k"),
                                             QStringLiteral("m.conf%2Ed.b%2Eini.s.k")}));
        QVERIFY2(problem("a.json").contains(QLatin1String("already open as 'own'")),
                 qPrintable(problem("a.json")));
        QCOMPARE(problems.size(), 2);
    }

    void mountsWhatIsWanted()
    {
        QFETCH(QByteArray, conditions);
        QFETCH(QByteArray, mounted);
        const QString location = fileOf("d") + QString::fromLatin1(conditions);
        const Outcome opened = mountFile("folder", "m", location, AccessMode::ReadWrite);
        QVERIFY2(opened.ok(), qPrintable(opened.toText()));
        QStringList names{QStringLiteral("m")};
        for (const QByteArray& name : mounted.split(' ')) {
            if (!name.isEmpty())
                names.append(QLatin1String("m.") + QString::fromLatin1(name));
        }
        QCOMPARE(backends()->getBackendNames(), names);
    }

    void savesAllOfItsFiles()
    {
        QVERIFY(open());
        QVERIFY(write("m.a%2Ejson.k", 5).ok() && write("m.conf%2Ed.b%2Eini.s.k", 6).ok());
        QVERIFY(!close("m"));
        QString diff;
        QVERIFY(changes()->getUnsavedDiff(QStringLiteral("m"), diff));
        QVERIFY(diff.contains(QLatin1String("+{\"k\": 5}")) && diff.contains(QLatin1String("+k = 6")));
        QVERIFY(save("m"));
        QCOMPARE(TestSupport::contentOf(in("a.json")), QByteArray("{\"k\": 5}"));
        QCOMPARE(TestSupport::contentOf(in("conf.d/b.ini")), QByteArray("[s]\nk = 6\n"));
        QVERIFY(close("m"));
        QCOMPARE(backends()->getBackendNames(), QStringList());
        QCOMPARE(read("internal.backends.names"), QVariant());
        QVERIFY(!exists("m"));
    }

    void refuses()
    {
        QCOMPARE(mountFile("folder", "m", fileOf("none")), NotFound);
        QCOMPARE(mountFile("folder", "m", in("a.json")), NotFound);
        QCOMPARE(mountFile("folder", "m", fileOf("d?only=x")), InvalidPath);
        for (const char* conditions :
             {"d?depth=no", "d?size=", "d?size=K", "d?size=1T", "d?size=99999999999G"})
            QCOMPARE(mountFile("folder", "m", fileOf(conditions)), InvalidPath);
        QVERIFY(open(AccessMode::ReadOnly));
        QVERIFY(!write("m.a%2Ejson.k", 5));
        QVERIFY(close("m"));
        QVERIFY(open());
        const Outcome created = create("m.new", 1);
        QVERIFY2(created.explain().contains(QLatin1String("no entries but those of its files")),
                 qPrintable(created.toText()));
        QVERIFY(create("m.conf%2Ed.b%2Eini.s.new", 1));
        QCOMPARE(mountFile("json", "other", in("a.json")), AlreadyExists);
    }

    void followsWhatComesAndGoes()
    {
        QVERIFY(open());
        add("new/x/y.json", "{\"k\": 3}");
        add("fixed.json", "{\"k\": 4}");
        QVERIFY(::rename(QFile::encodeName(in("fixed.json")), QFile::encodeName(in("broken.json"))) == 0);
        QVERIFY(QFile::remove(in("a.json")));
        QTRY_VERIFY_WITH_TIMEOUT(exists("m.new.x.y%2Ejson.k"), 10000);
        QTRY_COMPARE_WITH_TIMEOUT(read("m.broken%2Ejson.k"), QVariant(4LL), 10000);
        QTRY_VERIFY_WITH_TIMEOUT(!exists("m.a%2Ejson"), 10000);
        QTRY_VERIFY(problem("broken.json").isEmpty());
        // What is edited stays.
        QVERIFY(write("m.new.x.y%2Ejson.k", 7).ok());
        QVERIFY(QFile::remove(in("new/x/y.json")));
        add("later.json", "{}");
        QTRY_VERIFY_WITH_TIMEOUT(exists("m.later%2Ejson"), 10000);
        QCOMPARE(read("m.new.x.y%2Ejson.k"), QVariant(7LL));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, FolderTest)

#include "folder_test.moc"
