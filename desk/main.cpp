#include "desk/DeskApplication.h"
#include "desk/FocusStyle.h"
#include "desk/LoadingNote.h"
#include "desk/MainWindow.h"
#include "desk/Options.h"
#include "desk/PluginLoader.h"
#include "desk/QuitSignals.h"
#include "desk/WindowPicture.h"
#include "host/Utilities/ModelViews/Widgets/PlainMessageBox.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"

#include <QApplication>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

using Utilities::ModelViews::Widgets::PlainMessageBox;
using Vantry::Options;
using Vantry::PluginLoader;

void introduceProgram()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VANTRY_VERSION));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Vantry"));
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
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    const bool needsDisplay =
        platform.isEmpty() || platform.startsWith("xcb") || platform.startsWith("wayland");
    return !needsDisplay || !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
    return true;
#endif
}

QtMessageHandler usualHandler = nullptr;

// Qt ends the process by an abort when it finds no display behind a name that is set; a person asks for the
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
    std::fprintf(stderr, "vantry-desk: %s\nvantry-desk --help shows what it knows.\n", qUtf8Printable(error));
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
    if (!options.triedPlugin.isEmpty())
        return Vantry::PluginTrial::runAsChild(options.triedPlugin);
    const QString text = options.wantsHelp
                             ? Options::helpText()
                             : QStringLiteral("vantry-desk %1\n").arg(QCoreApplication::applicationVersion());
    std::fputs(qUtf8Printable(text), stdout);
    return 0;
}

// The plug-in during whose loading the last start ended, if the user wants to do without it.
QString chooseLeftOut(bool canAsk)
{
    const QString culprit = Vantry::LoadingNote::takeCulprit();
    if (culprit.isEmpty() || !canAsk)
        return culprit;
    PlainMessageBox question(
        PlainMessageBox::Question, QCoreApplication::translate("main", "Leave out a plug-in?"),
        QCoreApplication::translate(
            "main", "The last start ended while this plug-in was loaded:\n%1\n\nStart without it?")
            .arg(QFileInfo(culprit).fileName()),
        PlainMessageBox::Yes | PlainMessageBox::No, nullptr);
    return question.exec() == PlainMessageBox::Yes ? culprit : QString();
}

int runWindow(const Options& options)
{
    const Vantry::QuitSignals quitSignals; // what comes before the event loop runs is kept for it
    const auto repository = Repository::AttributeRepository::create();
    Utilities::SetAppConfigRepositoryInterface(repository);
    PluginLoader loader{Vantry::PluginTrial(QCoreApplication::applicationFilePath())};
    loader.load(options.pluginFolders.isEmpty() ? PluginLoader::usualFolders() : options.pluginFolders,
                chooseLeftOut(options.pictureFile.isEmpty()));
    int result = 0;
    {
        Vantry::MainWindow window(repository, loader, options.files);
        window.waitForFirstFiles();
        window.show();
        std::unique_ptr<Vantry::WindowPicture> picture;
        if (options.pictureFile.isEmpty())
            window.showKeptChanges();
        else
            picture = std::make_unique<Vantry::WindowPicture>(window, options.pictureFile);
        QObject::connect(&quitSignals, &Vantry::QuitSignals::quitRequested, &window, [&window] {
            window.closeUnasked();
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
    if (early.wantsHelp || early.wantsVersion || !early.triedPlugin.isEmpty())
        return runWithoutWindow(argc, argv, early);

    // A picture needs no display, and must not depend on how somebody left the window.
    std::unique_ptr<QTemporaryDir> settings;
    if (!early.pictureFile.isEmpty()) {
        settings = std::make_unique<QTemporaryDir>();
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings->path());
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
    } else if (!hasDisplay(arguments)) {
        if (!early.error.isEmpty())
            return showError(early.error);
        std::fputs("vantry-desk: there is no display to open a window on (DISPLAY and WAYLAND_DISPLAY are "
                   "not set).\n"
                   "Use --picture OUT.png to draw the window into a file instead.\n",
                   stderr);
        return 1;
    }

    usualHandler = qInstallMessageHandler(handleQtMessage);
    const Vantry::DeskApplication application(argc, argv);
    QApplication::setStyle(new Vantry::FocusStyle);
    const Options options = Options::parse(QCoreApplication::arguments());
    if (!options.error.isEmpty())
        return showError(options.error);
    return runWindow(options);
}
