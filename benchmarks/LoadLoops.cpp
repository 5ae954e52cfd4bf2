#include "benchmarks/LoadLoops.h"

namespace LoadLoops {

using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

std::atomic<int> updateCounter{0};

void countUpdate(const QString&, const UpdatePoint&, const UpdateResult&, const QVariant&, const QString&)
{
    ++updateCounter;
}

QString demoPath(int i)
{
    return QStringLiteral("demo.%1").arg(i);
}

QString demoPattern(int i)
{
    return QStringLiteral("demo.%1*").arg(i);
}

void create(Floor& floor, int count)
{
    for (int i = 0; i < count; ++i) {
        const QString path = demoPath(i);
        const QString pattern = demoPattern(i);
        benchmark::DoNotOptimize(pattern);
        floor.insert(path, {QVariant(QStringLiteral("%1").arg(i)), countUpdate});
    }
}

void update(Floor& floor, int first, int end)
{
    for (int i = first; i < end; ++i) {
        const QString path = demoPath(i);
        auto& [value, callback] = floor[path];
        value = QVariant(QString::number(QVariant(i).toInt()));
        callback(path, UpdatePoint::AfterStore, UpdateResult::Changed, value, QString());
    }
}

void create(RepositoryInterface& repository, int count, const UpdateCallback& callback)
{
    for (int i = 0; i < count; ++i) {
        const QString path = demoPath(i);
        const QString pattern = demoPattern(i);
        benchmark::DoNotOptimize(pattern);
        repository.getWriterInterface()->createAttribute(path, QVariant(QStringLiteral("%1").arg(i)), 3, 3);
        repository.getNotificationInterface()->registerUpdateCallback(path, callback, 8);
    }
}

void update(RepositoryInterface& repository, int first, int end)
{
    for (int i = first; i < end; ++i)
        repository.getWriterInterface()->writeAttributeValue(demoPath(i), QVariant(i), 15);
}

} // namespace LoadLoops
