#include "desk/log/FailureHint.h"
#include "desk/log/LogModel.h"
#include "host/Shared/Logging/LogStreamProvider.h"
#include "repository/common/RepositoryLog.h"
#include "tests/desk/RunningDesk.h"
#include "tests/support/Columns.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QToolButton>
#include <QTreeView>

#include <thread>

using FrameworkCore::AppConfig::Outcome;
using namespace Shared::Logging;
using TestSupport::pressKey;
using TestSupport::RunningDesk;

namespace {

const QString speed = QStringLiteral("plant.cell.pump.motor.speed");

void log(LogMessageType type, const char* category, const QString& text)
{
    const LogMessageContext context({}, -1, {}, QLatin1String(category), {}, LogMessageContext::RecordOnly);
    LogStreamProvider(context).handleMessageInternal(type, {}) << text;
}

} // namespace

// The log of the desk, and how a failure is reported, with real keys and clicks.
class DeskLogTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        LogRecord::instance().setWritesToStandardError(false);
        folder = std::make_unique<RunningDesk::Folder>();
        desk = std::make_unique<RunningDesk>(*folder, QStringList(folder->path("plant.json")));
        QVERIFY(TestSupport::showActive(*desk->window));
        QTRY_VERIFY(desk->item(QStringLiteral("plant.cell")).isValid());
        view = nullptr;
    }

    void cleanup()
    {
        desk.reset();
        folder.reset();
    }

    // The reason stays, not what the editor makes of it, with what was entered, until it has succeeded.
    void tellsWhyAnEditFailed()
    {
        auto* const hint = desk->part<Vantry::FailureHint>("failureHint");
        QVERIFY(!hint->isVisible());
        QApplication::clipboard()->clear();
        const QRect before = desk->part<QWidget>("workArea")->rect();
        const QString& path = speed;
        const auto validations = desk->repository->getValidationInterface();
        QVERIFY(validations->addValidation(path, QStringLiteral("range(0,1500)")) != 0);
        enter("2000");
        QTRY_VERIFY(hint->isVisible());
        QCOMPARE(desk->part<QWidget>("workArea")->rect(), before); // nothing moves under the person's hands
        QTRY_VERIFY(
            LogRecord::instance().getLines().last().text.contains(QLatin1String("Write To Attribute")));
        const QString reason = QStringLiteral("'%1' was not set to '2000' (a whole number): the validation "
                                              "'range(0,1500)' asks for a number from 0 to 1500")
                                   .arg(path);
        QCOMPARE(hint->getText(), reason);
        QVERIFY(desk->part<QLabel>("failureText")->text().startsWith(QLatin1Char('\'') + path));

        auto* const open = desk->part<QToolButton>("failureLog");
        QVERIFY(TestSupport::click(*open, open->rect().center()));
        QTRY_VERIFY(isReading());
        QCOMPARE(hint->getText(), reason);
        QTRY_VERIFY(lastRow().contains(QLatin1String("Write To Attribute"))); // of before it was opened
        log(LogMessageType::Outcome, "Vantry", QStringLiteral("fine"));
        QTRY_VERIFY(lastRow().contains(QLatin1String("fine")));
        std::thread([&] { desk->repository->getWriterInterface()->writeAttributeValue(path, 7, 15); }).join();
        QCOMPARE(hint->getText(), reason); // that was somebody else
        const auto copied = [this] {
            auto* const copy = desk->part<QToolButton>("failureCopy");
            return TestSupport::click(*copy, copy->rect().center());
        };
        QVERIFY(copied());
        QTRY_COMPARE(QApplication::clipboard()->text(), QStringLiteral("2000"));
        enter("six");
        QTRY_COMPARE(hint->getText(),
                     QStringLiteral("'%1' was not set to 'six': it holds a whole number from "
                                    "-9223372036854775808 to 9223372036854775807; \"Change Type\" makes it "
                                    "hold a text")
                         .arg(path));
        QVERIFY(copied());
        QTRY_COMPARE(QApplication::clipboard()->text(), QStringLiteral("six"));
        enter("1000");
        QTRY_VERIFY(!hint->isVisible());

        Repository::logged(
            Outcome(FrameworkCore::AppConfig::BackendFailure, QStringLiteral("the disk is full"))
                .of(Outcome::Operation::SaveBackend, QStringLiteral("plant")));
        QTRY_VERIFY(hint->isVisible());
        QVERIFY(!desk->part<QToolButton>("failureCopy")->isVisible()); // nothing was entered
        QVERIFY(desk->repository->getBackendInterface()->saveBackend(QStringLiteral("plant")));
        QTRY_VERIFY(!hint->isVisible());
    }

    // However narrow the window is, the end tells what helps.
    void tellsThatAFileIsLocked()
    {
        desk->window->resize(900, 600);
        QVERIFY(desk->repository->getBackendInterface()->setLocked(QStringLiteral("plant"), true).ok());
        enter("2000");
        QTRY_VERIFY(desk->part<QToolButton>("failureEdit")->isVisible());
        const auto* const label = desk->part<QLabel>("failureText");
        QTRY_VERIFY2(label->text().endsWith(QLatin1String("unlock it to change it")),
                     qPrintable(label->text()));
        QVERIFY(label->fontMetrics().horizontalAdvance(label->text()) <= label->width());
    }

    void keepsWhatWasTyped_data()
    {
        TestSupport::columns<QString, QString, bool>("way", "kept", "isEditable");
        const auto row = [](const char* way, const char* kept, bool isEditable) {
            QTest::newRow(way) << QString::fromLatin1(way) << QString::fromLatin1(kept) << isEditable;
        };
        row("other program", "the attribute no longer exists", false);
        row("backend closed", "the attribute no longer exists", false);
        row("left out by the search", "its editor was closed before the edit had ended", true);
        row("window closed", "it holds a whole number from -9223372036854775808 to 9223372036854775807",
            true);
    }

    // When its row goes, or the window would. It is edited again where that is possible.
    void keepsWhatWasTyped()
    {
        QFETCH(QString, way);
        QFETCH(QString, kept);
        QFETCH(bool, isEditable);
        const auto* const hint = desk->part<Vantry::FailureHint>("failureHint");
        openEditor();
        QVERIFY(TestSupport::typeText(QStringLiteral("fast")));
        QTRY_COMPARE(editor() ? editor()->text() : QString(), QStringLiteral("fast"));
        if (way == QLatin1String("other program")) {
            TestSupport::writeFile(folder->path("plant.json"), "{\"cell\": {\"pump\": {}}}\n");
        } else if (way == QLatin1String("backend closed")) {
            QVERIFY(desk->repository->getBackendInterface()->closeBackend(QStringLiteral("plant"), true));
        } else if (way == QLatin1String("left out by the search")) {
            desk->part<QLineEdit>("edtSearchPath")->setText(QStringLiteral("plant.cell.valve"));
            QVERIFY(QMetaObject::invokeMethod(desk->part<QWidget>("btnReadAttribute"), "click"));
        } else {
            const TestSupport::DialogDriver driver([](QWidget& question) {
                QVERIFY(question.findChild<QLabel*>()->isVisible());
                QTest::keyClick(&question, Qt::Key_Escape);
            });
            QVERIFY(pressKey(QStringLiteral("ctrl+q")));
            QTRY_VERIFY(driver.isDone());
            QVERIFY(TestSupport::showActive(*desk->window));
        }
        if (isEditable)
            kept += QLatin1String("; \"Change Type\" makes it hold a text");
        QTRY_COMPARE(hint->getText(), QStringLiteral("'%1' was not set to 'fast': %2").arg(speed, kept));
        QVERIFY(desk->window->isVisible());
        QTRY_COMPARE(desk->part<QToolButton>("failureEdit")->isEnabled(), isEditable);
        QVERIFY(pressKey(QStringLiteral("F6")));
        QTRY_COMPARE(QApplication::focusWidget(),
                     desk->part<QWidget>(isEditable ? "failureEdit" : "failureCopy"));
        if (!isEditable)
            return;
        QVERIFY(pressKey(QStringLiteral("space")));
        QTRY_COMPARE(editor() ? editor()->text() : QString(), QStringLiteral("fast"));
        QTRY_VERIFY(editor()->hasFocus());
        QVERIFY(pressKey(QStringLiteral("ctrl+a")));
        QVERIFY(TestSupport::typeText(QStringLiteral("1300")));
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_VERIFY(!hint->isVisible());
        QTRY_COMPARE(desk->item(speed).siblingAtColumn(1).data().toString(), QStringLiteral("1300"));
    }

    // From another page, out of another edit, and to what the search leaves out.
    void editsAgainFromElsewhere()
    {
        const auto* const hint = desk->part<Vantry::FailureHint>("failureHint");
        enter("fast");
        QTRY_VERIFY(desk->part<QToolButton>("failureEdit")->isVisible());
        auto* const search = desk->part<QLineEdit>("edtSearchPath");
        search->setText(QStringLiteral("plant.cell.valve"));
        QTest::keyClick(search, Qt::Key_Return);
        QTRY_VERIFY(!desk->item(speed).isValid());
        auto* const tests = desk->navigationButton("btnTests");
        QVERIFY(TestSupport::click(*tests, tests->rect().center()));
        QTRY_COMPARE(desk->shownPage(), QStringLiteral("pageTests"));
        QVERIFY(pressKey(QStringLiteral("alt+a")));
        QTRY_COMPARE(desk->shownPage(), QStringLiteral("pageAttributes"));
        QTRY_COMPARE(editor() ? editor()->text() : QString(), QStringLiteral("fast"));
        QTRY_COMPARE(QApplication::focusWidget(), editor());

        QVERIFY(pressKey(QStringLiteral("alt+a"))); // which ends that edit in vain
        QTRY_VERIFY(editor() && editor()->hasFocus());
        QCOMPARE(editor()->text(), QStringLiteral("fast"));
        QVERIFY(pressKey(QStringLiteral("Escape")));
        QTRY_VERIFY(!editor());
        QVERIFY(hint->isVisible()); // it is still not written
    }

    // Through all its buttons and out again; what goes by itself does not go from under the keyboard.
    void isReachedByKeys()
    {
        const auto* const hint = desk->part<Vantry::FailureHint>("failureHint");
        enter("fast");
        QTRY_VERIFY(desk->part<QToolButton>("failureEdit")->isVisible());
        QTRY_VERIFY(desk->tree->hasFocus());
        QVERIFY(pressKey(QStringLiteral("alt+c")));
        QTRY_COMPARE(QApplication::clipboard()->text(), QStringLiteral("fast"));
        QVERIFY(desk->tree->hasFocus());
        auto* const first = desk->part<QWidget>("failureEdit");
        const QImage unfocused = first->grab().toImage();
        QVERIFY(pressKey(QStringLiteral("F6")));
        QTRY_VERIFY(first->hasFocus());
        QVERIFY(first->grab().toImage() != unfocused);
        for (const char* const name :
             {"failureEdit", "failureType", "failureCopy", "failureLog", "failureClose"}) {
            QTRY_COMPARE(QApplication::focusWidget(), desk->part<QWidget>(name));
            QVERIFY(pressKey(QStringLiteral("Tab")));
        }
        QTRY_VERIFY(!hint->isAncestorOf(QApplication::focusWidget()));
        desk->tree->setFocus();
        QVERIFY(pressKey(QStringLiteral("F6")));
        QTRY_VERIFY(hint->isAncestorOf(QApplication::focusWidget()));
        QVERIFY(pressKey(QStringLiteral("Escape")));
        QTRY_VERIFY(!hint->isVisible());
        QVERIFY(desk->tree->hasFocus());
    }

    void narrowsAndCopies()
    {
        QVERIFY(pressKey(QStringLiteral("F8")));
        QTRY_VERIFY(isReading());
        log(LogMessageType::Information, "Pump", QStringLiteral("one drop"));
        log(LogMessageType::Failure, "Pump", QStringLiteral("two\ndrops"));
        log(LogMessageType::Outcome, "Valve", QStringLiteral("three"));
        QTRY_VERIFY(lastRow().contains(QLatin1String("three")));
        auto* const wanted = desk->part<QLineEdit>("logText");
        QVERIFY(TestSupport::click(*wanted, wanted->rect().center()));
        QVERIFY(TestSupport::typeText(QStringLiteral("DROP")));
        QTRY_COMPARE(texts(), (QStringList{QStringLiteral("one drop"), QStringLiteral("two \u21B5 drops")}));

        goTo("logInformation", "shift+Tab");
        QVERIFY(pressKey(QStringLiteral("space")));
        QTRY_COMPARE(texts(), QStringList(QStringLiteral("two \u21B5 drops")));
        goTo("logText");
        QVERIFY(pressKey(QStringLiteral("ctrl+a")));
        QVERIFY(pressKey(QStringLiteral("Delete")));
        QTRY_VERIFY(texts().last() == QLatin1String("three"));

        goTo("logLines");
        for (const char* key : {"End", "shift+Up", "ctrl+c"})
            QVERIFY(pressKey(QLatin1String(key)));
        QTRY_VERIFY(QApplication::clipboard()->text().endsWith(QLatin1String(" outcome [Valve] three\n")));
        const QString copied = QApplication::clipboard()->text();
        QVERIFY2(copied.contains(QLatin1String(" failure [Pump] two\ndrops\n")), qPrintable(copied));

        auto* const clear = desk->part<QToolButton>("logClear");
        QVERIFY(TestSupport::click(*clear, clear->rect().center()));
        QTRY_COMPARE(texts(), QStringList());
        log(LogMessageType::Failure, "Pump", QStringLiteral("later"));
        QTRY_COMPARE(texts(), QStringList(QStringLiteral("later")));
    }

    // More lines than are kept, from several threads, while the person reads in the middle, and at the end.
    void followsOnlyFromItsEnd()
    {
        QVERIFY(pressKey(QStringLiteral("F8")));
        QTRY_VERIFY(isReading());
        flood(3000);
        QTRY_VERIFY(lastRow().endsWith(QLatin1String("3000 are over")));
        QCOMPARE(shownLast(), lastRow());

        constexpr int shown = 200; // from the end, so that it is not among those that are dropped
        view->verticalScrollBar()->setValue(view->verticalScrollBar()->maximum() - shown);
        const QString read = shownFirst();
        flood(9500);
        QTRY_VERIFY(lastRow().endsWith(QLatin1String("9500 are over")));
        QCOMPARE(view->model()->rowCount(), int(LogRecord::capacity));
        QCOMPARE(shownFirst(), read);

        QVERIFY(pressKey(QStringLiteral("End")));
        QTRY_COMPARE(shownLast(), lastRow());
        flood(15000);
        QTRY_VERIFY(lastRow().endsWith(QLatin1String("15000 are over")));
        QCOMPARE(shownLast(), lastRow());
        QCOMPARE(view->model()->rowCount(), int(LogRecord::capacity));
    }

