#include "host/FrameworkCore/AppConfig/StatusCode.h"
#include "tests/support/BothRepositories.h"
#include "tests/support/Columns.h"
#include "tests/support/LoggedFailures.h"
#include "tests/support/RealInput.h"
#include "tests/support/RefusedEntries.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"
#include "tests/widgets/BrowserPage.h"
#include "widgets/ListWidget.h"

#include <QApplication>
#include <QCheckBox>
#include <QDateTimeEdit>
#include <QFile>
#include <QScrollBar>
#include <QTemporaryDir>

#include <thread>

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::BackendConfiguration;
using TestSupport::text;
using Widgets::ListWidget;

namespace {

const QString any = QStringLiteral("*");
const QString path = QStringLiteral("plant.cell.value");
const QString other = QStringLiteral("plant.cell.other");

// To the widget that has the keyboard.
void press(Qt::Key key)
{
    QTest::keyClick(QApplication::focusWidget(), key);
}

void type(const char* keys)
{
    for (; *keys; ++keys) // the first may open an editor
        QTest::keyClick(QApplication::focusWidget(), *keys);
}

// Of the list whose window has the keyboard; the element's own editor stays open.
void changeSecondElement()
{
    for (const auto key : {Qt::Key_Tab, Qt::Key_Down, Qt::Key_Right})
        press(key);
    type("typed");
}

QList<ListWidget*> listWindows()
{
    QList<ListWidget*> windows;
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (auto* const window = qobject_cast<ListWidget*>(widget))
            windows.append(window);
    }
    return windows;
}

} // namespace

// Editing in the tree with keys and mouse.
class InPlaceEditingTest : public TestSupport::BothRepositories
{
    Q_OBJECT

protected:
    void closeAll() override
    {
        page.reset();
        qDeleteAll(listWindows());
        log = {};
    }

private slots:
    void keysEditEveryType();

    void opensTheEditorOfTheType_data()
    {
        // editor: empty: none
        const auto row = TestSupport::columns<QVariant, QString>("value", "editor");
        row("bool", QVariant(true), "Widgets::CheckBoxWidget");
        row("integer", QVariant(5LL), "Widgets::LineEditWidget");
        row("unsigned", QVariant(5ULL), "Widgets::LineEditWidget");
        row("double", QVariant(0.5), "Widgets::LineEditWidget");
        row("text", QVariant(text("gjpqy")), "Widgets::LineEditWidget");
        row("empty text", QVariant(QString()), "Widgets::LineEditWidget");
        row("date", QVariant(QDate(2024, 2, 29)), "Widgets::DateTimeEditWidget");
        row("time", QVariant(QTime(1, 2, 3)), "Widgets::DateTimeEditWidget");
        row("date-time", QVariant(QDateTime(QDate(2024, 2, 29), QTime(1, 2, 3), Qt::UTC)),
            "Widgets::DateTimeEditWidget");
        row("bytes", QVariant(QByteArray("\xff")), QString());
        row("null", QVariant(), QString());
    }

