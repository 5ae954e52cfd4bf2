#include "desk/find/HitView.h"

#include "desk/find/HitModel.h"
#include "host/Utilities/ModelViews/Widgets/LongTextDelegate.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>

namespace Vantry {

using Utilities::ModelViews::Widgets::LongTextDelegate;

HitView::HitView(QAbstractItemModel& hits, QWidget* parent) : QTreeView(parent)
{
    setObjectName(QStringLiteral("findHits"));
    setAccessibleName(tr("What was found"));
    setModel(&hits);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setItemDelegate(new LongTextDelegate(this));
    setItemDelegateForColumn(HitModel::PathColumn, new LongTextDelegate(this, Qt::ElideMiddle));
    header()->setStretchLastSection(true);
    const int letter = fontMetrics().averageCharWidth();
    setColumnWidth(HitModel::PathColumn, letter * 42);
    setColumnWidth(HitModel::ValueColumn, letter * 26);
    setColumnWidth(HitModel::ReplacementColumn, letter * 26);
    showReplacements(false);

    auto* const copyAction = new QAction(tr("&Copy"), this);
    copyAction->setShortcut(QKeySequence::Copy);
    copyAction->setShortcutContext(Qt::WidgetShortcut);
    connect(copyAction, &QAction::triggered, this, &HitView::copySelected);
    addAction(copyAction);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void HitView::showReplacements(bool areShown)
{
    setColumnHidden(HitModel::ReplacementColumn, !areShown);
}

int HitView::moveBy(int step)
{
    const int count = model()->rowCount();
    if (count == 0)
        return -1;
    const int first = step > 0 ? 0 : count - 1;
    const int row = currentIndex().isValid() ? (currentIndex().row() + step + count) % count : first;
    setCurrentIndex(model()->index(row, 0));
    return row;
}

// Blank checks or unchecks all that are selected, as the current one becomes.
void HitView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier && currentIndex().isValid())
        toggleSelected();
    else
        QTreeView::keyPressEvent(event);
}

void HitView::toggleSelected()
{
    const QVariant state = currentIndex().siblingAtColumn(HitModel::PathColumn).data(Qt::CheckStateRole);
    const QModelIndexList selected = selectionModel()->selectedRows();
    for (const QModelIndex& row : selected)
        model()->setData(row, state.toInt() == Qt::Checked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

void HitView::copySelected() const
{
    QModelIndexList selected = selectionModel()->selectedRows();
    std::sort(selected.begin(), selected.end());
    QStringList lines;
    for (const QModelIndex& row : qAsConst(selected)) {
        QStringList cells;
        for (int column = 0; column < HitModel::ColumnCount; ++column) {
            if (!isColumnHidden(column))
                cells.append(row.siblingAtColumn(column).data().toString());
        }
        lines.append(cells.join(QLatin1Char('\t')));
    }
    if (!lines.isEmpty())
        QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')) + QLatin1Char('\n'));
}

} // namespace Vantry
