#pragma once

#include "repository/mounting/FileBackends.h"
#include "repository/operations/AttributeStore.h"

namespace Repository {

class FolderBackend;

// Opens folders as backends, each once, and follows what comes into them and goes.
class FolderBackends : public BackendKind
{
public:
    // Opens their files by that kind, which outlives this.
    FolderBackends(std::shared_ptr<AttributeStore> store, FileBackends& files, bool watches,
                   Observer observer);

    QStringList getTypes() const override { return {QStringLiteral("folder")}; }
    bool hasType(const QString& type) const override { return getTypes().contains(type); }
    QString toLocation(const QString& given) const override;
    bool isSamePlace(const QString& location, const QString& other) const override;
    Outcome open(const Backend::Description& description, const Mount& mount) override;
    void forget(const Backend& backend) override;

private:
    void watch(const std::shared_ptr<FolderBackend>& folder);

    const std::shared_ptr<AttributeStore> store;
    FileBackends& files;
    const Observer observer;
    std::mutex mutex;                            // guards what follows
    QHash<QString, int> watches;                 // by folder, numbers of the watcher
    std::unique_ptr<Files::FileWatcher> watcher; // not guarded; null when folders are not watched
};

} // namespace Repository
