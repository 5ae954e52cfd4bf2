#include "desk/window/MainWindow.h"

#include "desk/changes/ChangesDock.h"
#include "desk/common/CellEdit.h"
#include "desk/common/FlatButtons.h"
#include "desk/common/TreeSelection.h"
#include "desk/files/ExampleFiles.h"
#include "desk/files/FileDrops.h"
#include "desk/files/FileMenu.h"
#include "desk/files/KeptChangesBar.h"
#include "desk/files/MonitorLists.h"
#include "desk/files/OpeningProgress.h"
#include "desk/files/ProblemFeed.h"
#include "desk/files/ProblemsDock.h"
#include "desk/files/RecentFiles.h"
#include "desk/find/FindDock.h"
#include "desk/language/LanguageMenu.h"
#include "desk/log/FailureHint.h"
#include "desk/log/LogDock.h"
#include "desk/places/Places.h"
#include "desk/plugins/GuiContext.h"
#include "desk/plugins/LoadingNote.h"
#include "desk/plugins/PluginDock.h"
#include "desk/session/SessionKeeper.h"
#include "desk/text/TextDock.h"
#include "desk/window/EditMenu.h"
#include "desk/window/GoMenu.h"
#include "desk/window/NavigationArea.h"
#include "desk/window/NodeActions.h"
#include "desk/window/NoticeBar.h"
#include "desk/window/StartPage.h"
#include "desk/window/WindowMemory.h"
#include "host/Utilities/ModelViews/Widgets/PlainMessageBox.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace Vantry {

using Utilities::RefusedEdit;
using Utilities::RefusedEdits;
using Utilities::ModelViews::Widgets::PlainMessageBox;

const QLatin1String attributesPage("attributes");

MainWindow::MainWindow(std::shared_ptr<Repository> attributes, PluginLoader& pluginLoader,
                       const QStringList& firstFiles)
    : loader(pluginLoader), repository(std::move(attributes)), mounter(repository), files(repository, *this),
      applications(std::make_shared<GuiContext>(QStringList{QStringLiteral("desk")}), repository)
{
    setObjectName(QStringLiteral("mainWindow"));
    if (const auto history = repository->getHistoryInterface())
        history->recordThisThread();
    resize(QSize(1100, 720).boundedTo(screen()->availableSize()));
    setUpAreas();
    setUpStatusBar();
    setUpMenus();
    connect(new FileDrops(*this), &FileDrops::dropped, this,
            [this](const QStringList& names) { openFiles(names); });
    connect(&mounter, &FileMounter::mounted, this, &MainWindow::showResult);
    connect(&applications, &ApplicationHost::pageChosen, this, &MainWindow::showPage);
    connect(&applications, &ApplicationHost::showRequested, this, &MainWindow::showApplication);
    applications.createApplications(loader);
    showFirstPages(!firstFiles.isEmpty());
    QStringList names = firstFiles;
    const QStringList lists = MonitorLists::takeFrom(names);
    mounter.mount(names); // while the pages, which watch for it, are put into the window
    addApplications();
    showMonitorLists(lists);
    places->showCommentBelow(QStringLiteral("txtAttributeDetails"));
    WindowMemory::restore(*this);
    plugins->showFindings(loader.getFindings());
}

void MainWindow::setUpAreas()
{
    navigation = new NavigationArea;
    connect(navigation, &NavigationArea::chosen, this, &MainWindow::chooseApplication);
    notices = new NoticeBar;
    connect(notices, &NoticeBar::openRequested, this, &MainWindow::openFiles);
    kept = new KeptChangesBar;
    connect(kept, &KeptChangesBar::applyRequested, this, &MainWindow::applyKept);
    workArea = new QStackedWidget;
    workArea->setObjectName(QStringLiteral("workArea"));
    auto* const right = new QWidget;
    auto* const column = new QVBoxLayout(right);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(notices);
    column->addWidget(kept);
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
    auto* const problems = new ProblemsDock;
    addDockWidget(Qt::BottomDockWidgetArea, problems);
    connect(&ProblemFeed::instance(), &ProblemFeed::added, problems, &ProblemsDock::show);
    find = new FindDock(repository, files, [this] { return edit->getSelection().getPath(); });
    addDockWidget(Qt::BottomDockWidgetArea, find);
    connect(find, &FindDock::chosen, this, &MainWindow::selectAttribute);
    changes = new ChangesDock(repository, files);
    addDockWidget(Qt::BottomDockWidgetArea, changes);
    connect(changes, &ChangesDock::selectRequested, this, &MainWindow::selectAttribute);
    connect(changes, &ChangesDock::failed, this, &MainWindow::showNotice);
    log = new LogDock(logFeed);
    addDockWidget(Qt::BottomDockWidgetArea, log);
}

