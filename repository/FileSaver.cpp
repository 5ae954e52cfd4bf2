#include "repository/FileSaver.h"

#include "repository/FileReplacement.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace Repository {

namespace {

std::string kindRefusal(const struct stat& status)
{
    if (S_ISDIR(status.st_mode))
        return "it is a folder";
    return S_ISREG(status.st_mode) ? std::string() : "it is not a regular file";
}

struct Location
{
    std::string folder;
    std::string name;
    std::string error;
};

Location split(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return {".", path, {}};
    return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1), {}};
}

// Where the file really is, behind all links; also for one that does not exist yet, to which links may lead.
Location locate(FileOps& ops, std::string path)
{
    constexpr int mostLinks = 40;
    for (int links = 0; links < mostLinks; ++links) {
        std::string found;
        if (ops.resolve(path, found) == 0)
            return split(found);
        const int error = errno;
        Location location = split(path);
        std::string target;
        if (error == ENOENT && ops.readLink(path, target) == 0) {
            path = target.substr(0, 1) == "/" ? target : location.folder + '/' + target;
            continue;
        }
        if (error == ENOENT && !location.name.empty() && ops.resolve(location.folder, found) == 0)
            return {found, location.name, {}};
        errno = error == ENOENT ? errno : error;
        return {{}, {}, systemReason()};
    }
    errno = ELOOP;
    return {{}, {}, systemReason()};
}

// The lock of a program that was killed is gone at once, since the kernel holds it; one that is held for
// longer than any save takes belongs to a program that hangs.
std::string lockFolder(FileOps& ops, int folder)
{
    using namespace std::chrono;
    const auto deadline = steady_clock::now() + seconds(5);
    while (ops.lock(folder, LOCK_EX | LOCK_NB) != 0) {
        if (errno == EINTR)
            continue;
        if (errno != EWOULDBLOCK || steady_clock::now() > deadline)
            return "its folder cannot be locked: " + systemReason();
        std::this_thread::sleep_for(milliseconds(10));
    }
    return {};
}

bool sameFile(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
           a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

// One save, step by step; every step gives an empty text or why the save ends here.
class Save
{
public:
    Save(FileOps& fileOps, const Location& where, const std::string& content, const MergeContent& merging,
         SaveFileResult& saveResult)
        : ops(fileOps), location(where), bytes(content), merge(merging), result(saveResult),
          folder(ops, ops.open(location.folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
    }

    std::string run(const FileStamp& stamp)
    {
        if (!folder.isOpen())
            return "its folder cannot be opened: " + systemReason();
        std::string error = lockFolder(ops, folder.get());
        if (error.empty())
            error = examine(stamp);
        if (error.empty() && !unchanged)
            error = replace();
        if (error.empty())
            result.stamp = FileStamp::of(bytes);
        return error;
    }

private:
    std::string examine(const FileStamp& stamp)
    {
        if (ops.statAt(folder.get(), location.name, status) != 0) {
            if (errno != ENOENT)
                return "it cannot be examined: " + systemReason();
            return stamp.exists ? "it is gone since it was read" : std::string();
        }
        // Before it is opened, since opening a device may do things already.
        std::string error = kindRefusal(status);
        if (!error.empty())
            return error;
        constexpr int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
        original.emplace(ops, ops.openAt(folder.get(), location.name, flags, 0));
        if (!original->isOpen() || ops.stat(original->get(), status) != 0)
            return "it cannot be opened: " + systemReason();
        error = kindRefusal(status);
        if (!error.empty())
            return error;
        std::string found;
        if (!original->readAll(found))
            return "it cannot be read: " + systemReason();
        unchanged = found == bytes;
        if (unchanged)
            return {};
        error = takeIn(found, stamp);
        if (!error.empty() || unchanged)
            return error;
        if (ops.accessAt(folder.get(), location.name, W_OK) != 0)
            return "it is not writable: " + systemReason();
        if (status.st_nlink > 1)
            return "it has " + std::to_string(status.st_nlink) +
                   " names (hard links), which replacing it would part";
        return {};
    }

    // Reconciles what is to be written with what the file holds.
    std::string takeIn(const std::string& found, const FileStamp& stamp)
    {
        const FileStamp now = FileStamp::of(found);
        if (now == stamp)
            return {};
        if (!merge)
            return stamp.exists ? "another program has changed it since it was read"
                                : "another program has created it meanwhile";
        MergedContent merged = merge(found, now);
        bytes = std::move(merged.bytes);
        unchanged = found == bytes;
        return merged.refusal;
    }

    std::string replace()
    {
        const bool isNew = !original.has_value();
        FileReplacement replacement(ops, folder.get());
        std::string error = replacement.create(isNew ? 0666 : 0600);
        if (error.empty() && !isNew)
            error = replacement.adopt(original->get(), status, result.warning);
        if (error.empty())
            error = replacement.fill(bytes);
        struct stat now = {};
        if (error.empty() && !isNew &&
            (ops.statAt(folder.get(), location.name, now) != 0 || !sameFile(now, status)))
            error = "another program has changed it while it was being saved";
        if (error.empty())
            error = replacement.publish(location.name, isNew);
        if (!error.empty())
            return error;
        result.written = true;
        if (ops.sync(folder.get()) != 0 && result.warning.empty())
            result.warning = "it is saved, but may be the old one after a power cut: " + systemReason();
        return {};
    }

    FileOps& ops; // not owned
    const Location& location;
    std::string bytes;
    const MergeContent& merge;
    SaveFileResult& result;
    FileDescriptor folder;
    std::optional<FileDescriptor> original; // none for a new file
    struct stat status = {};
    bool unchanged = false;
};

} // namespace

ReadFileResult FileSaver::read(const std::string& path) const
{
    ReadFileResult result;
    FileDescriptor file(ops, ops.open(path, O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status = {};
    if (!file.isOpen() || ops.stat(file.get(), status) != 0) {
        result.missing = errno == ENOENT;
        result.error = path + ": " + systemReason();
        return result;
    }
    result.error = kindRefusal(status);
    if (result.error.empty() && !file.readAll(result.bytes))
        result.error = systemReason();
    if (!result.error.empty()) {
        result.error = path + ": " + result.error;
        result.bytes.clear();
        return result;
    }
    result.stamp = FileStamp::of(result.bytes);
    return result;
}

SaveFileResult FileSaver::save(const std::string& path, const std::string& bytes, const FileStamp& stamp,
                               const MergeContent& merge) const
{
    SaveFileResult result;
    const Location location = locate(ops, path);
    std::string error = location.error;
    if (error.empty())
        error = Save(ops, location, bytes, merge, result).run(stamp);
    if (!error.empty()) {
        result.error = path + " is not saved: " + error;
        result.warning.clear();
        return result;
    }
    if (!result.warning.empty())
        result.warning = path + ": " + result.warning;
    return result;
}

} // namespace Repository