    void opensTheEditorOfTheType()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, editor);
        create(path, value);
        create(other, text("x"));
        openPage();
        page->open({text("plant"), text("plant.cell")});
        const int rowHeight = page->tree.visualRect(cell()).height();
        const QPoint place = page->tree.visualRect(cell()).center();
        QTest::mouseClick(page->tree.viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(page->tree.viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseRelease(page->tree.viewport(), Qt::LeftButton, Qt::NoModifier, place);
        const QWidget* const shown = page->tree.indexWidget(cell());
        QCOMPARE(shown ? text(shown->metaObject()->className()) : QString(), editor);
        if (!shown)
            return;
        QVERIFY(shown->hasFocus());
        QCOMPARE(shown->accessibleName(), path);
        // It covers the cell, has room for its text, and moves no row.
        QTRY_COMPARE(shown->geometry(), page->tree.visualRect(cell()));
        QVERIFY(shown->height() >= shown->fontMetrics().height());
        QTRY_VERIFY(shown->width() >= shown->sizeHint().width());
        QCOMPARE(page->tree.visualRect(cell()).height(), rowHeight);
        QCOMPARE(page->tree.visualRect(cell(other)).height(), rowHeight);
    }

    void endsWell_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("end");
        QTest::addColumn<QVariant>("left"); // what is there afterwards
        const auto row = [](const char* kind, const char* key, const QVariant& before,
                            const QVariant& changed) {
            const bool isGivenUp = text(key) == text("Escape");
            QTest::addRow("%s by %s", kind, key) << before << text(key) << (isGivenUp ? before : changed);
        };
        for (const char* const key : {"Escape", "Return", "Tab", "Shift+Tab", "click"}) {
            row("line", key, 5LL, 7LL);
            row("date", key, QDate(2024, 2, 28), QDate(2025, 2, 28));
            if (text(key) != text("Shift+Tab")) // Shift itself gives a check box up
                row("check box", key, true, false);
        }
        row("check box", "X", true, true);
    }

    void endsWell()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, end);
        QFETCH(QVariant, left);
        create(path, value);
        create(other, text("x"));
        openPage();
        edit();
        change();
        if (end == text("click"))
            page->clickItem(other);
        else
            pressToEnd(end);
        QVERIFY(!page->tree.indexWidget(cell()));
        QVERIFY(page->tree.hasFocus());
        QCOMPARE(valueOf(path), left);
        QTRY_VERIFY(shown(path).startsWith(left.toString()));
        QCOMPARE(log.texts(), QStringList());
        if (end != text("click")) {
            // The row is not selected any more, but the keyboard is still there.
            QVERIFY(!page->tree.selectionModel()->hasSelection());
            QCOMPARE(page->tree.currentIndex(), page->item(path));
            press(Qt::Key_Down);
        }
        QCOMPARE(page->tree.currentIndex(), page->item(other));
        press(Qt::Key_F2);
        QVERIFY(page->tree.indexWidget(cell(other)));
    }

    void refusalsLeaveTheValue_data()
    {
        // rule: of the value; without one it is read-only
        const auto row = TestSupport::columns<QVariant, QString, QString>("value", "rule", "failure");
        row("line", QVariant(5LL), QString(), "Write To  plant.cell.value Failed. Bad Writable, Read Only");
        row("rule", QVariant(5LL), "range(1,6)", "Write To Attribute plant.cell.value Failed");
        row("date", QVariant(QDate(2024, 2, 28)), QString(), "Write To Attribute plant.cell.value Failed");
        row("check box", QVariant(true), QString(), "Attribute Update failed ");
    }

    void refusalsLeaveTheValue()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, rule);
        create(path, value, rule.isEmpty() ? AccessMode::ReadOnly : AccessMode::ReadWrite);
        openPage();
        if (!rule.isEmpty() && fake)
            fake->setNextStatus(int(FrameworkCore::AppConfig::RefusedByValidation));
        else if (!rule.isEmpty())
            QVERIFY(repository->getValidationInterface()->addValidation(path, rule) != 0);
        edit();
        change();
        press(Qt::Key_Return);
        QTEST(log.texts().join(QLatin1Char('\n')), "failure");
        QCOMPARE(valueOf(path), value);
        QVERIFY(shown(path).startsWith(value.toString()));
        QVERIFY(!page->tree.indexWidget(cell()));
    }

    void itemGoesWhileItIsEdited_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("way");
        QTest::addColumn<QString>("kept"); // of what was entered; empty when nothing was
        for (const char* const way :
             {"removed", "branch removed", "branch closed", "tree read anew", "page closed"}) {
            QTest::addRow("line, %s", way) << QVariant(5LL) << text(way) << text("7");
            QTest::addRow("check box, %s", way) << QVariant(true) << text(way) << text("false");
            QTest::addRow("date, %s", way) << QVariant(QDate(2024, 2, 28)) << text(way) << text("2025-02-28");
            QTest::addRow("untouched, %s", way) << QVariant(5LL) << text(way) << QString();
        }
        QTest::newRow("list") << QVariant(QStringList{text("a"), text("b")}) << text("page closed")
                              << text("a\ntyped");
        QTest::newRow("list untouched")
            << QVariant(QStringList{text("a"), text("b")}) << text("page closed") << QString();
    }

    void itemGoesWhileItIsEdited()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, way);
        QFETCH(QString, kept);
        create(path, value);
        create(text("other"), text("x"));
        openPage();
        edit();
        QTRY_COMPARE(bool(qobject_cast<ListWidget*>(QApplication::activeWindow())),
                     value.userType() == QMetaType::QStringList);
        const TestSupport::RefusedEntries refused;
        if (!kept.isEmpty())
            change();
        const QPointer<QWidget> editor = QApplication::focusWidget();
        if (way == text("removed"))
            repository->getTreeInterface()->removeTree(path);
        else if (way == text("branch removed"))
            repository->getTreeInterface()->removeTree(text("plant"));
        else if (way == text("branch closed"))
            page->tree.collapseAll();
        else if (way == text("page closed"))
            page.reset();
        else
            QVERIFY(QMetaObject::invokeMethod(&page->widget, "refreshAttributesList",
                                              Q_ARG(QString, text("other"))));
        QTRY_VERIFY(!editor);
        const bool isGone = way.contains(text("removed"));
        const QString cause = isGone ? text("the attribute no longer exists")
                                     : text("its editor was closed before the edit had ended");
        const QString shownEntry = QString(kept).replace(QLatin1Char('\n'), QChar(0x21B5));
        const QString told =
            text("%1 | %2 | '%1' was not set to '%3': %4").arg(path, kept, shownEntry, cause);
        QCOMPARE(refused.texts(), kept.isEmpty() ? QStringList() : QStringList(told));
        QCOMPARE(valueOf(path), isGone ? QVariant() : value);
        QCOMPARE(log.texts(), kept.isEmpty() ? QStringList()
                                             : QStringList(text("Write To Attribute %1 Failed").arg(path)));
        if (!page)
            return;
        QTRY_VERIFY(page->tree.hasFocus());
        edit(text("other"));
        type("y");
        press(Qt::Key_Return);
        QCOMPARE(valueOf(text("other")), QVariant(text("y")));
        page->read(any);
        page->tree.expandAll();
        QVERIFY(!page->item(path).isValid() || !page->tree.indexWidget(cell()));
    }

    // Meanwhile the tree goes on to show what others write, and the editor stays as the person left it.
    void othersWriteDuringTheEdit()
    {
        create(path, 5LL);
        create(other, 1LL);
        openPage();
        edit();
        type("7");
        std::thread writer([this] {
            for (qlonglong i = 1; i <= 1000; ++i) {
                repository->getWriterInterface()->writeAttributeValue(other, i, 15);
                repository->getWriterInterface()->writeAttributeValue(path, i, 15);
            }
        });
        writer.join();
        QTRY_COMPARE(shown(other), text("1000"));
        auto* const editor = qobject_cast<QLineEdit*>(page->tree.indexWidget(cell()));
        QVERIFY(editor && editor->hasFocus());
        QCOMPARE(editor->text(), text("7"));
        press(Qt::Key_Escape);
        QTRY_COMPARE(shown(path), text("1000"));
        edit();
        repository->getWriterInterface()->writeAttributeValue(path, 9LL, 15);
        press(Qt::Key_Return); // confirms what is shown here
        QCOMPARE(valueOf(path), QVariant(1000LL));
        edit();
        repository->getWriterInterface()->writeAttributeValue(path, 9LL, 15);
        page->clickItem(other); // nothing was touched here, so that nothing of others is lost
        QVERIFY(!page->tree.indexWidget(cell()));
        QCOMPARE(valueOf(path), QVariant(9LL));
    }

    // By an edit, and by others.
    void theDetailsFollowTheValue()
    {
        create(path, text("first"));
        create(other, text("x"));
        openPage();
        edit();
        type("edited");
        press(Qt::Key_Return);
        const auto& details = page->details;
        QTRY_VERIFY(details.toPlainText().endsWith(text("Value : edited")));
        const auto write = [this](const QString& name, const char* last) {
            const QString lines = text("line\n").repeated(500);
            repository->getWriterInterface()->writeAttributeValue(name, lines + text(last), 15);
        };
        write(path, "one");
        QTRY_VERIFY(details.toPlainText().endsWith(text("one")));
        details.verticalScrollBar()->setValue(100);
        write(other, "other");
        write(path, "two");
        QTRY_VERIFY(details.toPlainText().endsWith(text("two")));
        QVERIFY(details.toPlainText().startsWith(text("Name : value\nPath : ") + path));
        QCOMPARE(details.verticalScrollBar()->value(), 100); // who reads on is not disturbed
    }

    // Each edit of a list leaves its window behind, hidden.
    void listWindowsStay()
    {
        create(path, QStringList{text("a"), text("b")});
        openPage();
        for (int count = 1; count <= 3; ++count) {
            edit();
            QCOMPARE(listWindows().size(), count);
            QTRY_VERIFY(qobject_cast<ListWidget*>(QApplication::activeWindow()));
            QVERIFY(!page->tree.indexWidget(cell()));
            press(Qt::Key_Escape);
            QVERIFY(TestSupport::showActive(page->widget));
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(listWindows().size(), 3);
        for (const ListWidget* const window : listWindows()) {
            QVERIFY(!window->isVisible());
            QTRY_VERIFY(!window->windowHandle()); // nor the picture of one
        }
        QCOMPARE(valueOf(path), QVariant(QStringList{text("a"), text("b")}));
    }

    void aLongTextFollowsTheCursor()
    {
        create(path, QString(3000, QLatin1Char('x')));
        openPage();
        edit();
        QCOMPARE(page->tree.horizontalScrollBar()->value(), 0); // the name stays in sight
        for (const auto key : {Qt::Key_Home, Qt::Key_End, Qt::Key_Home}) {
            press(key);
            auto* const editor = qobject_cast<QLineEdit*>(page->tree.indexWidget(cell()));
            const auto cursorPlace = [this, editor] {
                const QRect cursor = editor->inputMethodQuery(Qt::ImCursorRectangle).toRect();
                return editor->mapTo(page->tree.viewport(), cursor.center());
            };
            QTRY_VERIFY(page->tree.viewport()->rect().contains(cursorPlace()));
        }
        press(Qt::Key_Return);
        QVERIFY(page->tree.viewport()->rect().contains(page->tree.visualRect(page->item(path)).center()));
    }

private:
    void create(const QString& name, const QVariant& value, AccessMode access = AccessMode::ReadWrite)
    {
        QVERIFY(repository->getWriterInterface()->createAttribute(name, value, 2, int(access)));
    }

    QVariant valueOf(const QString& name) const
    {
        QVariant value;
        repository->getReaderInterface()->readAttributeValue(name, value, 0);
        return value;
    }

    void openPage()
    {
        page = std::make_unique<BrowserPage>();
        QVERIFY(TestSupport::showActive(page->widget));
        page->read(any);
    }

    QModelIndex cell(const QString& name = path) const
    {
        const QModelIndex item = page->item(name);
        return item.sibling(item.row(), 1);
    }

    QString shown(const QString& name) const { return cell(name).data().toString(); }

    void edit(const QString& name = path)
    {
        page->clickItem(name);
        press(Qt::Key_F2);
    }

    // To 7, the other state, or a year later.
    static void change()
    {
        QWidget* const editor = QApplication::focusWidget();
        if (qobject_cast<QLineEdit*>(editor))
            type("7");
        else if (qobject_cast<ListWidget*>(editor->window()))
            changeSecondElement();
        else if (qobject_cast<QCheckBox*>(editor))
            QTest::mouseClick(editor, Qt::LeftButton, Qt::NoModifier, QPoint(8, editor->height() / 2));
        else
            press(Qt::Key_Up);
    }

    static void pressToEnd(const QString& key)
    {
        if (key == text("Tab") && qobject_cast<QDateTimeEdit*>(QApplication::focusWidget()))
            press(Qt::Key_End); // Tab goes through its parts first
        const auto code = unsigned(QKeySequence(key)[0]);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(code & ~Qt::KeyboardModifierMask),
                        Qt::KeyboardModifiers(int(code) & Qt::KeyboardModifierMask));
    }

    std::unique_ptr<BrowserPage> page;
    TestSupport::LoggedFailures log; // of one test
};

