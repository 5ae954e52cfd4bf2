#pragma once

#include "host/FrameworkCore/AppConfig/AccessMode.h"
#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/FrameworkCore/AppConfig/BackendInformationInterface.h"
#include "host/FrameworkCore/AppConfig/ChangesInterface.h"
#include "host/FrameworkCore/AppConfig/Outcome.h"
#include "host/FrameworkCore/AppConfig/TextInterface.h"
#include "host/FrameworkCore/Values/Value.h"
#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/documents/common/CarriedComments.h"
#include "repository/documents/common/Document.h"
#include "repository/merge/DocumentChanges.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace Repository {

namespace Documents {
class Format;
} // namespace Documents

// What keeps the attributes of a part of the tree, as a file does. Paths are full paths of the tree, at or
// below the backend's root, which is its name. Any thread; its locks are the innermost but for the patterns'.
// Single values are written at any time; whoever changes more holds the structure lock of the tree and does
// it by a DocumentEdit, which keeps those writes out until backend and tree agree again.
class Backend : public std::enable_shared_from_this<Backend>
{
public:
    using AccessMode = FrameworkCore::AppConfig::AccessMode;
    using Outcome = FrameworkCore::AppConfig::Outcome;
    using ConflictSide = FrameworkCore::AppConfig::Interfaces::ConflictSide;
    using UnsavedChange = FrameworkCore::AppConfig::Interfaces::UnsavedChange;
    using TextPlace = FrameworkCore::AppConfig::Interfaces::TextPlace;
    using BackendText = FrameworkCore::AppConfig::Interfaces::BackendText;

    struct Description
    {
        QString name;
        QString type;
        QString text;     // free text for people
        QString filePath; // or whatever says where it is kept
        AccessMode accessMode = AccessMode::None;
    };

    // Makes a change of the backend's entries as a DocumentEdit, and the tree equal to what came of it, which
    // the change reports. Watchers are notified once the operation that was given this is over.
    using Changes = DocumentChanges;
    using ApplyChange = std::function<void(const std::function<Changes()>& change)>;

    explicit Backend(Description backendDescription) : description(std::move(backendDescription)) {}
    virtual ~Backend() = default;
    Q_DISABLE_COPY(Backend)

    const QString& getName() const { return description.name; }
    AccessMode getAccessMode() const { return description.accessMode; }
    const Description& getDescription() const { return description; }

    // See BackendInterface.
    virtual void setLocked(bool isOne) { locked = isOne; }
    bool isLocked() const { return locked; }
    Outcome refuseLocked() const
    {
        return Outcome(FrameworkCore::AppConfig::NotWritable, Texts::tr("it is locked"))
            .in(description.filePath)
            .advise(Texts::tr("unlock it to change it"));
    }

    // A path in it as people read it.
    QString readable(const QString& path) const
    {
        return FrameworkCore::AppConfig::readablePath(path, description.name,
                                                      description.type == QLatin1String("folder"));
    }

    // The path in the tree of an entry.
    QString absolute(const std::string& path) const { return joinedPath(description.name, path); }

    // Calls back for every entry, parents first, with paths below the root.
    virtual void visitEntries(const std::function<void(const Documents::Entry& entry)>& visitor) const = 0;
    // The same with paths of the tree.
    void visit(const std::function<void(const QString& path, const FrameworkCore::Values::Value& value)>&
                   visitor) const
    {
        visitEntries([&](const Documents::Entry& entry) { visitor(absolute(entry.path), entry.value); });
    }
    virtual bool contains(const QString& path) const = 0;

    // See Document.
    virtual bool namesType(const QString& path) const = 0;

    // Of the opening of what it consists of. Any thread.
    using Progress = FrameworkCore::AppConfig::Interfaces::BackendInformationInterface::Progress;
    virtual Progress getProgress() const { return {}; }

    // How it stands with what it consists of, for a person, where that changes by itself; empty otherwise.
    // Any thread.
    virtual QString getState() const { return {}; }

    // Whether an entry is an array; nothing where there are none.
    virtual std::optional<bool> isArray(const QString& path) const = 0;

    // Whether removing an entry gives others a new path, or another place in the order.
    virtual bool removalMovesOthers(const QString& path) const = 0;

    // The sibling before an entry in the order of the backend.
    struct SiblingPosition
    {
        Documents::SiblingPlace::Kind kind;
        QString sibling; // its path; see the kind
    };
    virtual SiblingPosition positionOf(const QString& path) const = 0;

    // See Document.
    using Origin = Documents::Document::Origin;
    virtual Origin originOf(const QString& /*path*/) const { return Origin::Own; }
    virtual QStringList followersOf(const QString& /*path*/) const { return {}; }
    virtual bool isLinked(const QString& /*path*/) const { return false; }

    // A time or date-time with more digits of a second than an attribute holds; nothing for any other value.
    virtual std::optional<FrameworkCore::Values::Value> finerValueAt(const QString& path) const = 0;

    // The value of an entry as the backend spells it; nothing for a group.
    virtual std::optional<std::string> spell(const QString& path) const = 0;

    // The format whose encoding of names the backend says it has; null for none.
    virtual const Documents::Format* getNameEncoding() const = 0;

