#include "files/FileJournal.h"
#include "files/SizeLimit.h"
#include "tests/files/InterceptedCalls.h"
#include "tests/files/ScratchFolder.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <sys/file.h>
#include <thread>

using Files::FileDigest;
using Files::FileSaver;
using Files::ReadFileResult;
using Files::SaveFileResult;
using Files::TemporaryName;
using TestSupport::ScratchFolder;

namespace {

// Other programs that come in between: before the calls of the kind, one after the other.
class MeddlingCalls : public TestSupport::InterceptedCalls
{
public:
    MeddlingCalls(std::string callName, std::vector<std::function<void()>> otherPrograms)
        : call(std::move(callName)), programs(std::move(otherPrograms))
    {
    }

    bool hasMeddled() const { return done == programs.size(); }

protected:
    int before(const char* name) override
    {
        if (name == call && !hasMeddled())
            programs[done++]();
        return 0;
    }
    void after(const char*) override {}

private:
    const std::string call;
    const std::vector<std::function<void()>> programs;
    std::size_t done = 0;
};

// Each line of both, as a person would merge them.
Files::MergedContent addLine(const std::string& found, const FileDigest&)
{
    return {found + "mine\n", {}};
}

} // namespace

Q_DECLARE_METATYPE(std::string)

class FileSaverTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { folder = std::make_unique<ScratchFolder>(); }

    void readsWhatIsThere()
    {
        folder->write("a.ini", std::string("x\0y", 3));
        const ReadFileResult read = FileSaver().read(path("a.ini"));
        QVERIFY2(read.ok(), read.error.c_str());
        QCOMPARE(read.bytes, std::string("x\0y", 3));
        QVERIFY(read.digest.exists);
        const ReadFileResult missing = FileSaver().read(path("b.ini"));
        QVERIFY(missing.missing);
        QVERIFY(!missing.digest.exists);
        QCOMPARE(missing.error, path("b.ini") + ": No such file or directory");
        QCOMPARE(FileSaver().read(path("")).error, path("") + ": it is a folder");
    }

    void touchesNothingWithoutNeed()
    {
        folder->write("f.ini", "same");
        const struct stat before = folder->status("f.ini");
        // Also when the digest is of something else: the file holds what is wanted.
        const SaveFileResult result = FileSaver().save(path("f.ini"), "same", FileDigest());
        QVERIFY(result.ok());
        QVERIFY(!result.written);
        const struct stat after = folder->status("f.ini");
        QCOMPARE(after.st_ino, before.st_ino);
        QCOMPARE(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    }

    void refusesWhatAnotherProgramDid()
    {
        folder->write("f.ini", "read");
        const FileDigest digest = FileSaver().read(path("f.ini")).digest;
        folder->write("f.ini", "edit"); // of the same size
        refused("f.ini", digest, "another program has changed it since it was read");
        refused("f.ini", FileDigest(), "another program has created it meanwhile");
        folder->remove("f.ini");
        refused("f.ini", digest, "it has been deleted since it was read");
    }

    void mergesWhatComesInTheLastMoment_data()
    {
        TestSupport::columns<QString, QString, bool>("call", "what", "linked");
        for (const char* what : {"replaced", "written over", "appended"}) {
            QTest::addRow("exchange, %s", what) << "rename exchange" << what << false;
            QTest::addRow("in place, %s", what) << "openat" << what << true;
        }
        QTest::newRow("created") << "rename new"
                                 << "created" << false;
        QTest::newRow("removed") << "rename exchange"
                                 << "removed" << false;
    }

    // What comes between the last look and the exchange of the files costs a second attempt and nothing else.
    void mergesWhatComesInTheLastMoment()
    {
        QFETCH(QString, call);
        QFETCH(QString, what);
        QFETCH(bool, linked);
        for (const bool merges : {true, false}) {
            const bool isNew = what == QLatin1String("created");
            folder->remove("f.ini");
            folder->remove("other.ini");
            if (!isNew)
                folder->write("f.ini", "base\n");
            if (linked)
                folder->hardLink("f.ini", "other.ini");
            MeddlingCalls calls(call.toStdString(), {[&] { meddle(what); }});
            const FileDigest digest = isNew ? FileDigest() : FileDigest::of("base\n");
            const SaveFileResult result = FileSaver(calls).save(path("f.ini"), "base\nmine\n", digest,
                                                                merges ? addLine : Files::MergeContent());
            QVERIFY(calls.hasMeddled());
            QCOMPARE(folder->leftovers(), QStringList());
            if (what == QLatin1String("removed")) {
                QCOMPARE(result.error,
                         path("f.ini") + " is not saved: it has been deleted since it was read");
                QCOMPARE(folder->content("f.ini"), std::string("(missing)"));
                continue;
            }
            const std::string theirs = what == QLatin1String("appended") ? "base\ntheirs\n" : "theirs\n";
            QCOMPARE(folder->content("f.ini"), merges ? theirs + "mine\n" : theirs);
            QVERIFY2(result.ok() == merges, result.error.c_str());
            QVERIFY(merges || result.error.find("another program has") != std::string::npos);
        }
    }

    // One program between the look and the exchange, a second before that is taken back: whatever the
    // outcome, every version is there.
    void losesNothingToSeveralPrograms()
    {
        for (const bool merges : {true, false}) {
            folder->write("f.ini", "base\n");
            MeddlingCalls calls("rename exchange", {[&] { replace("f.ini", "first\n"); },
                                                    [&] { replace("f.ini", "second\n"); }});
            const SaveFileResult result =
                FileSaver(calls).save(path("f.ini"), "base\nmine\n", FileDigest::of("base\n"),
                                      merges ? addLine : Files::MergeContent());
            QVERIFY(calls.hasMeddled());
            std::string all = folder->content("f.ini");
            for (const QString& name : folder->leftovers()) {
                QVERIFY2(result.error.find(name.toStdString()) != std::string::npos, result.error.c_str());
                all += folder->content(name.toStdString());
                folder->remove(name.toStdString());
            }
            QVERIFY2(all.find("first\n") != std::string::npos && all.find("second\n") != std::string::npos,
                     all.c_str());
        }
    }

    void savesUnderTheLongestName()
    {
        const std::string name(255, 'n');
        folder->write(name, "before");
        QCOMPARE(FileSaver().save(path(name), "after", FileDigest::of("before")).error, std::string());
        QCOMPARE(folder->content(name), std::string("after"));
    }

    void writesWhatTheMergeGives()
    {
        folder->write("f.ini", "theirs");
        const auto merge = [](const std::string& answer, const std::string& refusal) {
            return [=](const std::string& found, const FileDigest& digest) {
                const bool isRight = found == "theirs" && digest == FileDigest::of("theirs");
                return Files::MergedContent{isRight ? answer : "wrong", refusal};
            };
        };
        const FileSaver saver;
        SaveFileResult result =
            saver.save(path("f.ini"), "mine", FileDigest::of("base"), merge("", "why not"));
        QCOMPARE(result.error, path("f.ini") + " is not saved: why not");
        result = saver.save(path("f.ini"), "mine", FileDigest::of("base"), merge("theirs", ""));
        QVERIFY(result.ok() && !result.written && result.digest == FileDigest::of("theirs"));
        QCOMPARE(folder->content("f.ini"), std::string("theirs"));
        result = saver.save(path("f.ini"), "mine", FileDigest(), merge("both", ""));
        QVERIFY(result.ok() && result.written && result.digest == FileDigest::of("both"));
        QCOMPARE(folder->content("f.ini"), std::string("both"));
    }

    // Beside a file lies what only looks like ours, and what is ours.
    void sweepsOnlyItsOwn()
    {
        const QStringList foreign{
            QStringLiteral(".vantry-abcdefg.new"),  QStringLiteral(".vantry-abcdefgh"),
            QStringLiteral(".vantry-abcdefgh.ini"), QStringLiteral(".vantry-abcdefgh.new.1"),
            QStringLiteral(".vantry-ABCDEFGH.new"), QStringLiteral("x.vantry-abcdefgh.new")};
        for (const QString& name : foreign)
            folder->write(name.toStdString(), "kept");
        folder->link("f.ini", ".vantry-linklink.new");
        folder->makeFolder(".vantry-folderxx.new");
        folder->write(".vantry-damagedx.old", "no journal");
        folder->write("f.ini", "content");
        folder->write(".vantry-abcdefgh.new", "half");
        const ReadFileResult read = FileSaver().read(path("f.ini"));
        QCOMPARE(read.bytes, std::string("content"));
        QVERIFY2(read.warning.find(".vantry-damagedx.old: it is damaged") != std::string::npos,
                 read.warning.c_str());
        QCOMPARE(folder->content(".vantry-abcdefgh.new"), std::string("(missing)"));
        for (const QString& name : foreign)
            QCOMPARE(folder->content(name.toStdString()), std::string("kept"));
        QVERIFY(S_ISLNK(folder->status(".vantry-linklink.new").st_mode));
        QVERIFY(S_ISDIR(folder->status(".vantry-folderxx.new").st_mode));
    }

    // The journal of a file that has been replaced or removed since has nothing to say any more.
    void bringsBackOnlyTheSameFile()
    {
        folder->write("f.ini", "newer");
        const Files::FileJournal journal{"f.ini", folder->status("f.ini").st_ino + 1, "older"};
        folder->write(".vantry-abcdefgh.old", journal.toBytes(), 0600);
        QCOMPARE(FileSaver().read(path("f.ini")).bytes, std::string("newer"));
        QVERIFY(folder->leftovers().isEmpty());
        folder->write(".vantry-abcdefgh.old", journal.toBytes(), 0600);
        folder->remove("f.ini");
        QVERIFY(FileSaver().read(path("f.ini")).missing);
        QVERIFY(folder->leftovers().isEmpty());
    }

    // Whoever may read a folder or a file may lock it, for as long as he likes.
    void waitsForNobodysLock()
    {
        folder->write("f.ini", "content");
        for (const char* name : {"", "f.ini"}) {
            const int other = ::open(path(name).c_str(), O_RDONLY);
            QVERIFY(::flock(other, LOCK_EX) == 0);
            const ReadFileResult read = FileSaver().read(path("f.ini"));
            const SaveFileResult saved = FileSaver().save(path("f.ini"), read.bytes + '+', read.digest);
            ::close(other);
            QCOMPARE(read.error + read.warning + saved.error + saved.warning, std::string());
        }
        QCOMPARE(folder->content("f.ini"), std::string("content++"));
    }

    void clearsUpInterruptedExchanges_data()
    {
        TestSupport::columns<std::string, std::string, std::string>("present", "left", "expected");
        QTest::addColumn<std::string>("kept"); // beside it
        const auto row = [](const char* name, const char* present, const char* left, const char* expected,
                            const char* kept) {
            QTest::newRow(name) << std::string(present) << std::string(left) << std::string(expected)
                                << std::string(kept);
        };
        row("before it", "old", "new", "old", "");
        row("after it", "new", "old", "new", "");
        row("after it, which another program met", "new", "theirs", "theirs", "");
        row("before it, when another program came", "theirs", "new", "theirs", "");
        row("after it, and another program came", "theirs", "old", "theirs", "");
        row("between two other programs", "second", "first", "second", "first");
    }

    // A save was killed around its exchange of the new content for the old.
    void clearsUpInterruptedExchanges()
    {
        QFETCH(std::string, present);
        QFETCH(std::string, left);
        QFETCH(std::string, expected);
        QFETCH(std::string, kept);
        const std::string name = TemporaryName::makeExchange(FileDigest::of("old"), FileDigest::of("new"));
        folder->write("f.ini", present);
        folder->write(name, left);
        const ReadFileResult read = FileSaver().read(path("f.ini"));
        QCOMPARE(read.bytes, expected);
        QCOMPARE(folder->content("f.ini"), expected);
        QCOMPARE(folder->content(name), kept.empty() ? "(missing)" : kept);
        QVERIFY(kept.empty() || read.warning.find(name) != std::string::npos);
        QCOMPARE(read.warning.empty(), left != "theirs" && kept.empty());
    }

    // A program that counts up in a line of its own, and replaces the file each time, finds its last number
    // again whatever is saved beside it.
    void losesNoUpdateOfAnotherProgram()
    {
        folder->write("f.ini", "theirs 0\nours 0\n");
        std::atomic<bool> isOver{false};
        std::atomic<int> lost{0};
        std::thread program([&] {
            for (int count = 0; !isOver; ++count) {
                const std::string text = folder->content("f.ini");
                lost += text.compare(0, text.find('\n'), "theirs " + std::to_string(count)) == 0 ? 0 : 1;
                replace("f.ini", "theirs " + std::to_string(count + 1) + text.substr(text.find('\n')));
                std::this_thread::sleep_for(std::chrono::milliseconds(3));
            }
        });
        int merges = 0;
        for (int count = 1; count <= 150 || merges < count + 10; ++count) { // until some saves met the other
            const auto withOurs = [&](const std::string& found, const FileDigest&) {
                ++merges;
                return Files::MergedContent{
                    found.substr(0, found.find('\n') + 1) + "ours " + std::to_string(count) + '\n', {}};
            };
            const ReadFileResult read = FileSaver().read(path("f.ini"));
            const std::string bytes = withOurs(read.bytes, read.digest).bytes;
            const SaveFileResult saved = FileSaver().save(path("f.ini"), bytes, read.digest, withOurs);
            if (!saved.ok()) {
                isOver = true;
                program.join();
            }
            QVERIFY2(saved.ok(), saved.error.c_str());
        }
        isOver = true;
        program.join();
        QCOMPARE(lost.load(), 0);
        QCOMPARE(folder->leftovers(), QStringList());
    }

    // What a save that goes on has beside the file is left to it.
    void leavesWhatIsBeingSaved()
    {
        folder->write("f.ini", "before");
        QStringList seen;
        MeddlingCalls calls("rename exchange", {[&] {
                                FileSaver().read(path("f.ini"));
                                seen = folder->leftovers();
                            }});
        QCOMPARE(FileSaver(calls).save(path("f.ini"), "after", FileDigest::of("before")).error,
                 std::string());
        QCOMPARE(seen.size(), 1);
        QCOMPARE(folder->content("f.ini"), std::string("after"));
    }

    void refusesWhatIsTooLarge()
    {
        const std::uint64_t usual = Files::SizeLimit::get();
        Files::SizeLimit::set(Files::SizeLimit::bytesInMiB);
        const std::string content(Files::SizeLimit::bytesInMiB, 'x');
        folder->write("full.ini", content);
        folder->write("f.ini", "");
        QVERIFY(::truncate(path("f.ini").c_str(), off_t(4) << 40) == 0);
        const ReadFileResult full = FileSaver().read(path("full.ini"));
        const ReadFileResult huge = FileSaver().read(path("f.ini"));
        const SaveFileResult saved = FileSaver().save(path("f.ini"), "after", FileDigest());
        folder->hardLink("full.ini", "linked.ini"); // its journal is larger than the limit
        const Files::FileJournal journal{path("full.ini"), folder->status("full.ini").st_ino, content};
        folder->makeFolder("state");
        folder->makeFolder("state/vantry", 0700);
        folder->write("state/vantry/.vantry-abcdefgh.old", journal.toBytes(), 0600);
        folder->write("full.ini", "torn");
        const ReadFileResult repaired = FileSaver().read(path("linked.ini"));
        Files::SizeLimit::set(usual);
        QCOMPARE(full.error, std::string());
        const std::string reason =
            "it is larger than the limit of 1 MiB, which VANTRY_MAX_FILE_SIZE (in MiB) raises";
        QCOMPARE(huge.error, path("f.ini") + ": " + reason);
        QCOMPARE(saved.error, path("f.ini") + " is not saved: " + reason);
        QCOMPARE(folder->status("f.ini").st_size, off_t(4) << 40);
        QVERIFY2(repaired.bytes == content, repaired.error.c_str());
    }

    void losesNoUpdateOfSeveralWriters_data()
    {
        const auto row = TestSupport::columns<bool>("locks");
        row("with a place for their lock", true);
        row("in the place that all have", false);
    }

    // Each writer adds its line to what it has just read; a lost update would be a missing line.
    void losesNoUpdateOfSeveralWriters()
    {
        QFETCH(bool, locks);
        folder->makeFolder("run", 0700);
        if (locks)
            qputenv("XDG_RUNTIME_DIR", QByteArray::fromStdString(path("run")));
        folder->write("f.ini", "");
        const auto append = [this](char letter, int* done) {
            const FileSaver saver;
            while (*done < 50) {
                const ReadFileResult read = saver.read(path("f.ini"));
                if (saver.save(path("f.ini"), read.bytes + letter + '\n', read.digest).ok())
                    ++*done;
            }
        };
        int done[3] = {};
        std::thread first(append, 'a', &done[0]);
        std::thread second(append, 'b', &done[1]);
        append('c', &done[2]);
        first.join();
        second.join();
        const std::string text = folder->content("f.ini");
        for (const char letter : {'a', 'b', 'c'})
            QCOMPARE(std::count(text.begin(), text.end(), letter), std::ptrdiff_t(50));
        QVERIFY(folder->leftovers().isEmpty());
    }

private:
    void replace(const std::string& name, const std::string& bytes) const
    {
        folder->write("theirs.tmp", bytes);
        QVERIFY(::rename(path("theirs.tmp").c_str(), path(name).c_str()) == 0);
    }

    void meddle(const QString& what) const
    {
        if (what == QLatin1String("replaced"))
            replace("f.ini", "theirs\n");
        else if (what == QLatin1String("removed"))
            folder->remove("f.ini");
        else
            folder->write("f.ini", what == QLatin1String("appended") ? "base\ntheirs\n" : "theirs\n");
    }

    std::string path(const std::string& name) const { return folder->path(name); }

    void refused(const std::string& name, const FileDigest& digest, const std::string& reason)
    {
        const SaveFileResult result = FileSaver().save(path(name), "after", digest);
        QCOMPARE(result.error, path(name) + " is not saved: " + reason);
        QVERIFY(folder->leftovers().isEmpty());
    }

    std::unique_ptr<ScratchFolder> folder;
};

VANTRY_TEST_MAIN(QCoreApplication, FileSaverTest)

#include "file_saver_test.moc"
