#include "desk/files/FileMounter.h"
#include "desk/files/FileNames.h"
#include "desk/files/OpeningProgress.h"
#include "repository/AttributeRepository.h"
#include "tests/support/Columns.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/NoThreads.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"
#include "tests/support/Unprivileged.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QProgressBar>
#include <QSemaphore>
#include <QTemporaryDir>

#include <functional>
#include <new>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>

using FrameworkCore::AppConfig::AccessMode;
using TestSupport::Unprivileged;
using Vantry::FileMounter;

namespace {

using Throw = std::function<void()>;

// One that throws while it opens files named "bad".
class ThrowingRepository : public TestSupport::FakeRepository
{
public:
    explicit ThrowingRepository(Throw failure) : fail(std::move(failure)) {}

    bool createBackend(const QString& type, const QString& name,
                       const FrameworkCore::AppConfig::BackendConfiguration& configuration,
                       const int& option) override
    {
        if (name.startsWith(QLatin1String("bad")))
            fail();
        return FakeRepository::createBackend(type, name, configuration, option);
    }

private:
    const Throw fail;
};

// One that opens a folder until it may go on.
class BusyRepository : public TestSupport::FakeRepository
{
public:
    using Information = FrameworkCore::AppConfig::Interfaces::BackendInformationInterface;

    bool createBackend(const QString&, const QString&, const FrameworkCore::AppConfig::BackendConfiguration&,
                       const int&) override
    {
        mayEnd.acquire();
        return true;
    }

    QStringList getBackendNames() override { return {QStringLiteral("m"), QStringLiteral("m.a%2Eini")}; }

    std::shared_ptr<Information> getBackendInformation(const QString& name) override
    {
        class Busy : public Information
        {
            QString getBackendType() const override { return QStringLiteral("folder"); }
            QString getBackendDescription() const override { return {}; }
            Progress getProgress() const override { return {2, 7000}; }
        };
        return name == QLatin1String("m") ? std::make_shared<Busy>() : nullptr;
    }

    QSemaphore mayEnd;
};

} // namespace

Q_DECLARE_METATYPE(Throw)

class FileMounterTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        QVERIFY(folder->isValid());
        repository = Repository::AttributeRepository::create();
    }

    void namesAMountAfterItsFile_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("name");
        const auto row = [](const char* file, const char* name) {
            QTest::newRow(file) << QString::fromUtf8(file) << QString::fromUtf8(name);
        };
        row("plant.json", "plant");
        row("plant", "plant");
        row("plant.cell.7.ini", "plant-cell-7");
        row("50%;*.cfg", "50---");
        row(".hidden", "-hidden");
        row(".hidden.ini", "-hidden");
        row("...", "--");
        row("two words.ini", "two words");
        row("größe.ini", "größe");
        row("taken.ini", "taken-2");
        row("group.ini", "group-2");
        row("thrice.ini", "thrice-4");
        row("internal.json", "internal-2");
    }

    // As the mount is afterwards, so that a name which the repository refuses is found.
    void namesAMountAfterItsFile()
    {
        for (const char* path : {"taken", "group.member", "thrice", "thrice-2", "thrice-3"})
            QVERIFY(repository->getWriterInterface()->createAttribute(QLatin1String(path), 1, 2, 3));
        QFETCH(QString, file);
        const QString fileName = write(file, file.endsWith(QLatin1String("json")) ? "{\"k\": 1}" : "k = 1\n");
        const FileMounter::Result result = mount({fileName});
        QCOMPARE(result.problems, QStringList());
        QTEST(repository->getBackendInterface()->getBackendNames().join(QLatin1Char(' ')), "name");
        QFETCH(QString, name);
        QCOMPARE(valueOf(name + QLatin1String(".k")), QVariant(1LL));
    }

    void tellsHowFarItIs()
    {
        const auto busy = std::make_shared<BusyRepository>();
        FileMounter mounter(busy);
        Vantry::OpeningProgress progress(mounter, busy);
        mounter.mount({folder->path()});
        QVERIFY(progress.isHidden());
        QTRY_VERIFY(!progress.isHidden());
        QCOMPARE(progress.findChild<QLabel*>()->text(), QStringLiteral("Opening 3 of 7,000 files"));
        QCOMPARE(progress.findChild<QProgressBar*>()->value(), 2);
        busy->mayEnd.release();
        QTRY_VERIFY(progress.isHidden());
    }

    void numbersFilesOfOneName()
    {
        QStringList files;
        for (const char* file : {"a/x.ini", "b/x.ini", "x.json", "x-2.ini"})
            files.append(write(QLatin1String(file), file[2] == 'j' ? "{\"k\": 1}" : "k = 1\n"));
        QCOMPARE(mount(files).opened, files);
        QCOMPARE(repository->getBackendInterface()->getBackendNames(), TestSupport::words("x x-2 x-3 x-2-2"));
    }

    void namesFilesByTheirFolders_data()
    {
        QTest::addColumn<QStringList>("paths");
        QTest::addColumn<QStringList>("names");
        const auto row = [](const char* paths, const char* names) {
            QTest::newRow(paths) << TestSupport::words(paths) << TestSupport::words(names);
        };
        row("/a/x.ini /a/y.ini", "x.ini y.ini");
        row("/a/x.ini /b/y.ini /b/x.ini", "a/x.ini y.ini b/x.ini");
        row("/a/c/x.ini /b/c/x.ini /b/d/x.ini", "a/c/x.ini b/c/x.ini d/x.ini");
        row("/x.ini /b/x.ini /b/b/x.ini", "/x.ini /b/x.ini b/b/x.ini");
        row("/x.ini /x.ini x", "/x.ini /x.ini x");
        row("etcd://h:1/s?credentials=/c etcds://h:1/t", "s t");
        row("etcd://h:1/s?user=a etcd://h:1/s?user=b", "etcd://h:1/s etcd://h:1/s");
    }

    void namesFilesByTheirFolders()
    {
        QFETCH(QStringList, paths);
        QTEST(Vantry::distinctFileNames(paths), "names");
    }

    void tellsWhatCannotBeOpened_data()
    {
        TestSupport::columns<QString, QByteArray, QStringList>("name", "content", "told");
        const auto row = [](const char* name, const QByteArray& content, const QStringList& told) {
            QTest::newRow(name) << QString::fromLatin1(name) << content << told;
        };
        row("broken.json", "{\n  \"a\": 1,\n  \"b\": [1 2]\n}\n", {QStringLiteral(":3:11:")});
        row("cut.json", "{\"a\": {", {QStringLiteral(":1:8:")});
        row("broken.xml", "<a>\n</b>", {QStringLiteral(":2:3:"), QStringLiteral("<a>")});
        row("missing.json", {}, {QStringLiteral("no such file")});
        row("pipe.json", {}, {QStringLiteral("not a regular file")});
        row("secret.json", "{}", {QStringLiteral("ermission")});
    }

    // By name and reason, once, and without harm to those before and after it.
    void tellsWhatCannotBeOpened()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        const QString fileName = inFolder(name);
        if (name.startsWith(QLatin1String("pipe")))
            QCOMPARE(mkfifo(QFile::encodeName(fileName).constData(), S_IRUSR | S_IWUSR), 0);
        else if (!name.startsWith(QLatin1String("missing")))
            write(name, content);
        if (name.startsWith(QLatin1String("secret")))
            QVERIFY(QFile::setPermissions(fileName, {}));

        const QString first = write(QStringLiteral("first.json"), "{\"k\": 1}");
        const QString last = write(QStringLiteral("last.ini"), "k = 1\n");
        openFolder();
        const Unprivileged user;
        const FileMounter::Result result = mount({first, fileName, last});
        QCOMPARE(result.opened, (QStringList{first, last}));
        QCOMPARE(valueOf(QStringLiteral("first.k")), QVariant(1LL));
        QCOMPARE(valueOf(QStringLiteral("last.k")), QVariant(1LL));
        QCOMPARE(result.problems.size(), 1);
        const QString problem = result.problems.first();
        QCOMPARE(problem.count(fileName), 1);
        QFETCH(QStringList, told);
        for (const QString& part : qAsConst(told))
            QVERIFY2(problem.contains(part), qPrintable(problem));
    }

    // Rather than of the backend, which would be called after it.
    void tellsThatTheNameOfAStoreIsMissing()
    {
        const QString problem = mount({QStringLiteral("etcd://localhost:2379/")}).problems.value(0);
        QVERIFY2(problem.contains(QLatin1String("the name of the store is missing")), qPrintable(problem));
    }

    void opensFolders()
    {
        QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("d")));
        write(QStringLiteral("d/a.ini"), "k = 1\n");
        write(QStringLiteral("d/b.json"), "{");
        const FileMounter::Result result = mount({inFolder(QStringLiteral("d"))});
        QCOMPARE(result.opened, QStringList(inFolder(QStringLiteral("d"))));
        QCOMPARE(valueOf(QStringLiteral("d.a%2Eini.k")), QVariant(1LL));
        QVERIFY(result.problems.value(0).contains(QLatin1String("1 of its 3")));
    }

    // Whatever path leads to it.
    void tellsWhichFilesAreOpenBefore()
    {
        const QString file = write(QStringLiteral("a.ini"), "k = 1\n");
        const QString link = inFolder(QStringLiteral("link.ini"));
        QVERIFY(QFile::link(file, link));
        const FileMounter::Result result = mount(
            {file,
             inFolder(QStringLiteral("../")) + QFileInfo(folder->path()).fileName() + QLatin1String("/a.ini"),
             link});
        QCOMPARE(result.opened, QStringList(file));
        QCOMPARE(result.openBefore, TestSupport::words("a a"));
        QCOMPARE(result.problems, QStringList());
        QCOMPARE(mount({link}).openBefore, QStringList(QStringLiteral("a")));
    }

    void opensWhatCannotBeWrittenForReading()
    {
        const QString file = write(QStringLiteral("a.ini"), "k = 1\n");
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
        openFolder();
        const Unprivileged user;
        const QString other = write(QStringLiteral("own/b.ini"), "k = 1\n");
        QCOMPARE(mount({file, other}).problems, QStringList());
        const auto accessOf = [this](const char* path) {
            return repository->getReaderInterface()->getAttribute(QLatin1String(path))->getAccessMode();
        };
        QCOMPARE(accessOf("a.k"), AccessMode::ReadOnly);
        QCOMPARE(accessOf("b.k"), AccessMode::ReadWrite);
    }

    void opensWhatIsGivenMeanwhile()
    {
        FileMounter mounter(repository);
        QStringList opened;
        connect(&mounter, &FileMounter::mounted, this,
                [&](const FileMounter::Result& result) { opened += result.opened; });
        QStringList files;
        for (const char* name : {"a.ini", "b.ini", "c.ini"}) {
            files.append(write(QLatin1String(name), "k = 1\n"));
            mounter.mount({files.last()});
        }
        QVERIFY(mounter.isBusy());
        QTRY_COMPARE(opened, files);
        QVERIFY(!mounter.isBusy());
        QCOMPARE(repository->getBackendInterface()->getBackendNames(), TestSupport::words("a b c"));
    }

    void toldWhenOpeningThrows_data()
    {
        const auto row = TestSupport::columns<Throw, QString>("fail", "reason");
        row(
            "no memory", [] { throw std::bad_alloc(); }, "not enough memory");
        row(
            "an error", [] { throw std::runtime_error("the disk burns"); }, "the disk burns");
        row(
            "an error of the system",
            [] { throw std::system_error(EIO, std::generic_category(), "reading"); },
            "reading: Input/output error");
        row(
            "anything", [] { throw 1; }, "unknown reason");
    }

    // As a refusal of that file: the others are opened, and so are later ones.
    void toldWhenOpeningThrows()
    {
        QFETCH(Throw, fail);
        QFETCH(QString, reason);
        repository = std::make_shared<ThrowingRepository>(fail);
        FileMounter mounter(repository);
        const QString first = write(QStringLiteral("first.ini"), "k = 1\n");
        const QString bad = write(QStringLiteral("bad.ini"), "k = 1\n");
        const QString last = write(QStringLiteral("last.ini"), "k = 1\n");
        for (int round = 0; round < 2; ++round) {
            const FileMounter::Result result = mountBy(mounter, {first, bad, last});
            QCOMPARE(result.opened, (QStringList{first, last}));
            QCOMPARE(result.problems.size(), 1);
            const QString problem = result.problems.first();
            QVERIFY2(problem.startsWith(bad) && problem.contains(reason), qPrintable(problem));
            QVERIFY(!mounter.isBusy());
        }
    }

    void toldWithoutAThread()
    {
        FileMounter mounter(repository);
        const QStringList files{write(QStringLiteral("a.ini"), "k = 1\n"),
                                write(QStringLiteral("b.ini"), "k = 1\n")};
        {
            const TestSupport::NoThreads none;
            const FileMounter::Result result = mountBy(mounter, files);
            QCOMPARE(result.opened, QStringList());
            QCOMPARE(result.problems.size(), 2);
            for (int i = 0; i < 2; ++i) {
                QVERIFY(result.problems[i].startsWith(files[i]));
                QVERIFY(result.problems[i].contains(QLatin1String("thread")));
            }
            QVERIFY(!mounter.isBusy());
        }
        QCOMPARE(mountBy(mounter, files).opened, files);
    }

