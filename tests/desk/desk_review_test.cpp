#include "desk/changes/HunkView.h"
#include "desk/common/TreeSelection.h"
#include "desk/text/TextModel.h"
#include "tests/desk/DeskTest.h"
#include "tests/support/Columns.h"

#include <QClipboard>
#include <QDockWidget>
#include <QTextBlock>

using TestSupport::contentOf;
using TestSupport::DeskTest;
using TestSupport::DialogDriver;
using TestSupport::pressKey;

namespace {

const QByteArray net = "# the gateway\n[outer]\nport = 80 # of http\n\n# how long\n# it waits\ntimeout = 5\n"
                       "# whom\nnames = [\"a\"]\n\n[inner]\nport = 8080\n";

// Indented, a row a line, cells between bars, "!" in front of what is selected.
QStringList rowsOf(const QTreeView& view, const QModelIndex& parent = {}, const QString& indent = {})
{
    QStringList rows;
    const QAbstractItemModel& model = *view.model();
    for (int number = 0; number < model.rowCount(parent); ++number) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(parent); ++column)
            cells.append(model.index(number, column, parent).data().toString());
        while (!cells.isEmpty() && cells.last().isEmpty())
            cells.removeLast();
        rows.append(indent + cells.join(QLatin1Char('|')));
        rows += rowsOf(view, model.index(number, 0, parent), indent + QLatin1Char(' '));
    }
    return rows;
}

} // namespace

// What is unsaved is looked through, in the rows of the changes and in the text.
class DeskReviewTest : public DeskTest
{
    Q_OBJECT

private slots:
    void init()
    {
        open();
        const QString file = TestSupport::writeFile(folder->path("net.toml"), net);
        desk->window->openFiles({file});
        QTRY_VERIFY(desk->item(port).isValid());
    }
    void cleanup() { close(); }

    // A value of which only the name is known is found, three files are edited, and what is saved is chosen.
    void reviewsAndSaves()
    {
        QVERIFY(pressKey(QStringLiteral("ctrl+f")));
        QTRY_VERIFY(desk->part<QDockWidget>("findDock")->isAncestorOf(QApplication::focusWidget()));
        QVERIFY(TestSupport::typeText(QStringLiteral("maxi")));
        QTRY_COMPARE(desk->part<QTreeView>("findHits")->model()->rowCount(), 1);
        for (const char* const key : {"Return", "Return"}) // to the hits, and to what is hit
            QVERIFY(pressKey(QLatin1String(key)));
        QTRY_COMPARE(Vantry::currentInTree(*desk->window), maximum);
        enter(maximum, "130");
        enter(speed, "1250");
        enter(port, "81");
        enter(QStringLiteral("net.inner.port"), "8081");

        showChanges();
        const auto& rows = *desk->part<QTreeView>("changeRows");
        QTRY_COMPARE(rowsOf(rows),
                     text("plant.json (plant)|1 change\n cell.pump.motor.speed|changed|1200|1250\n"
                          "limits.ini (limits)|1 change\n oven.maximum|changed|125|130\n"
                          "net.toml (net)|2 changes\n outer.port|changed|80|81\n"
                          " inner.port|changed|8080|8081"));
        QTRY_COMPARE(desk->part<QDockWidget>("changesDock")->windowTitle(), QStringLiteral("Changes (3)"));

        clickRow(QStringLiteral("cell.pump.motor.speed"));
        QTRY_VERIFY(hunks().toPlainText().contains(QStringLiteral("\"speed\": 1250")));
        press("dropChanges");
        QTRY_COMPARE(read(speed), QVariant(1200LL));
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(read(speed), QVariant(1250LL));
        QTRY_COMPARE(rows.model()->rowCount(), 3);

        clickRow(QStringLiteral("outer.port"));
        press("saveChanges");
        QTRY_COMPARE(contentOf(folder->path("net.toml")), QByteArray(net).replace("80 #", "81 #"));
        QTRY_COMPARE(rowsOf(rows).mid(4), text("net.toml (net)|1 change\n inner.port|changed|8080|8081"));
        QCOMPARE(contentOf(folder->path("plant.json")), plant);

        clickRow(QStringLiteral("oven.maximum"));
        QVERIFY(pressKey(QStringLiteral("ctrl+Down"))); // nothing but the keyboard's place
        clickRow(QStringLiteral("inner.port"), Qt::ControlModifier);
        press("saveChanges");
        QTRY_COMPARE(contentOf(folder->path("limits.ini")), QByteArray("[oven]\nmaximum = 130\n"));
        QCOMPARE(contentOf(folder->path("net.toml")),
                 QByteArray(net).replace("80 #", "81 #").replace("8080", "8081"));
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_COMPARE(rowsOf(rows), QStringList());
        QTRY_COMPARE(desk->part<QDockWidget>("changesDock")->windowTitle(), QStringLiteral("Changes"));
        QVERIFY(contentOf(folder->path("plant.json")).contains("1250"));
    }

