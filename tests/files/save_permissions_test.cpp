#include "files/FileJournal.h"
#include "tests/files/ChildProcess.h"
#include "tests/files/InterceptedCalls.h"
#include "tests/files/ScratchFolder.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"
#include "tests/support/Unprivileged.h"

#include <fcntl.h>
#include <memory>
#include <sched.h>
#include <sys/mount.h>
#include <sys/xattr.h>

using Files::FileDigest;
using Files::FileSaver;
using Files::ReadFileResult;
using Files::SaveFileResult;
using TestSupport::ChildProcess;
using TestSupport::ScratchFolder;
using TestSupport::Unprivileged;

namespace {

bool isRoot()
{
    return ::geteuid() == 0;
}

// Mounts that nobody but this process sees, which cannot come back from there.
bool entersOwnMounts()
{
    return ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

// Without root, or in a container that does not let even root mount, there is no row that would need it.
bool canMount()
{
    return ChildProcess::outputOf([] {
               const ScratchFolder folder;
               const bool mounts = entersOwnMounts() &&
                                   ::mount("none", folder.path().c_str(), "tmpfs", 0, "size=64k") == 0 &&
                                   ::umount(folder.path().c_str()) == 0;
               return std::string(mounts ? "yes" : "no");
           }) == "yes";
}

// A disk that takes no byte more.
class FullDiskOps : public Files::SystemCalls
{
public:
    ssize_t write(int, const char*, std::size_t) override
    {
        errno = ENOSPC;
        return -1;
    }
};

// Before one of the calls a link to "victim" takes the place of the folder "sub".
class SwappingCalls : public TestSupport::InterceptedCalls
{
public:
    SwappingCalls(const ScratchFolder& scratch, int momentOfSwap) : folder(scratch), moment(momentOfSwap) {}

    bool hasSwapped() const { return count > moment; }

protected:
    int before(const char*) override
    {
        if (count++ == moment) {
            ::rename(folder.path("sub").c_str(), folder.path("gone").c_str());
            folder.link("victim", "sub");
        }
        return 0;
    }
    void after(const char*) override {}

private:
    const ScratchFolder& folder;
    const int moment;
    int count = 0;
};

// An access list as the kernel takes it: owner, user 12345, group, mask, others.
std::string accessList()
{
    const unsigned char bytes[] = {2,    0,    0,    0,    1,    0,    6,    0,    0xff, 0xff, 0xff,
                                   0xff, 2,    0,    6,    0,    0x39, 0x30, 0,    0,    4,    0,
                                   4,    0,    0xff, 0xff, 0xff, 0xff, 0x10, 0,    6,    0,    0xff,
                                   0xff, 0xff, 0xff, 0x20, 0,    4,    0,    0xff, 0xff, 0xff, 0xff};
    return std::string(reinterpret_cast<const char*>(bytes), sizeof bytes);
}

bool setAttribute(const std::string& path, const char* name, const std::string& value)
{
    return ::setxattr(path.c_str(), name, value.data(), value.size(), 0) == 0;
}

std::string attribute(const std::string& path, const char* name)
{
    char value[100] = {};
    const ssize_t size = ::getxattr(path.c_str(), name, value, sizeof value);
    return size < 0 ? "(none)" : std::string(value, std::size_t(size));
}

} // namespace

// What a save does with links, kinds of files, permissions, owners and mounts.
class SavePermissionsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { folder = std::make_unique<ScratchFolder>(); }

    void followsLinks()
    {
        folder->makeFolder("real");
        folder->write("real/f.ini", "before");
        folder->link("real/f.ini", "inner");
        folder->link("inner", "outer");
        folder->link("real/new.ini", "dangling");
        saved("outer");
        saved("dangling");
        for (const char* name : {"outer", "inner", "dangling"})
            QVERIFY(S_ISLNK(folder->status(name).st_mode));
        QCOMPARE(folder->content("real/f.ini"), std::string("after"));
        QCOMPARE(folder->content("real/new.ini"), std::string("after"));
        folder->link("loop2", "loop1");
        folder->link("loop1", "loop2");
        refused("loop1", "Too many levels of symbolic links");
        QVERIFY(S_ISLNK(folder->status("loop1").st_mode));
        refused("nowhere/f.ini", "No such file or directory");
    }

