#include "repository/store/Subscriptions.h"

#include "repository/common/PathRules.h"
#include "repository/common/RepositoryLog.h"
#include "repository/notification/HazardGuard.h"
#include "repository/store/AttributeTree.h"
#include "repository/store/Refusals.h"
#include "repository/store/RegistrationHandle.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

Subscriptions::Subscriptions(std::shared_ptr<AttributeTree> attributes) : tree(std::move(attributes))
{
}

std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface>
Subscriptions::registerUpdateCallback(const QString& pathOrPattern,
                                      const FrameworkCore::AppConfig::Interfaces::UpdateCallback& callback,
                                      const int& points)
{
    if (isTooDeep(pathOrPattern)) {
        logged(Refusals::invalidPath(pathOrPattern).of(Outcome::Operation::Change, pathOrPattern));
        return {};
    }
    RegistrationPointer registration(new Registration(callback, points));
    auto handle = std::make_shared<RegistrationHandle>(pathOrPattern, *registration, tree);
    if (callback && pathOrPattern.contains(QLatin1Char('*'))) {
        tree->patterns.add(pathOrPattern, std::move(registration));
        return handle;
    }
    const NodeIndex::Key key(pathOrPattern);
    NodeIndex::Shard& shard = tree->index.shardOf(key);
    std::unique_lock lock(shard.mutex);
    Node* node = shard.find(key);
    if (callback && (node || isValidPath(pathOrPattern))) {
        (node ? node->exact : shard.pending[pathOrPattern].exact).add(std::move(registration));
        return handle;
    }
    lock.unlock();
    logged(Outcome(StatusCode::InvalidPath,
                   QStringLiteral("a callback needs a function and a valid path or pattern to listen to"))
               .of(Outcome::Operation::Change, pathOrPattern));
    return {};
}

void Subscriptions::remove(AttributeTree& tree, const QString& pathOrPattern, Registration& registration)
{
    registration.stop();
    if (pathOrPattern.contains(QLatin1Char('*'))) {
        tree.patterns.remove(pathOrPattern, registration);
        return;
    }
    const NodeIndex::Key key(pathOrPattern);
    HazardGuard::retire(key.hash, takeExact(tree, pathOrPattern, key, registration));
}

RegistrationPointer Subscriptions::takeExact(AttributeTree& tree, const QString& path,
                                             const NodeIndex::Key& key, const Registration& registration)
{
    NodeIndex::Shard& shard = tree.index.shardOf(key);
    const std::lock_guard lock(shard.mutex);
    if (Node* node = shard.find(key))
        return node->exact.take(registration);
    const auto pending = shard.pending.find(path);
    if (pending == shard.pending.end())
        return {};
    RegistrationPointer taken = pending->second.exact.take(registration);
    if (pending->second.exact.isEmpty() && pending->second.validations.empty())
        shard.pending.erase(pending);
    return taken;
}

} // namespace Repository
