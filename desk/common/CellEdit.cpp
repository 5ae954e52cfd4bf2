#include "desk/common/CellEdit.h"

#include <QAbstractItemView>

namespace Vantry {

void endCellEdit(const QWidget& window)
{
    const QWidget* const editor = window.focusWidget();
    QWidget* view = editor ? editor->parentWidget() : nullptr;
    while (view && !qobject_cast<QAbstractItemView*>(view))
        view = view->parentWidget();
    if (view)
        view->setFocus(Qt::OtherFocusReason);
}

} // namespace Vantry
