#include "widgets/RowHeader.h"

#include <QApplication>
#include <QFrame>
#include <QHelpEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QTableView>
#include <QToolTip>

#include <algorithm>
#include <memory>

namespace Widgets {

RowHeader::RowHeader(QTableView& owner)
    : QHeaderView(Qt::Vertical, &owner), table(owner), gapLine(new QFrame(owner.viewport()))
{
    setSectionsClickable(true);
    setHighlightSections(true);
    gapLine->setStyleSheet(QString::fromLatin1("background-color: palette(highlight);"));
    gapLine->setAttribute(Qt::WA_TransparentForMouseEvents);
    gapLine->hide();
    owner.setVerticalHeader(this);
    setUpKeys();
}

void RowHeader::setUpKeys()
{
    const auto addKey = [this](int key, int step) {
        auto* const shortcut =
            new QShortcut(QKeySequence(int(Qt::ALT) + key), &table, nullptr, nullptr, Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, [this, step] { moveSelected(step); });
    };
    addKey(Qt::Key_Up, -1);
    addKey(Qt::Key_Down, 1);
}

bool RowHeader::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QHeaderView::viewportEvent(event);
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       tr("Drag rows by their headers to move them, or press Alt+Up and Alt+Down"), this);
    return true;
}

void RowHeader::mousePressEvent(QMouseEvent* event)
{
    const int row = logicalIndexAt(event->pos());
    const bool resizes = cursor().shape() == Qt::SplitVCursor;
    press = Press::None;
    pressedAt = event->pos();
    if (event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier && row >= 0 && !resizes)
        press = table.selectionModel()->isRowSelected(row, {}) ? Press::SelectedRows : Press::Row;
    if (press != Press::SelectedRows) // which stay selected, since this may begin to drag them
        QHeaderView::mousePressEvent(event);
}

void RowHeader::mouseMoveEvent(QMouseEvent* event)
{
    if (press == Press::None || !(event->buttons() & Qt::LeftButton))
        return QHeaderView::mouseMoveEvent(event);
    const int moved = (event->pos() - pressedAt).manhattanLength();
    if (press == Press::Drag || moved >= QApplication::startDragDistance())
        dragTo(event->pos().y());
}

void RowHeader::mouseReleaseEvent(QMouseEvent* event)
{
    const Press ended = press;
    press = Press::None;
    scrolling.stop();
    gapLine->hide();
    if (ended == Press::Drag)
        dropAt(gapAt(event->pos().y()));
    else if (ended == Press::SelectedRows)
        table.selectRow(logicalIndexAt(pressedAt));
    QHeaderView::mouseReleaseEvent(event);
}

void RowHeader::dragTo(int y)
{
    press = Press::Drag;
    draggedTo = y;
    const int gap = gapAt(y);
    const int last = gap - 1;
    const int place = last < 0 ? 0 : table.rowViewportPosition(last) + table.rowHeight(last);
    gapLine->setGeometry(0, qMax(place - 1, 0), table.viewport()->width(), 2);
    gapLine->show();
    gapLine->raise();
    constexpr int milliseconds = 50;
    if (viewport()->rect().adjusted(0, 1, 0, -1).contains(0, y))
        scrolling.stop();
    else if (!scrolling.isActive())
        scrolling.start(milliseconds, this);
}

// While the mouse is dragged out of the header: the faster, the farther.
void RowHeader::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != scrolling.timerId())
        return QHeaderView::timerEvent(event);
    const bool isAbove = draggedTo < viewport()->height() / 2;
    const int distance = isAbove ? -draggedTo : draggedTo - viewport()->height();
    const int rows = qMax(distance, 0) / defaultSectionSize() + 1;
    QScrollBar* const bar = table.verticalScrollBar();
    bar->setValue(bar->value() + (isAbove ? -rows : rows) * bar->singleStep());
    dragTo(draggedTo);
}

// The row before which rows would go that are let go there.
int RowHeader::gapAt(int y) const
{
    const int seen = qBound(0, y, viewport()->height() - 1);
    const int row = table.rowAt(seen);
    if (row < 0)
        return count();
    return seen < table.rowViewportPosition(row) + table.rowHeight(row) / 2 ? row : row + 1;
}

void RowHeader::dropAt(int gap)
{
    const std::unique_ptr<QMimeData> rows(model()->mimeData(table.selectionModel()->selectedIndexes()));
    if (rows)
        model()->dropMimeData(rows.get(), Qt::CopyAction, gap, 0, {});
}

// Rows that follow each other go together. Those at the end stay, and none overtakes another.
void RowHeader::moveSelected(int step)
{
    QVector<int> rows = selectedRows();
    if (step > 0)
        std::reverse(rows.begin(), rows.end());
    int end = step < 0 ? 0 : count() - 1;
    for (int from = 0, next = 0; from < rows.size(); from = next) {
        while (next < rows.size() && rows.at(next) == rows.at(from) - step * (next - from))
            ++next;
        const int first = qMin(rows.at(from), rows.at(next - 1));
        if (rows.at(from) == end)
            end -= step * (next - from);
        else
            model()->moveRows({}, first, next - from, {}, step < 0 ? first - 1 : first + next - from + 1);
    }
    if (!rows.isEmpty())
        table.scrollTo(model()->index(qBound(0, rows.first() + step, count() - 1), 0));
}

QVector<int> RowHeader::selectedRows() const
{
    QVector<int> rows;
    for (const QItemSelectionRange& range : table.selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.append(row);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

} // namespace Widgets
