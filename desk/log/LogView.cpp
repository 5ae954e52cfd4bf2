#include "desk/log/LogView.h"

#include "desk/log/LogModel.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScrollBar>

#include <algorithm>

namespace Vantry {

LogView::LogView(LogModel& lines, QAbstractItemModel& shownLines, QWidget* parent) : QTreeView(parent)
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

    const auto addKey = [this](const QString& text, QKeySequence::StandardKey key, auto slot) {
        auto* const action = new QAction(text, this);
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, slot);
        addAction(action);
    };
    addKey(tr("&Copy"), QKeySequence::Copy, &LogView::copySelected);
    addKey(tr("Select &All"), QKeySequence::SelectAll, &LogView::selectAll);
    setContextMenuPolicy(Qt::ActionsContextMenu);
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
