#pragma once

#include "host/FrameworkCore/AppConfig/AccessMode.h"
#include "host/FrameworkCore/Values/Value.h"
#include "repository/FileSaver.h"
#include "repository/documents/Document.h"

#include <QString>

#include <functional>
#include <memory>
#include <mutex>
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

    struct Description
    {
        QString name;
        QString type;
        QString text; // free text for people
        QString filePath;
        AccessMode accessMode = AccessMode::None;
    };

    class Reshape;

    // Reads the file. Null, with the reason, when it cannot be read or parsed.
    static std::shared_ptr<Backend> open(const Description& description, QString& reason);

    const QString& getName() const { return description.name; }
    AccessMode getAccessMode() const { return description.accessMode; }
    const Description& getDescription() const { return description; }

    // Calls back for every node of the document, parents first.
    void visit(const std::function<void(const QString& path, const FrameworkCore::Values::Value& value)>&
                   visitor) const;
    // The same with paths below the root as the document has them.
    void visitEntries(const std::function<void(const Documents::Entry& entry)>& visitor) const;
    bool contains(const QString& path) const;
    bool removalMovesSiblings(const QString& path) const;

    // Changes a value of the document in memory; the reason when it is refused. False while a Reshape exists.
    bool set(const QString& path, const FrameworkCore::Values::Value& value, QString& reason);

    // Each changes the document in memory; the store's structure lock is held. Empty on success, otherwise
    // the reason, and nothing changed.
    QString insert(const QString& path, const FrameworkCore::Values::Value& value);
    QString remove(const QString& path);

    // The text with all edits.
    std::string getBytes() const;

    // Another number after every change of the document, whoever made it.
    quint64 getRevision() const;

    // Held, no save and no look at the file comes in between. Taken before every other lock.
    std::unique_lock<std::mutex> holdFile() { return std::unique_lock(saving); }

    // Whether there is something to save.
    bool isEdited() const;

    // Ends all editing, once a save under way is done. Refused with a reason when there are edits that are
    // not to be discarded, and when it is closed already.
    QString close(bool discardChanges);
    bool isClosed() const;

    // Writes the edits into the file; without edits the file is not touched. Empty on success, otherwise the
    // reason.
    QString save();

    // Reads the file anew if it has changed; refused while there are edits. Empty on success, otherwise the
    // reason.
    QString reread();

private:
    explicit Backend(Description description);

    std::string relative(const QString& path) const;
    QString read();
    QString edit(const std::function<Documents::Outcome(Documents::Document&)>& change); // lock held

    const Description description;
    const FileSaver files;
    std::mutex saving; // one save at a time; taken before mutex

    mutable std::mutex mutex; // guards what follows
    std::unique_ptr<Documents::Document> document;
    bool edited = false; // since it was read or saved
    bool closed = false;
    bool reshaped = false; // a Reshape exists
    quint64 revision = 0;
    FileStamp stamp; // of the file when it was read or saved last
};

} // namespace Repository
