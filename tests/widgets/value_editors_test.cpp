#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Utilities/RepositoryAccess.h"
#include "tests/support/Columns.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/LoggedFailures.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"
#include "widgets/CheckBoxWidget.h"
#include "widgets/DateTimeEditWidget.h"
#include "widgets/LineEditWidget.h"

#include <QApplication>
#include <QVBoxLayout>

#include <limits>
#include <optional>

using TestSupport::FakeRepository;
using TestSupport::text;
using Widgets::CheckBoxWidget;
using Widgets::DateTimeEditWidget;
using Widgets::LineEditWidget;

namespace {

const QString path = QStringLiteral("plant.cell.value");

// What the value is, to the last bit and with its time zone.
QString exactText(const QVariant& value)
{
    namespace Values = FrameworkCore::Values;
    const auto attributeValue = Values::toAttributeVariant(value);
    return text(value.typeName()) + QLatin1Char(' ') +
           (attributeValue ? QString::fromStdString(Values::toText(Values::toValue(*attributeValue)))
                           : value.toString());
}

// The editor that a view opens for the value, in a window with another field.
class Editing
{
public:
    explicit Editing(const QVariant& value) : neighbour(new QLineEdit(&window))
    {
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(neighbour);
        window.show();
        window.activateWindow();
        isReady = QTest::qWaitForWindowActive(&window);
        switch (value.userType()) {
        case QMetaType::Bool:
            open<CheckBoxWidget>(value);
            break;
        case QMetaType::QDate:
        case QMetaType::QTime:
        case QMetaType::QDateTime:
            open<DateTimeEditWidget>(value);
            break;
        default:
            open<LineEditWidget>(value);
        }
        layout->addWidget(editor);
        editor->show();
        editor->setFocus(Qt::TabFocusReason);
    }

    void press(Qt::Key key) { QTest::keyClick(editor, key); }

    void replaceText(const QString& typed)
    {
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        press(Qt::Key_Delete);
        QTest::keyClicks(editor, typed);
    }

    // Return counts only the second time in a line editor.
    void end()
    {
        press(Qt::Key_Return);
        if (qobject_cast<LineEditWidget*>(editor))
            press(Qt::Key_Return);
    }

    template <typename Editor>
    void open(const QVariant& value)
    {
        auto* const made = new Editor(&window, path, value);
        QObject::connect(made, &Editor::resetDavModel, made, [this] { ++ends; });
        editor = made;
    }

    QWidget window;
    QLineEdit* neighbour;
    QWidget* editor = nullptr;
    int ends = 0;
    bool isReady = false;
};

} // namespace

class ValueEditorsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        repository = std::make_shared<FakeRepository>();
        Utilities::SetAppConfigRepositoryInterface(repository);
        log.emplace();
    }

    void cleanup() { Utilities::SetAppConfigRepositoryInterface({}); }

    void lineTextsBecomeValues_data()
    {
        // written: invalid: refused
        const auto row = TestSupport::columns<QVariant, QString, QVariant>("value", "typed", "written");
        const QVariant refused;
        row("least int", 5, "-2147483648", std::numeric_limits<int>::min());
        row("beyond int", 5, "2147483648", refused);
        row("letters", 5, "abc", refused);
        row("no number", 5, "", refused);
        row("blanks around a number", 5, " 7 ", 7);
        row("greatest uint", 5U, "4294967295", std::numeric_limits<uint>::max());
        row("negative uint", 5U, "-1", refused);
        row("greatest long long", 5LL, "9223372036854775807", std::numeric_limits<qlonglong>::max());
        row("least long long", 5LL, "-9223372036854775808", std::numeric_limits<qlonglong>::min());
        row("beyond long long", 5LL, "9223372036854775808", refused);
        row("fraction", 5LL, "5.5", refused);
        row("greatest unsigned long long", 5ULL, "18446744073709551615",
            std::numeric_limits<qulonglong>::max());
        row("negative unsigned", 5ULL, "-1", refused);
        row("double", 0.5, "0.1", 0.1);
        row("exponent", 0.5, "-2.5e-7", -2.5e-7);
        row("decimal comma", 0.5, "1,5", refused);
        row("beyond double", 0.5, "1e400", refused);
        row("between two doubles", 0.5, "9007199254740993", 9007199254740992.0);
        row("minus zero", 0.0, "-0.0", -0.0);
        row("infinity", 0.5, "INF", std::numeric_limits<double>::infinity());
        row("not a number", 0.5, " NaN", std::numeric_limits<double>::quiet_NaN());
        row("long", QVariant::fromValue(5L), "-6", QVariant::fromValue(-6L));
        row("unsigned long", QVariant::fromValue(5UL), "6", QVariant::fromValue(6UL));
        row("float", 0.5F, "1.1", 1.1F);
        row("beyond float", 0.5F, "1e39", refused);
        row("between two floats", 0.5F, "16777217", 16777216.0F);
        row("infinite float", 0.5F, "-INF", -std::numeric_limits<float>::infinity());
        row("char", QVariant::fromValue('a'), "b", refused);
        row("character", QChar(QLatin1Char('a')), "b", refused);
        row("short", QVariant::fromValue(short(5)), "6", text("6"));
        row("unsigned short", QVariant::fromValue(ushort(5)), "6", text("6"));
        row("list of variants", QVariantList{1, 2}, "3", text("3"));
        row("text", text("old"), " New, with blanks ", text(" New, with blanks "));
        row("empty text", text("old"), "", text(""));
    }

    void lineTextsBecomeValues()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, typed);
        QFETCH(QVariant, written);
        repository->set(path, text("of any type"));
        Editing editing(value);
        QVERIFY(editing.isReady);
        editing.replaceText(typed);

        editing.press(Qt::Key_Return); // the first end of the edit does nothing
        QVERIFY(repository->getWrites().isEmpty());
        QCOMPARE(log->texts(), QStringList());
        QCOMPARE(editing.ends, 0);
        for (int end = 0; end < 2; ++end) { // the second counts, and no later one
            editing.press(Qt::Key_Return);
            QCOMPARE(editing.ends, 1);
            QCOMPARE(repository->getWrites().size(), written.isValid() ? 1 : 0);
        }
        if (!written.isValid()) {
            QCOMPARE(log->texts(), QStringList(text("Cannot Convert Attribute Value to Variant Type ") +
                                               text(value.typeName())));
            return;
        }
        const FakeRepository::Write write = repository->getWrites().first();
        QCOMPARE(write.path, path);
        QCOMPARE(write.option, 8);
        QCOMPARE(exactText(write.value), exactText(written));
    }

    // An edit that changes nothing gives the very value back.
    void keepsValuesExact_data()
    {
        const auto row = TestSupport::columns<QVariant>("value");
        row("greatest long long", std::numeric_limits<qlonglong>::max());
        row("greatest unsigned", std::numeric_limits<qulonglong>::max());
        row("third", 1.0 / 3);
        row("digits", 123456789.12345679);
        row("large", 1e22);
        row("least double", std::numeric_limits<double>::denorm_min());
        row("greatest double", std::numeric_limits<double>::max());
        row("infinity", -std::numeric_limits<double>::infinity());
        row("not a number", std::numeric_limits<double>::quiet_NaN());
        row("minus zero", -0.0);
        row("minus zero of float", -0.0F);
        row("float", 1.1F);
        row("no text", text(""));
        row("lines", text("one\ntwo\r\n\tthree"));
        row("beyond the first plane", QString::fromUtf8("\xF0\x9F\x98\x80 \xEF\xBB\xBF"));
        row("a million characters", QString(1000000, QLatin1Char('x')));
        row("bool", true);
        row("date", QDate(2024, 2, 29));
        row("date of long ago", QDate(101, 2, 3));
        row("first date", QDate(1, 1, 1));
        row("time", QTime(12, 34, 56));
        row("local", QDateTime(QDate(2024, 2, 29), QTime(12, 34, 56, 789)));
        row("UTC", QDateTime(QDate(2024, 2, 29), QTime(12, 34, 56, 789), Qt::UTC));
        row("offset", QDateTime(QDate(2024, 2, 29), QTime(12, 34, 56), Qt::OffsetFromUTC, -5400));
        row("skipped by the local clock", QDateTime(QDate(2021, 3, 28), QTime(2, 30), Qt::UTC));
        row("first moment", QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC));
    }

    void keepsValuesExact()
    {
        QFETCH(QVariant, value);
        repository->set(path, value);
        Editing editing(value);
        QVERIFY(editing.isReady);
        editing.end();
        QCOMPARE(editing.ends, 1);
        QCOMPARE(repository->getWrites().size(), 1);
        QCOMPARE(exactText(repository->getWrites().first().value), exactText(value));
    }

    void datesAreTyped_data()
    {
        // keys: a full part goes to the next one by itself
        const auto row =
            TestSupport::columns<QVariant, QString, QString, QVariant>("value", "keys", "shown", "written");
        row("date", QVariant(QDate(2024, 2, 29)), "20231224", "2023-12-24", QVariant(QDate(2023, 12, 24)));
        row("time", QVariant(QTime(1, 2, 3, 4)), "2359", "23:59:03", QVariant(QTime(23, 59, 3)));
        row("both", QVariant(QDateTime(QDate(2024, 2, 29), QTime(1, 2, 3, 4), Qt::OffsetFromUTC, 3600)),
            "2023122415", "2023-12-24 T15:02:03.004Z",
            QVariant(QDateTime(QDate(2023, 12, 24), QTime(15, 2, 3, 4), Qt::OffsetFromUTC, 3600)));
        row("no date", QVariant(QDate()), "20231224", "2023-12-24", QVariant(QDate(2023, 12, 24)));
        row("no date, stepped", QVariant(QDate()), "+", "2001-01-01", QVariant(QDate(2001, 1, 1)));
        row("no date, left so", QVariant(QDate()), QString(), " ", QVariant());
        row("no time, left so", QVariant(QTime()), QString(), " ", QVariant());
    }

    void datesAreTyped()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, keys);
        QFETCH(QVariant, written);
        repository->set(path, value);
        Editing editing(value);
        QVERIFY(editing.isReady);
        const auto* const editor = qobject_cast<QDateTimeEdit*>(editing.editor);
        if (keys == text("+"))
            editing.press(Qt::Key_Up);
        else
            QTest::keyClicks(editing.editor, keys);
        QTEST(editor->text(), "shown");
        editing.end();
        QCOMPARE(editing.ends, 1);
        QCOMPARE(repository->getWrites().size(), written.isValid() ? 1 : 0);
        if (written.isValid())
            QCOMPARE(exactText(repository->getWrites().first().value), exactText(written));
        else
            QCOMPARE(log->texts(), QStringList(text("Cannot Convert Attribute Value to Variant Type ") +
                                               text(value.typeName())));
    }

    // Only a line editor is left for good; the others write each time that they lose the focus.
    void leavingWrites()
    {
        const auto writesOfLeaving = [this](const QVariant& value) {
            repository->set(path, value);
            const int before = repository->getWrites().size();
            Editing editing(value);
            for (int i = 0; i < 3; ++i) {
                editing.editor->setFocus();
                editing.neighbour->setFocus();
            }
            const int writes = repository->getWrites().size() - before;
            return editing.isReady && editing.ends == writes ? writes : -1;
        };
        QCOMPARE(writesOfLeaving(5), 1);
        QCOMPARE(writesOfLeaving(true), 3);
        QCOMPARE(writesOfLeaving(QDate(2024, 2, 28)), 3);
    }

    // What others have written since yields to whatever the person confirms or has touched, though it ends as
    // it was shown. It stays when the editor was only left.
    void newerValues_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("newer");
        QTest::addColumn<QString>("keys"); // of the editor before it ends
        QTest::addColumn<bool>("isConfirmed");
        QTest::addColumn<bool>("isWritten");
        const QDateTime moment(QDate(2024, 2, 29), QTime(1, 2, 3, 4), Qt::UTC);
        const auto rows = [](const char* name, const QVariant& value, const QVariant& newer,
                             const QString& sameAgain) {
            QTest::addRow("%s, confirmed", name) << value << newer << QString() << true << true;
            QTest::addRow("%s, touched", name) << value << newer << sameAgain << false << true;
            QTest::addRow("%s, left", name) << value << newer << QString() << false << false;
        };
        rows("line", 5LL, 9LL, text("5"));
        rows("line of another type", text("5"), 9LL, text("5"));
        rows("double", 0.1, 0.5, text("0.1"));
        rows("check box", true, false, text("  "));
        rows("date", QDate(2024, 2, 29), QDate(2030, 1, 1), text("2024"));
        rows("time", QTime(1, 2, 3, 4), QTime(5, 6), text("01"));
        rows("both", moment, moment.addDays(1), text("2024"));
    }

    void newerValues()
    {
        QFETCH(QVariant, value);
        QFETCH(QVariant, newer);
        QFETCH(QString, keys);
        QFETCH(bool, isConfirmed);
        QFETCH(bool, isWritten);
        repository->set(path, value);
        Editing editing(value);
        QVERIFY(editing.isReady);
        repository->set(path, newer);
        if (qobject_cast<LineEditWidget*>(editing.editor))
            QTest::keyClick(editing.editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editing.editor, keys);
        const quint64 before = Shared::Logging::LogRecord::instance().getLastNumber();
        if (isConfirmed)
            editing.end();
        for (int i = 0; i < 2 && editing.ends == 0; ++i) {
            editing.editor->setFocus(Qt::TabFocusReason);
            editing.neighbour->setFocus();
        }
        QCOMPARE(editing.ends, 1);
        QCOMPARE(repository->getWrites().size(), isWritten ? 1 : 0);
        const auto lines = Shared::Logging::LogRecord::instance().getLines(before);
        QCOMPARE(lines.size(), isWritten ? 0 : 1);
        if (!isWritten)
            QVERIFY(lines.first().text.contains(path));
    }

    void validatorsHaveTheirBounds_data()
    {
        // accepted: texts
        const auto row = TestSupport::columns<QVariant, QString, QString>("value", "accepted", "refused");
        row("int", 5, "2147483647 -2147483648", "2147483648 x");
        row("uint", 5U, "", "0 1 -1");
        row("long long", 5LL, "2147483647 -2147483648", "2147483648 -2147483649");
        row("unsigned long long", 5ULL, "", "0 1 -1");
        row("long", QVariant::fromValue(5L), "-2147483648", "2147483648");
        row("unsigned long", QVariant::fromValue(5UL), "", "0 1 -1");
        row("short", QVariant::fromValue(short(5)), "32767 -32768", "32768");
        row("unsigned short", QVariant::fromValue(ushort(5)), "0 65535", "65536 -1");
        row("double", 0.5, "1 1e308 0.1234567890123456", "0 -1 1e309 0.12345678901234567");
        row("float", 0.5F, "1 1e38", "0 -1 1e39");
        row("text", text("x"), "x -1 99999999999", "");
    }

    void validatorsHaveTheirBounds()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, accepted);
        QFETCH(QString, refused);
        LineEditWidget editor(nullptr, path, value);
        editor.addValidator();
        const auto wrong = [&editor](const QString& texts, bool expected) {
            QStringList found;
            for (const QString& one : texts.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
                editor.setText(one);
                if (editor.hasAcceptableInput() != expected)
                    found.append(one);
            }
            return found;
        };
        QCOMPARE(wrong(accepted, true), QStringList());
        QCOMPARE(wrong(refused, false), QStringList());
    }

    void aTextTooLongForALineIsLeftAlone()
    {
        const QString value(200000, QLatin1Char('x'));
        repository->set(path, value);
        Editing editing(value);
        QVERIFY(editing.isReady);
        editing.replaceText(text("y"));
        editing.end();
        QCOMPARE(editing.ends, 1);
        QCOMPARE(repository->getValue(path), QVariant(value));
        QVERIFY(qobject_cast<QLineEdit*>(editing.editor)->text().contains(QLatin1String("200")));
    }

    void livesWithoutARepository()
    {
        Utilities::SetAppConfigRepositoryInterface({});
        for (const QVariant& value : {QVariant(5), QVariant(true), QVariant(QDate(2024, 2, 29))}) {
            Editing editing(value);
            QVERIFY(editing.isReady);
            editing.end();
            QCOMPARE(editing.ends, 1);
        }
        QCOMPARE(log->texts(), QStringList());
    }

private:
    std::shared_ptr<FakeRepository> repository;
    std::optional<TestSupport::LoggedFailures> log; // of one test
};

int main(int argc, char** argv)
{
    qputenv("TZ", "Europe/Berlin");   // whose clock skips an hour in spring
    qputenv("LC_ALL", "de_DE.UTF-8"); // where numbers have a comma
    return TestSupport::runTest<QApplication, ValueEditorsTest>(argc, argv);
}

#include "value_editors_test.moc"
