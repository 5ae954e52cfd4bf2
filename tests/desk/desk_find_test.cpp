#include "tests/desk/DeskTest.h"
#include "tests/support/Columns.h"

#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QMessageBox>
#include <QSettings>

#include <set>

using TestSupport::pressKey;

// Finding and replacing in the window, by keys and mouse.
class DeskFindTest : public TestSupport::DeskTest
{
    Q_OBJECT

    QTreeView& hits() const { return *desk->part<QTreeView>("findHits"); }
    QString status() const { return desk->part<QLabel>("findStatus")->text(); }

    QStringList foundRows() const
    {
        QStringList rows;
        for (int row = 0; row < hits().model()->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < hits().model()->columnCount(); ++column) {
                if (!hits().isColumnHidden(column))
                    cells.append(hits().model()->index(row, column).data().toString());
            }
            rows.append(cells.join(QLatin1Char('|')));
        }
        return rows;
    }

    QString shownPath() const { return desk->tree->currentIndex().data(Qt::UserRole).toString(); }

    void beginTyping(const char* key, const char* text)
    {
        QVERIFY(pressKey(QLatin1String(key)));
        QTRY_VERIFY(desk->part<QDockWidget>("findDock")->isAncestorOf(QApplication::focusWidget()));
        QVERIFY(TestSupport::typeText(QString::fromLatin1(text)));
    }

    void check(const char* box)
    {
        QTest::mouseClick(desk->part<QAbstractButton>(box), Qt::LeftButton, {}, {5, 8});
    }

