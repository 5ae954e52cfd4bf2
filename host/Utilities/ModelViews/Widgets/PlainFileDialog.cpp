#include "host/Utilities/ModelViews/Widgets/PlainFileDialog.h"

#include "host/Utilities/ModelViews/Widgets/PlainMessageBox.h"

#include <QChildEvent>

namespace Utilities::ModelViews::Widgets {

void PlainFileDialog::childEvent(QChildEvent* event)
{
    auto* const box = event->polished() ? qobject_cast<QMessageBox*>(event->child()) : nullptr;
    if (box)
        makePlain(*box);
    QFileDialog::childEvent(event);
}

} // namespace Utilities::ModelViews::Widgets
