#include "tests/desk/DeskTest.h"
#include "tests/support/Columns.h"

using TestSupport::DeskTest;
using TestSupport::pressKey;
using TestSupport::RunningDesk;
using Vantry::MainWindow;

// Several windows over one repository.
class DeskWindowsTest : public DeskTest
{
    Q_OBJECT

    static QTreeView* treeOf(const MainWindow& window)
    {
        return window.findChild<QTreeView*>(QStringLiteral("treeView"));
    }

    // The row of that path in the tree of a window.
    static QModelIndex item(const MainWindow& window, const QString& path)
    {
        QModelIndex found;
        for (const QString& name : path.split(QLatin1Char('.'))) {
            const auto matches = treeOf(window)->model()->match(treeOf(window)->model()->index(0, 0, found),
                                                                Qt::DisplayRole, name, 1, Qt::MatchExactly);
            if (matches.isEmpty())
                return {};
            found = matches.first();
        }
        return found;
    }

    static QString valueIn(const MainWindow& window, const QString& path)
    {
        return item(window, path).siblingAtColumn(1).data().toString();
    }

    void openSecond()
    {
        QVERIFY(TestSupport::showActive(*desk->window));
        QVERIFY(pressKey(QStringLiteral("ctrl+shift+n")));
        QTRY_COMPARE(desk->windows->getWindows().size(), 2);
        QVERIFY(TestSupport::showActive(second()));
        QTRY_VERIFY(item(second(), speed).isValid() && item(second(), maximum).isValid());
    }

    MainWindow& second() const { return *desk->windows->getWindows().last(); }

private slots:
    void init()
    {
        open();
        desk->windows->beginSession(false);
        openSecond();
    }
    void cleanup() { close(); }

    void showsEditsInAll()
    {
        treeOf(second())->setCurrentIndex(item(second(), maximum));
        desk->tree->setCurrentIndex(desk->item(speed));
        QVERIFY(TestSupport::showActive(*desk->window));
        type(*desk->tree, QStringLiteral("1300"));
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_COMPARE(valueIn(second(), speed), QStringLiteral("1300"));
        QTRY_VERIFY(second().isWindowModified() && desk->window->isWindowModified());
        QCOMPARE(treeOf(second())->currentIndex(), item(second(), maximum));

        // Undone in the other one.
        QVERIFY(TestSupport::showActive(second()));
        treeOf(second())->setFocus();
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(valueIn(*desk->window, speed), QStringLiteral("1200"));
    }

    void tellsARefusalWhereItWasTyped_data()
    {
        const auto row = TestSupport::columns<bool>("isSecond");
        row("first", false);
        row("second", true);
    }

    void tellsARefusalWhereItWasTyped()
    {
        QFETCH(bool, isSecond);
        MainWindow& typedIn = isSecond ? second() : *desk->window;
        const MainWindow& other = isSecond ? *desk->window : second();
        const auto isOffered = [](const MainWindow& window) {
            return window.findChild<QWidget*>(QStringLiteral("failureEdit"))->isVisible();
        };
        QVERIFY(TestSupport::showActive(typedIn));
        QTreeView& tree = *treeOf(typedIn);
        tree.setFocus();
        tree.setCurrentIndex(item(typedIn, speed).siblingAtColumn(1));
        QVERIFY(pressKey(QStringLiteral("F2")));
        QTRY_VERIFY(tree.isAncestorOf(QApplication::focusWidget()) &&
                    qobject_cast<QLineEdit*>(QApplication::focusWidget()));
        QVERIFY(TestSupport::typeText(QStringLiteral("fast")));
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_VERIFY(isOffered(typedIn));
        QVERIFY(!isOffered(other));

        // It is edited again there, and nowhere else.
        QTest::mouseClick(typedIn.findChild<QWidget*>(QStringLiteral("failureEdit")), Qt::LeftButton);
        QTRY_VERIFY(!tree.viewport()->findChildren<QLineEdit*>().isEmpty());
        QVERIFY(treeOf(other)->viewport()->findChildren<QLineEdit*>().isEmpty());
        QVERIFY(pressKey(QStringLiteral("Escape")));
    }

    void asksForTheLastOnly()
    {
        write(speed, 1300);
        QVERIFY(TestSupport::showActive(second()));
        const QPointer<MainWindow> closed = &second();
        QVERIFY(pressKey(QStringLiteral("ctrl+w")));
        QTRY_VERIFY(!closed);
        QCOMPARE(desk->windows->getWindows(), QList<MainWindow*>{desk->window});
        QVERIFY(desk->window->isVisible());
        QVERIFY2(
            !desk->repository->getTreeInterface()->getNodeInformation(QStringLiteral("desk.windows")).exists,
            "what belonged to the window alone is left in the tree");
        QCOMPARE(read(speed), QVariant(1300LL));

        QVERIFY(TestSupport::showActive(*desk->window));
        const TestSupport::DialogDriver driver([](QWidget& dialog) { press(dialog, "Cancel"); });
        QVERIFY(pressKey(QStringLiteral("ctrl+w")));
        QTRY_VERIFY(driver.isDone());
        QVERIFY(desk->window->isVisible());
        QVERIFY(TestSupport::showActive(*desk->window));
        write(speed, 1200);
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_VERIFY(!desk->window->isWindowModified());
    }

