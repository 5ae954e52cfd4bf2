#include "desk/FileMenu.h"

#include "desk/BackendFiles.h"
#include "desk/MenuText.h"
#include "desk/RecentFiles.h"
#include "host/Utilities/ModelViews/Widgets/PlainFileDialog.h"

#include <QDir>
#include <QFileInfo>

namespace Vantry {

namespace {

// The user's own folder is written short.
QString shownPath(const QString& file)
{
    const QString home = QDir::homePath() + QLatin1Char('/');
    return menuText(file.startsWith(home) ? QLatin1String("~/") + file.mid(home.size()) : file);
}

} // namespace

FileMenu::FileMenu(BackendFiles& backendFiles, QWidget* parent)
    : QMenu(tr("&File"), parent), files(backendFiles), recent(new QMenu(tr("Open &Recent"), this))
{
    addAction(tr("&Open Configuration Files..."), this, &FileMenu::chooseFiles, QKeySequence::Open);
    recent->setObjectName(QStringLiteral("recentFiles"));
    connect(recent, &QMenu::aboutToShow, this, &FileMenu::fillRecent);
    addMenu(recent);
    addSeparator();

    const auto all = [this] { return files.getBackends(); };
    const auto edited = [this] { return files.getUnsaved(); };
    // Never disabled, since the key must work in the very moment after an edit.
    addAction(
        tr("&Save All"), this, [this] { files.save(files.getUnsaved()); }, QKeySequence::Save);
    addBackendMenu(tr("Sa&ve"), "saveFile", edited, [this](const QStringList& names) { files.save(names); });
    addBackendMenu(
        tr("R&evert"), "revertFile", edited, [this](const QStringList& names) { files.revert(names); },
        tr("&All of Them"));
    addAction(
        tr("Re&load from Disk"), this, [this] { files.reload(files.getBackends()); }, QKeySequence::Refresh);
    addBackendMenu(tr("&Close"), "closeFile", all,
                   [this](const QStringList& names) { files.close(names.first()); });
    addSeparator();
    addAction(tr("&Quit"), this, &FileMenu::quitRequested, QKeySequence::Quit);
}

// A menu with an entry for each of the backends, and where there is a text for it, one for several at once.
void FileMenu::addBackendMenu(const QString& title, const char* name, const Backends& backends,
                              const BackendAction& action, const QString& allText)
{
    auto* const menu = new QMenu(title, this);
    menu->setObjectName(QLatin1String(name));
    addMenu(menu);
    connect(this, &QMenu::aboutToShow, menu, [menu, backends] { menu->setEnabled(!backends().isEmpty()); });
    connect(menu, &QMenu::aboutToShow, menu, [this, menu, backends, action, allText] {
        menu->clear();
        const QStringList names = backends();
        for (const QString& backend : names)
            menu->addAction(menuText(files.getLabel(backend)), menu,
                            [action, backend] { action({backend}); });
        if (names.size() > 1 && !allText.isEmpty()) {
            menu->addSeparator();
            menu->addAction(allText, menu, [action, names] { action(names); });
        }
    });
}

void FileMenu::chooseFiles()
{
    const QStringList known = RecentFiles::get();
    const QString folder = known.isEmpty() ? QString() : QFileInfo(known.first()).path();
    Utilities::ModelViews::Widgets::PlainFileDialog dialog(
        parentWidget(), tr("Open Configuration Files"), folder,
        tr("Configuration Files (*.json *.ini *.conf *.cfg *.xml *.txt *.properties);;All Files (*)"));
    dialog.setFileMode(QFileDialog::ExistingFiles);
    if (dialog.exec() == QDialog::Accepted)
        emit openRequested(dialog.selectedFiles());
}

void FileMenu::fillRecent()
{
    recent->clear();
    const QStringList known = RecentFiles::get();
    int number = 0;
    for (const QString& file : known) {
        const bool isThere = QFileInfo::exists(file);
        QString text = QStringLiteral("&%1 %2").arg(++number % 10).arg(shownPath(file));
        if (!isThere)
            text = tr("%1 (missing)").arg(text);
        QAction* const open = recent->addAction(text, this, [this, file] { emit openRequested({file}); });
        open->setEnabled(isThere);
    }
    if (known.isEmpty()) {
        recent->addAction(tr("None yet"))->setEnabled(false);
        return;
    }
    recent->addSeparator();
    recent->addAction(tr("&Clear This List"), recent, [] { RecentFiles::clear(); });
}

} // namespace Vantry
