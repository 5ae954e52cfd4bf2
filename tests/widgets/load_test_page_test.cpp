#include "host/Utilities/RepositoryAccess.h"
#include "tests/support/Columns.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/LoggedFailures.h"
#include "tests/support/TestRun.h"
#include "widgets/AttributeTestsWidget.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using TestSupport::FakeRepository;
using Widgets::AttributeTestsWidget;

class LoadTestPageTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        repository = std::make_shared<FakeRepository>();
        Utilities::SetAppConfigRepositoryInterface(repository);
        page = std::make_unique<AttributeTestsWidget>();
    }

    void cleanup()
    {
        page.reset();
        Utilities::SetAppConfigRepositoryInterface({});
    }

    void createsAndUpdates_data()
    {
        // updatesCounted: of demo.0 to demo.19
        const auto row = TestSupport::columns<bool, int>("wildcards", "updatesCounted");
        row("exact paths", false, 20);
        // demo.1* hears demo.10 to demo.19 too, and every pattern its own attribute.
        row("patterns too", true, 20 + 20 + 10);
    }

    void createsAndUpdates()
    {
        QFETCH(bool, wildcards);
        part<QCheckBox>("chkWildcard")->setChecked(wildcards);
        part<QLineEdit>("edtNumber")->setText(QStringLiteral("20"));
        click("btnCreate");
        QVERIFY(statusMatches("Created 20 attributes in \\d+ ms \\(counter =  \\d+\\)"));
        QCOMPARE(repository->getValue(QStringLiteral("demo.0")), QVariant(QStringLiteral("0")));
        QCOMPARE(repository->getValue(QStringLiteral("demo.19")), QVariant(QStringLiteral("19")));
        QVERIFY(!repository->contains(QStringLiteral("demo.20")));
        QCOMPARE(repository->getWrites().first().option, 3);
        QCOMPARE(repository->getWrites().first().access, 3);

        QTest::mouseClick(part<QPushButton>("btnUpdate"), Qt::LeftButton);
        QFETCH(int, updatesCounted);
        QVERIFY(statusMatches("Update 20 attributes in \\d+ ms \\(counter =  \\d+\\)"));
        QVERIFY(part<QLabel>("lblStatus")
                    ->text()
                    .endsWith(QStringLiteral("(counter =  %1)").arg(updatesCounted)));
        QCOMPARE(repository->getWrites().last().value, QVariant(19));
        QCOMPARE(repository->getWrites().last().option, 15);

        repository->set(QStringLiteral("demo.7"), QStringLiteral("later"));
        click("btnReadCounter");
        QCOMPARE(part<QLabel>("lblCounter")->text(),
                 QStringLiteral("Counter: %1").arg(updatesCounted + (wildcards ? 2 : 1)));
    }

    void startsWithAThousand()
    {
        click("btnCreate");
        QVERIFY(statusMatches("Created 1000 attributes .*"));
        QVERIFY(repository->contains(QStringLiteral("demo.999")));
    }

    // Whichever page they were of: there is one counter.
    void earlierRunsStayRegistered()
    {
        part<QLineEdit>("edtNumber")->setText(QStringLiteral(" 3 ")); // blanks around it do no harm
        click("btnCreate");
        page = std::make_unique<AttributeTestsWidget>();
        part<QLineEdit>("edtNumber")->setText(QStringLiteral("3"));
        click("btnCreate");
        click("btnUpdate");
        QVERIFY(statusMatches("Update 3 attributes in \\d+ ms \\(counter =  6\\)"));
    }

    void odd_data()
    {
        const auto row = TestSupport::columns<QString, QString>("count", "status");
        const QString invalid = QStringLiteral("Invalid count entered");
        row("letters", "10x", invalid);
        row("empty", QString(), invalid);
        row("first beyond the range", "2147483648", invalid);
        row("none", "0", "\\w+ 0 attributes in .*");
        row("below none", "-4", "\\w+ -4 attributes in .*");
    }

    void odd()
    {
        QFETCH(QString, count);
        QFETCH(QString, status);
        for (const char* button : {"btnCreate", "btnUpdate"}) {
            part<QLineEdit>("edtNumber")->setText(QStringLiteral("1"));
            click("btnCreate");
            click("btnUpdate");
            const int writes = repository->getWrites().size();
            part<QLineEdit>("edtNumber")->setText(count);
            click(button);
            QVERIFY(statusMatches(qPrintable(status)));
            QCOMPARE(repository->getWrites().size(), writes);
            click("btnReadCounter");
            QCOMPARE(part<QLabel>("lblCounter")->text(), QStringLiteral("Counter: 0"));
        }
    }

    void withoutARepositoryItSaysSo()
    {
        Utilities::SetAppConfigRepositoryInterface({});
        for (const char* button : {"btnCreate", "btnUpdate"}) {
            const TestSupport::LoggedFailures failures;
            click(button);
            QCOMPARE(failures.texts().size(), 1);
        }
    }

private:
    template <typename Part>
    Part* part(const char* name) const
    {
        return page->findChild<Part*>(QLatin1String(name));
    }

    void click(const char* button) const { QTest::mouseClick(part<QPushButton>(button), Qt::LeftButton); }

    bool statusMatches(const char* pattern) const
    {
        const QRegularExpression expression(QRegularExpression::anchoredPattern(QLatin1String(pattern)));
        return expression.match(part<QLabel>("lblStatus")->text()).hasMatch();
    }

    std::shared_ptr<FakeRepository> repository;
    std::unique_ptr<AttributeTestsWidget> page;
};

VANTRY_TEST_MAIN(QApplication, LoadTestPageTest)

#include "load_test_page_test.moc"