void MainWindow::setUpStatusBar()
{
    hint = new FailureHint(logFeed, repository);
    statusBar()->addWidget(hint, 1);
    statusBar()->addPermanentWidget(new OpeningProgress(mounter, repository));
    connect(&files.getWatch(), &Utilities::UnsavedBackends::looked, hint,
            [this] { hint->showUnsaved(files.getWatch().getNames()); });
    connect(hint, &FailureHint::logRequested, log, &LogDock::showLines);
    connect(hint, &FailureHint::editRequested, this, &MainWindow::editAgain);
}

void MainWindow::setUpMenus()
{
    file = new FileMenu(files, this);
    menuBar()->addMenu(file);
    connect(file, &FileMenu::openRequested, this, &MainWindow::openFiles);
    connect(file, &FileMenu::quitRequested, this, &MainWindow::close);
    edit = new EditMenu(repository, *this);
    menuBar()->addMenu(edit);
    connect(&edit->getNodeActions(), &NodeActions::selectRequested, this,
            [this](const QString& path) { selectNew(path); });
    edit->addFinding(*find);
    go = new GoMenu([this] { return edit->getSelection().getPath(); }, this);
    menuBar()->addMenu(go);
    connect(go, &GoMenu::selectRequested, this, &MainWindow::showNode);
    setUpPlaces();
    connect(&files.getWatch(), &Utilities::UnsavedBackends::looked, this, &MainWindow::showFiles);

    view = menuBar()->addMenu(tr("&View"));
    auto* const showNavigation = new QAction(tr("&Navigation Area"), this);
    showNavigation->setObjectName(QStringLiteral("showNavigation"));
    view->addAction(showNavigation);
    showNavigation->setCheckable(true);
    showNavigation->setChecked(true);
    showNavigation->setShortcut(Qt::Key_F9);
    connect(showNavigation, &QAction::toggled, navigation, &QWidget::setVisible);
    const auto docks = findChildren<QDockWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QDockWidget* const dock : docks)
        view->addAction(dock->toggleViewAction());
    QAction* const showLog = log->toggleViewAction();
    showLog->setShortcut(Qt::Key_F8);
    QAction* const showChanges = changes->toggleViewAction();
    showChanges->setShortcut(Qt::Key_F7);
    connect(showChanges, &QAction::triggered, changes, [this](bool isShown) {
        if (isShown)
            changes->showChanges();
    });
    connect(showLog, &QAction::triggered, log, [this](bool isShown) {
        if (isShown)
            log->showLines();
    });
    QAction* const showFailure = hint->getReachAction();
    view->addAction(showFailure);
    view->addSeparator();
    reopenAction = new QAction(tr("&Reopen Files at Start"), this);
    reopenAction->setObjectName(QStringLiteral("reopensFiles"));
    reopenAction->setCheckable(true);
    reopenAction->setChecked(true);
    view->addAction(reopenAction);
    auto* const language = new LanguageMenu(view);
    view->addMenu(language);
    connect(language, &LanguageMenu::announced, this, &MainWindow::showNotice);

    setUpHelp();
}

void MainWindow::setUpHelp()
{
    QMenu* const help = menuBar()->addMenu(tr("&Help"));
    QAction* const commands = help->addAction(
        tr("&Commands..."), this, [this] { showActions(ActionList::Shown::Everything); },
        Qt::CTRL + Qt::SHIFT + Qt::Key_P);
    commands->setObjectName(QStringLiteral("showCommands"));
    QAction* const keys = help->addAction(
        tr("&Keys..."), this, [this] { showActions(ActionList::Shown::Keys); }, Qt::Key_F1);
    keys->setObjectName(QStringLiteral("showKeys"));
    help->addSeparator();
    help->addAction(tr("&About Vantry"), this, &MainWindow::showAbout);
}

