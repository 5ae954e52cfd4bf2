#include "host/Utilities/GuiThread.h"
#include "tests/support/TestRun.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>

// Each test makes its own application, since one is about the application's end.
class GuiThreadTest : public QObject
{
    Q_OBJECT

    int argumentCount = 1;
    char name[5] = "test";
    char* arguments[2] = {name, nullptr};

private slots:
    void callsRunThereInTheirOrder()
    {
        const QCoreApplication application(argumentCount, arguments);
        QStringList order;
        bool onGuiThread = true;
        std::atomic<bool> ended{false};
        const auto note = [&](const char* call) {
            order.append(QString::fromLatin1(call));
            onGuiThread = onGuiThread && Utilities::isOnGuiThread() && QThread::currentThread() == thread();
        };
        Utilities::postToGuiThread([&] { note("at once"); });
        std::thread caller([&] {
            Utilities::postToGuiThread([&] { note("later"); });
            Utilities::runOnGuiThread([&] { note("waited for"); });
            ended = true;
        });
        QTRY_VERIFY(ended);
        caller.join();
        QCOMPARE(order, QStringList({QStringLiteral("at once"), QStringLiteral("later"),
                                     QStringLiteral("waited for")}));
        QVERIFY(onGuiThread);
    }

    void theApplicationsEndReleasesWhoWaits()
    {
        auto application = std::make_unique<QCoreApplication>(argumentCount, arguments);
        QTRY_VERIFY(!QAbstractEventDispatcher::instance()->hasPendingEvents());
        bool called = false;
        bool refused = false;
        std::thread caller([&] {
            try {
                Utilities::runOnGuiThread([&called] { called = true; });
            } catch (const std::runtime_error&) {
                refused = true;
            }
        });
        while (!QAbstractEventDispatcher::instance()->hasPendingEvents())
            std::this_thread::yield();
        application.reset();
        caller.join();
        QVERIFY(refused);
        QVERIFY(!called);
    }
};

int main(int argc, char** argv)
{
    TestSupport::isolate();
    GuiThreadTest test;
    return TestSupport::finish(QTest::qExec(&test, argc, argv));
}

#include "gui_thread_test.moc"
