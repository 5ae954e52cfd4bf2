#pragma once

#include "host/Utilities/ApplicationPlugins/ApplicationPluginInterface.h"
#include "host/Utilities/ApplicationWidgets/ApplicationWidget.h"
#include "host/Utilities/GuiContextVisitor.h"

#include <QFileInfo>

namespace Utilities::ApplicationPlugins {

// Base of an application: keeps what it was made with, and answers the host from it. Made on the GUI thread;
// may be dropped on any. Its widgets, if they are still there, go on the GUI thread, and until then the
// plug-in stays mapped. They go with Qt's application at the latest.
class VANTRY_HOST_EXPORT ApplicationPlugin : public ApplicationPluginInterface, public GuiContextVisitor
{
public:
    // The widgets belong to this object, also after the host has given them a parent: their code goes with
    // the plug-in's. settingsGroup names a group of settings that several applications share; an empty one
    // means its own. moduleFile is the plug-in's own file.
    ApplicationPlugin(const std::shared_ptr<const Shared::GuiContexts::ReaderInterface>& reader,
                      const ApplicationType& type, const QString& identification, const QIcon& icon,
                      const QPointer<ApplicationWidgets::ApplicationWidget>& controlWidget,
                      const QPointer<ApplicationWidgets::ApplicationWidget>& mainWidget,
                      const QString& settingsGroup, const QFileInfo& moduleFile);
    ~ApplicationPlugin() override;

    QIcon getApplicationIcon() const override;
    QString getApplicationIdentification() const override;
    signed char getApplicationOrder() const override;
    ApplicationType getApplicationType() const override;
    Shared::VersionInformation::VersionInformation getVersionInformation() const override;
    QPointer<ApplicationWidgets::ApplicationWidget>
    getWidgetByType(const ApplicationWidgetType& type) const override;
    bool installApplicationController(const ApplicationPluginControllerPtr& controller) override;

    // The file that the plug-in was loaded from; empty when it could not be found out.
    const QFileInfo& getModuleFile() const;

    // Where the host keeps the application's settings: its settings group, or else its identification.
    QString getSettingsGroup() const;

protected:
    // The host's ear; empty while none is installed.
    const ApplicationPluginControllerPtr& getApplicationController() const;

private:
    ApplicationType type;
    QString identification;
    QIcon icon;
    QPointer<ApplicationWidgets::ApplicationWidget> controlWidget;
    QPointer<ApplicationWidgets::ApplicationWidget> mainWidget;
    QString settingsGroup;
    QFileInfo moduleFile;
    ApplicationPluginControllerPtr controller;
};

} // namespace Utilities::ApplicationPlugins
