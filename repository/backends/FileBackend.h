#pragma once

#include "files/FileSaver.h"
#include "repository/backends/DocumentBackend.h"

#include <atomic>

namespace Repository {

// A backend whose document is a file, which other programs write as well.
class FileBackend : public DocumentBackend
{
public:
    // Reads the file, in the dialect that it is recognised to be of when the type names none. Without a type
    // that, too, is recognised, as of a file that nobody has chosen. Null when it cannot be read or parsed,
    // and, with a success, when it is of no type that is known.
    static std::shared_ptr<FileBackend> open(const Description& description, Outcome& outcome);

    // The same where the file's path was found to lead a moment ago.
    static std::shared_ptr<FileBackend> open(const Description& description,
                                             const Files::FileLocation& location, Outcome& outcome);

    std::unique_lock<std::mutex> holdSaving() override { return std::unique_lock(saving); }
    bool isPrivate() const override { return hasPrivateFile; }
    bool isEdited() const override;
    quint64 getChangesRevision() const override;
    Outcome close(bool discardChanges) override;

    Outcome save(const ApplyChange& apply) override;
    Outcome reload(Trigger trigger, const ApplyChange& apply) override;

    QVector<UnsavedChange> getUnsavedChanges() const override;
    Outcome revert(const QString& path, const ApplyChange& apply) override;
    Outcome resolveConflicts(const QString& path, ConflictSide side, const ApplyChange& apply) override;
    Outcome revertPart(const Part& part, const ApplyChange& apply) override;
    Outcome savePart(const Part& part, const ApplyChange& apply) override;

private:
    using DocumentBackend::DocumentBackend;

    Outcome warned(Outcome outcome, const std::string& warning) const;
    Outcome take(Files::ReadFileResult file);
    Files::ReadFileResult readFile();
    void noteMode(const Files::ReadFileResult& file);
    void mergeUnmerged(const ApplyChange& apply);

    // saving held
    // All edits, or this part of them.
    Outcome writeFile(const ApplyChange& apply, const Part* part = nullptr);
    Outcome reloadFile(Trigger trigger, const ApplyChange& apply);
    Outcome takeText(const Part* part, std::string& text); // mutex held, too
    Outcome mergeExternal(const std::string& found, const Files::FileDigest& foundDigest,
                          const ApplyChange& apply);
    Outcome handleDeletion(Trigger trigger, const ApplyChange& apply);

    // mutex held
    Outcome checkConflicts() const;
    Outcome checkReadability(const std::string& text);

    const Files::FileSaver files;
    std::optional<bool> tellsType;           // the file itself, before it was first saved
    std::atomic<bool> hasPrivateFile{false}; // as it was seen last

    std::mutex saving;   // one look at the file at a time; taken before mutex
    QString lastRefusal; // of looking at the file, as a text; guarded by saving

    // Guarded by mutex.
    Files::FileDigest digest;            // of the file when it was read or saved last
    bool isDeleted = false;              // while it was mounted, and nobody has said what to do
    bool hasUnmergedDiskContent = false; // the file holds something else that could not be merged
};

} // namespace Repository
