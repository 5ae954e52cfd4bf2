#include "host/Shared/Logging/LogRecord.h"
#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"
#include "tests/support/Columns.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"
#include "tests/widgets/DialogAnswers.h"
#include "widgets/AppConfigDataAccessWidget.h"
#include "widgets/AttributeBrowserWidget.h"
#include "widgets/ListWidget.h"

#include <QApplication>
#include <QCheckBox>
#include <QDateTimeEdit>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolButton>
#include <QTreeView>

#include <optional>
#include <thread>

using FrameworkCore::AppConfig::AccessMode;
using Shared::Logging::LogRecord;
using TestSupport::contentOf;
using TestSupport::DialogDriver;
using TestSupport::words;
using TestSupport::writeFile;
using Utilities::ModelViews::AdvancedAttributeModel;

using namespace DialogAnswers;

namespace {

constexpr int valueColumn = 1;
const QString k = QStringLiteral("k");

const char* const everyType = R"({
  // an attribute of every type
  "flag": true, "count": -5, "big": 18446744073709551614, "ratio": 0.1,
  "name": "x", "tags": ["a", "b"], "nothing": null, "bytes": "\\xff",
  "day": "2024-02-29", "clock": "23:59:58", "moment": "2023-01-02T10:20:30.250Z",
  "$types": {"day": "date", "clock": "time", "moment": "datetime", "bytes": "bytes"}
})";

void doubleClick(QAbstractItemView& view, int row, int column)
{
    const QPoint place = view.visualRect(view.model()->index(row, column)).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, place);
}

// Writes another first text and one more, through the window.
void editList(const QString& typed)
{
    auto* const window = qobject_cast<Widgets::ListWidget*>(QApplication::activeModalWidget());
    QVERIFY(window && !window->parentWidget() && QTest::qWaitForWindowActive(window));
    doubleClick(*window->findChild<QTableView*>(), 0, 1);
    QTest::keyClicks(QApplication::focusWidget(), typed);
    QTest::mouseClick(window->findChild<QToolButton*>(QStringLiteral("btnPlus")), Qt::LeftButton);
    QTest::mouseClick(window->findChild<QToolButton*>(QStringLiteral("btnWrite")), Qt::LeftButton);
}

} // namespace

