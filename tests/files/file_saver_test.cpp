#include "files/FileJournal.h"
#include "tests/files/ScratchFolder.h"
#include "tests/support/TestRun.h"

#include <algorithm>
#include <fcntl.h>
#include <future>
#include <memory>
#include <sys/file.h>
#include <thread>

using Files::FileOps;
using Files::FileSaver;
using Files::FileStamp;
using Files::ReadFileResult;
using Files::SaveFileResult;
using TestSupport::ScratchFolder;

namespace {

// Another program that changes the file at the last moment: after the new content was written.
class MeddlingOps : public FileOps
{
public:
    std::string path;

    int sync(int descriptor) override
    {
        if (!path.empty()) {
            QFile file(QString::fromStdString(std::exchange(path, {})));
            file.open(QIODevice::WriteOnly);
            file.write("theirs");
        }
        return FileOps::sync(descriptor);
    }
};

} // namespace

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
        QVERIFY(read.stamp.exists);
        const ReadFileResult missing = FileSaver().read(path("b.ini"));
        QVERIFY(missing.missing);
        QVERIFY(!missing.stamp.exists);
        QCOMPARE(missing.error, path("b.ini") + ": No such file or directory");
        QCOMPARE(FileSaver().read(path("")).error, path("") + ": it is a folder");
    }

    void touchesNothingWithoutNeed()
    {
        folder->write("f.ini", "same");
        const struct stat before = folder->status("f.ini");
        // Also when the stamp is of something else: the file holds what is wanted.
        const SaveFileResult result = FileSaver().save(path("f.ini"), "same", FileStamp());
        QVERIFY(result.ok());
        QVERIFY(!result.written);
        const struct stat after = folder->status("f.ini");
        QCOMPARE(after.st_ino, before.st_ino);
        QCOMPARE(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    }

    void refusesWhatAnotherProgramDid()
    {
        folder->write("f.ini", "read");
        const FileStamp stamp = FileSaver().read(path("f.ini")).stamp;
        folder->write("f.ini", "edit"); // of the same size
        refused("f.ini", stamp, "another program has changed it since it was read");
        refused("f.ini", FileStamp(), "another program has created it meanwhile");
        folder->remove("f.ini");
        refused("f.ini", stamp, "it is gone since it was read");

        folder->write("f.ini", "read");
        MeddlingOps ops;
        ops.path = path("f.ini");
        const SaveFileResult late = FileSaver(ops).save(path("f.ini"), "mine", stamp);
        QCOMPARE(late.error,
                 path("f.ini") + " is not saved: another program has changed it while it was being saved");
        QCOMPARE(folder->content("f.ini"), std::string("theirs"));
        ops.path = path("new.ini");
        QVERIFY(!FileSaver(ops).save(path("new.ini"), "mine", FileStamp()).ok());
        QCOMPARE(folder->content("new.ini"), std::string("theirs"));

        folder->write("f.ini", "read");
        folder->hardLink("f.ini", "other.ini"); // so that it is written over in its place
        ops.path = path("f.ini");
        QVERIFY(!FileSaver(ops).save(path("f.ini"), "mine", stamp).ok());
        QCOMPARE(folder->content("other.ini"), std::string("theirs"));
        QVERIFY(folder->leftovers().isEmpty());
    }

    void savesUnderTheLongestName()
    {
        const std::string name(255, 'n');
        folder->write(name, "before");
        QCOMPARE(FileSaver().save(path(name), "after", FileStamp::of("before")).error, std::string());
        QCOMPARE(folder->content(name), std::string("after"));
    }

    void writesWhatTheMergeGives()
    {
        folder->write("f.ini", "theirs");
        const auto merge = [](const std::string& answer, const std::string& refusal) {
            return [=](const std::string& found, const FileStamp& stamp) {
                const bool isRight = found == "theirs" && stamp == FileStamp::of("theirs");
                return Files::MergedContent{isRight ? answer : "wrong", refusal};
            };
        };
        const FileSaver saver;
        SaveFileResult result =
            saver.save(path("f.ini"), "mine", FileStamp::of("base"), merge("", "why not"));
        QCOMPARE(result.error, path("f.ini") + " is not saved: why not");
        result = saver.save(path("f.ini"), "mine", FileStamp::of("base"), merge("theirs", ""));
        QVERIFY(result.ok() && !result.written && result.stamp == FileStamp::of("theirs"));
        QCOMPARE(folder->content("f.ini"), std::string("theirs"));
        result = saver.save(path("f.ini"), "mine", FileStamp(), merge("both", ""));
        QVERIFY(result.ok() && result.written && result.stamp == FileStamp::of("both"));
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

    // A save that hangs keeps nobody from reading.
    void readsWhatIsLocked()
    {
        folder->write("f.ini", "content");
        const int other = ::open(folder->path().c_str(), O_RDONLY | O_DIRECTORY);
        QVERIFY(::flock(other, LOCK_EX) == 0);
        auto saving = std::async(std::launch::async, [this] {
            return FileSaver().save(path("f.ini"), "after", FileStamp::of("content"));
        });
        const ReadFileResult read = FileSaver().read(path("f.ini"));
        const SaveFileResult result = saving.get();
        ::close(other);
        QCOMPARE(read.bytes, std::string("content"));
        QVERIFY2(read.warning.find("its folder cannot be locked") != std::string::npos, read.warning.c_str());
        QCOMPARE(result.error, path("f.ini") +
                                   " is not saved: its folder cannot be locked: Resource temporarily "
                                   "unavailable");
    }

    // Each writer adds its line to what it has just read; a lost update would be a missing line.
    void losesNoUpdateOfSeveralWriters()
    {
        folder->write("f.ini", "");
        const auto append = [this](char letter, int* done) {
            const FileSaver saver;
            while (*done < 50) {
                const ReadFileResult read = saver.read(path("f.ini"));
                if (saver.save(path("f.ini"), read.bytes + letter + '\n', read.stamp).ok())
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
    std::string path(const std::string& name) const { return folder->path(name); }

    void refused(const std::string& name, const FileStamp& stamp, const std::string& reason)
    {
        const SaveFileResult result = FileSaver().save(path(name), "after", stamp);
        QCOMPARE(result.error, path(name) + " is not saved: " + reason);
        QVERIFY(folder->leftovers().isEmpty());
    }

    std::unique_ptr<ScratchFolder> folder;
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<QCoreApplication, FileSaverTest>(argc, argv);
}

#include "file_saver_test.moc"
