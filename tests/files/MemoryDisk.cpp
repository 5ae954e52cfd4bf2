#include "tests/files/MemoryDisk.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace TestSupport {

namespace {

int fail(int error)
{
    errno = error;
    return -1;
}

std::string nameOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

std::string folderPath(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    return slash == 0 ? "/" : path.substr(0, slash);
}

// What may be on the disk of a file that was not synced: the old, the new, only a beginning of the new, or
// blocks of the one and of the other.
std::vector<std::string> partsOf(const std::string& durable, const std::string& bytes)
{
    if (durable == bytes)
        return {bytes};
    const std::size_t half = bytes.size() / 2;
    const std::string beginning = bytes.substr(0, half);
    const std::string end = bytes.size() > half ? bytes.substr(half) : std::string();
    return {durable,
            bytes,
            beginning,
            beginning + (durable.size() > half ? durable.substr(half) : std::string()),
            durable.substr(0, half) + end,
            std::string(bytes.size(), '\0')};
}

} // namespace

MemoryDisk::MemoryDisk()
{
    inodes.push_back({});
    inodes[0].isFolder = true;
}

void MemoryDisk::put(const std::string& path, const std::string& bytes)
{
    const int inode = create(find(folderPath(path)), nameOf(path), false);
    inodes[std::size_t(inode)].bytes = inodes[std::size_t(inode)].durableBytes = bytes;
    put(folderPath(path));
}

void MemoryDisk::addName(const std::string& path, const std::string& second)
{
    changeName(find(folderPath(second)), {{}, nameOf(second), find(path)});
    put(folderPath(second));
}

void MemoryDisk::put(const std::string& folder)
{
    if (find(folder) < 0) {
        create(find(folderPath(folder)), nameOf(folder), true);
        put(folderPath(folder));
    }
    Inode& inode = inodes[std::size_t(find(folder))];
    inode.durableNames = inode.names;
    inode.unsynced.clear();
}

std::vector<MemoryDisk> MemoryDisk::powerCuts() const
{
    MemoryDisk start = *this;
    start.opened.clear();
    std::vector<MemoryDisk> disks{start};
    for (std::size_t i = 0; i < inodes.size(); ++i) {
        const Inode& inode = inodes[i];
        std::vector<MemoryDisk> more;
        const std::size_t subsets = std::size_t(1) << inode.unsynced.size();
        for (const MemoryDisk& disk : disks) {
            for (const std::string& bytes : partsOf(inode.durableBytes, inode.bytes)) {
                for (std::size_t subset = 0; subset < subsets; ++subset) {
                    MemoryDisk& cut = more.emplace_back(disk);
                    Inode& left = cut.inodes[i];
                    left.bytes = left.durableBytes = bytes;
                    left.unsynced.clear();
                    for (std::size_t k = 0; k < inode.unsynced.size(); ++k) {
                        if (subset >> k & 1)
                            apply(inode.unsynced[k], left.durableNames);
                    }
                    left.names = left.durableNames;
                }
            }
        }
        disks = std::move(more);
    }
    return disks;
}

std::vector<std::string> MemoryDisk::findNames(const std::string& prefix) const
{
    std::vector<std::string> found;
    for (const Inode& inode : inodes) {
        for (const auto& [name, number] : inode.names) {
            if (name.compare(0, prefix.size(), prefix) == 0)
                found.push_back(name);
        }
    }
    return found;
}

void MemoryDisk::apply(const NameChange& change, Names& names)
{
    names.erase(change.removed);
    if (!change.added.empty())
        names[change.added] = change.inode;
    if (!change.exchanged.empty())
        names[change.exchanged] = change.exchangedInode;
}

int MemoryDisk::find(const std::string& path) const
{
    int inode = 0;
    for (std::size_t at = 1; at < path.size();) {
        const std::size_t end = std::min(path.find('/', at), path.size());
        inode = find(inode, path.substr(at, end - at));
        if (inode < 0)
            return -1;
        at = end + 1;
    }
    return inode;
}

int MemoryDisk::find(int folder, const std::string& name) const
{
    const Names& names = inodes[std::size_t(folder)].names;
    const auto found = names.find(name);
    return found == names.end() ? fail(ENOENT) : found->second;
}

int MemoryDisk::create(int folder, const std::string& name, bool isFolder)
{
    inodes.push_back({});
    inodes.back().isFolder = isFolder;
    const int inode = int(inodes.size()) - 1;
    changeName(folder, {{}, name, inode});
    return inode;
}

int MemoryDisk::folderOf(int descriptor) const
{
    return descriptor == AT_FDCWD ? 0 : opened.at(descriptor).inode;
}

void MemoryDisk::changeName(int folder, const NameChange& change)
{
    apply(change, inodes[std::size_t(folder)].names);
    inodes[std::size_t(folder)].unsynced.push_back(change);
    ++changes;
}

void MemoryDisk::fill(int number, struct stat& result) const
{
    const Inode& inode = inodes[std::size_t(number)];
    result = {};
    result.st_ino = ino_t(number);
    result.st_mode = inode.isFolder ? S_IFDIR | 0755 : S_IFREG | 0644;
    result.st_size = off_t(inode.bytes.size());
    result.st_mtim.tv_nsec = inode.changed;
    result.st_uid = ::geteuid();
    for (const Inode& folder : inodes) {
        for (const auto& [name, named] : folder.names)
            result.st_nlink += named == number ? 1 : 0;
    }
}

