#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "tests/desk/RunningDesk.h"
#include "tests/support/Columns.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestRun.h"

#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTextBrowser>
#include <QTreeView>

using TestSupport::pressKey;
using TestSupport::RunningDesk;
using Utilities::ModelViews::AdvancedAttributeModel;

namespace {

QImage pictureOf(const QWidget& window, const QWidget& part)
{
    // A little around it, since a style may draw the focus outside.
    const QRect place(part.mapTo(&window, QPoint(-3, -3)), part.size() + QSize(6, 6));
    return const_cast<QWidget&>(window).grab(place).toImage();
}

bool canBeReached(const QWidget& widget)
{
    return widget.isVisible() && widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) != 0 &&
           !widget.focusProxy();
}

// The failure bar is closed after some seconds; how it is reached is tested with it.
bool goesByItself(const QWidget& widget)
{
    return widget.objectName().startsWith(QLatin1String("failure"));
}

QString nameOf(const QWidget& widget)
{
    return QLatin1String(widget.metaObject()->className()) + QLatin1Char(' ') + widget.objectName();
}

} // namespace

// All work at the desk with the keys of a real keyboard alone.
class DeskKeyboardTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<RunningDesk::Folder>();
        desk = std::make_unique<RunningDesk>(
            *folder, QStringList{folder->path("plant.json"), folder->path("broken.json")});
        QVERIFY(TestSupport::showActive(*desk->window));
        QTRY_VERIFY(desk->item(QStringLiteral("plant.cell")).isValid());
        QTRY_VERIFY(desk->part<QWidget>("noticeBar")->isVisible());
        QTRY_VERIFY(desk->part<QComboBox>("cbFilter1")->isEnabled());
    }

    void cleanup()
    {
        desk.reset();
        folder.reset();
    }

    void reachesEverything_data()
    {
        const auto row = TestSupport::columns<QString>("key");
        row("forward", "Tab");
        row("backward", "shift+Tab");
    }

    // And shows each time where it is.
    void reachesEverything()
    {
        QFETCH(QString, key);
        QVERIFY(pressKey(QStringLiteral("F8")));
        QTRY_VERIFY(desk->part<QWidget>("logDock")->isVisible());
        QStringList expected;
        for (const QWidget* const widget : desk->window->findChildren<QWidget*>()) {
            if (canBeReached(*widget) && !goesByItself(*widget))
                expected.append(nameOf(*widget));
        }
        QVERIFY(expected.size() > 8);
        QStringList reached;
        QStringList invisible;
        const QWidget* const first = press(key);
        for (const QWidget* widget = first; widget && reached.size() < 40;) {
            if (!goesByItself(*widget))
                reached.append(nameOf(*widget));
            const QImage focused = pictureOf(*desk->window, *widget);
            const QWidget* const next = press(key);
            if (pictureOf(*desk->window, *widget) == focused && !goesByItself(*widget))
                invisible.append(nameOf(*widget));
            widget = next == first ? nullptr : next;
        }
        expected.sort();
        reached.sort();
        QCOMPARE(reached.join(QLatin1Char('\n')), expected.join(QLatin1Char('\n')));
        QCOMPARE(invisible.join(QLatin1Char(10)), QString());
    }

    void opensTheMenus()
    {
        for (const char* keys : {"alt+f", "alt+e", "alt+g", "alt+v", "alt+w", "alt+h"}) {
            QVERIFY(pressKey(QLatin1String(keys)));
            QTRY_VERIFY(QApplication::activePopupWidget());
            const auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            QVERIFY(menu && !menu->actions().isEmpty());
            QVERIFY(menu->title().contains(QLatin1Char('&') + QString(QLatin1Char(keys[4])),
                                           Qt::CaseInsensitive));
            QVERIFY(pressKey(QStringLiteral("Escape")));
            QTRY_VERIFY(!QApplication::activePopupWidget());
            QVERIFY(pressKey(QStringLiteral("Escape"))); // leaves the menu bar
        }
        auto* const navigation = desk->part<QWidget>("navigationArea");
        QVERIFY(pressKey(QStringLiteral("F9")));
        QTRY_VERIFY(!navigation->isVisible());
        QVERIFY(pressKey(QStringLiteral("F9")));
        QTRY_VERIFY(navigation->isVisible());
        QVERIFY(pressKey(QStringLiteral("ctrl+q")));
        QTRY_VERIFY(!desk->window->isVisible());
    }

    // Docks share a place; a key brings one to the front, closes it there, and leaves the window its size.
    void changesBetweenDocks()
    {
        const QSize size = desk->window->size();
        const auto isInFront = [this](const char* dock) {
            const auto* const widget = desk->part<QWidget>(dock);
            return widget->isVisible() && !widget->visibleRegion().isEmpty() &&
                   widget->isAncestorOf(QApplication::focusWidget());
        };
        goTo("treeView");
        QVERIFY(pressKey(QStringLiteral("F8")));
        QTRY_VERIFY(isInFront("logDock"));
        QVERIFY(pressKey(QStringLiteral("ctrl+f")));
        QTRY_VERIFY(isInFront("findDock"));
        for (const char* keys : {"alt+v", "o"}) { // has no key of its own
            QVERIFY(pressKey(QLatin1String(keys)));
            QTRY_COMPARE(QApplication::activePopupWidget() != nullptr,
                         QLatin1String(keys) == QLatin1String("alt+v"));
        }
        QTRY_VERIFY(isInFront("problemsDock"));
        QVERIFY(pressKey(QStringLiteral("F8"))); // which is behind
        QTRY_VERIFY(isInFront("logDock"));
        QVERIFY(desk->part<QDockWidget>("logDock")->toggleViewAction()->isChecked());
        QCOMPARE(desk->window->size(), size);
        QVERIFY(pressKey(QStringLiteral("F8")));
        QTRY_VERIFY(!desk->part<QWidget>("logDock")->isVisible());
        QVERIFY(pressKey(QStringLiteral("ctrl+f")));
        QTRY_VERIFY(isInFront("findDock"));
        goTo("treeView");
        QVERIFY(pressKey(QStringLiteral("ctrl+f")));
        QTRY_VERIFY(isInFront("findDock"));
        QVERIFY(pressKey(QStringLiteral("Escape")));
        QTRY_VERIFY(!desk->part<QWidget>("findDock")->isVisible());
        QVERIFY(desk->tree->hasFocus());
    }

    // The whole way: choose a page and back, search, filter, open a branch, look at a value.
    void walksThroughTheTree()
    {
        goTo("btnTests");
        QVERIFY(pressKey(QStringLiteral("space")));
        QTRY_COMPARE(desk->shownPage(), QStringLiteral("pageTests"));
        goTo("btnAttributes");
        QVERIFY(pressKey(QStringLiteral("space")));
        QTRY_COMPARE(desk->shownPage(), QStringLiteral("pageAttributes"));

        goTo("edtSearchPath");
        for (const char* key : {"ctrl+a", "p", "l", "Tab", "period", "c", "e", "Tab"})
            QVERIFY(pressKey(QLatin1String(key)));
        QTRY_COMPARE(desk->part<QLineEdit>("edtSearchPath")->text(), QStringLiteral("plant.cell"));
        goTo("btnReadAttribute");
        QVERIFY(pressKey(QStringLiteral("space")));
        QTRY_COMPARE(desk->part<QComboBox>("cbFilter1")->itemText(1), QStringLiteral("pump"));

        goTo("cbFilter1");
        for (const char* key : {"Down", "Down"})
            QVERIFY(pressKey(QLatin1String(key)));
        QTRY_COMPARE(desk->shownRows(), (QStringList{QStringLiteral("-plant"), QStringLiteral(" -cell"),
                                                     QStringLiteral("  -valve"), QStringLiteral("   open")}));
        goTo("treeView");
        for (const char* key : {"Home", "Down", "Down", "Down"})
            QVERIFY(pressKey(QLatin1String(key)));
        QTRY_VERIFY(desk->part<QTextBrowser>("txtAttributeDetails")
                        ->toPlainText()
                        .contains(QStringLiteral("Path : plant.cell.valve.open")));
        for (const char* key : {"Up", "Left"})
            QVERIFY(pressKey(QLatin1String(key)));
        QTRY_VERIFY(desk->shownRows().last() == QLatin1String("  valve"));

        goTo("noticeClose");
        QVERIFY(pressKey(QStringLiteral("space")));
        QTRY_VERIFY(!desk->part<QWidget>("noticeBar")->isVisible());
        QVERIFY(QApplication::focusWidget());
    }

    // Nothing on the way from the search field to the log keeps the keyboard.
    void editsOnTheWayToTheLog()
    {
        auto* const monitor = desk->part<QTableView>("appConfigDataAccessWidget");
        qobject_cast<AdvancedAttributeModel*>(monitor->model())
            ->loadCustomAttributeList({QStringLiteral("plant.cell.pump.motor.speed")});
        QVERIFY(pressKey(QStringLiteral("F8")));
        QTRY_VERIFY(desk->part<QWidget>("logLines"));
        QTRY_VERIFY(desk->part<QWidget>("logLines")->hasFocus());
        goTo("edtSearchPath");
        goTo("treeView");
        QVERIFY(pressKey(QStringLiteral("Home")));
        for (int row = desk->item(QStringLiteral("plant")).row(); row > 0; --row)
            QVERIFY(pressKey(QStringLiteral("Down")));
        for (const char* key : {"Right", "Down", "Right", "Down", "Right", "Down", "Right", "Down", "F2"})
            QVERIFY(pressKey(QLatin1String(key)));
        typeIntoEditor(*desk->tree, "1250", "shift+Tab"); // as far as the tree
        QTRY_VERIFY(desk->tree->hasFocus());
        for (const char* key : {"Up", "Down", "F2"}) // the end of an edit has taken the selection
            QVERIFY(pressKey(QLatin1String(key)));
        typeIntoEditor(*desk->tree, "1260", "Tab");
        QTRY_VERIFY(desk->tree->hasFocus());
        QTRY_COMPARE(monitor->model()->index(0, 1).data().toString(), QStringLiteral("1260"));

        goTo("appConfigDataAccessWidget");
        QVERIFY(TestSupport::click(*monitor->viewport(), // the keys move no cell there
                                   monitor->visualRect(monitor->model()->index(0, 1)).center()));
        QVERIFY(pressKey(QStringLiteral("F2")));
        typeIntoEditor(*monitor, "1270", "Tab");
        QTRY_VERIFY(monitor->hasFocus());
        QTRY_COMPARE(desk->item(QStringLiteral("plant.cell.pump.motor.speed")).siblingAtColumn(1).data(),
                     QVariant(QStringLiteral("1270")));
        QVERIFY(pressKey(QStringLiteral("Tab")));
        goTo("logLines");
    }

