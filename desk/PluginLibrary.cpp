#include "desk/PluginLibrary.h"

#include <QFileInfo>

#include <exception>

namespace Vantry {

PluginLibrary::PluginLibrary(const QString& fileName)
    : file(QFileInfo(fileName).absoluteFilePath()), library(file)
{
}

namespace {

// What the system says about a file that it did not load, without the file's name, which is told twice over
// there and hides the reason.
QString reasonOf(const QString& error, const QString& file)
{
    const QString name = file + QLatin1String(": ");
    QString reason = error.mid(error.lastIndexOf(name) < 0 ? 0 : error.lastIndexOf(name) + name.size());
    if (reason.startsWith(QLatin1Char('(')))
        reason.remove(0, 1);
    if (reason.endsWith(QLatin1Char(')')))
        reason.chop(1);
    return reason;
}

} // namespace

template <typename Function>
Function PluginLibrary::resolve(const char* name, QString& reason)
{
    const auto function = reinterpret_cast<Function>(library.resolve(name));
    if (!function && reason.isEmpty())
        reason = QStringLiteral("it is no plug-in of Vantry: it lacks the entry point %1")
                     .arg(QLatin1String(name));
    return function;
}

std::unique_ptr<PluginLibrary> PluginLibrary::load(const QString& file, QString& reason)
{
    std::unique_ptr<PluginLibrary> plugin(new PluginLibrary(file));
    if (!plugin->library.load()) {
        reason = QStringLiteral("it cannot be loaded: %1")
                     .arg(reasonOf(plugin->library.errorString(), plugin->file));
        return nullptr;
    }
    const auto nameApplications = plugin->resolve<NameApplications>("loadApplicationIdentifier", reason);
    plugin->loadApplication = plugin->resolve<LoadApplication>("loadApplicationByIdentification", reason);
    plugin->unloadApplication =
        plugin->resolve<UnloadApplication>("unloadApplicationByIdentification", reason);
    if (!reason.isEmpty())
        return nullptr;
    if (!nameApplications(nullptr, plugin->identifications) || plugin->identifications.isEmpty()) {
        reason = QStringLiteral("it offers no application");
        return nullptr;
    }
    return plugin;
}

PluginLibrary::Application
PluginLibrary::createApplication(const Context& context, const QString& identification, QString& reason) const
{
    Application application;
    try {
        if (!loadApplication(context, identification, application) || !application)
            reason = QStringLiteral("it did not make its application %1").arg(identification);
    } catch (const std::exception& error) {
        reason = QStringLiteral("making its application %1 failed: %2")
                     .arg(identification, QString::fromLocal8Bit(error.what()));
    } catch (...) {
        reason = QStringLiteral("making its application %1 failed").arg(identification);
    }
    return application;
}

void PluginLibrary::dropApplication(const Context& context, const QString& identification) const
{
    unloadApplication(context, identification);
}

} // namespace Vantry
