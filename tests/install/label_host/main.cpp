// label_host PLUGIN FILE VALUE: a host of the example plug-in, whose label shows the attribute app.pump.speed
// of the json FILE. Prints what the label shows, sets the attribute, and prints it again; at the end the
// plug-in is unmapped.
#include "host/Utilities/ApplicationPlugins/ApplicationPlugin.h"
#include "host/Utilities/ApplicationPlugins/PluginEntryPoints.h"
#include "host/Utilities/ApplicationWidgets/ApplicationWidget.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QLabel>
#include <QLibrary>

#include <cstdio>

using namespace FrameworkCore::AppConfig;

static int fail(const QString& reason)
{
    std::printf("failed: %s\n", qPrintable(reason));
    return 1;
}

static void waitForText(const QLabel& label, const QString& text)
{
    const QDeadlineTimer patience(10000);
    while (label.text() != text && !patience.hasExpired())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 100);
    std::printf("label: %s\n", qPrintable(label.text()));
}

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const auto repository = Repository::AttributeRepository::create();
    Utilities::SetAppConfigRepositoryInterface(repository);
    const Outcome mounted = repository->getBackendInterface()->mount(
        QStringLiteral("json"), QStringLiteral("app"), {arguments[2], QString(), AccessMode::ReadWrite}, 2);
    if (!mounted)
        return fail(mounted.toText());

    QLibrary library(arguments[1]);
    const auto identify = decltype(&loadApplicationIdentifier)(library.resolve("loadApplicationIdentifier"));
    const auto load =
        decltype(&loadApplicationByIdentification)(library.resolve("loadApplicationByIdentification"));
    const auto unload =
        decltype(&unloadApplicationByIdentification)(library.resolve("unloadApplicationByIdentification"));
    const auto* const version = reinterpret_cast<const int*>(library.resolve("applicationContractVersion"));
    if (!identify || !load || !unload || !version)
        return fail(library.errorString());
    if (*version != Utilities::ApplicationPlugins::ContractVersion)
        return fail(QStringLiteral("another contract"));

    QStringList names;
    std::shared_ptr<Utilities::ApplicationPlugins::ApplicationPlugin> plugin;
    if (!identify(nullptr, names) || !load(nullptr, names.value(0), plugin))
        return fail(QStringLiteral("no application"));
    const auto widget = plugin->getWidgetByType(Utilities::ApplicationWidgetType::Main);
    const auto* const label = widget->findChild<QLabel*>();
    waitForText(*label, QStringLiteral("1200"));
    repository->getWriterInterface()->writeAttributeValue(QStringLiteral("app.pump.speed"), arguments[3], 15);
    waitForText(*label, arguments[3]);

    plugin.reset();
    if (!unload(nullptr, names.value(0)) || widget)
        return fail(QStringLiteral("the application did not end"));
    if (!library.unload())
        return fail(library.errorString());
    return 0;
}