    // A whole file, which is asked about, and an attribute of another, as one step.
    void dropsInOneStep()
    {
        write(maximum, 130);
        write(port, 81);
        write(QStringLiteral("net.inner.port"), 8081);
        showChanges();
        clickRow(QStringLiteral("limits.ini (limits)"));
        clickRow(QStringLiteral("inner.port"), Qt::ControlModifier);
        {
            const DialogDriver driver([](QWidget& dialog) { DeskTest::press(dialog, "Revert"); });
            QTest::mouseClick(desk->part<QPushButton>("dropChanges"), Qt::LeftButton);
        }
        QTRY_COMPARE(read(maximum), QVariant(125LL));
        QCOMPARE(read(QStringLiteral("net.inner.port")), QVariant(8080LL));
        QCOMPARE(read(port), QVariant(81LL));
        QVERIFY(desk->repository->getHistoryInterface()->undo());
        QCOMPARE(read(maximum), QVariant(130LL));
        QCOMPARE(read(QStringLiteral("net.inner.port")), QVariant(8081LL));
    }

    void choosesHunks()
    {
        write(port, 81);
        write(QStringLiteral("net.inner.port"), 8081);
        showChanges();
        QTRY_COMPARE(hunks().getChosen().size(), 0); // at the names of the file
        clickRow(QStringLiteral("inner.port"));
        QTRY_COMPARE(hunks().getChosen().size(), 1);
        QVERIFY(hunks().getChosen().first().contains(QStringLiteral("+port = 8081")));
        press("dropHunks");
        QTRY_COMPARE(read(QStringLiteral("net.inner.port")), QVariant(8080LL));
        QTRY_COMPARE(hunks().toPlainText().count(QStringLiteral("@@ -")), 1);
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(hunks().toPlainText().count(QStringLiteral("@@ -")), 2);

        QVERIFY(TestSupport::click(*hunks().viewport(), QPoint(4, 4)));
        QTRY_COMPARE(hunks().getChosen().size(), 0); // the names of the file
        QVERIFY(pressKey(QStringLiteral("ctrl+a")));

        QTRY_COMPARE(hunks().getChosen().size(), 2);
        QTRY_COMPARE(desk->part<QPushButton>("saveHunks")->text(), QStringLiteral("Save 2 H&unks"));
        for (QTextBlock line = hunks().document()->begin(); line.isValid(); line = line.next()) {
            if (line.text() == QLatin1String("+port = 81 # of http"))
                QVERIFY(
                    TestSupport::click(*hunks().viewport(), hunks().cursorRect(QTextCursor(line)).center()));
        }
        QTRY_COMPARE(hunks().getChosen().size(), 1);
        press("saveHunks");
        QTRY_COMPARE(contentOf(folder->path("net.toml")), QByteArray(net).replace("80 #", "81 #"));
        QTRY_COMPARE(hunks().toPlainText().count(QStringLiteral("@@ -")), 1);
    }

    void resolvesConflicts_data()
    {
        const auto row = TestSupport::columns<QString, QVariant>("button", "value");
        row("mine", "keepMine", 130LL);
        row("theirs", "takeTheirs", 140LL);
        row("base", "takeBase", 125LL);
    }

    void resolvesConflicts()
    {
        QFETCH(QString, button);
        QFETCH(QVariant, value);
        write(maximum, 130);
        showChanges();
        const auto& rows = *desk->part<QTreeView>("changeRows");
        QTRY_COMPARE(rowsOf(rows).size(), 2);
        QVERIFY(!desk->part<QPushButton>("keepMine")->isEnabled());
        TestSupport::writeFile(folder->path("limits.ini"), "[oven]\n; hot\nmaximum = 140\n");
        QTRY_COMPARE(rowsOf(rows).last(), QStringLiteral(" oven.maximum|conflict|140|130|125"));
        clickRow(QStringLiteral("oven.maximum"));
        press(qPrintable(button));
        QTRY_COMPARE(read(maximum), value);
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_COMPARE(rowsOf(rows), QStringList());
        QCOMPARE(contentOf(folder->path("limits.ini")),
                 QByteArray("[oven]\n; hot\nmaximum = ") + value.toByteArray() + '\n');
    }

