#pragma once

#include "files/SystemCalls.h"

#include <cerrno>

namespace TestSupport {

// Passes every call on, and tells before and after; the notification before can make the call fail instead.
class InterceptedCalls : public Files::SystemCalls
{
public:
    explicit InterceptedCalls(SystemCalls& systemCalls = SystemCalls::system()) : below(systemCalls) {}

    int openFolder(const std::string& path, int flags) override
    {
        return pass("openat2", [&] { return below.openFolder(path, flags); });
    }
    int openAt(int folder, const std::string& name, int flags, mode_t mode) override
    {
        return pass("openat", [&] { return below.openAt(folder, name, flags, mode); });
    }
    int close(int descriptor) override
    {
        // The system closes the file also when it reports an error.
        const int result = below.close(descriptor);
        return pass("close", [&] { return result; });
    }
    ssize_t read(int descriptor, char* to, std::size_t size) override
    {
        return pass("read", [&] { return below.read(descriptor, to, size); });
    }
    ssize_t write(int descriptor, const char* from, std::size_t size) override
    {
        return pass("write", [&] { return below.write(descriptor, from, size); });
    }
    int seekToStart(int descriptor) override
    {
        return pass("lseek", [&] { return below.seekToStart(descriptor); });
    }
    int stat(int descriptor, struct stat& result) override
    {
        return pass("fstat", [&] { return below.stat(descriptor, result); });
    }
    int statAt(int folder, const std::string& name, struct stat& result) override
    {
        return pass("fstatat", [&] { return below.statAt(folder, name, result); });
    }
    int accessAt(int folder, const std::string& name, int mode) override
    {
        return pass("faccessat", [&] { return below.accessAt(folder, name, mode); });
    }
    int lock(int descriptor, int operation) override
    {
        return pass("flock", [&] { return below.lock(descriptor, operation); });
    }
    int lockByte(int descriptor, off_t at) override
    {
        return pass("fcntl", [&] { return below.lockByte(descriptor, at); });
    }
    int changeOwner(int descriptor, uid_t user, gid_t group) override
    {
        return pass("fchown", [&] { return below.changeOwner(descriptor, user, group); });
    }
    int changeMode(int descriptor, mode_t mode) override
    {
        return pass("fchmod", [&] { return below.changeMode(descriptor, mode); });
    }
    int truncate(int descriptor, off_t size) override
    {
        return pass("ftruncate", [&] { return below.truncate(descriptor, size); });
    }
    int sync(int descriptor) override
    {
        return pass("fsync", [&] { return below.sync(descriptor); });
    }
    int renameAt(int folder, const std::string& from, const std::string& to) override
    {
        return pass("rename", [&] { return below.renameAt(folder, from, to); });
    }
    int renameNewAt(int folder, const std::string& from, const std::string& to) override
    {
        return pass("rename new", [&] { return below.renameNewAt(folder, from, to); });
    }
    int exchangeAt(int folder, const std::string& one, const std::string& other) override
    {
        return pass("rename exchange", [&] { return below.exchangeAt(folder, one, other); });
    }
    int unlinkAt(int folder, const std::string& name) override
    {
        return pass("unlink", [&] { return below.unlinkAt(folder, name); });
    }
    int makeFolder(const std::string& path, mode_t mode) override
    {
        return pass("mkdir", [&] { return below.makeFolder(path, mode); });
    }
    int list(int folder, const std::string& prefix, std::vector<std::string>& names) override
    {
        return pass("getdents", [&] { return below.list(folder, prefix, names); });
    }
    int resolve(const std::string& path, std::string& result) override
    {
        return pass("realpath", [&] { return below.resolve(path, result); });
    }
    int readLink(const std::string& path, std::string& result) override
    {
        return pass("readlink", [&] { return below.readLink(path, result); });
    }
    int listExtendedAttributes(int descriptor, std::vector<std::string>& names) override
    {
        return pass("flistxattr", [&] { return below.listExtendedAttributes(descriptor, names); });
    }
    int copyExtendedAttribute(int from, int to, const std::string& name) override
    {
        return pass("fsetxattr", [&] { return below.copyExtendedAttribute(from, to, name); });
    }
    int removeExtendedAttribute(int descriptor, const std::string& name) override
    {
        return pass("fremovexattr", [&] { return below.removeExtendedAttribute(descriptor, name); });
    }

protected:
    // The errno that the call shall fail with, or 0.
    virtual int before(const char* call) = 0;
    virtual void after(const char* call) = 0;

private:
    template <typename Call>
    auto pass(const char* name, const Call& call) -> decltype(call())
    {
        const int refusal = before(name);
        errno = refusal != 0 ? refusal : errno;
        const auto result = refusal != 0 ? -1 : call();
        const int error = errno;
        after(name);
        errno = error;
        return result;
    }

    SystemCalls& below; // not owned
};

} // namespace TestSupport
