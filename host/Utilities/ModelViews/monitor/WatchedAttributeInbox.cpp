#include "host/Utilities/ModelViews/monitor/WatchedAttributeInbox.h"

#include "host/Utilities/ModelViews/monitor/WatchedAttribute.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace Utilities::ModelViews {

using Guard = std::lock_guard<std::mutex>;

void WatchedAttributeInbox::setReceiver(QObject* object)
{
    Attributes dropped; // after the lock is released
    const Guard guard(mutex);
    receiver = object;
    if (!receiver)
        dropped.swap(changed); // which own this in turn
}

void WatchedAttributeInbox::add(std::shared_ptr<WatchedAttribute> attribute)
{
    const Guard guard(mutex);
    if (!receiver)
        return;
    if (changed.empty())
        QCoreApplication::postEvent(receiver, new QEvent(QEvent::User));
    changed.push_back(std::move(attribute));
}

WatchedAttributeInbox::Attributes WatchedAttributeInbox::take()
{
    Attributes taken;
    const Guard guard(mutex);
    taken.reserve(changed.size());
    taken.swap(changed);
    return taken;
}

} // namespace Utilities::ModelViews
