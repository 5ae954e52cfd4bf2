#include "desk/DeskApplication.h"
#include "desk/Options.h"
#include "desk/QuitSignals.h"
#include "desk/files/ProblemFeed.h"
#include "desk/language/Language.h"
#include "desk/plugins/LoadingNote.h"
#include "desk/plugins/PluginLoader.h"
#include "desk/plugins/PluginRehearsal.h"
#include "desk/plugins/PluginTexts.h"
#include "desk/plugins/StartWatch.h"
#include "desk/window/ColourScheme.h"
#include "desk/window/FocusStyle.h"
#include "desk/window/MainWindow.h"
#include "desk/window/WindowPicture.h"
#include "desk/window/Windows.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

namespace {

using Vantry::Options;
using Vantry::PluginLoader;

void introduceProgram()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VANTRY_VERSION));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Vantry"));
    QGuiApplication::setDesktopFileName(QStringLiteral("vantry-desk")); // by which a desktop finds the icon
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // Or Qt readies each window for widgets that draw by OpenGL, which takes longer than all of the desk. A
    // plug-in can still put a window of its own, a QOpenGLWindow, into one.
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets);
}

bool hasDisplay(const QStringList& arguments)
{
    if (arguments.contains(QLatin1String("-platform"))) // Qt's own option
        return true;
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    const bool needsDisplay =
        platform.isEmpty() || platform.startsWith("xcb") || platform.startsWith("wayland");
    return !needsDisplay || !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

QtMessageHandler usualHandler = nullptr;

// Qt ends the process by an abort when it finds no display under a name that is set; a person asks for the
// reason, not for a core dump.
void handleQtMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtFatalMsg && message.contains(QLatin1String("platform plugin"))) {
        std::fputs("vantry-desk: no window can be opened: the display that DISPLAY, WAYLAND_DISPLAY or "
                   "QT_QPA_PLATFORM names cannot be reached.\n"
                   "Use --picture OUT.png to draw the window into a file instead.\n",
                   stderr);
        std::_Exit(1);
    }
    // Of a picture's platform, which has no window manager to tell.
    if (!message.contains(QLatin1String("propagateSizeHints")))
        usualHandler(type, context, message);
}

// What is wrong with the command line. Gives the exit code.
int showError(const QString& error)
{
    std::fprintf(stderr, "vantry-desk: %s\n%s\n", qUtf8Printable(error),
                 qUtf8Printable(Options::tr("vantry-desk --help shows what it knows.")));
    return 2;
}

QStringList textsOf(int argc, char** argv)
{
    QStringList texts;
    for (int i = 0; i < argc; ++i)
        texts.append(QString::fromLocal8Bit(argv[i]));
    return texts;
}

// What needs no window, and so no display.
int runWithoutWindow(int argc, char** argv, const Options& options)
{
    const QCoreApplication application(argc, argv);
    Vantry::Language::show();
    const QString text = options.wantsHelp     ? Options::helpText()
                         : options.wantsManual ? Options::manPage()
                                               : QStringLiteral("vantry-desk " VANTRY_VERSION "\n");
    std::fputs(qUtf8Printable(text), stdout);
    return 0;
}

// Gives the exit code.
int refuseWithoutDisplay(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Vantry::Language::show();
    const QString error = Options::parse(QCoreApplication::arguments()).error;
    if (!error.isEmpty())
        return showError(error);
    std::fprintf(
        stderr, "vantry-desk: %s\n%s\n",
        qUtf8Printable(Options::tr("cannot open a window without a display (DISPLAY and WAYLAND_DISPLAY "
                                   "are not set).")),
        qUtf8Printable(Options::tr("Use --picture OUT.png to draw the window into a file instead.")));
    return 1;
}

