#include "repository/transaction/SubtreeRemoval.h"

#include "repository/common/PathRules.h"
#include "repository/store/Refusals.h"
#include "repository/transaction/Projection.h"

namespace Repository {

using FrameworkCore::AppConfig::isWritable;
using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;

Outcome SubtreeRemoval::removeFromBackend()
{
    for (const auto& backend : edit.getTree().backends) {
        if (!isAtOrBelow(backend->getName(), node.path))
            continue;
        Outcome outcome(StatusCode::NotWritable, QStringLiteral("it holds the root of the backend"));
        outcome.change().details.append({backend->getName(), {}});
        return outcome.advise(QStringLiteral("close that backend instead"));
    }
    for (const Node* below : subtreeOf(node, nullptr)) {
        if (below->isAttribute() && !isWritable(below->getAccess()))
            return Refusals::readOnly(*below);
    }
    if (!node.backend)
        return {};
    edit.editDocument(*node.backend);
    movesOthers = node.backend->removalMovesOthers(node.path);
    return node.backend->remove(node.path);
}

void SubtreeRemoval::removeFromTree()
{
    Backend* const backend = node.backend;
    Node& parent = *node.parent;
    edit.remove(node);
    if (movesOthers)
        Projection(edit).showAll(*backend);
    else
        edit.prune(parent);
}

} // namespace Repository