    // A writer that waits for somebody to read from its pipe goes on waiting.
    void doesNotTouchWhatIsNoFile()
    {
        folder->makeFolder("sub");
        QVERIFY(::mkfifo(folder->path("pipe").c_str(), 0600) == 0);
        folder->link("pipe", "link");
        for (const auto& [name, reason] : {std::pair("sub", "it is a folder"),
                                           {"pipe", "it is not a regular file"},
                                           {"link", "it is not a regular file"}}) {
            refused(name, reason);
            QCOMPARE(FileSaver().read(folder->path(name)).error, folder->path(name) + ": " + reason);
        }
        ChildProcess writer([this](int) { return ::open(folder->path("pipe").c_str(), O_WRONLY); });
        QVERIFY(!FileSaver().read(folder->path("pipe")).ok());
        QVERIFY(::open(folder->path("pipe").c_str(), O_WRONLY | O_NONBLOCK) < 0);
        for (const char* device : {"/dev/null", "/dev/tty"})
            QCOMPARE(FileSaver().read(device).error, device + std::string(": it is not a regular file"));
    }

    void keepsPermissions_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("foreign");
        for (const int mode : {0600, 0644, 0666, 02640, 02755, 04755}) {
            QTest::addRow("%o", mode) << mode << false;
            if (isRoot())
                QTest::addRow("%o of another", mode) << mode << true;
        }
    }

    // As an ordinary user too, from whose files the system takes the set-id bits when they are written to;
    // root keeps them, and others' owner.
    void keepsPermissions()
    {
        QFETCH(int, mode);
        QFETCH(bool, foreign);
        const auto user = foreign ? nullptr : std::make_unique<Unprivileged>();
        for (const bool linked : {false, true}) {
            const std::string name = linked ? "linked.ini" : "single.ini";
            folder->write(name, "before");
            if (foreign)
                QVERIFY(::chown(folder->path(name).c_str(), 1234, 4321) == 0);
            QVERIFY(::chmod(folder->path(name).c_str(), mode_t(mode)) == 0);
            if (linked)
                folder->hardLink(name, "other.ini");
            const struct stat before = folder->status(name);
            const SaveFileResult result =
                FileSaver().save(folder->path(name), "after", FileDigest::of("before"));
            QVERIFY2(result.ok(), result.error.c_str());
            const struct stat after = folder->status(name);
            QCOMPARE(after.st_ino == before.st_ino, linked);
            QCOMPARE(int(after.st_mode & 07777), mode);
            QCOMPARE(after.st_uid, before.st_uid);
            QCOMPARE(after.st_gid, before.st_gid);
        }
    }

    void givesANewFileTheUsualMode()
    {
        const mode_t usual = ::umask(027);
        saved("new.ini");
        FileSaver().save(folder->path("private.ini"), "after", FileDigest(), {}, 0600);
        ::umask(usual);
        QCOMPARE(int(folder->status("new.ini").st_mode & 07777), 0640);
        QCOMPARE(int(folder->status("private.ini").st_mode & 07777), 0600);
    }

    void keepsAttributesAndAccessLists()
    {
        folder->write("f.ini", "before", 0664);
        folder->write("plain.ini", "before", 0644);
        const std::string path = folder->path("f.ini");
        if (!setAttribute(path, "user.note", "kept") ||
            !setAttribute(path, "system.posix_acl_access", accessList()))
            qInfo("not tried: this file system has no attributes that could be lost");
        if (attribute(path, "system.posix_acl_access") != accessList())
            return;
        QVERIFY(setAttribute(folder->path(), "system.posix_acl_default", accessList()));
        saved("f.ini");
        QCOMPARE(attribute(path, "user.note"), std::string("kept"));
        QCOMPARE(attribute(path, "system.posix_acl_access"), accessList());
        // The folder's list would let a user in whom this file keeps out.
        saved("plain.ini");
        QCOMPARE(attribute(folder->path("plain.ini"), "system.posix_acl_access"), std::string("(none)"));
    }

    void writesInPlace_data()
    {
        const auto row = TestSupport::columns<QString, QString>("kind", "reason");
        row("hard link", "linked", "it has 2 names (hard links)");
        row("unwritable folder", "closed", "a new file cannot be created in its folder: Permission denied");
        if (!isRoot())
            return;
        row("another's file", "foreign", "its owner and group cannot be kept: Operation not permitted");
        row("another's file in a sticky folder", "sticky",
            "its owner and group cannot be kept: Operation not permitted");
        if (!canMount())
            return;
        row("mounted file", "mounted", "the new file cannot take its place: Device or resource busy");
        row("writable file in a read-only mount", "island",
            "a new file cannot be created in its folder: Read-only file system");
    }

    void writesInPlace()
    {
        QFETCH(QString, kind);
        QFETCH(QString, reason);
        folder->makeFolder("sub", kind == QLatin1String("sticky") ? 01777 : 0777);
        folder->write("sub/f.ini", std::string(1000, 'b'), 0666);
        const std::string error = ChildProcess::outputOf([&] {
            const std::string prepared = prepareInPlace(kind.toStdString());
            const std::string path = folder->path("sub/f.ini");
            const struct stat before = folder->status("sub/f.ini");
            const FileDigest digest = FileSaver().read(path).digest;
            const SaveFileResult result = FileSaver().save(path, "after", digest);
            const std::string warning = "it was written in place, since " + reason.toStdString();
            const bool isSame = folder->status("sub/f.ini").st_ino == before.st_ino;
            return prepared + result.error + (result.warning == warning ? "" : result.warning) +
                   (isSame ? "" : "another inode") +
                   (folder->content("sub/f.ini") == "after" ? "" : "not written");
        });
        QVERIFY(::chmod(folder->path("sub").c_str(), 0777) == 0);
        QCOMPARE(error, std::string());
        QVERIFY(folder->leftovers().isEmpty());
    }

    void bowsToPermissions()
    {
        folder->makeFolder("sub");
        folder->write("sub/f.ini", "before", 0444);
        folder->write("sub/secret.ini", "before", 0600);
        const bool foreign = isRoot();
        const Unprivileged user;
        refused("sub/f.ini", "it is not writable: Permission denied");
        if (foreign) {
            refused("sub/secret.ini", "it cannot be opened: Permission denied");
            QCOMPARE(FileSaver().read(folder->path("sub/secret.ini")).error,
                     folder->path("sub/secret.ini") + ": it cannot be opened: Permission denied");
        }
        folder->makeFolder("locked", 0555);
        refused("locked/f.ini", "a new file cannot be created in its folder: Permission denied");
    }

    // Reading needs no more than the file's own permission, whatever else the folder holds.
    void readsWhereNothingMayBeWritten()
    {
        folder->makeFolder("sub");
        folder->write("sub/f.ini", "content");
        folder->write("sub/.vantry-abcdefgh.new", "half");
        for (const mode_t mode : {0555U, 0111U}) {
            QVERIFY(::chmod(folder->path("sub").c_str(), mode) == 0);
            const Unprivileged user;
            const ReadFileResult read = FileSaver().read(folder->path("sub/f.ini"));
            QCOMPARE(read.error + read.warning, std::string());
            QCOMPARE(read.bytes, std::string("content"));
        }
        QVERIFY(::chmod(folder->path("sub").c_str(), 0777) == 0);
    }

    void writesOnlyForJournalsOfItsOwn_data()
    {
        const auto row = TestSupport::columns<unsigned, unsigned, unsigned, bool, bool, QString>(
            "user", "journalOwner", "fileOwner", "saves", "isRestored", "warning");
        const unsigned me = ::geteuid();
        const QString restored = QStringLiteral("it holds again what it held before");
        row("one's own, read", me, me, me, false, true, restored);
        row("one's own, saved", me, me, me, true, true, restored);
        if (!isRoot())
            return;
        const unsigned nobody = 65534;
        const QString strange = QStringLiteral("it is another user's");
        const QString others = QStringLiteral("by another user (%1) was interrupted");
        row("the file owner's, read by root", 0U, 1234U, 1234U, false, false, others.arg(1234));
        row("the file owner's, saved by root", 0U, 1234U, 1234U, true, true, restored);
        row("a stranger's, read by root", 0U, 1234U, 0U, false, false, strange);
        row("a stranger's, saved by root", 0U, 1234U, 0U, true, false, strange);
        row("root's, read by the owner", nobody, 0U, nobody, false, false, others.arg(0));
        row("a stranger's, read by the owner", nobody, 1234U, nobody, false, false, strange);
    }

    // Anybody may put a journal into an open folder; nobody must write for him what he could not, and who
    // only reads writes for nobody else at all.
    void writesOnlyForJournalsOfItsOwn()
    {
        QFETCH(unsigned, user);
        QFETCH(unsigned, journalOwner);
        QFETCH(unsigned, fileOwner);
        QFETCH(bool, saves);
        QFETCH(bool, isRestored);
        QFETCH(QString, warning);
        folder->write("f.ini", "content");
        const Files::FileJournal journal{"f.ini", folder->status("f.ini").st_ino, "journal"};
        folder->write(".vantry-abcdefgh.old", journal.toBytes());
        if (isRoot()) {
            QVERIFY(::chown(folder->path(".vantry-abcdefgh.old").c_str(), journalOwner, journalOwner) == 0);
            QVERIFY(::chown(folder->path("f.ini").c_str(), fileOwner, fileOwner) == 0);
        }
        const std::string held = isRestored ? "journal" : "content";
        std::string told;
        {
            const auto unprivileged = user == 0 ? nullptr : std::make_unique<Unprivileged>();
            const std::string path = folder->path("f.ini");
            if (saves) {
                const SaveFileResult saved = FileSaver().save(path, "after", FileDigest::of(held));
                QCOMPARE(saved.error, std::string());
                told = saved.warning;
            } else {
                const ReadFileResult read = FileSaver().read(path);
                QCOMPARE(read.bytes, held);
                told = read.warning;
            }
        }
        QCOMPARE(folder->content("f.ini"), saves ? "after" : held);
        QVERIFY2(told.find(warning.toStdString()) != std::string::npos, told.c_str());
        QCOMPARE(folder->content(".vantry-abcdefgh.old"), isRestored ? "(missing)" : journal.toBytes());
    }

    void leavesTheFolderForNobody_data()
    {
        const auto row = TestSupport::columns<bool>("saves");
        row("read", false);
        row("saved", true);
    }

    // Whoever owns a folder may put a link to another one in its place between any two calls.
    void leavesTheFolderForNobody()
    {
        QFETCH(bool, saves);
        folder->makeFolder("victim");
        folder->write("victim/f.ini", "victim's");
        int moment = 0;
        for (bool isSwapped = true; isSwapped; ++moment) {
            folder->makeFolder("sub");
            folder->write("sub/f.ini", "torn");
            const Files::FileJournal journal{"f.ini", folder->status("sub/f.ini").st_ino, "journal"};
            folder->write("sub/.vantry-abcdefgh.old", journal.toBytes());
            SwappingCalls calls(*folder, moment);
            if (saves)
                FileSaver(calls).save(folder->path("sub/f.ini"), "after", FileDigest::of("journal"));
            else
                FileSaver(calls).read(folder->path("sub/f.ini"));
            QCOMPARE(folder->content("victim/f.ini"), std::string("victim's"));
            QCOMPARE(QDir(QString::fromStdString(folder->path("victim")))
                         .entryList(QDir::Files | QDir::Hidden)
                         .size(),
                     1);
            isSwapped = calls.hasSwapped();
            QDir(QString::fromStdString(folder->path("gone"))).removeRecursively();
            if (isSwapped)
                folder->remove("sub");
            else
                QDir(QString::fromStdString(folder->path("sub"))).removeRecursively();
        }
        QVERIFY2(moment > 15, "hardly a call was met");
    }

    // Others may have been let into it, or it may have been made by an older system.
    void closesTheStateFolder()
    {
        folder->makeFolder("state");
        folder->makeFolder("state/vantry", 0777);
        folder->write("f.ini", "content");
        QVERIFY(FileSaver().read(folder->path("f.ini")).ok());
        QCOMPARE(int(folder->status("state/vantry").st_mode & 07777), 0700);
    }

    void keepsNoCopyAtAStrangers_data()
    {
        const auto row = TestSupport::columns<bool>("strange");
        row("one's own", false);
        if (isRoot())
            row("a stranger's", true);
    }

    // The folder for copies of files that are written over holds what only their owner may read.
    void keepsNoCopyAtAStrangers()
    {
        QFETCH(bool, strange);
        folder->write("f.ini", "before");
        folder->hardLink("f.ini", "other.ini");
        folder->makeFolder("state");
        folder->makeFolder("state/vantry", 0700);
        if (strange)
            QVERIFY(::chown(folder->path("state/vantry").c_str(), 1234, 1234) == 0);
        const SaveFileResult saved =
            FileSaver().save(folder->path("f.ini"), "after", FileDigest::of("before"));
        QCOMPARE(folder->content("other.ini"), std::string(strange ? "before" : "after"));
        QVERIFY2(saved.ok() || saved.error.find("belongs to another user") != std::string::npos,
                 saved.error.c_str());
    }

    void survivesAFullDisk_data()
    {
        TestSupport::columns<int, bool, bool>("size", "linked", "real");
        for (const int size : {1, 100, 4096, 15000, 20000, 200000}) {
            for (const bool linked : {false, true}) {
                QTest::addRow("%d, linked %d", size, linked) << size << linked << false;
                if (canMount())
                    QTest::addRow("%d, linked %d, a real disk", size, linked) << size << linked << true;
            }
        }
    }

    void survivesAFullDisk()
    {
        QFETCH(int, size);
        QFETCH(bool, linked);
        QFETCH(bool, real);
        const std::string error = ChildProcess::outputOf([&]() -> std::string {
            if (real && (!entersOwnMounts() ||
                         ::mount("none", folder->path().c_str(), "tmpfs", 0, "size=64k,mode=777") != 0))
                return "no disk";
            return saveOntoFullDisk(std::string(std::size_t(size), 'a'), linked, real);
        });
        QCOMPARE(error, std::string());
    }

