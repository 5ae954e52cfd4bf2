#pragma once

#include <QPersistentModelIndex>
#include <QTreeView>

namespace Vantry {

class LogModel;

// Shows log lines. While its end is in sight it follows what comes; otherwise what the person reads stays
// where it is. GUI thread.
class LogView : public QTreeView
{
    Q_OBJECT

public:
    // The lines are those of the model as the other one filters them. Both outlive the view.
    LogView(LogModel& lines, QAbstractItemModel& shownLines, QWidget* parent = nullptr);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;

private:
    void keepPlace() { topRow = isAtEnd ? QModelIndex() : indexAt({0, 0}); }
    void takePlace();
    void copySelected() const;

    bool isAtEnd = true;
    QPersistentModelIndex topRow;
};

} // namespace Vantry
