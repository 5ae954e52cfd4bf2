#include "tests/files/InterceptedOps.h"
#include "tests/files/SaveCase.h"
#include "tests/support/TestRun.h"

#include <cstring>
#include <limits>
#include <memory>
#include <set>

using Files::FileOps;
using Files::FileSaver;
using Files::ReadFileResult;
using TestSupport::InterceptedOps;
using TestSupport::SaveCase;
using TestSupport::ScratchFolder;

namespace {

// Of the calls the failAt-th fails: once, from then on every call of its kind, or all calls.
class FaultyOps : public InterceptedOps
{
public:
    enum class Mode { Once, SameKind, All };

    using InterceptedOps::InterceptedOps;

    int failAt = std::numeric_limits<int>::max();
    Mode mode = Mode::Once;
    int error = EIO;
    int calls = 0;
    std::string failedKind;

    ssize_t write(int descriptor, const char* from, std::size_t size) override
    {
        // A full disk takes what there is room for first.
        if (calls + 1 == failAt && error != EINTR)
            FileOps::write(descriptor, from, size / 2);
        return InterceptedOps::write(descriptor, from, size);
    }

protected:
    int before(const char* call) override
    {
        if (++calls == failAt)
            failedKind = call;
        const bool later =
            calls > failAt && (mode == Mode::All || (mode == Mode::SameKind && call == failedKind));
        return calls == failAt || later ? error : 0;
    }
    void after(const char*) override {}
};

// Reads and writes a few bytes at a time and is interrupted before every other call.
class StumblingOps : public FileOps
{
public:
    ssize_t read(int descriptor, char* to, std::size_t size) override
    {
        return stumbles() ? -1 : FileOps::read(descriptor, to, std::min<std::size_t>(size, 7));
    }
    ssize_t write(int descriptor, const char* from, std::size_t size) override
    {
        return stumbles() ? -1 : FileOps::write(descriptor, from, std::min<std::size_t>(size, 5));
    }
    int sync(int) override { return 0; }

private:
    bool stumbles()
    {
        errno = EINTR;
        return ++calls % 2 == 1;
    }
    int calls = 0;
};

} // namespace

Q_DECLARE_METATYPE(FaultyOps::Mode)

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
        for (const auto mode : {FaultyOps::Mode::Once, FaultyOps::Mode::SameKind, FaultyOps::Mode::All}) {
            for (const int error : {ENOSPC, EIO, EINTR, EACCES}) {
                // Some calls are tried again for as long as they are interrupted. Who may not look into a
                // folder cannot be told that something in it belongs to the file.
                const bool isForever = error == EINTR && mode != FaultyOps::Mode::Once;
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
        FaultyOps ops;
        ops.error = ENOSPC;
        ops.failAt = 0;
        Files::SaveFileResult result;
        while (ops.failedKind != "write") {
            QVERIFY(++ops.failAt < 100);
            folder->write("f.ini", "before");
            ops.calls = 0;
            result = FileSaver(ops).save(folder->path("f.ini"), "after", Files::FileStamp::of("before"));
        }
        QCOMPARE(result.error, folder->path("f.ini") + " is not saved: the new content cannot be written: "
                                                       "No space left on device");
    }

    void finishesInSmallSteps_data() { SaveCase::addRows(); }

    void finishesInSmallSteps()
    {
        QFETCH(SaveCase, saving);
        saving.prepare(*folder);
        StumblingOps ops;
        QCOMPARE(saving.run(*folder, ops), std::string());
        QCOMPARE(folder->content("f.ini"), saving.changed());
    }

private:
    void sweep(const SaveCase& saving, FaultyOps::Mode mode, int error, std::set<std::string>& refusedAt)
    {
        SaveCase::Ops system(saving.way);
        for (int n = 1;; ++n) {
            QVERIFY2(n < 1000, "it never gets through");
            saving.prepare(*folder);
            FaultyOps ops(system);
            ops.failAt = n;
            ops.mode = mode;
            ops.error = error;
            const std::string failure = saving.run(*folder, ops);
            const bool faultHappened = ops.calls >= n;
            const std::string where = ops.failedKind + " at " + std::to_string(n) + ": " + failure;
            if (!failure.empty()) {
                refusedAt.insert(ops.failedKind);
                QVERIFY(faultHappened);
                QVERIFY2(failure.find(folder->path("f.ini")) == 0, where.c_str());
                QVERIFY2(failure.find(std::strerror(error)) != std::string::npos, where.c_str());
            }
            if ((!failure.empty() || !faultHappened) && mode != FaultyOps::Mode::All && !saving.isLinked() &&
                saving.way != SaveCase::Way::WriteBusy && !saving.repairs() && ops.failedKind != "unlink" &&
                ops.failedKind != "fstatat") // who cannot tell what a file is leaves it to the next read
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

int main(int argc, char** argv)
{
    return TestSupport::runTest<QCoreApplication, SaveFaultsTest>(argc, argv);
}

#include "save_faults_test.moc"
