#include "host/Utilities/ModelViews/Widgets/TransferWindow.h"
#include "tests/support/TestRun.h"

#include <QApplication>
#include <QCloseEvent>
#include <QTimer>
#include <QWindow>

#include <future>

using FrameworkCore::AppConfig::Outcome;
using Utilities::ModelViews::Widgets::TransferWindow;

class TransferWindowTest : public QObject
{
    Q_OBJECT

private slots:
    // The operation is over only once the thread of the window has done something, too.
    void goesOnMeanwhile()
    {
        std::promise<void> done;
        QTimer::singleShot(0, this, [&done] { done.set_value(); });
        QVERIFY(runUntil(done));
    }

    // A window that a person closes meanwhile, whose owner may have begun the operation, is closed after it.
    void closesWindowsAfterwards()
    {
        QWidget window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        std::promise<void> done;
        QTimer::singleShot(0, this, [&] {
            QCloseEvent close;
            QSpontaneKeyEvent::setSpontaneous(&close);
            qApp->notify(window.windowHandle(), &close);
            QTimer::singleShot(0, this, [&] {
                QVERIFY(window.isVisible());
                done.set_value();
            });
        });
        QVERIFY(runUntil(done));
        QVERIFY(window.isVisible());
        QTRY_VERIFY(!window.isVisible());
    }

private:
    static bool runUntil(std::promise<void>& done)
    {
        std::future<void> future = done.get_future();
        const auto wait = [&future](TransferWindow::TransferReport&) {
            const bool isDone = future.wait_for(std::chrono::seconds(20)) == std::future_status::ready;
            return isDone ? Outcome() : Outcome(FrameworkCore::AppConfig::BackendFailure, {});
        };
        return TransferWindow::run(QStringLiteral("Waiting"), wait, TransferWindow::Cancelling::Impossible)
            .ok();
    }
};

VANTRY_TEST_MAIN(QApplication, TransferWindowTest)

#include "transfer_window_test.moc"