private:
    void openEditor()
    {
        desk->tree->setFocus();
        desk->tree->setCurrentIndex(desk->item(speed));
        QVERIFY(pressKey(QStringLiteral("F2")));
        QTRY_VERIFY(qobject_cast<QLineEdit*>(QApplication::focusWidget()));
        QVERIFY(pressKey(QStringLiteral("ctrl+a")));
    }

    void enter(const char* typed)
    {
        openEditor();
        QVERIFY(TestSupport::typeText(QLatin1String(typed)));
        QVERIFY(pressKey(QStringLiteral("Return")));
    }

    const QLineEdit* editor() const
    {
        return qobject_cast<const QLineEdit*>(desk->tree->indexWidget(desk->item(speed).siblingAtColumn(1)));
    }

    static void flood(int count)
    {
        std::vector<std::thread> threads;
        for (int number = 0; number < 2; ++number)
            threads.emplace_back([count, number] {
                for (int line = 0; line < count / 2; ++line)
                    log(LogMessageType::Information, "Flood",
                        QStringLiteral("%1 of %2").arg(line).arg(number));
            });
        for (std::thread& thread : threads)
            thread.join();
        log(LogMessageType::Outcome, "Flood", QStringLiteral("%1 are over").arg(count));
    }

    // Whether the log is shown, with the focus in its lines.
    bool isReading()
    {
        view = desk->part<QTreeView>("logLines");
        return view && view->isVisible() && view->hasFocus();
    }

    QString plainText(const QModelIndex& index) const
    {
        return index.data(Vantry::LogModel::PlainTextRole).toString();
    }

    QString lastRow() const { return plainText(view->model()->index(view->model()->rowCount() - 1, 0)); }
    QString shownFirst() const { return plainText(view->indexAt({0, 0})); }

    QString shownLast() const
    {
        QModelIndex last = view->indexAt({0, 0});
        while (view->visualRect(view->indexBelow(last)).bottom() <= view->viewport()->rect().bottom() &&
               view->indexBelow(last).isValid())
            last = view->indexBelow(last);
        return plainText(last);
    }

    QStringList texts() const
    {
        QStringList texts;
        for (int row = 0; row < view->model()->rowCount(); ++row)
            texts.append(view->model()->index(row, Vantry::LogModel::TextColumn).data().toString());
        return texts;
    }

    static void goTo(const char* name, const char* key = "Tab")
    {
        const auto isThere = [name] {
            const QWidget* const widget = QApplication::focusWidget();
            return widget && widget->objectName() == QLatin1String(name);
        };
        for (int i = 0; i < 40 && !isThere(); ++i) {
            const QWidget* const before = QApplication::focusWidget();
            QVERIFY(pressKey(QLatin1String(key)));
            QTRY_VERIFY(QApplication::focusWidget() != before);
        }
        QVERIFY2(isThere(), name);
    }

    std::unique_ptr<RunningDesk::Folder> folder;
    std::unique_ptr<RunningDesk> desk;
    QTreeView* view = nullptr; // of the log once it is read, not owned
};

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk-test"));
    return TestSupport::runTest<QApplication, DeskLogTest>(argc, argv);
}

#include "desk_log_test.moc"
