#include "desk/plugins/PluginRehearsal.h"

#include "desk/plugins/ApplicationHost.h"
#include "desk/plugins/GuiContext.h"
#include "desk/plugins/LoadingNote.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"

#include <QApplication>
#include <QFile>
#include <QVBoxLayout>

#include <unistd.h>

namespace Vantry {

namespace {

using Repository = std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface>;

// The parent's ear. What plug-ins print goes to standard error instead.
class Report
{
public:
    Report()
    {
        output.open(dup(STDOUT_FILENO), QIODevice::WriteOnly | QIODevice::Unbuffered,
                    QFileDevice::AutoCloseHandle);
        dup2(STDERR_FILENO, STDOUT_FILENO);
    }

    void say(const QString& line) { output.write(line.toUtf8() + '\n'); }

private:
    QFile output;
};

// One plug-in and its applications, in a window of their own.
class Rehearsed
{
public:
    Rehearsed(Report& parentReport, int pluginNumber) : report(parentReport), number(pluginNumber)
    {
        window.setAttribute(Qt::WA_DontShowOnScreen);
    }

    ~Rehearsed() { begin(QT_TRANSLATE_NOOP("Vantry::PluginTexts", "ending")); }

    Q_DISABLE_COPY(Rehearsed)

    // Empty, or why the file is refused.
    QString load(const QString& file)
    {
        begin(QT_TRANSLATE_NOOP("Vantry::PluginTexts", "loading"));
        QString reason;
        library = PluginLibrary::load(file, reason);
        return reason;
    }

    void createApplications(const Repository& repository)
    {
        begin(QT_TRANSLATE_NOOP("Vantry::PluginTexts", "making an application of"));
        host = std::make_unique<ApplicationHost>(
            std::make_shared<GuiContext>(QStringList{QStringLiteral("desk")}), repository);
        host->createApplications(*library); // what it refuses or throws, the desk survives too
    }

    void show()
    {
        begin(QT_TRANSLATE_NOOP("Vantry::PluginTexts", "showing"));
        for (const auto& application : host->getApplications()) {
            for (QWidget* const widget : {application.control.data(), application.main.data()}) {
                if (widget)
                    layout.addWidget(widget);
            }
        }
        window.resize(800, 600); // so that all of it is drawn
        window.show();
        host->tellAll(ApplicationHost::Event::Shown);
        window.grab();
        QCoreApplication::processEvents();
    }

private:
    void begin(const char* what)
    {
        report.say(PluginRehearsal::doing + QString::number(number) + QLatin1Char(' ') + QLatin1String(what));
    }

    Report& report;
    const int number;
    QWidget window;
    QVBoxLayout layout{&window};
    std::unique_ptr<PluginLibrary> library;
    std::unique_ptr<ApplicationHost> host;
};

} // namespace

int PluginRehearsal::run(const QStringList& files)
{
    LoadingNote::keepNone();
    Report report;
    const auto repository = ::Repository::AttributeRepository::create();
    Utilities::SetAppConfigRepositoryInterface(repository);
    std::vector<std::unique_ptr<Rehearsed>> plugins;
    for (int i = 0; i < files.size(); ++i) {
        plugins.push_back(std::make_unique<Rehearsed>(report, i));
        const QString reason = plugins.back()->load(files.at(i));
        if (!reason.isEmpty()) {
            report.say(refused + reason);
            return 1;
        }
    }
    for (const auto& plugin : plugins)
        plugin->createApplications(repository);
    for (const auto& plugin : plugins)
        plugin->show();
    while (!plugins.empty())
        plugins.pop_back();
    Utilities::SetAppConfigRepositoryInterface(nullptr);
    report.say(passed); // what is left are the ends of the libraries' own objects
    return 0;
}

} // namespace Vantry
