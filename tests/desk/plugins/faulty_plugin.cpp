#include "host/Utilities/ApplicationPlugins/ApplicationPlugin.h"
#include "host/Utilities/ApplicationPlugins/PluginEntryPoints.h"
#include "host/Utilities/ApplicationWidgets/ApplicationControlWidget.h"
#include "host/Utilities/ApplicationWidgets/ApplicationMainWidget.h"

#include <QFile>

#include <csignal>
#include <cstdlib>
#include <dlfcn.h>
#include <memory>
#include <stdexcept>
#include <unistd.h>

// A plug-in that has the fault that its file is named after: HOW-WHERE.so, or HOW-WHERE-WHEN.so, where WHEN
// is "desk" for one that goes well in a trial, "real" for one that goes well in a rehearsal too. A fault
// "touch" only makes a file beside the plug-in's, to be seen to have come that far. Its widgets keep the
// events of which the host has told them in their property "events".

using Shared::GuiContexts::ReaderInterface;
using Utilities::ApplicationPlugins::ApplicationPlugin;
using Utilities::ApplicationPlugins::ApplicationPluginController;
using Utilities::ApplicationWidgets::ApplicationControlWidget;
using Utilities::ApplicationWidgets::ApplicationMainWidget;
using Utilities::ApplicationWidgets::ApplicationWidget;

namespace {

QString ownFile()
{
    Dl_info information = {};
    dladdr(reinterpret_cast<const void*>(&ownFile), &information);
    return QString::fromLocal8Bit(information.dli_fname);
}

QString ownName()
{
    return QFileInfo(ownFile()).completeBaseName();
}

bool isTime(const QString& when)
{
    QFile file(QStringLiteral("/proc/self/cmdline"));
    const QByteArray command = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (when == QLatin1String("desk"))
        return !command.contains("--try-plugin");
    if (when == QLatin1String("real"))
        return !command.contains("--try-plugin") && !command.contains("--rehearse-plugin");
    return true;
}

void reach(const char* where)
{
    const QStringList parts = ownName().split(QLatin1Char('-'));
    const QString how = parts.value(0);
    if (parts.value(1) != QLatin1String(where) || !isTime(parts.value(2)))
        return;
    if (how == QLatin1String("touch"))
        QFile(ownFile() + QLatin1String(".touched")).open(QIODevice::WriteOnly);
    else if (how == QLatin1String("throw"))
        throw std::runtime_error("no licence");
    else if (how == QLatin1String("abort"))
        std::abort();
    else if (how == QLatin1String("kill"))
        std::raise(SIGSEGV);
    else if (how == QLatin1String("exit"))
        _exit(0);
    while (how == QLatin1String("hang"))
        pause();
}

struct Module
{
    Module() { reach("load"); }
    ~Module() { reach("end"); }
};

const Module module;

template <typename Base>
class FaultyWidget : public Base
{
public:
    FaultyWidget() : Base({}, ownName(), nullptr) {}

private:
    void showEvent(QShowEvent*) override { reach("show"); }
    void paintEvent(QPaintEvent*) override { reach("paint"); }

    void handleApplicationEvent(const ApplicationPluginController::ApplicationEvent& event) override
    {
        const QStringList before = this->property("events").toStringList();
        this->setProperty("events", before + QStringList(QString::number(int(event))));
        reach("event");
    }
};

class FaultyApplication : public ApplicationPlugin
{
public:
    FaultyApplication(std::unique_ptr<ApplicationWidget> control, std::unique_ptr<ApplicationWidget> main)
        : ApplicationPlugin({}, Utilities::ApplicationType::Window, ownName(), QIcon(), control.release(),
                            main.release(), QString(), QFileInfo(ownFile()))
    {
        reach("create");
    }

    ~FaultyApplication() override { reach("drop"); }

    QString getApplicationName() const override
    {
        reach("name");
        return ownName();
    }

    QPointer<ApplicationWidget> getWidgetByType(const Utilities::ApplicationWidgetType& asked) const override
    {
        reach("widget");
        return ApplicationPlugin::getWidgetByType(asked);
    }
};

std::shared_ptr<ApplicationPlugin> kept;

} // namespace

const int applicationContractVersion = FAULTY_CONTRACT;

bool loadApplicationIdentifier(void*, QStringList& identifications)
{
    reach("identify");
    if (ownName() != QLatin1String("nothing"))
        identifications.append(ownName());
    return true;
}

bool loadApplicationByIdentification(const std::shared_ptr<const ReaderInterface>&, const QString&,
                                     std::shared_ptr<ApplicationPlugin>& result)
{
    if (ownName() == QLatin1String("none"))
        return false;
    kept = std::make_shared<FaultyApplication>(std::make_unique<FaultyWidget<ApplicationControlWidget>>(),
                                               std::make_unique<FaultyWidget<ApplicationMainWidget>>());
    result = kept;
    return true;
}

bool unloadApplicationByIdentification(const std::shared_ptr<const ReaderInterface>&, const QString&)
{
    reach("unload");
    kept.reset();
    return true;
}
