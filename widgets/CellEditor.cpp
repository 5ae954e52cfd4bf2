#include "widgets/CellEditor.h"

#include <QAbstractItemView>

namespace Widgets {

void placeOverCell(QAbstractItemView& view, const QModelIndex& cell, QWidget& editor)
{
    // Or the row, in some views all rows, would grow to what an editor in a form takes.
    editor.setMaximumHeight(view.visualRect(cell).height());
    editor.show();
    view.setIndexWidget(cell, &editor);
    // Moving it into the view has taken the focus away. This reason makes an editor select what it holds.
    editor.setFocus(Qt::TabFocusReason);
}

bool isTakenAway(const QWidget& editor)
{
    return editor.isHidden() && editor.testAttribute(Qt::WA_WState_ExplicitShowHide);
}

} // namespace Widgets