// What is chosen is done once the list is gone.
void MainWindow::showActions(ActionList::Shown shown)
{
    edit->refresh();
    ActionList list(*menuBar(), shown, this);
    const bool isChosen = list.exec() == QDialog::Accepted;
    if (QAction* const action = list.getChosen(); isChosen && action)
        QTimer::singleShot(0, action, &QAction::trigger);
}

void MainWindow::setUpPlaces()
{
    places = new Places(repository, files, *this, *edit);
    connect(places, &Places::selectRequested, this, &MainWindow::selectAttribute);
    connect(places, &Places::failed, this, &MainWindow::showNotice);
    auto* const text = new TextDock(repository, places->getWatch());
    addDockWidget(Qt::RightDockWidgetArea, text);
    connect(text, &TextDock::selectRequested, this, &MainWindow::selectAttribute);
    connect(text, &TextDock::menuRequested, places, &Places::popUp);
    connect(changes, &ChangesDock::menuRequested, places, &Places::popUp);
    connect(&files.getWatch(), &Utilities::UnsavedBackends::looked, text, &TextDock::look);
    QAction* const showText = text->toggleViewAction();
    showText->setShortcut(Qt::CTRL + Qt::Key_U);
    connect(showText, &QAction::triggered, text, [text](bool isShown) {
        if (isShown)
            text->showText();
    });
}

void MainWindow::addApplications()
{
    for (const auto& application : applications.getApplications()) {
        const LoadingNote note({application.library->getFile()});
        navigation->addApplication({application.identification, application.icon, application.name,
                                    application.control, !application.main.isNull()});
        if (application.main) {
            workArea->addWidget(application.main);
            FlatButtons::style(*application.main);
        }
    }
    view->addSeparator();
    view->addActions(navigation->actions());
    if (!applications.getApplications().empty())
        setWindowIcon(applications.getApplications().front().icon);
    if (applications.getApplications().empty())
        notices->addNotices(
            {tr("No plug-in was loaded, so there is nothing to show. View > Plug-ins tells why.")});
}

void MainWindow::showPage(const QString& identification, const QString& page)
{
    for (const auto& application : applications.getApplications()) {
        if (application.control && application.identification == identification)
            FlatButtons::markPage(*application.control, page);
    }
    showApplication(identification);
}

void MainWindow::showApplication(const QString& identification)
{
    for (const auto& application : applications.getApplications()) {
        if (application.main && application.identification == identification)
            workArea->setCurrentWidget(application.main);
    }
}

// By its heading or key.
void MainWindow::chooseApplication(const QString& identification)
{
    if (applications.getPage(identification).isEmpty())
        applications.setPage(identification, attributesPage);
    showPage(identification, applications.getPage(identification));
}

// The one that shows files: this system's own, or else the first; empty when there is none.
QString MainWindow::fileApplication() const
{
    const QString own = QStringLiteral("Vantry");
    QString first;
    for (const auto& application : applications.getApplications()) {
        if (application.identification == own)
            return own;
        first = first.isEmpty() ? application.identification : first;
    }
    return first;
}

// With files the page that shows them, otherwise what each application showed last.
void MainWindow::showFirstPages(bool hasFiles)
{
    const auto& shown = applications.getApplications();
    if (shown.empty())
        return;
    if (hasFiles)
        return applications.setPage(fileApplication(), attributesPage);
    bool isAnyShown = false;
    for (auto application = shown.rbegin(); application != shown.rend(); ++application) {
        const QString page = WindowMemory::getPage(application->identification);
        if (page.isEmpty() || page == attributesPage)
            continue;
        applications.setPage(application->identification, page);
        isAnyShown = true;
    }
    if (!isAnyShown)
        showStartPage();
}

