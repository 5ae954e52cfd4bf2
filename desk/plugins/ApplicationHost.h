#pragma once

#include "desk/plugins/PluginLoader.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"
#include "host/Utilities/ApplicationWidgets/ApplicationWidget.h"
#include "host/Utilities/NotificationWrapper.h"

#include <QIcon>
#include <QObject>
#include <QPointer>

#include <memory>
#include <vector>

namespace Vantry {

// The applications of one GUI context, made by the loaded plug-ins, and dropped in reverse order. What a
// plug-in throws is a failure of that plug-in and nothing more. The libraries must outlive it. GUI thread.
class ApplicationHost : public QObject
{
    Q_OBJECT

public:
    // One application, with what it said of itself when it was made.
    struct Application
    {
        const PluginLibrary* library; // not owned
        QString identification;
        PluginLibrary::Application plugin;
        QString name;
        QString version;
        QIcon icon;
        signed char order = 0;
        QPointer<Utilities::ApplicationWidgets::ApplicationWidget> control;
        QPointer<Utilities::ApplicationWidgets::ApplicationWidget> main;
        std::unique_ptr<Utilities::NotificationWrapper> pageWatcher;
    };

    ApplicationHost(PluginLibrary::Context context,
                    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository);
    ~ApplicationHost() override;

    // Makes the applications of all libraries; what fails becomes a finding of the loader, as does what
    // another library has made already.
    void createApplications(PluginLoader& loader);

    // Those of one library; gives why some were not made, empty when all were.
    QString createApplications(const PluginLibrary& library);

    // In the order in which they are shown.
    const std::vector<Application>& getApplications() const { return applications; }

    // The page that an application shows is an attribute of the context, which anybody may write.
    void setPage(const QString& identification, const QString& page) const;
    QString getPage(const QString& identification) const;

    // Tells the widgets of an application, if there is one of that name, or of every one.
    using Event = Utilities::ApplicationPlugins::ApplicationPluginController::ApplicationEvent;
    void tell(const QString& identification, Event event) const;
    void tellAll(Event event) const;

signals:
    // Somebody chose a page of the application, perhaps the one that it shows already.
    void pageChosen(const QString& identification, const QString& page);

    // The application asks for its main widget to be brought to the front.
    void showRequested(const QString& identification);

private:
    // Empty when the application was made, otherwise why it was not.
    QString createApplication(const PluginLibrary& library, const QString& identification);

    void welcome(Application& application);
    void watchPage(Application& application);
    void tell(const Application& application, Event event) const;
    void drop(Application application) const;
    QString pagePath(const QString& identification) const;

    PluginLibrary::Context context;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    std::vector<Application> applications;
};

} // namespace Vantry
