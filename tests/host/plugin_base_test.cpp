#include "host/Shared/Localization/CoreLocalization.h"
#include "host/Utilities/ApplicationPlugins/ApplicationPlugin.h"
#include "host/Utilities/ApplicationWidgets/ApplicationControlWidget.h"
#include "host/Utilities/ApplicationWidgets/ApplicationMainWidget.h"
#include "host/Utilities/RepositoryAccess.h"
#include "host/Utilities/ScopedSignalBlocker.h"
#include "tests/support/Columns.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"

#include <QApplication>
#include <QThread>

#include <thread>

using namespace Utilities::ApplicationPlugins;
using namespace Utilities::ApplicationWidgets;
using Utilities::ApplicationWidgetType;

namespace {

class Context : public Shared::GuiContexts::ReaderInterface
{
public:
    QStringList getContextPath() const override
    {
        return {QStringLiteral("desk"), QStringLiteral("window1")};
    }
};

class SampleWidget : public ApplicationMainWidget
{
public:
    SampleWidget() : ApplicationMainWidget(std::make_shared<Context>(), QStringLiteral("Sample"), nullptr) {}
    ~SampleWidget() override { endedOnThread = QThread::currentThread(); }

    int retranslations = 0;
    static int deletionsHeard;
    static QThread* endedOnThread; // not owned

private:
    void retranslateUi() override { ++retranslations; }
    void handleDeleteEvent() override { ++deletionsHeard; }
};

int SampleWidget::deletionsHeard = 0;
QThread* SampleWidget::endedOnThread = nullptr;

class SampleApplication : public ApplicationPlugin
{
public:
    SampleApplication(const QPointer<ApplicationWidget>& control, const QPointer<ApplicationWidget>& main)
        : ApplicationPlugin({}, Utilities::ApplicationType::Window, QStringLiteral("Sample"), QIcon(),
                            control, main, QString(), QFileInfo())
    {
    }

    QString getApplicationName() const override { return QStringLiteral("Sample"); }
};

QString shownText()
{
    return QCoreApplication::translate("Sample", "Value");
}

} // namespace

class PluginBaseTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { Utilities::SetAppConfigRepositoryInterface({}); }

    void versionIsReadAsItStands_data()
    {
        const auto row = TestSupport::columns<QString, QStringList>("identification", "fields");
        row("there", "Sample",
            QStringList{QStringLiteral("one, two; three = 3"), QString::fromUtf8("Bench & S\xC3\xB6hne"),
                        QStringLiteral("\"quoted\""), QStringLiteral("1.2.3"), QString(), QString(),
                        QStringLiteral("Sample"), QString(), QString(), QString(), QStringLiteral("0a1b")});
        QStringList empty;
        for (int i = 0; i < 11; ++i)
            empty.append(QString());
        row("missing", "Nobody", empty);
    }

    void versionIsReadAsItStands()
    {
        QFETCH(QString, identification);
        QFETCH(QStringList, fields);
        const auto version = Shared::VersionInformation::VersionInformation::ReadFromResource(identification);
        QCOMPARE(
            QStringList({version.getComments(), version.getCompanyName(), version.getFileDescription(),
                         version.getFileVersion(), version.getLegalCopyright(), version.getOriginalFilename(),
                         version.getProductName(), version.getProductVersion(), version.getInternalName(),
                         version.getLegalTrademarks(), version.getVersionHash()}),
            fields);
    }

    void contextPathsBeginWithTheContext()
    {
        const Utilities::GuiContextVisitor inWindow(std::make_shared<Context>());
        const Utilities::GuiContextVisitor anywhere{{}};
        const QStringList components{QStringLiteral("instances"), QStringLiteral("state")};
        QCOMPARE(inWindow.buildContextPath(components), QString());
        Utilities::SetAppConfigRepositoryInterface(
            std::make_shared<TestSupport::FakeRepository>(QStringLiteral("/")));
        QCOMPARE(inWindow.buildContextPath(components), QStringLiteral("desk/window1/instances/state"));
        QCOMPARE(anywhere.buildContextPath(components), QStringLiteral("instances/state"));
    }

    void widgetsGoWithTheApplication_data()
    {
        // inWindow: the host has given it a parent
        // droppedElsewhere: by another thread
        const auto row = TestSupport::columns<bool, bool, bool>("droppedElsewhere", "inWindow", "goneBefore");
        row("GUI thread", false, false, false);
        row("in a window", false, true, false);
        row("another thread", true, true, false);
        row("the host was first", true, false, true);
    }

    void widgetsGoWithTheApplication()
    {
        QFETCH(bool, droppedElsewhere);
        QFETCH(bool, inWindow);
        QFETCH(bool, goneBefore);
        QWidget window;
        const QPointer<ApplicationWidget> control = new SampleWidget;
        const QPointer<ApplicationWidget> main = new SampleWidget;
        auto application = std::make_shared<SampleApplication>(control, main);
        QCOMPARE(application->getWidgetByType(ApplicationWidgetType::Control), control);
        QCOMPARE(application->getWidgetByType(ApplicationWidgetType::Main), main);
        if (inWindow)
            main->setParent(&window);
        if (goneBefore)
            delete main;
        SampleWidget::endedOnThread = nullptr;
        if (droppedElsewhere)
            std::thread([dropped = std::move(application)]() mutable { dropped.reset(); }).join();
        application.reset();
        QTRY_VERIFY(!control && !main);
        QCOMPARE(SampleWidget::endedOnThread, thread());
        QVERIFY(window.children().isEmpty());
    }

    void widgetsHearOfLanguageAndDeletion()
    {
        const QPointer<SampleWidget> widget = new SampleWidget;
        QEvent change(QEvent::LanguageChange);
        QCoreApplication::sendEvent(widget, &change);
        QCOMPARE(widget->retranslations, 1);
        SampleWidget::deletionsHeard = 0;
        widget->deleteLater();
        QTRY_VERIFY(!widget);
        QCOMPARE(SampleWidget::deletionsHeard, 1);
    }

    void loadingTranslationsShowsNothing()
    {
        Shared::Localization::CoreLocalization localization;
        const QLocale german(QLocale::German);
        const QLocale english = localization.getLocale();
        localization.loadTranslations(german);
        localization.loadTranslations(german);
        QCOMPARE(localization.getLoadedFiles(german),
                 TestSupport::words(":/Translations/Empty_de_DE.qm :/Translations/Sample_de_DE.qm "
                                    ":/Translations/vantry-core_de_DE.qm"));
        QCOMPARE(localization.getLocale(), english);
        QCOMPARE(shownText(), QStringLiteral("Value"));

        SampleWidget widget;
        localization.setLocale(german);
        QCOMPARE(shownText(), QStringLiteral("Wert"));
        QTRY_VERIFY(widget.retranslations > 0);
        localization.setLocale(QLocale(QLocale::Russian));
        QCOMPARE(shownText(), QStringLiteral("Value"));
    }

    void signalsAreAsBeforeAfterBlocking()
    {
        auto object = std::make_unique<QObject>();
        {
            const Utilities::ScopedSignalBlocker outer(object.get());
            {
                const Utilities::ScopedSignalBlocker inner(object.get());
            }
            QVERIFY(object->signalsBlocked());
        }
        QVERIFY(!object->signalsBlocked());
        const Utilities::ScopedSignalBlocker survivor(object.get());
        const Utilities::ScopedSignalBlocker ofNothing(nullptr);
        object.reset();
    }
};

VANTRY_TEST_MAIN(QApplication, PluginBaseTest)

#include "plugin_base_test.moc"
