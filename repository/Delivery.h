#pragma once

#include "repository/Registration.h"

#include <QString>
#include <QVarLengthArray>
#include <QVariant>

#include <vector>

namespace Repository {

struct Node;
class PatternIndex;

// What the watchers of one attribute are to be told of one operation. It is put together under the
// attribute's lock and sent when every lock is released.
class Delivery
{
public:
    using UpdateResult = FrameworkCore::Notification::UpdateResult;

    // Points of an operation that always tells of all of them: creating, removing, reloading.
    static constexpr int allPoints = 15;

    // Brings the node's list of matching patterns up to date on the way. Attribute lock held. The path is
    // that of the node: a text of the caller's own is best, since threads that copy the node's one wait for
    // each other.
    Delivery(Node& node, const PatternIndex& patterns, UpdateResult result, int points, const QString& path);

    // Appends what is to be told at all points, if anybody listens. Attribute lock held.
    static void collect(std::vector<Delivery>& deliveries, Node& node, const PatternIndex& patterns,
                        UpdateResult result);

    bool isEmpty() const { return exact.isEmpty() && !matching; }

    // Calls back on this thread, the points in their order. No lock held.
    void send() const;

private:
    static bool hasListeners(Node& node, const PatternIndex& patterns);

    QVarLengthArray<std::shared_ptr<Registration>, 2> exact;
    std::shared_ptr<const Registrations> matching;
    QString path;
    QVariant value;
    QString backend;
    UpdateResult result;
    int points;
};

} // namespace Repository