// The monitor in its page, used as a person does.
class MonitorTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        repository = Repository::AttributeRepository::create();
        Utilities::SetAppConfigRepositoryInterface(repository);
        page = std::make_unique<Widgets::AttributeBrowserWidget>();
        monitor = page->findChild<AppConfigDataAccessWidget*>();
        page->resize(1200, 800);
        QVERIFY(TestSupport::showActive(*page));
    }

    void cleanup()
    {
        page.reset();
        for (QWidget* const window : QApplication::topLevelWidgets()) {
            if (qobject_cast<Widgets::ListWidget*>(window))
                delete window; // nobody else does
        }
        Utilities::SetAppConfigRepositoryInterface({});
        repository.reset();
    }

    void editsEveryType_data()
    {
        // before: in the file
        const auto row = TestSupport::columns<QString, QByteArray, QByteArray>("typed", "before", "after");
        row("flag", " ", "true", "false");
        row("count", "-9223372036854775808", "-5", "-9223372036854775808");
        row("big", "18446744073709551615", "18446744073709551614", "18446744073709551615");
        row("ratio", "-1e-3", "0.1", "-0.001");
        row("name", "say \"hi\"", "\"x\"", "\"say \\\"hi\\\"\"");
        row("tags", "c", "[\"a\", \"b\"]", "[\"c\", \"b\", \"\"]");
        row("nothing", "5", "null", "\"5\"");
        row("bytes", "", "", "");
        row("day", "20250301", "2024-02-29", "2025-03-01");
        row("clock", "010203", "23:59:58", "01:02:03");
        row("moment", "20250301040506007", "2023-01-02T10:20:30.250Z", "2025-03-01T04:05:06.007Z");
    }

    void editsEveryType()
    {
        const QString file = folder->filePath(QStringLiteral("all.json"));
        writeFile(file, everyType);
        const auto backends = repository->getBackendInterface();
        QVERIFY(backends->createBackend(QStringLiteral("json"), QStringLiteral("all"),
                                        {file, {}, AccessMode::ReadWrite}, 2));
        drop({QStringLiteral("all.") + QString::fromLatin1(QTest::currentDataTag())});
        QFETCH(QString, typed);
        doubleClick(*monitor, 0, valueColumn);
        if (QApplication::activeModalWidget()) {
            editList(typed);
        } else if (!typed.isEmpty()) {
            type(typed);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        }
        QVERIFY(!editor() && !QApplication::activeModalWidget());
        QVERIFY(backends->saveBackend(QStringLiteral("all")));
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QCOMPARE(contentOf(file), QByteArray(everyType).replace(before, after));
    }

    void endsWithoutWriting_data()
    {
        TestSupport::columns<QVariant, QString, QString, QString>("value", "typed", "hindrance", "logged");
        const auto row = [](const QVariant& value, const char* typed, const char* hindrance,
                            const char* log) {
            QTest::newRow(qPrintable(QLatin1String(hindrance) + QLatin1String(value.typeName())))
                << value << QString::fromLatin1(typed) << QString::fromLatin1(hindrance)
                << QString::fromLatin1(log);
        };
        const char* const readOnly = "Write To  k Failed. Bad Writable, Read Only";
        row(true, " ", "Escape", "");
        row(5, "6", "Escape", "");
        row(QTime(1, 2, 3), "040506", "Escape", "");
        row(true, " ", "read-only", "Attribute Update failed ");
        row(5, "6", "read-only", readOnly);
        row(5, "11", "range(0,10)", "Write To Attribute k Failed");
        row(5, "six", "", "Cannot Convert Attribute Value to Variant Type qlonglong");
        row(5, "6", "removed", readOnly);
        row(QTime(1, 2, 3), "040506", "removed", "Write To Attribute k Failed");
        row(true, " ", "row removed", "Write To Attribute k Failed"); // so that what was entered is kept
    }

    void endsWithoutWriting()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, typed);
        QFETCH(QString, hindrance);
        create(k, value,
               hindrance == QLatin1String("read-only") ? AccessMode::ReadOnly : AccessMode::ReadWrite);
        if (hindrance.contains(QLatin1Char('(')))
            QVERIFY(repository->getValidationInterface()->addValidation(k, hindrance) != 0);
        drop({k});
        doubleClick(*monitor, 0, valueColumn);
        type(typed);
        const quint64 before =
            LogRecord::instance().getLines().isEmpty() ? 0 : LogRecord::instance().getLines().last().number;
        if (hindrance == QLatin1String("removed"))
            repository->getTreeInterface()->removeTree(k);
        if (hindrance == QLatin1String("row removed"))
            monitor->model()->removeRow(0);
        else
            QTest::keyClick(editor(), hindrance == QLatin1String("Escape") ? Qt::Key_Escape : Qt::Key_Return);
        QVERIFY(!editor());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QStringList logged;
        for (const auto& line : LogRecord::instance().getLines(before)) {
            if (line.category == QLatin1String("Vantry"))
                logged.append(line.text);
        }
        QTEST(logged.join(QLatin1Char('|')), "logged");
        QCOMPARE(read(k), hindrance == QLatin1String("removed") ? QString() : value.toString());
        QCOMPARE(paths().size(), hindrance == QLatin1String("row removed") ? 0 : 1);
    }

    // An editor stays while others write, and what the person confirms comes last. Column 1 keeps the widths
    // that an edit gives it.
    void othersWriteDuringAnEdit()
    {
        create(k, QDateTime(QDate(2024, 1, 1), {}, Qt::UTC));
        create(QStringLiteral("n"), 0);
        drop({k, QStringLiteral("n")});
        QVERIFY(monitor->columnWidth(valueColumn) < monitor->width());
        doubleClick(*monitor, 0, valueColumn);
        type(QStringLiteral("2030"));
        std::thread other([this] {
            const auto writer = repository->getWriterInterface();
            for (int i = 1; i <= 2000; ++i) {
                writer->writeAttributeValue(QStringLiteral("n"), i, 15);
                writer->writeAttributeValue(k, QDateTime(QDate(2024, 1, 1 + i % 30), {}, Qt::UTC), 15);
            }
        });
        const QModelIndex number = monitor->model()->index(1, valueColumn);
        QTRY_COMPARE(number.data().toString(), QStringLiteral("2000"));
        other.join();
        QCOMPARE(monitor->columnWidth(valueColumn), monitor->width() + 5);
        auto* const edit = qobject_cast<QDateTimeEdit*>(editor());
        QVERIFY(edit && edit->hasFocus());
        QCOMPARE(edit->date(), QDate(2030, 1, 1));
        for (int row = 0; row < 2; ++row) // the table has shown all that the others wrote
            QTRY_VERIFY(number.siblingAtRow(row).data(Qt::BackgroundRole).isNull());
        QTest::mouseClick(page->findChild<QLineEdit*>(QStringLiteral("edtSearchPath")), Qt::LeftButton);
        QVERIFY(!editor() && monitor->selectionModel()->selectedIndexes().isEmpty());
        QVERIFY(read(k).startsWith(QLatin1String("2030-01-01")));
        QTRY_VERIFY(number.siblingAtRow(0).data().toString().startsWith(QLatin1String("2030-01-01")));
        QCoreApplication::processEvents(); // the header follows later
        QCOMPARE(monitor->columnWidth(valueColumn), monitor->width());
        monitor->scrollTo(number);                       // as the view does after a click
        QCOMPARE(monitor->columnViewportPosition(0), 0); // the names are still seen
    }

    void deleteCountsCells_data()
    {
        QTest::addColumn<QList<QPoint>>("cells"); // column, row
        QTest::addColumn<QString>("left");
        QTest::newRow("none") << QList<QPoint>() << QStringLiteral("a b c d e f");
        QTest::newRow("two rows") << QList<QPoint>{{0, 2}, {1, 5}} << QStringLiteral("a b d e");
        QTest::newRow("two of a row") << QList<QPoint>{{0, 1}, {1, 1}} << QStringLiteral("a d e f");
        QTest::newRow("two of the last") << QList<QPoint>{{0, 5}, {1, 5}} << QStringLiteral("a b c d e");
        QTest::newRow("runs that meet") << QList<QPoint>{{0, 0}, {1, 0}, {0, 1}} << QStringLiteral("d e f");
    }

    void deleteCountsCells()
    {
        drop(words("a b c d e f"));
        QFETCH(QList<QPoint>, cells);
        for (const QPoint& cell : cells)
            click(cell.y(), cell.x());
        QTest::keyClick(monitor, Qt::Key_Delete, Qt::ShiftModifier);
        QTEST(paths().join(QLatin1Char(' ')), "left");
    }

    void keysAndMenus()
    {
        create(QStringLiteral("a"), true);
        drop(words("a b"));
        const auto press = [this](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
            QTest::keyClick(monitor, key, modifiers);
            return monitor->selectionModel()->selectedIndexes().size();
        };
        const auto menu = [this] {
            QStringList entries;
            openMenu([&entries](QMenu& shown) {
                for (const QAction* const action : shown.actions())
                    entries.append(action->icon().isNull() ? QString() : action->text());
                QTest::keyClick(&shown, Qt::Key_Escape);
            });
            return entries.join(QLatin1Char('|'));
        };
        const QString always = QStringLiteral("Load|Save As|Save");
        QCOMPARE(menu(), always);
        click(0, 0);
        QCOMPARE(menu(), always + QStringLiteral("|Edit|Remove Selected Node"));
        const auto closed = monitor->findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(closed.size(), 2);
        for (const QMenu* const each : closed) { // they stay, and keep no picture of their own
            QVERIFY(!each->windowHandle());
            QCOMPARE(each->actions().first()->icon().cacheKey(),
                     closed.first()->actions().first()->icon().cacheKey());
        }

        for (const Qt::Key key :
             {Qt::Key_Down, Qt::Key_End, Qt::Key_PageDown, Qt::Key_B, Qt::Key_A, Qt::Key_F2})
            QCOMPARE(press(key), 1);
        QCOMPARE(press(Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier), 1);
        QCOMPARE(monitor->currentIndex(), monitor->model()->index(0, 0));
        QVERIFY(!monitor->indexWidget(monitor->currentIndex()));
        QCOMPARE(press(Qt::Key_A, Qt::ControlModifier), 2 * monitor->model()->columnCount());
        monitor->clearSelection();
        click(0, valueColumn);
        press(Qt::Key_F2, Qt::ControlModifier);
        QVERIFY(qobject_cast<QCheckBox*>(editor()));
        QTest::keyClick(editor(), Qt::Key_Escape);
        QTRY_VERIFY(monitor->hasFocus());
        press(Qt::Key_Tab);
        QVERIFY(!monitor->hasFocus());
    }

    void everyListEditLeavesAWindow()
    {
        create(k, words("a b"));
        drop({k});
        for (const char* const typed : {"c", "d"}) {
            doubleClick(*monitor, 0, valueColumn);
            editList(QString::fromLatin1(typed));
        }
        int hidden = 0;
        for (const QWidget* const window : QApplication::topLevelWidgets())
            hidden += qobject_cast<const Widgets::ListWidget*>(window) && window->isHidden() ? 1 : 0;
        QCOMPARE(hidden, 2);
    }

    void savesAndLoadsItsList()
    {
        const QString file = folder->filePath(QStringLiteral("list.dap"));
        drop(words("b a"));
        choose("Save", enterFile(file)); // the first one asks
        QCOMPARE(contentOf(file), QByteArray("b\na"));
        drop(words("c"));
        choose("Save");
        QCOMPARE(contentOf(file), QByteArray("b\na\nc"));

        const QString other = folder->filePath(QStringLiteral("other.dap"));
        writeFile(other, "d\r\n\nb\n");
        choose("Load", enterFile(other));
        QCOMPARE(paths(), words("d b"));
        writeFile(other, "a\xFF");
        choose("Load", enterFile(other),
               seeWarning({other + QStringLiteral(" cannot be read: it is not a text in UTF-8 (line 1)")}));
        QCOMPARE(paths(), words("d b"));

        QVERIFY(QFile::remove(other) && QDir().mkdir(other)); // where no list can be written
        choose("Save", seeWarning({QStringLiteral("Unable to Save")}));
        QVERIFY(QDir().rmdir(other));
        choose("Save"); // the name is still known
        QCOMPARE(contentOf(other), QByteArray("d\nb"));
    }

    void rowsArePutInOrder()
    {
        drop(words("a b c d e"));
        QWidget& header = *monitor->verticalHeader()->viewport();
        const auto place = [this](int row) { return QPoint(5, placeOf(row, 0).y()); };
        const QPoint half(0, monitor->rowHeight(0) / 2 - 2);
        const auto drag = [&](int row, const QPoint& to) {
            QVERIFY(TestSupport::drag(header, place(row), header, to));
        };
        drag(3, place(1) - half);
        QTRY_COMPARE(paths(), words("a d b c e"));
        QTest::mouseClick(&header, Qt::LeftButton, Qt::ControlModifier, place(0));
        QCOMPARE(selected(), words("a d"));
        drag(1, place(3) + half);
        QTRY_COMPARE(paths(), words("b c a d e"));
        QCOMPARE(selected(), words("a d"));
        drag(3, QPoint(5, header.height() + 40));
        QTRY_COMPARE(paths(), words("b c e a d"));
        QVERIFY(TestSupport::click(header, place(3))); // one of the two
        QTRY_COMPARE(selected(), words("a"));

        click(0, 0); // rows b and a
        const auto press = [](const char* key) { QVERIFY(TestSupport::pressKey(QLatin1String(key))); };
        press("alt+Up"); // b is at the end already
        QTRY_COMPARE(paths(), words("b c a e d"));
        press("alt+Down");
        QTRY_COMPARE(paths(), words("c b e a d"));
        for (int i = 0; i < 3; ++i)
            press("alt+Down");
        QTRY_COMPARE(paths(), words("c e d b a"));
        QCOMPARE(selected(), words("b a"));
        QTest::keyClick(monitor, Qt::Key_F2); // begins nothing outside the value column
        QVERIFY(monitor->hasFocus());
    }

    // After an edit it is as wide as the view, until something else changes.
    void theValueColumnFitsAgain()
    {
        create(k, QStringLiteral("old"));
        create(QStringLiteral("n"), 0);
        drop({k, QStringLiteral("n")});
        const int before = monitor->columnWidth(valueColumn);
        const auto isFit = [&] { return monitor->columnWidth(valueColumn) <= before + 20; };
        const auto edit = [&](const char* value) {
            doubleClick(*monitor, 0, valueColumn);
            type(QLatin1String(value));
            QTest::keyClick(editor(), Qt::Key_Return);
            QVERIFY(!editor());
            QTRY_COMPARE(monitor->model()->index(0, valueColumn).data().toString(), QLatin1String(value));
            QCoreApplication::processEvents();
            QCOMPARE(monitor->columnWidth(valueColumn), monitor->width());
        };
        const auto writer = repository->getWriterInterface();
        edit("new");
        writer->writeAttributeValue(QStringLiteral("n"), 1, 15);
        QTRY_VERIFY(isFit());
        edit("newer");
        writer->writeAttributeValue(k, QStringLiteral("other"), 15);
        QTRY_VERIFY(isFit());
        edit("list");
        const QString file = folder->filePath(QStringLiteral("list.dap"));
        writeFile(file, "n\nk");
        choose("Load", enterFile(file));
        QTRY_VERIFY(isFit());

        writer->writeAttributeValue(k, QString(5000, QLatin1Char('x')), 15);
        const auto areAllSeen = [this] {
            return monitor->horizontalHeader()->length() == monitor->viewport()->width();
        };
        QTRY_VERIFY(areAllSeen());
        page->resize(1500, 800);
        QTRY_VERIFY(areAllSeen());
        const int names = monitor->columnWidth(0);
        drop({QStringLiteral("a.name.that.is.longer.than.any.other.of.the.list")});
        QTRY_VERIFY(monitor->columnWidth(4) > names + 100); // where paths are
    }

    void rowsAreDraggedFromTheTree()
    {
        create(QStringLiteral("a"), 1);
        create(QStringLiteral("b"), 1);
        for (int i = 0; i < 501; ++i)
            create(QStringLiteral("many.n%1").arg(i), i);
        QTest::mouseClick(page->findChild<QPushButton*>(QStringLiteral("btnReadAttribute")), Qt::LeftButton);
        const auto& tree = *page->findChild<QTreeView*>(QStringLiteral("treeView"));
        const QWidget& table = *monitor->viewport();
        const auto dragItem = [&](const char* name) {
            const QModelIndexList items =
                tree.model()->match(tree.model()->index(0, 0), Qt::DisplayRole, QLatin1String(name));
            return TestSupport::drag(*tree.viewport(), tree.visualRect(items.value(0)).center(), table,
                                     QPoint(60, table.height() - 10));
        };
        QVERIFY(dragItem("b"));
        QTRY_COMPARE(paths(), words("b"));
        QVERIFY(dragItem("a"));
        QTRY_COMPARE(paths(), words("b a"));
        QVERIFY(TestSupport::drag(table, placeOf(1, 0), table, placeOf(0, 1) - QPoint(0, 10)));
        QTRY_COMPARE(selected(), words("b a")); // no drag of cells
        QCOMPARE(paths(), words("b a"));
        for (const Qt::Key answer : {Qt::Key_N, Qt::Key_Y}) {
            const DialogDriver driver([&](QWidget& dialog) {
                QVERIFY(dynamic_cast<QMessageBox&>(dialog).text().contains(QLatin1String("501")));
                QTest::keyClick(&dialog, answer, Qt::AltModifier);
            });
            QVERIFY(dragItem("many"));
            QTRY_VERIFY(driver.isDone());
            QTRY_COMPARE(paths().size(), answer == Qt::Key_N ? 2 : 503);
        }
        monitor->model()->removeRows(2, 501);
        const DialogDriver driver([this](QWidget&) { page.reset(); }); // as when its plug-in is closed
        QVERIFY(dragItem("many"));
        QTRY_VERIFY(driver.isDone());
    }

