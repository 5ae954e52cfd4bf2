#include "desk/log/SuccessWatch.h"

#include <QThread>

namespace Vantry {

SuccessWatch::SuccessWatch(std::shared_ptr<Notifications> attributeNotifications, QObject* parent)
    : QObject(parent), notifications(std::move(attributeNotifications))
{
}

void SuccessWatch::watch(const QString& path)
{
    if (registration)
        registration->end();
    registration.reset();
    if (path.isEmpty())
        return;
    constexpr int afterStore = 8;
    const auto listen = [this, own = thread()](const auto&...) {
        if (QThread::currentThread() == own) // only there is it sure that this lives
            emit succeeded();
    };
    registration = notifications->registerUpdateCallback(path, listen, afterStore);
}

} // namespace Vantry
