#include "host/Utilities/ModelViews/Widgets/TransferWindow.h"
#include "host/Utilities/UnsavedBackends.h"
#include "tests/support/Columns.h"
#include "tests/support/LoggedFailures.h"
#include "tests/support/TestRun.h"

#include <QApplication>
#include <QCloseEvent>
#include <QTimer>
#include <QWindow>

#include <future>

using FrameworkCore::AppConfig::Outcome;
using Utilities::ModelViews::Widgets::TransferWindow;

namespace {

// Counts how often it is asked for what is unsaved.
class Asked : public FrameworkCore::AppConfig::Interfaces::ChangesInterface
{
public:
    QStringList getEditedBackends() const override
    {
        ++times;
        return {};
    }
    QVector<FrameworkCore::AppConfig::Interfaces::UnsavedChange>
    getUnsavedChanges(const QString&) const override
    {
        return {};
    }
    Outcome getUnsavedDiff(const QString&, QString&) const override { return {}; }
    Outcome revert(const QString&) override { return {}; }
    Outcome resolveConflicts(const QString&, FrameworkCore::AppConfig::Interfaces::ConflictSide) override
    {
        return {};
    }

    mutable int times = 0;
};

} // namespace

class TransferWindowTest : public QObject
{
    Q_OBJECT

private slots:
    // The operation is over only once the thread of the widgets has done something, too.
    void goesOnMeanwhile()
    {
        std::promise<void> done;
        bool isWindowThere = true;
        QTimer::singleShot(0, this, [&] {
            isWindowThere = QApplication::activeModalWidget() != nullptr;
            done.set_value();
        });
        QVERIFY(runUntil(done));
        QVERIFY(!isWindowThere); // which comes later
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

    // Whoever asked a repository that an operation keeps busy would wait for it.
    void asksNothingMeanwhile()
    {
        const auto asked = std::make_shared<Asked>();
        const Utilities::UnsavedBackends unsaved(asked);
        QTRY_VERIFY(asked->times > 0);
        std::promise<void> done;
        int before = 0;
        QTimer::singleShot(0, this, [&] { before = asked->times; });
        QTimer::singleShot(1500, this, [&done] { done.set_value(); }); // longer than between two questions
        QVERIFY(runUntil(done));
        QCOMPARE(asked->times, before);
        QTRY_VERIFY(asked->times > before);
    }

    // Of a copy into another format nobody else would hear.
    void tellsWhatIsLeftOut_data()
    {
        const auto row = TestSupport::columns<int, bool, bool, QStringList>("comments", "tags", "ok", "told");
        row("nothing", 0, false, true, {});
        const auto comment =
            QStringLiteral("Copying: a comment was left out because there is no place for it");
        row("a comment", 1, false, true, {comment});
        row("comments and tags", 2, true, true,
            {QStringLiteral("Copying: 2 comments were left out because there is no place for them"),
             QStringLiteral("Copying: tags were left out because there is no form for them")});
        row("refused", 2, true, false, {});
    }

    void tellsWhatIsLeftOut()
    {
        QFETCH(int, comments);
        QFETCH(bool, tags);
        QFETCH(bool, ok);
        const TestSupport::LoggedFailures logged;
        TransferWindow::run(QStringLiteral("Copying"), [&](TransferWindow::TransferReport& report) {
            report.setCommentsLeftOut(comments);
            if (tags)
                report.setTagsLeftOut();
            return ok ? Outcome() : Outcome(FrameworkCore::AppConfig::BackendFailure, {});
        });
        QTEST(logged.texts(), "told");
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
