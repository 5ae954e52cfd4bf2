#include "host/Utilities/ApplicationWidgets/ApplicationMainWidget.h"

namespace Utilities::ApplicationWidgets {

ApplicationMainWidget::ApplicationMainWidget(
    const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader, const QString& identification,
    QWidget* parent)
    : ApplicationWidget(reader, identification, parent)
{
}

ApplicationMainWidget::~ApplicationMainWidget() = default;

} // namespace Utilities::ApplicationWidgets
