#include "files/FileJournal.h"
#include "files/FileSaver.h"
#include "files/TemporaryName.h"
#include "fuzz/Exercises.h"
#include "fuzz/program/ScratchFolder.h"

#include <sys/stat.h>

namespace Fuzz {

using Files::FileJournal;
using Files::FileSaver;
using Files::TemporaryName;

namespace {

const std::string present = "half written";

std::string utf8(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

class JournalExercise
{
public:
    explicit JournalExercise(std::string_view input) : folder(ScratchFolder::instance())
    {
        folder.clear();
        folder.write(target, QByteArray::fromStdString(present));
        folder.write(neighbour, QByteArray::fromStdString(present));
        journal = makeJournal(input);
        folder.write(QString::fromStdString(TemporaryName::make(TemporaryName::Kind::Journal)),
                     QByteArray::fromStdString(journal));
    }

    std::string run() const
    {
        const auto read = FileJournal::fromBytes(journal);
        if (read && !isSame(FileJournal::fromBytes(read->toBytes()), *read))
            return "a journal is not what its bytes say";
        const bool isOfTarget = read && read->file == target.toStdString() && read->inode == inodeOfTarget();
        const std::string expected = isOfTarget ? read->content : present;
        const FileSaver saver;
        const auto found = saver.read(utf8(folder.path(target)));
        if (!found.ok() || found.bytes != expected || content(target) != expected)
            return "recovery gives '" + found.bytes + "' instead of '" + expected + "': " + found.error;
        if (isOfTarget && expected != present && found.warning.empty())
            return "nothing is said of a recovery";
        if (content(neighbour) != present)
            return "the recovery of one file has changed another";
        return checkSave(saver, found.digest);
    }

private:
    // After an "r" the bytes are the journal. Otherwise they are the first character of the inode's distance,
    // a line with the name, and the content of one that is well formed.
    std::string makeJournal(std::string_view input) const
    {
        if (input.empty() || input.front() == 'r')
            return std::string(input.substr(std::min<std::size_t>(input.size(), 1)));
        FileJournal made;
        made.inode = inodeOfTarget() + ino_t(input.front() - '0');
        const std::size_t end = std::min(input.find('\n'), input.size());
        made.file = input.substr(1, end - 1);
        made.content = input.substr(std::min(end + 1, input.size()));
        return made.toBytes();
    }

    std::string checkSave(const FileSaver& saver, const Files::FileDigest& digest) const
    {
        const std::string wanted = "saved";
        const auto saved = saver.save(utf8(folder.path(target)), wanted, digest);
        if (!saved.ok() || content(target) != wanted)
            return "a save after the recovery fails: " + saved.error;
        const auto again = saver.read(utf8(folder.path(target)));
        return again.ok() && again.bytes == wanted ? std::string() : "a journal has undone a later save";
    }

    static bool isSame(const std::optional<FileJournal>& a, const FileJournal& b)
    {
        return a && a->file == b.file && a->inode == b.inode && a->content == b.content;
    }

    std::string content(const QString& name) const { return folder.read(name).toStdString(); }

    ino_t inodeOfTarget() const
    {
        struct stat status = {};
        ::stat(utf8(folder.path(target)).c_str(), &status);
        return status.st_ino;
    }

    const ScratchFolder& folder;
    const QString target = QStringLiteral("target");
    const QString neighbour = QStringLiteral("neighbour");
    std::string journal;
};

} // namespace

std::string exerciseJournals(std::string_view input)
{
    return JournalExercise(input).run();
}

} // namespace Fuzz
