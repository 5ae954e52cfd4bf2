#pragma once

#include "host/HostExport.h"
#include "host/Shared/VersionInformation/VersionInformation.h"
#include "host/Utilities/ApplicationPlugins/ApplicationPluginController.h"
#include "host/Utilities/ApplicationType.h"
#include "host/Utilities/ApplicationWidgetType.h"

#include <QIcon>
#include <QPointer>
#include <QString>

namespace Utilities::ApplicationWidgets {
class ApplicationWidget;
}

namespace Utilities::ApplicationPlugins {

// What a host knows of an application that a plug-in made for one GUI context. GUI thread.
class VANTRY_HOST_EXPORT ApplicationPluginInterface
{
public:
    virtual ~ApplicationPluginInterface();

    virtual QIcon getApplicationIcon() const = 0;
    virtual QString getApplicationIdentification() const = 0;
    virtual QString getApplicationName() const = 0;      // in the user's language
    virtual signed char getApplicationOrder() const = 0; // applications with a lower order are shown first
    virtual ApplicationType getApplicationType() const = 0;
    virtual Shared::VersionInformation::VersionInformation getVersionInformation() const = 0;

    // Null when the application has no such widget, or it is gone already.
    virtual QPointer<ApplicationWidgets::ApplicationWidget>
    getWidgetByType(const ApplicationWidgetType& type) const = 0;

    // Lets the host hear the application; an empty controller takes it away. True when accepted.
    virtual bool installApplicationController(const ApplicationPluginControllerPtr& controller) = 0;
};

} // namespace Utilities::ApplicationPlugins
