#include "desk/ApplicationHost.h"

#include "desk/LoadingNote.h"
#include "host/Utilities/ApplicationWidgets/ApplicationWidget.h"

#include <QPointer>
#include <QWriteLocker>

#include <algorithm>

namespace Vantry {

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
    while (!entries.empty()) {
        const Entry entry = std::move(entries.back());
        entries.pop_back();
        entry.application->installApplicationController(nullptr);
        entry.library->dropApplication(context, entry.identification);
    }
}

void ApplicationHost::createApplications(PluginLoader& loader)
{
    for (const auto& library : loader.getLibraries()) {
        for (const QString& identification : library->getIdentifications()) {
            const QString reason = createApplication(*library, identification);
            if (!reason.isEmpty())
                loader.refuse(library->getFile(), reason);
        }
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return a.application->getApplicationOrder() < b.application->getApplicationOrder();
    });
}

QString ApplicationHost::createApplication(const PluginLibrary& library, const QString& identification)
{
    // Two of one name would share the attribute that tells the page.
    for (const Entry& entry : entries) {
        if (entry.identification == identification)
            return QStringLiteral("its application %1 is there already, from %2")
                .arg(identification, entry.library->getFile());
    }
    QString reason;
    const LoadingNote note(library.getFile());
    auto application = library.createApplication(context, identification, reason);
    if (application)
        keep({&library, identification, std::move(application), nullptr});
    return reason;
}

void ApplicationHost::keep(Entry entry)
{
    entry.application->installApplicationController(std::make_shared<Controller>(*this));
    const auto tell = [this, identification = entry.identification](const QVariant& page) {
        emit pageChosen(identification, page.toString());
    };
    entry.pageWatcher = std::make_unique<Utilities::NotificationWrapper>(pagePath(entry.identification), true,
                                                                         true, repository);
    {
        const QWriteLocker locker(&entry.pageWatcher->lock);
        entry.pageWatcher->valueChangedCallbacks.append(tell);
    }
    entry.pageWatcher->setActive(true);
    entries.push_back(std::move(entry));
}

std::vector<PluginLibrary::Application> ApplicationHost::getApplications() const
{
    std::vector<PluginLibrary::Application> applications;
    for (const Entry& entry : entries)
        applications.push_back(entry.application);
    return applications;
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

void ApplicationHost::tellAll(ApplicationPluginController::ApplicationEvent event) const
{
    using Utilities::ApplicationWidgetType;
    for (const auto& application : getApplications()) {
        for (const auto type : {ApplicationWidgetType::Control, ApplicationWidgetType::Main}) {
            if (const auto widget = application->getWidgetByType(type))
                widget->sendApplicationEvent(event);
        }
    }
}

} // namespace Vantry
