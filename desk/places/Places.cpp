#include "desk/places/Places.h"

#include "desk/files/BackendFiles.h"
#include "desk/places/CommentNote.h"
#include "desk/places/EditorCommand.h"
#include "desk/places/GoToDialog.h"
#include "desk/places/PlaceButton.h"

#include <QApplication>
#include <QClipboard>
#include <QInputDialog>
#include <QMainWindow>
#include <QMenu>
#include <QStatusBar>

namespace Vantry {

Places::Places(const std::shared_ptr<Repository>& attributes, BackendFiles& backendFiles,
               QMainWindow& mainWindow, QMenu& menu)
    : QObject(&mainWindow), repository(attributes), files(backendFiles), window(mainWindow),
      watch(attributes, mainWindow), button(new PlaceButton)
{
    setUpActions(menu);
    window.statusBar()->addPermanentWidget(button);
    connect(&files.getWatch(), &Utilities::UnsavedBackends::looked, &watch, &PlaceWatch::look);
    connect(&watch, &PlaceWatch::placed, this, &Places::show);
    show();
}

void Places::setUpActions(QMenu& menu)
{
    menu.addSeparator();
    QAction* const find = menu.addAction(tr("&Go To..."), this, &Places::goTo, Qt::CTRL + Qt::Key_G);
    find->setObjectName(QStringLiteral("goToPlace"));
    copyPlace = menu.addAction(tr("Copy P&lace"), this, &Places::copy, Qt::CTRL + Qt::SHIFT + Qt::Key_L);
    copyPlace->setObjectName(QStringLiteral("copyPlace"));
    edit = menu.addAction(tr("&Open in Editor"), this, &Places::openEditor, Qt::Key_F4);
    edit->setObjectName(QStringLiteral("openInEditor"));
    QAction* const choose = menu.addAction(tr("&Editor..."), this, &Places::chooseEditor);
    choose->setObjectName(QStringLiteral("chooseEditor"));
    auto* const ofPlace = new QMenu(button);
    ofPlace->addAction(copyPlace);
    ofPlace->addAction(edit);
    button->setMenu(ofPlace);
}

void Places::showCommentBelow(const QString& name)
{
    comment = CommentNote::below(window, name);
}

void Places::show()
{
    const auto& place = watch.getPlace();
    const bool isKnown = place.position.line > 0;
    button->showPlace(place, isKnown ? files.getFileName(watch.getBackend()) : QString());
    if (comment)
        comment->showComment(place.comment);
    copyPlace->setEnabled(isKnown);
    edit->setEnabled(isKnown);
}

void Places::goTo()
{
    GoToDialog dialog(repository, &window);
    if (dialog.exec() == QDialog::Accepted)
        emit selectRequested(dialog.getPath());
}

void Places::copy()
{
    QApplication::clipboard()->setText(watch.getPlace().position.toText());
}

void Places::openEditor()
{
    const QString reason = EditorCommand::open(watch.getPlace().position);
    if (!reason.isEmpty())
        emit failed(reason);
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
