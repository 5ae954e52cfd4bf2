#include "files/FileJournal.h"

#include "files/FileStamp.h"

#include <cerrno>
#include <cstdlib>
#include <sstream>
#include <unistd.h>

namespace Files {

namespace {

constexpr const char* firstLine = "vantry journal 1";

std::string absolutePath(const char* variable)
{
    const char* const value = std::getenv(variable);
    return value && *value == '/' ? value : std::string();
}

std::string take(std::istream& stream, std::size_t size, std::size_t most)
{
    std::string bytes(size <= most ? size : 0, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

} // namespace

// Lines of numbers, then the texts that they give the lengths of, then the content to the end.
std::string FileJournal::toBytes() const
{
    const std::string digest = FileStamp::of(content).digest;
    std::ostringstream stream;
    stream << firstLine << '\n'
           << inode << ' ' << file.size() << ' ' << digest.size() << ' ' << content.size() << '\n'
           << file << digest << content;
    return stream.str();
}

std::optional<FileJournal> FileJournal::fromBytes(const std::string& bytes)
{
    std::istringstream stream(bytes);
    std::string line;
    std::getline(stream, line);
    FileJournal journal;
    std::size_t nameSize = 0;
    std::size_t digestSize = 0;
    std::size_t contentSize = 0;
    stream >> journal.inode >> nameSize >> digestSize >> contentSize;
    if (line != firstLine || !stream || stream.get() != '\n')
        return {};
    journal.file = take(stream, nameSize, bytes.size());
    const std::string digest = take(stream, digestSize, bytes.size());
    journal.content = take(stream, contentSize, bytes.size());
    if (!stream || journal.content.size() != contentSize || FileStamp::of(journal.content).digest != digest)
        return {};
    return journal;
}

std::string FileJournal::stateFolder()
{
    const std::string state = absolutePath("XDG_STATE_HOME");
    if (!state.empty())
        return state + "/vantry";
    const std::string home = absolutePath("HOME");
    return home.empty() ? home : home + "/.local/state/vantry";
}

std::unique_ptr<LockedFolder> FileJournal::openStateFolder(FileOps& ops, std::string& error, bool& isAbsent)
{
    const std::string path = stateFolder();
    isAbsent = path.empty();
    if (isAbsent) {
        error = "neither XDG_STATE_HOME nor HOME names a place";
        return nullptr;
    }
    auto folder = std::make_unique<LockedFolder>(ops, path);
    struct stat status = {};
    if (!folder->isOpen() || ops.stat(folder->get(), status) != 0) {
        // The home that the environment names may be another user's.
        isAbsent = !folder->isOpen() && (errno == ENOENT || errno == ENOTDIR || errno == EACCES);
        error = path + " cannot be opened: " + systemReason();
        return nullptr;
    }
    isAbsent = status.st_uid != ::geteuid();
    if (isAbsent)
        error = path + " belongs to another user";
    return isAbsent ? nullptr : std::move(folder);
}

std::string overwrite(FileOps& ops, FileDescriptor& file, const std::string& bytes)
{
    if (!file.writeAll(bytes))
        return "the new content cannot be written: " + systemReason();
    if (ops.truncate(file.get(), static_cast<off_t>(bytes.size())) != 0)
        return "it cannot be cut off behind the new content: " + systemReason();
    if (ops.sync(file.get()) != 0)
        return "the new content cannot be brought onto the disk: " + systemReason();
    return file.close() ? std::string() : "the new content was not written to its end: " + systemReason();
}

} // namespace Files
