#pragma once

#include "files/FileWatcher.h"
#include "repository/backends/BackendKind.h"

#include <QHash>
#include <QSet>

#include <chrono>
#include <mutex>
#include <vector>

namespace Repository {

class DocumentBackend;

struct AttributeTree;

// Opens files as backends, each file once, and follows what other programs write into them.
class FileBackends : public BackendKind
{
public:
    // Without watching, that is done by reloading and saving only.
    FileBackends(std::shared_ptr<AttributeTree> tree, bool watchesFiles, Observer observer);

    QStringList getTypes() const override;
    bool hasType(const QString& type) const override;
    QString toLocation(const QString& given) const override;
    bool isSamePlace(const QString& location, const QString& other) const override;
    // Without a type the file's is recognised; one of no type that is known is left alone.
    Outcome open(const Backend::Description& description, const Mount& mount) override;

    struct Release
    {
        FileBackends* files;

        void operator()(const QString* identity) const;
    };

    // A file that was read. No other backend gets it before this is destroyed.
    struct Reading
    {
        std::shared_ptr<DocumentBackend> backend; // null when there is nothing to show
        std::chrono::system_clock::time_point since;
        std::unique_ptr<const QString, Release> identity;
    };

    // The halves of opening.
    Outcome read(const Backend::Description& description, Reading& reading);
    Outcome show(const Reading& reading, const Mount& mount);

    void forget(const Backend& backend) override;

private:
    Outcome reserve(const QString& identity, Reading& reading);
    std::vector<std::shared_ptr<Backend>> mayBeOf(const QString& identity) const;
    void noteFile(const std::shared_ptr<Backend>& backend, const QString& identity);
    void watch(const std::shared_ptr<Backend>& backend, std::chrono::system_clock::time_point since);
    void unwatch(const Backend& backend);

    const std::shared_ptr<AttributeTree> tree;
    const Observer observer; // copied into what the watcher calls
    std::mutex mutex;        // guards what follows
    // The open backends by the identities that their files had when they were opened. Those reached through
    // links, which may lead elsewhere later, are kept apart, so that only they are looked at again for each
    // new file.
    QMultiHash<QString, std::weak_ptr<Backend>> filesByIdentity;
    std::vector<std::weak_ptr<Backend>> linkedFiles;
    QSet<QString> opening;                       // identities of files whose backends are not mounted yet
    QHash<const Backend*, int> watches;          // numbers of the watcher; of backends that are open
    std::unique_ptr<Files::FileWatcher> watcher; // not guarded; null when files are not watched
};

} // namespace Repository
