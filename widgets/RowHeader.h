#pragma once

#include <QBasicTimer>
#include <QHeaderView>
#include <QPoint>
#include <QVector>

class QFrame;
class QTableView;

namespace Widgets {

// The row header of a table whose rows a person puts in order: the selected ones are moved by dragging the
// header of one of them, and by Alt+Up and Alt+Down. The model takes a drag as a drop of its own rows. GUI
// thread.
class RowHeader : public QHeaderView
{
    Q_OBJECT

public:
    // The table owns the header from then on.
    explicit RowHeader(QTableView& table);

protected:
    bool viewportEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    enum class Press { None, Row, SelectedRows, Drag };

    void setUpKeys();
    void dragTo(int y);
    int gapAt(int y) const;
    void dropAt(int gap);
    void moveSelected(int step);
    QVector<int> selectedRows() const; // with a selected cell at least, ascending

    QTableView& table;
    QFrame* gapLine; // a child of the table's viewport, where the rows would go
    Press press = Press::None;
    QPoint pressedAt;
    int draggedTo = 0; // the mouse, in pixels of the header
    QBasicTimer scrolling;
};

} // namespace Widgets