void MainWindow::showLastPages()
{
    for (const auto& application : applications.getApplications()) {
        const QString page = WindowMemory::getPage(application.identification);
        applications.setPage(application.identification, page.isEmpty() ? QString(attributesPage) : page);
    }
}

void MainWindow::beginSession(bool restores)
{
    session = new SessionKeeper(repository, files, mounter, *this);
    const bool isRestored = restores && reopenAction->isChecked() && session->restore();
    if (isRestored)
        showLastPages();
    const auto unsaved = session->takeUnsaved();
    if (isRestored)
        keptToApply += unsaved;
    session->follow();
}

bool MainWindow::areFilesShown() const
{
    const auto& shown = applications.getApplications();
    return std::any_of(shown.begin(), shown.end(), [this](const auto& application) {
        return application.main == workArea->currentWidget() &&
               applications.getPage(application.identification) == attributesPage;
    });
}

void MainWindow::showStartPage()
{
    if (!startPage) {
        startPage = new StartPage;
        workArea->addWidget(startPage);
        connect(startPage, &StartPage::chooseRequested, file, &FileMenu::chooseFiles);
        connect(startPage, &StartPage::openRequested, this,
                [this](const QStringList& names) { openFiles(names); });
        connect(startPage, &StartPage::exampleRequested, this, &MainWindow::openExample);
    }
    startPage->refresh();
    workArea->setCurrentWidget(startPage);
    for (const auto& application : applications.getApplications()) {
        if (application.control)
            FlatButtons::markPage(*application.control, {});
    }
}

void MainWindow::openExample()
{
    QString error;
    const QStringList example = makeExampleFiles(error);
    if (!error.isEmpty())
        notices->addNotices({tr("The example was not opened: %1").arg(error)});
    openFiles(example);
}

void MainWindow::openFiles(const QStringList& names, const QString& type)
{
    if (names.isEmpty())
        return;
    QStringList configurations = names;
    const QStringList lists = type.isEmpty() ? MonitorLists::takeFrom(configurations) : QStringList();
    mounter.mount(configurations, type);
    showMonitorLists(lists);
    showFirstPages(true);
}

void MainWindow::showMonitorLists(const QStringList& lists)
{
    QStringList problems;
    for (const QString& list : lists)
        problems += MonitorLists::show(list, *this);
    problems.removeAll(QString());
    fileProblems += problems;
    notices->addNotices(problems);
}

void MainWindow::waitForFirstFiles()
{
    constexpr std::chrono::milliseconds patience(100);
    if (mounter.waitFor(patience))
        QCoreApplication::sendPostedEvents();
}

void MainWindow::showKeptChanges()
{
    if (keptToApply.isEmpty()) // of others it is told once these are applied
        kept->refresh();
}

void MainWindow::applyKept(const KeptChanges::Entry& entry)
{
    const QString backend = FileMounter::backendOf(entry.file, *repository);
    if (backend.isEmpty()) {
        keptToApply.append(entry);
        openFiles({entry.file});
        return;
    }
    showFirstPages(true);
    files.applyKept(entry, backend);
    kept->refresh();
}

void MainWindow::showResult(const FileMounter::Result& result)
{
    RecentFiles::add(result.opened);
    fileProblems += result.problems;
    notices->addNotices(result.problems);
    notices->offerOpening(result.unknown);
    files.getWatch().look();
    if (!result.openBefore.isEmpty())
        selectAttribute(result.openBefore.last());
    const auto waiting = std::exchange(keptToApply, {});
    for (const KeptChanges::Entry& entry : waiting) {
        if (!FileMounter::backendOf(entry.file, *repository).isEmpty())
            applyKept(entry);
        else if (mounter.isBusy())
            keptToApply.append(entry);
    }
    if (!waiting.isEmpty())
        showKeptChanges(); // with those whose files are not open
}

bool MainWindow::select(const QString& path)
{
    showFirstPages(true);
    const auto& shown = applications.getApplications();
    return std::any_of(shown.begin(), shown.end(), [&path](const auto& application) {
        return application.main && selectInTree(*application.main, path);
    });
}

