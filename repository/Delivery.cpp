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
        node.matching = patterns.match(node.path);
        node.patternGeneration = generation;
    }
    return !node.exact.isEmpty() || node.matching;
}

void Delivery::collect(std::vector<Delivery>& deliveries, Node& node, const PatternIndex& patterns,
                       UpdateResult result)
{
    if (!hasListeners(node, patterns))
        return;
    Delivery& delivery = deliveries.emplace_back(Delivery(result, allPoints));
    node.exact.forEach([&](const auto& registration) { delivery.counted.push_back(registration); });
    delivery.addContent(node, node.path);
}

Delivery::Delivery(Node& node, const PatternIndex& patterns, UpdateResult outcome, int operationPoints,
                   const QString& path, std::uint64_t pathHash)
    : Delivery(outcome, operationPoints)
{
    if (!hasListeners(node, patterns))
        return;
    const bool isHeld = !node.exact.isEmpty() && hold.begin(pathHash);
    node.exact.forEach([&](const auto& registration) {
        if (isHeld)
            held.append(registration.get());
        else
            counted.push_back(registration);
    });
    addContent(node, path);
}

Delivery::Delivery(UpdateResult outcome, int operationPoints) : result(outcome), points(operationPoints)
{
}

void Delivery::addContent(const Node& node, const QString& path)
{
    if (node.matching) {
        matching = node.matching;
        pathOfMatching = path;
    }
    if (node.isReadable() && result != UpdateResult::Removed)
        value = node.value;
    if (node.backend)
        backend = node.backend->getName();
}

void Delivery::send() const
{
    for (const UpdatePoint point : {UpdatePoint::BeforeValidation, UpdatePoint::AfterValidation,
                                    UpdatePoint::BeforeStore, UpdatePoint::AfterStore}) {
        if ((points & static_cast<int>(point)) == 0)
            continue;
        for (const Registration* registration : held)
            call(*registration, registration->getPathOrPattern(), point);
        for (const auto& registration : counted)
            call(*registration, registration->getPathOrPattern(), point);
        if (!matching)
            continue;
        for (const auto& registration : *matching)
            call(*registration, pathOfMatching, point);
    }
}

void Delivery::call(const Registration& registration, const QString& path, UpdatePoint point) const
{
    if (registration.listensTo(static_cast<int>(point)))
        registration.call(path, point, result, value, backend);
}

} // namespace Repository
