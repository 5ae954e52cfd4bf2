#pragma once

#include "host/FrameworkCore/AppConfig/NotificationInterface.h"
#include "repository/notification/RegistrationList.h"
#include "repository/store/NodeIndex.h"

#include <memory>

namespace Repository {

struct AttributeTree;

// Files registrations in the tree, by their path or pattern. Any thread.
class Subscriptions : public FrameworkCore::AppConfig::Interfaces::NotificationInterface
{
public:
    explicit Subscriptions(std::shared_ptr<AttributeTree> tree);

    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface>
    registerUpdateCallback(const QString& pathOrPattern,
                           const FrameworkCore::AppConfig::Interfaces::UpdateCallback& callback,
                           const int& points) override;

    // The registration is filed there, and must not be used afterwards.
    static void remove(AttributeTree& tree, const QString& pathOrPattern, Registration& registration);

private:
    static RegistrationPointer takeExact(AttributeTree& tree, const QString& path, const NodeIndex::Key& key,
                                         const Registration& registration);

    std::shared_ptr<AttributeTree> tree;
};

} // namespace Repository
