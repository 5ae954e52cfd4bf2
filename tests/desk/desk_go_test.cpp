#include "tests/desk/DeskTest.h"

#include <QDialog>
#include <QLabel>

using TestSupport::DialogDriver;
using TestSupport::pressKey;

// Ways through the window without the mouse: commands, keys, back and forward, bookmarks.
class DeskGoTest : public TestSupport::DeskTest
{
    Q_OBJECT

    QString shownPath() const { return desk->tree->currentIndex().data(Qt::UserRole).toString(); }

    void select(const QString& path)
    {
        QTRY_VERIFY(desk->item(path).isValid());
        desk->tree->setFocus();
        desk->tree->setCurrentIndex(desk->item(path));
    }

    void goToFound(const char* text)
    {
        QVERIFY(pressKey(QStringLiteral("ctrl+f")));
        QTRY_VERIFY(desk->part<QTreeView>("findHits"));
        QVERIFY(TestSupport::typeText(QLatin1String(text)));
        QVERIFY(pressKey(QStringLiteral("Return"))); // at once
        const auto* const hits = desk->part<QTreeView>("findHits");
        QTRY_VERIFY(hits->hasFocus() && hits->currentIndex().data().toString().endsWith(QLatin1String(text)));
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_VERIFY(desk->tree->hasFocus());
    }

    static QStringList shownTexts(QWidget& dialog)
    {
        QStringList texts;
        const auto& rows = *dialog.findChild<QTreeWidget*>(QStringLiteral("actionRows"));
        for (int row = 0; row < rows.topLevelItemCount(); ++row) {
            if (!rows.topLevelItem(row)->isHidden())
                texts.append(rows.topLevelItem(row)->text(0) + QLatin1Char('|') +
                             rows.topLevelItem(row)->text(1));
        }
        return texts;
    }

private slots:
    void init() { open(); }
    void cleanup() { close(); }

    void doesACommandByItsName()
    {
        DialogDriver driver([](QWidget& dialog) {
            QVERIFY(shownTexts(dialog).contains(QStringLiteral("File > Save All|Ctrl+S")));
            QVERIFY(TestSupport::typeText(QStringLiteral("edit repl")));
            QTRY_COMPARE(shownTexts(dialog), QStringList(QStringLiteral("Edit > Replace...|Ctrl+H")));
            QVERIFY(pressKey(QStringLiteral("Return")));
            QTRY_VERIFY(!dialog.isVisible());
        });
        QVERIFY(pressKey(QStringLiteral("ctrl+shift+p")));
        QTRY_VERIFY(driver.isDone());
        QTRY_VERIFY(desk->part<QLineEdit>("findReplacement") &&
                    desk->part<QLineEdit>("findReplacement")->isVisible());
    }

    // A command that is not possible now is not done.
    void listsKeys()
    {
        DialogDriver driver([](QWidget& dialog) {
            const QStringList all = shownTexts(dialog);
            QVERIFY(all.contains(QStringLiteral("Edit > Find...|Ctrl+F")));
            QVERIFY2(!all.join(QLatin1Char('\n')).contains(QLatin1String("About")), "has no key");
            QVERIFY(TestSupport::typeText(QStringLiteral("F2")));
            QTRY_VERIFY(shownTexts(dialog).size() == 2);
            QVERIFY(pressKey(QStringLiteral("Escape")));
            QTRY_VERIFY(!dialog.isVisible());
        });
        QVERIFY(pressKey(QStringLiteral("F1")));
        QTRY_VERIFY(driver.isDone());
    }

    void goesBackAndForward()
    {
        select(maximum);
        goToFound("speed");
        QTRY_COMPARE(shownPath(), speed);
        goToFound("sense");
        QTRY_COMPARE(shownPath(), sense);
        QVERIFY(pressKey(QStringLiteral("alt+Left")));
        QTRY_COMPARE(shownPath(), speed);
        QVERIFY(pressKey(QStringLiteral("alt+Left")));
        QTRY_COMPARE(shownPath(), maximum);
        QVERIFY(pressKey(QStringLiteral("alt+Left"))); // no further
        QVERIFY(pressKey(QStringLiteral("alt+Right")));
        QTRY_COMPARE(shownPath(), speed);

        // Who has gone elsewhere by hand comes back to the last stop, and forward to where that was.
        select(QStringLiteral("plant.cell.valve"));
        QVERIFY(pressKey(QStringLiteral("alt+Left")));
        QTRY_COMPARE(shownPath(), speed);
        QVERIFY(pressKey(QStringLiteral("alt+Right")));
        QTRY_COMPARE(shownPath(), QStringLiteral("plant.cell.valve"));
    }

