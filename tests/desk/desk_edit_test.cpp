#include "desk/log/FailureHint.h"
#include "tests/desk/DeskTest.h"

#include <QMessageBox>

using TestSupport::DialogDriver;
using TestSupport::pressKey;

// What the Edit menu does with the selected node, by keys and mouse.
class DeskEditTest : public TestSupport::DeskTest
{
    Q_OBJECT

    QString list = QStringLiteral("lists.all");

    QString shownPath() const { return desk->tree->currentIndex().data(Qt::UserRole).toString(); }

    QStringList values() const
    {
        QStringList texts;
        const QStringList names = desk->repository->getTreeInterface()->getChildNames(list);
        for (const QString& name : names)
            texts.append(read(list + QLatin1Char('.') + name).toString());
        return texts;
    }

    void select(const QString& path)
    {
        QTRY_VERIFY(desk->item(path).isValid());
        desk->tree->setFocus();
        desk->tree->setCurrentIndex(desk->item(path));
    }

    // By the mouse, in the menu that has the action; a dialog that comes then is driven.
    void choose(const char* name, const std::function<void(QWidget&)>& drive = {})
    {
        auto* const action = desk->part<QAction>(name);
        const auto menus = desk->window->findChildren<QMenu*>();
        for (QMenu* const menu : menus) {
            if (!menu->actions().contains(action))
                continue;
            QTRY_VERIFY2(action->isEnabled(), name);
            menu->popup({0, 0});
            QTRY_VERIFY(menu->isVisible());
            std::optional<DialogDriver> driver;
            if (drive)
                driver.emplace(drive);
            QVERIFY(TestSupport::click(*menu, menu->actionGeometry(action).center()));
            QTRY_VERIFY(!menu->isVisible());
            if (driver)
                QTRY_VERIFY(driver->isDone());
            QVERIFY(TestSupport::showActive(*desk->window)); // again, after a dialog
            return;
        }
        QFAIL(name);
    }

    void answer(const char* name, const QString& typed)
    {
        choose(name, [&typed](QWidget& dialog) {
            auto* const line = dialog.findChild<QLineEdit*>();
            line->selectAll();
            QTest::keyClicks(line, typed);
            QTest::keyClick(line, Qt::Key_Return);
        });
    }

    bool isOffered(const char* name) const { return desk->part<QAction>(name)->isEnabled(); }

private slots:
    void init()
    {
        open();
        TestSupport::writeFile(folder->path("lists.json"),
                               "{\"all\": [1, \"b\", {\"c\": null}], \"d\": 5}\n");
        desk->window->openFiles({folder->path("lists.json")});
        QTRY_VERIFY(desk->item(list).isValid());
    }
    void cleanup() { close(); }

    // Undo texts and refusals show file names as they are on disk, not as paths encode them.
    void namesFilesAsTheyAre()
    {
        QVERIFY(QDir().mkpath(folder->path("site/net.d")));
        TestSupport::writeFile(folder->path("site/net.d/a.json"), "{\"x.y\": 1}\n");
        desk->window->openFiles({folder->path("site")});
        const QString path = QStringLiteral("site.net%2Ed.a%2Ejson.x%2Ey");
        const QString shown = QStringLiteral("site.net.d.a.json.x%2Ey");
        QTRY_VERIFY(desk->item(path).isValid());
        write(path, 2);
        QTRY_COMPARE(desk->part<QAction>("undo")->text(), QStringLiteral("&Undo Write ") + shown);
        desk->repository->getWriterInterface()->writeAttributeValue(path, QStringLiteral("two"), 8);
        QTRY_VERIFY(desk->part<Vantry::FailureHint>("failureHint")
                        ->toolTip()
                        .contains(QStringLiteral("'%1' was not set to 'two'").arg(shown)));
    }

    void renamesAndMoves()
    {
        select(speed);
        answer("renameNode", QStringLiteral("rate"));
        const QString rate = QStringLiteral("plant.cell.pump.motor.rate");
        QTRY_COMPARE(shownPath(), rate);
        QCOMPARE(read(rate).toInt(), 1200);
        QCOMPARE(read(speed), QVariant());
        answer("moveNode", QStringLiteral("plant.cell.rate"));
        QTRY_COMPARE(shownPath(), QStringLiteral("plant.cell.rate"));
        desk->tree->setFocus();
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(read(rate).toInt(), 1200);
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(read(speed).toInt(), 1200);

        // A name that is a path says what is meant instead.
        select(speed);
        std::optional<DialogDriver> warning;
        choose("renameNode", [&warning](QWidget& dialog) {
            warning.emplace([](QWidget& box) {
                QVERIFY(static_cast<QMessageBox&>(box).text().contains(QLatin1String("%2E")));
                QTest::keyClick(&box, Qt::Key_Escape);
            });
            auto* const line = dialog.findChild<QLineEdit*>();
            line->setText(QStringLiteral("a.b"));
            QTest::keyClick(line, Qt::Key_Return);
        });
        QTRY_VERIFY(warning->isDone());
        QCOMPARE(read(speed).toInt(), 1200);
    }