    void tellsThatAFileIsGone()
    {
        const QByteArray former = contentOf(folder->path("limits.ini"));
        write(maximum, 130);
        showChanges();
        const auto& rows = *desk->part<QTreeView>("changeRows");
        QTRY_COMPARE(rowsOf(rows).size(), 2);
        const QString gone = QStringLiteral(" .|conflict|(the file is gone)|(what is open)");
        QVERIFY(QFile::remove(folder->path("limits.ini")));
        QTRY_COMPARE(rowsOf(rows).value(1), gone);
        TestSupport::writeFile(folder->path("limits.ini"), former);
        QTRY_COMPARE(rowsOf(rows).value(1), QStringLiteral(" oven.maximum|changed|125|130"));
        QVERIFY(QFile::remove(folder->path("limits.ini")));
        QTRY_COMPARE(rowsOf(rows).value(1), gone);
        clickRow(QStringLiteral("."));
        press("keepMine");
        QTRY_VERIFY(!rowsOf(rows).join(QLatin1Char('\n')).contains(QLatin1String("conflict")));
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_COMPARE(contentOf(folder->path("limits.ini")), QByteArray("[oven]\nmaximum = 130\n"));
    }

    // Whatever keys the docks behind have.
    void takesTheirsByKey()
    {
        write(maximum, 130);
        TestSupport::writeFile(folder->path("limits.ini"), "[oven]\nmaximum = 140\n");
        QVERIFY(pressKey(QStringLiteral("ctrl+f")));
        QTRY_VERIFY(desk->part<QDockWidget>("findDock")->isAncestorOf(QApplication::focusWidget()));
        showChanges();
        const auto& rows = *desk->part<QTreeView>("changeRows");
        QTRY_COMPARE(rowsOf(rows).value(1), QStringLiteral(" oven.maximum|conflict|140|130|125"));
        clickRow(QStringLiteral("oven.maximum"));
        QVERIFY(pressKey(QStringLiteral("alt+t")));
        QTRY_COMPARE(read(maximum), QVariant(140LL));
        QVERIFY(pressKey(QStringLiteral("ctrl+f")));
        QTRY_VERIFY(desk->part<QDockWidget>("findDock")->isAncestorOf(QApplication::focusWidget()));
    }

    void followsInTheText()
    {
        desk->tree->setCurrentIndex(desk->item(port));
        QVERIFY(pressKey(QStringLiteral("ctrl+u")));
        QTRY_VERIFY(desk->part<QTreeView>("textRows"));
        const auto* const view = desk->part<QTreeView>("textRows");
        QTRY_VERIFY(view->isVisible());
        const auto& model = static_cast<const Vantry::TextModel&>(*view->model());
        QTRY_COMPARE(shownText(model), QString::fromUtf8(net).chopped(1));
        QTRY_COMPARE(markedAt(model), QStringLiteral("net.outer.port in 3"));
        QVERIFY(!hasTint(*view, 2));

        write(port, 8100);
        QTRY_COMPARE(shownText(model), QString::fromUtf8(net).chopped(1).replace(QLatin1String("80 #"),
                                                                                 QLatin1String("8100 #")));
        QTRY_VERIFY(hasTint(*view, 2));
        QVERIFY(!hasTint(*view, 6));
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_VERIFY(!hasTint(*view, 2));

        const QModelIndex line = model.index(11, Vantry::TextModel::TextColumn);
        QVERIFY(TestSupport::click(*view->viewport(), view->visualRect(line).topLeft() + QPoint(20, 4)));
        QTRY_COMPARE(Vantry::currentInTree(*desk->window), QStringLiteral("net.inner.port"));
        QTRY_COMPARE(markedAt(model), QStringLiteral("net.inner.port in 12"));
        QVERIFY(pressKey(QStringLiteral("ctrl+c")));
        QTRY_COMPARE(QApplication::clipboard()->text(), QStringLiteral("port = 8080"));

        const QModelIndex other = model.index(6, Vantry::TextModel::TextColumn);
        QVERIFY(TestSupport::click(*view->viewport(), view->visualRect(other).topLeft() + QPoint(20, 4),
                                   Qt::RightButton));
        QTRY_VERIFY(QApplication::activePopupWidget());
        for (const char* const key : {"c", "m"}) // Copy, Command
            QVERIFY(pressKey(QLatin1String(key)));
        QTRY_COMPARE(QApplication::clipboard()->text(),
                     QStringLiteral("vantry set %1 outer.timeout 5").arg(folder->path("net.toml")));

        desk->tree->setCurrentIndex(desk->item(maximum));
        QTRY_COMPARE(shownText(model), QStringLiteral("[oven]\nmaximum = 125"));
        QTRY_COMPARE(markedAt(model), QStringLiteral("limits.oven.maximum in 2"));
    }

