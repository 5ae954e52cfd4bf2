#pragma once

#include <QMenu>

namespace Vantry {

class MainWindow;
class Windows;

// Opens further windows, closes this one, and leads to the others. GUI thread.
class WindowMenu : public QMenu
{
    Q_OBJECT

public:
    // Of the window, which is one of those; they outlive the menu.
    WindowMenu(Windows& windows, MainWindow& window);

private:
    void showWindows();

    Windows& windows;
    MainWindow& window;
    QList<QAction*> entries; // one for each window
};

} // namespace Vantry
