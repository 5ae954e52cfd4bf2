#include "host/Shared/Logging/LogHandler.h"
#include "host/Utilities/ApplicationPlugins/ApplicationPlugin.h"
#include "host/Utilities/ApplicationWidgets/ApplicationWidget.h"
#include "host/Utilities/RepositoryAccess.h"
#include "tests/plugin/FixedContext.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QApplication>
#include <QFile>
#include <QLibrary>
#include <QPixmapCache>
#include <QProcess>
#include <QThread>

#include <atomic>
#include <vector>

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
        QCOMPARE(names, (QList<QByteArray>{"applicationContractVersion", "loadApplicationByIdentification",
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
        QTest::addColumn<QStringList>("otherContext");
        QTest::addColumn<QString>("otherName");
        QTest::addColumn<bool>("isSame");
        const QStringList context{QStringLiteral("desk"), QStringLiteral("one")};
        QTest::newRow("the same") << context << identification << true;
        QTest::newRow("other context")
            << QStringList{QStringLiteral("desk"), QStringLiteral("two")} << identification << false;
        QTest::newRow("other name") << context << QStringLiteral("Anything") << false;
        // The components are joined as they are.
        QTest::newRow("other cut") << QStringList{QStringLiteral("deskone")} << identification << true;
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

    void mayBeCalledOnAnyThread()
    {
        const Module module;
        constexpr int threadCount = 8;
        std::vector<Application> loaded(threadCount);
        std::vector<std::unique_ptr<QThread>> threads;
        std::atomic<int> running{threadCount};
        for (size_t i = 0; i < threadCount; ++i) {
            threads.emplace_back(QThread::create([&, i] {
                // Two threads for each context.
                const Reader reader = FixedContext::create({QString::number(i / 2)});
                loaded[i] = module.load(reader);
                --running;
            }));
            threads.back()->start();
        }
        QTRY_COMPARE(running.load(), 0); // widgets are made on this thread meanwhile
        for (const auto& thread : threads)
            thread->wait();
        for (size_t i = 0; i < threadCount; ++i) {
            const Reader reader = FixedContext::create({QString::number(i / 2)});
            QVERIFY(loaded[i]);
            QCOMPARE(loaded[i]->getWidgetByType(ApplicationWidgetType::Main)->thread(), thread());
            if (i % 2 == 0) {
                const Application kept = module.load(reader);
                QVERIFY(kept == loaded[i] || kept == loaded[i + 1]);
                QVERIFY(module.unload(reader));
            }
        }
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

    void isReallyUnmapped()
    {
        for (int cycle = 0; cycle < 20; ++cycle) {
            QVERIFY(!isMapped());
            {
                const Module module;
                QVERIFY(isMapped());
                useOnce(module);
            }
            QCoreApplication::processEvents(); // nothing may be left that runs code of the module
        }
        QVERIFY(!isMapped());
    }

private:
    void useOnce(const Module& module)
    {
        const Reader reader = FixedContext::create({QStringLiteral("desk")});
        QCOMPARE(module.identifications(), QStringList(identification));
        Application application = module.load(reader);
        for (const auto type : {ApplicationWidgetType::Control, ApplicationWidgetType::Main})
            application->getWidgetByType(type)->show();
        repository->set(QStringLiteral("desk.instances.Vantry.state"), QStringLiteral("attributes"));
        QCoreApplication::processEvents();
        QVERIFY(module.unload(reader));
        application.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        repository->remove(QStringLiteral("desk"));
    }

    std::shared_ptr<FakeRepository> repository;
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<QApplication, EntryPointsTest>(argc, argv);
}

#include "entry_points_test.moc"
