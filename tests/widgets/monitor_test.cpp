#include "host/Shared/Logging/LogRecord.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestRun.h"
#include "widgets/AppConfigDataAccessWidget.h"
#include "widgets/ListWidget.h"

#include <QApplication>
#include <QCheckBox>
#include <QDateTimeEdit>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QToolButton>
#include <QVBoxLayout>

#include <optional>
#include <thread>

using FrameworkCore::AppConfig::AccessMode;
using FrameworkCore::AppConfig::BackendConfiguration;
using FrameworkCore::AppConfig::Interfaces::RepositoryInterface;
using Shared::Logging::LogLine;
using Shared::Logging::LogRecord;
using TestSupport::DialogDriver;
using TestSupport::FakeRepository;

namespace {

constexpr int valueColumn = 1;
constexpr int pathColumn = 4;

const char* const everyType = R"({
  // an attribute of every type
  "flag": true,
  "count": -5,
  "big": 18446744073709551614,
  "ratio": 0.1,
  "name": "x",
  "tags": ["a", "b"],
  "nothing": null,
  "day": "2024-02-29",
  "clock": "23:59:58",
  "moment": "2023-01-02T10:20:30.250Z",
  "bytes": "\\xff",
  "$types": {"day": "date", "clock": "time", "moment": "datetime", "bytes": "bytes"}
}
)";

QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

