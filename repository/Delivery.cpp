#include "repository/Delivery.h"

#include "repository/Backend.h"
#include "repository/Node.h"
#include "repository/PatternIndex.h"

#include <algorithm>

namespace Repository {

using FrameworkCore::Notification::UpdatePoint;

Delivery::Delivery(Node& node, const PatternIndex& patterns, UpdateResult outcome, int operationPoints)
    : result(outcome), points(operationPoints)
{
    const quint32 generation = patterns.getGeneration();
    if (node.patternGeneration != generation) {
        node.matching = patterns.match(node.path);
        node.patternGeneration = generation;
    }
    exact.reserve(int(node.exact.size()));
    for (const auto& registration : node.exact)
        exact.append(registration);
    matching = node.matching;
    if (isEmpty())
        return;
    path = node.path;
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
