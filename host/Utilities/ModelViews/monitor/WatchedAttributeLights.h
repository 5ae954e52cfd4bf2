#pragma once

#include "host/Utilities/ModelViews/monitor/WatchedAttribute.h"

#include <QElapsedTimer>
#include <QTimer>

#include <functional>

namespace Utilities::ModelViews {

// Keeps attributes lit for a second after their last change. GUI thread.
class WatchedAttributeLights
{
public:
    using Attributes = WatchedAttributeInbox::Attributes;

    explicit WatchedAttributeLights(std::function<void(const Attributes&)> gone);

    void light(const std::shared_ptr<WatchedAttribute>& attribute);

private:
    void endSome();

    const std::function<void(const Attributes&)> tellGone;
    Attributes lit;
    QElapsedTimer clock;
    QTimer timer;
};

} // namespace Utilities::ModelViews
