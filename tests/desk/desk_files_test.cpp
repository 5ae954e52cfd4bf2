#include "desk/window/NoticeBar.h"
#include "host/Shared/Logging/LogRecord.h"
#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "tests/desk/RunningDesk.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/NoThreads.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTreeView>
#include <QTreeWidget>

#include <algorithm>
#include <optional>

using TestSupport::contentOf;
using TestSupport::DialogDriver;
using TestSupport::pressKey;
using TestSupport::RunningDesk;

namespace {

const QString speed = QStringLiteral("plant.cell.pump.motor.speed");
const QString sense = QStringLiteral("plant.cell.pump.motor.sense");
const QString maximum = QStringLiteral("limits.oven.maximum");

// Clicks the button of a dialog that has the text.
void press(const QWidget& dialog, const char* text)
{
    const auto buttons = dialog.findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (button->text().remove(QLatin1Char('&')) == QLatin1String(text)) {
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }
    QFAIL(text);
}

} // namespace

// The File and the Edit menu, with real keys on the real desk and files.
class DeskFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<RunningDesk::Folder>();
        plant = contentOf(folder->path("plant.json"));
        desk = std::make_unique<RunningDesk>(
            *folder, QStringList{folder->path("plant.json"), folder->path("limits.ini")});
        QVERIFY(TestSupport::showActive(*desk->window));
        QTRY_VERIFY(desk->item(QStringLiteral("limits.oven")).isValid());
        desk->tree->setFocus();
    }

    void cleanup()
    {
        desk.reset();
        folder.reset();
    }

    void undoesAndSavesByKey()
    {
        const auto* const undo = desk->part<QAction>("undo");
        const auto* const redo = desk->part<QAction>("redo");
        QVERIFY(!undo->isEnabled() && !redo->isEnabled());
        write(speed, 1250);
        QTRY_COMPARE(undo->text(), QStringLiteral("&Undo Write ") + speed);
        QTRY_VERIFY(desk->window->isWindowModified());
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QByteArray edited = plant;
        edited.replace("1200", "1250");
        QTRY_COMPARE(contentOf(folder->path("plant.json")), edited);
        QTRY_VERIFY(!desk->window->isWindowModified());

        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(read(speed), QVariant(1200LL));
        QTRY_VERIFY(!undo->isEnabled());
        QCOMPARE(redo->text(), QStringLiteral("&Redo Write ") + speed);
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_COMPARE(contentOf(folder->path("plant.json")), plant);
        for (const char* key : {"ctrl+y", "ctrl+shift+z"}) {
            QVERIFY(pressKey(QLatin1String(key)));
            QTRY_COMPARE(read(speed), QVariant(1250LL));
            QVERIFY(pressKey(QStringLiteral("ctrl+z")));
            QTRY_COMPARE(read(speed), QVariant(1200LL));
        }
    }

    // A text field takes back what was typed there, not what happened to the attributes.
    void leavesTextFieldsTheirUndo()
    {
        write(speed, 1250);
        auto* const search = desk->part<QLineEdit>("edtSearchPath");
        search->setFocus();
        const QString before = search->text();
        QVERIFY(TestSupport::typeText(QStringLiteral("x")));
        QTRY_COMPARE(search->text(), before + QLatin1Char('x'));
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(search->text(), before);
        for (const char* key : {"ctrl+z", "ctrl+y", "End"}) // nothing is left to undo
            QVERIFY(pressKey(QLatin1String(key)));
        QVERIFY(TestSupport::typeText(QStringLiteral("y")));
        QTRY_COMPARE(search->text(), before + QLatin1Char('y'));
        QCOMPARE(read(speed), QVariant(1250LL));
        search->selectAll();
        QVERIFY(pressKey(QStringLiteral("Delete")));
        QTRY_VERIFY(search->text().isEmpty());
        desk->tree->setFocus();
        for (const char* key : {"ctrl+z", "ctrl+y", "ctrl+z"})
            QVERIFY(pressKey(QLatin1String(key)));
        QTRY_COMPARE(read(speed), QVariant(1200LL));
    }

    void takesWhatIsBeingTyped_data()
    {
        QTest::addColumn<QString>("view");
        QTest::addColumn<QString>("key"); // or entry of the File menu, for the mouse
        for (const char* view : {"treeView", "appConfigDataAccessWidget"}) {
            for (const char* key : {"ctrl+s", "ctrl+q", "F5", "&Save All"})
                QTest::addRow("%s, %s", view, key) << QString::fromLatin1(view) << QString::fromLatin1(key);
        }
    }

    void takesWhatIsBeingTyped()
    {
        QFETCH(QString, view);
        QFETCH(QString, key);
        auto* const edited = desk->part<QAbstractItemView>(qPrintable(view));
        type(*edited, QStringLiteral("1250"));
        std::optional<DialogDriver> question;
        if (key == QLatin1String("ctrl+q"))
            question.emplace([](QWidget& dialog) { press(dialog, "Save"); });
        if (key.startsWith(QLatin1Char('&')))
            choose(0, key);
        else
            QVERIFY(pressKey(key));
        QTRY_COMPARE(read(speed), QVariant(1250LL));
        if (key != QLatin1String("F5"))
            QTRY_COMPARE(contentOf(folder->path("plant.json")), QByteArray(plant).replace("1200", "1250"));
        if (question)
            QTRY_VERIFY(!desk->window->isVisible());
        else
            QTRY_VERIFY(edited->hasFocus());
    }

    // The keys are those of the text field, the menu's entries those of the attributes.
    void undoesWhatIsBeingTyped()
    {
        type(*desk->tree, QStringLiteral("1250"));
        const auto* const field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(field->text(), QStringLiteral("1200"));
        QVERIFY(pressKey(QStringLiteral("ctrl+a")));
        QVERIFY(TestSupport::typeText(QStringLiteral("1300")));
        QTRY_COMPARE(field->text(), QStringLiteral("1300"));
        choose(1, QStringLiteral("&Undo Write ") + speed);
        QTRY_COMPARE(read(speed), QVariant(1200LL));
        QCOMPARE(desk->part<QAction>("redo")->text(), QStringLiteral("&Redo Write ") + speed);
        QVERIFY(desk->tree->hasFocus());
    }

    void reverts()
    {
        write(speed, 1250);
        write(maximum, 130);
        fileMenu({"e", "Return"}, [](QWidget& dialog) { press(dialog, "Cancel"); }); // of the first backend
        QCOMPARE(read(speed), QVariant(1250LL));
        fileMenu({"e", "Return"}, [](QWidget& dialog) { press(dialog, "Revert"); });
        QTRY_COMPARE(read(speed), QVariant(1200LL));
        QCOMPARE(read(maximum), QVariant(130LL));
        QVERIFY(TestSupport::showActive(*desk->window));
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(read(speed), QVariant(1250LL));
        fileMenu({"e", "a"}, [](QWidget& dialog) { press(dialog, "Revert"); });
        QTRY_COMPARE(read(speed), QVariant(1200LL));
        QCOMPARE(read(maximum), QVariant(125LL));
        QTRY_VERIFY(!desk->window->isWindowModified());
    }

    void asksBeforeChangesAreLost_data()
    {
        QTest::addColumn<bool>("isWindow"); // or only one of the files
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("goes");
        QTest::addColumn<bool>("isSaved");
        for (const bool isWindow : {true, false}) {
            const QString whole = isWindow ? QStringLiteral("window: ") : QStringLiteral("file: ");
            const QString save = isWindow ? QStringLiteral("Save All") : QStringLiteral("Save");
            QTest::newRow(qPrintable(whole + save)) << isWindow << save << true << true;
            QTest::newRow(qPrintable(whole + QLatin1String("Discard")))
                << isWindow << QStringLiteral("Discard") << true << false;
            QTest::newRow(qPrintable(whole + QLatin1String("Cancel")))
                << isWindow << QStringLiteral("Cancel") << false << false;
        }
    }

    void asksBeforeChangesAreLost()
    {
        QFETCH(bool, isWindow);
        QFETCH(QString, button);
        QFETCH(bool, goes);
        QFETCH(bool, isSaved);
        write(speed, 1250);
        write(maximum, 130);
        QString shown;
        const auto answer = [&](QWidget& dialog) {
            auto* const view = dialog.findChild<QPlainTextEdit*>(QStringLiteral("differences"));
            QTRY_VERIFY(view->toPlainText().contains(isWindow ? QLatin1String("+maximum = 130")
                                                              : QLatin1String("\"speed\": 1250")));
            shown = view->toPlainText();
            press(dialog, qPrintable(button));
        };
        if (isWindow) {
            const DialogDriver driver(answer);
            QVERIFY(pressKey(QStringLiteral("ctrl+q")));
            QTRY_VERIFY(driver.isDone());
        } else {
            fileMenu({"c", "Return"}, answer);
        }
        QVERIFY2(shown.startsWith(QStringLiteral("--- ") + folder->path("plant.json")), qPrintable(shown));
        QVERIFY2(shown.contains(QLatin1String("-{\"cell\": {\"pump\": {\"motor\": {\"speed\": 1200")) &&
                     shown.contains(QLatin1String("-maximum = 125")) == isWindow,
                 qPrintable(shown));
        if (isWindow)
            QTRY_COMPARE(!desk->window->isVisible(), goes);
        else
            QTRY_COMPARE(!desk->item(QStringLiteral("plant")).isValid(), goes);
        QCOMPARE(contentOf(folder->path("plant.json")).contains("1250"), isSaved);
        QCOMPARE(contentOf(folder->path("limits.ini")).contains("130"), isSaved && isWindow);
        if (!goes)
            QCOMPARE(read(speed), QVariant(1250LL));
    }

    void letsChooseInConflicts()
    {
        write(speed, 1250);
        write(sense, QStringLiteral("right"));
        QByteArray theirs = plant;
        theirs.replace("1200", "1300").replace("left", "both").replace("true", "false");
        TestSupport::writeFile(folder->path("plant.json"), theirs);
        DialogDriver driver([](QWidget& dialog) {
            auto* const rows = dialog.findChild<QTreeWidget*>(QStringLiteral("conflictRows"));
            QCOMPARE(textsOf(*rows), (QStringList{speed + QLatin1String("|1250|1300|"),
                                                  sense + QLatin1String("|right|both|")}));
            press(dialog, "Save"); // not enabled before all are chosen
            QVERIFY(dialog.isVisible());
            press(dialog, "Keep Mine");
            rows->clearSelection();
            rows->topLevelItem(1)->setSelected(true);
            press(dialog, "Take Theirs");
            QCOMPARE(textsOf(*rows).last(), sense + QLatin1String("|right|both|take theirs"));
            press(dialog, "Save");
        });
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_VERIFY(driver.isDone());
        QTRY_COMPARE(contentOf(folder->path("plant.json")), QByteArray(theirs).replace("1300", "1250"));
        QCOMPARE(read(sense), QVariant(QStringLiteral("both")));
        QTRY_VERIFY(!desk->window->isWindowModified());
    }

    void writesAFileThatIsGoneAnew()
    {
        write(speed, 1250);
        QVERIFY(QFile::remove(folder->path("plant.json")));
        const DialogDriver driver([](QWidget& dialog) {
            QCOMPARE(textsOf(*dialog.findChild<QTreeWidget*>(QStringLiteral("conflictRows"))),
                     QStringList(QStringLiteral("plant|what is open|the file is gone|")));
            press(dialog, "Keep Mine");
            press(dialog, "Save");
        });
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_VERIFY(driver.isDone());
        QTRY_COMPARE(contentOf(folder->path("plant.json")), QByteArray(plant).replace("1200", "1250"));
    }

    // What cannot be saved keeps the window, and the person hears why.
    void staysWhenSavingFails()
    {
        write(speed, 1250);
        QVERIFY(QFile::remove(folder->path("plant.json")));
        QVERIFY(QDir().mkdir(folder->path("plant.json")));
        QString told;
        std::optional<DialogDriver> warning;
        const DialogDriver driver([&](QWidget& dialog) {
            press(dialog, "Save");
            warning.emplace([&told](QWidget& box) {
                told = qobject_cast<QMessageBox*>(&box)->text();
                press(box, "OK");
            });
        });
        QVERIFY(pressKey(QStringLiteral("ctrl+q")));
        QTRY_VERIFY(warning && warning->isDone());
        QVERIFY2(told.contains(folder->path("plant.json")), qPrintable(told));
        QVERIFY(desk->window->isVisible());
        QCOMPARE(read(speed), QVariant(1250LL));
    }

    // What needs a thread says that there is none; what was edited is saved all the same.
    void worksWithoutThreads()
    {
        write(speed, 1250);
        {
            const TestSupport::NoThreads none;
            desk->window->openFiles({folder->path("broken.json")});
            const auto* const notices = desk->part<Vantry::NoticeBar>("noticeBar");
            QTRY_VERIFY(notices->getNotices().join(QLatin1Char(' ')).contains(QLatin1String("thread")));
            fileMenu({"c", "Return"}, [](QWidget& dialog) {
                const auto* const view = dialog.findChild<QPlainTextEdit*>(QStringLiteral("differences"));
                QVERIFY(view->toPlainText().contains(QLatin1String("thread")));
                press(dialog, "Save");
            });
            QTRY_VERIFY(!desk->item(QStringLiteral("plant")).isValid());
        }
        QCOMPARE(contentOf(folder->path("plant.json")), QByteArray(plant).replace("1200", "1250"));
        desk->window->openFiles({folder->path("plant.json")});
        QTRY_VERIFY(desk->item(QStringLiteral("plant")).isValid());
        QCOMPARE(read(speed), QVariant(1250LL));
    }

    // As when the session ends: nobody is asked, and the next window tells where the changes are.
    void endsUnasked()
    {
        write(speed, 1250);
        const quint64 number = Shared::Logging::LogRecord::instance().getLastNumber();
        desk->window->closeUnasked();
        QVERIFY(!desk->window->isVisible());
        const auto lines = Shared::Logging::LogRecord::instance().getLines(number);
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines.first().text.contains(QLatin1String("plant.json (plant)")),
                 qPrintable(lines.first().text));
        QCOMPARE(contentOf(folder->path("plant.json")), plant);

        const QDir kept(folder->path("state/vantry/unsaved"));
        const QStringList files = kept.entryList(QDir::Files, QDir::Name);
        QCOMPARE(files.size(), 2);
        const QString place = kept.filePath(files.last());
        QVERIFY(lines.first().text.endsWith(place));
        const QByteArray diff = contentOf(place);
        QVERIFY(diff.startsWith("--- " + QFile::encodeName(folder->path("plant.json"))));
        QVERIFY2(diff.contains("\n-") && diff.contains("1250"), diff);
        for (const QString& closed : {folder->path("state/vantry"), place, kept.filePath(files.first())})
            QCOMPARE(QFileInfo(closed).permissions() & QFileDevice::Permissions(0x77), QFile::Permissions());
        startAnew();
        DialogDriver shown([](QWidget& dialog) {
            QVERIFY(dialog.findChild<QPlainTextEdit*>()->toPlainText().contains(QLatin1String("1250")));
            press(dialog, "Close");
        });
        pressKept("keptShow");
        QVERIFY(shown.isDone());
        for (const char* const answer : {"Cancel", "Discard"}) {
            DialogDriver question([answer](QWidget& box) { press(box, answer); });
            pressKept("keptDiscard");
            QVERIFY(question.isDone());
            QCOMPARE(desk->part<QWidget>("keptChangesBar")->isVisible(), qstrcmp(answer, "Cancel") == 0);
        }
        QVERIFY(kept.entryList(QDir::Files).isEmpty());
        QCOMPARE(contentOf(folder->path("plant.json")), plant);
    }

    void appliesKeptChanges_data()
    {
        QTest::addColumn<QByteArray>("theirs"); // what another program has made of the file meanwhile
        QTest::addColumn<bool>("isConflict");
        QTest::addColumn<bool>("isOpen");
        QTest::newRow("as it was") << QByteArray("1200") << false << false;
        QTest::newRow("open already") << QByteArray("1200") << false << true;
        QTest::newRow("in conflict") << QByteArray("1300") << true << false;
    }

    // As edits that are not saved, in a step of undo; a conflict stays kept until somebody chooses.
    void appliesKeptChanges()
    {
        QFETCH(QByteArray, theirs);
        QFETCH(bool, isConflict);
        QFETCH(bool, isOpen);
        const QString added = QStringLiteral("plant.cell.pump.motor.torque");
        write(speed, 1250);
        QCOMPARE(desk->repository->getTreeInterface()->removeTree(sense), FrameworkCore::AppConfig::Success);
        QVERIFY(desk->repository->getWriterInterface()->createAttribute(added, 2.5, 2, 3));
        desk->window->closeUnasked();
        QByteArray meanwhile = plant;
        meanwhile.replace("1200", theirs).replace("true", "false");
        TestSupport::writeFile(folder->path("plant.json"), meanwhile);
        startAnew(isOpen ? QStringList(folder->path("plant.json")) : QStringList());

        std::optional<DialogDriver> conflict;
        const auto drive = [](const char* key) {
            return [key](QWidget& dialog) {
                auto* const rows = dialog.findChild<QTreeWidget*>(QStringLiteral("conflictRows"));
                QCOMPARE(textsOf(*rows), QStringList(speed + QLatin1String("|1250|1300|")));
                press(dialog, "Keep Mine");
                press(dialog, key);
            };
        };
        std::optional<DialogDriver> told;
        if (isConflict) {
            conflict.emplace([&](QWidget& dialog) {
                drive("Cancel")(dialog);
                told.emplace([](QWidget& box) { press(box, "OK"); });
            });
        }
        pressKept("keptApply");
        QTRY_VERIFY(read(added) == QVariant(2.5));
        if (isConflict) {
            QTRY_VERIFY(told && told->isDone());
            QVERIFY(desk->part<QWidget>("keptChangesBar")->isVisible());
            QCOMPARE(read(speed), QVariant(1300LL));
            conflict.emplace(drive("Apply"));
            pressKept("keptApply");
            QTRY_VERIFY(conflict->isDone());
        }
        QTRY_VERIFY(!desk->part<QWidget>("keptChangesBar")->isVisible());
        QCOMPARE(read(speed), QVariant(1250LL));
        QVERIFY(!read(sense).isValid());
        QCOMPARE(read(QStringLiteral("plant.cell.valve.open")), QVariant(false));
        QVERIFY(QDir(folder->path("state/vantry/unsaved")).entryList(QDir::Files).isEmpty());
        QCOMPARE(contentOf(folder->path("plant.json")), meanwhile);
        QTRY_VERIFY(desk->window->isWindowModified());

        QVERIFY(TestSupport::showActive(*desk->window));
        for (int step = 0; step < 1 + isConflict; ++step)
            QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(read(sense), QVariant(QStringLiteral("left")));
        QCOMPARE(read(speed), QVariant(theirs.toLongLong()));
        QVERIFY(!read(added).isValid());
    }

    // Long values are seen where they differ, and the choice at any width.
    void showsLongConflicts()
    {
        const QString text =
            QStringLiteral("a text of many words that does not fit into a column ").repeated(8);
        write(sense, QString(text + QLatin1Char('x')));
        TestSupport::writeFile(folder->path("plant.json"),
                               QByteArray(plant).replace("left", text.toUtf8() + 'y'));
        const DialogDriver driver([&](QWidget& dialog) {
            auto* const rows = dialog.findChild<QTreeWidget*>(QStringLiteral("conflictRows"));
            for (const int width : {1200, 200}) {
                dialog.resize(width, 400);
                QTRY_VERIFY(rows->visualItemRect(rows->topLevelItem(0)).height() > 60);
                const int end = rows->columnViewportPosition(3) + rows->columnWidth(3);
                QVERIFY(end <= rows->viewport()->width());
                QVERIFY(rows->columnWidth(3) >
                        rows->fontMetrics().horizontalAdvance(QStringLiteral("take theirs")));
            }
            press(dialog, "Cancel");
        });
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_VERIFY(driver.isDone());
    }

    void tellsFilesOfOneNameApart()
    {
        QVERIFY(QDir().mkdir(folder->path("spare")));
        const QString other = TestSupport::writeFile(folder->path("spare/plant.json"), plant);
        desk->window->openFiles({other});
        const QString first =
            QFileInfo(folder->path("plant.json")).dir().dirName() + QLatin1String("/plant.json");
        QTRY_COMPARE(desk->window->windowTitle(), first + QLatin1String(", limits.ini, spare/plant.json[*]"));
        auto* const menu = desk->part<QMenu>("closeFile");
        emit menu->aboutToShow();
        QCOMPARE(menu->actions().at(2)->text(), QStringLiteral("spare/plant.json (plant-2)"));
        for (QString tip : {menu->actions().at(2)->toolTip(),
                            desk->item(QStringLiteral("plant-2")).data(Qt::ToolTipRole).toString()})
            QVERIFY2(tip.remove(QChar(0x200B)).contains(other), qPrintable(tip));
        desk->repository->getWriterInterface()->writeAttributeValue(QStringLiteral("plant-2.cell.pump.name"),
                                                                    QStringLiteral("P2"), 8);
        fileMenu({"v", "Return"}); // no question: it is clear which one
        QTRY_COMPARE(contentOf(other), QByteArray(plant).replace("P1", "P2"));
    }

    void closesMany()
    {
        QStringList many;
        for (int number = 10; number < 40; ++number)
            many.append(TestSupport::writeFile(
                folder->path("f") + QString::number(number) + QLatin1String(".ini"), "k = 1\n"));
        desk->window->openFiles(many);
        QTRY_VERIFY(desk->item(QStringLiteral("f39.k")).isValid());
        auto* const menu = desk->part<QMenu>("closeFile");
        emit menu->aboutToShow();
        QVERIFY(menu->actions().size() <= 22);
        fileMenu({"c", "h"}, [](QWidget& dialog) {
            QVERIFY(TestSupport::typeText(QStringLiteral("f3")));
            QTRY_COMPARE(dialog.findChild<QLineEdit*>()->text(), QStringLiteral("f3"));
            for (const char* key : {"shift+Down", "Return"})
                QVERIFY(pressKey(QLatin1String(key)));
            QTRY_VERIFY(!dialog.isVisible());
        });
        QTRY_VERIFY(!desk->item(QStringLiteral("f30")).isValid());
        QVERIFY(!desk->item(QStringLiteral("f31")).isValid());
        QVERIFY(desk->item(QStringLiteral("f32")).isValid());
        write(speed, 1250);
        write(maximum, 130);
        QVERIFY(TestSupport::showActive(*desk->window)); // again, after the dialog
        const DialogDriver question([](QWidget& dialog) { press(dialog, "Save All"); });
        for (const char* key : {"alt+f", "a"})
            QVERIFY(pressKey(QLatin1String(key)));
        QTRY_VERIFY(question.isDone());
        QTRY_VERIFY(desk->repository->getBackendInterface()->getBackendNames().isEmpty());
        QVERIFY(contentOf(folder->path("limits.ini")).contains("130"));
        QVERIFY(contentOf(folder->path("plant.json")).contains("1250"));
    }

    void remembersFiles()
    {
        auto* const recent = desk->part<QMenu>("recentFiles");
        const auto entries = [recent] {
            emit recent->aboutToShow();
            QStringList texts;
            const auto actions = recent->actions();
            for (const QAction* action : actions)
                texts.append(action->text().section(QLatin1Char('/'), -1) +
                             (action->isEnabled() ? QString() : QStringLiteral("!")));
            return texts;
        };
        QCOMPARE(entries(), (QStringList{QStringLiteral("limits.ini"), QStringLiteral("plant.json"),
                                         QString(), QStringLiteral("&Clear This List")}));
        fileMenu({"c", "Return"});
        QTRY_VERIFY(!desk->item(QStringLiteral("plant")).isValid());
        QTRY_COMPARE(desk->window->windowTitle(), QStringLiteral("limits.ini[*]"));
        fileMenu({"r", "2"});
        QTRY_VERIFY(desk->item(QStringLiteral("plant.cell")).isValid());
        QVERIFY(QFile::remove(folder->path("limits.ini")));
        QCOMPARE(entries().mid(0, 2),
                 (QStringList{QStringLiteral("plant.json"), QStringLiteral("limits.ini (missing)!")}));
        fileMenu({"r", "c"});
        QTRY_COMPARE(entries(), QStringList(QStringLiteral("None yet!")));
    }

