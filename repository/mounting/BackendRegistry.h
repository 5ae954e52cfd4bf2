#pragma once

#include "host/FrameworkCore/AppConfig/BackendInterface.h"
#include "repository/backends/BackendKind.h"

#include <functional>
#include <memory>
#include <vector>

namespace Repository {

class AttributeStore;

// Creates, reloads and saves backends, and logs why it refuses. Any thread.
class BackendRegistry : public FrameworkCore::AppConfig::Interfaces::BackendInterface
{
public:
    using Outcome = FrameworkCore::AppConfig::Outcome;

    // With watching, what other programs do to the files is brought in as it happens; what comes of that is
    // logged, and the observer, if there is one, hears it.
    BackendRegistry(std::shared_ptr<AttributeStore> store, bool watchesFiles, BackendKind::Observer observer);
    ~BackendRegistry() override;

    QStringList getTypes() const;

    bool createBackend(const QString& type, const QString& name,
                       const FrameworkCore::AppConfig::BackendConfiguration& configuration,
                       const int& option) override;
    bool saveBackend(const QString& name) override { return save(name).ok(); }
    Outcome mount(const QString& type, const QString& name,
                  const FrameworkCore::AppConfig::BackendConfiguration& configuration, int option) override;
    Outcome save(const QString& name) override;
    QStringList getBackendNames() override;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::BackendInformationInterface>
    getBackendInformation(const QString& name) override;
    Outcome reloadBackend(const QString& name) override;
    Outcome closeBackend(const QString& name, bool discardChanges) override;
    Outcome setLocked(const QString& name, bool isLocked) override;
    QStringList getLockedBackends() override;

private:
    // The option of createBackend that reloads a backend which exists already; any other refuses it.
    static constexpr int createOrReload = 3;

    BackendKind* kindOf(const QString& type) const;
    Outcome open(BackendKind& kind, const Backend::Description& description);
    Outcome create(BackendKind& kind, const Backend::Description& description, int option);
    Outcome reload(Backend& backend);
    Outcome operate(const QString& name, Outcome::Operation what,
                    const std::function<Outcome(const std::shared_ptr<Backend>&)>& operation);
    static Outcome checkDescription(const Backend::Description& description);

    std::shared_ptr<AttributeStore> store;
    std::vector<std::unique_ptr<BackendKind>> kinds;
};

} // namespace Repository
