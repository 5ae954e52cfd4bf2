#include "host/Utilities/UnsavedPaths.h"

#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/Utilities/GuiThread.h"
#include "host/Utilities/HostLog.h"
#include "host/Utilities/Worker.h"

#include <QPointer>

namespace Utilities {

using namespace FrameworkCore::AppConfig;

namespace {

constexpr int mostChanges = 100'000; // of a backend; more are not marked

void addWithParents(QSet<QString>& paths, const QString& path, const QString& backend)
{
    for (QString node = path; !node.isEmpty() && !paths.contains(node); node = parentPath(node).toString()) {
        if (node != backend)
            paths.insert(node);
    }
}

} // namespace

UnsavedPaths::UnsavedPaths(std::shared_ptr<RepositoryInterface> attributes, QObject* parent)
    : QObject(parent), repository(std::move(attributes))
{
}

// What is written all the time would otherwise be looked up all the time.
void UnsavedPaths::follow(const QStringList& backends)
{
    const auto texts = repository->getTextInterface();
    const auto changes = repository->getChangesInterface();
    Revisions present;
    for (const QString& backend : backends)
        present.append({backend, texts ? texts->getRevision(backend) : 0});
    const bool mustWait = worker.valid() || (sinceEnd.isValid() && sinceEnd.elapsed() < pause);
    if (present == known || (mustWait && !present.isEmpty()))
        return;
    known = present;
    if (backends.isEmpty()) {
        paths.clear();
        return;
    }
    QString failure;
    const QPointer<UnsavedPaths> self(this);
    worker = startWorker(
        [self, changes, backends] {
            QSet<QString> found;
            QElapsedTimer duration;
            duration.start();
            try {
                for (const QString& backend : backends) {
                    const auto unsaved = changes->getUnsavedChanges(backend).mid(0, mostChanges);
                    for (const auto& change : unsaved)
                        addWithParents(found, change.path, backend);
                }
            } catch (...) {
                logFailure(currentFailure());
            }
            postToGuiThread([self, found, pause = 10 * duration.elapsed()] {
                if (!self)
                    return;
                self->worker = {};
                self->pause = pause;
                self->sinceEnd.start();
                self->paths = self->known.isEmpty() ? QSet<QString>() : found;
            });
        },
        failure);
    if (!worker.valid())
        logFailure(failure);
}

} // namespace Utilities
