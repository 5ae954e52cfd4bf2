#include "repository/store/Delivery.h"

#include "repository/backends/Backend.h"
#include "repository/notification/PatternIndex.h"
#include "repository/store/Node.h"

namespace Repository {

using FrameworkCore::Notification::UpdatePoint;

Registrations Delivery::updateMatching(Node& node, const QString* path, const PatternIndex& patterns)
{
    const quint32 generation = patterns.getGeneration();
    if (node.getPatternGeneration() == generation)
        return {};
    Registrations matching = patterns.match(path ? *path : node.getPath());
    if (node.listeners.getBlock() || !matching.isEmpty())
        node.listeners.ensureBlock().matching.swap(matching);
    node.setPatternGeneration(generation);
    return matching;
}

bool Delivery::hasListeners(const Node& node)
{
    const NodeListeners::Block* const block = node.listeners.getBlock();
    return !node.listeners.getExact().isEmpty() || (block && !block->matching.isEmpty());
}

void Delivery::collect(std::vector<Delivery>& deliveries, Node& node, const PatternIndex& patterns,
                       UpdateResult result, int points)
{
    Registrations outdated = updateMatching(node, nullptr, patterns);
    if (!hasListeners(node) && outdated.isEmpty())
        return;
    if (result == UpdateResult::Reordered)
        points = int(UpdatePoint::AfterReorder);
    Delivery& delivery = deliveries.emplace_back(Delivery(result, points));
    delivery.outdated = std::move(outdated);
    node.listeners.getExact().forEach([&](const auto& registration) {
        delivery.counted.append(registration);
        delivery.listened |= registration->getPoints();
    });
    delivery.collectedPath = node.getPath();
    const bool tellsValue = result != UpdateResult::Removed && node.isReadable();
    delivery.addContent(node, tellsValue ? node.value.toVariant() : QVariant());
}

Delivery::Delivery(Node& node, const QString& path, const PatternIndex& patterns, UpdateResult outcome,
                   int operationPoints, QVariant&& written)
    : Delivery(outcome, operationPoints)
{
    outdated = updateMatching(node, &path, patterns);
    if (!hasListeners(node))
        return;
    const bool isHeld = !node.listeners.getExact().isEmpty() && hold.begin(node.pathHash);
    node.listeners.getExact().forEach([&](const auto& registration) {
        if (isHeld)
            held.append(registration.data());
        else
            counted.append(registration);
        listened |= registration->getPoints();
    });
    addContent(node, std::move(written));
}

void Delivery::addContent(const Node& node, QVariant&& valueToTell)
{
    const NodeListeners::Block* const block = node.listeners.getBlock();
    if (block && !block->matching.isEmpty()) {
        matching = block->matching;
        listened = points; // there may be many: they are asked when they are called
    }
    if (node.isReadable())
        value = std::move(valueToTell);
    if (node.backend)
        backend = node.backend->getName();
}

void Delivery::send(const QString& path) const
{
    static constexpr UpdatePoint inOrder[] = {UpdatePoint::BeforeValidation, UpdatePoint::AfterValidation,
                                              UpdatePoint::BeforeStore, UpdatePoint::AfterStore,
                                              UpdatePoint::AfterReorder};
    for (const UpdatePoint point : inOrder) {
        if ((points & listened & static_cast<int>(point)) == 0)
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
