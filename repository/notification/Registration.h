#pragma once

#include "host/FrameworkCore/AppConfig/NotificationInterface.h"

#include <QExplicitlySharedDataPointer>
#include <QSharedData>
#include <QVector>

#include <atomic>

namespace Repository {

class Registration;

using RegistrationPointer = QExplicitlySharedDataPointer<Registration>;
using Registrations = QVector<RegistrationPointer>;

// One callback and the points that it listens to. The list that it is filed in keeps it until it is ended,
// and operations that are delivering to it keep it beyond. There may be one for each of millions of
// attributes, so that it knows neither its path nor the store, which its RegistrationHandle does. Calling and
// stopping: any thread.
class Registration : public QSharedData
{
public:
    Registration(FrameworkCore::AppConfig::Interfaces::UpdateCallback callback, int points);

    int getPoints() const { return points; }
    bool listensTo(int point) const { return (points & point) != 0; }

    // Calls back unless the registration has been stopped. What a callback throws is logged and goes no
    // further.
    void call(const QString& path, FrameworkCore::Notification::UpdatePoint point,
              FrameworkCore::Notification::UpdateResult result, const QVariant& value,
              const QString& backend) const;

    // No call begins any more.
    void stop() { isStopped.store(true, std::memory_order_release); }

private:
    friend class RegistrationList;

    const quint8 points;
    std::atomic<bool> isStopped{false};

    // Its place in a RegistrationList.
    RegistrationPointer next;
    Registration* previous = nullptr; // not owned; null outside of a list

    const FrameworkCore::AppConfig::Interfaces::UpdateCallback callback;
};

} // namespace Repository
