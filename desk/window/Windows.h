#pragma once

#include "desk/files/FileMounter.h"
#include "desk/plugins/PluginLoader.h"

#include <QObject>
#include <QPointer>

#include <memory>
#include <vector>

namespace Vantry {

class MainWindow;
class SessionKeeper;

// The windows of the program over one repository, and what they share. What is edited in one shows in all;
// the program ends with the last. GUI thread.
class Windows : public QObject
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // The loader outlives it.
    Windows(std::shared_ptr<Repository> repository, PluginLoader& loader);
    ~Windows() override;

    const std::shared_ptr<Repository>& getRepository() const { return repository; }
    PluginLoader& getLoader() const { return loader; }
    FileMounter& getMounter() { return mounter; }

    // Makes a window, and does not show it yet.
    MainWindow& open(const QStringList& files);

    // Shows another one like that.
    void openBeside(MainWindow& window);

    QList<MainWindow*> getWindows() const;
    bool isLast(const MainWindow& window) const { return windows.size() == 1 && windows[0].get() == &window; }

    // The one that is worked with, or was last.
    MainWindow* getCurrent() const { return current; }
    void setCurrent(MainWindow& window) { current = &window; }

    // From now on the next start can bring back what is open and how it is shown, which this does with what
    // the last session left, if that is wanted. There is a window.
    void beginSession(bool restores);
    void endSession();

    // Closes all windows, once the person has settled what is unsaved.
    void quit(MainWindow& asking);

    // Closes them without asking, for when nobody may be there to answer. What is unsaved is kept, and
    // MainWindow::showKeptChanges tells where.
    void closeUnasked();

    // The window is closed: drops it, unless it is the last.
    void remove(MainWindow& window);

signals:
    void changed();                     // there are others
    void reopeningChosen(bool reopens); // of the files, at the next start

private:
    void closeAll(MainWindow& last);

    const std::shared_ptr<Repository> repository;
    PluginLoader& loader;
    FileMounter mounter;
    std::vector<std::unique_ptr<MainWindow>> windows; // in the order of their opening
    QPointer<MainWindow> current;
    std::unique_ptr<SessionKeeper> session; // once it has begun
};

} // namespace Vantry
