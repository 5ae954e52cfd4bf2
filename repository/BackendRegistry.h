#pragma once

#include "files/FileWatcher.h"
#include "host/FrameworkCore/AppConfig/BackendInterface.h"
#include "repository/Backend.h"

#include <QHash>
#include <QSet>

#include <chrono>
#include <memory>
#include <mutex>
#include <vector>

namespace Repository {

class AttributeStore;

// Creates, reloads and saves backends, and logs why it refuses. Any thread.
class BackendRegistry : public FrameworkCore::AppConfig::Interfaces::BackendInterface
{
public:
    // With watching, what other programs do to the files is brought in as it happens.
    BackendRegistry(std::shared_ptr<AttributeStore> store, bool watchesFiles);
    ~BackendRegistry() override;

    static QStringList getTypes();

    bool createBackend(const QString& type, const QString& name,
                       const FrameworkCore::AppConfig::BackendConfiguration& configuration,
                       const int& option) override;
    bool saveBackend(const QString& name) override;
    QStringList getBackendNames() override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::BackendInformationInterface>
    getBackendInformation(const QString& name) override;
    bool reloadBackend(const QString& name) override;
    bool closeBackend(const QString& name, bool discardChanges) override;

private:
    // The option of createBackend that reloads a backend which exists already; any other refuses it.
    static constexpr int createOrReload = 3;

    // Each gives the reason of a refusal, or nothing.
    QString create(const Backend::Description& description, int option);
    QString reload(Backend& backend);
    QString reserve(const QString& identity);
    std::vector<std::shared_ptr<Backend>> mayBeOf(const QString& identity) const;
    void noteFile(const std::shared_ptr<Backend>& backend, const QString& identity);
    void forgetFile(const Backend& backend);
    void watch(const std::shared_ptr<Backend>& backend, std::chrono::system_clock::time_point since);
    void unwatch(const Backend& backend);
    static QString checkDescription(const Backend::Description& description);

    std::shared_ptr<AttributeStore> store;
    std::mutex mutex; // guards what follows
    // The open backends by the identities that their files had when they were opened. Those behind links,
    // which may lead elsewhere later, are kept apart, so that only they are looked at again for each new
    // file.
    QMultiHash<QString, std::weak_ptr<Backend>> filesByIdentity;
    std::vector<std::weak_ptr<Backend>> linkedFiles;
    QSet<QString> opening;                       // identities of files whose backends are not mounted yet
    QHash<const Backend*, int> watches;          // numbers of the watcher; of backends that are open
    std::unique_ptr<Files::FileWatcher> watcher; // not guarded; null when files are not watched
};

} // namespace Repository
