#include "desk/common/TreeSelection.h"
#include "desk/places/EditorCommand.h"
#include "tests/desk/DeskTest.h"
#include "tests/support/Columns.h"

#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QToolButton>

using TestSupport::contentOf;
using TestSupport::DeskTest;
using TestSupport::DialogDriver;
using TestSupport::pressKey;

// Where attributes are in their files.
class DeskPlacesTest : public DeskTest
{
    Q_OBJECT

private slots:
    void init()
    {
        open();
        QApplication::clipboard()->clear();
    }
    void cleanup() { close(); }

    // By the keys of the tree, edits, and other programs.
    void followsTheSelection()
    {
        const auto* const place = desk->part<QToolButton>("place");
        const auto* const comment = desk->part<QLabel>("comment");
        QVERIFY(!place->isVisible());
        select(maximum);
        QTRY_COMPARE(place->text(), QStringLiteral("limits.ini:2:11"));
        QVERIFY(!comment->isVisible());
        select(speed);
        QTRY_COMPARE(place->text(), QStringLiteral("plant.json:1:39"));
        QVERIFY(pressKey(QStringLiteral("Down")));
        QTRY_COMPARE(place->text(), QStringLiteral("plant.json:1:54"));

        select(maximum);
        QVERIFY(
            desk->repository->getWriterInterface()->createAttribute(QStringLiteral("limits.first"), 1, 2, 3));
        QTRY_VERIFY(place->toolTip().contains(QStringLiteral("Line 4 once it is saved")));
        QCOMPARE(place->text(), QStringLiteral("limits.ini:2:11"));
        select(QStringLiteral("limits.first"));
        QTRY_COMPARE(place->text(), QStringLiteral("limits.ini:1:1, not saved yet"));
        select(maximum);
        TestSupport::writeFile(folder->path("limits.ini"),
                               "[oven]\n; <b>the hottest\n; of all\nmaximum = 130\n");
        QTRY_COMPARE(place->text(), QStringLiteral("limits.ini:4:11"));
        QTRY_VERIFY(comment->isVisible());
        QCOMPARE(comment->text(), QStringLiteral("; <b>the hottest\n; of all"));
        QVERIFY(place->toolTip().contains(folder->path("limits.ini") + QStringLiteral(":4:11")));
        QVERIFY(place->toolTip().contains(QStringLiteral("Line 6 once it is saved")));
        QVERIFY2(place->toolTip().contains(QStringLiteral("; &lt;b&gt;the hottest")),
                 qPrintable(place->toolTip()));

        select(QStringLiteral("internal"));
        QTRY_VERIFY(!place->isVisible());
        QVERIFY(!comment->isVisible());
    }

    void copiesAndOpensTheEditor()
    {
        const QString noted = folder->path("noted");
        const QString editor = folder->path("editor");
        TestSupport::writeFile(editor, "#!/bin/sh\nprintf '%s|' \"$@\" > \"" + QFile::encodeName(noted) +
                                           ".new\" && mv \"" + QFile::encodeName(noted) + ".new\" \"" +
                                           QFile::encodeName(noted) + "\"\n");
        QVERIFY(QFile::setPermissions(editor, QFile::ReadOwner | QFile::ExeOwner));
        Vantry::EditorCommand::choose(QLatin1Char('"') + editor + QStringLiteral("\" -l {line} {file}"));
        select(maximum);
        QTRY_VERIFY(desk->part<QToolButton>("place")->isVisible());
        QVERIFY(pressKey(QStringLiteral("ctrl+shift+l")));
        QTRY_COMPARE(QApplication::clipboard()->text(), folder->path("limits.ini") + QStringLiteral(":2:11"));
        QVERIFY(pressKey(QStringLiteral("ctrl+shift+c")));
        QTRY_COMPARE(QApplication::clipboard()->text(), maximum);
        QVERIFY(pressKey(QStringLiteral("ctrl+alt+c")));
        QTRY_COMPARE(QApplication::clipboard()->text(), QStringLiteral("125"));
        QVERIFY(pressKey(QStringLiteral("F4")));
        QTRY_VERIFY(QFile::exists(noted));
        QCOMPARE(contentOf(noted), QByteArray("-l|2|") + QFile::encodeName(folder->path("limits.ini")) + '|');

        Vantry::EditorCommand::choose(folder->path("nothing there"));
        QVERIFY(pressKey(QStringLiteral("F4")));
        QTRY_VERIFY(desk->part<QWidget>("noticeBar")->isVisible());
    }

