#include "app/VantryApplication.h"
#include "app/VantryControl.h"
#include "app/VantryMain.h"
#include "host/Shared/Logging/LogRecord.h"
#include "host/Utilities/RepositoryAccess.h"
#include "tests/plugin/FixedContext.h"
#include "tests/support/Columns.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/TestRun.h"

#include <QApplication>
#include <QPushButton>
#include <QStackedWidget>

using Shared::Logging::LogLine;
using Shared::Logging::LogMessageType;
using Shared::Logging::LogRecord;
using TestSupport::FakeRepository;
using TestSupport::FixedContext;
using Utilities::ApplicationWidgetType;

namespace {

const QString statePath = QStringLiteral("desk.one.instances.Vantry.state");

QString shownPage(const QWidget& main)
{
    return main.findChild<QStackedWidget*>(QStringLiteral("appConfigPages"))->currentWidget()->objectName();
}

QImage iconOf(const QWidget& widget, const QString& buttonName)
{
    return widget.findChild<QPushButton*>(buttonName)->icon().pixmap(24, 24).toImage();
}

} // namespace

class ShellTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        repository = std::make_shared<FakeRepository>();
        Utilities::SetAppConfigRepositoryInterface(repository);
        context = FixedContext::create({QStringLiteral("desk"), QStringLiteral("one")});
    }

    void cleanup() { Utilities::SetAppConfigRepositoryInterface({}); }

    void showsThePageThatTheAttributeNames_data()
    {
        const auto row = TestSupport::columns<QVariant, QString>("value", "page");
        row("attributes", QVariant(QStringLiteral("attributes")), "pageAttributes");
        row("backends", QVariant(QStringLiteral("backends")), "pageBackends");
        row("tests", QVariant(QStringLiteral("tests")), "pageTests");
        row("empty", QVariant(QString()), "pageUnknown");
        row("other case", QVariant(QStringLiteral("Backends")), "pageUnknown");
        row("part of a name", QVariant(QStringLiteral("back")), "pageUnknown");
        row("a page's index", QVariant(2), "pageUnknown");
        row("bytes", QVariant(QByteArray("tests")), "pageTests");
        row("no text at all", QVariant(QVariantMap()), "pageUnknown");
    }

    void showsThePageThatTheAttributeNames()
    {
        QFETCH(QVariant, value);
        QFETCH(QString, page);
        VantryMain main(context);
        QCOMPARE(shownPage(main), QStringLiteral("pageUnknown"));
        // From the one, and from another page, so that no row passes because nothing moved.
        for (const char* before : {"attributes", "backends"}) {
            repository->set(statePath, QString::fromLatin1(before));
            QTRY_VERIFY(shownPage(main).toLower() == QLatin1String("page") + QLatin1String(before));
            repository->set(statePath, value);
            QTRY_COMPARE(shownPage(main), page);
        }
    }

    void opensOnTheLastPage()
    {
        repository->set(statePath, QStringLiteral("backends"));
        VantryMain main(context);
        QCOMPARE(shownPage(main), QStringLiteral("pageUnknown")); // until it is told
        QTRY_COMPARE(shownPage(main), QStringLiteral("pageBackends"));
    }

    void buttonsChooseThePage_data()
    {
        TestSupport::columns<bool, QString, QString, QString, QString>("onPanel", "button", "text", "value",
                                                                       "page");
        const auto row = [](bool onPanel, const char* button, const char* text, const char* value,
                            const char* page) {
            QTest::addRow("%s of the %s", button, onPanel ? "panel" : "warning page")
                << onPanel << QString::fromLatin1(button) << QString::fromLatin1(text)
                << QString::fromLatin1(value) << QString::fromLatin1(page);
        };
        row(true, "btnAttributes", "Attributes", "attributes", "pageAttributes");
        row(true, "btnBackends", "Backends", "backends", "pageBackends");
        row(true, "btnTests", "Tests", "tests", "pageTests");
        row(false, "btnSelectAttributes", "Browse Attributes", "attributes", "pageAttributes");
        row(false, "btnSelectBackends", "Browse Backends", "backends", "pageBackends");
        row(false, "btnTests", "Tests", "tests", "pageTests");
    }

    void buttonsChooseThePage()
    {
        QFETCH(bool, onPanel);
        QFETCH(QString, button);
        QFETCH(QString, value);
        VantryMain main(context);
        VantryControl panel(context);
        QWidget& shown = onPanel ? static_cast<QWidget&>(panel) : main;
        shown.show();
        QVERIFY(QTest::qWaitForWindowExposed(&shown));
        auto* const clicked = shown.findChild<QPushButton*>(button);
        QTEST(clicked->text(), "text");
        QVERIFY(clicked->isFlat());
        QCOMPARE(clicked->property("subStyle"), QVariant(QStringLiteral("flatStyle")));
        QTest::mouseClick(clicked, Qt::LeftButton);
        QCOMPARE(repository->getValue(statePath), QVariant(value));
        QFETCH(QString, page);
        QTRY_COMPARE(shownPage(main), page);
    }

    void testsButtonsHaveTheAttributesIcon()
    {
        const VantryMain main(context);
        const VantryControl panel(context);
        const QImage attributes = iconOf(panel, QStringLiteral("btnAttributes"));
        QVERIFY(!attributes.isNull());
        QCOMPARE(iconOf(panel, QStringLiteral("btnTests")), attributes);
        QCOMPARE(iconOf(main, QStringLiteral("btnTests")), attributes);
        QCOMPARE(iconOf(main, QStringLiteral("btnSelectAttributes")), attributes);
        QVERIFY(!iconOf(panel, QStringLiteral("btnBackends")).isNull());
        QVERIFY(iconOf(panel, QStringLiteral("btnBackends")) != attributes);
    }

    void contextsDoNotMeet()
    {
        VantryMain one(context);
        VantryMain other(FixedContext::create({QStringLiteral("desk"), QStringLiteral("two")}));
        const VantryMain lonely({});
        repository->set(QStringLiteral("instances.Vantry.state"), QStringLiteral("tests"));
        repository->set(statePath, QStringLiteral("backends"));
        QTRY_COMPARE(shownPage(one), QStringLiteral("pageBackends"));
        QTRY_COMPARE(shownPage(lonely), QStringLiteral("pageTests"));
        QCOMPARE(shownPage(other), QStringLiteral("pageUnknown"));
    }

    void livesWithoutARepository()
    {
        Utilities::SetAppConfigRepositoryInterface({});
        VantryMain main(context);
        VantryControl panel(context);
        QVERIFY(main.isEnabled());
        QVERIFY(!panel.isEnabled());
        QCOMPARE(panel.findChildren<QPushButton*>().size(), 3);
        main.findChild<QPushButton*>(QStringLiteral("btnSelectAttributes"))->click();
        QCoreApplication::processEvents();
        QCOMPARE(shownPage(main), QStringLiteral("pageUnknown"));
        Utilities::SetAppConfigRepositoryInterface(repository);
        QVERIFY(!panel.isEnabled()); // looked at once only
    }

    void applicationHandsOutItsParts()
    {
        QPointer<QWidget> main;
        QPointer<QWidget> control;
        {
            const VantryApplication application(context);
            QCOMPARE(application.getApplicationName(), QStringLiteral("Vantry"));
            QCOMPARE(application.getApplicationIdentification(), QStringLiteral("Vantry"));
            QCOMPARE(static_cast<int>(application.getApplicationType()), 2);
            QVERIFY(!application.getApplicationIcon().pixmap(32, 32).isNull());
            QCOMPARE(application.getVersionInformation().getProductName(), QStringLiteral("Vantry"));
            QCOMPARE(application.getModuleFile().canonicalFilePath(),
                     QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath());
            main = application.getWidgetByType(ApplicationWidgetType::Main).data();
            control = application.getWidgetByType(ApplicationWidgetType::Control).data();
            QVERIFY(qobject_cast<VantryMain*>(main));
            QVERIFY(qobject_cast<VantryControl*>(control));
        }
        QVERIFY(!main);
        QVERIFY(!control);
    }

    void unknownModuleFileIsLoggedOnce()
    {
        const quint64 before = lastLineNumber();
        const VantryApplication application(context, [] { return Vantry::ModuleFileName{{}, 126}; });
        QVERIFY(application.getWidgetByType(ApplicationWidgetType::Main));
        QVERIFY(application.getModuleFile().filePath().isEmpty());
        QStringList failures;
        for (const LogLine& line : LogRecord::instance().getLines(before)) {
            QCOMPARE(line.category, QStringLiteral("Vantry"));
            if (line.type == LogMessageType::Failure)
                failures.append(line.text);
        }
        QCOMPARE(failures, {QStringLiteral("GetModuleFileName failed with error: 126")});
    }

private:
    static quint64 lastLineNumber()
    {
        const QVector<LogLine> lines = LogRecord::instance().getLines();
        return lines.isEmpty() ? 0 : lines.last().number;
    }

    std::shared_ptr<FakeRepository> repository;
    std::shared_ptr<const Shared::GuiContexts::ReaderInterface> context;
};

VANTRY_TEST_MAIN(QApplication, ShellTest)

#include "shell_test.moc"
