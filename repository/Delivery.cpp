#include "repository/Delivery.h"

#include "repository/Backend.h"
#include "repository/Node.h"
#include "repository/PatternIndex.h"

#include <algorithm>

namespace Repository {

using FrameworkCore::Notification::UpdatePoint;

bool Delivery::hasListeners(Node& node, const PatternIndex& patterns)
{
    const quint32 generation = patterns.getGeneration();
    if (node.patternGeneration != generation) {
        node.matching = patterns.match(node.path);
        node.patternGeneration = generation;
    }
    return !node.exact.isEmpty() || node.matching;
}

void Delivery::collect(std::vector<Delivery>& deliveries, Node& node, const PatternIndex& patterns,
                       UpdateResult result)
{
    if (hasListeners(node, patterns))
        deliveries.emplace_back(node, patterns, result, allPoints, node.path);
}

Delivery::Delivery(Node& node, const PatternIndex& patterns, UpdateResult outcome, int operationPoints,
                   const QString& nodePath)
    : result(outcome), points(operationPoints)
{
    if (!hasListeners(node, patterns))
        return;
    node.exact.forEach([this](const auto& registration) { exact.append(registration); });
    matching = node.matching;
    path = nodePath;
    if (node.isReadable() && result != UpdateResult::Removed)
        value = node.value;
    if (node.backend)
        backend = node.backend->getName();
}

void Delivery::send() const
{
    if (isEmpty())
        return;
    for (const UpdatePoint point : {UpdatePoint::BeforeValidation, UpdatePoint::AfterValidation,
                                    UpdatePoint::BeforeStore, UpdatePoint::AfterStore}) {
        const int bit = static_cast<int>(point);
        if ((points & bit) == 0)
            continue;
        const auto call = [&](const std::shared_ptr<Registration>& registration) {
            if (registration->listensTo(bit))
                registration->call(path, point, result, value, backend);
        };
        std::for_each(exact.begin(), exact.end(), call);
        if (matching)
            std::for_each(matching->begin(), matching->end(), call);
    }
}

} // namespace Repository
