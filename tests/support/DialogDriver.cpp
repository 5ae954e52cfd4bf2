#include "tests/support/DialogDriver.h"

#include <QApplication>
#include <QtTest>

namespace TestSupport {

namespace {

constexpr int lookInterval = 5;    // ms
constexpr int longestEnd = 10'000; // ms

QWidget* topmost()
{
    QWidget* const popup = QApplication::activePopupWidget();
    return popup ? popup : QApplication::activeModalWidget();
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
    if (shown && shown != before && shown->isVisible() && shown->isActiveWindow())
        drive(*shown);
}

void DialogDriver::drive(QWidget& shown)
{
    found = true;
    dialog = &shown;
    timer.stop(); // the function may run the event loop
    function(shown);
    done = true;
    sinceDriven.start();
    timer.start(lookInterval);
    if (QTest::currentTestFailed() && dialog)
        dialog->close();
}

void DialogDriver::awaitEnd()
{
    if (!dialog || !dialog->isVisible()) {
        timer.stop();
    } else if (sinceDriven.hasExpired(longestEnd)) {
        timer.stop();
        QTest::qFail("the dialog is still open", __FILE__, __LINE__);
        dialog->close();
    }
}

} // namespace TestSupport
