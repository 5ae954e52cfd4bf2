#include "host/Utilities/UpdateCounter.h"

#include <atomic>

namespace Utilities {

namespace {

using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

std::atomic<qint32> updateCounter{0};

} // namespace

UpdateCounter::Callback UpdateCounter::countOfPath()
{
    return [](const QString&, const UpdatePoint&, const UpdateResult&, const QVariant&, const QString&) {
        ++updateCounter;
    };
}

UpdateCounter::Callback UpdateCounter::countOfPattern()
{
    return [](const QString&, const UpdatePoint&, const UpdateResult&, const QVariant&, const QString&) {
        ++updateCounter;
    };
}

qint32 UpdateCounter::getCount()
{
    return updateCounter;
}

void UpdateCounter::reset()
{
    updateCounter = 0;
}

} // namespace Utilities
