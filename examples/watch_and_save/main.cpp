// watch_and_save TYPE FILE PATTERN PATH VALUE: opens a file of that type (ini, json ...), prints what changes
// below the pattern, sets one attribute and saves the file.
#include "repository/AttributeRepository.h"

#include <QCoreApplication>
#include <QTextStream>

#include <mutex>

using namespace FrameworkCore;
using namespace FrameworkCore::AppConfig;

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    // On any thread: what other programs write is brought in, and called back about, on one of the
    // repository's. Made before that, so that it outlives the last call.
    QTextStream out(stdout);
    std::mutex printing;
    const auto print = [&out, &printing](const QString& line) {
        const std::lock_guard<std::mutex> guard(printing);
        out << line << Qt::endl;
    };
    if (arguments.size() != 6) {
        print(QStringLiteral("Usage: watch_and_save TYPE FILE PATTERN PATH VALUE"));
        return 2;
    }
    const auto repository = Repository::AttributeRepository::create();
    const auto backends = repository->getBackendInterface();

    // The file's attributes are below "app"; an outcome says what came of an operation, and why.
    Outcome outcome = backends->mount(arguments[1], QStringLiteral("app"),
                                      {arguments[2], QString(), AccessMode::ReadWrite}, 2);
    const auto onUpdate = [&print](const QString& path, const Notification::UpdatePoint&,
                                   const Notification::UpdateResult&, const QVariant& value,
                                   const QString&) { print(path + " is " + value.toString()); };
    const auto registration = repository->getNotificationInterface()->registerUpdateCallback(
        QStringLiteral("app.") + arguments[3], onUpdate, int(Notification::UpdatePoint::AfterStore));

    constexpr int allPoints = 15;
    if (outcome)
        outcome = repository->getWriterInterface()->write(QStringLiteral("app.") + arguments[4], arguments[5],
                                                          allPoints);
    if (outcome)
        outcome = backends->save(QStringLiteral("app"));
    if (registration)
        registration->end();
    if (!outcome)
        print(outcome.toText());
    return outcome ? 0 : 1;
}
