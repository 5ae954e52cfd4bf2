#pragma once

#include "desk/window/MainWindow.h"
#include "desk/window/Windows.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QModelIndex>
#include <QTemporaryDir>

#include <memory>

class QPushButton;
class QTreeView;

namespace TestSupport {

// The desk with its real plug-in, repository and files, as a person has it before them. What it remembers
// stays in the folder, so that the next one made with it finds it. One at a time.
class RunningDesk
{
public:
    // A folder with the files of a small plant, and with what desks remember.
    class Folder
    {
    public:
        Folder();
        QString path(const char* name) const { return folder.filePath(QLatin1String(name)); }

    private:
        QTemporaryDir folder;
    };

    RunningDesk(const Folder& folder, const QStringList& files);
    ~RunningDesk();
    Q_DISABLE_COPY(RunningDesk)

    template <typename Part>
    Part* part(const char* name) const
    {
        return window->findChild<Part*>(QLatin1String(name));
    }

    QPushButton* navigationButton(const char* name) const;
    QString shownPage() const;

    // The rows of the attribute tree that are shown, indented by level, "-" in front of the open ones.
    QStringList shownRows() const;
    QModelIndex item(const QString& path) const;

    Vantry::PluginLoader loader;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    std::unique_ptr<Vantry::Windows> windows;
    Vantry::MainWindow* window; // the first; not owned
    QTreeView* tree;            // of the attribute page, not owned
};

} // namespace TestSupport
