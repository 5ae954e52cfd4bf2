#include "tests/support/Columns.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"
#include "tests/widgets/BrowserPageTest.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QPlainTextEdit>
#include <QPointer>
#include <QSlider>
#include <QTableView>

using TestSupport::DialogDriver;
using TestSupport::words;

// What the page tells of the item that was clicked.
class AttributeDetailsTest : public BrowserPageTest
{
    Q_OBJECT

private slots:
    void showsDetails_data()
    {
        const auto row = TestSupport::columns<QVariant, QString, QString>("value", "type", "text");
        const auto string = [](const char* text) { return QVariant(QString::fromUtf8(text)); };
        row("text", string("x y"), "QString", "x y");
        row("list", QStringList(words("a b")), "QStringList", "a,b");
        row("bool", true, "bool", "true");
        row("number", 5LL, "qlonglong", "5");
        row("braces", string("x;{a;b}"), "QString", "x;\n\t {\n\ta;\n\tb }\n\t");
        row("braces over lines", string("x;{a\nb}"), "QString", "x;{a\nb}");
        row("no semicolon", string("x{a}"), "QString", "x{a}");
        row("object", string("{\"k\":[1,2],\"s\":\"x;{}\"}"), "QString",
            "{\n    \"k\": [\n        1,\n        2\n    ],\n    \"s\": \"x;{}\"\n}\n");
        row("array of a list", QStringList(words("[1 2]")), "QStringList", "[\n    1,\n    2\n]\n");
        row("empty object", string("{}"), "QString", "{\n}\n");
        row("a mere number is no document", string("17"), "QString", "17");
        row("markup", string("<b>bold</b> & <img src='x'>"), "QString", "<b>bold</b> & <img src='x'>");
        row("beyond ASCII", string("{\"k\":\"ß€\"}"), "QString", "{\n    \"k\": \"ß€\"\n}\n");
    }

