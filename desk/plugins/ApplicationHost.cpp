#include "desk/plugins/ApplicationHost.h"

#include "desk/plugins/LoadingNote.h"
#include "desk/plugins/PluginCall.h"
#include "desk/plugins/PluginTexts.h"
#include "host/Utilities/HostLog.h"

#include <QWriteLocker>

#include <algorithm>

namespace Vantry {

using Utilities::ApplicationWidgetType;
using Utilities::ApplicationPlugins::ApplicationPluginController;

namespace {

// Hands the wishes of applications to the host, which may be gone when an application is kept by somebody.
class Controller : public ApplicationPluginController
{
public:
    explicit Controller(ApplicationHost& applications) : host(&applications) {}

    void requestShow(const QString& identification) override
    {
        if (host)
            emit host->showRequested(identification);
    }

private:
    QPointer<ApplicationHost> host;
};

} // namespace

ApplicationHost::ApplicationHost(
    PluginLibrary::Context guiContext,
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> attributes)
    : context(std::move(guiContext)), repository(std::move(attributes))
{
}

ApplicationHost::~ApplicationHost()
{
    while (!applications.empty()) {
        Application last = std::move(applications.back());
        applications.pop_back();
        drop(std::move(last));
    }
    const auto tree = repository->getTreeInterface();
    const QString own =
        repository->buildAttributePath(context->getContextPath() + QStringList(QStringLiteral("instances")));
    if (tree && tree->getNodeInformation(own).exists)
        tree->removeTree(own);
}

void ApplicationHost::createApplications(PluginLoader& loader)
{
    for (const auto& library : loader.getLibraries()) {
        const QString reason = createApplications(*library);
        if (!reason.isEmpty())
            loader.refuse(library->getFile(), reason);
    }
    std::stable_sort(applications.begin(), applications.end(),
                     [](const Application& a, const Application& b) { return a.order < b.order; });
}

QString ApplicationHost::createApplications(const PluginLibrary& library)
{
    const LoadingNote note({library.getFile()});
    QStringList reasons;
    for (const QString& identification : library.getIdentifications()) {
        const QString reason = createApplication(library, identification);
        if (!reason.isEmpty())
            reasons.append(reason);
    }
    return reasons.join(QStringLiteral("; "));
}

QString ApplicationHost::createApplication(const PluginLibrary& library, const QString& identification)
{
    // Two of one name would share the attribute that names the page.
    for (const Application& application : applications) {
        if (application.identification == identification)
            return PluginTexts::tr("its application %1 is there already, from %2")
                .arg(identification, application.library->getFile());
    }
    QString reason;
    Application made;
    made.library = &library;
    made.identification = identification;
    made.plugin = library.createApplication(context, identification, reason);
    if (!made.plugin)
        return reason;
    const QString failure = failureOfCall([&] { welcome(made); });
    if (!failure.isEmpty()) {
        drop(std::move(made));
        return PluginTexts::tr("asking its application %1 failed: %2").arg(identification, failure);
    }
    watchPage(made);
    applications.push_back(std::move(made));
    return {};
}

void ApplicationHost::welcome(Application& application)
{
    const auto& plugin = application.plugin;
    application.name = plugin->getApplicationName();
    application.version = plugin->getVersionInformation().getFileVersion();
    application.icon = plugin->getApplicationIcon();
    application.order = plugin->getApplicationOrder();
    application.control = plugin->getWidgetByType(ApplicationWidgetType::Control);
    application.main = plugin->getWidgetByType(ApplicationWidgetType::Main);
    plugin->installApplicationController(std::make_shared<Controller>(*this));
}

void ApplicationHost::watchPage(Application& application)
{
    const auto tell = [this, identification = application.identification](const QVariant& page) {
        emit pageChosen(identification, page.toString());
    };
    application.pageWatcher = std::make_unique<Utilities::NotificationWrapper>(
        pagePath(application.identification), true, true, repository);
    {
        const QWriteLocker locker(&application.pageWatcher->lock);
        application.pageWatcher->valueChangedCallbacks.append(tell);
    }
    application.pageWatcher->setActive(true);
}

void ApplicationHost::drop(Application application) const
{
    const LoadingNote note({application.library->getFile()});
    QString failure = failureOfCall([&] { application.plugin->installApplicationController(nullptr); });
    failure += application.library->dropApplication(context, application.identification);
    application.plugin.reset();
    if (!failure.isEmpty())
        Utilities::logFailure(
            tr("Ending the application %1 failed: %2").arg(application.identification, failure));
}

QString ApplicationHost::pagePath(const QString& identification) const
{
    return repository->buildAttributePath(context->getContextPath() + QStringList{QStringLiteral("instances"),
                                                                                  identification,
                                                                                  QStringLiteral("state")});
}

void ApplicationHost::setPage(const QString& identification, const QString& page) const
{
    repository->getWriterInterface()->createAttribute(pagePath(identification), page, 3, 3);
}

QString ApplicationHost::getPage(const QString& identification) const
{
    QVariant page;
    repository->getReaderInterface()->readAttributeValue(pagePath(identification), page, 0);
    return page.toString();
}

void ApplicationHost::tell(const QString& identification, Event event) const
{
    for (const Application& application : applications) {
        if (application.identification == identification)
            tell(application, event);
    }
}

void ApplicationHost::tellAll(Event event) const
{
    for (const Application& application : applications)
        tell(application, event);
}

void ApplicationHost::tell(const Application& application, Event event) const
{
    for (const auto& widget : {application.control, application.main}) {
        const QString failure = failureOfCall([&] {
            if (widget)
                widget->sendApplicationEvent(event);
        });
        if (!failure.isEmpty())
            Utilities::logFailure(
                tr("The application %1 failed: %2").arg(application.identification, failure));
    }
}

} // namespace Vantry
