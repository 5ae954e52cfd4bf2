#pragma once

#include "desk/log/LogFilter.h"
#include "desk/log/LogModel.h"

#include <QDockWidget>

class QHBoxLayout;
class QToolButton;

namespace Vantry {

class LogFeed;
class LogView;

// What the process has logged: a table that follows it, narrowed by type and text. What it consists of is
// made when it is shown first, which the start of the program need not wait for. GUI thread.
class LogDock : public QDockWidget
{
    Q_OBJECT

public:
    explicit LogDock(LogFeed& feed, QWidget* parent = nullptr);

    // Opens it, brings it to the front, and gives the focus to its lines.
    void showLines();

    void setVisible(bool isVisible) override;

private:
    void setUp();
    void addTypeBox(QHBoxLayout& row, Shared::Logging::LogMessageType type, const char* name);
    void addTextFilter(QHBoxLayout& row);
    QToolButton* createClearButton();

    LogModel lines;
    LogFilter shownLines;
    LogView* view = nullptr; // a child, from the first showing on
};

} // namespace Vantry
