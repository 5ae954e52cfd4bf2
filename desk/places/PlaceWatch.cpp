#include "desk/places/PlaceWatch.h"

#include "desk/common/TreeSelection.h"

#include <QItemSelectionModel>

namespace Vantry {

PlaceWatch::PlaceWatch(std::shared_ptr<Repository> attributes, const QWidget& watchedWindow, QObject* parent)
    : QObject(parent), repository(std::move(attributes)), window(watchedWindow)
{
}

FrameworkCore::AppConfig::FilePosition PlaceWatch::onDisk(const TextPlace& place)
{
    FrameworkCore::AppConfig::FilePosition position = place.position;
    position.line = place.lineOnDisk;
    if (!place.isOnDisk)
        position.column = 1;
    return position;
}

void PlaceWatch::look()
{
    followTrees();
    const auto texts = repository->getTextInterface();
    const auto tree = repository->getTreeInterface();
    if (!texts || !tree)
        return;
    const QString current = currentInTree(window);
    const QString currentBackend = current.isEmpty() ? QString() : tree->getNodeInformation(current).backend;
    const quint64 currentRevision = currentBackend.isEmpty() ? 0 : texts->getRevision(currentBackend);
    const bool isOther = current != path;
    if (!isOther && currentBackend == backend && currentRevision == revision)
        return;
    path = current;
    backend = currentBackend;
    revision = currentRevision;
    if (isOther) {
        place = {};
        emit selected(path);
    }
    find();
}

// Trees may get another model at any time.
void PlaceWatch::followTrees()
{
    const auto models = selectionModels(window);
    for (const QItemSelectionModel* const model : models)
        connect(model, &QItemSelectionModel::currentChanged, this, &PlaceWatch::look, Qt::UniqueConnection);
}

void PlaceWatch::find()
{
    finder.start([this, texts = repository->getTextInterface(), wanted = path]() -> LatestTask::Result {
        TextPlace found;
        texts->locate(wanted, found);
        return [this, found, wanted] {
            if (wanted != path)
                return;
            place = found;
            emit placed();
        };
    });
}

} // namespace Vantry
