#include "desk/common/RowCopy.h"

#include <QAction>
#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QTreeView>

#include <algorithm>

namespace Vantry {

namespace {

QString textOf(const QTreeView& list, const QModelIndex& row)
{
    QStringList cells;
    for (int column = 0; column < list.model()->columnCount(row.parent()); ++column) {
        if (!list.isColumnHidden(column))
            cells.append(row.siblingAtColumn(column).data().toString());
    }
    return cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
}

void copySelected(const QTreeView& list)
{
    QModelIndexList rows = list.selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end(), [&list](const QModelIndex& a, const QModelIndex& b) {
        return list.visualRect(a).top() < list.visualRect(b).top();
    });
    QString text;
    for (const QModelIndex& row : qAsConst(rows))
        text += textOf(list, row);
    if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}

} // namespace

QAction* addRowCopy(QTreeView& list)
{
    auto* const copy = new QAction(QCoreApplication::translate("Vantry::RowCopy", "&Copy"), &list);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    QObject::connect(copy, &QAction::triggered, &list, [&list] { copySelected(list); });
    list.addActions({copy});
    list.setSelectionMode(QAbstractItemView::ExtendedSelection);
    return copy;
}

} // namespace Vantry
