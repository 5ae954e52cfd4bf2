#include "desk/plugins/PluginLibrary.h"

#include "desk/plugins/PluginCall.h"
#include "desk/plugins/PluginTexts.h"

#include <QFileInfo>

namespace Vantry {

using Utilities::ApplicationPlugins::ContractVersion;

PluginLibrary::PluginLibrary(const QString& fileName)
    : file(QFileInfo(fileName).absoluteFilePath()), library(file)
{
    // A missing symbol is found now rather than when a person reaches the code that needs it.
    library.setLoadHints(QLibrary::ResolveAllSymbolsHint);
}

namespace {

// What the system says about a file that it did not load, without the file's name, which is given twice over
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

// Empty when the plug-in was built against the contract of this program.
QString contractFault(const int* version)
{
    if (!version)
        return PluginTexts::tr("it does not say which contract it was built against; rebuild it with the "
                               "headers of this version of Vantry, contract %1")
            .arg(ContractVersion);
    if (*version != ContractVersion)
        return PluginTexts::tr("it was built against contract %1 and this version of Vantry has contract %2; "
                               "install the build that belongs to this version")
            .arg(*version)
            .arg(ContractVersion);
    return {};
}

} // namespace

template <typename Function>
Function PluginLibrary::resolve(const char* name, QString& reason)
{
    const auto function = reinterpret_cast<Function>(library.resolve(name));
    if (!function && reason.isEmpty())
        reason = PluginTexts::tr("it is not a plug-in of Vantry: the entry point %1 is missing")
                     .arg(QLatin1String(name));
    return function;
}

std::unique_ptr<PluginLibrary> PluginLibrary::load(const QString& file, QString& reason)
{
    std::unique_ptr<PluginLibrary> plugin(new PluginLibrary(file));
    if (!plugin->library.load()) {
        reason = PluginTexts::tr("it cannot be loaded: %1")
                     .arg(reasonOf(plugin->library.errorString(), plugin->file));
        return nullptr;
    }
    const auto nameApplications = plugin->resolve<NameApplications>("loadApplicationIdentifier", reason);
    plugin->loadApplication = plugin->resolve<LoadApplication>("loadApplicationByIdentification", reason);
    plugin->unloadApplication =
        plugin->resolve<UnloadApplication>("unloadApplicationByIdentification", reason);
    if (reason.isEmpty())
        reason = contractFault(
            reinterpret_cast<const int*>(plugin->library.resolve("applicationContractVersion")));
    if (reason.isEmpty())
        reason = plugin->identify(nameApplications);
    return reason.isEmpty() ? std::move(plugin) : nullptr;
}

QString PluginLibrary::identify(NameApplications nameApplications)
{
    bool isNamed = false;
    const QString failure = failureOfCall([&] { isNamed = nameApplications(nullptr, identifications); });
    if (!failure.isEmpty())
        return PluginTexts::tr("naming its applications failed: %1").arg(failure);
    identifications.removeAll(QString());
    return isNamed && !identifications.isEmpty() ? QString() : PluginTexts::tr("it offers no application");
}

PluginLibrary::Application
PluginLibrary::createApplication(const Context& context, const QString& identification, QString& reason) const
{
    Application application;
    const QString failure = failureOfCall([&] {
        if (!loadApplication(context, identification, application))
            application.reset();
    });
    if (!failure.isEmpty())
        reason = PluginTexts::tr("making its application %1 failed: %2").arg(identification, failure);
    else if (!application)
        reason = PluginTexts::tr("it did not make its application %1").arg(identification);
    return reason.isEmpty() ? application : nullptr;
}

QString PluginLibrary::dropApplication(const Context& context, const QString& identification) const
{
    return failureOfCall([&] { unloadApplication(context, identification); });
}

} // namespace Vantry