private:
    // What has the focus after the key.
    static const QWidget* press(const QString& key)
    {
        const QWidget* const before = QApplication::focusWidget();
        if (!pressKey(key) || !QTest::qWaitFor([&] { return QApplication::focusWidget() != before; }, 2000))
            return nullptr;
        return QApplication::focusWidget();
    }

    static void typeIntoEditor(const QWidget& view, const char* text, const char* leavingKey)
    {
        const auto isOpen = [&view] {
            const QWidget* const focused = QApplication::focusWidget();
            return qobject_cast<const QLineEdit*>(focused) && view.isAncestorOf(focused);
        };
        QTRY_VERIFY(isOpen());
        QVERIFY(TestSupport::typeText(QLatin1String(text)));
        QVERIFY(pressKey(QLatin1String(leavingKey)));
        QTRY_VERIFY(!isOpen());
    }

    static void goTo(const char* name)
    {
        const auto isThere = [name] {
            const QWidget* const widget = QApplication::focusWidget();
            return widget && widget->objectName() == QLatin1String(name);
        };
        for (int i = 0; i < 40 && !isThere(); ++i)
            press(QStringLiteral("Tab"));
        QVERIFY2(isThere(), name);
    }

    std::unique_ptr<RunningDesk::Folder> folder;
    std::unique_ptr<RunningDesk> desk;
};

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk-test"));
    return TestSupport::runTest<QApplication, DeskKeyboardTest>(argc, argv);
}

#include "desk_keyboard_test.moc"
