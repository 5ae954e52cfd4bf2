#include "host/Utilities/ApplicationPlugins/ApplicationPlugin.h"

#include "host/Utilities/GuiThread.h"

namespace Utilities::ApplicationPlugins {

using ApplicationWidgets::ApplicationWidget;

ApplicationPluginInterface::~ApplicationPluginInterface() = default;

ApplicationPlugin::ApplicationPlugin(
    const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader,
    const ApplicationType& applicationType, const QString& applicationIdentification,
    const QIcon& applicationIcon, const QPointer<ApplicationWidget>& applicationControlWidget,
    const QPointer<ApplicationWidget>& applicationMainWidget, const QString& sharedSettingsGroup,
    const QFileInfo& pluginFile)
    : GuiContextVisitor(reader), type(applicationType), identification(applicationIdentification),
      icon(applicationIcon), controlWidget(applicationControlWidget), mainWidget(applicationMainWidget),
      settingsGroup(sharedSettingsGroup), moduleFile(pluginFile)
{
}

ApplicationPlugin::~ApplicationPlugin()
{
    // The pointers are looked at on the GUI thread only: the host may be deleting the widgets just now.
    postToGuiThread([control = controlWidget, main = mainWidget] {
        delete control;
        delete main;
    });
}

QIcon ApplicationPlugin::getApplicationIcon() const
{
    return icon;
}

QString ApplicationPlugin::getApplicationIdentification() const
{
    return identification;
}

signed char ApplicationPlugin::getApplicationOrder() const
{
    return 0;
}

ApplicationType ApplicationPlugin::getApplicationType() const
{
    return type;
}

Shared::VersionInformation::VersionInformation ApplicationPlugin::getVersionInformation() const
{
    return Shared::VersionInformation::VersionInformation::ReadFromResource(identification);
}

QPointer<ApplicationWidget> ApplicationPlugin::getWidgetByType(const ApplicationWidgetType& widgetType) const
{
    switch (widgetType) {
    case ApplicationWidgetType::Control:
        return controlWidget;
    case ApplicationWidgetType::Main:
        return mainWidget;
    }
    return {};
}

bool ApplicationPlugin::installApplicationController(const ApplicationPluginControllerPtr& newController)
{
    controller = newController;
    return true;
}

const QFileInfo& ApplicationPlugin::getModuleFile() const
{
    return moduleFile;
}

QString ApplicationPlugin::getSettingsGroup() const
{
    return settingsGroup.isEmpty() ? identification : settingsGroup;
}

const ApplicationPluginControllerPtr& ApplicationPlugin::getApplicationController() const
{
    return controller;
}

} // namespace Utilities::ApplicationPlugins
