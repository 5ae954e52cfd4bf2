#include "host/Shared/Logging/LogHandler.h"
#include "host/Utilities/ApplicationPlugins/ApplicationPlugin.h"
#include "host/Utilities/ApplicationWidgets/ApplicationWidget.h"
#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "host/Utilities/RepositoryAccess.h"
#include "tests/plugin/FixedContext.h"
#include "tests/support/Columns.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"

#include <QApplication>
#include <QCheckBox>
#include <QEventLoop>
#include <QFile>
#include <QLibrary>
#include <QLineEdit>
#include <QPixmapCache>
#include <QProcess>
#include <QPushButton>
#include <QTableView>
#include <QThread>
#include <QTimer>
#include <QTreeView>

#include <algorithm>
#include <atomic>
#include <dlfcn.h>
#include <functional>
#include <vector>

Q_DECLARE_METATYPE(std::function<void(QWidget&)>)

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
extern "C" size_t __sanitizer_get_current_allocated_bytes(); // g++ has no header for it
#endif

using Shared::GuiContexts::ReaderInterface;
using Shared::Logging::LogHandler;
using TestSupport::FakeRepository;
using TestSupport::FixedContext;
using Utilities::ApplicationWidgetType;
using Utilities::ApplicationPlugins::ApplicationPlugin;

namespace {

using Reader = std::shared_ptr<const ReaderInterface>;
using Application = std::shared_ptr<ApplicationPlugin>;
using TestSupport::contentOf;

const QString identification = QStringLiteral("Vantry");

// The module as a host uses it: by its file and its three functions.
class Module
{
public:
    Module() : library(QStringLiteral(VANTRY_MODULE))
    {
        if (!library.load())
            qFatal("%s", qPrintable(library.errorString()));
        identifier = resolve<decltype(identifier)>("loadApplicationIdentifier");
        loader = resolve<decltype(loader)>("loadApplicationByIdentification");
        unloader = resolve<decltype(unloader)>("unloadApplicationByIdentification");
    }

    ~Module() { library.unload(); }

    QStringList identifications(QStringList list = {}) const
    {
        return identifier(nullptr, list) ? list : QStringList();
    }

    Application load(const Reader& reader, const QString& name = identification) const
    {
        Application application;
        const bool isLoaded = loader(reader, name, application);
        if (isLoaded != (application != nullptr))
            qFatal("the result does not tell whether there is an application");
        return application;
    }

    bool unload(const Reader& reader, const QString& name = identification) const
    {
        return unloader(reader, name);
    }

private:
    template <typename Function>
    Function resolve(const char* name)
    {
        const auto function = reinterpret_cast<Function>(library.resolve(name));
        if (!function)
            qFatal("%s", qPrintable(library.errorString()));
        return function;
    }

    QLibrary library;
    bool (*identifier)(void*, QStringList&) = nullptr;
    bool (*loader)(const Reader&, const QString&, Application&) = nullptr;
    bool (*unloader)(const Reader&, const QString&) = nullptr;
};

bool isMapped()
{
    return contentOf(QStringLiteral("/proc/self/maps")).contains(QByteArray(VANTRY_MODULE));
}

// Memory in use, in KiB. The sanitizers hold back what was freed, so there the live bytes are asked.
qint64 memoryInUse()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return qint64(__sanitizer_get_current_allocated_bytes() / 1024);
#else
    for (const QByteArray& line : contentOf(QStringLiteral("/proc/self/status")).split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toLongLong();
    }
    return -1;
#endif
}

} // namespace

class EntryPointsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Qt keeps the icons that it has scaled, here so few that it keeps no more when measuring begins.
        QPixmapCache::setCacheLimit(128);
    }

    void init()
    {
        repository = std::make_shared<FakeRepository>();
        Utilities::SetAppConfigRepositoryInterface(repository);
        repository->set(QStringLiteral("plant.list"), TestSupport::words("a b"));
    }

    void cleanup() { Utilities::SetAppConfigRepositoryInterface({}); }

    void exportsNothingElse()
    {
        QProcess nm;
        nm.start(QStringLiteral("nm"), {QStringLiteral("-D"), QStringLiteral("--defined-only"),
                                        QStringLiteral("-j"), QStringLiteral(VANTRY_MODULE)});
        QVERIFY2(nm.waitForFinished(), qPrintable(nm.errorString()));
        QList<QByteArray> names = nm.readAllStandardOutput().trimmed().split('\n');
        std::sort(names.begin(), names.end());
        QCOMPARE(names,
                 (QList<QByteArray>{"applicationContractVersion", "loadApplicationByIdentification",
                                    "loadApplicationIdentifier", "unloadApplicationByIdentification"}));
    }

    void namesItselfBehindWhatIsThere()
    {
        const Module module;
        const QStringList present{QStringLiteral("Other"), identification};
        QCOMPARE(module.identifications(present), present + QStringList(identification));
    }

    void eachEntryPointNamesTheLogOnce()
    {
        const Module module;
        const Reader reader = FixedContext::create({});
        const auto isNamed = [](const char* name) {
            return LogHandler::GetLogIdentification() == QLatin1String(name);
        };
        LogHandler::SetLogIdentification({});
        module.identifications();
        QVERIFY(isNamed("Vantry"));
        module.load(reader, QStringLiteral("loaded first"));
        QVERIFY(isNamed("loaded first"));
        module.load(reader, QStringLiteral("loaded second"));
        QVERIFY(isNamed("loaded first"));
        module.unload(reader, QStringLiteral("unloaded first"));
        QVERIFY(isNamed("unloaded first"));
        module.identifications();
        module.unload(reader, QStringLiteral("unloaded second"));
        QVERIFY(isNamed("unloaded first"));
    }

    void oneApplicationForEachContext_data()
    {
        const auto row =
            TestSupport::columns<QStringList, QString, bool>("otherContext", "otherName", "isSame");
        const QStringList context{QStringLiteral("desk"), QStringLiteral("one")};
        row("the same", context, identification, true);
        row("other context", TestSupport::words("desk two"), identification, false);
        row("other name", context, "Anything", false);
        // The components are joined as they are.
        row("other cut", QStringList{QStringLiteral("deskone")}, identification, true);
    }

    void oneApplicationForEachContext()
    {
        QFETCH(QStringList, otherContext);
        QFETCH(QString, otherName);
        QFETCH(bool, isSame);
        const Module module;
        const Reader reader = FixedContext::create({QStringLiteral("desk"), QStringLiteral("one")});
        const Reader other = FixedContext::create(otherContext);
        const Application first = module.load(reader);
        const Application second = module.load(other, otherName);
        QCOMPARE(first == second, isSame);
        QCOMPARE(module.load(reader), first);
        QVERIFY(module.unload(other, otherName));
        QCOMPARE(module.unload(reader), !isSame);
    }

    void unloadedApplicationEndsWithItsLastUser()
    {
        const Module module;
        const Reader reader = FixedContext::create({QStringLiteral("desk")});
        QVERIFY(!module.unload(reader));
        Application application = module.load(reader);
        const QPointer<QWidget> main = application->getWidgetByType(ApplicationWidgetType::Main).data();
        const QPointer<QWidget> control = application->getWidgetByType(ApplicationWidgetType::Control).data();
        QVERIFY(module.unload(reader));
        QVERIFY(!module.unload(reader));
        QVERIFY(main && control);
        const Application successor = module.load(reader);
        QVERIFY(successor != application);
        application.reset();
        QVERIFY(!main && !control);
        QVERIFY(module.unload(reader));
    }

    void knowsItsOwnFile()
    {
        const Module module;
        const Reader reader = FixedContext::create({});
        const Application application = module.load(reader);
        QCOMPARE(application->getModuleFile().canonicalFilePath(),
                 QFileInfo(QStringLiteral(VANTRY_MODULE)).canonicalFilePath());
        QVERIFY(!application->getApplicationIcon().pixmap(32, 32).isNull());
        QVERIFY(!application->getVersionInformation().getFileVersion().isEmpty());
        QVERIFY(module.unload(reader));
    }

    void mayBeCalledOnAnyThread_data()
    {
        // contexts: that eight threads share
        const auto row = TestSupport::columns<int>("contexts");
        row("one context", 1);
        row("two threads for each context", 4);
    }

    void mayBeCalledOnAnyThread()
    {
        QFETCH(int, contexts);
        const Module module;
        constexpr int threadCount = 8;
        std::vector<Application> loaded(threadCount);
        std::vector<std::unique_ptr<QThread>> threads;
        std::atomic<int> running{threadCount};
        for (int i = 0; i < threadCount; ++i) {
            threads.emplace_back(QThread::create([&, i] {
                loaded[size_t(i)] = module.load(contextOf(i % contexts));
                --running;
            }));
            threads.back()->start();
        }
        QTRY_COMPARE(running.load(), 0); // widgets are made on this thread meanwhile
        for (const auto& thread : threads)
            thread->wait();
        for (int i = 0; i < threadCount; ++i) {
            QVERIFY(loaded[size_t(i)]);
            QCOMPARE(loaded[size_t(i)], loaded[size_t(i % contexts)]);
            QCOMPARE(loaded[size_t(i)]->getWidgetByType(ApplicationWidgetType::Main)->thread(), thread());
        }
        for (int i = 0; i < contexts; ++i)
            QVERIFY(module.unload(contextOf(i)));
    }

    void thousandCyclesDoNotGrow()
    {
        const Module module;
        qint64 memoryAfterWarmUp = 0;
        int widgetsAfterWarmUp = 0;
        int registrationsAfterWarmUp = 0;
        for (int cycle = 1; cycle <= 1000; ++cycle) {
            useOnce(module);
            if (cycle == 50) {
                memoryAfterWarmUp = memoryInUse();
                widgetsAfterWarmUp = QApplication::allWidgets().size();
                registrationsAfterWarmUp = repository->getRegistrationCount();
            }
        }
        QCOMPARE(QApplication::allWidgets().size(), widgetsAfterWarmUp);
        QCOMPARE(repository->getRegistrationCount(), registrationsAfterWarmUp);
        const qint64 growth = memoryInUse() - memoryAfterWarmUp;
        // The log's record takes a line of each cycle, and Qt some bytes for each window of X.
        QVERIFY2(growth <= 2048, qPrintable(QStringLiteral("grown by %1 KiB").arg(growth)));
    }

    void isReallyUnmapped_data()
    {
        using Use = std::function<void(QWidget&)>; // of the main widget
        QTest::addColumn<Use>("use");
        QTest::newRow("shown") << Use([](QWidget&) {});
        QTest::newRow("list editor of the tree") << Use([](QWidget& main) {
            auto& tree = *main.findChild<QTreeView*>(QStringLiteral("treeView"));
            QTest::mouseClick(main.findChild<QPushButton*>(QStringLiteral("btnReadAttribute")),
                              Qt::LeftButton);
            QTRY_VERIFY(tree.model()->rowCount() > 0);
            tree.expandAll();
            const QModelIndex list = tree.model()
                                         ->match(tree.model()->index(0, 0), Qt::DisplayRole,
                                                 QStringLiteral("list"), 1, Qt::MatchRecursive)
                                         .value(0);
            tree.setCurrentIndex(list.sibling(list.row(), 1));
            QVERIFY(QMetaObject::invokeMethod(&pageOf(main), "onAttributeUpdateSelected"));
            QCOMPARE(windowsOf("Widgets::ListWidget"), 1);
        });
        QTest::newRow("list editors of the monitor") << Use([](QWidget& main) {
            auto& monitor = *main.findChild<QTableView*>(QStringLiteral("appConfigDataAccessWidget"));
            auto& model = *qobject_cast<Utilities::ModelViews::AdvancedAttributeModel*>(monitor.model());
            model.loadCustomAttributeList({QStringLiteral("plant.list")});
            monitor.setCurrentIndex(model.index(0, 1));
            for (int i = 0; i < 2; ++i)
                QVERIFY(QMetaObject::invokeMethod(&monitor, "onAttributeUpdateSelected"));
            QCOMPARE(windowsOf("Widgets::ListWidget"), 2);
            for (QWidget* const window : QApplication::topLevelWidgets()) {
                if (window->inherits("Widgets::ListWidget"))
                    window->close(); // which only hides it
            }
        });
        QTest::newRow("dialog of a new backend") << Use([](QWidget& main) {
            QVERIFY(QMetaObject::invokeMethod(&pageOf(main), "on_newBackendClicked"));
            QCOMPARE(windowsOf("Widgets::BackendCreateWidget"), 1);
        });
        QTest::newRow("closed dialog of a new backend") << Use([](QWidget& main) {
            QVERIFY(QMetaObject::invokeMethod(&pageOf(main), "on_newBackendClicked"));
            for (QWidget* const window : QApplication::topLevelWidgets()) {
                if (window->inherits("Widgets::BackendCreateWidget"))
                    window->close(); // it deletes itself later
            }
        });
        QTest::newRow("load test") << Use([](QWidget& main) {
            main.findChild<QLineEdit*>(QStringLiteral("edtNumber"))->setText(QStringLiteral("3"));
            main.findChild<QCheckBox*>(QStringLiteral("chkWildcard"))->setChecked(true);
            main.findChild<QPushButton*>(QStringLiteral("btnCreate"))->click();
        });
    }

    // Nothing may be left that runs code of the module or has it called.
    void isReallyUnmapped()
    {
        QFETCH(std::function<void(QWidget&)>, use);
        const int windows = QApplication::topLevelWidgets().size();
        for (int cycle = 0; cycle < 5; ++cycle) {
            QVERIFY(!isMapped());
            {
                const Module module;
                QVERIFY(isMapped());
                useOnce(module, use);
                if (QTest::currentTestFailed())
                    return;
            }
            QVERIFY(!isMapped());
            QCOMPARE(QApplication::topLevelWidgets().size(), windows);
            QApplication::setPalette(cycle % 2 == 0 ? QPalette(Qt::gray) : QPalette());
            QApplication::closeAllWindows();
            QCoreApplication::processEvents();
            for (int i = 0; i < 3; ++i)
                repository->set(QStringLiteral("demo.%1").arg(i), cycle);
        }
        QVERIFY(!isMapped());
    }

    void aWorkerMayDropTheLastAndUnload()
    {
        auto module = std::make_unique<const Module>();
        const Reader reader = FixedContext::create({QStringLiteral("desk")});
        Application application = module->load(reader);
        const QPointer<QWidget> main = application->getWidgetByType(ApplicationWidgetType::Main).data();
        main->show();
        const std::unique_ptr<QThread> worker(QThread::create([&] {
            module->unload(reader);
            application.reset();
            module.reset();
        }));
        worker->start();
        worker->wait();
        // The widgets are still there, since this thread was busy, and so is their code.
        QVERIFY(main && isMapped());
        main->repaint();
        QTRY_VERIFY(!main);
        QVERIFY(!isMapped());
    }

    // As behind a dialog of the module, which goes on when the loop has ended.
    void staysMappedUnderAnInnerLoop()
    {
        auto module = std::make_unique<const Module>();
        const Reader reader = FixedContext::create({QStringLiteral("desk")});
        Application application = module->load(reader);
        const QPointer<QWidget> main = application->getWidgetByType(ApplicationWidgetType::Main).data();
        const std::unique_ptr<QThread> worker(QThread::create([&] {
            module->unload(reader);
            application.reset();
            module.reset();
        }));
        QEventLoop outer;
        bool isMappedInside = false;
        QTimer::singleShot(0, &outer, [&] {
            QEventLoop inner;
            connect(main, &QObject::destroyed, &inner, &QEventLoop::quit, Qt::QueuedConnection);
            worker->start();
            inner.exec();
            isMappedInside = isMapped();
            outer.quit();
        });
        outer.exec();
        worker->wait();
        QVERIFY(!main);
        QVERIFY(isMappedInside);
        // It stays for good, so this test takes it away.
        void* const mapping = dlopen(VANTRY_MODULE, RTLD_NOW | RTLD_NOLOAD);
        QVERIFY(mapping);
        dlclose(mapping);
        dlclose(mapping);
        QVERIFY(!isMapped());
    }

    void aHostMayEndWithoutUnloading_data()
    {
        // keeper: of the application
        const auto row = TestSupport::columns<QString>("keeper");
        for (const char* const keeper : {"table", "host", "window"})
            row(keeper, keeper);
    }

    void aHostMayEndWithoutUnloading()
    {
        QFETCH(QString, keeper);
        QProcess host;
        host.setProcessChannelMode(QProcess::ForwardedChannels);
        host.start(QStringLiteral(CARELESS_HOST), {QStringLiteral(VANTRY_MODULE), keeper});
        QVERIFY2(host.waitForFinished(), qPrintable(host.errorString()));
        QCOMPARE(host.exitStatus(), QProcess::NormalExit);
        QCOMPARE(host.exitCode(), 0);
    }

