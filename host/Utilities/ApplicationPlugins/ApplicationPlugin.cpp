#include "host/Utilities/ApplicationPlugins/ApplicationPlugin.h"

#include "host/Utilities/GuiThread.h"

#include <QCoreApplication>
#include <QFile>
#include <QThread>

#include <algorithm>
#include <dlfcn.h>
#include <utility>
#include <vector>

namespace Utilities::ApplicationPlugins {

using ApplicationWidgets::ApplicationWidget;

namespace {

using Widget = QPointer<ApplicationWidget>;

// The widgets of all applications. A host may end Qt's application first, and what it has not dropped by
// then goes with it: at the process's end nothing is left of what a widget needs. GUI thread.
class LivingWidgets
{
public:
    static void add(const Widget& widget)
    {
        if (!std::exchange(isDeletedAtEnd, true))
            qAddPostRoutine(deleteAll);
        widgets.push_back(widget);
    }

    static void remove(const Widget& widget)
    {
        delete widget;
        widgets.erase(std::remove(widgets.begin(), widgets.end(), nullptr), widgets.end());
    }

private:
    static void deleteAll()
    {
        isDeletedAtEnd = false;
        for (const Widget& widget : std::exchange(widgets, {}))
            delete widget;
    }

    static std::vector<Widget> widgets;
    static bool isDeletedAtEnd;
};

std::vector<Widget> LivingWidgets::widgets;
bool LivingWidgets::isDeletedAtEnd = false;

// A reference to the plug-in's mapping; null when the file is not loaded.
void* holdMapping(const QFileInfo& file)
{
    return file.filePath().isEmpty() ? nullptr
                                     : dlopen(QFile::encodeName(file.filePath()), RTLD_NOW | RTLD_NOLOAD);
}

// In an inner event loop functions of the plug-in may be waiting to go on, so there it stays mapped for good.
void releaseMapping(void* mapping)
{
    if (mapping && QThread::currentThread()->loopLevel() <= 1)
        dlclose(mapping);
}

} // namespace

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
    LivingWidgets::add(controlWidget);
    LivingWidgets::add(mainWidget);
}

ApplicationPlugin::~ApplicationPlugin()
{
    if (isOnGuiThread()) {
        LivingWidgets::remove(controlWidget);
        LivingWidgets::remove(mainWidget);
        return;
    }
    // The pointers are looked at on the GUI thread only: the host may be deleting the widgets just now. When
    // this returns, the caller may unload the plug-in, whose code the widgets still need.
    postToGuiThread([control = controlWidget, main = mainWidget, mapping = holdMapping(moduleFile)] {
        LivingWidgets::remove(control);
        LivingWidgets::remove(main);
        releaseMapping(mapping);
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
