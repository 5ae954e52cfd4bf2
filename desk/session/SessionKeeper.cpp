#include "desk/session/SessionKeeper.h"

#include "files/StateFolder.h"
#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "repository/mounting/FolderLocation.h"

#include <QFile>
#include <QMainWindow>
#include <QScrollBar>
#include <QTreeView>

#include <algorithm>

namespace Vantry {

using Utilities::ModelViews::AdvancedAttributeModel;
using Utilities::ModelViews::AttributeTreeViewModel;

namespace {

constexpr qint64 leastPatience = 5000;

AttributeTreeViewModel* attributesOf(const QTreeView* tree)
{
    return tree ? qobject_cast<AttributeTreeViewModel*>(tree->model()) : nullptr;
}

std::unique_ptr<QLockFile> lockSession()
{
    std::string reason;
    if (!Files::StateFolder::make(Files::SystemCalls::system(), reason))
        return nullptr;
    auto lock = std::make_unique<QLockFile>(QFile::decodeName(Files::StateFolder::path().c_str()) +
                                            QStringLiteral("/session.lock"));
    lock->setStaleLockTime(0); // only by its process
    return lock->tryLock() ? std::move(lock) : nullptr;
}

} // namespace

SessionKeeper::SessionKeeper(std::shared_ptr<Repository> attributes, BackendFiles& openFiles,
                             FileMounter& fileMounter, QMainWindow& window)
    : QObject(&window), repository(std::move(attributes)), files(openFiles), mounter(fileMounter),
      monitor(window.findChild<AdvancedAttributeModel*>()), lock(lockSession()), patience(leastPatience)
{
    const auto trees = window.findChildren<QTreeView*>();
    const auto found = std::find_if(trees.begin(), trees.end(),
                                    [](const QTreeView* each) { return attributesOf(each) != nullptr; });
    tree = found == trees.end() ? nullptr : *found;
    constexpr int moment = 1000;
    timer.setInterval(moment);
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, &SessionKeeper::save);
}

SessionKeeper::~SessionKeeper() = default;

bool SessionKeeper::restore()
{
    restored = lock ? SessionState::read() : SessionState();
    if (restored.files.isEmpty())
        return false;
    std::vector<FileMounter::Request> requests;
    for (const SessionState::File& file : restored.files)
        requests.push_back({file.location, file.type, file.name});
    connect(&mounter, &FileMounter::mounted, this, &SessionKeeper::showAsBefore);
    mounter.mount(requests);
    return true;
}

// Once all is open; the page reads the tree in the same turn of the event loop, or before.
void SessionKeeper::showAsBefore()
{
    if (mounter.isBusy())
        return;
    disconnect(&mounter, &FileMounter::mounted, this, &SessionKeeper::showAsBefore);
    QTimer::singleShot(0, this, [this, state = std::exchange(restored, {})] {
        if (monitor && monitor->getAttributeFullPathList().isEmpty())
            monitor->loadCustomAttributeList(state.monitored);
        if (const AttributeTreeViewModel* const model = attributesOf(tree)) {
            for (const QString& path : state.expanded)
                tree->expand(model->indexFromPath(path));
            const QModelIndex current = model->indexFromPath(state.current);
            if (current.isValid())
                tree->setCurrentIndex(current);
            tree->visualRect(model->index(0, 0)); // lays the rows out, which gives the scroll bar its range
            tree->verticalScrollBar()->setValue(state.scroll);
        }
    });
}

QVector<KeptChanges::Entry> SessionKeeper::takeUnsaved() const
{
    return lock ? KeptChanges::takeOver() : QVector<KeptChanges::Entry>();
}

void SessionKeeper::follow()
{
    if (!lock)
        return;
    connect(&files.getWatch(), &Utilities::UnsavedBackends::looked, this, &SessionKeeper::look);
    connect(&keeping, &LatestTask::failed, this, [this] { sinceKept.start(); });
    if (const AttributeTreeViewModel* const model = attributesOf(tree)) {
        connect(tree, &QTreeView::expanded, this, [this, model](const QModelIndex& index) {
            expanded.insert(model->pathFromIndex(index));
            noteChange();
        });
        connect(tree, &QTreeView::collapsed, this, [this, model](const QModelIndex& index) {
            expanded.remove(model->pathFromIndex(index));
            noteChange();
        });
        connect(tree->verticalScrollBar(), &QScrollBar::valueChanged, this, &SessionKeeper::noteChange);
        connect(tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
                &SessionKeeper::noteChange);
    }
    if (monitor) {
        connect(monitor, &QAbstractItemModel::rowsInserted, this, &SessionKeeper::noteChange);
        connect(monitor, &QAbstractItemModel::rowsRemoved, this, &SessionKeeper::noteChange);
        connect(monitor, &QAbstractItemModel::rowsMoved, this, &SessionKeeper::noteChange);
        connect(monitor, &QAbstractItemModel::modelReset, this, &SessionKeeper::noteChange);
    }
    sinceKept.start();
}

