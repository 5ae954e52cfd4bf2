#include "files/FileWatcher.h"
#include "host/Shared/Logging/LogRecord.h"
#include "tests/support/Columns.h"
#include "tests/support/NoThreads.h"
#include "tests/support/RepositoryTest.h"

#include <QDir>
#include <QFile>

#include <atomic>
#include <fcntl.h>
#include <sys/stat.h>

using namespace FrameworkCore::AppConfig;
using Files::FileWatcher;
using Repository::AttributeRepository;
using TestSupport::writeFile;

namespace {

const QByteArray oven = "; oven\n[oven]\nhot = true\nlimit = 250\n\n[fan]\nspeed = 3\n";

QByteArray withSpeed(int speed)
{
    return QByteArray(oven).replace("= 3", "= " + QByteArray::number(speed));
}

void replace(const QString& path, const QByteArray& bytes)
{
    writeFile(path + QStringLiteral(".new"), bytes);
    if (::rename(QFile::encodeName(path + QStringLiteral(".new")), QFile::encodeName(path)) != 0)
        qFatal("no replacement");
}

int countFailures(const char* part)
{
    int count = 0;
    for (const auto& line : Shared::Logging::LogRecord::instance().getLines())
        count += line.text.contains(QLatin1String(part)) ? 1 : 0;
    return count;
}

} // namespace

class FileWatchingTest;
using FileChange = std::function<void(FileWatchingTest&)>;
Q_DECLARE_METATYPE(FileChange)

// What other programs do to a mounted file shows in the tree by itself, and nobody's edit is lost.
class FileWatchingTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    QString file;

    QVector<Interfaces::UnsavedChange> unsaved() { return changes()->getUnsavedChanges(QStringLiteral("m")); }

    bool isConflict(const char* path)
    {
        for (const auto& change : unsaved()) {
            if (change.path == QLatin1String(path) && change.isConflict)
                return true;
        }
        return false;
    }

