#include "desk/log/FailureHint.h"
#include "host/Shared/Logging/LogRecord.h"
#include "tests/desk/DeskTest.h"
#include "tests/support/Columns.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>

using TestSupport::contentOf;
using TestSupport::DeskTest;
using TestSupport::DialogDriver;
using TestSupport::pressKey;

namespace {

QString inFile(const QString& path)
{
    return path.section(QLatin1Char('.'), 1);
}

} // namespace

// Changes that are not saved, and what becomes of them.
class DeskChangesTest : public DeskTest
{
    Q_OBJECT

private slots:
    void init() { open(); }
    void cleanup() { close(); }

    void asksBeforeChangesAreLost_data()
    {
        // isWindow: or only one of the files
        const auto row =
            TestSupport::columns<bool, QString, bool, bool>("isWindow", "button", "goes", "isSaved");
        for (const bool isWindow : {true, false}) {
            const QString whole = isWindow ? QStringLiteral("window: ") : QStringLiteral("file: ");
            const QString save = isWindow ? QStringLiteral("Save All") : QStringLiteral("Save");
            row(qPrintable(whole + save), isWindow, save, true, true);
            row(qPrintable(whole + QLatin1String("Discard")), isWindow, "Discard", true, false);
            row(qPrintable(whole + QLatin1String("Cancel")), isWindow, "Cancel", false, false);
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

    // What a number cannot hold, written by the action that the refusal names, and taken back.
    void changesTheTypeOfWhatWasEntered_data()
    {
        const auto row = TestSupport::columns<QString, QVariant, QString, QVariant, QString>(
            "path", "before", "typed", "value", "word");
        row("json", speed, 1200LL, "fast", QStringLiteral("fast"), "hold a text");
        row("ini", maximum, 125LL, "125C", QStringLiteral("125C"), "hold a text");
        row("ini, a text", maximum, QStringLiteral("auto"), "true", true, "hold true or false");
    }

    void changesTheTypeOfWhatWasEntered()
    {
        QFETCH(QString, path);
        QFETCH(QVariant, before);
        QFETCH(QString, typed);
        QFETCH(QVariant, value);
        QFETCH(QString, word);
        const auto* const hint = desk->part<Vantry::FailureHint>("failureHint");
        QVERIFY(desk->repository->getWriterInterface()->retype(path, before));
        type(*desk->tree, typed, path);
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_VERIFY(hint->isVisible());
        QTRY_VERIFY2(hint->getText().endsWith(QStringLiteral("; \"Change Type\" makes it ") + word),
                     qPrintable(hint->getText()));
        QCOMPARE(read(path), before);
        QVERIFY(pressKey(QStringLiteral("alt+t")));
        QTRY_COMPARE(read(path), value);
        QTRY_VERIFY(!hint->isVisible());
        QTRY_COMPARE(desk->item(path).siblingAtColumn(1).data().toString(), typed);
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(read(path), before);
    }

    // From the menu; what the file cannot hold is said in the dialog.
    void changesTheTypeByTheMenu()
    {
        desk->tree->setCurrentIndex(desk->item(maximum));
        QVERIFY(pressKey(QStringLiteral("alt+e")));
        QTRY_VERIFY(QApplication::activePopupWidget());
        const DialogDriver driver([](QWidget& dialog) {
            const auto said = [&dialog] {
                return dialog.findChild<QLabel*>(QStringLiteral("lblValueFault"))->text();
            };
            QVERIFY(pressKey(QStringLiteral("alt+e")));
            const auto* const types = dialog.findChild<QComboBox*>(QStringLiteral("cbType"));
            QTRY_COMPARE(QApplication::focusWidget(), static_cast<const QWidget*>(types));
            QVERIFY(TestSupport::typeText(QStringLiteral("Text")));
            QTRY_COMPARE(types->currentText(), QStringLiteral("Text"));
            QCOMPARE(dialog.findChild<QLineEdit*>()->text(), QStringLiteral("125"));
            QVERIFY(pressKey(QStringLiteral("Return")));
            QTRY_VERIFY2(said().contains(QLatin1String("back as a whole number")), qPrintable(said()));
            QVERIFY(pressKey(QStringLiteral("Tab")));
            QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(dialog.findChild<QLineEdit*>()));
            QVERIFY(TestSupport::typeText(QStringLiteral("infinity")));
            QTRY_COMPARE(dialog.findChild<QLineEdit*>()->text(), QStringLiteral("infinity"));
            QVERIFY(pressKey(QStringLiteral("Return")));
        });
        QVERIFY(pressKey(QStringLiteral("t")));
        QTRY_VERIFY(driver.isDone());
        QTRY_COMPARE(read(maximum), QVariant(QStringLiteral("infinity")));
        QVERIFY(TestSupport::showActive(*desk->window));
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_VERIFY(contentOf(folder->path("limits.ini")).contains("maximum = infinity"));
    }

    void letsChooseInConflicts_data()
    {
        // kept: what becomes of the second conflict
        const auto row = TestSupport::columns<QString, QString, QString>("button", "choice", "kept");
        row("theirs", "Take Theirs", "take theirs", "both");
        row("base", "Take Base", "take base", "left");
    }

    void letsChooseInConflicts()
    {
        QFETCH(QString, button);
        QFETCH(QString, choice);
        QFETCH(QString, kept);
        write(speed, 1250);
        write(sense, QStringLiteral("right"));
        QByteArray theirs = plant;
        theirs.replace("1200", "1300").replace("left", "both").replace("true", "false");
        TestSupport::writeFile(folder->path("plant.json"), theirs);
        DialogDriver driver([&](QWidget& dialog) {
            auto* const rows = dialog.findChild<QTreeWidget*>(QStringLiteral("conflictRows"));
            const QString row = inFile(sense) + QLatin1String("|right|both|left|");
            QCOMPARE(textsOf(*rows), (QStringList{inFile(speed) + QLatin1String("|1250|1300|1200|"), row}));
            press(dialog, "Save"); // not enabled before all are chosen
            QVERIFY(dialog.isVisible());
            press(dialog, "Keep Mine");
            rows->clearSelection();
            rows->topLevelItem(1)->setSelected(true);
            press(dialog, button.toUtf8().constData());
            QCOMPARE(textsOf(*rows).last(), row + choice);
            press(dialog, "Save");
        });
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_VERIFY(driver.isDone());
        QTRY_COMPARE(contentOf(folder->path("plant.json")),
                     QByteArray(theirs).replace("1300", "1250").replace("both", kept.toUtf8()));
        QCOMPARE(read(sense), QVariant(kept));
        QTRY_VERIFY(!desk->window->isWindowModified());
    }

    void writesAFileThatIsGoneAnew_data()
    {
        const auto row = TestSupport::columns<QString, QByteArray>("button", "value");
        row("mine", "Keep Mine", "1250");
        row("base", "Take Base", "1200");
    }

    void writesAFileThatIsGoneAnew()
    {
        QFETCH(QString, button);
        QFETCH(QByteArray, value);
        write(speed, 1250);
        QVERIFY(QFile::remove(folder->path("plant.json")));
        const DialogDriver driver([&](QWidget& dialog) {
            QCOMPARE(textsOf(*dialog.findChild<QTreeWidget*>(QStringLiteral("conflictRows"))),
                     QStringList(QStringLiteral(".|what is open|the file is gone|the file as it was|")));
            press(dialog, button.toUtf8().constData());
            press(dialog, "Save");
        });
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_VERIFY(driver.isDone());
        QTRY_COMPARE(contentOf(folder->path("plant.json")), QByteArray(plant).replace("1200", value));
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

    // As when the session ends: nobody is asked, and the next window tells where the changes are.
    void endsUnasked()
    {
        write(speed, 1250);
        const quint64 number = Shared::Logging::LogRecord::instance().getLastNumber();
        desk->windows->closeUnasked();
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
        // theirs: what another program has made of the file meanwhile
        const auto row = TestSupport::columns<QByteArray, bool, bool>("theirs", "isConflict", "isOpen");
        row("as it was", "1200", false, false);
        row("open already", "1200", false, true);
        row("in conflict", "1300", true, false);
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
        desk->windows->closeUnasked();
        QByteArray meanwhile = plant;
        meanwhile.replace("1200", theirs).replace("true", "false");
        TestSupport::writeFile(folder->path("plant.json"), meanwhile);
        startAnew(isOpen ? QStringList(folder->path("plant.json")) : QStringList());

        std::optional<DialogDriver> conflict;
        const auto drive = [](const char* key) {
            return [key](QWidget& dialog) {
                auto* const rows = dialog.findChild<QTreeWidget*>(QStringLiteral("conflictRows"));
                QCOMPARE(textsOf(*rows), QStringList(inFile(speed) + QLatin1String("|1250|1300|")));
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
            const auto* const apply = desk->part<QPushButton>("keptApply");
            QTRY_COMPARE(apply->visibleRegion().boundingRect().size(), apply->size());
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
        desk->tree->setFocus(); // a field for text has the key for itself
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
                const int end = rows->columnViewportPosition(4) + rows->columnWidth(4);
                QVERIFY(end <= rows->viewport()->width());
                QVERIFY(rows->columnWidth(4) >
                        rows->fontMetrics().horizontalAdvance(QStringLiteral("take theirs")));
            }
            press(dialog, "Cancel");
        });
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_VERIFY(driver.isDone());
    }
};

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk-test"));
    return TestSupport::runTest<QApplication, DeskChangesTest>(argc, argv);
}

#include "desk_changes_test.moc"
