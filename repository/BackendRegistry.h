#pragma once

#include "host/FrameworkCore/AppConfig/BackendInterface.h"
#include "repository/Backend.h"

#include <QSet>

#include <memory>
#include <mutex>

namespace Repository {

class AttributeStore;

// Creates, reloads and saves backends, and logs why it refuses. Any thread.
class BackendRegistry : public FrameworkCore::AppConfig::Interfaces::BackendInterface
{
public:
    explicit BackendRegistry(std::shared_ptr<AttributeStore> store);

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
    static QString checkDescription(const Backend::Description& description);

    std::shared_ptr<AttributeStore> store;
    std::mutex mutex;
    QSet<QString> opening; // identities of files whose backends are not mounted yet; guarded by mutex
};

} // namespace Repository