    // Of a node without a value, the first value below it comes in sight.
    void followsToGroups()
    {
        constexpr int count = 200;
        QByteArray many;
        for (int number = 0; number < count; ++number)
            many += QByteArrayLiteral("[s") + QByteArray::number(number) + QByteArrayLiteral("]\na = 1\n");
        desk->window->openFiles({TestSupport::writeFile(folder->path("many.ini"), many)});
        QTRY_VERIFY(desk->item(QStringLiteral("many.s150")).isValid());
        desk->tree->setCurrentIndex(desk->item(QStringLiteral("many.s0.a")));
        QVERIFY(pressKey(QStringLiteral("ctrl+u")));
        QTRY_VERIFY(desk->part<QTreeView>("textRows"));
        auto* const view = desk->part<QTreeView>("textRows");
        const auto& model = static_cast<const Vantry::TextModel&>(*view->model());
        QTRY_COMPARE(markedAt(model), QStringLiteral("many.s0.a in 2"));
        desk->tree->setCurrentIndex(desk->item(QStringLiteral("many.s150")));
        const QModelIndex line = model.index(2 * 150 + 1, Vantry::TextModel::TextColumn);
        QTRY_VERIFY(view->viewport()->rect().contains(view->visualRect(line).topLeft()));
        QVERIFY(!model.getMarked());
    }

private:
    static inline const QString port = QStringLiteral("net.outer.port");

    static QStringList text(const char* lines) { return QString::fromUtf8(lines).split(QLatin1Char('\n')); }

    Vantry::HunkView& hunks() const { return *desk->part<Vantry::HunkView>("hunks"); }

    // With the keys, in the tree.
    void enter(const QString& path, const char* value)
    {
        type(*desk->tree, QLatin1String(value), path);
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_COMPARE(read(path).toString(), QString(QLatin1String(value)));
    }

    void showChanges()
    {
        QVERIFY(pressKey(QStringLiteral("F7")));
        QTRY_VERIFY(desk->part<QTreeView>("changeRows") && desk->part<QTreeView>("changeRows")->isVisible());
        QTRY_VERIFY(desk->part<QTreeView>("changeRows")->currentIndex().isValid());
    }

    void clickRow(const QString& name, Qt::KeyboardModifier modifier = Qt::NoModifier)
    {
        const auto& rows = *desk->part<QTreeView>("changeRows");
        const auto found = rows.model()->match(rows.model()->index(0, 0), Qt::DisplayRole, name, 1,
                                               Qt::MatchExactly | Qt::MatchRecursive);
        QVERIFY2(!found.isEmpty(), qPrintable(name));
        QTest::mouseClick(rows.viewport(), Qt::LeftButton, modifier, rows.visualRect(found.first()).center());
    }

    void press(const char* name)
    {
        auto* const button = desk->part<QPushButton>(name);
        QVERIFY2(button->isEnabled(), name);
        QVERIFY(TestSupport::click(*button, button->rect().center()));
    }

    static QString shownText(const Vantry::TextModel& model)
    {
        QStringList lines;
        for (int row = 0; row < model.rowCount(); ++row)
            lines.append(model.index(row, Vantry::TextModel::TextColumn).data().toString());
        return lines.join(QLatin1Char('\n'));
    }

    static QString markedAt(const Vantry::TextModel& model)
    {
        const auto* const marked = model.getMarked();
        return marked ? QStringLiteral("%1 in %2")
                            .arg(marked->path)
                            .arg(model.getRows()->getLine(model.getRows()->findRow(marked->offset)))
                      : QString();
    }

    static bool hasTint(const QTreeView& view, int row)
    {
        const QRect place = view.visualRect(view.model()->index(row, Vantry::TextModel::TextColumn));
        const QImage picture = const_cast<QTreeView&>(view).viewport()->grab(place).toImage();
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, 2) == QColor(255, 224, 130))
                return true;
        }
        return false;
    }
};

VANTRY_TEST_MAIN(QApplication, DeskReviewTest)

#include "desk_review_test.moc"
