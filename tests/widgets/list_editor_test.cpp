#include "host/FrameworkCore/AppConfig/StatusCode.h"
#include "host/Utilities/RepositoryAccess.h"
#include "tests/support/Columns.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/LoggedFailures.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"
#include "widgets/ListWidget.h"

#include <QApplication>
#include <QLineEdit>
#include <QTableView>
#include <QToolButton>

#include <optional>

using TestSupport::FakeRepository;
using TestSupport::words;
using Widgets::ListWidget;

namespace {

const QString path = QStringLiteral("plant.cell.names");

} // namespace

class ListEditorTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        repository = std::make_shared<FakeRepository>();
        Utilities::SetAppConfigRepositoryInterface(repository);
        log.emplace();
    }

    void cleanup()
    {
        editor.reset();
        Utilities::SetAppConfigRepositoryInterface({});
    }

    void editsTexts()
    {
        open(words("a b"));
        clickCell(1, 1);
        QVERIFY(!cellEditor()); // one click edits nothing
        doubleClickCell(0, 0);
        QVERIFY(!cellEditor()); // nor can a number be edited
        doubleClickCell(1, 1);
        QVERIFY(cellEditor());
        QTest::keyClicks(cellEditor(), QStringLiteral("new"));
        QTest::keyClick(cellEditor(), Qt::Key_Return);
        clickCell(0, 1);
        QTest::keyClicks(&table(), QStringLiteral("t"));
        QVERIFY(cellEditor());
        QTest::keyClicks(cellEditor(), QStringLiteral("yped"));
        click("btnWrite"); // takes what is being typed
        QCOMPARE(written(), QVariantList{words("typed new")});
    }

    void keepsTextsWhole()
    {
        const QStringList elements{QString(50000, QLatin1Char('x')), QStringLiteral("two\nlines"), QString(),
                                   QStringLiteral(" ;,\\ ")};
        open(elements);
        for (int row = 0; row < elements.size(); ++row) {
            doubleClickCell(row, 1);
            QTest::keyClick(cellEditor(), Qt::Key_Return);
        }
        click("btnWrite");
        QCOMPARE(written(), QVariantList{elements});
    }

    void textsTooLongForALineStay()
    {
        const QStringList elements{QString(50001, QLatin1Char('x')),
                                   QString::fromUtf8("a\u05d0").repeated(10000), QStringLiteral("short")};
        open(elements);
        for (int row = 0; row < elements.size(); ++row) {
            const bool isEdited = row == 2;
            doubleClickCell(row, 1);
            QCOMPARE(cellEditor() != nullptr, isEdited);
            const QString tip = table().model()->index(row, 1).data(Qt::ToolTipRole).toString();
            QCOMPARE(tip.contains(QStringLiteral("too long to be edited")), !isEdited);
        }
        click("btnWrite");
        QCOMPARE(written(), QVariantList{elements});
    }

    void countsItsRows_data()
    {
        // clicks: + and -
        const auto row = TestSupport::columns<QStringList, QString, QStringList, QVariantList>(
            "elements", "clicks", "rows", "writes");
        const auto list = [](const QStringList& texts) { return QVariantList{QVariant(texts)}; };
        row("as it is", words("a b"), QString(), words("0:a 1:b"), list(words("a b")));
        row("one more", words("a b"), "+", words("0:a 1:b 2:"), list(words("a b") << QString()));
        row("the last goes", words("a b c"), "--", words("0:a"), list(words("a")));
        // The count goes below zero, and what follows goes by it.
        row("one too few", QStringList(), "-", QStringList(), QVariantList());
        row("back to none", QStringList(), "-+", QStringList(), list({}));
        row("back to one", QStringList(), "--+++", words("0:"), list({QString()}));
    }

    void countsItsRows()
    {
        QFETCH(QStringList, elements);
        QFETCH(QString, clicks);
        open(elements);
        QCOMPARE(editor->windowModality(), Qt::ApplicationModal);
        clickCell(0, 1); // the row that is chosen does not matter
        for (const QChar button : clicks)
            click(button == QLatin1Char('+') ? "btnPlus" : "btnMinus");
        QTEST(shown(), "rows");
        click("btnWrite");
        QTEST(written(), "writes");
        QCOMPARE(log->texts().join(QString()),
                 written().isEmpty()
                     ? QStringLiteral("Cannot Convert Attribute Value to Variant Type QStringList")
                     : QString());
        QVERIFY(!editor->isVisible());
    }

    void writesOverWhatOthersWrote()
    {
        open(words("a"));
        repository->set(path, words("newer"));
        click("btnWrite");
        QCOMPARE(written(), QVariantList{words("a")});
    }

    void closesWithoutWriting_data()
    {
        const auto row = TestSupport::columns<QString>("way");
        for (const char* way : {"btnCancel", "escape", "another part", "another window"})
            row(way, way);
    }

    void closesWithoutWriting()
    {
        QFETCH(QString, way);
        open(words("a"));
        click("btnPlus");
        if (way == QLatin1String("escape"))
            QTest::keyClick(editor.get(), Qt::Key_Escape);
        else if (way == QLatin1String("another part"))
            QTest::keyClick(editor.get(), Qt::Key_Backtab);
        else if (way == QLatin1String("another window"))
            QApplication::setActiveWindow(nullptr);
        else
            click("btnCancel");
        QTRY_VERIFY(!editor->isVisible());
        QVERIFY(repository->getWrites().isEmpty());
        QCOMPARE(log->texts(), QStringList());
    }

    void logsARefusal()
    {
        open(words("a"));
        repository->setNextStatus(int(FrameworkCore::AppConfig::NotWritable));
        click("btnWrite");
        QCOMPARE(log->texts(),
                 QStringList(QStringLiteral("Write To Attribute ") + path + QStringLiteral(" Failed")));
        QVERIFY(!editor->isVisible());
    }