    // An entry and all below it as they are written; see Document.
    virtual std::optional<Documents::Excerpt> excerpt(const QString& path) const = 0;
    virtual bool hasComments(const QString& path) const = 0;
    virtual std::size_t countTags(const QString& path) const = 0;

    // All comments in its text, by the entries that they are about, with paths below its own.
    virtual std::vector<Documents::CarriedComment> getComments() const = 0;

    // What its file would have of new entries at a path and below it, with comments at the paths of those;
    // nothing where it takes them by their values only.
    virtual std::optional<Documents::Excerpt>
    excerptOf(const QString& path, const std::vector<Documents::Entry>& entries,
              const std::vector<Documents::CarriedComment>& comments) const = 0;

    // All of it as one text, with all edits.
    virtual std::string getBytes() const = 0;

    // Another number after every change, whoever made it.
    virtual quint64 getRevision() const = 0;

    // Another number after every change of what is unsaved.
    virtual quint64 getChangesRevision() const { return getRevision(); }

    // Changes a value in memory. Nothing while it is being edited otherwise, and where it is linked.
    virtual std::optional<Outcome> set(const QString& path, const FrameworkCore::Values::Value& value) = 0;

    // Whether entries inserted at once keep the order they are given in.
    virtual bool keepsGivenOrder() const = 0;

    // Held, no save and no look at what is kept comes in between. Taken before every other lock.
    virtual std::unique_lock<std::mutex> holdSaving() = 0;

    // Whether not everybody may read what is kept: what is written from it elsewhere is then for the user
    // alone.
    virtual bool isPrivate() const = 0;

    // Whether there is something that is not saved.
    virtual bool isEdited() const = 0;

    // Ends all editing and saving, once a save under way is done. Refused when there are edits that are not
    // to be discarded, and when it is closed already.
    virtual Outcome close(bool discardChanges) = 0;
    virtual bool isClosed() const = 0;

    // Saves the edits; without any, nothing is touched. What others have changed meanwhile is merged first.
    // Refused while there are conflicts.
    virtual Outcome save(const ApplyChange& apply) = 0;

    // Looks at what is kept and brings in what has changed there; the edits stay. When a file is gone, a
    // backend without edits becomes empty on request; to the watcher, and with edits, nothing changes, and
    // that it is gone is a conflict at the root. The watcher hears of conflicts, too, and of everything once.
    enum class Trigger { Request, Watcher };
    virtual Outcome reload(Trigger trigger, const ApplyChange& apply) = 0;

    // See TextInterface.
    virtual Outcome locate(const QString& path, TextPlace& place) const = 0;
    virtual Outcome findAt(int line, int column, QString& path) const = 0;
    virtual Outcome getReadableText(BackendText& text) const = 0;

    // See ChangesInterface.
    virtual QVector<UnsavedChange> getUnsavedChanges() const = 0;
    virtual QString getUnsavedDiff() const = 0;
    virtual Outcome revert(const QString& path, const ApplyChange& apply) = 0;
    virtual Outcome resolveConflicts(const QString& path, ConflictSide side, const ApplyChange& apply) = 0;

    // Some of its changes: entries with all below them, or hunks of the unsaved diff.
    struct Part
    {
        QStringList paths;
        QStringList hunks;
    };
    virtual Outcome revertPart(const Part& part, const ApplyChange& apply) = 0;
    virtual Outcome savePart(const Part& part, const ApplyChange& apply) = 0;

protected:
    friend class DocumentEdit;

    // While it is being edited, set changes nothing.
    virtual void beginEdit() = 0;
    virtual void endEdit() = 0;

    // See DocumentEdit.
    virtual Outcome write(const QString& path, const FrameworkCore::Values::Value& value) = 0;
    virtual Outcome insert(const QString& path, const FrameworkCore::Values::Value& value) = 0;
    virtual Outcome remove(const QString& path) = 0;
    virtual std::optional<Outcome> rename(const QString& path, const QString& name) = 0;
    virtual bool insertExcerpt(const QString& path, const Documents::Excerpt& excerpt,
                               const std::vector<Documents::Entry>& expected) = 0;
    virtual Outcome removeExcerpt(const QString& path) = 0;
    virtual std::optional<Outcome> insertElement(const QString& path,
                                                 const std::vector<Documents::Entry>& entries) = 0;
    virtual std::optional<Outcome> moveElement(const QString& path, const QString& newPath) = 0;
    virtual Outcome respell(const QString& path, const std::string& spelling) = 0;
    virtual Outcome replaceText(std::string bytes) = 0;
    virtual Outcome insertAll(const QString& path, const std::vector<Documents::Entry>& entries,
                              std::size_t& refused) = 0;
    virtual Outcome replaceAll(const QString& path, const std::vector<Documents::Entry>& entries,
                               std::size_t& refused) = 0;
    virtual void beginBatch() = 0;
    virtual Outcome endBatch(QString& refusedPath) = 0;

    // The path of an entry below the root.
    std::string relative(const QString& path) const
    {
        return path.mid(description.name.size() + 1).toStdString();
    }

    const Description description;

private:
    std::atomic<bool> locked{false};
};

} // namespace Repository