void SessionKeeper::noteChange()
{
    if (!timer.isActive())
        timer.start();
}

void SessionKeeper::look()
{
    if (files.getBackends() != backends)
        noteChange();
    const bool hasUnsaved = !files.getWatch().getNames().isEmpty() || !kept.isEmpty();
    if (hasUnsaved && !keeping.isBusy() && sinceKept.elapsed() >= patience)
        lookAtUnsaved();
}

// Files of folders come with these.
QVector<SessionState::File> SessionKeeper::filesToOpen() const
{
    QVector<SessionState::File> found;
    QStringList folders; // each ends with a "/"
    const auto interface = repository->getBackendInterface();
    for (const QString& name : backends) {
        const auto information = interface->getBackendInformation(name);
        const QString location = information ? information->getBackendLocation() : QString();
        const bool isInFolder = std::any_of(folders.begin(), folders.end(), [&](const QString& folder) {
            return location.startsWith(folder);
        });
        if (location.isEmpty() || isInFolder)
            continue;
        found.append({information->getBackendType(), name, location});
        if (information->getBackendType() == QLatin1String("folder"))
            folders.append(::Repository::FolderLocation(location).getFolder() + QLatin1Char('/'));
    }
    return found;
}

SessionState SessionKeeper::gather() const
{
    SessionState state;
    state.files = filesToOpen();
    state.expanded = expanded.values();
    std::sort(state.expanded.begin(), state.expanded.end());
    if (const AttributeTreeViewModel* const model = attributesOf(tree)) {
        state.current = model->pathFromIndex(tree->currentIndex());
        state.scroll = tree->verticalScrollBar()->value();
    }
    if (monitor)
        state.monitored = monitor->getAttributeFullPathList();
    return state;
}

void SessionKeeper::save()
{
    if (mounter.isBusy() || !restored.files.isEmpty()) { // it would be half of what was there
        timer.start();
        return;
    }
    backends = files.getBackends();
    const SessionState state = gather();
    const QByteArray json = state.toJson();
    if (json != written && state.write().isEmpty())
        written = json;
}

// On a worker, since it costs as much as the files are large.
void SessionKeeper::lookAtUnsaved()
{
    sinceKept.start();
    const QStringList names = files.getWatch().getNames();
    keeping.start([this, names, attributes = repository]() -> LatestTask::Result {
        QElapsedTimer clock;
        clock.start();
        QVector<Found> found;
        for (const QString& name : names) {
            Found each{name, {}, {}};
            attributes->getChangesInterface()->getUnsavedDiff(name, each.diff);
            each.changes = BackendFiles::changesOf(*attributes->getChangesInterface(), name);
            if (!each.diff.isEmpty()) // a file whose values are not to be shown has none
                found.append(each);
        }
        constexpr qint64 share = 20; // at most a twentieth of the time is spent on it
        const qint64 pause = std::max(leastPatience, share * clock.elapsed());
        return [this, found, pause] {
            patience = pause;
            sinceKept.start();
            keep(found);
        };
    });
}

void SessionKeeper::keep(const QVector<Found>& found)
{
    QStringList gone = kept.keys();
    for (const Found& each : found) {
        gone.removeOne(each.backend);
        if (kept.value(each.backend).diff == each.diff)
            continue;
        QString error;
        const QString location = files.getLocation(each.backend);
        const QString diffFile =
            KeptChanges::keep(location, each.diff, each.changes, error, KeptChanges::Place::Running);
        if (diffFile.isEmpty())
            continue;
        forget(each.backend); // only now, so that at every moment there is one
        kept.insert(each.backend, {{diffFile, location, QDateTime::currentDateTime()}, each.diff});
    }
    for (const QString& backend : gone)
        forget(backend);
}

void SessionKeeper::forget(const QString& backend)
{
    if (kept.contains(backend))
        KeptChanges::replace(kept.take(backend).entry, {});
}

void SessionKeeper::end()
{
    if (!lock)
        return;
    const QStringList names = kept.keys();
    for (const QString& name : names)
        forget(name);
    timer.stop();
    save();
}

} // namespace Vantry
