#pragma once

#include "files/FileSaver.h"
#include "host/FrameworkCore/AppConfig/AccessMode.h"
#include "host/FrameworkCore/AppConfig/ChangesInterface.h"
#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "host/FrameworkCore/Values/Value.h"
#include "repository/EditedDocument.h"

#include <QString>
#include <QVector>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace Repository {

// One file mounted in the tree: its document, and what is known of the file on disk. Paths are full paths of
// the tree, at or below the backend's root, which is its name. Any thread; its lock is the innermost but for
// the patterns'. Single values are written at any time; whoever changes more of the document holds the
// store's structure lock and keeps those writes out by a Reshape, until document and tree agree again.
class Backend : public std::enable_shared_from_this<Backend>
{
public:
    using AccessMode = FrameworkCore::AppConfig::AccessMode;
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using ConflictSide = FrameworkCore::AppConfig::Interfaces::ConflictSide;
    using UnsavedChange = FrameworkCore::AppConfig::Interfaces::UnsavedChange;

    struct Description
    {
        QString name;
        QString type;
        QString text; // free text for people
        QString filePath;
        AccessMode accessMode = AccessMode::None;
    };

    class Reshape;

    // Makes a change of the document as a Reshape, and the tree equal to what came of it, which the change
    // tells. Watchers are told once the operation that was given this is over.
    using Changes = DocumentChanges;
    using Reshaping = std::function<void(const std::function<Changes()>& change)>;

    // Reads the file. Null when it cannot be read or parsed.
    static std::shared_ptr<Backend> open(const Description& description, Outcome& outcome);

    const QString& getName() const { return description.name; }
    AccessMode getAccessMode() const { return description.accessMode; }
    const Description& getDescription() const { return description; }

    // The path in the tree of an entry of the document.
    QString absolute(const std::string& path) const;

    // Calls back for every node of the document, parents first.
    void visit(const std::function<void(const QString& path, const FrameworkCore::Values::Value& value)>&
                   visitor) const;
    // The same with paths below the root as the document has them.
    void visitEntries(const std::function<void(const Documents::Entry& entry)>& visitor) const;
    bool contains(const QString& path) const;

    // Whether removing an entry gives others a new path, or another place in the order.
    bool removalMovesOthers(const QString& path) const;

    // The sibling before an entry in the order of the document.
    struct Place
    {
        Documents::SiblingPlace::Kind kind;
        QString sibling; // its path; see the kind
    };
    Place placeOf(const QString& path) const;

    // Changes a value of the document in memory. Nothing while a Reshape exists.
    std::optional<Outcome> set(const QString& path, const FrameworkCore::Values::Value& value);

    // Each changes the document in memory, or nothing; the store's structure lock is held.
    Outcome insert(const QString& path, const FrameworkCore::Values::Value& value);

    // Around many insertions; see Document. A refusal at the end leaves what was inserted.
    void beginRun();
    Outcome endRun(QString& refusedPath);

    // An entry that is not there and all below it; see Document::insertAll.
    Outcome insertAll(const QString& path, const std::vector<Documents::Entry>& entries,
                      std::size_t& refused);
    bool keepsGivenOrder() const;
    Outcome remove(const QString& path);

    // The value of an entry as the file spells it; nothing for a group.
    std::optional<std::string> spell(const QString& path) const;

    // The text with all edits.
    std::string getBytes() const;

    // Another number after every change of the document, whoever made it.
    quint64 getRevision() const;

    // Held, no save and no look at the file comes in between. Taken before every other lock.
    std::unique_lock<std::mutex> holdFile() { return std::unique_lock(saving); }

    // Whether not everybody may read the file, as it was seen last: what is written from it elsewhere is then
    // for the user alone.
    bool isPrivate() const { return hasPrivateFile; }

    // Whether there is something that the file does not hold.
    bool isEdited() const;

    // Ends all editing and saving, once a save under way is done. Refused when there are edits that are not
    // to be discarded, and when it is closed already.
    Outcome close(bool discardChanges);
    bool isClosed() const;

    // Writes the edits into the file; without edits the file is not touched. What another program has changed
    // meanwhile is merged first. Refused while there are conflicts.
    Outcome save(const Reshaping& reshape);

    // Looks at the file and brings in what has changed there; the edits stay. When the file is gone, a
    // backend without edits becomes empty, unless it only happened to look: then, and with edits, nothing
    // changes, and that the file is gone is a conflict at the root. One that only happens to look tells of
    // conflicts, too, and of everything once.
    enum class Look { Asked, Happening };
    Outcome reload(Look look, const Reshaping& reshape);

    // See ChangesInterface.
    QVector<UnsavedChange> getUnsavedChanges() const;
    QString getUnsavedDiff() const;
    Outcome revert(const QString& path, const Reshaping& reshape);
    Outcome resolveConflicts(const QString& path, ConflictSide side, const Reshaping& reshape);

private:
    explicit Backend(Description description);

    std::string relative(const QString& path) const;
    Outcome outcomeOf(const Documents::Outcome& outcome) const;
    Outcome refusal(const QString& reason) const; // that the file itself is about
    Outcome warned(Outcome outcome, const std::string& warning) const;
    Outcome read();
    Files::ReadFileResult readFile();
    void catchUp(const Reshaping& reshape);

    // saving held
    Outcome write(const Reshaping& reshape);
    Outcome lookAtFile(Look look, const Reshaping& reshape);
    Outcome takeIn(const std::string& found, const Files::FileStamp& foundStamp, const Reshaping& reshape);
    EditedDocument getCopy() const;
    Outcome takeGone(Look look, const Reshaping& reshape);

    // mutex held
    Outcome checkOpen() const; // or saving held
    Changes change(const std::function<void()>& operation);
    Outcome edit(const std::function<Documents::Outcome(Documents::Document&)>& change);
    Outcome reverted(const std::vector<std::string>& paths);
    Outcome checkConflicts() const;
    Outcome damage() const;
    Outcome checkReadability(const std::string& text) const;

    const Description description;
    const Files::FileSaver files;

    std::atomic<bool> hasPrivateFile{false};

    std::mutex saving;   // one look at the file at a time; taken before mutex
    QString lastRefusal; // of looking at the file, as a text; guarded by saving

    mutable std::mutex mutex; // guards what follows
    EditedDocument content;
    bool closed = false;
    bool reshaped = false;  // a Reshape exists
    Files::FileStamp stamp; // of the file when it was read or saved last
    bool isGone = false;    // the file went while it was mounted, and nobody has said what to do
    bool isBehind = false;  // the file holds something else that could not be merged
};

} // namespace Repository
