#pragma once

#include "desk/files/BackendFiles.h"
#include "desk/files/FileMounter.h"
#include "desk/log/LogFeed.h"
#include "desk/plugins/ApplicationHost.h"
#include "desk/session/SessionState.h"
#include "desk/window/ActionList.h"
#include "host/Utilities/RefusedEdits.h"

#include <QMainWindow>

#include <memory>

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
class ProblemsDock;
class StartPage;
class TextDock;
class WindowView;
class Windows;

// A window: what applications there are on the left, the work area of the chosen one on the right, and above
// it what could not be opened. GUI thread.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // One of those, which outlive it; the number tells it from the others. Without files the window opens on
    // the page that was shown last, or where that would show files, on the start page.
    MainWindow(Windows& windows, int number, const QStringList& files);
    ~MainWindow() override;

    // Opens files on another thread, and shows their attributes.
    void openFiles(const QStringList& files, const QString& type = {}); // as that, if there is one

    // Waits a moment for the files that were given first, so that the window appears with what is in them. It
    // appears without when they are so many or large that a person would notice the wait.
    void waitForFirstFiles();

    bool isOpeningFiles() const { return mounter.isBusy(); }
    bool reopensFiles() const; // at the next start
    int getNumber() const { return number; }
    BackendFiles& getFiles() { return files; }

    // The title as people read it.
    QString getTitle() const;

    // How the window shows what is open, for the next start.
    SessionState::View getView() const;

    // As it was then: the size and the docks; the pages, by their applications; and once all is open, what
    // these show.
    void showFrame(const SessionState::View& before);
    void showPages(const QMap<QString, QString>& pages);
    void showView(const SessionState::View& before);

    // A text for each file that was not opened so far.
    const QStringList& getFileProblems() const { return fileProblems; }

    // Ends the edit of a cell. False when what was typed is refused, and the person does not give it up.
    bool mayEntryBeLost();

    // Closes without asking what becomes of what is not saved.
    void closeUnasked();

    // Changes that were kept: they are shown, or put in as soon as their files are open.
    void showKeptChanges();
    void applyKeptOnceOpen(const QVector<KeptChanges::Entry>& entries) { keptToApply += entries; }

signals:
    void viewChanged(); // see getView

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void setUpAreas();
    void setUpStatusBar();
    void setUpMenus();
    void addDocks();
    void setUpPlaces();
    void addApplications();
    void showPage(const QString& identification, const QString& page);
    void showApplication(const QString& identification);
    void noteShownApplication();
    void chooseApplication(const QString& identification);
    QString fileApplication() const;
    void showFirstPages(bool hasFiles);
    bool areFilesShown() const;
    void showStartPage();
    void openExample();
    void showMonitorLists(const QStringList& lists);
    void applyKept(const KeptChanges::Entry& entry);
    void showResult(const FileMounter::Result& result);
    void tellResult(const FileMounter::Result& result);
    void showFolders(const QStringList& opened);
    void editAgain(const Utilities::RefusedEdit& refused);
    void selectAttribute(const QString& path); // from elsewhere, so that one can go back
    void showNode(const QString& path);
    void selectNew(const QString& path, int attempts = 30);
    bool select(const QString& path);
    void showNotice(const QString& text);
    void showFiles();
    void showTitle();
    void setUpHelp();
    void showActions(ActionList::Shown shown);
    void showAbout();

    Windows& windows;
    const int number;
    std::shared_ptr<Repository> repository;
    FileMounter& mounter;
    BackendFiles files;
    LogFeed logFeed{repository};
    QStringList shownBackends; // in the title
    QString shownApplication;  // in the work area; empty for the start page
    QStringList fileProblems;
    QVector<KeptChanges::Entry> keptToApply; // once their files are open
    QStringList wanted;                      // files that a person has asked for
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
    std::unique_ptr<WindowView> shownView; // gone before the pages that it looks at
    QAction* reopenAction = nullptr;
    PluginDock* plugins = nullptr;
    ProblemsDock* problemsDock = nullptr;
    FindDock* find = nullptr;
    ChangesDock* changes = nullptr;
    LogDock* log = nullptr;
    TextDock* textDock = nullptr;
    FailureHint* hint = nullptr;

    ApplicationHost applications; // its widgets go before the window's areas
};

} // namespace Vantry
