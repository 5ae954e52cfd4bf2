#pragma once

#include "host/FrameworkCore/AppConfig/RegistrationInterface.h"

#include <QString>

#include <atomic>
#include <memory>

namespace Repository {

class AttributeStore;
class Registration;

// By this a registration is ended. It may outlive the store, and when it goes the registration stays in
// force. Any thread.
class RegistrationHandle : public FrameworkCore::AppConfig::Interfaces::RegistrationInterface
{
public:
    RegistrationHandle(QString pathOrPattern, Registration& registration,
                       std::weak_ptr<AttributeStore> store);

    void end() override;

private:
    const QString pathOrPattern;
    const std::weak_ptr<AttributeStore> store;

    // Not owned: the store keeps it, if it lives itself, until this handle ends it. Null from then on.
    std::atomic<Registration*> registration;
};

} // namespace Repository