private:
    void open(const QStringList& elements)
    {
        repository->set(path, elements);
        editor = std::make_unique<ListWidget>(nullptr, path, elements);
        QVERIFY(TestSupport::showActive(*editor));
    }

    QTableView& table() const { return *editor->findChild<QTableView*>(); }

    void click(const char* button)
    {
        QTest::mouseClick(editor->findChild<QToolButton*>(QLatin1String(button)), Qt::LeftButton);
    }

    // Of what is seen of the cell: a click beside the window gives no focus.
    QPoint centre(int row, int column) const
    {
        const QRect cell = table().visualRect(table().model()->index(row, column));
        return cell.intersected(table().viewport()->rect()).center();
    }

    void clickCell(int row, int column)
    {
        QTest::mouseClick(table().viewport(), Qt::LeftButton, Qt::NoModifier, centre(row, column));
    }

    void doubleClickCell(int row, int column)
    {
        clickCell(row, column);
        QTest::mouseDClick(table().viewport(), Qt::LeftButton, Qt::NoModifier, centre(row, column));
    }

    QLineEdit* cellEditor() const { return qobject_cast<QLineEdit*>(QApplication::focusWidget()); }

    QStringList shown() const
    {
        QStringList rows;
        const QAbstractItemModel& model = *table().model();
        for (int row = 0; row < model.rowCount(); ++row)
            rows.append(model.index(row, 0).data().toString() + QLatin1Char(':') +
                        model.index(row, 1).data().toString());
        return rows;
    }

    QVariantList written() const
    {
        QVariantList values;
        for (const FakeRepository::Write& write : repository->getWrites())
            values.append(write.value);
        return values;
    }

    std::shared_ptr<FakeRepository> repository;
    std::unique_ptr<ListWidget> editor;
    std::optional<TestSupport::LoggedFailures> log; // of one test
};

VANTRY_TEST_MAIN(QApplication, ListEditorTest)

#include "list_editor_test.moc"
