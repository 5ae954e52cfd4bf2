#pragma once

#include <QTreeView>

namespace Vantry {

// The list of what a search has found. Return and a double click choose a row; several can be copied. GUI
// thread.
class HitView : public QTreeView
{
    Q_OBJECT

public:
    explicit HitView(QAbstractItemModel& hits, QWidget* parent = nullptr);

    void showReplacements(bool areShown);

    // The row after or before the current one, around the end; -1 without any.
    int moveBy(int step);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void toggleSelected();
};

} // namespace Vantry
