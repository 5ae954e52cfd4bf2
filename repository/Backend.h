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
// the patterns'.
class Backend
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

    // Reads the file. Null, with the reason, when it cannot be read or parsed.
    static std::unique_ptr<Backend> open(const Description& description, QString& reason);

    const QString& getName() const { return description.name; }
    AccessMode getAccessMode() const { return description.accessMode; }
    const Description& getDescription() const { return description; }

    // Calls back for every node of the document, parents first.
    void visit(const std::function<void(const QString& path, const FrameworkCore::Values::Value& value)>&
                   visitor) const;
    bool contains(const QString& path) const;
    bool removalMovesSiblings(const QString& path) const;

    // Each changes the document in memory. Empty on success, otherwise the reason, and nothing changed.
    QString set(const QString& path, const FrameworkCore::Values::Value& value);
    QString insert(const QString& path, const FrameworkCore::Values::Value& value);
    QString remove(const QString& path);

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
    QString keepEdit(const Documents::Outcome& outcome);

    const Description description;
    const FileSaver files;
    std::mutex saving; // one save at a time; taken before mutex

    mutable std::mutex mutex; // guards what follows
    std::unique_ptr<Documents::Document> document;
    bool isEdited = false; // since it was read or saved
    FileStamp stamp;       // of the file when it was read or saved last
};

} // namespace Repository