// Trees follow what has changed a moment later. Who selects something else meanwhile keeps that.
void MainWindow::selectNew(const QString& path, int attempts)
{
    constexpr int milliseconds = 30;
    if (attempts == 0)
        return selectAttribute(path);
    if (select(path))
        return;
    const auto current = [this] { return edit->getSelection().getPath(); };
    QTimer::singleShot(milliseconds, this, [this, path, attempts, current, former = current()] {
        const QString now = current();
        if (now == former || !repository->getTreeInterface()->getNodeInformation(former).exists)
            selectNew(path, attempts - 1);
    });
}

void MainWindow::selectAttribute(const QString& path)
{
    go->noteJump(currentInTree(*this), path);
    showNode(path);
}

void MainWindow::showNode(const QString& path)
{
    if (select(path))
        return;
    const bool isBackend = files.getBackends().contains(path);
    notices->addNotices(
        {isBackend
             ? tr("%1 is open already, but the search leaves it out of the tree.").arg(files.getLabel(path))
             : tr("%1 is there, but the search leaves it out of the tree.").arg(path)});
}

void MainWindow::showNotice(const QString& text)
{
    notices->addNotices({text});
}

void MainWindow::editAgain(const RefusedEdit& refused)
{
    showFirstPages(true);
    RefusedEdits::instance().editAgain(refused);
}

// What the window and its menus say of the open files.
void MainWindow::showFiles()
{
    edit->refresh();
    setWindowModified(!files.getWatch().getNames().isEmpty());
    const QStringList backends = files.getBackends();
    if (backends == shownBackends)
        return;
    if (backends.isEmpty() && areFilesShown())
        showStartPage();
    shownBackends = backends;
    constexpr int mostNames = 3;
    QString title = files.getFileNames(backends.mid(0, mostNames)).join(QStringLiteral(", "));
    if (backends.size() > mostNames)
        title = tr("%1 and %2 more").arg(title, QString::number(backends.size() - mostNames));
    title.replace(QLatin1String("[*]"), QLatin1String("[*][*]")); // as a name may hold it
    setWindowTitle(title.isEmpty() ? QString() : title + QLatin1String("[*]"));
}

void MainWindow::showAbout()
{
    QString text = tr("<h3>Vantry %1</h3><p>One window over all configuration of a system.</p>")
                       .arg(QCoreApplication::applicationVersion().toHtmlEscaped());
    for (const auto& application : applications.getApplications())
        text += QStringLiteral("<p>%1 %2</p>")
                    .arg(application.name.toHtmlEscaped(), application.version.toHtmlEscaped());
    QMessageBox::about(this, tr("About Vantry"), text);
}

bool MainWindow::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride)
        edit->prepareFor(*static_cast<QKeyEvent*>(event));
    return QMainWindow::event(event);
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

void MainWindow::closeUnasked()
{
    files.keepUnsaved();
    asks = false;
    close();
}

// Ends the edit of a cell. False when what was typed is refused, and the person does not give it up.
bool MainWindow::mayEntryBeLost()
{
    bool isRefused = false;
    {
        const QObject listener;
        connect(&RefusedEdits::instance(), &RefusedEdits::added, &listener,
                [&isRefused] { isRefused = true; });
        endCellEdit(*this);
    }
    if (!isRefused)
        return true;
    PlainMessageBox question(PlainMessageBox::Warning, tr("Not Written"),
                             tr("%1\n\nClose the window without it?").arg(hint->getText()),
                             PlainMessageBox::Cancel, this);
    const QAbstractButton* const close = question.addButton(tr("C&lose"), PlainMessageBox::DestructiveRole);
    question.exec();
    return question.clickedButton() == close;
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (asks && !(mayEntryBeLost() && files.mayBeLost())) {
        event->ignore();
        return;
    }
    if (session)
        session->end();
    WindowMemory::save(*this);
    for (const auto& application : applications.getApplications())
        WindowMemory::savePage(application.identification, applications.getPage(application.identification));
    using Utilities::ApplicationPlugins::ApplicationPluginController;
    applications.tellAll(ApplicationPluginController::ApplicationEvent::AboutToClose);
    QMainWindow::closeEvent(event);
}

} // namespace Vantry
