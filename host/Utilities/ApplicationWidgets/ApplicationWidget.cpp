#include "host/Utilities/ApplicationWidgets/ApplicationWidget.h"

#include <QEvent>

namespace Utilities::ApplicationWidgets {

using ApplicationPlugins::ApplicationPluginController;

ApplicationWidget::ApplicationWidget(
    const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader, const QString& identification,
    QWidget* parent)
    : TranslatableWidget(parent), GuiContextVisitor(reader), applicationIdentification(identification)
{
}

ApplicationWidget::~ApplicationWidget() = default;

QString ApplicationWidget::getApplicationIdentification()
{
    return applicationIdentification;
}

void ApplicationWidget::sendApplicationEvent(const ApplicationPluginController::ApplicationEvent& event)
{
    handleApplicationEvent(event);
}

void ApplicationWidget::handleApplicationEvent(const ApplicationPluginController::ApplicationEvent&)
{
}

void ApplicationWidget::handleDeleteEvent()
{
}

bool ApplicationWidget::event(QEvent* event)
{
    if (event->type() == QEvent::DeferredDelete)
        handleDeleteEvent();
    return TranslatableWidget::event(event);
}

} // namespace Utilities::ApplicationWidgets
