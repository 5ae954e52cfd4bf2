#pragma once

#include <QMenu>

#include <functional>

namespace Vantry {

class BackendFiles;

// Opens configuration files and does what is done with open ones. GUI thread.
class FileMenu : public QMenu
{
    Q_OBJECT

public:
    // The files outlive the menu.
    explicit FileMenu(BackendFiles& files, QWidget* parent = nullptr);

    // Asks which files to open.
    void chooseFiles();

    // The same for a folder, of which all files are opened.
    void chooseFolder();

    // The same for a distributed store.
    void chooseStore();

    // Puts the action, which outlives the menu, to those of single files.
    void addLock(QAction& lock) { insertAction(closing->menuAction(), &lock); }

signals:
    void openRequested(const QStringList& files, const QString& type = {}); // as that, if there is one
    void quitRequested();

private:
    using Backends = std::function<QStringList()>;
    using BackendAction = std::function<void(const QStringList& backends)>;

    QMenu* addBackendMenu(const QString& title, const char* name, const Backends& backends,
                          const BackendAction& action, const QString& allText = {});
    void fillBackendMenu(QMenu& menu, const QStringList& backends, const BackendAction& action,
                         const QString& allText);
    void chooseBackends(const QString& verb, const QStringList& backends, BackendAction action);
    void chooseFilesOf(const QString& type);
    void fillRecent();

    BackendFiles& files;
    QMenu* recent; // children
    QMenu* closing;
};

} // namespace Vantry
