#include "desk/window/MainWindow.h"

#include "desk/common/CellEdit.h"
#include "desk/common/TreeSelection.h"
#include "desk/files/ExampleFiles.h"
#include "desk/files/FileDrops.h"
#include "desk/files/KeptChangesBar.h"
#include "desk/files/MonitorLists.h"
#include "desk/files/RecentFiles.h"
#include "desk/log/FailureHint.h"
#include "desk/places/Places.h"
#include "desk/plugins/GuiContext.h"
#include "desk/plugins/PluginDock.h"
#include "desk/session/WindowView.h"
#include "desk/window/EditMenu.h"
#include "desk/window/GoMenu.h"
#include "desk/window/NoticeBar.h"
#include "desk/window/StartPage.h"
#include "desk/window/WindowMemory.h"
#include "desk/window/Windows.h"
#include "host/Utilities/ModelViews/Widgets/PlainMessageBox.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTabBar>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace Vantry {

using Utilities::RefusedEdit;
using Utilities::RefusedEdits;
using Utilities::ModelViews::Widgets::PlainMessageBox;

namespace {

// Of what belongs to a window alone.
QStringList contextPath(int number)
{
    QStringList path{QStringLiteral("desk")};
    if (number > 1)
        path << QStringLiteral("windows") << QString::number(number);
    return path;
}

} // namespace

MainWindow::MainWindow(Windows& allWindows, int windowNumber, const QStringList& firstFiles)
    : windows(allWindows), number(windowNumber), repository(windows.getRepository()),
      mounter(windows.getMounter()), files(repository, *this),
      applications(std::make_shared<GuiContext>(contextPath(number)), repository)
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
    applications.createApplications(windows.getLoader());
    for (const auto& application : applications.getApplications()) {
        if (application.main && !files.getBackends().isEmpty())
            readTrees(*application.main);
    }
    showFirstPages(!firstFiles.isEmpty());
    QStringList names = firstFiles;
    const QStringList lists = MonitorLists::takeFrom(names);
    wanted = names;
    mounter.mount(names); // while the pages, which watch for it, are put into the window
    addApplications();
    showMonitorLists(lists);
    places->showCommentBelow(QStringLiteral("txtAttributeDetails"));
    shownView = std::make_unique<WindowView>(*this);
    connect(shownView.get(), &WindowView::changed, this, &MainWindow::viewChanged);
    WindowMemory::restore(*this);
    plugins->showFindings(windows.getLoader().getFindings());
}

MainWindow::~MainWindow() = default;

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
    wanted += configurations;
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

// Of what several windows may have asked for, the one that is worked with tells.
void MainWindow::showResult(const FileMounter::Result& result)
{
    if (windows.getCurrent() == this)
        tellResult(result);
    files.getWatch().look();
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

void MainWindow::tellResult(const FileMounter::Result& result)
{
    RecentFiles::add(result.opened);
    fileProblems += result.problems;
    notices->addNotices(result.problems);
    notices->offerOpening(result.unknown);
    if (!result.openBefore.isEmpty())
        selectAttribute(result.openBefore.last());
    showFolders(result.opened);
}

// Whoever has asked for a folder wants to see what is in it. The tree shows it in a moment.
void MainWindow::showFolders(const QStringList& opened)
{
    QStringList roots;
    for (const QString& folder : opened) {
        const QString backend =
            wanted.removeAll(folder) > 0 ? FileMounter::backendOf(folder, *repository) : QString();
        const auto information = repository->getBackendInterface()->getBackendInformation(backend);
        if (information && information->getBackendType() == QLatin1String("folder"))
            roots.append(backend);
    }
    QTimer::singleShot(0, this, [this, roots] {
        for (const auto& application : applications.getApplications()) {
            for (const QString& root : roots) {
                if (application.main)
                    expandInTrees(*application.main, root);
            }
        }
    });
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
    if (!repository->getTreeInterface()->getNodeInformation(path).exists) {
        notices->addNotices({tr("%1 is in nothing that is open.").arg(path)});
        return;
    }
    for (const auto& application : applications.getApplications()) {
        if (application.main)
            showAllInTrees(*application.main);
    }
    notices->addNotices({select(path)
                             ? tr("The tree shows everything again, since its search left out %1.").arg(path)
                             : tr("%1 is in no tree of this window.").arg(path)});
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
    const QStringList backends = files.getBackends();
    if (backends != shownBackends) {
        if (backends.isEmpty() && areFilesShown())
            showStartPage();
        shownBackends = backends;
        showTitle();
    }
    setWindowModified(!files.getWatch().getNames().isEmpty()); // which the title has a place for
}

void MainWindow::showTitle()
{
    constexpr int mostNames = 3;
    const QStringList opened = files.getOpened();
    QString title = files.getFileNames(opened.mid(0, mostNames)).join(QStringLiteral(", "));
    if (opened.size() > mostNames)
        title = tr("%1 and %2 more").arg(title, QString::number(opened.size() - mostNames));
    if (number > 1 && !title.isEmpty())
        title = tr("%1 (window %2)").arg(title, QString::number(number));
    title.replace(QLatin1String("[*]"), QLatin1String("[*][*]")); // as a name may hold it
    setWindowTitle(title.isEmpty() ? QString() : title + QLatin1String("[*]"));
}

QString MainWindow::getTitle() const
{
    QString title = windowTitle();
    if (title.isEmpty())
        return tr("Window %1").arg(number);
    title.chop(int(qstrlen("[*]")));
    return title.replace(QLatin1String("[*][*]"), QLatin1String("[*]"));
}

SessionState::View MainWindow::getView() const
{
    SessionState::View shown = shownView->get();
    for (const auto& application : applications.getApplications())
        shown.pages.insert(application.identification, applications.getPage(application.identification));
    return shown;
}

void MainWindow::showFrame(const SessionState::View& before)
{
    shownView->showFrame(before);
}

void MainWindow::showView(const SessionState::View& before)
{
    shownView->show(before);
}

bool MainWindow::reopensFiles() const
{
    return reopenAction->isChecked();
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
    if (event->type() == QEvent::WindowActivate) {
        windows.setCurrent(*this);
        go->readBookmarks();
    }
    if (event->type() == QEvent::ShortcutOverride)
        edit->prepareFor(*static_cast<QKeyEvent*>(event));
    if (event->type() == QEvent::ChildPolished) {
        // That of docks which share a place, where the keyboard comes by their keys.
        if (auto* const tabs = qobject_cast<QTabBar*>(static_cast<QChildEvent*>(event)->child()))
            tabs->setFocusPolicy(Qt::NoFocus);
    }
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
    asks = false;
    close();
}

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

// What is not saved goes with the last window only.
void MainWindow::closeEvent(QCloseEvent* event)
{
    const bool isLast = windows.isLast(*this);
    if (asks && !(mayEntryBeLost() && (!isLast || files.mayBeLost()))) {
        event->ignore();
        return;
    }
    if (isLast)
        windows.endSession();
    WindowMemory::save(*this);
    for (const auto& application : applications.getApplications())
        WindowMemory::savePage(application.identification, applications.getPage(application.identification));
    applications.tellAll(ApplicationHost::Event::AboutToClose);
    QMainWindow::closeEvent(event);
    windows.remove(*this);
}

} // namespace Vantry
