#pragma once

#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QObject>

#include <functional>
#include <memory>

class QAction;
class QMenu;
class QWidget;

namespace Vantry {

// What the Edit menu does with the selected attribute or group. Each is one step of undo; what is refused is
// in the log. GUI thread.
class NodeActions : public QObject
{
    Q_OBJECT

public:
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;
    using SelectedPath = std::function<QString()>;

    // The menu gets the actions; the window outlives this.
    NodeActions(std::shared_ptr<Repository> repository, SelectedPath selectedPath, QMenu& menu,
                QWidget& window);

    void offer(); // what can be done with the node that is selected now

signals:
    void selectRequested(const QString& path); // of what has come of it

private:
    using Action = void (NodeActions::*)(const QString& path);

    QAction* add(QMenu& menu, const QString& text, const char* name, Action action);
    void rename(const QString& path);
    void move(const QString& path);
    void duplicate(const QString& path);
    void remove(const QString& path);
    void setNull(const QString& path);
    void revert(const QString& path);
    void insertBefore(const QString& path) { insert(path, 0); }
    void insertAfter(const QString& path) { insert(path, 1); }
    void moveUp(const QString& path) { reorder(path, -1); }
    void moveDown(const QString& path) { reorder(path, 1); }
    void insert(const QString& path, int offset);
    void reorder(const QString& path, int offset);
    void moveTo(const QString& path, const QString& target);
    bool isElement(const QString& path) const;

    std::shared_ptr<Repository> repository;
    const SelectedPath selectedPath;
    QWidget& window;

    // Of the menu.
    QList<QAction*> forNodes;      // that are not the root of a file
    QList<QAction*> forElements;   // of arrays
    QList<QAction*> forAttributes; // that can be written
    QAction* revertAction = nullptr;
};

} // namespace Vantry
