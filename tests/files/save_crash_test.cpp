#include "tests/files/ChildProcess.h"
#include "tests/files/InterceptedCalls.h"
#include "tests/files/SaveCase.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QRandomGenerator>

#include <chrono>
#include <memory>
#include <thread>

using Files::FileDigest;
using Files::FileSaver;
using Files::ReadFileResult;
using TestSupport::ChildProcess;
using TestSupport::InterceptedCalls;
using TestSupport::SaveCase;
using TestSupport::ScratchFolder;

namespace {

// Kills its own process before or after one of the calls.
class KillingCalls : public InterceptedCalls
{
public:
    KillingCalls(SystemCalls& systemCalls, int momentOfDeath)
        : InterceptedCalls(systemCalls), moment(momentOfDeath)
    {
    }

protected:
    int before(const char*) override
    {
        die();
        return 0;
    }
    void after(const char*) override { die(); }

private:
    void die()
    {
        if (++moments == moment)
            ::raise(SIGKILL);
    }

    const int moment;
    int moments = 0;
};

// Tells its number and whether it is whole.
std::string generation(int number)
{
    const std::string head = std::to_string(number) + '\n';
    return head + std::string(std::size_t(number % 97) * 300, char('a' + number % 26)) + head;
}

} // namespace

// Processes that are killed while they save leave the old or the new content, whole, and nothing else.
class SaveCrashTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { folder = std::make_unique<ScratchFolder>(); }

    void survivesAKillAtEveryCall_data() { SaveCase::addRows(); }

    void survivesAKillAtEveryCall()
    {
        QFETCH(SaveCase, saving);
        int kills = 0;
        bool seesOld = false;
        bool seesNew = false;
        for (bool isKilled = true; isKilled; ++kills) {
            saving.prepare(*folder);
            ChildProcess child([&](int) {
                SaveCase::Calls system(saving.way);
                KillingCalls calls(system, kills + 1);
                return saving.run(*folder, calls).empty() ? 0 : 1;
            });
            const int status = child.wait();
            isKilled = WIFSIGNALED(status);
            QVERIFY(isKilled || WEXITSTATUS(status) == 0);
            SaveCase::Calls system(saving.way);
            const ReadFileResult read = FileSaver(system).read(folder->path("f.ini"));
            QVERIFY2(read.ok() || read.missing, read.error.c_str());
            const std::string content = read.missing ? "(missing)" : read.bytes;
            QVERIFY2(content == saving.unchanged() || content == saving.changed(),
                     qPrintable(QStringLiteral("neither old nor new after kill %1").arg(kills)));
            QVERIFY(isKilled || content == saving.changed());
            QCOMPARE(folder->leftovers(), QStringList());
            seesOld = seesOld || content == saving.unchanged();
            seesNew = seesNew || content == saving.changed();
        }
        QVERIFY2(kills > 20, "hardly a call was reached");
        QVERIFY(seesOld && seesNew);
    }

    void survivesKillsAtRandomMoments_data()
    {
        const auto row = TestSupport::columns<bool>("linked");
        row("replaced", false);
        row("in place", true);
    }

    // The saving process tells every save that has come to its end: none of those may be lost.
    void survivesKillsAtRandomMoments()
    {
        QFETCH(bool, linked);
        constexpr int kills = 250;
        QRandomGenerator random(20240229);
        folder->write("f.ini", generation(0));
        if (linked)
            folder->hardLink("f.ini", "g.ini");
        int last = 0;
        int interruptions = 0;
        for (int kill = 0; kill < kills; ++kill) {
            ChildProcess child([&](int output) { return saveOnAndOn(last, output); });
            char told = 0;
            QVERIFY(child.readByte(told));
            ++last;
            std::this_thread::sleep_for(std::chrono::microseconds(random.bounded(8000)));
            child.kill();
            last += int(child.readAll().size());
            child.wait();
            interruptions += folder->leftovers().isEmpty() ? 0 : 1;
            const ReadFileResult read = FileSaver().read(folder->path("f.ini"));
            QVERIFY2(read.ok(), read.error.c_str());
            QVERIFY2(read.bytes == generation(last) || read.bytes == generation(last + 1),
                     qPrintable(QStringLiteral("kill %1, saved %2: %3")
                                    .arg(kill)
                                    .arg(last)
                                    .arg(QString::fromStdString(read.bytes.substr(0, 20)))));
            last += read.bytes == generation(last) ? 0 : 1;
            QCOMPARE(folder->leftovers(), QStringList());
        }
        QVERIFY2(interruptions > kills / 20, "hardly a kill met a save");
    }

private:
    int saveOnAndOn(int number, int output) const
    {
        const FileSaver saver;
        while (true) {
            const std::string before = generation(number);
            if (!saver.save(folder->path("f.ini"), generation(++number), FileDigest::of(before)).ok() ||
                ::write(output, "+", 1) != 1)
                return 1;
        }
    }

    std::unique_ptr<ScratchFolder> folder;
};

VANTRY_TEST_MAIN(QCoreApplication, SaveCrashTest)

#include "save_crash_test.moc"