private:
    QString inFolder(const QString& name) const { return folder->filePath(name); }

    QString write(const QString& name, const QByteArray& content) const
    {
        const QString fileName = inFolder(name);
        QDir().mkpath(QFileInfo(fileName).path());
        QFile file(fileName);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("%s: %s", qPrintable(fileName), qPrintable(file.errorString()));
        return fileName;
    }

    // For a user without rights, too.
    void openFolder() const
    {
        QDir(folder->path()).mkdir(QStringLiteral("own"));
        const auto all = QFile::Permissions(0x7777);
        QVERIFY(QFile::setPermissions(folder->path(), all));
        QVERIFY(QFile::setPermissions(inFolder(QStringLiteral("own")), all));
    }

    FileMounter::Result mount(const QStringList& files)
    {
        FileMounter mounter(repository);
        return mountBy(mounter, files);
    }

    FileMounter::Result mountBy(FileMounter& mounter, const QStringList& files)
    {
        FileMounter::Result result;
        bool isMounted = false;
        const QObject listener; // until this returns
        connect(&mounter, &FileMounter::mounted, &listener, [&](const FileMounter::Result& told) {
            result = told;
            isMounted = true;
        });
        mounter.mount(files);
        if (!QTest::qWaitFor([&] { return isMounted; }))
            result.problems.append(QStringLiteral("the mounter did not finish"));
        return result;
    }

    QVariant valueOf(const QString& path) const
    {
        QVariant value;
        repository->getReaderInterface()->readAttributeValue(path, value, 0);
        return value;
    }

    std::unique_ptr<QTemporaryDir> folder;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
};

VANTRY_TEST_MAIN(QApplication, FileMounterTest)

#include "file_mounter_test.moc"
