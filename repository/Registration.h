#pragma once

#include "host/FrameworkCore/AppConfig/NotificationInterface.h"

#include <atomic>
#include <memory>
#include <vector>

namespace Repository {

class AttributeStore;

// One callback and what it listens to. Shared by the store, by the operations that are delivering to it, and
// by whoever keeps the handle.
class Registration : public FrameworkCore::AppConfig::Interfaces::RegistrationInterface
{
public:
    Registration(QString pathOrPattern, FrameworkCore::AppConfig::Interfaces::UpdateCallback callback,
                 int points, std::weak_ptr<AttributeStore> store);

    const QString& getPathOrPattern() const { return pathOrPattern; }
    bool listensTo(int point) const { return (points & point) != 0; }

    // Calls back unless the registration has ended. What a callback throws is logged and goes no further.
    void call(const QString& path, FrameworkCore::Notification::UpdatePoint point,
              FrameworkCore::Notification::UpdateResult result, const QVariant& value,
              const QString& backend) const;

    void end() override;

    // Where in its list the registration is filed, so that taking it out needs no search. Guarded by whatever
    // guards the list.
    std::size_t slot = 0;

private:
    friend class RegistrationList;

    QString pathOrPattern;
    FrameworkCore::AppConfig::Interfaces::UpdateCallback callback;
    std::weak_ptr<AttributeStore> store;
    int points;
    std::atomic<bool> ended{false};

    // Its place in a RegistrationList.
    std::shared_ptr<Registration> next;
    Registration* previous = nullptr; // not owned; null outside of a list
};

using Registrations = std::vector<std::shared_ptr<Registration>>;

// Files a registration in a list, and takes it out again in constant time; the order is not kept.
void fileRegistration(Registrations& list, std::shared_ptr<Registration> registration);
std::shared_ptr<Registration> takeRegistration(Registrations& list, const Registration& registration);

} // namespace Repository