// From row to row with the keyboard alone, in a file with comments and a layout of its own.
void InPlaceEditingTest::keysEditEveryType()
{
    if (fake)
        return; // it has no files
    const QByteArray before = "; the cell's own file\n[cell]\nenabled=true\ncount   = -5\n"
                              "big: 18446744073709551614\n; @type double\nratio = 0.1\nname = x\n"
                              "; @type list\ntags = a;b\n; @type date\nday = 2024-02-29\n"
                              "; @type time\nclock = 23:59:58\n"
                              "; @type datetime\nmoment = 2023-01-02T10:20:30.250+02:00\n"
                              "; @type bytes\nraw = \\xff\n; @type null\nnothing =\nlast = y\n";
    const QByteArray after = "; the cell's own file\n[cell]\nenabled=false\ncount   = 42\n"
                             "big: 18446744073709551615\n; @type double\nratio = 2.5e-07\nname = New name\n"
                             "; @type list\ntags = a;typed\n; @type date\nday = 2023-12-24\n"
                             "; @type time\nclock = 01:02:58\n"
                             "; @type datetime\nmoment = 2024-01-02T10:20:30.250+02:00\n"
                             "; @type bytes\nraw = \\xff\n; @type null\nnothing =\nlast = z\n";
    const QTemporaryDir folder;
    QFile file(folder.filePath(text("plant.ini")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(before);
    file.close();
    const BackendConfiguration configuration{file.fileName(), {}, AccessMode::ReadWrite};
    QVERIFY(repository->getBackendInterface()->createBackend(text("ini"), text("plant"), configuration, 2));
    openPage();
    page->clickItem(text("plant.cell"));
    press(Qt::Key_Right); // opens it

    const auto editNext = [](const char* keys) {
        press(Qt::Key_Down);
        press(Qt::Key_F2);
        type(keys);
        press(Qt::Key_Return);
    };
    editNext(" ");
    for (const char* keys : {"42", "18446744073709551615", "2.5e-7", "New name"})
        editNext(keys);
    press(Qt::Key_Down);
    press(Qt::Key_F2);
    QTRY_VERIFY(qobject_cast<ListWidget*>(QApplication::activeWindow()));
    changeSecondElement();
    press(Qt::Key_Return);
    QTRY_COMPARE(QApplication::focusWidget()->objectName(), text("tblListType"));
    for (const auto key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space})
        press(key); // to "Write"
    QVERIFY(TestSupport::showActive(page->widget));
    for (const char* keys : {"20231224", "0102", "2024"})
        editNext(keys);
    for (int i = 0; i < 2; ++i) { // these have no editor
        press(Qt::Key_Down);
        press(Qt::Key_F2);
        QVERIFY(page->tree.hasFocus());
    }
    editNext("z");
    QCOMPARE(log.texts(), QStringList());
    QVERIFY(repository->getBackendInterface()->saveBackend(text("plant")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()), QString::fromUtf8(after));
}

VANTRY_TEST_MAIN(QApplication, InPlaceEditingTest)

#include "in_place_editing_test.moc"
