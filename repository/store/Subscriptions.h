#pragma once

#include "host/FrameworkCore/AppConfig/NotificationInterface.h"

#include <memory>

namespace Repository {

struct AttributeTree;

// Files registrations in the tree, by their path or pattern. Any thread.
class Subscriptions : public FrameworkCore::AppConfig::Interfaces::NotificationInterface
{
public:
    explicit Subscriptions(std::shared_ptr<AttributeTree> attributes) : tree(std::move(attributes)) {}

    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface>
    registerUpdateCallback(const QString& pathOrPattern,
                           const FrameworkCore::AppConfig::Interfaces::UpdateCallback& callback,
                           const int& points) override;

private:
    std::shared_ptr<AttributeTree> tree;
};

} // namespace Repository