// In the child of a trial, which has all that plug-ins find in the desk.
int runTrial(int argc, char** argv, const Options& options)
{
    if (!hasDisplay(textsOf(argc, argv)))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    usualHandler = qInstallMessageHandler(handleQtMessage);
    const Vantry::DeskApplication application(argc, argv);
    QApplication::setStyle(new Vantry::FocusStyle);
    Vantry::Language::show();
    return Vantry::PluginRehearsal::run(options.triedPlugins);
}

// What this start loads, and leaves out after starts that plug-ins have ended.
PluginLoader::Choice choosePlugins(const Options& options)
{
    PluginLoader::Choice choice(options.pluginFolders.isEmpty() ? PluginLoader::usualFolders()
                                                                : options.pluginFolders);
    choice.sharedFolders = options.sharedPluginFolders;
    choice.culprits = Vantry::LoadingNote::takeCulprits();
    const int failedStarts = Vantry::StartWatch::countFailedStarts(!choice.culprits.isEmpty());
    if (options.isSafe)
        choice.reasonForNone = Vantry::PluginTexts::tr("left out of this start, as --safe asks for");
    else if (failedStarts > 1)
        choice.reasonForNone =
            Vantry::PluginTexts::tr("left out of this start: plug-ins have ended the last two");
    return choice;
}

int runWindow(const Options& options)
{
    const Vantry::QuitSignals quitSignals;       // what comes before the event loop runs is kept for it
    std::optional<Vantry::ColourScheme> colours; // not of a picture, which is the same on each desktop
    if (options.pictureFile.isEmpty())
        colours.emplace();
    Repository::RepositoryOptions storage;
    storage.observer = [&feed = Vantry::ProblemFeed::instance()](const auto& outcome) { feed.add(outcome); };
    const auto repository = Repository::AttributeRepository::create(storage);
    Utilities::SetAppConfigRepositoryInterface(repository);
    PluginLoader loader{Vantry::PluginTrial(QCoreApplication::applicationFilePath())};
    loader.load(choosePlugins(options));
    Vantry::Language::show(); // again, with the translations of plug-ins
    Vantry::StartWatch start(loader.getLoadedFiles());
    int result = 0;
    {
        Vantry::Windows windows(repository, loader);
        Vantry::MainWindow& window = windows.open(options.files);
        start.waitFor(window);
        if (options.pictureFile.isEmpty())
            windows.beginSession(options.files.isEmpty());
        window.waitForFirstFiles();
        window.show();
        std::unique_ptr<Vantry::WindowPicture> picture;
        if (options.pictureFile.isEmpty())
            window.showKeptChanges();
        else
            picture = std::make_unique<Vantry::WindowPicture>(window, options.pictureFile);
        QObject::connect(&quitSignals, &Vantry::QuitSignals::quitRequested, &windows, [&windows] {
            windows.closeUnasked();
            QCoreApplication::quit(); // also when it was hidden, or a dialog is open
        });
        result = QApplication::exec();
    }
    Utilities::SetAppConfigRepositoryInterface(nullptr);
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    introduceProgram();
    const QStringList arguments = textsOf(argc, argv);
    const Options early = Options::parse(arguments);
    Vantry::Language::useInThisRun(early.language);
    if (!early.triedPlugins.isEmpty())
        return runTrial(argc, argv, early);
    if (early.wantsHelp || early.wantsVersion || early.wantsManual)
        return runWithoutWindow(argc, argv, early);

    // A picture needs no display, and must not depend on how somebody left the window.
    std::unique_ptr<QTemporaryDir> settings;
    if (!early.pictureFile.isEmpty()) {
        settings = std::make_unique<QTemporaryDir>();
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings->path());
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
    } else if (!hasDisplay(arguments)) {
        return refuseWithoutDisplay(argc, argv);
    }

    usualHandler = qInstallMessageHandler(handleQtMessage);
    const Vantry::DeskApplication application(argc, argv);
    QApplication::setStyle(new Vantry::FocusStyle);
    Vantry::Language::show();
    const Options options = Options::parse(QCoreApplication::arguments());
    if (!options.error.isEmpty())
        return showError(options.error);
    return runWindow(options);
}
