#include "files/FileSaver.h"
#include "files/TemporaryName.h"
#include "tests/files/InterceptedCalls.h"
#include "tests/files/MemoryDisk.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <functional>

using Files::FileDigest;
using Files::FileSaver;
using Files::ReadFileResult;
using TestSupport::InterceptedCalls;
using TestSupport::MemoryDisk;

namespace {

// Shows the disk whenever something on it has changed.
class WatchedCalls : public InterceptedCalls
{
public:
    using Watcher = std::function<void(const MemoryDisk&)>;

    WatchedCalls(MemoryDisk& usedDisk, Watcher diskWatcher)
        : InterceptedCalls(usedDisk), disk(usedDisk), watcher(std::move(diskWatcher))
    {
    }

protected:
    int before(const char*) override { return 0; }
    void after(const char*) override
    {
        if (disk.countChanges() == seen)
            return;
        seen = disk.countChanges();
        watcher(disk);
    }

private:
    const MemoryDisk& disk;
    const Watcher watcher;
    int seen = disk.countChanges();
};

} // namespace

// The power goes after every call, and of what was not synced then any part is missing: the next read gives
// the old or the new content, and the new one when the save had said that it is done.
class PowerCutTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("XDG_STATE_HOME", "/home/state"); }

    void survivesAPowerCutAtEveryMoment_data()
    {
        TestSupport::columns<QString, int, int>("way", "before", "after");
        for (const char* way : {"replaced", "replaced blindly", "created", "linked", "busy"}) {
            QTest::addRow("%s, growing", way) << way << 50 << 90;
            QTest::addRow("%s, shrinking", way) << way << 90 << 50;
        }
    }

    void survivesAPowerCutAtEveryMoment()
    {
        QFETCH(QString, way);
        QFETCH(int, before);
        QFETCH(int, after);
        oldContent = way == QLatin1String("created") ? "(missing)" : std::string(std::size_t(before), 'b');
        newContent = std::string(std::size_t(after), 'a');
        cuts = repairs = 0;
        MemoryDisk disk = prepare(way);
        std::string wrong;
        WatchedCalls calls(disk, [&](const MemoryDisk& now) { wrong += readAfterCuts(now, false); });
        const std::string error = save(calls);
        QCOMPARE(error, std::string());
        QCOMPARE(wrong, std::string());
        QCOMPARE(readAfterCuts(disk, true), std::string());
        QVERIFY2(cuts > 30, qPrintable(QString::number(cuts)));
        QCOMPARE(repairs > 0, way == QLatin1String("linked") || way == QLatin1String("busy"));
    }

    void findsOutWhoDoesNotSync_data() { survivesAPowerCutAtEveryMoment_data(); }

    // The same on a disk that only pretends to sync: were nothing found there, nothing would be proved above.
    void findsOutWhoDoesNotSync()
    {
        QFETCH(QString, way);
        QFETCH(int, before);
        QFETCH(int, after);
        oldContent = way == QLatin1String("created") ? "(missing)" : std::string(std::size_t(before), 'b');
        newContent = std::string(std::size_t(after), 'a');
        MemoryDisk disk = prepare(way);
        disk.forgets = true;
        QCOMPARE(save(disk), std::string());
        QVERIFY(!readAfterCuts(disk, true).empty());
    }

private:
    MemoryDisk prepare(const QString& way) const
    {
        MemoryDisk disk;
        disk.put("/etc");
        disk.put("/home");
        if (way != QLatin1String("created"))
            disk.put("/etc/f.ini", oldContent);
        if (way == QLatin1String("linked"))
            disk.addName("/etc/f.ini", "/home/g.ini");
        disk.isBusy = way == QLatin1String("busy");
        disk.knowsExchange = way != QLatin1String("replaced blindly");
        return disk;
    }

    std::string save(Files::SystemCalls& calls) const
    {
        const bool isNew = oldContent == "(missing)";
        return FileSaver(calls)
            .save("/etc/f.ini", newContent, isNew ? FileDigest() : FileDigest::of(oldContent))
            .error;
    }

    // Empty, or what is wrong. The power goes a second time while the first cut is being repaired.
    std::string readAfterCuts(const MemoryDisk& disk, bool isSaved, bool again = true)
    {
        std::string wrong;
        for (MemoryDisk& cut : disk.powerCuts()) {
            ++cuts;
            WatchedCalls calls(cut, [&](const MemoryDisk& now) {
                if (again)
                    wrong += readAfterCuts(now, isSaved, false);
            });
            const ReadFileResult read = FileSaver(calls).read("/etc/f.ini");
            repairs += read.warning.empty() ? 0 : 1;
            const std::string content = read.missing ? "(missing)" : read.bytes;
            if (content != newContent && (isSaved || content != oldContent))
                wrong += read.error + " found: " + content + '\n';
            for (const std::string& name : cut.findNames(Files::TemporaryName::prefix))
                wrong += "left: " + name + '\n';
        }
        return wrong;
    }

    std::string oldContent;
    std::string newContent;
    int cuts = 0;
    int repairs = 0;
};

VANTRY_TEST_MAIN(QCoreApplication, PowerCutTest)

#include "power_cut_test.moc"
