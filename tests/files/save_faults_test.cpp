#include "tests/files/InterceptedCalls.h"
#include "tests/files/SaveCase.h"
#include "tests/support/TestRun.h"

#include <cstring>
#include <limits>
#include <memory>
#include <set>

using Files::FileSaver;
using Files::ReadFileResult;
using Files::SystemCalls;
using TestSupport::InterceptedCalls;
using TestSupport::SaveCase;
using TestSupport::ScratchFolder;

namespace {

// Of the calls the failAt-th fails: once, from then on every call of its kind, or all calls.
class FaultyCalls : public InterceptedCalls
{
public:
    enum class Mode { Once, SameKind, All };

    using InterceptedCalls::InterceptedCalls;

    int failAt = std::numeric_limits<int>::max();
    Mode mode = Mode::Once;
    int error = EIO;
    int count = 0;
    std::string failedKind;

    ssize_t write(int descriptor, const char* from, std::size_t size) override
    {
        // A full disk takes what there is room for first.
        if (count + 1 == failAt && error != EINTR)
            SystemCalls::write(descriptor, from, size / 2);
        return InterceptedCalls::write(descriptor, from, size);
    }

protected:
    int before(const char* call) override
    {
        if (++count == failAt)
            failedKind = call;
        const bool later =
            count > failAt && (mode == Mode::All || (mode == Mode::SameKind && call == failedKind));
        return count == failAt || later ? error : 0;
    }
    void after(const char*) override {}
};

// Reads and writes a few bytes at a time and is interrupted before every other call.
class StumblingCalls : public SystemCalls
{
public:
    ssize_t read(int descriptor, char* to, std::size_t size) override
    {
        return stumbles() ? -1 : SystemCalls::read(descriptor, to, std::min<std::size_t>(size, 7));
    }
    ssize_t write(int descriptor, const char* from, std::size_t size) override
    {
        return stumbles() ? -1 : SystemCalls::write(descriptor, from, std::min<std::size_t>(size, 5));
    }
    int sync(int) override { return 0; }

private:
    bool stumbles()
    {
        errno = EINTR;
        return ++count % 2 == 1;
    }
    int count = 0;
};

} // namespace

Q_DECLARE_METATYPE(FaultyCalls::Mode)

// Every call of a save fails, one after the other: either the new content is there and the save says so, or
// the old one is and the message names the file and the system's reason.
class SaveFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { folder = std::make_unique<ScratchFolder>(); }

    void survivesEveryFault_data() { SaveCase::addRows(); }

    void survivesEveryFault()
    {
        QFETCH(SaveCase, saving);
        std::set<std::string> refusedAt;
        for (const auto mode :
             {FaultyCalls::Mode::Once, FaultyCalls::Mode::SameKind, FaultyCalls::Mode::All}) {
            for (const int error : {ENOSPC, EIO, EINTR, EACCES}) {
                // Some calls are tried again for as long as they are interrupted. Who may not look into a
                // folder cannot be informed that something in it belongs to the file.
                const bool isForever = error == EINTR && mode != FaultyCalls::Mode::Once;
                if (!isForever && !(error == EACCES && saving.repairs()))
                    sweep(saving, mode, error, refusedAt);
                if (QTest::currentTestFailed())
                    return;
            }
        }
        std::set<std::string> expected = {"realpath", "openat2", "openat"};
        if (!saving.repairs())
            expected.insert({"write", "fsync", "close"});
        if (saving.way != SaveCase::Way::Create)
            expected.insert({"read", "fstat"});
        for (const std::string& kind : expected)
            QVERIFY2(refusedAt.count(kind) == 1, kind.c_str());
    }

    void namesTheReason()
    {
        folder->write("f.ini", "before");
        FaultyCalls calls;
        calls.error = ENOSPC;
        calls.failAt = 0;
        Files::SaveFileResult result;
        while (calls.failedKind != "write") {
            QVERIFY(++calls.failAt < 100);
            folder->write("f.ini", "before");
            calls.count = 0;
            result = FileSaver(calls).save(folder->path("f.ini"), "after", Files::FileDigest::of("before"));
        }
        QCOMPARE(result.error, folder->path("f.ini") + " is not saved: the new content cannot be written: "
                                                       "No space left on device");
    }

    void finishesInSmallSteps_data() { SaveCase::addRows(); }

    void finishesInSmallSteps()
    {
        QFETCH(SaveCase, saving);
        saving.prepare(*folder);
        StumblingCalls calls;
        QCOMPARE(saving.run(*folder, calls), std::string());
        QCOMPARE(folder->content("f.ini"), saving.changed());
    }

private:
    void sweep(const SaveCase& saving, FaultyCalls::Mode mode, int error, std::set<std::string>& refusedAt)
    {
        SaveCase::Calls system(saving.way);
        for (int n = 1;; ++n) {
            QVERIFY2(n < 1000, "it never gets through");
            saving.prepare(*folder);
            FaultyCalls calls(system);
            calls.failAt = n;
            calls.mode = mode;
            calls.error = error;
            const std::string failure = saving.run(*folder, calls);
            const bool faultHappened = calls.count >= n;
            const std::string where = calls.failedKind + " at " + std::to_string(n) + ": " + failure;
            if (!failure.empty()) {
                refusedAt.insert(calls.failedKind);
                QVERIFY(faultHappened);
                QVERIFY2(failure.find(folder->path("f.ini")) == 0, where.c_str());
                QVERIFY2(failure.find(std::strerror(error)) != std::string::npos, where.c_str());
            }
            if ((!failure.empty() || !faultHappened) && mode != FaultyCalls::Mode::All &&
                !saving.isLinked() && saving.way != SaveCase::Way::WriteBusy && !saving.repairs() &&
                calls.failedKind != "unlink" &&
                calls.failedKind != "fstatat") // who cannot tell what a file is leaves it to the next read
                QVERIFY2(folder->leftovers().isEmpty(), where.c_str());
            const ReadFileResult next = FileSaver(system).read(folder->path("f.ini"));
            const std::string expected = failure.empty() ? saving.changed() : saving.unchanged();
            QVERIFY2(next.ok() || next.missing, next.error.c_str());
            QVERIFY2((next.missing ? "(missing)" : next.bytes) == expected, where.c_str());
            QVERIFY2(folder->leftovers().isEmpty(), where.c_str());
            if (!faultHappened)
                return;
        }
    }

    std::unique_ptr<ScratchFolder> folder;
};

VANTRY_TEST_MAIN(QCoreApplication, SaveFaultsTest)

#include "save_faults_test.moc"
