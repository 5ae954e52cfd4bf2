#include "repository/transaction/SubtreeRemoval.h"

#include "repository/common/PathRules.h"
#include "repository/common/Texts.h"
#include "repository/store/Refusals.h"
#include "repository/store/WriteCheck.h"
#include "repository/transaction/Projection.h"

namespace Repository {

using FrameworkCore::AppConfig::isWritable;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

Outcome SubtreeRemoval::run()
{
    Outcome outcome = removeFromBackend();
    if (outcome.ok())
        removeFromTree();
    return outcome;
}

Outcome SubtreeRemoval::check()
{
    for (const auto& backend : transaction.getNodes().getTree().backends) {
        if (!node.leadsTo(backend->getName()))
            continue;
        Outcome outcome(StatusCode::NotWritable, Texts::tr("it holds the root of the backend"));
        outcome.change().details.append({backend->getName(), {}});
        return outcome.advise(Texts::tr("close that backend instead"));
    }
    for (const Node* below : subtreeOf(node, nullptr)) {
        if (below->isAttribute() && !isWritable(presentAccess(*below)))
            return Refusals::readOnly(*below);
    }
    movesOthers = node.backend && node.backend->removalMovesOthers(node.getPath());
    return {};
}

Outcome SubtreeRemoval::removeFromBackend()
{
    Outcome outcome = check();
    return outcome.ok() && node.backend ? transaction.edit(*node.backend).remove(node.getPath()) : outcome;
}

void SubtreeRemoval::removeFromTree()
{
    Backend* const backend = node.backend;
    Node& parent = *node.parent;
    if (backend && !movesOthers && backend->contains(node.getPath()))
        return; // it shows now what it hid; see showLinked
    transaction.getNodes().remove(node);
    if (movesOthers)
        Projection(transaction).showAll(*backend);
    else
        transaction.getNodes().prune(parent);
}

} // namespace Repository
