#include "host/Utilities/ModelViews/monitor/WatchedAttributeLights.h"

#include <algorithm>

namespace Utilities::ModelViews {

WatchedAttributeLights::WatchedAttributeLights(std::function<void(const Attributes&)> gone)
    : tellGone(std::move(gone))
{
    clock.start();
    constexpr int period = 200; // milliseconds between looks for lights that are over
    timer.setInterval(period);
    QObject::connect(&timer, &QTimer::timeout, [this] { endSome(); });
}

void WatchedAttributeLights::light(const std::shared_ptr<WatchedAttribute>& attribute)
{
    constexpr qint64 lightTime = 1000; // milliseconds
    attribute->litUntil = clock.elapsed() + lightTime;
    if (!attribute->isLit)
        lit.push_back(attribute);
    attribute->isLit = true;
    if (!timer.isActive())
        timer.start();
}

void WatchedAttributeLights::endSome()
{
    const auto isStillLit = [now = clock.elapsed()](const std::shared_ptr<WatchedAttribute>& attribute) {
        return attribute->row >= 0 && attribute->litUntil > now;
    };
    const auto over = std::partition(lit.begin(), lit.end(), isStillLit);
    const Attributes gone(over, lit.end());
    lit.erase(over, lit.end());
    for (const auto& attribute : gone)
        attribute->isLit = false;
    if (lit.empty())
        timer.stop();
    tellGone(gone);
}

} // namespace Utilities::ModelViews
