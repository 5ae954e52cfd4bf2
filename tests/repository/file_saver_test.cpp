#include "repository/FileSaver.h"
#include "tests/support/TestRun.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cerrno>
#include <limits>
#include <memory>
#include <set>
#include <sys/xattr.h>
#include <thread>
#include <unistd.h>

using Repository::FileOps;
using Repository::FileSaver;
using Repository::FileStamp;
using Repository::ReadFileResult;
using Repository::SaveFileResult;

namespace {

// The real calls, of which the failAt-th fails: once, from then on every call of its kind, or all calls.
class FaultyOps : public FileOps
{
public:
    enum class Mode { Once, SameKind, All };

    int failAt = std::numeric_limits<int>::max();
    Mode mode = Mode::Once;
    int error = EIO;
    int calls = 0;
    std::string failedKind;

    int open(const std::string& path, int flags) override
    {
        return fails("open") ? -1 : FileOps::open(path, flags);
    }
    int openAt(int folder, const std::string& name, int flags, mode_t wanted) override
    {
        return fails("openat") ? -1 : FileOps::openAt(folder, name, flags, wanted);
    }
    int close(int descriptor) override
    {
        // The system closes the file also when it reports an error.
        const int result = FileOps::close(descriptor);
        return fails("close") ? -1 : result;
    }
    ssize_t read(int descriptor, char* to, std::size_t size) override
    {
        return fails("read") ? -1 : FileOps::read(descriptor, to, size);
    }
    ssize_t write(int descriptor, const char* from, std::size_t size) override
    {
        // A full disk takes what there is room for first.
        if (fails("write")) {
            FileOps::write(descriptor, from, size / 2);
            errno = error;
            return -1;
        }
        return FileOps::write(descriptor, from, size);
    }
    int stat(int descriptor, struct stat& result) override
    {
        return fails("fstat") ? -1 : FileOps::stat(descriptor, result);
    }
    int statAt(int folder, const std::string& name, struct stat& result) override
    {
        return fails("fstatat") ? -1 : FileOps::statAt(folder, name, result);
    }
    int accessAt(int folder, const std::string& name, int wanted) override
    {
        return fails("faccessat") ? -1 : FileOps::accessAt(folder, name, wanted);
    }
    int lock(int descriptor, int operation) override
    {
        return fails("flock") ? -1 : FileOps::lock(descriptor, operation);
    }
    int changeMode(int descriptor, mode_t wanted) override
    {
        return fails("fchmod") ? -1 : FileOps::changeMode(descriptor, wanted);
    }
    int sync(int descriptor) override { return fails("fsync") ? -1 : FileOps::sync(descriptor); }
    int renameAt(int folder, const std::string& from, const std::string& to) override
    {
        return fails("rename") ? -1 : FileOps::renameAt(folder, from, to);
    }
    int renameNewAt(int folder, const std::string& from, const std::string& to) override
    {
        return fails("rename") ? -1 : FileOps::renameNewAt(folder, from, to);
    }
    int unlinkAt(int folder, const std::string& name) override
    {
        return fails("unlink") ? -1 : FileOps::unlinkAt(folder, name);
    }
    int resolve(const std::string& path, std::string& result) override
    {
        return fails("realpath") ? -1 : FileOps::resolve(path, result);
    }
    int listExtendedAttributes(int descriptor, std::vector<std::string>& names) override
    {
        return fails("flistxattr") ? -1 : FileOps::listExtendedAttributes(descriptor, names);
    }

private:
    bool fails(const std::string& kind)
    {
        ++calls;
        if (calls == failAt)
            failedKind = kind;
        const bool later =
            calls > failAt && (mode == Mode::All || (mode == Mode::SameKind && kind == failedKind));
        if (calls != failAt && !later)
            return false;
        errno = error;
        return true;
    }
};

// Writes a few bytes at a time and is interrupted before every other call.
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

private:
    bool stumbles()
    {
        errno = EINTR;
        return ++calls % 2 == 1;
    }
    int calls = 0;
};

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

// Permissions do not bind root, as whom tests may run.
class Unprivileged
{
public:
    Unprivileged() : wasRoot(::geteuid() == 0)
    {
        if (wasRoot && ::seteuid(65534) != 0)
            qFatal("cannot become an ordinary user");
    }
    ~Unprivileged()
    {
        if (wasRoot && ::seteuid(0) != 0)
            qFatal("cannot become root again");
    }

private:
    const bool wasRoot;
};

} // namespace

Q_DECLARE_METATYPE(FaultyOps::Mode)

class FileSaverTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        QVERIFY(folder->isValid());
        QVERIFY(::chmod(folder->path().toLocal8Bit().constData(), 0777) == 0);
    }

    void readsWhatIsThere()
    {
        write("a.ini", std::string("x\0y", 3));
        const ReadFileResult read = FileSaver().read(path("a.ini"));
        QVERIFY2(read.ok(), read.error.c_str());
        QCOMPARE(read.bytes, std::string("x\0y", 3));
        QVERIFY(read.stamp.exists);
        const ReadFileResult missing = FileSaver().read(path("b.ini"));
        QVERIFY(missing.missing);
        QVERIFY(!missing.stamp.exists);
        QCOMPARE(missing.error, path("b.ini") + ": No such file or directory");
        QCOMPARE(FileSaver().read(path("")).error, path("") + ": it is a folder");
        QVERIFY(::mkfifo(path("pipe").c_str(), 0600) == 0);
        QCOMPARE(FileSaver().read(path("pipe")).error, path("pipe") + ": it is not a regular file");
    }

    void survivesEveryFault_data()
    {
        QTest::addColumn<bool>("existing");
        QTest::addColumn<int>("size");
        QTest::addColumn<FaultyOps::Mode>("mode");
        const std::pair<const char*, FaultyOps::Mode> modes[] = {{"once", FaultyOps::Mode::Once},
                                                                 {"same kind", FaultyOps::Mode::SameKind},
                                                                 {"all", FaultyOps::Mode::All}};
        for (const auto& [name, mode] : modes) {
            for (const int size : {0, 100, 20000, 300000}) {
                QTest::addRow("replaced, %s, %d", name, size) << true << size << mode;
                QTest::addRow("created, %s, %d", name, size) << false << size << mode;
            }
        }
    }

    void survivesEveryFault()
    {
        QFETCH(bool, existing);
        QFETCH(int, size);
        QFETCH(FaultyOps::Mode, mode);
        const std::string after(std::size_t(size), 'n');
        std::set<std::string> refusedAt;
        int successes = 0;
        for (int n = 1; successes < 1; ++n) {
            QVERIFY2(n < 1000, "the save never gets through");
            QFile::remove(QString::fromStdString(path("f.ini")));
            if (existing)
                write("f.ini", "before");
            const FileStamp stamp = FileSaver().read(path("f.ini")).stamp;
            FaultyOps ops;
            ops.failAt = n;
            ops.mode = mode;
            ops.error = n % 2 == 0 ? EIO : ENOSPC;
            const SaveFileResult result = FileSaver(ops).save(path("f.ini"), after, stamp);
            const bool faultHappened = ops.calls >= n;
            successes += faultHappened ? 0 : 1;
            QVERIFY(faultHappened || result.ok());
            if (result.ok()) {
                QCOMPARE(content("f.ini"), after);
                QVERIFY(result.stamp == FileSaver().read(path("f.ini")).stamp);
                // Only the folder's sync and what is beside the content may fail, and not in silence.
                QVERIFY(!faultHappened || ops.failedKind == "close" || !result.warning.empty());
                QVERIFY2(!faultHappened || ops.failedKind == "close" || ops.failedKind == "fsync" ||
                             ops.failedKind == "flistxattr",
                         ops.failedKind.c_str());
            } else {
                refusedAt.insert(ops.failedKind);
                QCOMPARE(content("f.ini"), std::string(existing ? "before" : "(missing)"));
                QVERIFY2(result.error.find(path("f.ini")) == 0, result.error.c_str());
            }
            const bool couldClean = mode != FaultyOps::Mode::All;
            QVERIFY(!couldClean || strayFiles().isEmpty());
            removeStrayFiles();
        }
        for (const char* kind : {"open", "openat", "flock", "fsync", "close", "rename", "realpath"})
            QVERIFY2(refusedAt.count(kind) == 1, kind);
        QCOMPARE(refusedAt.count("write"), std::size_t(size > 0 ? 1 : 0));
        QCOMPARE(refusedAt.count("fchmod"), std::size_t(existing ? 1 : 0));
    }

    void namesTheReason()
    {
        FaultyOps ops;
        ops.error = ENOSPC;
        ops.failAt = 0;
        ops.mode = FaultyOps::Mode::SameKind;
        SaveFileResult result;
        while (ops.failedKind != "write") {
            QVERIFY(++ops.failAt < 100);
            write("f.ini", "before");
            ops.calls = 0;
            result = FileSaver(ops).save(path("f.ini"), "after", FileSaver().read(path("f.ini")).stamp);
        }
        QCOMPARE(result.error, path("f.ini") + " is not saved: the new content cannot be written: "
                                               "No space left on device");
    }

    void finishesInSmallSteps()
    {
        write("f.ini", "a line that is longer than one step");
        StumblingOps ops;
        const ReadFileResult read = FileSaver(ops).read(path("f.ini"));
        QCOMPARE(read.bytes, content("f.ini"));
        const std::string after(1000, 'x');
        const SaveFileResult result = FileSaver(ops).save(path("f.ini"), after, read.stamp);
        QVERIFY2(result.ok(), result.error.c_str());
        QCOMPARE(content("f.ini"), after);
    }

    void touchesNothingWithoutNeed()
    {
        write("f.ini", "same");
        struct stat before = {};
        struct stat after = {};
        QVERIFY(::stat(path("f.ini").c_str(), &before) == 0);
        // Also when the stamp is of something else: the file holds what is wanted.
        const SaveFileResult result = FileSaver().save(path("f.ini"), "same", FileStamp());
        QVERIFY(result.ok());
        QVERIFY(!result.written);
        QVERIFY(::stat(path("f.ini").c_str(), &after) == 0);
        QCOMPARE(after.st_ino, before.st_ino);
        QCOMPARE(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    }

    void refusesWhatAnotherProgramDid()
    {
        write("f.ini", "read");
        const FileStamp stamp = FileSaver().read(path("f.ini")).stamp;
        write("f.ini", "edit"); // of the same size
        refused("f.ini", stamp, "another program has changed it since it was read");
        refused("f.ini", FileStamp(), "another program has created it meanwhile");
        QFile::remove(QString::fromStdString(path("f.ini")));
        refused("f.ini", stamp, "it is gone since it was read");

        write("f.ini", "read");
        MeddlingOps ops;
        ops.path = path("f.ini");
        const SaveFileResult late = FileSaver(ops).save(path("f.ini"), "mine", stamp);
        QCOMPARE(late.error,
                 path("f.ini") + " is not saved: another program has changed it while it was being saved");
        QCOMPARE(content("f.ini"), std::string("theirs"));
        ops.path = path("new.ini");
        QVERIFY(!FileSaver(ops).save(path("new.ini"), "mine", FileStamp()).ok());
        QCOMPARE(content("new.ini"), std::string("theirs"));
        QVERIFY(strayFiles().isEmpty());
    }

    void followsLinks()
    {
        QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("real")));
        write("real/f.ini", "before");
        link("real/f.ini", "inner");
        link("inner", "outer");
        link("real/new.ini", "dangling");
        saved("outer");
        saved("dangling");
        QVERIFY(isLink("outer") && isLink("inner") && isLink("dangling"));
        QCOMPARE(content("real/f.ini"), std::string("after"));
        QCOMPARE(content("real/new.ini"), std::string("after"));
        link("loop2", "loop1");
        link("loop1", "loop2");
        refused("loop1", FileStamp(), "Too many levels of symbolic links");
        QVERIFY(isLink("loop1"));
        refused("nowhere/f.ini", FileStamp(), "No such file or directory");
    }

    void refusesWhatItCannotReplace()
    {
        QVERIFY(::mkfifo(path("pipe").c_str(), 0600) == 0);
        refused("pipe", FileStamp(), "it is not a regular file");
        QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("sub")));
        refused("sub", FileStamp(), "it is a folder");
        write("one", "before");
        QVERIFY(::link(path("one").c_str(), path("two").c_str()) == 0);
        refused("two", FileSaver().read(path("two")).stamp,
                "it has 2 names (hard links), which replacing it would part");
        QCOMPARE(content("one"), std::string("before"));
    }

    void keepsPermissions_data()
    {
        QTest::addColumn<int>("mode");
        for (const int mode : {0600, 0644, 0666, 02640, 04755})
            QTest::addRow("%o", mode) << mode;
    }

    void keepsPermissions()
    {
        QFETCH(int, mode);
        write("f.ini", "before");
        QVERIFY(::chmod(path("f.ini").c_str(), mode_t(mode)) == 0);
        if (::geteuid() == 0)
            QVERIFY(::chown(path("f.ini").c_str(), 1234, 4321) == 0 &&
                    ::chmod(path("f.ini").c_str(), mode_t(mode)) == 0);
        struct stat before = {};
        struct stat after = {};
        QVERIFY(::stat(path("f.ini").c_str(), &before) == 0);
        saved("f.ini");
        QVERIFY(::stat(path("f.ini").c_str(), &after) == 0);
        QVERIFY(after.st_ino != before.st_ino);
        QCOMPARE(int(after.st_mode & 07777), mode);
        QCOMPARE(after.st_uid, before.st_uid);
        QCOMPARE(after.st_gid, before.st_gid);
    }

    void givesANewFileTheUsualMode()
    {
        const mode_t usual = ::umask(027);
        const SaveFileResult result = FileSaver().save(path("new.ini"), "after", FileStamp());
        ::umask(usual);
        struct stat status = {};
        QVERIFY(result.ok() && ::stat(path("new.ini").c_str(), &status) == 0);
        QCOMPARE(int(status.st_mode & 07777), 0640);
    }

    void keepsExtendedAttributes()
    {
        write("f.ini", "before");
        if (::setxattr(path("f.ini").c_str(), "user.note", "kept", 4, 0) != 0)
            QSKIP("this file system has no extended attributes");
        saved("f.ini");
        char value[10] = {};
        QCOMPARE(::getxattr(path("f.ini").c_str(), "user.note", value, sizeof value), ssize_t(4));
        QCOMPARE(value, "kept");
    }

    void bowsToPermissions()
    {
        write("theirs.ini", "before");
        write("readonly.ini", "before");
        QVERIFY(::chmod(path("theirs.ini").c_str(), 0666) == 0);
        QVERIFY(::chmod(path("readonly.ini").c_str(), 0444) == 0);
        const FileStamp stamp = FileSaver().read(path("theirs.ini")).stamp;
        const bool foreign = ::geteuid() == 0;
        const Unprivileged user;
        refused("readonly.ini", stamp, "it is not writable: Permission denied");
        if (foreign)
            refused("theirs.ini", stamp, "its owner and group cannot be kept: Operation not permitted");
        QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("locked")));
        QVERIFY(::chmod(path("locked").c_str(), 0555) == 0);
        refused("locked/f.ini", FileStamp(), "a new file cannot be created in its folder: Permission denied");
        QVERIFY(::chmod(path("locked").c_str(), 0755) == 0);
    }

    void savesUnderTheLongestName()
    {
        const std::string name(255, 'n');
        write(name, "before");
        saved(name);
    }

    // Each writer adds its line to what it has just read; a lost update would be a missing line.
    void losesNoUpdateOfSeveralWriters()
    {
        write("f.ini", "");
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
        const std::string text = content("f.ini");
        for (const char letter : {'a', 'b', 'c'})
            QCOMPARE(std::count(text.begin(), text.end(), letter), std::ptrdiff_t(50));
        QVERIFY(strayFiles().isEmpty());
    }

