#include "repository/Registration.h"

#include "repository/AttributeStore.h"
#include "repository/RepositoryLog.h"

#include <exception>

namespace Repository {

Registration::Registration(QString target, FrameworkCore::AppConfig::Interfaces::UpdateCallback function,
                           int listenedPoints, std::weak_ptr<AttributeStore> owner)
    : pathOrPattern(std::move(target)), callback(std::move(function)), store(std::move(owner)),
      points(listenedPoints)
{
}

void Registration::call(const QString& path, FrameworkCore::Notification::UpdatePoint point,
                        FrameworkCore::Notification::UpdateResult result, const QVariant& value,
                        const QString& backend) const
{
    if (ended.load(std::memory_order_acquire))
        return;
    try {
        callback(path, point, result, value, backend);
    } catch (const std::exception& error) {
        logFailure(QStringLiteral("A callback registered for '%1' failed on '%2': %3")
                       .arg(pathOrPattern, path, QString::fromLocal8Bit(error.what())));
    } catch (...) {
        logFailure(QStringLiteral("A callback registered for '%1' failed on '%2'").arg(pathOrPattern, path));
    }
}

void Registration::end()
{
    if (ended.exchange(true, std::memory_order_acq_rel))
        return;
    if (const auto owner = store.lock())
        owner->removeRegistration(*this);
}

void fileRegistration(Registrations& list, std::shared_ptr<Registration> registration)
{
    registration->slot = list.size();
    list.push_back(std::move(registration));
}

std::shared_ptr<Registration> takeRegistration(Registrations& list, const Registration& registration)
{
    const std::size_t slot = registration.slot;
    if (slot >= list.size() || list[slot].get() != &registration)
        return {};
    list.back()->slot = slot;
    std::swap(list[slot], list.back());
    std::shared_ptr<Registration> taken = std::move(list.back());
    list.pop_back();
    return taken;
}

} // namespace Repository