    void asksOnceWhenItEnds()
    {
        write(speed, 1300);
        QVERIFY(TestSupport::showActive(second()));
        int asked = 0;
        const TestSupport::DialogDriver driver([&asked](QWidget& dialog) {
            ++asked;
            press(dialog, "Discard");
        });
        QVERIFY(pressKey(QStringLiteral("ctrl+q")));
        QTRY_VERIFY(driver.isDone());
        QTRY_COMPARE(desk->windows->getWindows().size(), 1);
        QTRY_VERIFY(!desk->windows->getWindows().first()->isVisible());
        QCOMPARE(asked, 1);
    }

    void bringsBackEach_data()
    {
        const auto row = TestSupport::columns<bool>("isClosed");
        row("closed", true);
        row("killed", false);
    }

    void bringsBackEach()
    {
        QFETCH(bool, isClosed);
        const QString cell = QStringLiteral("plant.cell");
        const QString oven = QStringLiteral("limits.oven");
        treeOf(*desk->window)->expand(item(*desk->window, QStringLiteral("plant")));
        treeOf(*desk->window)->collapse(item(*desk->window, QStringLiteral("limits")));
        treeOf(*desk->window)->setCurrentIndex(item(*desk->window, cell));
        treeOf(second())->collapse(item(second(), QStringLiteral("plant")));
        treeOf(second())->expand(item(second(), QStringLiteral("limits")));
        treeOf(second())->setCurrentIndex(item(second(), oven));
        second().findChild<QAction*>(QStringLiteral("showNavigation"))->trigger();
        QTRY_VERIFY(
            TestSupport::contentOf(folder->path("state/vantry/session.json")).contains(oven.toUtf8()) &&
            TestSupport::contentOf(folder->path("state/vantry/session.json")).contains(cell.toUtf8()));
        if (isClosed) {
            QVERIFY(pressKey(QStringLiteral("ctrl+q")));
            QTRY_VERIFY(!desk->windows->getWindows().first()->isVisible());
        }
        desk.reset();

        desk = std::make_unique<RunningDesk>(*folder, QStringList());
        desk->windows->beginSession(true);
        QCOMPARE(desk->windows->getWindows().size(), 2);
        QVERIFY(TestSupport::showActive(*desk->window));
        const auto isCurrent = [](const MainWindow& window, const QString& path) {
            const QModelIndex row = item(window, path);
            return row.isValid() && treeOf(window)->currentIndex() == row;
        };
        QTRY_VERIFY(isCurrent(*desk->window, cell) && isCurrent(second(), oven));
        QVERIFY(second().isVisible());
        const auto isExpanded = [this](const MainWindow& window, const char* path) {
            return treeOf(window)->isExpanded(item(window, QLatin1String(path)));
        };
        QVERIFY(isExpanded(*desk->window, "plant") && !isExpanded(*desk->window, "limits"));
        QVERIFY(!isExpanded(second(), "plant") && isExpanded(second(), "limits"));
    }

    void sharesBookmarks()
    {
        const auto isOffered = [](const MainWindow& window) {
            const auto actions = window.findChildren<QAction*>();
            return std::any_of(actions.begin(), actions.end(),
                               [](const QAction* action) { return action->text() == speed; });
        };
        treeOf(second())->setCurrentIndex(item(second(), maximum));
        QVERIFY(pressKey(QStringLiteral("ctrl+b")));
        QVERIFY(TestSupport::showActive(*desk->window));
        desk->tree->setFocus();
        desk->tree->setCurrentIndex(desk->item(speed));
        QVERIFY(pressKey(QStringLiteral("ctrl+b")));
        QTRY_VERIFY(isOffered(*desk->window));
        QVERIFY(TestSupport::showActive(second()));
        QTRY_VERIFY(isOffered(second()));
        QVERIFY(pressKey(QStringLiteral("alt+1")));
        QTRY_COMPARE(treeOf(second())->currentIndex(), item(second(), maximum));
        QVERIFY(pressKey(QStringLiteral("alt+2")));
        QTRY_COMPARE(treeOf(second())->currentIndex(), item(second(), speed));
    }

    void leadsToTheOthers()
    {
        QTRY_VERIFY(second().isActiveWindow());
        const auto menus = second().menuBar()->actions();
        const auto found = std::find_if(menus.begin(), menus.end(), [](const QAction* action) {
            return action->text() == QLatin1String("&Window");
        });
        QVERIFY(found != menus.end());
        const auto entries = (*found)->menu()->actions();
        QCOMPARE(entries.size(), 5); // new, close, a line, and both windows
        QVERIFY(entries[3]->text() != entries[4]->text());
        QVERIFY(!entries[3]->isChecked() && entries[4]->isChecked());
        entries[3]->trigger();
        QTRY_VERIFY(desk->window->isActiveWindow());
    }
};

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk-test"));
    return TestSupport::runTest<QApplication, DeskWindowsTest>(argc, argv);
}

#include "desk_windows_test.moc"
