#include "host/Utilities/ApplicationWidgets/ApplicationControlWidget.h"

namespace Utilities::ApplicationWidgets {

ApplicationControlWidget::ApplicationControlWidget(
    const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader, const QString& identification,
    QWidget* parent)
    : ApplicationWidget(reader, identification, parent)
{
}

ApplicationControlWidget::~ApplicationControlWidget() = default;

} // namespace Utilities::ApplicationWidgets