int MemoryDisk::openFolder(const std::string& path, int flags)
{
    return openAt(AT_FDCWD, path, flags, 0);
}

int MemoryDisk::openAt(int folder, const std::string& name, int flags, mode_t)
{
    int inode = name[0] == '/' ? find(name) : find(folderOf(folder), name);
    if (inode >= 0 && flags & O_EXCL)
        return fail(EEXIST);
    if (inode < 0 && flags & O_CREAT)
        inode = create(folderOf(folder), name, false);
    if (inode < 0)
        return fail(ENOENT);
    opened[nextDescriptor] = {inode, 0};
    return nextDescriptor++;
}

int MemoryDisk::close(int descriptor)
{
    return opened.erase(descriptor) == 1 ? 0 : fail(EBADF);
}

ssize_t MemoryDisk::read(int descriptor, char* to, std::size_t size)
{
    Opened& file = opened.at(descriptor);
    const std::size_t got = inodes[std::size_t(file.inode)].bytes.copy(to, size, file.at);
    file.at += got;
    return ssize_t(got);
}

ssize_t MemoryDisk::write(int descriptor, const char* from, std::size_t size)
{
    Opened& file = opened.at(descriptor);
    Inode& inode = inodes[std::size_t(file.inode)];
    const std::size_t some = std::min<std::size_t>(size, 40); // so that it may be cut between
    inode.bytes.resize(std::max(inode.bytes.size(), file.at + some));
    inode.bytes.replace(file.at, some, from, some);
    file.at += some;
    inode.changed = ++changes;
    return ssize_t(some);
}

int MemoryDisk::seekToStart(int descriptor)
{
    opened.at(descriptor).at = 0;
    return 0;
}

int MemoryDisk::stat(int descriptor, struct stat& result)
{
    fill(opened.at(descriptor).inode, result);
    return 0;
}

int MemoryDisk::statAt(int folder, const std::string& name, struct stat& result)
{
    const int inode = name[0] == '/' ? find(name) : find(folderOf(folder), name);
    if (inode < 0)
        return fail(ENOENT);
    fill(inode, result);
    return 0;
}

int MemoryDisk::truncate(int descriptor, off_t size)
{
    Inode& inode = inodes[std::size_t(opened.at(descriptor).inode)];
    inode.bytes.resize(std::size_t(size));
    inode.changed = ++changes;
    return 0;
}

int MemoryDisk::sync(int descriptor)
{
    if (forgets)
        return 0;
    Inode& inode = inodes[std::size_t(opened.at(descriptor).inode)];
    inode.durableBytes = inode.bytes;
    inode.durableNames = inode.names;
    inode.unsynced.clear();
    ++changes;
    return 0;
}

int MemoryDisk::renameAt(int folder, const std::string& from, const std::string& to)
{
    const int inode = find(folderOf(folder), from);
    if (isBusy && find(folderOf(folder), to) >= 0)
        return fail(EBUSY);
    if (inode >= 0)
        changeName(folderOf(folder), {from, to, inode});
    return inode >= 0 ? 0 : -1;
}

int MemoryDisk::renameNewAt(int folder, const std::string& from, const std::string& to)
{
    const int inode = find(folderOf(folder), from);
    if (find(folderOf(folder), to) >= 0)
        return fail(EEXIST);
    changeName(folderOf(folder), {from, to, inode});
    return 0;
}

int MemoryDisk::exchangeAt(int folder, const std::string& one, const std::string& other)
{
    const int first = find(folderOf(folder), one);
    const int second = find(folderOf(folder), other);
    if (isBusy || !knowsExchange)
        return fail(isBusy ? EBUSY : EINVAL);
    if (first < 0 || second < 0)
        return fail(ENOENT);
    changeName(folderOf(folder), {{}, one, second, other, first});
    return 0;
}

int MemoryDisk::unlinkAt(int folder, const std::string& name)
{
    if (find(folderOf(folder), name) < 0)
        return -1;
    changeName(folderOf(folder), {name, {}, 0});
    return 0;
}

int MemoryDisk::makeFolder(const std::string& path, mode_t)
{
    if (find(path) >= 0)
        return fail(EEXIST);
    const int above = find(folderPath(path));
    if (above >= 0)
        create(above, nameOf(path), true);
    return above >= 0 ? 0 : -1;
}

int MemoryDisk::list(int folder, const std::string& prefix, std::vector<std::string>& names)
{
    for (const auto& [name, inode] : inodes[std::size_t(folderOf(folder))].names) {
        if (name.compare(0, prefix.size(), prefix) == 0)
            names.push_back(name);
    }
    return 0;
}

int MemoryDisk::resolve(const std::string& path, std::string& result)
{
    result = path;
    return find(path) >= 0 ? 0 : -1;
}

int MemoryDisk::readLink(const std::string&, std::string&)
{
    return fail(EINVAL);
}

} // namespace TestSupport