private:
    static Reader contextOf(int number) { return FixedContext::create({QString::number(number)}); }

    static QWidget& pageOf(QWidget& main)
    {
        QWidget* page = main.findChild<QTreeView*>(QStringLiteral("treeView"));
        while (!page->inherits("Widgets::AttributeBrowserWidget"))
            page = page->parentWidget();
        return *page;
    }

    static int windowsOf(const char* name)
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        return int(std::count_if(windows.begin(), windows.end(),
                                 [name](const QWidget* window) { return window->inherits(name); }));
    }

    void useOnce(const Module& module, const std::function<void(QWidget&)>& use = {})
    {
        const Reader reader = FixedContext::create({QStringLiteral("desk")});
        QCOMPARE(module.identifications(), QStringList(identification));
        Application application = module.load(reader);
        for (const auto type : {ApplicationWidgetType::Control, ApplicationWidgetType::Main})
            application->getWidgetByType(type)->show();
        repository->set(QStringLiteral("desk.instances.Vantry.state"), QStringLiteral("attributes"));
        QCoreApplication::processEvents();
        if (use)
            use(*application->getWidgetByType(ApplicationWidgetType::Main));
        QVERIFY(module.unload(reader));
        application.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        repository->remove(QStringLiteral("desk"));
    }

    std::shared_ptr<FakeRepository> repository;
};

VANTRY_TEST_MAIN(QApplication, EntryPointsTest)

#include "entry_points_test.moc"
