#include "repository/store/AttachedRules.h"

#include "repository/common/PathRules.h"
#include "repository/common/RepositoryLog.h"
#include "repository/store/AttributeTree.h"
#include "repository/store/Refusals.h"
#include "repository/validation/Rule.h"

namespace Repository {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

AttachedRules::AttachedRules(std::shared_ptr<AttributeTree> attributes) : tree(std::move(attributes))
{
}

QStringList AttachedRules::getValidationNames()
{
    return ruleNames();
}

QVector<FrameworkCore::AppConfig::Interfaces::ValidationDescription>
AttachedRules::getValidationDescriptions()
{
    return ruleDescriptions();
}

int AttachedRules::addValidation(const QString& path, const QString& name)
{
    QString reason;
    const auto rule = makeRule(name, reason);
    if (!rule || !isValidPath(path)) {
        Outcome outcome = rule ? Refusals::invalidPath(path) : Outcome(StatusCode::NotFound, reason);
        outcome.change().argument = name;
        logged(outcome.of(Outcome::Operation::AddValidation, path));
        return 0;
    }
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = tree->index.shardOf(key);
    const std::lock_guard lock(shard.mutex);
    Node* node = shard.find(key);
    Rules& rules = node ? node->extrasToFill().rules : shard.waiting[path].rules;
    rules.push_back(rule);
    return 1;
}

QStringList AttachedRules::getValidationsOf(const QString& path) const
{
    const NodeIndex::Key key(path);
    NodeIndex::Shard& shard = tree->index.shardOf(key);
    const std::lock_guard lock(shard.mutex);
    const Node* const node = shard.find(key);
    const auto waiting = shard.waiting.find(path);
    const Rules* const rules =
        node ? node->getRules() : (waiting == shard.waiting.end() ? nullptr : &waiting->second.rules);
    QStringList names;
    if (rules) {
        for (const auto& rule : *rules)
            names.append(rule->name);
    }
    return names;
}

} // namespace Repository
