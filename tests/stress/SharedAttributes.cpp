#include "tests/stress/SharedAttributes.h"

#include <algorithm>

using namespace FrameworkCore::AppConfig;
using FrameworkCore::Notification::UpdatePoint;

namespace {

constexpr qlonglong valuesOfThread = 1LL << 32;
constexpr int onceStored = int(UpdatePoint::AfterStore);

QString echoPathOf(int attribute)
{
    return QStringLiteral("echo.k%1").arg(attribute);
}

} // namespace

SharedAttributes::Writer::Writer(std::shared_ptr<RepositoryInterface> usedRepository, int threadNumber,
                                 QRandomGenerator& generator)
    : repository(std::move(usedRepository)), random(generator), value((threadNumber + 1) * valuesOfThread)
{
}

void SharedAttributes::Writer::step()
{
    const auto attribute = std::size_t(random.bounded(count));
    if (repository->getWriterInterface()->writeAttributeValue(pathOf(int(attribute)), ++value, onceStored) !=
        0)
        return; // its count shows it
    last[attribute] = value;
    ++writes[attribute];
}

SharedAttributes::SharedAttributes(std::shared_ptr<RepositoryInterface> usedRepository)
    : repository(std::move(usedRepository))
{
    for (int attribute = 0; attribute < count; ++attribute) {
        repository->getWriterInterface()->createAttribute(pathOf(attribute), 0LL, 2, 3);
        repository->getWriterInterface()->createAttribute(echoPathOf(attribute), 0LL, 2, 3);
        watch(attribute);
    }
}

void SharedAttributes::watch(int attribute)
{
    const auto notifications = repository->getNotificationInterface();
    Watched& state = watched[std::size_t(attribute)];
    const QString path = pathOf(attribute);
    registrations.push_back(notifications->registerUpdateCallback(
        path, [&state](auto&&...) { ++state.calls; }, onceStored));
    registrations.push_back(notifications->registerUpdateCallback(
        path,
        [this, &state, attribute](auto&&...) {
            const std::lock_guard lock(state.mutex);
            state.newest = read(attribute);
        },
        onceStored));
    registrations.push_back(notifications->registerUpdateCallback(
        path + QLatin1Char('*'), [this, attribute](auto&&...) { callBack(attribute); }, onceStored));
    registrations.push_back(notifications->registerUpdateCallback(
        echoPathOf(attribute) + QLatin1Char('*'), [&state](auto&&...) { ++state.echoCalls; }, onceStored));
}

void SharedAttributes::callBack(int attribute)
{
    const qlonglong value = read(attribute);
    if (value % 3 == 0) {
        ++watched[std::size_t(attribute)].echoes;
        repository->getWriterInterface()->writeAttributeValue(echoPathOf(attribute), value, onceStored);
    }
    if (value % 5 == 0) {
        const QString path = pathOf(attribute);
        const QString target = value % 2 == 0 ? path : path + QLatin1Char('*');
        repository->getNotificationInterface()
            ->registerUpdateCallback(
                target, [](auto&&...) {}, onceStored)
            ->end();
    }
}

qlonglong SharedAttributes::read(int attribute) const
{
    QVariant value;
    repository->getReaderInterface()->readAttributeValue(pathOf(attribute), value, 0);
    return value.toLongLong();
}

QStringList SharedAttributes::finish(const std::vector<const Writer*>& writers)
{
    for (const auto& registration : registrations)
        registration->end();
    QStringList faults;
    for (int attribute = 0; attribute < count; ++attribute) {
        const auto number = std::size_t(attribute);
        const Watched& state = watched[number];
        const qlonglong value = read(attribute);
        int writes = 0;
        bool isLastOfOne = value == 0;
        for (const Writer* writer : writers) {
            writes += writer->getWrites()[number];
            isLastOfOne = isLastOfOne || writer->getLast()[number] == value;
        }
        const auto expect = [&](bool isAsExpected, const char* what) {
            if (!isAsExpected)
                faults.append(QStringLiteral("%1 of '%2' was not as expected")
                                  .arg(QLatin1String(what), pathOf(attribute)));
        };
        expect(isLastOfOne && (writes == 0 || value != 0), "the value");
        expect(state.calls == writes, "the count of calls");
        expect(state.newest == value, "the newest value that was read in a call");
        expect(state.echoCalls == state.echoes, "the count of writes from a callback");
    }
    return faults;
}