private slots:
    // The file lies behind a link in a folder behind a link.
    void init()
    {
        RepositoryTest::init();
        QDir top(folder->path());
        QVERIFY(top.mkpath(QStringLiteral("real/deep")) && top.mkpath(QStringLiteral("other")));
        file = fileOf("real/deep/f");
        writeFile(file, oven);
        QVERIFY(QFile::link(QStringLiteral("real"), fileOf("link")));
        QVERIFY(QFile::link(QStringLiteral("link/deep/f"), fileOf("m")));
        QVERIFY(mountFile("ini", "m", fileOf("m")));
    }

    void bringsChangesIn_data()
    {
        const auto row = TestSupport::columns<FileChange>("change");
        row("replaced", [](auto& t) { replace(t.file, withSpeed(9)); });
        row("written over", [](auto& t) { writeFile(t.file, withSpeed(9)); });
        row("replaced many times", [](auto& t) {
            for (int i = 0; i < 50; ++i)
                replace(t.file, withSpeed(100 + i));
            QTRY_COMPARE(t.read("m.fan.speed"), QVariant(149LL));
            replace(t.file, withSpeed(9));
        });
        row("appended", [](auto& t) {
            writeFile(t.file, QByteArray(oven).replace("speed = 3\n", ""));
            QTRY_VERIFY(!t.read("m.fan.speed").isValid());
            QFile out(t.file);
            QVERIFY(out.open(QIODevice::Append) && out.write("speed = 9\n") > 0);
        });
        row("written in steps", [](auto& t) {
            QFile out(t.file);
            QVERIFY(out.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            for (const char letter : withSpeed(9))
                QVERIFY(out.putChar(letter));
        });
        row("deleted and created", [](auto& t) {
            QVERIFY(QFile::remove(t.file));
            QTRY_VERIFY(t.isConflict("m"));
            writeFile(t.file, withSpeed(9));
        });
        row("same size and time", [](auto& t) {
            struct stat before = {};
            QCOMPARE(::stat(QFile::encodeName(t.file), &before), 0);
            writeFile(t.file, withSpeed(9));
            const timespec times[2] = {before.st_atim, before.st_mtim};
            QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(t.file), times, 0), 0);
        });
        row("a folder for a while", [](auto& t) {
            QVERIFY(QFile::remove(t.file) && QDir().mkdir(t.file));
            QTRY_VERIFY(countFailures("is a folder") > 0);
            QVERIFY(QDir().rmdir(t.file));
            writeFile(t.file, withSpeed(9));
        });
        row("folder away and back", [](auto& t) {
            const QString away = t.fileOf("away");
            const QString upper = t.fileOf("real");
            QVERIFY(QFile::rename(upper, away));
            QTRY_VERIFY(t.isConflict("m"));
            writeFile(away + QStringLiteral("/deep/f"), withSpeed(9));
            QVERIFY(QFile::rename(away, upper));
        });
        row("another folder behind the link", [](auto& t) {
            QDir(t.folder->path()).mkpath(QStringLiteral("other/deep"));
            writeFile(t.fileOf("other/deep/f"), withSpeed(8));
            const QString other = t.fileOf("new link");
            QVERIFY(QFile::link(QStringLiteral("other"), other));
            QCOMPARE(::rename(QFile::encodeName(other), QFile::encodeName(t.fileOf("link"))), 0);
            QTRY_COMPARE(t.read("m.fan.speed"), QVariant(8LL));
            writeFile(t.fileOf("other/deep/f"), withSpeed(9));
        });
    }

    void bringsChangesIn()
    {
        QFETCH(FileChange, change);
        QVERIFY(write("m.oven.limit", 300));
        change(*this);
        if (QTest::currentTestFailed())
            return;
        QTRY_COMPARE(read("m.fan.speed"), QVariant(9LL));
        QCOMPARE(read("m.oven.limit"), QVariant(300LL));
        QVERIFY(!isConflict("m.oven.limit") && !isConflict("m"));
        QCOMPARE(saved(), withSpeed(9).replace("250", "300"));
    }

    // As with "slow-program > file": what is there until it ends is nothing to show.
    void waitsForWhoStillWrites()
    {
        replace(file, withSpeed(4));
        QTRY_COMPARE(read("m.fan.speed"), QVariant(4LL));
        std::atomic<int> changes{0};
        repository->getNotificationInterface()->registerUpdateCallback(
            QStringLiteral("m.fan.speed"), [&changes](auto&&...) { ++changes; }, 8);
        QFile out(file);
        QVERIFY(out.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        for (const QByteArray& piece : {withSpeed(9).left(20), withSpeed(9).mid(20)}) {
            QTest::qWait(1200);
            QVERIFY(out.write(piece) == piece.size());
            QCOMPARE(read("m.fan.speed"), QVariant(4LL));
        }
        out.close();
        QTRY_COMPARE(read("m.fan.speed"), QVariant(9LL));
        QCOMPARE(changes.load(), 1);
    }

    void keepsWhatBothChanged()
    {
        QVERIFY(write("m.oven.limit", 300));
        const int before = countFailures("in the file: '260'");
        replace(file, QByteArray(oven).replace("250", "260"));
        QTRY_VERIFY(isConflict("m.oven.limit"));
        QCOMPARE(read("m.oven.limit"), QVariant(300LL));
        QTRY_COMPARE(countFailures("in the file: '260'"), before + 1);
        QVERIFY(!save());
    }

    // One line in the log for all events until something else is wrong, and none for a mere touch.
    void waitsForATextThatServes()
    {
        const int before = countFailures("stays as it was");
        for (int i = 0; i < 3; ++i) {
            replace(file, oven + "[oven\n");
            QTRY_COMPARE(countFailures("f:8:1") > 0 || countFailures("m:8:1") > 0, true);
        }
        QCOMPARE(countFailures("stays as it was"), before + 1);
        QCOMPARE(read("m.fan.speed"), QVariant(3LL));
        replace(file, withSpeed(4));
        QTRY_COMPARE(read("m.fan.speed"), QVariant(4LL));
        QCOMPARE(countFailures("stays as it was"), before + 1);
    }

    // Watchers are notified with nothing locked, so that they may use the repository, save and end it.
    void toleratesWhatCallbacksDo()
    {
        auto kept = std::make_shared<std::shared_ptr<AttributeRepository>>(std::move(repository));
        std::atomic<bool> isDone{false};
        (*kept)->getNotificationInterface()->registerUpdateCallback(
            QStringLiteral("m.fan.speed"),
            [&isDone, kept](auto&&...) {
                (*kept)->getWriterInterface()->writeAttributeValue(QStringLiteral("m.oven.hot"), false, 15);
                (*kept)->getBackendInterface()->saveBackend(QStringLiteral("m"));
                kept->reset();
                isDone = true;
            },
            8);
        replace(file, withSpeed(5));
        QTRY_VERIFY(isDone);
        QCOMPARE(TestSupport::contentOf(file), withSpeed(5).replace("true", "false"));
    }

    // It is reported at once, and both files are watched when a thread can be started.
    void startsLaterWithoutAThread()
    {
        std::atomic<int> reports{0};
        std::atomic<int> calls{0};
        const auto call = [&calls](auto&&...) { ++calls; };
        FileWatcher watcher([&](auto&&...) { ++reports; });
        const auto name = QFile::encodeName(file).toStdString();
        {
            const TestSupport::NoThreads none;
            watcher.watch(name, {}, call);
            QCOMPARE(reports.load(), 1);
        }
        watcher.watch(name + ".other", std::chrono::system_clock::now() + std::chrono::hours(1),
                      [](auto&&...) {});
        QTRY_VERIFY(calls > 0);
        const int seen = calls;
        replace(file, withSpeed(5));
        QTRY_VERIFY(calls > seen);
        QCOMPARE(reports.load(), 1);
    }

    void comesAgainWhereAFileChangesWhileItIsRead()
    {
        std::atomic<int> calls{0};
        std::atomic<int> quietCalls{0};
        FileWatcher watcher([](auto&&...) {});
        watcher.watch(QFile::encodeName(file).toStdString(),
                      std::chrono::system_clock::now() + std::chrono::hours(1), [&](const auto& isQuiet) {
                          if (++calls <= 2)
                              writeFile(file, withSpeed(calls));
                          quietCalls += isQuiet() ? 1 : 0;
                      });
        QTRY_VERIFY_WITH_TIMEOUT((calls == 0 ? replace(file, withSpeed(9)) : void(), quietCalls == 1),
                                 20'000);
        QCOMPARE(calls.load(), 3);
    }

    void survivesWhatACallbackThrows()
    {
        std::atomic<int> reports{0};
        std::atomic<int> calls{0};
        FileWatcher watcher([&](auto&&...) { ++reports; });
        watcher.watch(QFile::encodeName(file).toStdString(),
                      std::chrono::system_clock::now() + std::chrono::hours(1), [&calls](auto&&...) {
                          ++calls;
                          throw std::bad_alloc();
                      });
        for (int i = 1; i <= 3; ++i) {
            const int seen = calls;
            QTRY_VERIFY_WITH_TIMEOUT((replace(file, withSpeed(i)), calls > seen), 20'000);
            QTRY_COMPARE(reports.load(), calls.load());
        }
    }

    void looksInTurnsWithoutTheSystem()
    {
        FileWatcher::Settings settings;
        settings.usesSystem = false;
        settings.quiet = std::chrono::milliseconds(1);
        settings.polling = std::chrono::milliseconds(5);
        std::atomic<int> reports{0};
        std::atomic<int> calls{0};
        FileWatcher watcher([&](auto&&...) { ++reports; }, settings);
        const auto name = QFile::encodeName(file).toStdString();
        const int number = watcher.watch(name, std::chrono::system_clock::now() + std::chrono::hours(1),
                                         [&calls](auto&&...) { ++calls; });
        QTRY_COMPARE(reports.load(), 1);
        for (int i = 1; i <= 5; ++i) {
            const int seen = calls;
            replace(file, withSpeed(i));
            QTRY_VERIFY(calls > seen);
        }
        watcher.unwatch(number);
        std::atomic<int> others{0};
        watcher.watch(name, {}, [&others](auto&&...) { ++others; });
        QTRY_COMPARE(others.load(), 1);
        const int seen = calls;
        replace(file, oven);
        QTRY_VERIFY(others > 1);
        QCOMPARE(calls.load(), seen);
        QCOMPARE(reports.load(), 1);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, FileWatchingTest)

#include "file_watching_test.moc"
