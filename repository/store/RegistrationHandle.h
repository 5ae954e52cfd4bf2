#pragma once

#include "host/FrameworkCore/AppConfig/RegistrationInterface.h"

#include <QString>

#include <atomic>
#include <memory>

namespace Repository {

struct AttributeTree;
class Registration;

// By this a registration is ended. It may outlive the tree, and when it goes the registration stays in
// force. Any thread.
class RegistrationHandle : public FrameworkCore::AppConfig::Interfaces::RegistrationInterface
{
public:
    RegistrationHandle(QString pathOrPattern, Registration& registration, std::weak_ptr<AttributeTree> tree);

    void end() override;

private:
    const QString pathOrPattern;
    const std::weak_ptr<AttributeTree> tree;

    // Not owned: the tree keeps it, if it lives itself, until this handle ends it. Null from then on.
    std::atomic<Registration*> registration;
};

} // namespace Repository
