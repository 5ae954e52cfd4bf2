#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <QDate>
#include <QDir>
#include <QFile>

#include <sys/stat.h>

using namespace FrameworkCore::AppConfig;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;
using TestSupport::contentOf;

namespace {

const QByteArray benchJson = R"({
  // a comment
  "name": "bench 3",
  "supplies": [ {"limit": 12}, {"limit": 24} ],
  "tags": ["a", "b"],
  "nothing": {},
})";

const QByteArray ovenIni = "; oven\n[oven]\nhot = true\nlimit=250 \n\n[oven.zone1]\nname = left\n";

} // namespace

class BackendsTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

private slots:
    // U+FEFF is a byte-order mark at the start of a file only, as where two files were put together.
    void keepsByteOrderMarksWithinNames_data()
    {
        const auto row = TestSupport::columns<QString, QByteArray>("type", "bytes");
        row("ini", "ini", "k = 1\n\xEF\xBB\xBFk = 2\n");
        row("json", "json", "{\"k\": 1, \"\xEF\xBB\xBFk\": 2}\n");
        row("txt", "txt", "k = 1\n\xEF\xBB\xBFk = 2\n");
    }

    void keepsByteOrderMarksWithinNames()
    {
        QFETCH(QString, type);
        QFETCH(QByteArray, bytes);
        QVERIFY(mount(type, "m", bytes));
        const QString marked = QStringLiteral("m.") + QChar(QChar::ByteOrderMark) + QLatin1Char('k');
        QCOMPARE(paths("m.*"), QStringList({QStringLiteral("m.k"), marked}));
        QCOMPARE(write(marked, 3), Success);
        QCOMPARE(changes()->getUnsavedChanges(QStringLiteral("m")).value(0).path, marked);
        QCOMPARE(saved(), bytes.replace('2', '3'));
    }

    // Each of the paths would hold the long name.
    void refusesPathsThatTakeManyTimesTheFile_data()
    {
        const auto row = TestSupport::columns<QString, QByteArray>("type", "text");
        const QByteArray name(100'000, 'n');
        constexpr int depth = 900;
        row("json", "json",
            "{\"" + name + "\":" + QByteArray("{\"a\":").repeated(depth) + "1" + QByteArray(depth + 1, '}'));
        row("xml", "xml",
            "<" + name + ">" + QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth) + "</" +
                name + ">");
        row("txt", "txt", name + QByteArray(".a").repeated(depth) + " = 1\n");
        row("ini", "ini", '[' + name + QByteArray(".a").repeated(depth) + "]\n");
    }

    void refusesPathsThatTakeManyTimesTheFile()
    {
        QFETCH(QString, type);
        QFETCH(QByteArray, text);
        const QString failure = mount(type, "deep", text).toText();
        QVERIFY2(failure.contains(QLatin1String("memory")), qPrintable(failure));
        QVERIFY(!exists("deep"));
        // What is open takes in nothing of the kind either.
        const QByteArray small = type == QLatin1String("json")  ? "{\"k\":1}"
                                 : type == QLatin1String("xml") ? "<k/>"
                                                                : "k=1\n";
        QVERIFY(mount(type, "deep", small));
        put("deep", text);
        QVERIFY(!reload("deep"));
        QVERIFY(exists("deep.k"));
        QVERIFY(close("deep", true));
    }

    void showsFiles()
    {
        QVERIFY(mount("json", "lab.bench", benchJson));
        QVERIFY(mount("ini", ".oven.", ovenIni));
        QCOMPARE(paths("lab*"),
                 TestSupport::words("lab lab.bench lab.bench.name lab.bench.supplies lab.bench.tags "
                                    "lab.bench.nothing lab.bench.supplies.0 lab.bench.supplies.1 "
                                    "lab.bench.supplies.0.limit lab.bench.supplies.1.limit"));
        QCOMPARE(read("lab.bench.supplies.1.limit"), QVariant(24LL));
        QCOMPARE(read("lab.bench.tags"), QVariant(TestSupport::words("a b")));
        QCOMPARE(read("oven.oven.hot"), QVariant(true));
        QCOMPARE(read("oven.oven.zone1.name"), QVariant(QStringLiteral("left")));
        QCOMPARE(read("internal.backends.names"), QVariant(QStringLiteral("lab.bench;oven")));
        QCOMPARE(read("internal.backends.names.lab.bench"), QVariant(QStringLiteral("lab.bench")));
        const auto information = backends()->getBackendInformation(QStringLiteral("oven"));
        QCOMPARE(information->getBackendType(), QStringLiteral("ini"));
        QCOMPARE(information->getBackendDescription(), QStringLiteral("for tests"));
        QVERIFY(tree()->getNodeInformation(QStringLiteral("oven")).isBackendRoot);
    }

    void savesOnlyWhatWasEdited_data()
    {
        const auto row = TestSupport::columns<QString, QByteArray, QString, QVariant, QByteArray, QByteArray>(
            "type", "before", "path", "value", "from", "to");
        row("json number", "json", benchJson, "m.supplies.1.limit", QVariant(48), "24", "48");
        row("json text", "json", benchJson, "m.name", QVariant(QStringLiteral("a \"b\"")), "bench 3",
            "a \\\"b\\\"");
        row("ini bool", "ini", ovenIni, "m.oven.hot", QVariant(false), "true", "false");
        row("ini number", "ini", ovenIni, "m.oven.limit", QVariant(300), "250", "300");
    }

    void savesOnlyWhatWasEdited()
    {
        QFETCH(QString, type);
        QFETCH(QByteArray, before);
        QFETCH(QString, path);
        QFETCH(QVariant, value);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        const QString file = put("f", before);
        struct stat stamp = {};
        struct stat untouched = {};
        ::stat(QFile::encodeName(file), &stamp);
        QVERIFY(mountFile(type, "m", file));
        QVERIFY(save("m"));
        ::stat(QFile::encodeName(file), &untouched);
        QCOMPARE(untouched.st_ino, stamp.st_ino);
        QCOMPARE(untouched.st_mtim.tv_nsec, stamp.st_mtim.tv_nsec);
        QVERIFY(write(path, value));
        QVERIFY(save("m"));
        QCOMPARE(contentOf(file), QByteArray(before).replace(from, to));
        QVERIFY(save("m"));
    }

    // Which is found when the file is opened, or given.
    void keepsTheDialect_data()
    {
        const auto row = TestSupport::columns<QString, QString>("file", "type");
        row("by its name", ".gitconfig", "ini");
        row("by hand", "a.conf", "ini:git");
    }

    void keepsTheDialect()
    {
        QFETCH(QString, file);
        QFETCH(QString, type);
        put(file, "[a]\n\tb = 1 ;c\n");
        QVERIFY(mountFile(type, "m", fileOf(file)));
        QCOMPARE(backends()->getBackendInformation(QStringLiteral("m"))->getBackendType(),
                 QStringLiteral("ini:git"));
        history()->recordThisThread();
        QVERIFY(create("m.a.d", QStringLiteral("x;y")));
        put(file, "[a]\n\tb = 2 ;c\n\te\n");
        QVERIFY(save());
        QCOMPARE(read("m.a.b"), QVariant(2LL));
        QCOMPARE(read("m.a.e"), QVariant(true));
        QVERIFY(contentOf(fileOf(file)).contains("\td = \"x;y\"\n"));
        QVERIFY(write("m.a.d", QStringLiteral("z # z")));
        QVERIFY(history()->undo());
        QCOMPARE(read("m.a.d"), QVariant(QStringLiteral("x;y")));
        put(file, "[a]\n\tb = \"3;\" ;c\n");
        QVERIFY(mountFile(type, "m", fileOf(file), AccessMode::ReadWrite, 3)); // reloads it
        QCOMPARE(read("m.a.b"), QVariant(QStringLiteral("3;")));
        QVERIFY(!mountFile("ini:systemd", "m", fileOf(file), AccessMode::ReadWrite, 3));
    }

    void createsFileAtFirstSave()
    {
        const QString file = fileOf("new.json");
        QVERIFY(mountFile("json", "n", file));
        QVERIFY(create("n.a.b", 5));
        QVERIFY(!QFile::exists(file));
        QVERIFY(save("n"));
        restart();
        QVERIFY(mountFile("json", "n", file));
        QCOMPARE(read("n.a.b"), QVariant(5LL));
    }

    void refusesAFileThatIsOpenByAnotherPath()
    {
        const QString one = put("one.json", benchJson);
        const QString two = put("two.json", benchJson);
        const QString link = fileOf("link.json");
        const auto opens = [&](const char* name, const QString& file) {
            return mountFile("json", QString::fromLatin1(name), file);
        };
        QVERIFY(QFile::link(one, link));
        QVERIFY(opens("a", link));
        QVERIFY(!opens("b", one));
        QVERIFY(QFile::remove(link) && QFile::link(two, link)); // it leads elsewhere by now
        QVERIFY(!opens("b", two));
        QVERIFY(opens("b", one));
        QVERIFY(!opens("c", one));
        for (const char* name : {"a", "b"})
            QVERIFY(close(QString::fromLatin1(name), true));
        QVERIFY(opens("c", two) && opens("d", one));
    }

    void refusesAFileToComeThatIsOpenByAnotherPath_data()
    {
        const auto row = TestSupport::columns<QString>("other");
        row("dot", "./new.json");
        row("folder above", "folder/../new.json");
        row("link to the folder", "to-folder/new.json");
        row("link to the file", "link.json");
        row("link to the link", "to-link.json");
    }

    void refusesAFileToComeThatIsOpenByAnotherPath()
    {
        const QString file = fileOf("new.json");
        QFETCH(QString, other);
        other = fileOf("") + QLatin1Char('/') + other;
        QVERIFY(QDir(fileOf("")).mkpath(QStringLiteral("folder")));
        QVERIFY(QFile::link(fileOf(""), fileOf("to-folder")));
        QVERIFY(QFile::link(QStringLiteral("new.json"), fileOf("link.json")));
        QVERIFY(QFile::link(fileOf("link.json"), fileOf("to-link.json")));
        for (const auto& [first, second] : {std::pair(file, other), std::pair(other, file)}) {
            QVERIFY(mountFile("json", "a", first));
            const QString reason = mountFile("json", "b", second).toText();
            QVERIFY2(reason.contains(QLatin1String("already open as 'a'")), qPrintable(reason));
            QVERIFY(close("a", true));
        }
    }

    void refusesWithReason_data()
    {
        const auto row = TestSupport::columns<QString, QString, QString, int, QString>("type", "name", "file",
                                                                                       "access", "reason");
        row("type", "yml", "x", "good.ini", 3, "unknown backend type 'yml'; valid types: ini, json");
        row("type of more than a file", "dir", "x", "good.ini", 3, "yaml, folder, etcd");
        row("dialect", "ini:got", "x", "good.ini", 3, "valid types: ini:git");
        row("empty name", "ini", "..", "good.ini", 3, "a backend's name is");
        row("semicolon", "ini", "a;b", "good.ini", 3, "a backend's name is");
        row("internal", "ini", "internal.x", "good.ini", 3, "belongs to the repository");
        row("access", "ini", "x", "good.ini", 0, "access mode");
        row("name in use", "ini", "taken", "good.ini", 3, "exists already");
        row("occupied", "ini", "memory", "good.ini", 3, "already");
        row("above others", "ini", "deep", "good.ini", 3, "already");
        row("file in use", "json", "x", "taken", 3, "already open as 'taken'");
        row("missing, read-only", "ini", "x", "missing.ini", 1, "missing.ini");
        row("a folder", "ini", "x", ".", 3, "");
        row("broken", "json", "x", "broken.json", 3, "broken.json:2:");
    }

    void refusesWithReason()
    {
        put("good.ini", ovenIni);
        put("broken.json", "{\n  \"a\" 5\n}\n");
        QVERIFY(mount("json", "taken", benchJson));
        create("memory", 1);
        create("deep.a", 1);
        QFETCH(QString, type);
        QFETCH(QString, name);
        QFETCH(QString, file);
        QFETCH(int, access);
        QFETCH(QString, reason);
        const QStringList before = paths("*");
        const Outcome outcome = mountFile(type, name, fileOf(file), AccessMode(access));
        QVERIFY(!outcome);
        QVERIFY2(outcome.toText().contains(reason), qPrintable(outcome.toText()));
        QCOMPARE(paths("*"), before);
    }

    void keepsAccessModes()
    {
        const QString file = put("r.ini", ovenIni);
        QVERIFY(mountFile("ini", "r", file, AccessMode::ReadOnly));
        QCOMPARE(write("r.oven.limit", 1), NotWritable);
        QVERIFY(!create("r.oven.new", 1));
        QCOMPARE(remove("r.oven"), NotWritable);
        QVERIFY(mount("ini", "w", ovenIni, AccessMode::WriteOnly));
        QVERIFY(!read("w.oven.limit").isValid());
        QCOMPARE(write("w.oven.limit", 300), Success);
        QCOMPARE(saved("w"), QByteArray(ovenIni).replace("250", "300"));
    }

    void treeEqualsWhatReloadingGives()
    {
        const QString file = put("t.json", benchJson);
        QVERIFY(mountFile("json", "t", file));
        QStringList removed;
        listen("t*",
               [&removed](const QString& path, const UpdatePoint&, const UpdateResult& result, auto&&...) {
                   if (result == UpdateResult::Removed)
                       removed.append(path);
               });
        QVERIFY(create("t.supplies.2.limit", 48));
        QCOMPARE(remove("t.supplies.0"), Success);
        QCOMPARE(read("t.supplies.0.limit"), QVariant(24LL));
        QCOMPARE(read("t.supplies.1.limit"), QVariant(48LL));
        QVERIFY(removed.contains(QStringLiteral("t.supplies.2.limit")));
        QCOMPARE(remove("t.name"), Success);
        QVERIFY(create("t.nothing.deeper.x", true));
        QVERIFY(create("t.when", QDate(2024, 5, 31)));
        QCOMPARE(remove("t"), NotWritable);

        QVERIFY(save("t"));
        QStringList before = paths("t*");
        restart();
        QVERIFY(mountFile("json", "t", file));
        QStringList after = paths("t*");
        before.sort();
        after.sort();
        QCOMPARE(after, before);
    }

    void nestedMountsOwnTheirPaths()
    {
        const QString outer = put("outer.json", benchJson);
        QVERIFY(mountFile("json", "m", outer));
        QVERIFY(mount("ini", "m.in.side", ovenIni));
        QCOMPARE(remove("m.in"), NotWritable);
        QVERIFY(create("m.in.side.oven.new", 1));
        QVERIFY(save("m"));
        QCOMPARE(contentOf(outer), benchJson);
        QVERIFY(mountFile("json", "m", outer, AccessMode::ReadWrite, 3));
        QCOMPARE(read("m.in.side.oven.limit"), QVariant(250LL));
    }

    // A file that comes back to sections it has left, with names beyond ASCII.
    void mountsReachWhoWaited()
    {
        QStringList heard;
        const auto hear = [&heard](const QString& path, const UpdatePoint&, const UpdateResult& result,
                                   const QVariant& value, const QString& backend) {
            QCOMPARE(result, UpdateResult::Created);
            heard.append(path + QLatin1Char('=') + value.toString() + QLatin1Char('@') + backend);
        };
        listen("w.a.b.late", hear);
        listen("w.*\u00e9*", hear);
        validations()->addValidation(QStringLiteral("w.a.first"), QStringLiteral("range(0,9)"));
        QVERIFY(mount("ini", "w",
                      "top=0\n[a]\nfirst=1\n[c]\ncaf\xC3\xA9=2\n[a.b]\nlate=3\n"
                      "[a]\nsecond=4\n[ab]\nx=5\n[a.b]\nlate=6\n"));
        QCOMPARE(heard, QStringList({QStringLiteral("w.c.caf\u00e9=2@w"), QStringLiteral("w.a.b.late=3@w")}));
        QVERIFY(!write("w.a.first", 10));
        const QStringList all = paths("w*");
        QCOMPARE(all.size(), 14);
        for (const QString& path : all)
            QVERIFY(path == QLatin1String("w") || tree()
                                                      ->getChildNames(path.section(QLatin1Char('.'), 0, -2))
                                                      .contains(path.section(QLatin1Char('.'), -1)));
        QCOMPARE(read("w.a[2].second"), QVariant(4LL));
        QCOMPARE(read("w.a.b[2].late"), QVariant(6LL));
    }

    void reloadsFromOutside()
    {
        const QString file = put("o.ini", ovenIni);
        QVERIFY(mountFile("ini", "o", file));
        QStringList heard;
        listen("o*",
               [&heard](const QString& path, const UpdatePoint&, const UpdateResult& result, auto&&...) {
                   heard.append(QStringLiteral("%1 %2").arg(path).arg(int(result)));
               });
        put("o.ini", QByteArray(ovenIni).replace("250", "260").replace("name", "title"));
        QVERIFY(mountFile("ini", "o", file, AccessMode::ReadWrite, 3));
        heard.sort();
        QCOMPARE(heard, QStringList({QStringLiteral("o.oven.limit 4"), QStringLiteral("o.oven.zone1.name 3"),
                                     QStringLiteral("o.oven.zone1.title 2")}));
        QVERIFY(!mountFile("ini", "o", file, AccessMode::ReadOnly, 3));
        QVERIFY(!mountFile("ini", "o", file));
    }

    // Every real file either loads, and then a save leaves it alone, or is refused with its place and the
    // reason.
    void servesRealFiles()
    {
        int refused = 0;
        Repository::RepositoryOptions unwatched;
        unwatched.watchesFiles = false;
        for (const char* type : {"json", "ini"}) {
            const QString corpus = TestSupport::corporaPath(QLatin1String(type));
            const QStringList names = corpus.isEmpty() ? QStringList() : QDir(corpus).entryList(QDir::Files);
            for (const QString& name : names) {
                const QString file = fileOf("copy");
                QFile::remove(file);
                QVERIFY(QFile::copy(corpus + QLatin1Char('/') + name, file));
                restart(unwatched);
                const Outcome outcome = mountFile(type, "real", file);
                if (!outcome) {
                    ++refused;
                    static const QRegularExpression place(QStringLiteral("copy:\\d+:\\d+: \\S"));
                    QVERIFY2(outcome.toText().contains(place), qPrintable(name + outcome.toText()));
                    continue;
                }
                QVERIFY(save("real"));
                QCOMPARE(contentOf(file), contentOf(corpus + QLatin1Char('/') + name));
            }
        }
        qInfo("%d real files refused", refused);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, BackendsTest)

#include "backends_test.moc"
