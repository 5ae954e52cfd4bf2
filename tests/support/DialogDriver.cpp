#include "tests/support/DialogDriver.h"

#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QtTest>

namespace TestSupport {

namespace {

constexpr int lookInterval = 5;          // ms
constexpr int longestEnd = 10'000;       // ms
constexpr int longestActivation = 2'000; // ms

// Completion lists and busy windows ask nothing.
QWidget* topmost()
{
    if (auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget()))
        return menu;
    return qobject_cast<QDialog*>(QApplication::activeModalWidget());
}

} // namespace

DialogDriver::DialogDriver(std::function<void(QWidget&)> drive)
    : function(std::move(drive)), before(topmost())
{
    connect(&timer, &QTimer::timeout, this, &DialogDriver::look);
    timer.start(lookInterval);
}

DialogDriver::~DialogDriver()
{
    if (!found)
        QTest::qFail("no dialog came", __FILE__, __LINE__);
}

void DialogDriver::look()
{
    if (found) {
        awaitEnd();
        return;
    }
    QWidget* const shown = topmost();
    if (!shown || shown == before || !shown->isVisible())
        return;
    if (shown != dialog) {
        dialog = shown;
        since.start();
    }
    // Without a window manager nobody else gives a window the keyboard that has come while another closed.
    if (!shown->isActiveWindow() && !since.hasExpired(longestActivation))
        shown->activateWindow();
    else
        drive(*shown);
}

void DialogDriver::drive(QWidget& shown)
{
    found = true;
    timer.stop(); // the function may run the event loop
    function(shown);
    done = true;
    since.start();
    timer.start(lookInterval);
}

void DialogDriver::awaitEnd()
{
    if (QTest::currentTestFailed()) { // it may have left anything open, which would keep the run from ending
        QWidget* const open = topmost();
        if (open && open != before)
            open->close();
    } else if (!dialog || !dialog->isVisible()) {
        timer.stop();
    } else if (since.hasExpired(longestEnd)) {
        timer.stop();
        QTest::qFail("the dialog is still open", __FILE__, __LINE__);
        dialog->close();
    }
}

} // namespace TestSupport
