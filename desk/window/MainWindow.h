#pragma once

#include "desk/files/BackendFiles.h"
#include "desk/files/FileMounter.h"
#include "desk/log/LogFeed.h"
#include "desk/plugins/ApplicationHost.h"
#include "desk/plugins/PluginLoader.h"
#include "desk/window/ActionList.h"
#include "host/Utilities/RefusedEdits.h"

#include <QMainWindow>

class QMenu;
class QSplitter;
class QStackedWidget;

namespace Vantry {

class ChangesDock;
class EditMenu;
class FailureHint;
class FileMenu;
class FindDock;
class GoMenu;
class KeptChangesBar;
class LogDock;
class NavigationArea;
class NoticeBar;
class Places;
class PluginDock;
class SessionKeeper;
class StartPage;

// The window: what applications there are on the left, the work area of the chosen one on the right, and
// above it what could not be opened. GUI thread.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // The loader outlives the window. Without files the window opens on the page that was shown last, or
    // where that would show files, on the start page.
    MainWindow(std::shared_ptr<Repository> repository, PluginLoader& loader, const QStringList& files);

    // Opens files on another thread, and shows their attributes.
    void openFiles(const QStringList& files, const QString& type = {}); // as that, if there is one

    // Waits a moment for the files that were given first, so that the window appears with what is in them. It
    // appears without when they are so many or large that a person would notice the wait.
    void waitForFirstFiles();

    // From now on the next start can bring back what is open and how it is shown, which this does with what
    // the last session left, if that is wanted.
    void beginSession(bool restores);

    bool isOpeningFiles() const { return mounter.isBusy(); }

    // A text for each file that was not opened so far.
    const QStringList& getFileProblems() const { return fileProblems; }

    // Closes without asking what becomes of unsaved changes, for when nobody may be there to answer. They are
    // kept, and showKeptChanges tells where.
    void closeUnasked();
    void showKeptChanges();

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void setUpAreas();
    void setUpStatusBar();
    void setUpMenus();
    void setUpPlaces();
    void addApplications();
    void showPage(const QString& identification, const QString& page);
    void showApplication(const QString& identification);
    void chooseApplication(const QString& identification);
    QString fileApplication() const;
    void showFirstPages(bool hasFiles);
    void showLastPages();
    bool areFilesShown() const;
    void showStartPage();
    void openExample();
    void showMonitorLists(const QStringList& lists);
    void applyKept(const KeptChanges::Entry& entry);
    void showResult(const FileMounter::Result& result);
    bool mayEntryBeLost();
    void editAgain(const Utilities::RefusedEdit& refused);
    void selectAttribute(const QString& path); // from elsewhere, so that one can go back
    void showNode(const QString& path);
    void selectNew(const QString& path, int attempts = 30);
    bool select(const QString& path);
    void showNotice(const QString& text);
    void showFiles();
    void setUpHelp();
    void showActions(ActionList::Shown shown);
    void showAbout();

    PluginLoader& loader;
    std::shared_ptr<Repository> repository;
    FileMounter mounter;
    BackendFiles files;
    LogFeed logFeed;
    QStringList shownBackends; // in the title
    QStringList fileProblems;
    QVector<KeptChanges::Entry> keptToApply; // once their files are open
    bool asks = true;

    // Owned by the window as their Qt parent.
    QSplitter* areas = nullptr;
    FileMenu* file = nullptr;
    EditMenu* edit = nullptr;
    GoMenu* go = nullptr;
    Places* places = nullptr;
    NavigationArea* navigation = nullptr;
    QMenu* view = nullptr;
    NoticeBar* notices = nullptr;
    KeptChangesBar* kept = nullptr;
    QStackedWidget* workArea = nullptr;
    StartPage* startPage = nullptr;
    SessionKeeper* session = nullptr;
    QAction* reopenAction = nullptr;
    PluginDock* plugins = nullptr;
    FindDock* find = nullptr;
    ChangesDock* changes = nullptr;
    LogDock* log = nullptr;
    FailureHint* hint = nullptr;

    ApplicationHost applications; // its widgets go before the window's areas
};

} // namespace Vantry
