#include "host/Utilities/ApplicationPlugins/ApplicationPlugin.h"
#include "host/Utilities/ApplicationWidgets/ApplicationWidget.h"

#include <QApplication>
#include <QLibrary>

#include <memory>

// careless_host MODULE table|host|window: a host that shows an application and ends without unloading it. The
// application is kept by the module's table alone, by a static of the host as well, or, with its widget, by
// a window that is never closed.

using Utilities::ApplicationPlugins::ApplicationPlugin;

namespace {

using Reader = std::shared_ptr<const Shared::GuiContexts::ReaderInterface>;
using Load = bool (*)(const Reader&, const QString&, std::shared_ptr<ApplicationPlugin>&);

std::shared_ptr<ApplicationPlugin> kept;
QWidget* forgotten = nullptr;

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    QLibrary library(arguments.value(1));
    const auto load = reinterpret_cast<Load>(library.resolve("loadApplicationByIdentification"));
    std::shared_ptr<ApplicationPlugin> made;
    if (!load || !load({}, QStringLiteral("Vantry"), made))
        return 1;
    QWidget* const widget = made->getWidgetByType(Utilities::ApplicationWidgetType::Main);
    if (arguments.value(2) == QLatin1String("window")) {
        forgotten = new QWidget;
        widget->setParent(forgotten);
    }
    if (arguments.value(2) != QLatin1String("table"))
        kept = made;
    widget->window()->show();
    QApplication::processEvents();
    return 0;
}
