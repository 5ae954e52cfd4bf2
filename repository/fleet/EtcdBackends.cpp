#include "repository/fleet/EtcdBackends.h"

#include "repository/common/Texts.h"
#include "repository/fleet/EtcdBackend.h"
#include "repository/fleet/EtcdLocation.h"
#include "repository/fleet/StoreModule.h"
#include "repository/fleet/StoreSession.h"
#include "repository/fleet/WindowThread.h"
#include "repository/store/AttributeTree.h"

#include <system_error>

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

EtcdBackends::EtcdBackends(std::shared_ptr<AttributeTree> attributes, Observer hearer)
    : tree(std::move(attributes)), observer(std::move(hearer))
{
}

EtcdBackends::~EtcdBackends()
{
    for (const auto& session : std::as_const(sessions))
        session->stop();
}

QString EtcdBackends::toLocation(const QString& given) const
{
    return EtcdLocation(given).toText();
}

bool EtcdBackends::isSamePlace(const QString& location, const QString& other) const
{
    return EtcdLocation(location).toText() == EtcdLocation(other).toText();
}

Outcome EtcdBackends::open(const Backend::Description& description, const Mount& mount)
{
    const EtcdLocation location(description.filePath);
    if (!location.getError().isEmpty())
        return {StatusCode::InvalidPath, location.getError()};
    StoreSettings settings;
    QString error = location.read(settings);
    auto transport = error.isEmpty() ? StoreModule::open(settings, error) : nullptr;
    if (!transport)
        return {StatusCode::BackendFailure, error};
    auto state = std::make_shared<StoreState>();
    state->queues = location.isQueueing();
    const auto backend = std::make_shared<EtcdBackend>(description, state);
    Outcome outcome = mount(backend);
    if (!outcome.ok())
        return outcome;
    const auto session =
        std::make_shared<StoreSession>(std::move(transport), location.getPrefix(), settings.endpoints.size(),
                                       std::move(state), backend, tree, observer);
    {
        const std::lock_guard lock(mutex);
        sessions.insert(backend.get(), session);
    }
    try {
        session->start();
    } catch (const std::system_error& failure) {
        return {StatusCode::BackendFailure,
                Texts::tr("it has no thread to work on: %1").arg(QString::fromLocal8Bit(failure.what()))};
    }
    return isWindowThread() ? outcome : session->waitForLoading();
}

void EtcdBackends::forget(const Backend& backend)
{
    std::shared_ptr<StoreSession> session;
    {
        const std::lock_guard lock(mutex);
        session = sessions.take(&backend);
    }
    if (session)
        session->stop();
}

} // namespace Repository