    void editsElements()
    {
        select(list + QStringLiteral(".1"));
        choose("insertBefore");
        QTRY_COMPARE(values(), (QStringList{QStringLiteral("1"), QString(), QStringLiteral("b"), QString()}));
        QTRY_COMPARE(shownPath(), list + QStringLiteral(".1"));
        select(list + QStringLiteral(".3"));
        choose("insertAfter"); // beside a group, at the end
        QTRY_COMPARE(values().size(), 5);
        QTRY_COMPARE(shownPath(), list + QStringLiteral(".4"));
        select(list + QStringLiteral(".2"));
        QVERIFY(pressKey(QStringLiteral("ctrl+shift+Up")));
        QTRY_COMPARE(values().at(1), QStringLiteral("b"));
        QTRY_COMPARE(shownPath(), list + QStringLiteral(".1"));
        QVERIFY(pressKey(QStringLiteral("ctrl+shift+Up")));
        QTRY_COMPARE(values().at(0), QStringLiteral("b"));
        QTRY_COMPARE(shownPath(), list + QStringLiteral(".0"));
        QVERIFY(pressKey(QStringLiteral("ctrl+shift+Up"))); // is the first
        QVERIFY(pressKey(QStringLiteral("ctrl+shift+Down")));
        QTRY_COMPARE(values().at(1), QStringLiteral("b"));
        QTRY_COMPARE(shownPath(), list + QStringLiteral(".1"));
        QVERIFY(pressKey(QStringLiteral("ctrl+d")));
        QTRY_COMPARE(values().mid(0, 3),
                     (QStringList{QStringLiteral("1"), QStringLiteral("b"), QStringLiteral("b")}));
    }

    void takesBackSingleValues()
    {
        select(QStringLiteral("lists.d"));
        choose("setNull");
        QTRY_VERIFY(!read(QStringLiteral("lists.d")).isValid());
        write(list + QStringLiteral(".0"), 7);
        QTRY_VERIFY(isOffered("revertNode"));
        choose("revertNode");
        QTRY_COMPARE(read(QStringLiteral("lists.d")).toInt(), 5);
        QCOMPARE(read(list + QStringLiteral(".0")).toInt(), 7); // only the selected one
    }

    void duplicatesAndDeletes()
    {
        select(QStringLiteral("plant.cell.pump"));
        answer("duplicateNode", QStringLiteral("spare"));
        QTRY_COMPARE(shownPath(), QStringLiteral("plant.cell.spare"));
        QCOMPARE(read(QStringLiteral("plant.cell.spare.motor.speed")).toInt(), 1200);
        const auto remove = [this](const char* key, bool isLast = false) {
            choose("deleteNode", [key, isLast](QWidget& question) {
                const QString text = static_cast<QMessageBox&>(question).text();
                QVERIFY2(text.contains(QLatin1String("the 4 entries below it")), qPrintable(text));
                QVERIFY2(text.contains(QLatin1String("Undo")), qPrintable(text));
                if (isLast)
                    QVERIFY(pressKey(QStringLiteral("alt+n")));
                QVERIFY(pressKey(QLatin1String(key)));
                QTRY_VERIFY(!question.isVisible());
            });
        };
        const QString spare = QStringLiteral("plant.cell.spare");
        remove("Escape");
        remove("Return"); // which takes the safe way
        QVERIFY(desk->item(spare).isValid());
        remove("alt+d");
        QTRY_VERIFY(!desk->item(spare).isValid());

        // Whoever knows it is not asked any more, until they wish to be.
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        select(spare);
        remove("alt+d", true);
        QTRY_VERIFY(!desk->item(spare).isValid());
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        select(spare);
        choose("deleteNode");
        QTRY_VERIFY(!desk->item(spare).isValid());
        choose("askAgain");
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        select(spare);
        remove("alt+d");
        QTRY_VERIFY(!desk->item(spare).isValid());
    }

    // Wherever it is.
    void followsTheSelection()
    {
        select(QStringLiteral("plant"));
        QTRY_VERIFY(!isOffered("renameNode"));
        select(sense);
        QTRY_VERIFY(isOffered("renameNode") && isOffered("setNull") && !isOffered("insertBefore"));
        select(list + QStringLiteral(".2"));
        QTRY_VERIFY(isOffered("insertBefore") && !isOffered("setNull"));
        auto& watched = *desk->window->findChild<Utilities::ModelViews::AdvancedAttributeModel*>();
        watched.loadCustomAttributeList({maximum});
        auto* const table = desk->part<QTableView>("appConfigDataAccessWidget");
        table->setFocus();
        table->setCurrentIndex(watched.index(0, 1));
        answer("renameNode", QStringLiteral("most"));
        QTRY_COMPARE(shownPath(), QStringLiteral("limits.oven.most"));

        QVERIFY(pressKey(QStringLiteral("ctrl+f")));
        QTRY_VERIFY(desk->part<QTreeView>("findHits"));
        QVERIFY(TestSupport::typeText(QStringLiteral("sense")));
        QTRY_COMPARE(desk->part<QTreeView>("findHits")->model()->rowCount(), 1);
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_VERIFY(desk->part<QTreeView>("findHits")->hasFocus());
        answer("renameNode", QStringLiteral("way"));
        QTRY_COMPARE(shownPath(), QStringLiteral("plant.cell.pump.motor.way"));
    }
};

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk-test"));
    return TestSupport::runTest<QApplication, DeskEditTest>(argc, argv);
}

#include "desk_edit_test.moc"
