#pragma once

#include "desk/common/NodeSelection.h"
#include "host/FrameworkCore/AppConfig/RepositoryInterface.h"

#include <QMenu>

#include <memory>

namespace Vantry {

class FindDock;
class NodeActions;

// Undo and redo, named after the step that they would take, and what is done with the selected node. GUI
// thread.
class EditMenu : public QMenu
{
    Q_OBJECT

public:
    using History = FrameworkCore::AppConfig::Interfaces::HistoryInterface;
    using Repository = FrameworkCore::AppConfig::Interfaces::RepositoryInterface;

    // Without a history, which may be, undo and redo stay disabled. What is being typed into a cell of the
    // window, which outlives the menu, is a step too.
    EditMenu(std::shared_ptr<Repository> repository, QWidget& window);

    // Looks which steps there are.
    void refresh();

    NodeActions& getNodeActions() { return *node; }
    const NodeSelection& getSelection() const { return selection; }

    // Entries and keys for the dock, which outlives the menu.
    void addFinding(FindDock& dock);

    // For a key that may become a shortcut: a step may have come in the very moment before. Accepts, so that
    // it becomes none, what belongs to the text field that has the focus.
    void prepareFor(QKeyEvent& key);

private:
    void take(FrameworkCore::AppConfig::Outcome (History::*step)());
    void offerType();
    void changeType();
    static void name(QAction& action, const QString& verb, const QString& step);

    std::shared_ptr<Repository> repository;
    std::shared_ptr<History> history;
    QWidget& window;
    QAction* undo; // children
    QAction* redo;
    QAction* type;
    NodeActions* node;
    const NodeSelection selection;
};

} // namespace Vantry