private:
    std::string path(const std::string& name) const { return folder->path().toStdString() + '/' + name; }

    void write(const std::string& name, const std::string& bytes)
    {
        QFile file(QString::fromStdString(path(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), qint64(bytes.size()));
    }

    std::string content(const std::string& name) const
    {
        QFile file(QString::fromStdString(path(name)));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(missing)";
    }

    void link(const std::string& target, const std::string& name)
    {
        QVERIFY(::symlink(target.c_str(), path(name).c_str()) == 0);
    }

    bool isLink(const std::string& name) const
    {
        return QFileInfo(QString::fromStdString(path(name))).isSymLink();
    }

    QStringList strayFiles() const
    {
        return QDir(folder->path())
            .entryList({QLatin1String(FileSaver::temporaryPrefix) + QLatin1Char('*')},
                       QDir::Files | QDir::Hidden);
    }

    void removeStrayFiles()
    {
        const QStringList strays = strayFiles();
        for (const QString& name : strays)
            QFile::remove(folder->filePath(name));
    }

    void saved(const std::string& name)
    {
        const ReadFileResult read = FileSaver().read(path(name));
        const SaveFileResult result = FileSaver().save(path(name), "after", read.stamp);
        QVERIFY2(result.ok(), result.error.c_str());
        QCOMPARE(result.warning, std::string());
        QVERIFY(result.written);
        QCOMPARE(content(name), std::string("after"));
    }

    void refused(const std::string& name, const FileStamp& stamp, const std::string& reason)
    {
        const SaveFileResult result = FileSaver().save(path(name), "after", stamp);
        QCOMPARE(result.error, path(name) + " is not saved: " + reason);
        QVERIFY(strayFiles().isEmpty());
    }

    std::unique_ptr<QTemporaryDir> folder;
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<QCoreApplication, FileSaverTest>(argc, argv);
}

#include "file_saver_test.moc"
