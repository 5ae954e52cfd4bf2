#include "host/Utilities/ModelViews/tree/AttributeTreeViewModelPrivate.h"

#include "host/FrameworkCore/AppConfig/AttributePath.h"
#include "host/Utilities/RepositoryAccess.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QScopedValueRollback>
#include <QTimer>

#include <algorithm>

namespace Utilities::ModelViews {

namespace {

constexpr int fewRows = 256; // so many changes in a batch are announced whether their rows were read or not
constexpr int rowsAtOnce = 128;   // so many are announced in one batch when there are more
constexpr int busyInterval = 100; // milliseconds between looks whether a popup or an editor is still open

// Visits the listed children of an item and of all below it, until the visitor gives false.
template <typename Visitor>
bool visitRows(AttributeTreeItem& item, const Visitor& visit)
{
    for (int row = 0; row < item.size(); ++row) {
        if (!visit(item, row))
            return false;
        AttributeTreeItem* const below = item.child(row).item.get();
        if (below && !visitRows(*below, visit))
            return false;
    }
    return true;
}

} // namespace

AttributeTreeViewModel::Private::Private(AttributeTreeViewModel& owner)
    : model(owner), changes([this](const AttributeTreeBatch& batch) { deliver(batch); }),
      backendWatch([this](const AttributeTreeBatch&) { backendsChanged(); }),
      stateWatch([this](const AttributeTreeBatch&) { followStates(); })
{
    takeRepository();
}

// Whether there is one only now. A model keeps the first, whatever the host exchanges it for: those around it
// keep theirs.
bool AttributeTreeViewModel::Private::takeRepository()
{
    if (repository)
        return false;
    repository = GetAppConfigRepositoryInterface();
    if (!repository)
        return false;
    cells.setRepository(repository);
    unsaved = std::make_unique<UnsavedBackends>(repository->getChangesInterface());
    unsavedPaths = std::make_unique<UnsavedPaths>(repository);
    QObject::connect(unsaved.get(), &UnsavedBackends::looked, &model, [this] { followUnsaved(); });
    if (const auto notifications = repository->getNotificationInterface()) {
        const QString backends =
            repository->buildAttributePath({QStringLiteral("internal"), QStringLiteral("backends")});
        backendWatch.watch(*notifications,
                           repository->buildAttributePath({backends, QStringLiteral("names")}));
        stateWatch.watch(*notifications, repository->buildAttributePath({backends, QStringLiteral("*")}));
    }
    return true;
}

void AttributeTreeViewModel::Private::reset(const QString& searchPath)
{
    if (busy) {
        QMetaObject::invokeMethod(
            &model, [this, searchPath] { reset(searchPath); }, Qt::QueuedConnection);
        return;
    }
    const bool isNew = takeRepository() || !contents;
    if (!isNew && searchPath == shownPath) {
        changes.deliverNow();
        const QScopedValueRollback<bool> guard(busy, true);
        contents->reread();
        return;
    }
    const auto notifications = isNew && repository ? repository->getNotificationInterface() : nullptr;
    if (notifications)
        changes.watch(*notifications, QStringLiteral("*")); // before reading, so that nothing falls between
    resetFrom(searchPath);
}

void AttributeTreeViewModel::Private::resetFrom(const QString& searchPath)
{
    const QScopedValueRollback<bool> guard(busy, true);
    const auto tree = repository ? repository->getTreeInterface() : nullptr;
    model.beginResetModel();
    shownPath = searchPath;
    contents = tree ? std::make_unique<AttributeTreeContents>(*this, tree, searchPath) : nullptr;
    model.endResetModel();
}

void AttributeTreeViewModel::Private::deliver(const AttributeTreeBatch& batch)
{
    if (!contents)
        return;
    if (busy) { // a slot runs an event loop of its own
        changes.requestBatch();
        return;
    }
    const QScopedValueRollback<bool> guard(busy, true);
    if (batch.structureLost)
        contents->reread();
    else
        contents->follow(batch.structure);
    announceBatch(batch);
}

// A row that nobody has read since it was last announced cannot be shown wrongly, so of many changes only
// those of rows that were read are announced.
void AttributeTreeViewModel::Private::announceBatch(const AttributeTreeBatch& batch)
{
    const bool few = batch.written.size() <= fewRows;
    std::vector<Cell> rows;
    for (const QString& path : batch.written) {
        const auto node = contents->find(path, false);
        if (node && node->parentItem && few)
            rows.emplace_back(node->parentItem, node->row);
        else if (node && node->parentItem)
            markDue(*node);
    }
    announceRows(rows);
    bool lost = batch.writtenLost || batch.structureLost;
    for (const AttributeTreeStructureChange& change : batch.structure) {
        lost |= change.namesLost;
        const QString prefix = change.parentPath.isEmpty() ? QString() : change.parentPath + QLatin1Char('.');
        for (const AttributeTreeChildChange& child : change.children) {
            // A group may have become an attribute, or the other way round.
            const auto node = contents->find(prefix + child.name, false);
            if (node && node->parentItem)
                markDue(*node);
        }
    }
    if (lost) {
        visitRows(contents->getTop(), [this](AttributeTreeItem& item, int row) {
            markDue({&item, row});
            return true;
        });
    }
    announceDue();
}

void AttributeTreeViewModel::Private::markDue(const AttributeTreeNode& node)
{
    AttributeTreeItem::Child& child = node.parentItem->child(node.row);
    child.due |= child.shown;
    anyDue |= child.due;
}

void AttributeTreeViewModel::Private::announceRows(std::vector<Cell>& rows)
{
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    for (auto first = rows.begin(); first != rows.end();) {
        auto next = first + 1;
        while (next != rows.end() && next->first == first->first && next->second == (next - 1)->second + 1)
            ++next;
        announce(*first->first, first->second, (next - 1)->second);
        first = next;
    }
}

// A view reads a row that is signalled, so rows are signalled in portions and wait for their turn.
void AttributeTreeViewModel::Private::announceDue()
{
    if (!anyDue)
        return;
    std::vector<Cell> rows;
    anyDue = !visitRows(contents->getTop(), [&rows](AttributeTreeItem& item, int row) {
        if (item.child(row).due) {
            if (rows.size() == rowsAtOnce)
                return false;
            rows.emplace_back(&item, row);
        }
        return true;
    });
    announceRows(rows);
    if (anyDue)
        changes.requestBatch();
}

void AttributeTreeViewModel::Private::announce(AttributeTreeItem& item, int first, int last)
{
    for (int row = first; row <= last; ++row)
        item.child(row).shown = item.child(row).due = 0;
    emit model.dataChanged(indexOf({&item, first}, NameColumn), indexOf({&item, last}, ValueColumn));
}

void AttributeTreeViewModel::Private::announceCells(const QSet<QString>& paths)
{
    if (!contents)
        return;
    std::vector<Cell> rows;
    for (const QString& path : paths) {
        const auto node = contents->find(path, false);
        if (node && node->parentItem)
            rows.emplace_back(node->parentItem, node->row);
    }
    const QScopedValueRollback<bool> guard(busy, true);
    announceRows(rows);
}

QModelIndex AttributeTreeViewModel::Private::indexOf(const AttributeTreeNode& node, int column) const
{
    return node.parentItem ? model.createIndex(node.row, column, node.parentItem) : QModelIndex();
}

AttributeTreeNode AttributeTreeViewModel::Private::nodeOf(const QModelIndex& index)
{
    return {static_cast<AttributeTreeItem*>(index.internalPointer()), index.row()};
}

void AttributeTreeViewModel::Private::endReorder(const AttributeTreeNode& parent, AttributeTreeItem& item,
                                                 const std::vector<int>& rows)
{
    const QModelIndexList kept = model.persistentIndexList();
    for (const QModelIndex& index : kept) {
        if (index.internalPointer() == &item)
            model.changePersistentIndex(index, indexOf({&item, rows[size_t(index.row())]}, index.column()));
    }
    emit model.layoutChanged({indexOf(parent, NameColumn)});
}

void AttributeTreeViewModel::Private::backendsChanged()
{
    followRoots();
    refreshSoon();
}

// A backend that holds nothing has no attribute that announces its root.
void AttributeTreeViewModel::Private::followRoots()
{
    const auto reader = repository->getReaderInterface();
    if (!contents || busy || !reader)
        return;
    const QString namesPath = repository->buildAttributePath(
        {QStringLiteral("internal"), QStringLiteral("backends"), QStringLiteral("names")});
    QVariant names;
    reader->readAttributeValue(namesPath, names, 0);
    QVector<AttributeTreeStructureChange> roots;
    const QStringList backends = names.toString().split(QLatin1Char(';'), Qt::SkipEmptyParts);
    const QSet<QString> before =
        std::exchange(followedBackends, QSet<QString>(backends.cbegin(), backends.cend()));
    for (const QString& backend : backends) {
        if (before.contains(backend))
            continue;
        QVariant root;
        reader->readAttributeValue(repository->buildAttributePath({namesPath, backend}), root, 0);
        const QString path = root.toString();
        roots.append({FrameworkCore::AppConfig::parentPath(path).toString(),
                      {{FrameworkCore::AppConfig::nameOf(path), roots.size()}},
                      false,
                      true,
                      false});
    }
    const QScopedValueRollback<bool> guard(busy, true);
    contents->follow(roots);
}

// Those of stores, and who has them open, which the details of a root tell.
void AttributeTreeViewModel::Private::followStates()
{
    if (busy)
        QMetaObject::invokeMethod(
            &model, [this] { followStates(); }, Qt::QueuedConnection);
    else
        announceCells(cells.rootsWithState());
}

void AttributeTreeViewModel::Private::followUnsaved()
{
    if (busy)
        return;
    announceCells(cells.setUnsavedRoots(unsaved->getNames()));
    announceCells(cells.setLockedRoots(repository->getBackendInterface()->getLockedBackends()));
    unsavedPaths->follow(unsaved->getNames());
    announceCells(cells.setUnsavedPaths(unsavedPaths->get()));
}

void AttributeTreeViewModel::Private::refreshSoon()
{
    if (refreshWaits)
        return;
    refreshWaits = isPersonBusy();
    if (!refreshWaits) {
        emit model.refreshAttributeTree();
        return;
    }
    QTimer::singleShot(busyInterval, &model, [this] {
        refreshWaits = false;
        refreshSoon();
    });
}

// Reading the tree again would take away what the person is in the middle of.
bool AttributeTreeViewModel::Private::isPersonBusy() const
{
    if (QApplication::activePopupWidget() || QApplication::activeModalWidget())
        return true;
    const auto hasEditor = [this](const QWidget* widget) {
        const auto* const view = qobject_cast<const QAbstractItemView*>(widget);
        if (!view || view->model() != &model)
            return false;
        const QObjectList& inside = view->viewport()->children();
        return std::any_of(inside.begin(), inside.end(), [](const QObject* object) {
            const auto* const editor = qobject_cast<const QWidget*>(object);
            return editor && editor->isVisible();
        });
    };
    const QWidgetList widgets = QApplication::allWidgets();
    return std::any_of(widgets.begin(), widgets.end(), hasEditor);
}

} // namespace Utilities::ModelViews
