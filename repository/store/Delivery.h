#pragma once

#include "repository/notification/HazardGuard.h"
#include "repository/notification/Registration.h"

#include <QString>
#include <QVarLengthArray>
#include <QVariant>

#include <vector>

namespace Repository {

struct Node;
class PatternIndex;

// What the watchers of one attribute are to hear of one operation. It is put together under the
// attribute's lock and sent when every lock is released.
class Delivery
{
public:
    using UpdateResult = FrameworkCore::Notification::UpdateResult;

    // Points of an operation that always notifies at all of them: creating, removing, reloading.
    static constexpr int allPoints = 15;

    // Of a write. Brings the node's list of matching patterns up to date on the way. Attribute lock held.
    // Lives and dies on the thread that makes it.
    Delivery(Node& node, const QString& path, const PatternIndex& patterns, UpdateResult result, int points,
             QVariant&& written);

    // Appends what is to be reported, if anybody listens. Attribute lock held.
    static void collect(std::vector<Delivery>& deliveries, Node& node, const PatternIndex& patterns,
                        UpdateResult result, int points = allPoints);

    // Calls back on this thread, the points in their order. No lock held. The path is that of the node: a
    // text of the caller's own is best, since threads that copy the node's one wait for each other.
    void send(const QString& path) const;
    void send() const { send(collectedPath); }

private:
    Delivery(UpdateResult outcome, int operationPoints) : result(outcome), points(operationPoints) {}

    // Brings the node's list of matching patterns up to date, and gives the one before. The path is that of
    // the node, or null where nobody has it at hand.
    static Registrations updateMatching(Node& node, const QString* path, const PatternIndex& patterns);
    static bool hasListeners(const Node& node);

    void addContent(const Node& node, QVariant&& valueToTell);
    void call(const Registration& registration, const QString& path,
              FrameworkCore::Notification::UpdatePoint point) const;

    // Those of the path itself, and those of patterns.
    HazardGuard hold;
    QVarLengthArray<const Registration*, 4> held; // not owned, but kept by the hold
    Registrations counted;                        // or these, where a hold is not possible
    Registrations matching;
    Registrations outdated; // may be the last to hold what has ended, which must not go under the lock
    QString collectedPath;
    QVariant value;
    QString backend;
    UpdateResult result;
    int points;       // of the operation
    int listened = 0; // those that somebody may listen to
};

} // namespace Repository
