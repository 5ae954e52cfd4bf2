#pragma once

#include <QMenu>
#include <QStringList>

#include <functional>

namespace Vantry {

// Ways to nodes: back to where one was before Find, Go To or a dock led elsewhere, forward again, and
// bookmarks, which stay from one start to the next. GUI thread.
class GoMenu : public QMenu
{
    Q_OBJECT

public:
    using SelectedPath = std::function<QString()>; // empty without a selection

    using ReadablePath = std::function<QString(const QString& path)>; // as people know it

    GoMenu(SelectedPath selectedPath, ReadablePath readablePath, QWidget* parent);

    // Something has led from one node, or none, to another.
    void noteJump(const QString& from, const QString& to);

    // Another window may have set bookmarks.
    void readBookmarks();

signals:
    void selectRequested(const QString& path); // not to be noted

private:
    void goBack();
    void goForward();
    void toggleBookmark();
    void keep(const QStringList& bookmarks);
    void showBookmarks();
    void nameBookmarks();
    void offer();

    const SelectedPath selectedPath;
    const ReadablePath readablePath;
    QStringList visited; // oldest first
    int at = -1;         // in them
    QStringList bookmarks;

    // Children.
    QAction* back;
    QAction* forward;
    QAction* bookmark;
    QMenu* removal;          // of bookmarks, also of those whose nodes are gone
    QList<QAction*> entries; // of the bookmarks
};

} // namespace Vantry
