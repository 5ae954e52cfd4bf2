#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace TestSupport {

// Answers the next modal dialog or menu that comes while it lives, so that a test can call what returns only
// when the dialog is closed:
//
//     DialogDriver driver([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
//     const bool accepted = dialogs.showAttributeCreateDialog(name, value, type);
//
// The function runs once, when the dialog is the active window; a dialog that it opens in turn is answered by
// a driver of its own inside the function. The test fails when no dialog has come by the end of the driver's
// life, or when the dialog is still open some seconds after its function; it is closed then. For tests that
// draw on an X server or offscreen.
class DialogDriver : public QObject
{
public:
    explicit DialogDriver(std::function<void(QWidget& dialog)> drive);
    ~DialogDriver() override;

    bool isDone() const { return done; } // the function has returned

private:
    void look();
    void drive(QWidget& shown);
    void awaitEnd();

    std::function<void(QWidget&)> function;
    QPointer<QWidget> before; // the dialog that was open already
    QPointer<QWidget> dialog; // the one that is answered
    bool found = false;
    bool done = false;
    QTimer timer;
    QElapsedTimer since; // it came; then, since it was answered
};

} // namespace TestSupport
