#pragma once

#include "desk/LogFilter.h"
#include "desk/LogModel.h"

#include <QDockWidget>

class QHBoxLayout;
class QLineEdit;

namespace Vantry {

class LogFeed;
class LogView;

// What the process has logged: a table that follows it, narrowed by type and text. GUI thread.
class LogDock : public QDockWidget
{
    Q_OBJECT

public:
    explicit LogDock(LogFeed& feed, QWidget* parent = nullptr);

    // Opens it, brings it to the front, and gives the focus to its lines.
    void showLines();

private:
    void addTypeBox(QHBoxLayout& row, Shared::Logging::LogMessageType type, const char* name);

    LogModel lines;
    LogFilter shownLines;

    // Children.
    LogView* view;
    QLineEdit* textFilter;
};

} // namespace Vantry
