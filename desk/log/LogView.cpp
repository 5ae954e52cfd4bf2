#include "desk/log/LogView.h"

#include "desk/log/LogModel.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScrollBar>

#include <algorithm>

namespace Vantry {

LogView::LogView(LogModel& lines, QAbstractItemModel& shownLines, QWidget* parent)
    : QTreeView(parent), copyAction(new QAction(tr("&Copy"), this))
{
    setObjectName(QStringLiteral("logLines"));
    setAccessibleName(tr("Log lines"));
    setModel(&shownLines);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    setSelectionMode(ExtendedSelection);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    header()->setStretchLastSection(true);
    const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    setColumnWidth(LogModel::TimeColumn, digit * 15);
    setColumnWidth(LogModel::TypeColumn, digit * 18);
    setColumnWidth(LogModel::CategoryColumn, digit * 14);

    copyAction->setShortcut(QKeySequence::Copy);
    copyAction->setShortcutContext(Qt::WidgetShortcut);
    addAction(copyAction);
    auto* const selectAllAction = new QAction(tr("Select &All"), this);
    selectAllAction->setShortcut(QKeySequence::SelectAll);
    selectAllAction->setShortcutContext(Qt::WidgetShortcut);
    addAction(selectAllAction);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(copyAction, &QAction::triggered, this, &LogView::copySelected);
    connect(selectAllAction, &QAction::triggered, this, &LogView::selectAll);
    const QScrollBar* const bar = verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this,
            [this, bar](int value) { isAtEnd = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this](int, int end) { // it may only have become smaller
        if (isAtEnd)
            verticalScrollBar()->setValue(end);
    });
    connect(&lines, &LogModel::linesAboutToBeAdded, this, &LogView::keepPlace);
    connect(&lines, &LogModel::linesAdded, this, &LogView::takePlace);
}

// A key begins at the end, which is in sight at first; a tree's begins at the top.
QModelIndex LogView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    if (currentIndex().isValid() || action == MoveHome)
        return QTreeView::moveCursor(action, modifiers);
    return model()->index(model()->rowCount() - 1, 0);
}

void LogView::keepPlace()
{
    topRow = isAtEnd ? QModelIndex() : indexAt({0, 0});
}

void LogView::takePlace()
{
    if (isAtEnd)
        scrollToBottom();
    else if (topRow.isValid())
        scrollTo(topRow, PositionAtTop);
}

void LogView::copySelected() const
{
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    QString text;
    for (const QModelIndex& row : qAsConst(rows))
        text += row.data(LogModel::PlainTextRole).toString() + QLatin1Char('\n');
    if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}

} // namespace Vantry
