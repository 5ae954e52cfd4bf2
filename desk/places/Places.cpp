#include "desk/places/Places.h"

#include "desk/files/BackendFiles.h"
#include "desk/places/AttributeCopy.h"
#include "desk/places/CommentNote.h"
#include "desk/places/EditorCommand.h"
#include "desk/places/GoToDialog.h"
#include "desk/places/PlaceButton.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QFileInfo>
#include <QInputDialog>
#include <QMainWindow>
#include <QMenu>
#include <QStatusBar>
#include <QUrl>

namespace Vantry {

Places::Places(const std::shared_ptr<Repository>& attributes, BackendFiles& backendFiles,
               QMainWindow& mainWindow, QMenu& menu)
    : QObject(&mainWindow), repository(attributes), files(backendFiles), window(mainWindow),
      watch(attributes, mainWindow), button(new PlaceButton), actions(new QMenu(&mainWindow))
{
    setUpActions(menu);
    window.statusBar()->addPermanentWidget(button);
    connect(&files.getWatch(), &Utilities::UnsavedBackends::looked, &watch, &PlaceWatch::look);
    connect(&watch, &PlaceWatch::placed, this, &Places::show);
    show();
}

// They are in the menu, and again in one of their own for wherever the attribute is shown.
void Places::setUpActions(QMenu& menu)
{
    menu.addSeparator();
    addTo(menu, "goToPlace", tr("&Go To..."), Qt::CTRL + Qt::Key_G, &Places::goTo);
    QMenu* const copies = menu.addMenu(tr("&Copy"));
    ofPath = addTo(*copies, "copyPath", tr("&Path"), Qt::CTRL + Qt::SHIFT + Qt::Key_C, &Places::copyPath);
    ofValue = addTo(*copies, "copyValue", tr("&Value"), Qt::CTRL + Qt::ALT + Qt::Key_C, &Places::copyValue);
    ofPlace = addTo(*copies, "copyPlace", tr("P&lace in the File"), Qt::CTRL + Qt::SHIFT + Qt::Key_L,
                    &Places::copyPlace);
    ofCommand = addTo(*copies, "copyCommand", tr("Co&mmand of vantry"), {}, &Places::copyCommand);
    edit = addTo(menu, "openInEditor", tr("&Open in Editor"), Qt::Key_F4, &Places::openEditor);
    folder = addTo(menu, "showInFolder", tr("S&how in Folder"), {}, &Places::showFolder);
    addTo(menu, "chooseEditor", tr("Ed&itor..."), {}, &Places::chooseEditor);
    actions->addMenu(copies);
    actions->addActions({edit, folder});
    button->setMenu(actions);
    connect(&menu, &QMenu::aboutToShow, this, &Places::offerActions);
    connect(actions, &QMenu::aboutToShow, this, &Places::offerActions);
}

QAction* Places::addTo(QMenu& menu, const char* name, const QString& text, const QKeySequence& key,
                       void (Places::*action)())
{
    QAction* const added = menu.addAction(text);
    added->setObjectName(QLatin1String(name));
    added->setShortcut(key);
    connect(added, &QAction::triggered, this, action);
    return added;
}

void Places::popUp(const QPoint& point)
{
    actions->popup(point);
}

void Places::offerActions()
{
    const AttributeCopy copy(*repository, watch.getPath());
    ofPath->setEnabled(!watch.getPath().isEmpty());
    ofValue->setEnabled(copy.hasValue());
    ofCommand->setEnabled(!copy.getFile().isEmpty());
    folder->setEnabled(!copy.getFile().isEmpty());
}

void Places::showCommentBelow(const QString& name)
{
    comment = CommentNote::below(window, name);
}

void Places::show()
{
    const auto& place = watch.getPlace();
    const bool isKnown = place.position.line > 0;
    button->showPlace(place);
    if (comment)
        comment->showComment(place.comment);
    ofPlace->setEnabled(isKnown);
    edit->setEnabled(isKnown);
    for (QAction* const action : {ofPath, ofValue, ofCommand, folder})
        action->setEnabled(!watch.getPath().isEmpty()); // a key may come at any time
}

void Places::goTo()
{
    GoToDialog dialog(repository, &window);
    if (dialog.exec() == QDialog::Accepted)
        emit selectRequested(dialog.getPath());
}

void Places::copyPath()
{
    QApplication::clipboard()->setText(watch.getPath());
}

void Places::copyValue()
{
    const AttributeCopy copy(*repository, watch.getPath());
    if (copy.hasValue())
        QApplication::clipboard()->setText(copy.getValue());
}

void Places::copyPlace()
{
    QApplication::clipboard()->setText(PlaceWatch::onDisk(watch.getPlace()).toText());
}

void Places::copyCommand()
{
    const AttributeCopy copy(*repository, watch.getPath());
    if (!copy.getFile().isEmpty())
        QApplication::clipboard()->setText(copy.getCommand());
}

void Places::openEditor()
{
    const QString reason = EditorCommand::open(PlaceWatch::onDisk(watch.getPlace()));
    if (!reason.isEmpty())
        emit failed(reason);
}

void Places::showFolder()
{
    const QString file = AttributeCopy(*repository, watch.getPath()).getFile();
    if (!file.isEmpty() && !QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(file).path())))
        emit failed(
            tr("%1 was not shown: the desktop has no program for folders").arg(QFileInfo(file).path()));
}

void Places::chooseEditor()
{
    bool isChosen = false;
    const QString command = QInputDialog::getText(
        &window, tr("Editor"),
        tr("Command that opens a file, in which {file}, {line} and {column} stand for the place.\n"
           "Empty: the editor of the environment ($VISUAL, $EDITOR), or else of the desktop."),
        QLineEdit::Normal, EditorCommand::chosen(), &isChosen);
    if (isChosen)
        EditorCommand::choose(command);
}

} // namespace Vantry
