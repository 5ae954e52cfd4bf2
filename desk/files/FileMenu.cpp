#include "desk/files/FileMenu.h"

#include "desk/common/MenuText.h"
#include "desk/files/BackendChooser.h"
#include "desk/files/BackendFiles.h"
#include "desk/files/FolderDialog.h"
#include "desk/files/FormatMenu.h"
#include "desk/files/RecentFiles.h"
#include "host/Utilities/ModelViews/ToolTipText.h"
#include "host/Utilities/ModelViews/Widgets/PlainFileDialog.h"
#include "repository/documents/Formats.h"
#include "repository/mounting/FolderLocation.h"

#include <QFileInfo>
#include <QInputDialog>

#include <algorithm>

namespace Vantry {

namespace {

// The key works under every platform theme, some of which have none of their own.
void setKeys(QAction& action, QKeySequence::StandardKey standard, const QKeySequence& key)
{
    QList<QKeySequence> keys = QKeySequence::keyBindings(standard);
    keys.removeAll(key);
    keys.prepend(key);
    action.setShortcuts(keys);
}

// Globs of the endings that configuration files mostly have.
QString knownFiles()
{
    QStringList globs{QStringLiteral("*.conf"), QStringLiteral("*.cfg")};
    for (const Repository::Documents::Format* const format : Repository::Documents::getFormats()) {
        const QStringList endings =
            QString::fromStdString(std::string(format->getCertainEndings())).split(QLatin1Char(' '));
        for (const QString& ending : endings)
            globs.append(QStringLiteral("*.") + ending);
    }
    return globs.join(QLatin1Char(' '));
}

} // namespace

FileMenu::FileMenu(BackendFiles& backendFiles, QWidget* parent)
    : QMenu(tr("&File"), parent), files(backendFiles), recent(new QMenu(tr("Open &Recent"), this))
{
    addAction(tr("&Open Configuration Files..."), this, &FileMenu::chooseFiles, QKeySequence::Open);
    addAction(tr("Open &Folder..."), this, &FileMenu::chooseFolder, Qt::CTRL + Qt::SHIFT + Qt::Key_O);
    addAction(tr("Open S&tore..."), this, &FileMenu::chooseStore)->setObjectName(QStringLiteral("openStore"));
    auto* const formats = new FormatMenu(tr("O&pen As"), this);
    formats->setObjectName(QStringLiteral("openAs"));
    connect(formats, &FormatMenu::chosen, this, &FileMenu::chooseFilesOf);
    addMenu(formats);
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
    QAction* const reload =
        addAction(tr("Re&load from Disk"), this, [this] { files.reload(files.getBackends()); });
    const auto close = [this](const QStringList& names) { files.close(names); };
    closing = addBackendMenu(tr("&Close"), "closeFile", all, close);
    QAction* const closeAll = addAction(tr("Close &All"), this, [this] { files.close(files.getBackends()); });
    connect(this, &QMenu::aboutToShow, closeAll, [closeAll, all] { closeAll->setEnabled(!all().isEmpty()); });
    addSeparator();
    QAction* const quit = addAction(tr("&Quit"), this, &FileMenu::quitRequested);
    setKeys(*reload, QKeySequence::Refresh, Qt::Key_F5);
    setKeys(*quit, QKeySequence::Quit, Qt::CTRL + Qt::Key_Q);
}

// A menu with an entry for each of the backends, and where there is a text for it, one for several at once.
QMenu* FileMenu::addBackendMenu(const QString& title, const char* name, const Backends& backends,
                                const BackendAction& action, const QString& allText)
{
    auto* const menu = new QMenu(title, this);
    menu->setObjectName(QLatin1String(name));
    addMenu(menu);
    connect(this, &QMenu::aboutToShow, menu, [menu, backends] { menu->setEnabled(!backends().isEmpty()); });
    menu->setToolTipsVisible(true);
    connect(menu, &QMenu::aboutToShow, menu,
            [this, menu, backends, action, allText] { fillBackendMenu(*menu, backends(), action, allText); });
    return menu;
}

void FileMenu::fillBackendMenu(QMenu& menu, const QStringList& backends, const BackendAction& action,
                               const QString& allText)
{
    constexpr int mostEntries = 20;
    constexpr int fewestToChoose = 4;
    menu.clear();
    const QStringList shown = backends.mid(0, mostEntries);
    const QStringList labels = files.getLabels(shown);
    for (int number = 0; number < shown.size(); ++number) {
        const QString& backend = shown[number];
        QAction* const entry =
            menu.addAction(menuText(labels[number]), &menu, [action, backend] { action({backend}); });
        entry->setToolTip(Utilities::ModelViews::toolTipText(files.getLocation(backend)));
    }
    if (backends.size() < 2)
        return;
    menu.addSeparator();
    if (backends.size() >= fewestToChoose) {
        const QString text = tr("C&hoose among %1...").arg(backends.size());
        menu.addAction(text, &menu, [this, verb = menu.title(), backends, action] {
            chooseBackends(verb, backends, action);
        });
    }
    if (!allText.isEmpty())
        menu.addAction(allText, &menu, [action, backends] { action(backends); });
}

void FileMenu::chooseBackends(const QString& verb, const QStringList& backends, BackendAction action)
{
    BackendChooser chooser(verb, files, backends, parentWidget());

    if (chooser.exec() == QDialog::Accepted)
        action(chooser.getChosen());
}

void FileMenu::chooseFiles()
{
    chooseFilesOf({});
}

void FileMenu::chooseFilesOf(const QString& type)
{
    const QString title =
        type.isEmpty() ? tr("Open Configuration Files") : tr("Open Configuration Files As %1").arg(type);
    const QString all = tr("All Files (*)");
    const QString known = tr("Configuration Files (%1)").arg(knownFiles());
    const QStringList before = RecentFiles::get();
    const QString folder = before.isEmpty() ? QString() : QFileInfo(before.first()).path();
    Utilities::ModelViews::Widgets::PlainFileDialog dialog(
        parentWidget(), title, folder, type.isEmpty() ? known + QStringLiteral(";;") + all : all);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    if (dialog.exec() == QDialog::Accepted)
        emit openRequested(dialog.selectedFiles(), type);
}

void FileMenu::chooseFolder()
{
    const QStringList known = RecentFiles::get();
    FolderDialog dialog(known.isEmpty() ? QString() : QFileInfo(known.first()).path(), parentWidget());
    if (dialog.exec() == QDialog::Accepted)
        emit openRequested({dialog.getLocation()}, {});
}

void FileMenu::chooseStore()
{
    const QStringList known = RecentFiles::get();
    const auto last = std::find_if(known.begin(), known.end(), RecentFiles::isStore);
    bool isChosen = false;
    QString location = QInputDialog::getText(
        parentWidget(), tr("Open Store"),
        tr("Where the store is, as in etcd://HOST:PORT/NAME, or etcds:// with TLS.\n"
           "Credentials, and what becomes of edits while it is away, come after it,\n"
           "as in etcd://HOST:PORT/NAME?credentials=FILE&&offline=queue:"),
        QLineEdit::Normal, last == known.end() ? QStringLiteral("etcd://localhost:2379/") : *last, &isChosen);
    location = location.trimmed();
    if (!isChosen || location.isEmpty())
        return;
    if (!location.contains(QLatin1String("://")))
        location.prepend(QLatin1String("etcd://"));
    emit openRequested({location}, QStringLiteral("etcd"));
}

void FileMenu::fillRecent()
{
    recent->clear();
    const QStringList known = RecentFiles::get();
    int number = 0;
    for (const QString& file : known) {
        const bool isThere =
            RecentFiles::isStore(file) || QFileInfo::exists(Repository::FolderLocation(file).getFolder());
        QString text =
            QStringLiteral("&%1 %2").arg(++number % 10).arg(menuText(RecentFiles::shownPath(file)));
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
