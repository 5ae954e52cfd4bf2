#pragma once

#include "host/HostExport.h"

#include <QString>

#include <memory>

namespace Utilities::ApplicationPlugins {

// The host's side of one application: notifies it of what happens to it, and hears its wishes. GUI thread.
class VANTRY_HOST_EXPORT ApplicationPluginController
{
public:
    enum class ApplicationEvent : int { Shown, Hidden, AboutToClose };

    virtual ~ApplicationPluginController() = default;

    // The application asks the host to bring its main widget to the front.
    virtual void requestShow(const QString& identification) = 0;
};

using ApplicationPluginControllerPtr = std::shared_ptr<ApplicationPluginController>;

} // namespace Utilities::ApplicationPlugins
