#pragma once

#include "repository/backends/DocumentBackend.h"
#include "repository/mounting/FileBackends.h"
#include "repository/mounting/FolderLocation.h"
#include "repository/operations/AttributeStore.h"

#include <QHash>
#include <QSet>

#include <atomic>
#include <map>
#include <set>

namespace Repository {

// A folder, of which each file whose format is recognised is a backend of its own, at the path of its name
// below the folder's. It has no entries itself. What is done with it is done with all its files.
class FolderBackend : public DocumentBackend
{
public:
    // Both outlive it but for the store, which owns it.
    FolderBackend(const Description& description, FileBackends& files, BackendKind::Observer observer,
                  const std::shared_ptr<AttributeStore>& store);

    // In the order of the names.
    SiblingPosition positionOf(const QString& path) const override;

    void setLocked(bool isOne) override; // its files too

    std::unique_lock<std::mutex> holdSaving() override { return std::unique_lock(saving); }
    bool isPrivate() const override { return false; }
    bool isEdited() const override { return false; } // its files are
    Progress getProgress() const override { return {done, total}; }
    Outcome close(bool discardChanges) override;
    Outcome save(const ApplyChange& apply) override;

    // Opens what is new in the folder and closes what is gone from it, unless that has edits. What could not
    // be opened is told to the observer, once as long as it stays the same.
    Outcome reload(Trigger trigger, const ApplyChange& apply) override;
    Outcome scan();

    QString getUnsavedDiff() const override;
    Outcome revert(const QString& path, const ApplyChange& apply) override;
    Outcome resolveConflicts(const QString& path, ConflictSide side, const ApplyChange& apply) override;
    Outcome revertPart(const Part& part, const ApplyChange& apply) override;
    Outcome savePart(const Part& part, const ApplyChange& apply) override;

    // All that were found by the last scan, which is how a change of one is noticed.
    QStringList getFolders() const;

protected:
    Outcome insert(const QString& path, const FrameworkCore::Values::Value& value) override;
    Outcome insertAll(const QString& path, const std::vector<Documents::Entry>& entries,
                      std::size_t& refused) override;

private:
    using OpenFiles = QHash<QString, std::shared_ptr<Backend>>;
    using State = std::pair<qint64, qint64>;

    // A file between being read and being shown; without a path, when it is to be left alone.
    struct Opening
    {
        QString file;
        State state;
        FileBackends::Reading reading;
        FrameworkCore::AppConfig::Outcome outcome;
    };

    OpenFiles getFiles() const;
    QString nameOf(const QString& file) const;
    void noteNames(const QString& path);
    bool isUnknown(const QString& file) const;
    void closeMissing(const QSet<QString>& present);
    void openAll(const QStringList& unknown);
    Opening read(const QString& file);
    void show(Opening opening);
    void report(Outcome outcome);
    Outcome closeFile(const QString& file, const std::shared_ptr<Backend>& backend, bool discardChanges);

    const FolderLocation location;
    FileBackends& fileBackends;
    const BackendKind::Observer observer;
    const std::weak_ptr<AttributeStore> store;

    std::atomic<int> done{0}; // of the files that are being opened
    std::atomic<int> total{0};

    std::mutex saving;
    std::mutex scanning; // one at a time; taken before all others

    mutable std::mutex filesMutex;  // guards what follows; taken last
    OpenFiles files;                // that are open, by their paths
    QHash<QString, State> unopened; // the states in which files could not be opened
    QStringList folders;
    int problems = 0;                           // of the last scan
    std::map<QString, std::set<QString>> shown; // names by the paths of their groups
};

} // namespace Repository