private:
    void create(const QString& path, const QVariant& value, AccessMode access = AccessMode::ReadWrite)
    {
        QVERIFY(repository->getWriterInterface()->createAttribute(path, value, 2, static_cast<int>(access)));
    }

    QString read(const QString& path) const
    {
        QVariant value;
        repository->getReaderInterface()->readAttributeValue(path, value, 0);
        return value.toString();
    }

    // As another program drops a text.
    void drop(const QStringList& dropped)
    {
        QMimeData data;
        data.setText(dropped.join(QLatin1Char('\n')));
        const QPoint place(20, monitor->viewport()->height() - 5);
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QDropEvent end(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        for (QEvent* const event :
             {static_cast<QEvent*>(&enter), static_cast<QEvent*>(&move), static_cast<QEvent*>(&end)})
            QApplication::sendEvent(monitor->viewport(), event);
        QCOMPARE(paths().mid(paths().size() - dropped.size()), dropped);
    }

    QStringList paths() const
    {
        return qobject_cast<AdvancedAttributeModel*>(monitor->model())->getAttributeFullPathList();
    }

    // The names of the rows with a selected cell.
    QStringList selected() const
    {
        QStringList names;
        for (int row = 0; row < monitor->model()->rowCount(); ++row) {
            if (monitor->selectionModel()->rowIntersectsSelection(row, {}))
                names.append(paths().at(row));
        }
        return names;
    }

    QPoint placeOf(int row, int column) const
    {
        return monitor->visualRect(monitor->model()->index(row, column)).center();
    }

    // Adds a cell to the selection.
    void click(int row, int column)
    {
        QTest::mouseClick(monitor->viewport(), Qt::LeftButton, Qt::ControlModifier, placeOf(row, column));
        monitor->setFocus();
    }

    QWidget* editor() const { return monitor->indexWidget(monitor->model()->index(0, valueColumn)); }

    // Keys for the open editor of the first row, instead of what it shows.
    void type(const QString& typed)
    {
        QVERIFY(editor() && editor()->hasFocus());
        QCOMPARE(editor()->geometry(), monitor->visualRect(monitor->model()->index(0, valueColumn)));
        QTest::keyClicks(editor(), typed);
    }

    void openMenu(const std::function<void(QMenu&)>& use)
    {
        const DialogDriver driver([&](QWidget& menu) { use(dynamic_cast<QMenu&>(menu)); });
        QContextMenuEvent event(QContextMenuEvent::Mouse, {20, 20}, QCursor::pos());
        QApplication::sendEvent(monitor->viewport(), &event);
    }

    // Chooses an entry of the context menu; the dialogs that come then are answered in turn.
    void choose(const char* entry, const Answer& answer = {}, const Answer& secondAnswer = {})
    {
        openMenu([&](QMenu& menu) {
            std::optional<DialogDriver> second;
            std::optional<DialogDriver> first;
            if (answer) {
                first.emplace([&](QWidget& dialog) {
                    if (secondAnswer)
                        second.emplace(secondAnswer);
                    answer(dialog);
                });
            }
            for (QAction* const action : menu.actions()) {
                if (action->text() == QLatin1String(entry))
                    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
            }
        });
    }

    std::unique_ptr<QTemporaryDir> folder;
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository;
    std::unique_ptr<Widgets::AttributeBrowserWidget> page;
    AppConfigDataAccessWidget* monitor = nullptr; // of the page
};

VANTRY_TEST_MAIN(QApplication, MonitorTest)

#include "monitor_test.moc"
