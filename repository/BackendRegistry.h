#pragma once

#include "files/FileWatcher.h"
#include "host/FrameworkCore/AppConfig/BackendInterface.h"
#include "repository/Backend.h"

#include <QHash>
#include <QSet>

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace Repository {

class AttributeStore;

// Creates, reloads and saves backends, and logs why it refuses. Any thread.
class BackendRegistry : public FrameworkCore::AppConfig::Interfaces::BackendInterface
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;

    // Hears what comes of work that no caller waits for. Any thread.
    using Observer = std::function<void(const Outcome& outcome)>;

    // With watching, what other programs do to the files is brought in as it happens; what comes of that is
    // logged, and the observer, if there is one, hears it.
    BackendRegistry(std::shared_ptr<AttributeStore> store, bool watchesFiles, Observer observer);
    ~BackendRegistry() override;

    static QStringList getTypes();

    bool createBackend(const QString& type, const QString& name,
                       const FrameworkCore::AppConfig::BackendConfiguration& configuration,
                       const int& option) override;
    bool saveBackend(const QString& name) override;
    Outcome mount(const QString& type, const QString& name,
                  const FrameworkCore::AppConfig::BackendConfiguration& configuration, int option) override;
    Outcome save(const QString& name) override;
    QStringList getBackendNames() override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::BackendInformationInterface>
    getBackendInformation(const QString& name) override;
    Outcome reloadBackend(const QString& name) override;
    Outcome closeBackend(const QString& name, bool discardChanges) override;

private:
    // The option of createBackend that reloads a backend which exists already; any other refuses it.
    static constexpr int createOrReload = 3;

    Outcome create(const Backend::Description& description, int option);
    Outcome reload(Backend& backend);
    Outcome operate(const QString& name, Outcome::Operation what,
                    const std::function<Outcome(const std::shared_ptr<Backend>&)>& operation);
    Outcome reserve(const QString& identity);
    std::vector<std::shared_ptr<Backend>> mayBeOf(const QString& identity) const;
    void noteFile(const std::shared_ptr<Backend>& backend, const QString& identity);
    void forgetFile(const Backend& backend);
    void watch(const std::shared_ptr<Backend>& backend, std::chrono::system_clock::time_point since);
    void unwatch(const Backend& backend);
    static Outcome checkDescription(const Backend::Description& description);

    std::shared_ptr<AttributeStore> store;
    const Observer observer; // not guarded; copied into what the watcher calls
    std::mutex mutex;        // guards what follows
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
