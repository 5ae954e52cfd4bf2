#pragma once

#include "host/FrameworkCore/AppConfig/HistoryInterface.h"

#include <QMenu>

#include <memory>

namespace Vantry {

// Undo and redo, named after the step that they would take. GUI thread.
class EditMenu : public QMenu
{
    Q_OBJECT

public:
    using History = FrameworkCore::AppConfig::Interfaces::HistoryInterface;

    // Without a history, which may be, both stay disabled. What is being typed into a cell of the window,
    // which outlives the menu, is a step too.
    EditMenu(std::shared_ptr<History> history, QWidget& window);

    // Looks which steps there are.
    void refresh();

    // For a key that may become a shortcut: a step may have come in the very moment before. Accepts, so that
    // it becomes none, what belongs to the text field that has the focus.
    void prepareFor(QKeyEvent& key);

private:
    void take(FrameworkCore::AppConfig::Outcome (History::*step)());
    static void name(QAction& action, const QString& verb, const QString& step);

    std::shared_ptr<History> history;
    QWidget& window;
    QAction* undo; // children
    QAction* redo;
};

} // namespace Vantry
