#include "files/FileJournal.h"

#include "files/FileDigest.h"
#include "files/Reason.h"

#include <sstream>

namespace Files {

namespace {

constexpr const char* firstLine = "vantry journal 1";

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
    const std::string digest = FileDigest::of(content).hash;
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
    if (!stream || journal.content.size() != contentSize || FileDigest::of(journal.content).hash != digest)
        return {};
    return journal;
}

std::string overwrite(SystemCalls& calls, FileDescriptor& file, const std::string& bytes)
{
    if (calls.seekToStart(file.get()) != 0 || !file.writeAll(bytes))
        return Reason::tr("the new content cannot be written: %1", {systemReason()});
    if (calls.truncate(file.get(), static_cast<off_t>(bytes.size())) != 0)
        return Reason::tr("it cannot be cut off after the new content: %1", {systemReason()});
    if (calls.sync(file.get()) != 0)
        return Reason::tr("the new content cannot be brought onto the disk: %1", {systemReason()});
    return file.close() ? std::string()
                        : Reason::tr("the new content was not written to its end: %1", {systemReason()});
}

} // namespace Files
