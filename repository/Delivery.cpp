#include "repository/Delivery.h"

#include "repository/Backend.h"
#include "repository/Node.h"
#include "repository/PatternIndex.h"

namespace Repository {

using FrameworkCore::Notification::UpdatePoint;

bool Delivery::hasListeners(Node& node, const PatternIndex& patterns)
{
    const quint32 generation = patterns.getGeneration();
    if (node.patternGeneration != generation) {
        const Registrations matching = patterns.match(node.path);
        if (node.extras || !matching.isEmpty())
            node.extrasToFill().matching = matching;
        node.patternGeneration = generation & PatternIndex::lastGeneration;
    }
    return !node.exact.isEmpty() || (node.extras && !node.extras->matching.isEmpty());
}

void Delivery::collect(std::vector<Delivery>& deliveries, Node& node, const PatternIndex& patterns,
                       UpdateResult result)
{
    if (!hasListeners(node, patterns))
        return;
    Delivery& delivery = deliveries.emplace_back(Delivery(result, allPoints));
    node.exact.forEach([&](const auto& registration) { delivery.counted.append(registration); });
    delivery.collectedPath = node.path;
    delivery.addContent(node);
}

Delivery::Delivery(Node& node, const PatternIndex& patterns, UpdateResult outcome, int operationPoints,
                   quint32 pathHash)
    : Delivery(outcome, operationPoints)
{
    if (!hasListeners(node, patterns))
        return;
    const bool isHeld = !node.exact.isEmpty() && hold.begin(pathHash);
    node.exact.forEach([&](const auto& registration) {
        if (isHeld)
            held.append(registration.data());
        else
            counted.append(registration);
    });
    addContent(node);
}

Delivery::Delivery(UpdateResult outcome, int operationPoints) : result(outcome), points(operationPoints)
{
}

void Delivery::addContent(const Node& node)
{
    if (node.extras)
        matching = node.extras->matching;
    if (node.isReadable() && result != UpdateResult::Removed)
        value = node.value;
    if (node.backend)
        backend = node.backend->getName();
}

void Delivery::send(const QString& path) const
{
    for (const UpdatePoint point : {UpdatePoint::BeforeValidation, UpdatePoint::AfterValidation,
                                    UpdatePoint::BeforeStore, UpdatePoint::AfterStore}) {
        if ((points & static_cast<int>(point)) == 0)
            continue;
        for (const Registration* registration : held)
            call(*registration, path, point);
        for (const auto& registration : counted)
            call(*registration, path, point);
        for (const auto& registration : matching)
            call(*registration, path, point);
    }
}

void Delivery::call(const Registration& registration, const QString& path, UpdatePoint point) const
{
    if (registration.listensTo(static_cast<int>(point)))
        registration.call(path, point, result, value, backend);
}

} // namespace Repository
