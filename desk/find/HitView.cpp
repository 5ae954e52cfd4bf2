#include "desk/find/HitView.h"

#include "desk/common/RowCopy.h"
#include "desk/find/HitModel.h"
#include "host/Utilities/ModelViews/Widgets/AttributeNameDelegate.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace Vantry {

using Utilities::ModelViews::Widgets::AttributeNameDelegate;
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
    setEditTriggers(NoEditTriggers);
    setTextElideMode(Qt::ElideMiddle); // the ends of paths and the lines of places tell them apart
    setItemDelegate(new LongTextDelegate(this));
    setItemDelegateForColumn(HitModel::PathColumn, new AttributeNameDelegate(this, Qt::ElideMiddle));
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(HitModel::PathColumn, QHeaderView::Stretch);
    const int letter = fontMetrics().averageCharWidth();
    header()->setMinimumSectionSize(letter * 12);
    setColumnWidth(HitModel::PlaceColumn, letter * 26);
    setColumnWidth(HitModel::ValueColumn, letter * 26);
    setColumnWidth(HitModel::ReplacementColumn, letter * 26);
    showReplacements(false);

    addRowCopy(*this);
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

} // namespace Vantry