void writeFile(const QString& name, const QByteArray& bytes)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray readFile(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

QStringList failuresSince(quint64 number)
{
    QStringList texts;
    for (const LogLine& line : LogRecord::instance().getLines(number)) {
        if (static_cast<int>(line.type) == 3 && line.category == QLatin1String("Vantry"))
            texts.append(line.text);
    }
    return texts;
}

quint64 lastLogNumber()
{
    const auto lines = LogRecord::instance().getLines();
    return lines.isEmpty() ? 0 : lines.last().number;
}

// The monitor as a person sees and uses it, with something before and behind it that takes the keyboard.
class Desk : public QWidget
{
public:
    Desk() : before(this), monitor(this), behind(this)
    {
        auto* const layout = new QVBoxLayout(this);
        for (QWidget* const part : {static_cast<QWidget*>(&before), static_cast<QWidget*>(&monitor),
                                    static_cast<QWidget*>(&behind)})
            layout->addWidget(part);
        resize(700, 400);
    }

    QLineEdit before;
    AppConfigDataAccessWidget monitor;
    QLineEdit behind;

    // As another program drops a text.
    void drop(const QStringList& paths)
    {
        QMimeData dropped;
        dropped.setText(paths.join(QLatin1Char('\n')));
        const QPoint place(20, monitor.viewport()->height() - 5);
        QDragEnterEvent enter(place, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(monitor.viewport(), &enter);
        QDragMoveEvent move(place, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(monitor.viewport(), &move);
        QDropEvent event(place, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(monitor.viewport(), &event);
    }

    QStringList rows() const
    {
        QStringList paths;
        for (int row = 0; row < monitor.model()->rowCount(); ++row)
            paths.append(text(row, pathColumn));
        return paths;
    }

    QString text(int row, int column) const { return monitor.model()->index(row, column).data().toString(); }

    QPoint place(int row, int column) const
    {
        return monitor.visualRect(monitor.model()->index(row, column)).center();
    }

    void click(int row, int column, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(monitor.viewport(), Qt::LeftButton, modifiers, place(row, column));
    }

    void doubleClick(int row, int column)
    {
        click(row, column);
        QTest::mouseDClick(monitor.viewport(), Qt::LeftButton, {}, place(row, column));
    }

    QWidget* editor(int row = 0) const
    {
        return monitor.indexWidget(monitor.model()->index(row, valueColumn));
    }

    void openMenu(const std::function<void(QMenu&)>& use)
    {
        const DialogDriver driver([&](QWidget& menu) { use(dynamic_cast<QMenu&>(menu)); });
        QContextMenuEvent event(QContextMenuEvent::Mouse, {20, 20}, QCursor::pos());
        QApplication::sendEvent(monitor.viewport(), &event);
    }

    // Chooses an entry of the context menu; the dialogs that come then are answered by the functions in turn.
    void choose(const char* entry, const std::function<void(QWidget&)>& answer = {},
                const std::function<void(QWidget&)>& secondAnswer = {})
    {
        openMenu([&](QMenu& menu) {
            for (QAction* const action : menu.actions()) {
                if (action->text() != QLatin1String(entry))
                    continue;
                std::optional<DialogDriver> second;
                std::optional<DialogDriver> first;
                if (answer) {
                    first.emplace([&](QWidget& dialog) {
                        if (secondAnswer)
                            second.emplace(secondAnswer);
                        answer(dialog);
                    });
                }
                QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(action).center());
            }
        });
    }
};

std::function<void(QWidget&)> enterFile(const QString& name)
{
    return [name](QWidget& dialog) {
        auto* const edit = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        QVERIFY(edit);
        edit->selectAll();
        QTest::keyClicks(edit, name);
        QTest::keyClick(edit, Qt::Key_Return);
    };
}

// Notes the title and text of a warning and closes it.
std::function<void(QWidget&)> closeWarning(QStringList& seen)
{
    return [&seen](QWidget& dialog) {
        auto* const box = qobject_cast<QMessageBox*>(&dialog);
        QVERIFY(box);
        seen = QStringList{box->windowTitle(), box->text()};
        QTest::keyClick(box, Qt::Key_Return);
    };
}

} // namespace

class MonitorTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        use(Repository::AttributeRepository::create());
    }

    void cleanup()
    {
        desk.reset();
        // Nobody else deletes them.
        for (QWidget* const window : QApplication::topLevelWidgets()) {
            if (qobject_cast<Widgets::ListWidget*>(window))
                delete window;
        }
        Utilities::SetAppConfigRepositoryInterface({});
        repository.reset();
        fake.reset();
    }

    void editsEveryType_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QByteArray>("before"); // in the file
        QTest::addColumn<QByteArray>("after");
        const auto row = [](const char* path, const char* typed, const char* before, const char* after) {
            QTest::newRow(path) << QString::fromLatin1(path) << QString::fromUtf8(typed) << QByteArray(before)
                                << QByteArray(after);
        };
        row("flag", " ", "true", "false");
        row("count", "-9223372036854775808", "-5", "-9223372036854775808");
        row("big", "18446744073709551615", "18446744073709551614", "18446744073709551615");
        row("ratio", "-1e-3", "0.1", "-0.001");
        row("name", "say \"hi\"", "\"x\"", "\"say \\\"hi\\\"\"");
        row("tags", "c", "[\"a\", \"b\"]", "[\"c\", \"b\", \"\"]");
        row("nothing", "5", "null", "\"5\"");
        row("day", "20250301", "2024-02-29", "2025-03-01");
        row("clock", "010203", "23:59:58", "01:02:03");
        row("moment", "20250301040506007", "2023-01-02T10:20:30.250Z", "2025-03-01T04:05:06.007");
        row("bytes", "", "", "");
    }

    void editsEveryType()
    {
        const QString file = folder->filePath(QStringLiteral("all.json"));
        writeFile(file, everyType);
        QVERIFY(repository->getBackendInterface()->createBackend(
            QStringLiteral("json"), QStringLiteral("all"), {file, {}, AccessMode::ReadWrite}, 2));
        QFETCH(QString, path);
        QFETCH(QString, typed);
        open({QStringLiteral("all.") + path});
        desk->doubleClick(0, valueColumn);
        if (typed.isEmpty())
            QVERIFY(!desk->editor());
        else if (path == QLatin1String("tags"))
            editList(typed);
        else {
            type(typed);
            endEdit();
        }
        QVERIFY(repository->getBackendInterface()->saveBackend(QStringLiteral("all")));
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QCOMPARE(readFile(file), QByteArray(everyType).replace(before, after));
        QVERIFY(failuresSince(0).isEmpty());
    }

    void escapeWritesNothing_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("typed");
        QTest::newRow("bool") << QVariant(true) << QStringLiteral(" ");
        QTest::newRow("text") << QVariant(QStringLiteral("x")) << QStringLiteral("new");
        QTest::newRow("time") << QVariant(QTime(1, 2, 3)) << QStringLiteral("040506");
    }

    void escapeWritesNothing()
    {
        useFake();
        QFETCH(QVariant, value);
        QFETCH(QString, typed);
        fake->set(QStringLiteral("k"), value);
        open(words("k"));
        const QString shown = desk->text(0, valueColumn);
        desk->doubleClick(0, valueColumn);
        type(typed);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        QVERIFY(!desk->editor());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(fake->getWrites().isEmpty());
        QCOMPARE(desk->text(0, valueColumn), shown);
        QVERIFY(desk->monitor.hasFocus()); // for the next row
    }

    void refusedEditsEnd_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("hindrance");
        QTest::addColumn<QString>("logged");
        const auto row = [](const char* name, const QVariant& value, const char* typed, const char* hindrance,
                            const char* logged) {
            QTest::newRow(name) << value << QString::fromLatin1(typed) << QString::fromLatin1(hindrance)
                                << QString::fromLatin1(logged);
        };
        row("read-only", 5, "6", "read-only", "Write To  k Failed. Bad Writable, Read Only");
        row("read-only bool", true, " ", "read-only", "Attribute Update failed ");
        row("validation", 5, "11", "range(0,10)", "Write To Attribute k Failed");
        row("letters", 5, "six", "", "Cannot Convert Attribute Value to Variant Type qlonglong");
        row("removed", 5, "6", "removed", "Write To  k Failed. Bad Writable, Read Only");
        row("removed time", QTime(1, 2, 3), "040506", "removed", "Write To Attribute k Failed");
    }

    void refusedEditsEnd()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, typed);
        QFETCH(QString, hindrance);
        const QString k = QStringLiteral("k");
        const bool isReadOnly = hindrance == QLatin1String("read-only");
        const bool isRemoved = hindrance == QLatin1String("removed");
        repository->getWriterInterface()->createAttribute(k, value, 2, isReadOnly ? 1 : 3);
        if (hindrance.contains(QLatin1Char('(')))
            QVERIFY(repository->getValidationInterface()->addValidation(k, hindrance) != 0);
        open(words("k"));
        desk->doubleClick(0, valueColumn);
        type(typed);
        if (isRemoved)
            repository->getTreeInterface()->removeTree(k);
        const quint64 before = lastLogNumber();
        endEdit();
        QTEST(failuresSince(before).join(QLatin1Char('|')), "logged");
        QVariant now;
        repository->getReaderInterface()->readAttributeValue(k, now, 0);
        QCOMPARE(now.toString(), isRemoved ? QString() : value.toString());
        QCOMPARE(desk->rows(), words("k"));
    }

    // An editor stays while others write, and what the person confirms comes last.
    void othersWriteDuringAnEdit()
    {
        const auto writer = repository->getWriterInterface();
        for (const QString& path : words("a b"))
            QVERIFY(writer->createAttribute(path, 0, 2, 3));
        open(words("a b"));
        desk->doubleClick(0, valueColumn);
        type(QStringLiteral("42"));
        std::thread other([&writer] {
            for (int i = 1; i <= 2000; ++i) {
                for (const QString& path : words("a b"))
                    writer->writeAttributeValue(path, i, 15);
            }
        });
        QTRY_COMPARE(desk->text(0, valueColumn), QStringLiteral("2000"));
        other.join();
        QTRY_COMPARE(desk->text(1, valueColumn), QStringLiteral("2000"));
        auto* const editor = qobject_cast<QLineEdit*>(desk->editor());
        QVERIFY(editor && editor->hasFocus());
        QCOMPARE(editor->text(), QStringLiteral("42"));
        endEdit();
        QTRY_COMPARE(desk->text(0, valueColumn), QStringLiteral("42"));
    }

    void rowGoesDuringAnEdit()
    {
        useFake();
        for (const QString& path : words("a b"))
            fake->set(path, true);
        open(words("a b"));
        desk->doubleClick(0, valueColumn);
        type(QStringLiteral(" "));
        desk->monitor.model()->removeRow(0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(desk->rows(), words("b"));
        QVERIFY(!desk->editor());
    }

    // Column 1 is widened for a date, and keeps what an edit gave it, whatever values come.
    void valueColumnKeepsItsWidth()
    {
        useFake();
        fake->set(QStringLiteral("k"), QDate(2024, 2, 29));
        open(words("k"));
        const AppConfigDataAccessWidget& monitor = desk->monitor;
        for (int column = 0; column < monitor.model()->columnCount(); ++column)
            QCOMPARE(monitor.horizontalHeader()->sectionResizeMode(column), QHeaderView::ResizeToContents);
        QVERIFY(monitor.columnWidth(valueColumn) < monitor.width());
        const auto changeTo = [this](int day) {
            fake->set(QStringLiteral("k"), QDate(2024, 3, day));
            QTRY_VERIFY(desk->text(0, valueColumn).endsWith(QString::number(day)));
            QCoreApplication::processEvents(); // the header follows later
        };
        desk->doubleClick(0, valueColumn);
        changeTo(11);
        QCOMPARE(monitor.columnWidth(valueColumn), monitor.width() + 5);
        endEdit();
        changeTo(12);
        QCOMPARE(monitor.columnWidth(valueColumn), monitor.width());
        QVERIFY(monitor.selectionModel()->selectedIndexes().isEmpty());
    }

    void deleteCountsCells_data()
    {
        QTest::addColumn<QList<QPoint>>("cells"); // column, row
        QTest::addColumn<QString>("left");
        QTest::newRow("none") << QList<QPoint>() << QStringLiteral("a b c d e f");
        QTest::newRow("two rows") << QList<QPoint>{{0, 2}, {1, 5}} << QStringLiteral("a b d e");
        QTest::newRow("two of a row") << QList<QPoint>{{0, 1}, {1, 1}} << QStringLiteral("a d e f");
        QTest::newRow("two of the last") << QList<QPoint>{{0, 5}, {1, 5}} << QStringLiteral("a b c d e");
    }

    void deleteCountsCells()
    {
        open(words("a b c d e f"));
        QFETCH(QList<QPoint>, cells);
        for (const QPoint& cell : cells)
            desk->click(cell.y(), cell.x(), Qt::ControlModifier);
        desk->monitor.setFocus();
        QTest::keyClick(&desk->monitor, Qt::Key_Delete, Qt::ShiftModifier);
        QTEST(desk->rows().join(QLatin1Char(' ')), "left");
    }

    void keysDoWhatIsSaid()
    {
        useFake();
        fake->set(QStringLiteral("a"), true);
        open(words("a b"));
        AppConfigDataAccessWidget& monitor = desk->monitor;
        desk->click(0, 0);
        const auto press = [&monitor](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
            QTest::keyClick(&monitor, key, modifiers);
            return monitor.selectionModel()->selectedIndexes().size();
        };
        QCOMPARE(press(Qt::Key_A, Qt::ControlModifier | Qt::ShiftModifier), 1);
        QCOMPARE(press(Qt::Key_A), 1);
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_End, Qt::Key_PageDown, Qt::Key_B})
            press(key);
        QCOMPARE(monitor.currentIndex(), monitor.model()->index(0, 0));
        press(Qt::Key_F2);
        QVERIFY(!desk->editor());
        QCOMPARE(press(Qt::Key_A, Qt::ControlModifier), 2 * monitor.model()->columnCount());
        desk->click(0, valueColumn);
        press(Qt::Key_F2, Qt::ControlModifier);
        QVERIFY(desk->editor());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);

        monitor.setFocus();
        press(Qt::Key_Tab);
        QVERIFY(desk->behind.hasFocus());
        QTest::keyClick(&desk->behind, Qt::Key_Backtab);
        QVERIFY(monitor.hasFocus());
        press(Qt::Key_Backtab);
        QVERIFY(desk->before.hasFocus());
    }

    void everyMenuStaysAChild()
    {
        open(words("a"));
        const auto entries = [this] {
            QStringList texts;
            desk->openMenu([&texts](QMenu& menu) {
                for (const QAction* const action : menu.actions())
                    texts.append(action->icon().isNull() ? QStringLiteral("no icon") : action->text());
                QTest::keyClick(&menu, Qt::Key_Escape);
            });
            return texts.join(QLatin1Char('|'));
        };
        const QString always = QStringLiteral("Load|Save As|Save");
        QCOMPARE(entries(), always);
        desk->click(0, 3);
        QCOMPARE(entries(), always + QStringLiteral("|Edit|Remove Selected Node"));
        QCOMPARE(desk->monitor.findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly).size(), 2);
        desk->choose("Remove Selected Node");
        QCOMPARE(desk->rows(), QStringList());
    }

    void everyListEditLeavesAWindow()
    {
        useFake();
        fake->set(QStringLiteral("k"), words("a b"));
        open(words("k"));
        for (const char* const typed : {"c", "d"}) {
            desk->doubleClick(0, valueColumn);
            editList(QString::fromLatin1(typed));
        }
        int windows = 0;
        for (const QWidget* const window : QApplication::topLevelWidgets()) {
            windows += qobject_cast<const Widgets::ListWidget*>(window) ? 1 : 0;
            QVERIFY(!window->isVisible() || window == desk.get());
        }
        QCOMPARE(windows, 2);
        QCOMPARE(fake->getValue(QStringLiteral("k")).toStringList().size(), 4);
    }

    void savesAndLoadsItsList()
    {
        const QString file = folder->filePath(QStringLiteral("list.dap"));
        open(words("b a"));
        desk->choose("Save", enterFile(file)); // the first one asks
        QCOMPARE(readFile(file), QByteArray("b\na"));
        desk->drop(words("c"));
        desk->choose("Save");
        QCOMPARE(readFile(file), QByteArray("b\na\nc"));

        const QString other = folder->filePath(QStringLiteral("other.dap"));
        writeFile(other, "d\r\n\nb\ngr\xC3\xBC\xC3\x9F\n");
        desk->choose("Load", enterFile(other));
        const QStringList loaded{QStringLiteral("d"), QStringLiteral("b"), QString::fromUtf8("grüß")};
        QCOMPARE(desk->rows(), loaded);
        desk->choose("Save");
        QCOMPARE(readFile(other), QByteArray("d\nb\ngr\xC3\xBC\xC3\x9F"));
        desk->choose("Load", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        QCOMPARE(desk->rows(), loaded);
    }

    void failuresLeaveTheList()
    {
        const QString bad = folder->filePath(QStringLiteral("bad.dap"));
        writeFile(bad, "a\xFF");
        open(words("b a"));
        QStringList seen;
        desk->choose("Load", enterFile(bad), closeWarning(seen));
        QCOMPARE(seen, QStringList({QString(), bad + QLatin1String(" cannot be read: it is no text in UTF-8 "
                                                                   "(line 1)")}));
        QCOMPARE(desk->rows(), words("b a"));

        const QString file = folder->filePath(QStringLiteral("list.dap"));
        desk->choose("Save As", enterFile(file));
        QVERIFY(QFile::remove(file));
        QVERIFY(QDir().mkdir(file)); // no such list can be written
        const QStringList unable{QString(), QStringLiteral("Unable to Save")};
        desk->choose("Save", closeWarning(seen));
        QCOMPARE(seen, unable);
        QVERIFY(QDir().rmdir(file));
        desk->choose("Save"); // its name is still known
        QCOMPARE(readFile(file), QByteArray("b\na"));
    }

private:
    void useFake()
    {
        fake = std::make_shared<FakeRepository>();
        use(fake);
    }

    void use(const std::shared_ptr<RepositoryInterface>& used)
    {
        repository = used;
        Utilities::SetAppConfigRepositoryInterface(repository);
    }

    void open(const QStringList& paths)
    {
        desk = std::make_unique<Desk>();
        QVERIFY(TestSupport::showActive(*desk));
        desk->drop(paths);
        QCOMPARE(desk->rows(), paths);
    }

    // Replaces what the open editor of the first row shows.
    void type(const QString& typed)
    {
        QWidget* const editor = desk->editor();
        QVERIFY(editor && editor->hasFocus());
        QCOMPARE(editor->geometry(), desk->monitor.visualRect(desk->monitor.model()->index(0, valueColumn)));
        if (qobject_cast<QLineEdit*>(editor))
            QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, typed);
    }

    // As Return does, or the loss of focus that follows it.
    void endEdit()
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        if (desk->editor())
            QTest::mouseClick(&desk->behind, Qt::LeftButton);
        QVERIFY(!desk->editor());
    }

    void editList(const QString& typed)
    {
        QWidget* const window = QApplication::activeModalWidget();
        QVERIFY(window && !window->parentWidget());
        QVERIFY(QTest::qWaitForWindowActive(window));
        auto* const table = window->findChild<QTableWidget*>();
        const QRect cell = table->visualRect(table->model()->index(0, 1));
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell.center());
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, cell.center());
        QTest::keyClicks(QApplication::focusWidget(), typed);
        QTest::mouseClick(window->findChild<QToolButton*>(QStringLiteral("btnPlus")), Qt::LeftButton);
        QTest::mouseClick(window->findChild<QToolButton*>(QStringLiteral("btnWrite")), Qt::LeftButton);
        QVERIFY(!window->isVisible());
    }

    std::unique_ptr<QTemporaryDir> folder;
    std::shared_ptr<RepositoryInterface> repository;
    std::shared_ptr<FakeRepository> fake; // when the test uses one
    std::unique_ptr<Desk> desk;
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<QApplication, MonitorTest>(argc, argv);
}

#include "monitor_test.moc"
