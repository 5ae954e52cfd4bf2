#pragma once

#include "desk/ApplicationHost.h"
#include "desk/FileMounter.h"
#include "desk/LogFeed.h"
#include "desk/PluginLoader.h"

#include <QMainWindow>

class QSplitter;
class QStackedWidget;

namespace Vantry {

class LogDock;
class NavigationArea;
class NoticeBar;
class PluginDock;

// The window: what applications there are on the left, the work area of the chosen one on the right, and
// above it what could not be opened. GUI thread.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // The loader outlives the window. Without files the window opens on the page that was shown last.
    MainWindow(std::shared_ptr<Repository> repository, PluginLoader& loader, const QStringList& files);
    ~MainWindow() override;

    // Opens files as soon as the event loop runs, and shows their attributes.
    void openFiles(const QStringList& files);

    bool isOpeningFiles() const;

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void setUpAreas();
    void setUpStatusBar();
    void setUpMenus();
    void addApplications();
    void showPage(const QString& identification, const QString& page);
    void showApplication(const QString& identification);
    void showFirstPages(bool hasFiles);
    void chooseFiles();
    void showResult(const FileMounter::Result& result);
    QString title() const;
    void showAbout();

    PluginLoader& loader;
    std::shared_ptr<Repository> repository;
    FileMounter mounter;
    LogFeed logFeed;
    QStringList openedNames; // for the title

    // Owned by the window as their Qt parent.
    QSplitter* areas = nullptr;
    NavigationArea* navigation = nullptr;
    NoticeBar* notices = nullptr;
    QStackedWidget* workArea = nullptr;
    PluginDock* plugins = nullptr;
    LogDock* log = nullptr;

    ApplicationHost applications; // its widgets go before the window's areas
};

} // namespace Vantry
