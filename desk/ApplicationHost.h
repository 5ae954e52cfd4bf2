#pragma once

#include "desk/PluginLoader.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/Utilities/NotificationWrapper.h"

#include <QObject>

#include <memory>
#include <vector>

namespace Vantry {

// The applications of one GUI context, made by the loaded plug-ins, and dropped in reverse order. The
// libraries must outlive it. GUI thread.
class ApplicationHost : public QObject
{
    Q_OBJECT

public:
    ApplicationHost(PluginLibrary::Context context,
                    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository);
    ~ApplicationHost() override;

    // Makes the applications of all libraries; what fails becomes a finding of the loader, as does what
    // another library has made already.
    void createApplications(PluginLoader& loader);

    // In the order in which they are shown.
    std::vector<PluginLibrary::Application> getApplications() const;

    // The page that an application shows is an attribute of the context, which anybody may write.
    void setPage(const QString& identification, const QString& page) const;
    QString getPage(const QString& identification) const;

    // Tells the widgets of every application.
    void tellAll(Utilities::ApplicationPlugins::ApplicationPluginController::ApplicationEvent event) const;

signals:
    // Somebody chose a page of the application, perhaps the one that it shows already.
    void pageChosen(const QString& identification, const QString& page);

    // The application asks for its main widget to be brought to the front.
    void showRequested(const QString& identification);

private:
    struct Entry
    {
        const PluginLibrary* library; // not owned
        QString identification;
        PluginLibrary::Application application;
        std::unique_ptr<Utilities::NotificationWrapper> pageWatcher;
    };

    // Empty when the application was made, otherwise why it was not.
    QString createApplication(const PluginLibrary& library, const QString& identification);

    void keep(Entry entry);
    QString pagePath(const QString& identification) const;

    PluginLibrary::Context context;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    std::vector<Entry> entries;
};

} // namespace Vantry
