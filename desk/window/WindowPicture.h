#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

namespace Vantry {

class MainWindow;

// Draws a window into a file once all that it was given to open is shown, and then ends the program: with 0,
// or with 1 and a message when the file cannot be written. GUI thread.
class WindowPicture : public QObject
{
    Q_OBJECT

public:
    // The window is not owned and outlives this.
    WindowPicture(MainWindow& window, QString file);

private:
    void waitForFiles();
    void openTrees();
    void draw();

    MainWindow& window;
    QString file;
    QTimer timer;
};

} // namespace Vantry
