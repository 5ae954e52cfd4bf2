#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <QString>

namespace FrameworkCore::Notification {

// Where an update comes from, for the callbacks that are notified of it on this thread. Any thread.
class VANTRY_CORE_EXPORT UpdateOrigin
{
public:
    // While it lives, updates of this thread have that origin.
    explicit UpdateOrigin(const QString& origin);
    ~UpdateOrigin();
    Q_DISABLE_COPY(UpdateOrigin)

    // "fleet" within a callback about what another machine has written; empty for all else.
    static QString current();

private:
    const QString before;
};

} // namespace FrameworkCore::Notification
