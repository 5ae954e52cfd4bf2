#include "host/Shared/Logging/LogRecord.h"
#include "repository/AttributeRepository.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

using namespace FrameworkCore::AppConfig;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;
using Repository::AttributeRepository;
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

QStringList failuresSince(quint64 number)
{
    QStringList texts;
    for (const auto& line : Shared::Logging::LogRecord::instance().getLines(number))
        texts.append(line.text);
    return texts;
}

quint64 lastLogNumber()
{
    const auto lines = Shared::Logging::LogRecord::instance().getLines();
    return lines.isEmpty() ? 0 : lines.last().number;
}

} // namespace

class BackendsTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<AttributeRepository> repository;
    std::unique_ptr<QTemporaryDir> folder;

    QString put(const QString& name, const QByteArray& bytes) const
    {
        return TestSupport::writeFile(folder->filePath(name), bytes);
    }

    bool mount(const QString& type, const QString& name, const QString& file,
               AccessMode access = AccessMode::ReadWrite, int option = 2)
    {
        return repository->getBackendInterface()->createBackend(
            type, name, {file, QStringLiteral("for tests"), access}, option);
    }

    bool save(const QString& name) { return repository->getBackendInterface()->saveBackend(name); }

    QVariant read(const QString& path)
    {
        QVariant value;
        repository->getReaderInterface()->readAttributeValue(path, value, 0);
        return value;
    }

    int write(const QString& path, const QVariant& value)
    {
        return repository->getWriterInterface()->writeAttributeValue(path, value, 15);
    }

    QStringList paths(const QString& pattern) { return repository->getTreeInterface()->findPaths({pattern}); }

