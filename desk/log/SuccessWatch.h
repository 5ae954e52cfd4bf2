#pragma once

#include "host/FrameworkCore/AppConfig/NotificationInterface.h"

#include <QObject>

#include <memory>

namespace Vantry {

// Waits until the person's own thread, the one that made this, has written an attribute or created it. What
// others write, as programs that watch and control, does not count. GUI thread.
class SuccessWatch : public QObject
{
    Q_OBJECT

public:
    using Notifications = FrameworkCore::AppConfig::Interfaces::NotificationInterface;

    explicit SuccessWatch(std::shared_ptr<Notifications> notifications, QObject* parent = nullptr);
    ~SuccessWatch() override { watch({}); }

    // Instead of the one before; nothing for an empty path.
    void watch(const QString& path);

signals:
    void succeeded();

private:
    std::shared_ptr<Notifications> notifications;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RegistrationInterface> registration;
};

} // namespace Vantry
