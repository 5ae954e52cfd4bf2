#include "desk/MainWindow.h"

#include "desk/FailureHint.h"
#include "desk/FlatButtons.h"
#include "desk/GuiContext.h"
#include "desk/LogDock.h"
#include "desk/NavigationArea.h"
#include "desk/NoticeBar.h"
#include "desk/PluginDock.h"
#include "desk/WindowMemory.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

namespace Vantry {

using Utilities::ApplicationWidgetType;

namespace {

const QLatin1String attributesPage("attributes");

QStringList localFiles(const QMimeData& data)
{
    QStringList files;
    const auto urls = data.urls();
    for (const QUrl& url : urls) {
        if (url.isLocalFile())
            files.append(url.toLocalFile());
    }
    return files;
}

} // namespace

MainWindow::MainWindow(std::shared_ptr<Repository> attributes, PluginLoader& pluginLoader,
                       const QStringList& files)
    : loader(pluginLoader), repository(std::move(attributes)), mounter(repository),
      applications(std::make_shared<GuiContext>(QStringList{QStringLiteral("desk")}), repository)
{
    setObjectName(QStringLiteral("mainWindow"));
    setAcceptDrops(true);
    resize(QSize(1100, 720).boundedTo(screen()->availableSize()));
    setUpAreas();
    setUpStatusBar();
    setUpMenus();
    connect(&mounter, &FileMounter::mounted, this, &MainWindow::showResult);
    connect(&applications, &ApplicationHost::pageChosen, this, &MainWindow::showPage);
    connect(&applications, &ApplicationHost::showRequested, this, &MainWindow::showApplication);
    addApplications();
    WindowMemory::restore(*this);
    plugins->showFindings(loader.getFindings());
    showFirstPages(!files.isEmpty());
    openFiles(files);
}

MainWindow::~MainWindow() = default;

void MainWindow::setUpAreas()
{
    navigation = new NavigationArea;
    notices = new NoticeBar;
    workArea = new QStackedWidget;
    workArea->setObjectName(QStringLiteral("workArea"));
    FlatButtons::style(*workArea);
    auto* const right = new QWidget;
    auto* const column = new QVBoxLayout(right);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(notices);
    column->addWidget(workArea, 1);

    areas = new QSplitter;
    areas->setObjectName(QStringLiteral("areas"));
    areas->setChildrenCollapsible(false);
    areas->addWidget(navigation);
    areas->addWidget(right);
    areas->setStretchFactor(1, 1);
    setCentralWidget(areas);

    plugins = new PluginDock;
    addDockWidget(Qt::BottomDockWidgetArea, plugins);
    log = new LogDock(logFeed);
    addDockWidget(Qt::BottomDockWidgetArea, log);
}

void MainWindow::setUpStatusBar()
{
    auto* const hint = new FailureHint(logFeed);
    statusBar()->addWidget(hint, 1);
    connect(hint, &FailureHint::logRequested, log, &LogDock::showLines);
}

void MainWindow::setUpMenus()
{
    QMenu* const file = menuBar()->addMenu(tr("&File"));
    QAction* const open = file->addAction(tr("&Open Configuration Files..."), this, &MainWindow::chooseFiles);
    open->setShortcut(QKeySequence::Open);
    file->addSeparator();
    QAction* const quit = file->addAction(tr("&Quit"), this, &MainWindow::close);
    quit->setShortcut(QKeySequence::Quit);

    QMenu* const view = menuBar()->addMenu(tr("&View"));
    auto* const showNavigation = new QAction(tr("&Navigation Area"), this);
    showNavigation->setObjectName(QStringLiteral("showNavigation"));
    view->addAction(showNavigation);
    showNavigation->setCheckable(true);
    showNavigation->setChecked(true);
    showNavigation->setShortcut(Qt::Key_F9);
    connect(showNavigation, &QAction::toggled, navigation, &QWidget::setVisible);
    view->addAction(plugins->toggleViewAction());
    QAction* const showLog = log->toggleViewAction();
    showLog->setShortcut(Qt::Key_F8);
    view->addAction(showLog);
    connect(showLog, &QAction::triggered, log, [this](bool isShown) {
        if (isShown)
            log->showLines();
    });

    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    help->addAction(tr("&About Vantry"), this, &MainWindow::showAbout);
}

void MainWindow::addApplications()
{
    applications.createApplications(loader);
    for (const auto& application : applications.getApplications()) {
        if (QWidget* const control = application->getWidgetByType(ApplicationWidgetType::Control))
            navigation->addControl(application->getApplicationIcon(), application->getApplicationName(),
                                   control);
        if (QWidget* const main = application->getWidgetByType(ApplicationWidgetType::Main))
            workArea->addWidget(main);
    }
    if (!applications.getApplications().empty())
        setWindowIcon(applications.getApplications().front()->getApplicationIcon());
    if (workArea->count() == 0)
        notices->addNotices(
            {tr("No plug-in was loaded, so there is nothing to show. View > Plug-ins tells why.")});
}

void MainWindow::showPage(const QString& identification, const QString& page)
{
    for (const auto& application : applications.getApplications()) {
        QWidget* const control = application->getWidgetByType(ApplicationWidgetType::Control);
        if (control && application->getApplicationIdentification() == identification)
            FlatButtons::markPage(*control, page);
    }
    showApplication(identification);
}

void MainWindow::showApplication(const QString& identification)
{
    for (const auto& application : applications.getApplications()) {
        QWidget* const main = application->getWidgetByType(ApplicationWidgetType::Main);
        if (main && application->getApplicationIdentification() == identification)
            workArea->setCurrentWidget(main);
    }
}

void MainWindow::showFirstPages(bool hasFiles)
{
    for (const auto& application : applications.getApplications()) {
        const QString identification = application->getApplicationIdentification();
        const QString page = hasFiles ? QString(attributesPage) : WindowMemory::getPage(identification);
        if (!page.isEmpty())
            applications.setPage(identification, page);
    }
}

void MainWindow::openFiles(const QStringList& files)
{
    if (files.isEmpty())
        return;
    // After the window stands, so that what reads long is seen to be read.
    QTimer::singleShot(0, this, [this, files] { mounter.mount(files); });
    showFirstPages(true);
}

bool MainWindow::isOpeningFiles() const
{
    return mounter.isBusy();
}

void MainWindow::chooseFiles()
{
    openFiles(QFileDialog::getOpenFileNames(
        this, tr("Open Configuration Files"), QString(),
        tr("Configuration Files (*.json *.ini *.conf *.cfg *.xml *.txt *.properties);;All Files (*)")));
}

void MainWindow::showResult(const FileMounter::Result& result)
{
    for (const QString& file : result.opened)
        openedNames.append(QFileInfo(file).fileName());
    setWindowTitle(title());
    notices->addNotices(result.problems);
}

QString MainWindow::title() const
{
    constexpr int mostNames = 3;
    const QString names = openedNames.mid(0, mostNames).join(QStringLiteral(", "));
    const int more = openedNames.size() - mostNames;
    return more > 0 ? tr("%1 and %2 more").arg(names).arg(more) : names;
}

void MainWindow::showAbout()
{
    QString text = tr("<h3>Vantry %1</h3><p>One window over all configuration of a system.</p>")
                       .arg(QCoreApplication::applicationVersion().toHtmlEscaped());
    for (const auto& application : applications.getApplications())
        text += QStringLiteral("<p>%1 %2</p>")
                    .arg(application->getApplicationName().toHtmlEscaped(),
                         application->getVersionInformation().getFileVersion().toHtmlEscaped());
    QMessageBox::about(this, tr("About Vantry"), text);
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::PaletteChange)
        return;
    // A widget with a style sheet keeps the colours that it had when the sheet was set.
    const auto widgets = findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        const QString sheet = widget->styleSheet();
        if (!sheet.isEmpty()) {
            widget->setStyleSheet({});
            widget->setStyleSheet(sheet);
        }
    }
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    WindowMemory::save(*this);
    for (const auto& application : applications.getApplications()) {
        const QString identification = application->getApplicationIdentification();
        WindowMemory::savePage(identification, applications.getPage(identification));
    }
    using Utilities::ApplicationPlugins::ApplicationPluginController;
    applications.tellAll(ApplicationPluginController::ApplicationEvent::AboutToClose);
    QMainWindow::closeEvent(event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!localFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    openFiles(localFiles(*event->mimeData()));
    event->acceptProposedAction();
}

} // namespace Vantry
