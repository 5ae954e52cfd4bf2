#pragma once

#include "files/SystemCalls.h"

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace TestSupport {

// A file system in memory that knows of everything whether it has reached the disk: content and names do when
// their file or folder is synced, and not before. A copy is the disk as it was at that moment. Absolute
// paths; no links but hard ones; one user.
class MemoryDisk : public Files::SystemCalls
{
public:
    MemoryDisk();

    // Makes it durable at once.
    void put(const std::string& path, const std::string& bytes);
    void addName(const std::string& path, const std::string& second);
    void put(const std::string& folder);

    // Every disk that a power cut may leave: of what was not synced any part may be missing. Nothing is open.
    std::vector<MemoryDisk> powerCuts() const;
    // All names that begin with the prefix, in any folder.
    std::vector<std::string> findNames(const std::string& prefix) const;
    // How often something was changed.
    int countChanges() const { return changes; }

    bool isBusy = false; // no file can be renamed over
    bool knowsExchange = true;
    bool forgets = false; // what is synced does not become durable

    int openFolder(const std::string& path, int flags) override;
    int openAt(int folder, const std::string& name, int flags, mode_t mode) override;
    int close(int descriptor) override;
    ssize_t read(int descriptor, char* to, std::size_t size) override;
    ssize_t write(int descriptor, const char* from, std::size_t size) override;
    int seekToStart(int descriptor) override;
    int stat(int descriptor, struct stat& result) override;
    int statAt(int folder, const std::string& name, struct stat& result) override;
    int accessAt(int, const std::string&, int) override { return 0; }
    int lock(int, int) override { return 0; }
    int lockByte(int, off_t) override { return 0; }
    int changeOwner(int, uid_t, gid_t) override { return 0; }
    int changeMode(int, mode_t) override { return 0; }
    int truncate(int descriptor, off_t size) override;
    int sync(int descriptor) override;
    int renameAt(int folder, const std::string& from, const std::string& to) override;
    int renameNewAt(int folder, const std::string& from, const std::string& to) override;
    int exchangeAt(int folder, const std::string& one, const std::string& other) override;
    int unlinkAt(int folder, const std::string& name) override;
    int makeFolder(const std::string& path, mode_t mode) override;
    int list(int folder, const std::string& prefix, std::vector<std::string>& names) override;
    int resolve(const std::string& path, std::string& result) override;
    int readLink(const std::string& path, std::string& result) override;
    int listExtendedAttributes(int, std::vector<std::string>&) override { return 0; }

private:
    using Names = std::map<std::string, int>; // to numbers of inodes

    // A step that a folder takes as a whole or not at all.
    struct NameChange
    {
        std::string removed;
        std::string added;
        int inode = 0;
        std::string exchanged = {}; // the other name of an exchange
        int exchangedInode = 0;
    };

    struct Inode
    {
        bool isFolder = false;
        std::string bytes;
        std::string durableBytes;
        Names names;
        Names durableNames;
        std::vector<NameChange> unsynced;
        int changed = 0;
    };

    struct Opened
    {
        int inode = 0;
        std::size_t at = 0;
    };

    static void apply(const NameChange& change, Names& names);

    int find(const std::string& path) const;
    int find(int folder, const std::string& name) const;
    int create(int folder, const std::string& name, bool isFolder);
    int folderOf(int descriptor) const;
    void changeName(int folder, const NameChange& change);
    void fill(int inode, struct stat& result) const;

    std::vector<Inode> inodes; // 0 is the root
    std::map<int, Opened> opened;
    int nextDescriptor = 3;
    int changes = 0;
};

} // namespace TestSupport