private slots:
    void init() { open(); }
    void cleanup() { close(); }

    void selectsWhatItFinds()
    {
        beginTyping("ctrl+f", "SP");
        QTRY_COMPARE(foundRows(), QStringList(speed + QStringLiteral("|1200|plant.json:1")));
        QCOMPARE(status(), QStringLiteral("1 found"));
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_VERIFY(hits().hasFocus());
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_COMPARE(shownPath(), speed);
        QVERIFY(desk->tree->hasFocus());
        QVERIFY(TestSupport::typeText(QStringLiteral(" "))); // the tree hears the keys
        QVERIFY(pressKey(QStringLiteral("ctrl+f")));
        QVERIFY(TestSupport::typeText(QStringLiteral("zzz"))); // replaces what was selected
        QTRY_COMPARE(status(), QStringLiteral("Nothing found"));
    }

    // Whatever the tree was narrowed to.
    void leadsToWhatTheTreeLeavesOut_data()
    {
        const auto row = TestSupport::columns<bool>("isByBox");
        row("its search", false);
        row("its boxes", true);
    }

    void leadsToWhatTheTreeLeavesOut()
    {
        QFETCH(bool, isByBox);
        if (isByBox) {
            QTRY_VERIFY(desk->part<QComboBox>("cbFilter1")->isEnabled());
            desk->part<QComboBox>("cbFilter1")->setCurrentText(QStringLiteral("limits"));
        } else {
            desk->part<QLineEdit>("edtSearchPath")->setText(QStringLiteral("limits"));
            QTest::keyClick(desk->part<QLineEdit>("edtSearchPath"), Qt::Key_Return);
        }
        QTRY_VERIFY(!desk->item(speed).isValid());
        beginTyping("ctrl+f", "speed");
        QTRY_COMPARE(foundRows().size(), 1);
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_VERIFY(hits().hasFocus());
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_COMPARE(shownPath(), speed);
        QVERIFY(desk->item(maximum).isValid());
        QVERIFY(desk->part<QLineEdit>("edtSearchPath")->text().isEmpty());
        QVERIFY(desk->part<QLabel>("noticeText")->text().contains(speed));
    }

    void takesAllSwitches()
    {
        beginTyping("ctrl+f", "e");
        QTRY_COMPARE(foundRows().size(), 10); // names, also of the window's own
        check("findNames");
        QTRY_COMPARE(foundRows().size(), 3); // left, true, and the page that is shown
        check("findTypes");
        QTRY_COMPARE(foundRows().size(), 6); // texts and integers
        check("findTypes");
        check("findWhole");
        QTRY_COMPARE(status(), QStringLiteral("Nothing found"));
        desk->part<QComboBox>("findText")->setFocus();
        QVERIFY(pressKey(QStringLiteral("Tab")));
        QVERIFY(pressKey(QStringLiteral("Down")));
        QVERIFY(pressKey(QStringLiteral("shift+Tab")));
        QVERIFY(TestSupport::typeText(QStringLiteral("L*t")));
        QTRY_COMPARE(foundRows(), QStringList(sense + QStringLiteral("|left|plant.json:1")));
        check("findCase");
        QTRY_COMPARE(status(), QStringLiteral("Nothing found"));
    }

    void showsWhereAnExpressionIsWrong()
    {
        desk->part<QWidget>("findDock")->show();
        desk->part<QComboBox>("findSyntax")->setCurrentIndex(2);
        beginTyping("ctrl+f", "s(p");
        const QLabel& fault = *desk->part<QLabel>("findFault");
        QTRY_VERIFY(fault.isVisible());
        QCOMPARE(fault.text().section(QLatin1Char('\n'), 0, 0), QStringLiteral("s(p"));
        QCOMPARE(fault.text().section(QLatin1Char('\n'), 1).indexOf(QLatin1Char('^')), 3);
        QVERIFY(TestSupport::typeText(QStringLiteral(")")));
        QTRY_VERIFY(!fault.isVisible());
        QTRY_COMPARE(foundRows().size(), 1);
    }

    void searchesWhereItIsTold()
    {
        beginTyping("ctrl+f", "m");
        QTRY_COMPARE(foundRows().size(), 5);
        const auto chooseScope = [this](const QString& entry) {
            auto* const button = desk->part<QPushButton>("findScope");
            TestSupport::DialogDriver driver([&entry](QWidget& menu) {
                const auto actions = menu.actions();
                for (QAction* const action : actions) {
                    if (action->text().remove(QLatin1Char('&')) == entry)
                        QTest::mouseClick(&menu, Qt::LeftButton, {},
                                          static_cast<QMenu&>(menu).actionGeometry(action).center());
                }
            });
            QTest::mouseClick(button, Qt::LeftButton);
            QTRY_VERIFY(driver.isDone());
        };
        chooseScope(QStringLiteral("limits.ini"));
        QTRY_COMPARE(foundRows(), (QStringList{QStringLiteral("limits||limits.ini:2"),
                                               maximum + QStringLiteral("|125|limits.ini:2")}));
        chooseScope(QStringLiteral("plant.json"));
        QTRY_COMPARE(foundRows().size(), 5);
        desk->tree->setCurrentIndex(desk->item(QStringLiteral("plant.cell.pump.motor")));
        chooseScope(QStringLiteral("At and Below the Selected Node"));
        QTRY_COMPARE(foundRows(), QStringList(QStringLiteral("plant.cell.pump.motor||plant.json:1")));
        chooseScope(QStringLiteral("Everywhere"));
        QTRY_COMPARE(foundRows().size(), 5);
    }

    void goesOnAndBack()
    {
        desk->tree->setCurrentIndex(desk->item(maximum));
        beginTyping("ctrl+f", "se");
        QTRY_COMPARE(foundRows().size(), 1);
        QVERIFY(pressKey(QStringLiteral("Escape")));
        QTRY_VERIFY(!desk->part<QWidget>("findDock")->isVisible());
        QTRY_VERIFY(desk->tree->hasFocus());
        QVERIFY(pressKey(QStringLiteral("F3"))); // also while it is hidden
        QTRY_COMPARE(shownPath(), sense);
        beginTyping("ctrl+f", "m");
        QTRY_COMPARE(foundRows().size(), 5);
        QVERIFY(pressKey(QStringLiteral("F3")));
        QTRY_COMPARE(shownPath(), QStringLiteral("plant.cell.pump"));
        QVERIFY(pressKey(QStringLiteral("shift+F3")));
        QTRY_COMPARE(shownPath(), maximum); // around the end
    }

    void replacesWhatIsChecked()
    {
        write(QStringLiteral("plant.cell.pump.name"), QStringLiteral("2 of 12"));
        const QVariant limit = read(maximum);
        beginTyping("ctrl+h", "12");
        QVERIFY(pressKey(QStringLiteral("Tab")));
        QVERIFY(TestSupport::typeText(QStringLiteral("x")));
        QTRY_COMPARE(foundRows().size(), 3);
        QTRY_COMPARE(foundRows().at(1), QStringLiteral("plant.cell.pump.name|2 of 12|2 of x|plant.json:2"));
        QVERIFY2(foundRows().first().startsWith(speed + QStringLiteral("|1200|it holds a whole number")),
                 qPrintable(foundRows().first()));
        auto& button = *desk->part<QPushButton>("findReplace");
        QCOMPARE(button.text(), QStringLiteral("&Replace 2 Values"));
        QVERIFY(TestSupport::pressKey(QStringLiteral("BackSpace")));
        QVERIFY(TestSupport::typeText(QStringLiteral("3")));
        QTRY_COMPARE(foundRows().at(1), QStringLiteral("plant.cell.pump.name|2 of 12|2 of 3|plant.json:2"));
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_VERIFY(hits().hasFocus());
        QVERIFY(pressKey(QStringLiteral("Down")));
        QVERIFY(pressKey(QStringLiteral("space"))); // leaves the name as it is
        QTRY_COMPARE(button.text(), QStringLiteral("&Replace 2 Values"));
        QTest::mouseClick(&button, Qt::LeftButton);
        QTRY_COMPARE(read(speed).toInt(), 300);
        QCOMPARE(read(maximum).toInt(), 35);
        QCOMPARE(read(QStringLiteral("plant.cell.pump.name")).toString(), QStringLiteral("2 of 12"));
        QTRY_COMPARE(status(), QStringLiteral("1 found; 2 values replaced"));
        desk->tree->setFocus();
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(read(speed).toInt(), 1200);
        QCOMPARE(read(maximum), limit);
    }

    // A path is shown as people know the names in it, and copied as it is entered.
    void namesFilesAsTheyAre()
    {
        QVERIFY(QDir().mkpath(folder->path("site/net.d")));
        TestSupport::writeFile(folder->path("site/net.d/a.ini"), "x.y = only\n");
        desk->window->openFiles({folder->path("site")});
        QTRY_VERIFY(desk->item(QStringLiteral("site.net%2Ed.a%2Eini.x%2Ey")).isValid());
        beginTyping("ctrl+f", "only");
        QTRY_COMPARE(foundRows(), QStringList(QStringLiteral("site.net%2Ed.a%2Eini.x%2Ey|only|a.ini:1")));
        const QModelIndex path = hits().model()->index(0, 0);
        QCOMPARE(path.data(Qt::AccessibleTextRole).toString(), QStringLiteral("site.net.d.a.ini.x%2Ey"));
        QVERIFY(pressKey(QStringLiteral("ctrl+a")) && TestSupport::typeText(QStringLiteral("net%")));
        QTRY_COMPARE(hits().model()->index(0, 0).data(Qt::AccessibleTextRole).toString(),
                     QStringLiteral("site.net.d"));
    }

    // The page that is shown is an attribute, too.
    void replacesInFilesOnly()
    {
        beginTyping("ctrl+h", "attributes");
        QTRY_COMPARE(status(), QStringLiteral("Nothing found"));
        QVERIFY(pressKey(QStringLiteral("ctrl+f")));
        QTRY_COMPARE(status(), QStringLiteral("1 found"));
    }

    void asksBeforeItReplacesVeryMany()
    {
        constexpr int count = 11;
        const auto path = [](int number) { return QStringLiteral("limits.many.k%1").arg(number); };
        for (int i = 0; i < count; ++i)
            QVERIFY(desk->repository->getWriterInterface()->createAttribute(path(i), QStringLiteral("oldish"),
                                                                            2, 3));
        beginTyping("ctrl+h", "oldish");
        QTRY_COMPARE(foundRows().size(), count);
        desk->part<QLineEdit>("findReplacement")->setText(QStringLiteral("new"));
        auto& button = *desk->part<QPushButton>("findReplace");
        QTRY_VERIFY(button.isEnabled() && button.text().contains(QLatin1String("11")));
        const auto replace = [&button](const char* answer) {
            TestSupport::DialogDriver driver([answer](QWidget& question) {
                const QString text = static_cast<QMessageBox&>(question).text();
                QVERIFY2(text.contains(QLatin1String("Replace 11 values in one file?")), qPrintable(text));
                press(question, answer);
            });
            QTest::mouseClick(&button, Qt::LeftButton);
            QTRY_VERIFY(driver.isDone());
        };
        replace("Cancel");
        QCOMPARE(read(path(0)).toString(), QStringLiteral("oldish"));
        replace("Replace");
        QTRY_COMPARE(read(path(count - 1)).toString(), QStringLiteral("new"));
    }

    void tellsThatAValueHasChangedMeanwhile()
    {
        beginTyping("ctrl+h", "left");
        QTRY_COMPARE(foundRows().size(), 1);
        write(sense, QStringLiteral("left again"));
        QTest::mouseClick(desk->part<QPushButton>("findReplace"), Qt::LeftButton);
        QTRY_VERIFY2(status().contains(QStringLiteral("it has changed since it was found")),
                     qPrintable(status()));
        QCOMPARE(read(sense).toString(), QStringLiteral("left again"));
    }

    // Rows show what their attributes hold now. Those in sight are painted anew, the others once they come
    // into it.
    void followsValues()
    {
        constexpr int count = 200;
        const auto path = [](int number) { return QStringLiteral("limits.many.k%1").arg(number); };
        for (int i = 0; i < count; ++i)
            QVERIFY(desk->repository->getWriterInterface()->createAttribute(path(i), QStringLiteral("old"), 2,
                                                                            3));
        beginTyping("ctrl+f", "old");
        QTRY_COMPARE(status(), QStringLiteral("200 found"));
        const auto shown = [this](int row) { return hits().model()->index(row, 1).data().toString(); };
        std::set<int> painted;
        connect(hits().model(), &QAbstractItemModel::dataChanged, &hits(),
                [&painted](const QModelIndex& first) {
                    if (first.column() == 1)
                        painted.insert(first.row());
                });
        const auto isPainted = [this, &painted](int row) {
            return painted.count(row) == 1 && hits().visualRect(hits().model()->index(row, 1)).bottom() > 0;
        };
        write(path(0), QStringLiteral("newer")); // before it is watched, or after
        QTRY_VERIFY(isPainted(0));
        painted.clear();
        write(path(0), QStringLiteral("new"));
        write(path(count - 1), QStringLiteral("last"));
        QTRY_VERIFY(isPainted(0));
        QCOMPARE(shown(0), QStringLiteral("new"));
        QCOMPARE(shown(1), QStringLiteral("old"));
        QVERIFY(painted.count(count - 1) == 0);

        hits().scrollToBottom();
        QTRY_VERIFY(isPainted(count - 1));
        QCOMPARE(shown(count - 1), QStringLiteral("last"));
        QTRY_VERIFY(isPainted(count - 2));
        painted.clear();
        QVERIFY(desk->repository->getTreeInterface()->removeTree(path(count - 2)).ok());
        QTRY_VERIFY(isPainted(count - 2));
        QCOMPARE(shown(count - 2), QStringLiteral("(no longer there)"));
        painted.clear();
        QVERIFY(desk->repository->getBackendInterface()->closeBackend(QStringLiteral("limits"), true).ok());
        QTRY_VERIFY(isPainted(count - 1));
        QCOMPARE(shown(count - 1), QStringLiteral("(no longer there)"));
    }

    void remembersSearches()
    {
        desk->part<QWidget>("findDock")->show();
        check("findCase");
        for (int i = 0; i < 60; ++i) {
            desk->part<QComboBox>("findText")->setEditText(QStringLiteral("search%1").arg(i));
            QTest::keyClick(desk->part<QLineEdit>("findReplacement"), Qt::Key_Return);
        }
        startAnewWithFiles();
        beginTyping("ctrl+f", "");
        auto& text = *desk->part<QComboBox>("findText");
        QCOMPARE(text.count(), 50);
        QCOMPARE(text.itemText(0), QStringLiteral("search59"));
        QVERIFY(!desk->part<QAbstractButton>("findCase")->isChecked());
        QVERIFY(pressKey(QStringLiteral("Down")));
        QTRY_COMPARE(text.currentText(), QStringLiteral("search59"));
        QVERIFY(desk->part<QAbstractButton>("findCase")->isChecked());
    }

    void copiesRows()
    {
        beginTyping("ctrl+f", "se");
        QTRY_COMPARE(foundRows().size(), 1);
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_VERIFY(hits().hasFocus());
        QCOMPARE(hits().selectionModel()->selectedRows().size(), 1);
        QVERIFY(pressKey(QStringLiteral("ctrl+c")));
        QTRY_COMPARE(QApplication::clipboard()->text(), sense + QStringLiteral("\tleft\tplant.json:1\n"));
    }

private:
    void startAnewWithFiles()
    {
        desk.reset();
        desk = std::make_unique<TestSupport::RunningDesk>(
            *folder, QStringList{folder->path("plant.json"), folder->path("limits.ini")});
        QVERIFY(TestSupport::showActive(*desk->window));
    }
};

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk-test"));
    return TestSupport::runTest<QApplication, DeskFindTest>(argc, argv);
}

#include "desk_find_test.moc"
