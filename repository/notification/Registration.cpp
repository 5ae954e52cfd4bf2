#include "repository/notification/Registration.h"

#include "repository/common/RepositoryLog.h"
#include "repository/common/Texts.h"

#include <exception>

namespace Repository {

Registration::Registration(FrameworkCore::AppConfig::Interfaces::UpdateCallback function, int listenedPoints)
    : points(quint8(listenedPoints)), callback(std::move(function))
{
}

void Registration::call(const QString& path, FrameworkCore::Notification::UpdatePoint point,
                        FrameworkCore::Notification::UpdateResult result, const QVariant& value,
                        const QString& backend) const
{
    if (isStopped.load(std::memory_order_acquire))
        return;
    try {
        callback(path, point, result, value, backend);
    } catch (const std::exception& error) {
        logFailure(Texts::tr("A callback that watches '%1' failed: %2")
                       .arg(path, QString::fromLocal8Bit(error.what())));
    } catch (...) {
        logFailure(Texts::tr("A callback that watches '%1' failed").arg(path));
    }
}

} // namespace Repository
