#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"

#include "host/Utilities/ModelViews/AttributePathsMimeData.h"
#include "host/Utilities/ModelViews/tree/AttributeTreeViewModelPrivate.h"

namespace Utilities::ModelViews {

AttributeTreeViewModel::AttributeTreeViewModel(QObject* parent)
    : QAbstractItemModel(parent), d(std::make_unique<Private>(*this))
{
}

AttributeTreeViewModel::~AttributeTreeViewModel() = default;

void AttributeTreeViewModel::resetModel(const QString& searchPath)
{
    d->reset(searchPath);
}

void AttributeTreeViewModel::setLstBackendName(const QStringList& names)
{
    d->announceCells(d->cells.setBackendNames(names));
}

void AttributeTreeViewModel::setLstBackendPath(const QStringList& paths)
{
    d->announceCells(d->cells.setBackendPaths(paths));
}

QModelIndex AttributeTreeViewModel::indexFromPath(const QString& path, int column) const
{
    const auto node = d->contents ? d->contents->find(path, true) : std::nullopt;
    return node ? d->indexOf(*node, column) : QModelIndex();
}

QString AttributeTreeViewModel::pathFromIndex(const QModelIndex& index) const
{
    const AttributeTreeNode node = Private::nodeOf(index);
    return node.parentItem ? node.parentItem->childPath(node.row) : QString();
}

QStringList AttributeTreeViewModel::childNames(const QModelIndex& parent) const
{
    QStringList names;
    const int count = rowCount(parent);
    if (count == 0)
        return names;
    const AttributeTreeItem& item = d->contents->children(Private::nodeOf(parent));
    names.reserve(count);
    for (int row = 0; row < count; ++row)
        names.append(item.child(row).name);
    return names;
}

QModelIndex AttributeTreeViewModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!d->contents || row < 0 || column < 0 || column >= ColumnCount || parent.column() > NameColumn)
        return {};
    AttributeTreeItem& item = d->contents->children(Private::nodeOf(parent));
    return row < item.size() ? createIndex(row, column, &item) : QModelIndex();
}

QModelIndex AttributeTreeViewModel::parent(const QModelIndex& child) const
{
    const AttributeTreeItem* const item = Private::nodeOf(child).parentItem;
    return item ? d->indexOf({item->getParent(), item->row()}, NameColumn) : QModelIndex();
}

int AttributeTreeViewModel::rowCount(const QModelIndex& parent) const
{
    return d->contents && parent.column() <= NameColumn ? d->contents->count(Private::nodeOf(parent)) : 0;
}

int AttributeTreeViewModel::columnCount(const QModelIndex&) const
{
    return ColumnCount;
}

bool AttributeTreeViewModel::hasChildren(const QModelIndex& parent) const
{
    return rowCount(parent) > 0;
}

QVariant AttributeTreeViewModel::data(const QModelIndex& index, int role) const
{
    const AttributeTreeNode node = Private::nodeOf(index);
    if (!node.parentItem || node.row >= node.parentItem->size())
        return {};
    AttributeTreeItem::Child& child = node.parentItem->child(node.row);
    const bool isName = index.column() == NameColumn;
    if (isName && (role == Qt::DisplayRole || role == Qt::EditRole))
        return child.name;
    const QString path = node.parentItem->childPath(node.row);
    if (role == PathRole)
        return path;
    child.shown = 1;
    if (role == BackendRootRole)
        return d->cells.isBackendRoot(path);
    if (role == ReadableNameRole)
        return d->cells.readableName(child.name, path);
    return isName ? d->cells.nameCell(child.name, path, role) : d->cells.valueCell(path, role);
}

QModelIndexList AttributeTreeViewModel::match(const QModelIndex& start, int role, const QVariant& value,
                                              int hits, Qt::MatchFlags flags) const
{
    constexpr int typeMask = 0x0F; // of the flags, how the text is compared
    const int type = int(flags) & typeMask;
    const bool isText = role == Qt::DisplayRole && value.userType() == QMetaType::QString;
    const bool isKnownType = type == Qt::MatchExactly || type == Qt::MatchStartsWith;
    if (!start.isValid() || start.column() != NameColumn || !isText || !isKnownType)
        return QAbstractItemModel::match(start, role, value, hits, flags);

    const QString text = value.toString();
    const auto sensitivity = flags & Qt::MatchCaseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
    std::optional<std::vector<AttributeTreeNode>> found;
    if (!(flags & Qt::MatchRecursive)) {
        const AttributeTreeNode from = Private::nodeOf(start);
        const auto search = [&](int first, int end) {
            for (int row = first; row < end && (hits < 0 || int(found->size()) < hits); ++row) {
                const QString& name = from.parentItem->child(row).name;
                if (type == Qt::MatchExactly ? name == text : name.startsWith(text, sensitivity))
                    found->push_back({from.parentItem, row});
            }
        };
        found.emplace();
        search(from.row, from.parentItem->size());
        search(0, flags & Qt::MatchWrap ? from.row : 0);
    } else if (type == Qt::MatchExactly && start.row() == 0 && !start.parent().isValid()) {
        found = d->contents->findName(text, hits);
    }
    if (!found)
        return QAbstractItemModel::match(start, role, value, hits, flags);
    QModelIndexList indexes;
    for (const AttributeTreeNode& node : *found)
        indexes.append(d->indexOf(node, NameColumn));
    return indexes;
}

QVariant AttributeTreeViewModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case NameColumn:
        return tr("Name");
    case ValueColumn:
        return tr("Value");
    default:
        return {};
    }
}

Qt::ItemFlags AttributeTreeViewModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
}

QStringList AttributeTreeViewModel::mimeTypes() const
{
    return attributePathsMimeTypes();
}

QMimeData* AttributeTreeViewModel::mimeData(const QModelIndexList& indexes) const
{
    QStringList paths;
    for (const QModelIndex& index : indexes)
        paths.append(pathFromIndex(index));
    paths.removeAll(QString());
    paths.removeDuplicates();
    return paths.isEmpty() ? nullptr : makeAttributePathsMimeData(paths).release();
}

} // namespace Utilities::ModelViews
