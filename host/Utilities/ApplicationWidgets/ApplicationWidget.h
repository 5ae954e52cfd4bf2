#pragma once

#include "host/Shared/Localization/TranslatableWidget.h"
#include "host/Utilities/ApplicationPlugins/ApplicationPluginController.h"
#include "host/Utilities/GuiContextVisitor.h"

namespace Utilities::ApplicationWidgets {

// Base of the widgets that an application gives to its host. GUI thread.
class VANTRY_HOST_EXPORT ApplicationWidget : public Shared::Localization::TranslatableWidget,
                                             public GuiContextVisitor
{
    Q_OBJECT

public:
    ApplicationWidget(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader,
                      const QString& identification, QWidget* parent);
    ~ApplicationWidget() override;

    QString getApplicationIdentification();

    // Called by the host; reaches the hook of the derived class.
    void sendApplicationEvent(const ApplicationPlugins::ApplicationPluginController::ApplicationEvent& event);

private:
    // The host shows, hides or is about to close the application.
    virtual void
    handleApplicationEvent(const ApplicationPlugins::ApplicationPluginController::ApplicationEvent& event);

    // The widget is about to be deleted by a deferred delete.
    virtual void handleDeleteEvent();

    bool event(QEvent* event) override;

    QString applicationIdentification;
};

} // namespace Utilities::ApplicationWidgets