    // %1 is the folder.
    void goesToWhatIsPasted_data()
    {
        const auto row = TestSupport::columns<QString, QString, QString>("text", "path", "fault");
        row("a path", "plant.cell.valve.open", "plant.cell.valve.open", "");
        row("a file and a line", "%1/limits.ini:2", maximum, "");
        row("a line of grep", "%1/plant.json:2:  \"name\": \"P1\"}", "plant.cell.pump.name", "");
        row("a relative name and a column", "../plant.json:1:60:", sense, "");
        row("the end of a name, as the file is on the disk", "limits.ini:1", maximum, "");
        row("a column", "plant.json:1:40", speed, "");
        row("a file that is not open", "%1/broken.json:1", "", "%1/broken.json is not open");
        const QString far =
            QStringLiteral("%1/in/a/folder/of/which/the/path/fills/more/than/a/line/of/it/x.ini");
        row("a file of a long path", far + QStringLiteral(":1"), "", far + QStringLiteral(" is not open"));
        row("no such line", "limits.ini:99", "", "no value at the line or after it");
        row("nothing", "what", "", "neither the path of an attribute");
    }

    void goesToWhatIsPasted()
    {
        QFETCH(QString, text);
        QFETCH(QString, path);
        QFETCH(QString, fault);
        const QString here = folder->path(".").chopped(2);
        text.replace(QLatin1String("%1"), here);
        fault.replace(QLatin1String("%1"), here);
        QVERIFY( // a line above the others, which the file does not have yet
            desk->repository->getWriterInterface()->createAttribute(QStringLiteral("limits.first"), 1, 2, 3));
        QApplication::clipboard()->setText(text);
        select(QStringLiteral("limits"));
        QString said;
        const DialogDriver driver([&](QWidget& dialog) {
            auto* const field = dialog.findChild<QLineEdit*>(QStringLiteral("goToText"));
            if (field->text() != text) { // only what may be meant is taken from the clipboard
                QCOMPARE(field->text(), QString());
                QVERIFY(TestSupport::typeText(text));
                QTRY_COMPARE(field->text(), text);
            }
            QVERIFY(pressKey(QStringLiteral("Return")));
            const auto* const label = dialog.findChild<QLabel*>(QStringLiteral("goToFault"));
            QTRY_VERIFY(!dialog.isVisible() || !label->text().isEmpty());
            said = label->text().remove(QChar(0x200B));
            if (dialog.isVisible()) // with all lines of the fault
                QTRY_VERIFY(label->height() >= label->heightForWidth(label->width()));
            if (dialog.isVisible())
                QVERIFY(pressKey(QStringLiteral("Escape")));
        });
        QVERIFY(pressKey(QStringLiteral("ctrl+g")));
        QTRY_VERIFY(driver.isDone());
        if (path.isEmpty())
            QVERIFY2(said.contains(fault), qPrintable(said));
        else
            QTRY_COMPARE(Vantry::currentInTree(*desk->window), path);
    }

private:
    void select(const QString& path)
    {
        QVERIFY(TestSupport::showActive(*desk->window));
        desk->tree->setFocus();
        desk->tree->setCurrentIndex(desk->item(path));
    }
};

VANTRY_TEST_MAIN(QApplication, DeskPlacesTest)

#include "desk_places_test.moc"