    void showsDetails()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, type);
        QFETCH(QString, text);
        createOne(QStringLiteral("a.b.value"), value);
        createOne(QStringLiteral("a.other"), 1);
        openPage();
        QVERIFY(TestSupport::showActive(page->widget));
        page->read({});
        page->clickItem(QStringLiteral("a.other"));
        page->clickItem(QStringLiteral("a.b.value"));
        QCOMPARE(page->details.toPlainText(), QStringLiteral("Name : value\nPath : a.b.value\nData Type : ") +
                                                  type + QStringLiteral("\nValue : ") + text);
        const QString shown = page->details.toPlainText();
        page->clickItem(QStringLiteral("a.other"), Qt::RightButton);
        QCOMPARE(page->details.toPlainText(), shown); // a menu is not a click
    }

    void showsTheBeginningOfALongValue_data()
    {
        const auto row = TestSupport::columns<QVariant, bool>("value", "isWhole");
        const QString nested = QString(500, QLatin1Char('[')) + QString(500, QLatin1Char(']'));
        row("the longest whole one", QVariant(QString(10000, QLatin1Char('x'))), true);
        row("unbroken", QVariant(QString(60000, QLatin1Char('x'))), false);
        row("pairs", QVariant(QLatin1Char('x') + QString::fromUtf8("\U0001F600").repeated(9000)), false);
        row("lines", QVariant(QStringLiteral("line\n").repeated(50000)), false);
        row("few, empty lines", QVariant(QString(1500, QLatin1Char('\n'))), false);
        row("marks", QVariant(QLatin1Char('a') + QString(5000, QChar(0x301))), false);
        row("marks on each", QVariant((QLatin1Char('a') + QString(30, QChar(0x301))).repeated(300)), false);
        row("scripts", QVariant(QString::fromUtf8("a\u0431").repeated(2000)), false);
        row("directions", QVariant(QString::fromUtf8("\u05d01").repeated(2000)), false);
        row("words of two scripts",
            QVariant(QString::fromUtf8(
                         "three words, 3 numbers: \u0442\u0440\u0438 \u0441\u043b\u043e\u0432\u0430. ")
                         .repeated(120)),
            true);
        row("items", QVariant(words(QStringLiteral("item ").repeated(9000))), false);
        row("bytes", QVariant(QString::fromUtf8("\u20ac").repeated(300000).toUtf8()), false);
        row("bytes that are no text", QVariant(QByteArray(20000, '\xff')), false);
        row("deep JSON",
            QVariant(QLatin1Char('[') + (nested + QLatin1Char(',')).repeated(100) + QStringLiteral("1]")),
            false);
    }

    void showsTheBeginningOfALongValue()
    {
        QFETCH(QVariant, value);
        QFETCH(bool, isWhole);
        const QString text = value.type() == QVariant::StringList
                                 ? value.toStringList().join(QLatin1Char(','))
                                 : value.toString();
        createOne(QStringLiteral("a"), value);
        openPage();
        QVERIFY(TestSupport::showActive(page->widget));
        page->read(QStringLiteral("a"));
        page->clickItem(QStringLiteral("a"));
        const QString label = QStringLiteral("Value : ");
        const QString shown = page->details.toPlainText();
        const QString beginning = shown.mid(shown.indexOf(label) + label.size());
        QCOMPARE(beginning == text, isWhole);
        QVERIFY(text.startsWith(beginning) && !beginning.isEmpty() && beginning.size() <= 10000);
        QVERIFY(!beginning.at(beginning.size() - 1).isHighSurrogate());
        const int amount = value.type() == QVariant::ByteArray    ? value.toByteArray().size()
                           : value.type() == QVariant::StringList ? value.toStringList().size()
                                                                  : text.size();
        QCOMPARE(shown.contains(QLocale().toString(amount)), !isWhole);
        if (isWhole)
            return;

        page->details.setFocus();
        QTest::keyClick(&page->details, Qt::Key_Tab);
        QTest::keyClick(&page->details, Qt::Key_Return);
        QPointer<QDialog> window;
        for (QWidget* const each : QApplication::topLevelWidgets()) {
            if (auto* const dialog = qobject_cast<QDialog*>(each))
                window = dialog;
        }
        QVERIFY(window && window->isVisible());
        const auto* const part = window->findChild<QPlainTextEdit*>();
        auto* const slider = window->findChild<QSlider*>();
        QString all;
        for (bool isMore = true; isMore;) {
            all += part->toPlainText();
            const int before = slider->value();
            QTest::keyClick(slider, Qt::Key_Right);
            isMore = slider->value() > before;
        }
        QCOMPARE(all, text);
        QTest::keyClick(slider, Qt::Key_Escape);
        QTRY_VERIFY(!window);

        page->details.setFocus();
        QTest::keyClick(&page->details, Qt::Key_Tab);
        QTest::keyClick(&page->details, Qt::Key_Return);
        QCOMPARE(QGuiApplication::clipboard()->text(), text);
    }

    // Also when nothing is selected any more, so that the page alone knows which item it shows.
    void detailsFollowAnItemThatIsNoLongerSelected()
    {
        create(words("a b"));
        openPage();
        QVERIFY(TestSupport::showActive(page->widget));
        page->read({});
        page->clickItem(QStringLiteral("a"));
        const DialogDriver driver([](QWidget& menu) { QTest::keyClick(&menu, Qt::Key_Escape); });
        const QPoint other = page->tree.visualRect(page->item(QStringLiteral("b"))).center();
        QVERIFY(TestSupport::click(*page->tree.viewport(), other, Qt::RightButton));
        QTRY_VERIFY(driver.isDone() && !page->tree.selectionModel()->hasSelection());
        for (int round = 0; round < 20; ++round) {
            const QString value = QStringLiteral("value %1").arg(round);
            QCOMPARE(repository->getWriterInterface()->writeAttributeValue(QStringLiteral("a"), value, 15),
                     0);
            QTRY_COMPARE(page->details.toPlainText(),
                         QStringLiteral("Name : a\nPath : a\nData Type : QString\nValue : ") + value);
        }
    }

    void detailsFollowTheirItem()
    {
        createOne(QStringLiteral("ab"), QStringLiteral("first"));
        createOne(QStringLiteral("ac"), QStringLiteral("second"));
        openPage();
        QVERIFY(TestSupport::showActive(page->widget));
        page->read({});
        page->clickItem(QStringLiteral("ab"));
        page->read(QStringLiteral("a*")); // the tree is another one
        QCOMPARE(repository->getWriterInterface()->writeAttributeValue(QStringLiteral("ab"),
                                                                       QStringLiteral("third"), 15),
                 0);
        QTRY_VERIFY(page->details.toPlainText().endsWith(QStringLiteral("Value : third")));

        // A row that a drag selects, without a click.
        auto* const monitor = page->part<QTableView>("appConfigDataAccessWidget");
        const QPoint row = page->tree.visualRect(page->item(QStringLiteral("ac"))).center();
        QVERIFY(TestSupport::drag(*page->tree.viewport(), row, *monitor->viewport(), QPoint(30, 30)));
        QTRY_COMPARE(monitor->model()->rowCount(), 1);
        QTRY_VERIFY(page->details.toPlainText().endsWith(QStringLiteral("Value : second")));

        QCOMPARE(repository->getTreeInterface()->removeTree(QStringLiteral("ac")),
                 FrameworkCore::AppConfig::Success);
        QTRY_COMPARE(page->details.toPlainText(), QString());
        page->clickItem(QStringLiteral("ab"));
        page->read(QStringLiteral("zz"));
        QCOMPARE(page->details.toPlainText(), QString());
    }

    void keysMoveThroughTheDetails()
    {
        createOne(QStringLiteral("a"), QStringLiteral("first"));
        createOne(QStringLiteral("k"), QStringLiteral("second"));
        openPage();
        QVERIFY(TestSupport::showActive(page->widget));
        page->read({});
        page->clickItem(QStringLiteral("a"));
        QTest::keyClick(&page->tree, Qt::Key_Down);
        QVERIFY(page->details.toPlainText().endsWith(QStringLiteral("Value : second")));
    }
};

VANTRY_TEST_MAIN(QApplication, AttributeDetailsTest)

#include "attribute_details_test.moc"
