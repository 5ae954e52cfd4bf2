#include "host/Utilities/ModelViews/monitor/WatchedAttributeWatches.h"

namespace Utilities::ModelViews {

constexpr int watchesAtOnce = 4000; // begun or ended unnoticed

WatchedAttributeWatches::WatchedAttributeWatches(std::function<void(const Attributes&)> seenTooEarly)
    : readAgain(std::move(seenTooEarly))
{
    QObject::connect(&timer, &QTimer::timeout, [this] { serve(); });
}

void WatchedAttributeWatches::end(const Attributes& formerRows)
{
    retired.insert(retired.end(), formerRows.begin(), formerRows.end());
}

void WatchedAttributeWatches::endAll(const Attributes& formerRows)
{
    unwatched.clear();
    end(formerRows);
}

void WatchedAttributeWatches::serve()
{
    endSome(watchesAtOnce);
    beginSome(watchesAtOnce);
    if (retired.empty() && (unwatched.empty() || !notifications))
        timer.stop();
    else if (!timer.isActive())
        timer.start(0);
}

void WatchedAttributeWatches::endSome(int most)
{
    for (; most > 0 && !retired.empty(); --most) {
        retired.back()->endWatch();
        retired.pop_back();
    }
}

void WatchedAttributeWatches::beginSome(int most)
{
    Attributes seenTooEarly;
    for (; notifications && most > 0 && !unwatched.empty(); --most) {
        const std::shared_ptr<WatchedAttribute> attribute = std::move(unwatched.front());
        unwatched.pop_front();
        if (attribute->row < 0)
            continue;
        attribute->watch(*notifications);
        if (attribute->content)
            seenTooEarly.push_back(attribute);
        attribute->content.reset();
    }
    readAgain(seenTooEarly);
}

} // namespace Utilities::ModelViews
