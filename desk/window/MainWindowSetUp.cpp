#include "desk/changes/ChangesDock.h"
#include "desk/common/Confirmation.h"
#include "desk/common/FlatButtons.h"
#include "desk/files/FileLock.h"
#include "desk/files/FileMenu.h"
#include "desk/files/KeptChangesBar.h"
#include "desk/files/OpeningProgress.h"
#include "desk/files/ProblemFeed.h"
#include "desk/files/ProblemsDock.h"
#include "desk/find/FindDock.h"
#include "desk/language/LanguageMenu.h"
#include "desk/log/FailureHint.h"
#include "desk/log/LogDock.h"
#include "desk/places/EditorCommand.h"
#include "desk/places/Places.h"
#include "desk/plugins/LoadingNote.h"
#include "desk/plugins/PluginDock.h"
#include "desk/text/TextDock.h"
#include "desk/window/DockSwitch.h"
#include "desk/window/EditMenu.h"
#include "desk/window/GoMenu.h"
#include "desk/window/MainWindow.h"
#include "desk/window/NavigationArea.h"
#include "desk/window/NodeActions.h"
#include "desk/window/NoticeBar.h"
#include "desk/window/WindowMenu.h"
#include "desk/window/Windows.h"
#include "host/Utilities/ModelViews/ReadablePath.h"

#include <QAction>
#include <QMenuBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace Vantry {

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
    problemsDock = new ProblemsDock;
    addDockWidget(Qt::BottomDockWidgetArea, problemsDock);
    connect(&ProblemFeed::instance(), &ProblemFeed::added, problemsDock, &ProblemsDock::take);
    const auto present = ProblemFeed::instance().getProblems();
    for (const auto& problem : present)
        problemsDock->take(problem);
    connect(problemsDock, &ProblemsDock::openRequested, this, [this](const auto& place) {
        const QString reason = EditorCommand::open(place);
        if (!reason.isEmpty())
            showNotice(reason);
    });
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
    connect(&Utilities::RefusedEdits::instance(), &Utilities::RefusedEdits::added, hint,
            [this](const Utilities::RefusedEdit& refused) {
                if (windows.getCurrent() == this)
                    hint->takeEdit(refused);
            });
}

void MainWindow::setUpMenus()
{
    file = new FileMenu(files, this);
    menuBar()->addMenu(file);
    connect(file, &FileMenu::openRequested, this, &MainWindow::openFiles);
    connect(file, &FileMenu::quitRequested, this, [this] { windows.quit(*this); });
    edit = new EditMenu(repository, *this);
    menuBar()->addMenu(edit);
    connect(&edit->getNodeActions(), &NodeActions::selectRequested, this,
            [this](const QString& path) { selectNew(path); });
    edit->addFinding(*find);
    auto* const lock = new FileLock(
        repository, files, [this] { return edit->getSelection().getPath(); }, this);
    file->addLock(*lock);
    auto* const lockButton = new QToolButton;
    lockButton->setObjectName(QStringLiteral("lock"));
    lockButton->setAutoRaise(true);
    lockButton->setFocusPolicy(Qt::TabFocus);
    lockButton->setDefaultAction(lock);
    statusBar()->addPermanentWidget(lockButton);
    go = new GoMenu(
        [this] { return edit->getSelection().getPath(); },
        [this](const QString& path) { return Utilities::ModelViews::readablePath(path, *repository); }, this);
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
    addDocks();
    QAction* const showFailure = hint->getReachAction();
    view->addAction(showFailure);
    view->addSeparator();
    reopenAction = new QAction(tr("&Reopen Files at Start"), this);
    reopenAction->setObjectName(QStringLiteral("reopensFiles"));
    reopenAction->setCheckable(true);
    reopenAction->setChecked(true);
    view->addAction(reopenAction);
    connect(reopenAction, &QAction::toggled, &windows, &Windows::reopeningChosen);
    connect(&windows, &Windows::reopeningChosen, reopenAction, &QAction::setChecked);
    QAction* const askAgain = view->addAction(tr("&Ask Before Everything Again"), &Confirmation::askAgain);
    askAgain->setObjectName(QStringLiteral("askAgain"));
    connect(view, &QMenu::aboutToShow, askAgain,
            [askAgain] { askAgain->setEnabled(Confirmation::isAnyUnasked()); });
    auto* const language = new LanguageMenu(view);
    view->addMenu(language);
    connect(language, &LanguageMenu::announced, this, &MainWindow::showNotice);

    menuBar()->addMenu(new WindowMenu(windows, *this));
    setUpHelp();
}

// Those at the bottom share their place, or the window would have to grow.
void MainWindow::addDocks()
{
    const auto add = [this](QDockWidget& dock, const QString& name, const QKeySequence& key,
                            const std::function<void()>& show) {
        new DockSwitch(dock, name, show);
        QAction* const action = dock.toggleViewAction();
        action->setShortcut(key);
        view->addAction(action);
        if (&dock != plugins && dockWidgetArea(&dock) == Qt::BottomDockWidgetArea)
            tabifyDockWidget(plugins, &dock);
    };
    const auto raise = [](QDockWidget& dock) {
        return [&dock] {
            dock.show();
            dock.raise();
            dock.widget()->setFocus();
        };
    };
    add(*plugins, tr("&Plug-ins"), {}, raise(*plugins));
    add(*problemsDock, tr("Pr&oblems"), {}, raise(*problemsDock));
    add(*find, tr("F&ind"), {}, [this] { find->beginFinding(); });
    add(*changes, tr("&Changes"), Qt::Key_F7, [this] { changes->showChanges(); });
    add(*log, tr("Lo&g"), Qt::Key_F8, [this] { log->showLines(); });
    add(*textDock, tr("&Text"), Qt::CTRL + Qt::Key_U, [this] { textDock->showText(); });
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
    textDock = new TextDock(repository, places->getWatch());
    addDockWidget(Qt::RightDockWidgetArea, textDock);
    connect(textDock, &TextDock::selectRequested, this, &MainWindow::selectAttribute);
    connect(textDock, &TextDock::menuRequested, places, &Places::popUp);
    connect(changes, &ChangesDock::menuRequested, places, &Places::popUp);
    connect(&files.getWatch(), &Utilities::UnsavedBackends::looked, textDock, &TextDock::look);
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

} // namespace Vantry