private:
    // Makes sub/f.ini one that cannot be replaced, by this process.
    std::string prepareInPlace(const std::string& kind) const
    {
        const std::string file = folder->path("sub/f.ini");
        const std::string above = folder->path("sub");
        bool done = true;
        if (kind == "linked")
            folder->hardLink("sub/f.ini", "g.ini");
        else if (kind == "closed")
            done = ::chmod(above.c_str(), 0555) == 0;
        else if (kind == "mounted" || kind == "island")
            done = entersOwnMounts() && ::mount(file.c_str(), file.c_str(), nullptr, MS_BIND, nullptr) == 0;
        if (kind == "island")
            done = done && ::mount(above.c_str(), above.c_str(), nullptr, MS_BIND, nullptr) == 0 &&
                   ::mount(file.c_str(), file.c_str(), nullptr, MS_BIND, nullptr) == 0 &&
                   ::mount(nullptr, above.c_str(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr) == 0;
        else if (kind != "mounted" && isRoot())
            done = done && ::setgid(65534) == 0 && ::setuid(65534) == 0;
        return done ? "" : "not prepared";
    }

    std::string saveOntoFullDisk(const std::string& after, bool linked, bool real) const
    {
        const std::string path = folder->path("f.ini");
        const FileDigest digest = FileDigest::of("before");
        folder->write("f.ini", "before");
        if (linked)
            folder->hardLink("f.ini", "g.ini");
        if (real)
            folder->write("full", std::string(100000, 'x'));
        FullDiskOps full;
        const SaveFileResult result =
            FileSaver(real ? Files::SystemCalls::system() : full).save(path, after, digest);
        if (result.ok() || result.error.find("No space left on device") == std::string::npos)
            return "saved on a full disk: " + result.error;
        if (folder->content("f.ini") != "before" || !folder->leftovers().isEmpty())
            return "not as before";
        folder->remove("full");
        const SaveFileResult later = FileSaver().save(path, after, digest);
        const bool fits = !real || after.size() < 64 * 1024;
        if (later.ok() != fits || folder->content("f.ini") != (fits ? after : "before"))
            return "with room: " + later.error;
        return folder->leftovers().isEmpty() ? "" : "leftovers";
    }

    void saved(const std::string& name)
    {
        const ReadFileResult read = FileSaver().read(folder->path(name));
        const SaveFileResult result = FileSaver().save(folder->path(name), "after", read.digest);
        QVERIFY2(result.ok(), result.error.c_str());
        QCOMPARE(result.warning, std::string());
        QVERIFY(result.written);
        QCOMPARE(folder->content(name), std::string("after"));
    }

    void refused(const std::string& name, const std::string& reason)
    {
        const ReadFileResult read = FileSaver().read(folder->path(name));
        const SaveFileResult result = FileSaver().save(folder->path(name), "after", read.digest);
        QCOMPARE(result.error, folder->path(name) + " is not saved: " + reason);
        QVERIFY(folder->leftovers().isEmpty());
    }

    std::unique_ptr<ScratchFolder> folder;
};

VANTRY_TEST_MAIN(QCoreApplication, SavePermissionsTest)

#include "save_permissions_test.moc"
