#pragma once

#include "desk/places/PlaceWatch.h"

#include <QPointer>

class QAction;
class QMainWindow;
class QMenu;

namespace Vantry {

class BackendFiles;
class CommentNote;
class PlaceButton;

// Where the selected attribute is in its file: shown in the status bar with its comment, copied, opened in
// the person's editor, and the other way, found by a place. GUI thread.
class Places : public QObject
{
    Q_OBJECT

public:
    using Repository = PlaceWatch::Repository;

    // Files and window outlive it. The menu gets its actions.
    Places(const std::shared_ptr<Repository>& repository, BackendFiles& files, QMainWindow& window,
           QMenu& menu);

    PlaceWatch& getWatch() { return watch; }

    // What can be done with the selected attribute, at a point of the screen.
    void popUp(const QPoint& point);

    // Shows comments below the widget of that name, which a page has for details.
    void showCommentBelow(const QString& name);

signals:
    void selectRequested(const QString& path);
    void failed(const QString& reason);

private:
    void setUpActions(QMenu& menu);
    QAction* addTo(QMenu& menu, const char* name, const QString& text, const QKeySequence& key,
                   void (Places::*action)());
    void offerActions();
    void show();
    void goTo();
    void copyPath();
    void copyValue();
    void copyPlace();
    void copyCommand();
    void openEditor();
    void showFolder();
    void chooseEditor();

    std::shared_ptr<Repository> repository;
    BackendFiles& files;
    QMainWindow& window;
    PlaceWatch watch;

    // Owned by the window.
    PlaceButton* button;
    QMenu* actions;
    QAction* ofPath = nullptr;
    QAction* ofValue = nullptr;
    QAction* ofPlace = nullptr;
    QAction* ofCommand = nullptr;
    QAction* edit = nullptr;
    QAction* folder = nullptr;
    QPointer<CommentNote> comment; // none before there is a place for it
};

} // namespace Vantry
