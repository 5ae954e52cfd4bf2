#include "repository/store/Subscriptions.h"

#include "repository/common/PathRules.h"
#include "repository/common/RepositoryLog.h"
#include "repository/common/Texts.h"
#include "repository/notification/HazardGuard.h"
#include "repository/store/AttributeTree.h"
#include "repository/store/Refusals.h"

#include <atomic>
#include <chrono>
#include <shared_mutex>
#include <thread>

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

namespace {

bool isPattern(const QString& path)
{
    return path.contains(QLatin1Char('*'));
}

RegistrationPointer takeExact(AttributeTree& tree, const QString& path, const NodeIndex::Key& key,
                              const Registration& registration)
{
    NodeIndex::Shard& shard = tree.index.shardOf(key);
    const std::lock_guard lock(shard.mutex);
    if (Node* node = shard.find(key))
        return node->listeners.getExact().take(registration);
    const auto pending = shard.pending.find(path);
    if (pending == shard.pending.end())
        return {};
    RegistrationPointer taken = pending->second.exact.take(registration);
    if (pending->second.exact.isEmpty() && pending->second.validations.empty())
        shard.pending.erase(pending);
    return taken;
}

// The registration is filed there, and must not be used afterwards.
void remove(AttributeTree& tree, const QString& pathOrPattern, Registration& registration)
{
    registration.stop();
    if (isPattern(pathOrPattern)) {
        tree.patterns.remove(pathOrPattern, registration);
        return;
    }
    const NodeIndex::Key key(pathOrPattern);
    HazardGuard::retire(key.hash, takeExact(tree, pathOrPattern, key, registration));
}

// Takes an ended registration out of the attributes that know it as matching. Otherwise each lets it go when
// it is written.
void forget(AttributeTree& tree, const RegistrationPointer& ended)
{
    const std::shared_lock lock(tree.structure);
    for (Node* const node : subtreeOf(tree.top, nullptr)) {
        const std::lock_guard shardLock(tree.index.shardOf(*node).mutex);
        if (NodeListeners::Block* const block = node->listeners.getBlock())
            block->matching.removeOne(ended);
    }
}

// By this a registration is ended. It may outlive the tree, and when it goes the registration stays in
// force. Any thread.
class RegistrationHandle : public FrameworkCore::AppConfig::Interfaces::RegistrationInterface
{
public:
    RegistrationHandle(QString target, Registration& filed, std::weak_ptr<AttributeTree> owner)
        : pathOrPattern(std::move(target)), tree(std::move(owner)), registration(&filed)
    {
    }

    void end() override
    {
        const auto owner = tree.lock();
        Registration* const ending = registration.exchange(nullptr, std::memory_order_acq_rel);
        if (owner && ending)
            remove(*owner, pathOrPattern, *ending);
    }

    void endAndWait() override
    {
        const auto owner = tree.lock();
        const RegistrationPointer ending(registration.exchange(nullptr, std::memory_order_acq_rel));
        if (!owner || !ending)
            return;
        remove(*owner, pathOrPattern, *ending);
        if (isPattern(pathOrPattern))
            forget(*owner, ending);
        constexpr std::chrono::milliseconds pause(1);
        while (ending->ref.loadAcquire() > 1) // deliveries under way
            std::this_thread::sleep_for(pause);
    }

private:
    const QString pathOrPattern;
    const std::weak_ptr<AttributeTree> tree;

    // Not owned: the tree keeps it, if it lives itself, until this handle ends it. Null from then on.
    std::atomic<Registration*> registration;
};

} // namespace

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
    if (callback && isPattern(pathOrPattern)) {
        tree->patterns.add(pathOrPattern, std::move(registration));
        return handle;
    }
    const NodeIndex::Key key(pathOrPattern);
    NodeIndex::Shard& shard = tree->index.shardOf(key);
    std::unique_lock lock(shard.mutex);
    Node* node = shard.find(key);
    if (callback && (node || isValidPath(pathOrPattern))) {
        (node ? node->listeners.getExact() : shard.pending[pathOrPattern].exact).add(std::move(registration));
        return handle;
    }
    lock.unlock();
    logged(Outcome(StatusCode::InvalidPath,
                   Texts::tr("a callback needs a function and a valid path or pattern to listen to"))
               .of(Outcome::Operation::Change, pathOrPattern));
    return {};
}

} // namespace Repository