private:
    // As the next start of the program.
    void startAnew(const QStringList& files = {})
    {
        desk.reset();
        desk = std::make_unique<RunningDesk>(*folder, files);
        QVERIFY(TestSupport::showActive(*desk->window));
        if (!files.isEmpty())
            QTRY_VERIFY(desk->item(QStringLiteral("plant.cell")).isValid());
        desk->window->showKeptChanges();
        QVERIFY(desk->part<QWidget>("keptChangesBar")->isVisible());
    }

    // In the row of the only file.
    void pressKept(const char* name)
    {
        QVERIFY(TestSupport::showActive(*desk->window)); // again, after a dialog
        QTest::mouseClick(desk->part<QPushButton>(name), Qt::LeftButton);
    }

    void write(const QString& path, const QVariant& value)
    {
        QCOMPARE(desk->repository->getWriterInterface()->writeAttributeValue(path, value, 8), 0);
    }

    QVariant read(const QString& path) const
    {
        QVariant value;
        desk->repository->getReaderInterface()->readAttributeValue(path, value, 0);
        return value;
    }

    // Opens the speed's editor in the view and replaces what it holds.
    void type(QAbstractItemView& view, const QString& typed)
    {
        QModelIndex cell = desk->item(speed);
        if (auto* const table = qobject_cast<Utilities::ModelViews::AdvancedAttributeModel*>(view.model())) {
            table->loadCustomAttributeList({speed});
            cell = table->index(0, 0);
        }
        view.setFocus();
        view.setCurrentIndex(cell.sibling(cell.row(), 1));
        QVERIFY(pressKey(QStringLiteral("F2")));
        QTRY_VERIFY(qobject_cast<QLineEdit*>(QApplication::focusWidget()) &&
                    view.isAncestorOf(QApplication::focusWidget()));
        QVERIFY(TestSupport::typeText(typed));
        QTRY_COMPARE(qobject_cast<QLineEdit*>(QApplication::focusWidget())->text(), typed);
    }

    // With the mouse, in one of the window's menus.
    void choose(int menu, const QString& entry)
    {
        const QMenuBar& bar = *desk->window->menuBar();
        const QMenu& opened = *bar.actions().at(menu)->menu();
        QVERIFY(TestSupport::click(bar, bar.actionGeometry(bar.actions().at(menu)).center()));
        QTRY_COMPARE(QApplication::activePopupWidget(), static_cast<const QWidget*>(&opened));
        const auto actions = opened.actions();
        const auto found = std::find_if(actions.begin(), actions.end(), [&entry](const QAction* action) {
            return action->isEnabled() && action->text() == entry;
        });
        QVERIFY2(found != actions.end(), qPrintable(entry));
        QVERIFY(TestSupport::click(opened, opened.actionGeometry(*found).center()));
        QTRY_VERIFY(!QApplication::activePopupWidget());
    }

    // Opens a menu in the File menu by the first key and chooses there by the second; a dialog that comes
    // then is driven.
    void fileMenu(const QList<const char*>& keys, const std::function<void(QWidget&)>& drive = {})
    {
        QVERIFY(TestSupport::showActive(*desk->window)); // again, after a dialog
        QVERIFY(pressKey(QStringLiteral("alt+f")));
        QTRY_VERIFY(QApplication::activePopupWidget());
        const QWidget* const menu = QApplication::activePopupWidget();
        QVERIFY(pressKey(QLatin1String(keys.first())));
        QTRY_VERIFY(QApplication::activePopupWidget() != menu);
        std::optional<DialogDriver> driver;
        if (drive)
            driver.emplace(drive);
        QVERIFY(pressKey(QLatin1String(keys.last())));
        if (driver)
            QTRY_VERIFY(driver->isDone());
    }

    static QStringList textsOf(const QTreeWidget& rows)
    {
        QStringList texts;
        for (int row = 0; row < rows.topLevelItemCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < rows.columnCount(); ++column)
                cells.append(rows.topLevelItem(row)->text(column));
            texts.append(cells.join(QLatin1Char('|')));
        }
        return texts;
    }

    std::unique_ptr<RunningDesk::Folder> folder;
    std::unique_ptr<RunningDesk> desk;
    QByteArray plant; // the file as it was
};

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk-test"));
    return TestSupport::runTest<QApplication, DeskFilesTest>(argc, argv);
}

#include "desk_files_test.moc"