    void keepsBookmarks()
    {
        const auto toggle = [this](const char* offeredThen) {
            QVERIFY(pressKey(QStringLiteral("ctrl+b")));
            QTRY_VERIFY(desk->part<QAction>("bookmark")->text().startsWith(QLatin1String(offeredThen)));
        };
        select(speed);
        toggle("Remove");
        select(maximum);
        QVERIFY(pressKey(QStringLiteral("alt+2"))); // is none yet
        desk->part<QAction>("bookmark")->setText({});
        toggle("Remove");
        QVERIFY(pressKey(QStringLiteral("alt+1")));
        QTRY_COMPARE(shownPath(), speed);
        QVERIFY(pressKey(QStringLiteral("alt+Left")));
        QTRY_COMPARE(shownPath(), maximum);
        desk->part<QAction>("bookmark")->setText({});
        toggle("Bookmark");
        desk.reset();
        desk = std::make_unique<TestSupport::RunningDesk>(
            *folder, QStringList{folder->path("plant.json"), folder->path("limits.ini")});
        QVERIFY(TestSupport::showActive(*desk->window));
        select(maximum);
        QVERIFY(pressKey(QStringLiteral("alt+2"))); // is none any more
        QVERIFY(pressKey(QStringLiteral("alt+1")));
        QTRY_COMPARE(shownPath(), speed);
    }

    void namesBookmarksAsTheirFiles()
    {
        QVERIFY(QDir().mkpath(folder->path("site/net.d")));
        TestSupport::writeFile(folder->path("site/net.d/a.ini"), "x.y = 1\n");
        desk->window->openFiles({folder->path("site")});
        select(QStringLiteral("site.net%2Ed.a%2Eini.x%2Ey"));
        QVERIFY(pressKey(QStringLiteral("ctrl+b")));
        const auto& removal = *desk->part<QMenu>("removeBookmark");
        QTRY_COMPARE(removal.actions().size(), 1);
        QCOMPARE(removal.actions().first()->text(), QStringLiteral("site.net.d.a.ini.x%2Ey"));
    }

    void removesBookmarksOfWhatIsGone()
    {
        const auto removable = [this] { return desk->part<QMenu>("removeBookmark")->actions().size(); };
        select(maximum);
        QVERIFY(pressKey(QStringLiteral("ctrl+b")));
        QTRY_COMPARE(removable(), 1);
        select(speed);
        QVERIFY(pressKey(QStringLiteral("ctrl+b")));
        QTRY_COMPARE(removable(), 2);
        QVERIFY(desk->repository->getTreeInterface()->removeTree(maximum).ok());
        QTRY_VERIFY(!desk->item(maximum).isValid());
        QVERIFY(pressKey(QStringLiteral("alt+1")));
        QTRY_VERIFY(desk->part<QWidget>("noticeBar")->isVisible());
        QVERIFY(desk->part<QLabel>("noticeText")->text().contains(maximum));
        for (const char* key : {"alt+g", "r", "Down", "Return"}) // the second, whose node is there
            QVERIFY(pressKey(QLatin1String(key)));
        QTRY_COMPARE(removable(), 1);
        for (const char* key : {"alt+g", "r", "Return"})
            QVERIFY(pressKey(QLatin1String(key)));
        QTRY_COMPARE(removable(), 0);
        desk.reset();
        desk = std::make_unique<TestSupport::RunningDesk>(*folder, QStringList());
        QCOMPARE(removable(), 0);
    }
};

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk-test"));
    return TestSupport::runTest<QApplication, DeskGoTest>(argc, argv);
}

#include "desk_go_test.moc"
