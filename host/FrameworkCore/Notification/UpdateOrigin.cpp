#include "host/FrameworkCore/Notification/UpdateOrigin.h"

#include <utility>

namespace FrameworkCore::Notification {

namespace {

QString& ofThisThread()
{
    thread_local QString origin;
    return origin;
}

} // namespace

UpdateOrigin::UpdateOrigin(const QString& origin) : before(std::exchange(ofThisThread(), origin))
{
}

UpdateOrigin::~UpdateOrigin()
{
    ofThisThread() = before;
}

QString UpdateOrigin::current()
{
    return ofThisThread();
}

} // namespace FrameworkCore::Notification
