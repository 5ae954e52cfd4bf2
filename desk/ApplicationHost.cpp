#include "desk/ApplicationHost.h"

#include "desk/LoadingNote.h"

#include <algorithm>

namespace Vantry {

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
        entries.push_back({&library, identification, std::move(application)});
    return reason;
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

} // namespace Vantry