private slots:
    void init()
    {
        repository = AttributeRepository::create();
        folder = std::make_unique<QTemporaryDir>();
    }

    // U+FEFF is a mark of the encoding at the start of a file only, as where two files were put together.
    void keepsMarksWithinNames_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("ini") << QStringLiteral("ini") << QByteArray("k = 1\n\xEF\xBB\xBFk = 2\n");
        QTest::newRow("json") << QStringLiteral("json") << QByteArray("{\"k\": 1, \"\xEF\xBB\xBFk\": 2}\n");
        QTest::newRow("txt") << QStringLiteral("txt") << QByteArray("k = 1\n\xEF\xBB\xBFk = 2\n");
    }

    void keepsMarksWithinNames()
    {
        QFETCH(QString, type);
        QFETCH(QByteArray, bytes);
        const QString file = put(QStringLiteral("marked"), bytes);
        QVERIFY(mount(type, QStringLiteral("m"), file));
        const QString marked = QStringLiteral("m.") + QChar(QChar::ByteOrderMark) + QLatin1Char('k');
        QCOMPARE(paths(QStringLiteral("m.*")), QStringList({QStringLiteral("m.k"), marked}));
        QCOMPARE(write(marked, 3), int(Success));
        QCOMPARE(repository->getChangesInterface()->getUnsavedChanges(QStringLiteral("m")).value(0).path,
                 marked);
        QVERIFY(save(QStringLiteral("m")));
        QCOMPARE(contentOf(file), bytes.replace('2', '3'));
    }

    // Each of the paths would hold the long name.
    void refusesPathsThatTakeManyTimesTheFile_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QByteArray>("text");
        const QByteArray name(100'000, 'n');
        constexpr int depth = 900;
        QTest::newRow("json") << "json"
                              << "{\"" + name + "\":" + QByteArray("{\"a\":").repeated(depth) + "1" +
                                     QByteArray(depth + 1, '}');
        QTest::newRow("xml") << "xml"
                             << "<" + name + ">" + QByteArray("<a>").repeated(depth) +
                                    QByteArray("</a>").repeated(depth) + "</" + name + ">";
        QTest::newRow("txt") << "txt" << name + QByteArray(".a").repeated(depth) + " = 1\n";
        QTest::newRow("ini") << "ini" << '[' + name + QByteArray(".a").repeated(depth) + "]\n";
    }

    void refusesPathsThatTakeManyTimesTheFile()
    {
        QFETCH(QString, type);
        QFETCH(QByteArray, text);
        const QString file = put(QStringLiteral("a.") + type, text);
        const quint64 before = lastLogNumber();
        QVERIFY(!mount(type, QStringLiteral("deep"), file));
        const QString failure = failuresSince(before).join(QLatin1Char('\n'));
        QVERIFY2(failure.contains(QLatin1String("memory")), qPrintable(failure));
        QVERIFY(!repository->getTreeInterface()->getNodeInformation(QStringLiteral("deep")).exists);
        // What is open takes in nothing of the kind either.
        const QByteArray small = type == QLatin1String("json")  ? "{\"k\":1}"
                                 : type == QLatin1String("xml") ? "<k/>"
                                                                : "k=1\n";
        put(QStringLiteral("a.") + type, small);
        QVERIFY(mount(type, QStringLiteral("deep"), file));
        put(QStringLiteral("a.") + type, text);
        QVERIFY(!repository->getBackendInterface()->reloadBackend(QStringLiteral("deep")));
        QVERIFY(repository->getTreeInterface()->getNodeInformation(QStringLiteral("deep.k")).exists);
        QVERIFY(repository->getBackendInterface()->closeBackend(QStringLiteral("deep"), true));
    }

    void showsFiles()
    {
        QVERIFY(mount(QStringLiteral("json"), QStringLiteral("lab.bench"),
                      put(QStringLiteral("a.json"), benchJson)));
        QVERIFY(
            mount(QStringLiteral("ini"), QStringLiteral(".oven."), put(QStringLiteral("b.ini"), ovenIni)));
        QCOMPARE(
            paths(QStringLiteral("lab*")),
            QStringList({QStringLiteral("lab"), QStringLiteral("lab.bench"), QStringLiteral("lab.bench.name"),
                         QStringLiteral("lab.bench.supplies"), QStringLiteral("lab.bench.tags"),
                         QStringLiteral("lab.bench.nothing"), QStringLiteral("lab.bench.supplies.0"),
                         QStringLiteral("lab.bench.supplies.1"), QStringLiteral("lab.bench.supplies.0.limit"),
                         QStringLiteral("lab.bench.supplies.1.limit")}));
        QCOMPARE(read(QStringLiteral("lab.bench.supplies.1.limit")), QVariant(24LL));
        QCOMPARE(read(QStringLiteral("lab.bench.tags")),
                 QVariant(QStringList({QStringLiteral("a"), QStringLiteral("b")})));
        QCOMPARE(read(QStringLiteral("oven.oven.hot")), QVariant(true));
        QCOMPARE(read(QStringLiteral("oven.oven.zone1.name")), QVariant(QStringLiteral("left")));
        QCOMPARE(read(QStringLiteral("internal.backends.names")), QVariant(QStringLiteral("lab.bench;oven")));
        QCOMPARE(read(QStringLiteral("internal.backends.names.lab.bench")),
                 QVariant(QStringLiteral("lab.bench")));
        const auto information =
            repository->getBackendInterface()->getBackendInformation(QStringLiteral("oven"));
        QCOMPARE(information->getBackendType(), QStringLiteral("ini"));
        QCOMPARE(information->getBackendDescription(), QStringLiteral("for tests"));
        QVERIFY(repository->getTreeInterface()->getNodeInformation(QStringLiteral("oven")).isBackendRoot);
    }

    void savesOnlyWhatWasEdited_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QByteArray>("from");
        QTest::addColumn<QByteArray>("to");
        QTest::newRow("json number") << "json" << benchJson << "m.supplies.1.limit" << QVariant(48)
                                     << QByteArray("24") << QByteArray("48");
        QTest::newRow("json text") << "json" << benchJson << "m.name" << QVariant(QStringLiteral("a \"b\""))
                                   << QByteArray("bench 3") << QByteArray("a \\\"b\\\"");
        QTest::newRow("ini bool") << "ini" << ovenIni << "m.oven.hot" << QVariant(false) << QByteArray("true")
                                  << QByteArray("false");
        QTest::newRow("ini number") << "ini" << ovenIni << "m.oven.limit" << QVariant(300)
                                    << QByteArray("250") << QByteArray("300");
    }

    void savesOnlyWhatWasEdited()
    {
        QFETCH(QString, type);
        QFETCH(QByteArray, before);
        QFETCH(QString, path);
        QFETCH(QVariant, value);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        const QString file = put(QStringLiteral("f"), before);
        struct stat stamp = {};
        struct stat untouched = {};
        ::stat(QFile::encodeName(file), &stamp);
        QVERIFY(mount(type, QStringLiteral("m"), file));
        QVERIFY(save(QStringLiteral("m")));
        ::stat(QFile::encodeName(file), &untouched);
        QCOMPARE(untouched.st_ino, stamp.st_ino);
        QCOMPARE(untouched.st_mtim.tv_nsec, stamp.st_mtim.tv_nsec);
        QCOMPARE(write(path, value), 0);
        QVERIFY(save(QStringLiteral("m")));
        QCOMPARE(contentOf(file), QByteArray(before).replace(from, to));
        QVERIFY(save(QStringLiteral("m")));
    }

    void createsFileAtFirstSave()
    {
        const QString file = folder->filePath(QStringLiteral("new.json"));
        QVERIFY(mount(QStringLiteral("json"), QStringLiteral("n"), file));
        QVERIFY(repository->getWriterInterface()->createAttribute(QStringLiteral("n.a.b"), 5, 2, 3));
        QVERIFY(!QFile::exists(file));
        QVERIFY(save(QStringLiteral("n")));
        repository = AttributeRepository::create();
        QVERIFY(mount(QStringLiteral("json"), QStringLiteral("n"), file));
        QCOMPARE(read(QStringLiteral("n.a.b")), QVariant(5LL));
    }

    void refusesAFileThatIsOpenByAnotherPath()
    {
        const QString one = put(QStringLiteral("one.json"), benchJson);
        const QString two = put(QStringLiteral("two.json"), benchJson);
        const QString link = folder->filePath(QStringLiteral("link.json"));
        const auto opens = [&](const char* name, const QString& file) {
            return mount(QStringLiteral("json"), QString::fromLatin1(name), file);
        };
        QVERIFY(QFile::link(one, link));
        QVERIFY(opens("a", link));
        QVERIFY(!opens("b", one));
        QVERIFY(QFile::remove(link) && QFile::link(two, link)); // it leads elsewhere by now
        QVERIFY(!opens("b", two));
        QVERIFY(opens("b", one));
        QVERIFY(!opens("c", one));
        for (const char* name : {"a", "b"})
            QVERIFY(repository->getBackendInterface()->closeBackend(QString::fromLatin1(name), true));
        QVERIFY(opens("c", two) && opens("d", one));
    }

    void refusesWithReason_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("access");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char* tag, const char* type, const char* name, const char* file, int access,
                            const char* reason) {
            QTest::newRow(tag) << QString::fromLatin1(type) << QString::fromLatin1(name)
                               << QString::fromLatin1(file) << access << QString::fromLatin1(reason);
        };
        row("type", "yaml", "x", "good.ini", 3, "no backend type 'yaml'");
        row("empty name", "ini", "..", "good.ini", 3, "a backend's name is");
        row("semicolon", "ini", "a;b", "good.ini", 3, "a backend's name is");
        row("internal", "ini", "internal.x", "good.ini", 3, "belongs to the repository");
        row("access", "ini", "x", "good.ini", 0, "access mode");
        row("name in use", "ini", "taken", "good.ini", 3, "exists already");
        row("occupied", "ini", "memory", "good.ini", 3, "already");
        row("above others", "ini", "deep", "good.ini", 3, "already");
        row("file in use", "json", "x", "taken.json", 3, "already open as 'taken'");
        row("missing, read-only", "ini", "x", "missing.ini", 1, "missing.ini");
        row("a folder", "ini", "x", ".", 3, "");
        row("broken", "json", "x", "broken.json", 3, "broken.json:2:");
    }

    void refusesWithReason()
    {
        put(QStringLiteral("good.ini"), ovenIni);
        put(QStringLiteral("broken.json"), "{\n  \"a\" 5\n}\n");
        QVERIFY(mount(QStringLiteral("json"), QStringLiteral("taken"),
                      put(QStringLiteral("taken.json"), benchJson)));
        repository->getWriterInterface()->createAttribute(QStringLiteral("memory"), 1, 2, 3);
        repository->getWriterInterface()->createAttribute(QStringLiteral("deep.a"), 1, 2, 3);
        QFETCH(QString, type);
        QFETCH(QString, name);
        QFETCH(QString, file);
        QFETCH(int, access);
        QFETCH(QString, reason);
        const QStringList before = paths(QStringLiteral("*"));
        const quint64 number = lastLogNumber();
        QVERIFY(!mount(type, name, folder->filePath(file), AccessMode(access)));
        const QStringList failures = failuresSince(number);
        QCOMPARE(failures.size(), 1);
        QVERIFY2(failures.first().contains(reason), qPrintable(failures.first()));
        QCOMPARE(paths(QStringLiteral("*")), before);
    }

    void keepsAccessModes()
    {
        const QString file = put(QStringLiteral("r.ini"), ovenIni);
        QVERIFY(mount(QStringLiteral("ini"), QStringLiteral("r"), file, AccessMode::ReadOnly));
        QCOMPARE(write(QStringLiteral("r.oven.limit"), 1), int(NotWritable));
        QVERIFY(!repository->getWriterInterface()->createAttribute(QStringLiteral("r.oven.new"), 1, 2, 3));
        QCOMPARE(repository->getTreeInterface()->removeTree(QStringLiteral("r.oven")), NotWritable);
        QVERIFY(mount(QStringLiteral("ini"), QStringLiteral("w"), put(QStringLiteral("w.ini"), ovenIni),
                      AccessMode::WriteOnly));
        QVERIFY(!read(QStringLiteral("w.oven.limit")).isValid());
        QCOMPARE(write(QStringLiteral("w.oven.limit"), 300), int(Success));
        QVERIFY(save(QStringLiteral("w")));
        QCOMPARE(contentOf(folder->filePath(QStringLiteral("w.ini"))),
                 QByteArray(ovenIni).replace("250", "300"));
    }

    void treeEqualsWhatReloadingGives()
    {
        const QString file = put(QStringLiteral("t.json"), benchJson);
        QVERIFY(mount(QStringLiteral("json"), QStringLiteral("t"), file));
        const auto tree = repository->getTreeInterface();
        const auto writer = repository->getWriterInterface();
        QStringList removed;
        repository->getNotificationInterface()->registerUpdateCallback(
            QStringLiteral("t*"),
            [&removed](const QString& path, const UpdatePoint&, const UpdateResult& result, auto&&...) {
                if (result == UpdateResult::Removed)
                    removed.append(path);
            },
            8);
        QVERIFY(writer->createAttribute(QStringLiteral("t.supplies.2.limit"), 48, 2, 3));
        QCOMPARE(tree->removeTree(QStringLiteral("t.supplies.0")), Success);
        QCOMPARE(read(QStringLiteral("t.supplies.0.limit")), QVariant(24LL));
        QCOMPARE(read(QStringLiteral("t.supplies.1.limit")), QVariant(48LL));
        QVERIFY(removed.contains(QStringLiteral("t.supplies.2.limit")));
        QCOMPARE(tree->removeTree(QStringLiteral("t.name")), Success);
        QVERIFY(writer->createAttribute(QStringLiteral("t.nothing.deeper.x"), true, 2, 3));
        QVERIFY(writer->createAttribute(QStringLiteral("t.when"), QDate(2024, 5, 31), 2, 3));
        QCOMPARE(tree->removeTree(QStringLiteral("t")), NotWritable);

        QVERIFY(save(QStringLiteral("t")));
        QStringList before = paths(QStringLiteral("t*"));
        repository = AttributeRepository::create();
        QVERIFY(mount(QStringLiteral("json"), QStringLiteral("t"), file));
        QStringList after = paths(QStringLiteral("t*"));
        before.sort();
        after.sort();
        QCOMPARE(after, before);
    }

    void nestedMountsOwnTheirPaths()
    {
        const QString outer = put(QStringLiteral("outer.json"), benchJson);
        QVERIFY(mount(QStringLiteral("json"), QStringLiteral("m"), outer));
        QVERIFY(mount(QStringLiteral("ini"), QStringLiteral("m.in.side"),
                      put(QStringLiteral("in.ini"), ovenIni)));
        QCOMPARE(repository->getTreeInterface()->removeTree(QStringLiteral("m.in")), NotWritable);
        QVERIFY(
            repository->getWriterInterface()->createAttribute(QStringLiteral("m.in.side.oven.new"), 1, 2, 3));
        QVERIFY(save(QStringLiteral("m")));
        QCOMPARE(contentOf(outer), benchJson);
        QVERIFY(mount(QStringLiteral("json"), QStringLiteral("m"), outer, AccessMode::ReadWrite, 3));
        QCOMPARE(read(QStringLiteral("m.in.side.oven.limit")), QVariant(250LL));
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
        const auto notifications = repository->getNotificationInterface();
        notifications->registerUpdateCallback(QStringLiteral("w.a.b.late"), hear, 8);
        notifications->registerUpdateCallback(QStringLiteral("w.*\u00e9*"), hear, 8);
        repository->getValidationInterface()->addValidation(QStringLiteral("w.a.first"),
                                                            QStringLiteral("range(0,9)"));
        QVERIFY(mount(QStringLiteral("ini"), QStringLiteral("w"),
                      put(QStringLiteral("w.ini"), "top=0\n[a]\nfirst=1\n[c]\ncaf\xC3\xA9=2\n[a.b]\nlate=3\n"
                                                   "[a]\nsecond=4\n[ab]\nx=5\n[a.b]\nlate=6\n")));
        QCOMPARE(heard, QStringList({QStringLiteral("w.c.caf\u00e9=2@w"), QStringLiteral("w.a.b.late=3@w")}));
        QVERIFY(write(QStringLiteral("w.a.first"), 10) != 0);
        const QStringList all = paths(QStringLiteral("w*"));
        QCOMPARE(all.size(), 14);
        for (const QString& path : all)
            QVERIFY(path == QLatin1String("w") || repository->getTreeInterface()
                                                      ->getChildNames(path.section(QLatin1Char('.'), 0, -2))
                                                      .contains(path.section(QLatin1Char('.'), -1)));
        QCOMPARE(read(QStringLiteral("w.a[2].second")), QVariant(4LL));
        QCOMPARE(read(QStringLiteral("w.a.b[2].late")), QVariant(6LL));
    }

    void reloadsFromOutside()
    {
        const QString file = put(QStringLiteral("o.ini"), ovenIni);
        QVERIFY(mount(QStringLiteral("ini"), QStringLiteral("o"), file));
        QStringList heard;
        repository->getNotificationInterface()->registerUpdateCallback(
            QStringLiteral("o*"),
            [&heard](const QString& path, const UpdatePoint&, const UpdateResult& result, auto&&...) {
                heard.append(QStringLiteral("%1 %2").arg(path).arg(int(result)));
            },
            8);
        put(QStringLiteral("o.ini"), QByteArray(ovenIni).replace("250", "260").replace("name", "title"));
        QVERIFY(mount(QStringLiteral("ini"), QStringLiteral("o"), file, AccessMode::ReadWrite, 3));
        heard.sort();
        QCOMPARE(heard, QStringList({QStringLiteral("o.oven.limit 4"), QStringLiteral("o.oven.zone1.name 3"),
                                     QStringLiteral("o.oven.zone1.title 2")}));
        QVERIFY(!mount(QStringLiteral("ini"), QStringLiteral("o"), file, AccessMode::ReadOnly, 3));
        QVERIFY(!mount(QStringLiteral("ini"), QStringLiteral("o"), file));
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
                const QString file = folder->filePath(QStringLiteral("copy"));
                QFile::remove(file);
                QVERIFY(QFile::copy(corpus + QLatin1Char('/') + name, file));
                repository = AttributeRepository::create(unwatched);
                const quint64 number = lastLogNumber();
                if (!mount(QLatin1String(type), QStringLiteral("real"), file)) {
                    ++refused;
                    const QStringList failures = failuresSince(number);
                    static const QRegularExpression place(QStringLiteral("copy:\\d+:\\d+: \\S"));
                    QVERIFY2(failures.size() == 1 && failures.first().contains(place),
                             qPrintable(name + failures.join(QLatin1Char('\n'))));
                    continue;
                }
                QVERIFY(save(QStringLiteral("real")));
                QCOMPARE(contentOf(file), contentOf(corpus + QLatin1Char('/') + name));
            }
        }
        qInfo("%d real files refused", refused);
    }
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<QCoreApplication, BackendsTest>(argc, argv);
}

#include "backends_test.moc"
