#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"
#include "host/Utilities/RepositoryAccess.h"
#include "tests/support/Columns.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/LoggedFailures.h"
#include "tests/support/NoThreads.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QProgressBar>
#include <QTemporaryDir>

#include <thread>

using namespace FrameworkCore::AppConfig;
using TestSupport::contentOf;
using TestSupport::DialogDriver;
using TestSupport::FakeRepository;
using Utilities::ModelViews::AttributeTreeViewModelUtils;

namespace {

// A repository whose operations on subtrees take as long as a test wants: until they are released, or
// cancelled where that is heard.
class SlowRepository : public FakeRepository, public Interfaces::TransferInterface
{
public:
    std::shared_ptr<TransferInterface> getTransferInterface() override
    {
        return std::dynamic_pointer_cast<TransferInterface>(shared_from_this());
    }

    Outcome copyTree(const QString&, const QString&) override { return {}; }
    Outcome moveTree(const QString&, const QString&) override { return {}; }
    Outcome exportTree(const QString&, const QString&, QByteArray&) override { return {}; }
    Outcome importTree(const QString&, const QString&, const QByteArray&) override { return {}; }

    Outcome copyTree(const QString&, const QString&, Interfaces::TransferReport& report) override
    {
        return work(report);
    }
    Outcome exportTree(const QString&, const QString&, QByteArray& text,
                       Interfaces::TransferReport& report) override
    {
        text = "{}";
        return work(report);
    }
    Outcome importTree(const QString&, const QString&, const QByteArray&,
                       Interfaces::TransferReport& report) override
    {
        return work(report);
    }
    Outcome removeTree(const QString&) override
    {
        Interfaces::TransferReport unheard;
        return work(unheard);
    }

    std::atomic<bool> isReleased{false};
    bool throwsNoMemory = false;

private:
    Outcome work(Interfaces::TransferReport& report)
    {
        if (throwsNoMemory)
            throw std::bad_alloc();
        report.setTotal(1000);
        report.setDone(250);
        while (!isReleased && !report.isCancelled())
            std::this_thread::yield();
        return report.isCancelled() ? Outcome(Cancelled, {}) : Outcome();
    }
};

} // namespace

// Operations on subtrees that take long, and repositories that offer none.
class TreeTransferTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { Utilities::SetAppConfigRepositoryInterface({}); }

    void longOnesCanBeCancelled_data()
    {
        const auto row = TestSupport::columns<QString>("operation");
        for (const char* const operation : {"copy", "export", "import", "delete"})
            row(operation, operation);
    }

    void longOnesCanBeCancelled()
    {
        QFETCH(QString, operation);
        const auto repository = std::make_shared<SlowRepository>();
        Utilities::SetAppConfigRepositoryInterface(repository);
        const QString file = fileWith("{}");
        const bool isCancelling = operation != QLatin1String("delete");
        const DialogDriver driver([&](QWidget& window) {
            const auto* const bar = window.findChild<QProgressBar*>();
            QVERIFY(bar && window.isModal());
            QTest::keyClick(&window, Qt::Key_Escape);
            if (isCancelling) {
                QCOMPARE(bar->maximum(), 1000);
                QCOMPARE(bar->value(), 250);
                return;
            }
            QVERIFY(window.isVisible() && !window.findChild<QDialogButtonBox*>()->isVisible());
            window.close();
            QVERIFY(window.isVisible());
            repository->isReleased = true;
        });
        QString error;
        QCOMPARE(run(operation, file, error), !isCancelling);
        QVERIFY(driver.isDone());
        if (operation == QLatin1String("export") || operation == QLatin1String("import"))
            QVERIFY2(error.contains(file) && error.contains(QLatin1String("cancelled")), qPrintable(error));
        QCOMPARE(contentOf(file), QByteArray("{}"));
    }

    void endWithoutTheWindowOverWhichTheyBegan()
    {
        const auto repository = std::make_shared<SlowRepository>();
        Utilities::SetAppConfigRepositoryInterface(repository);
        auto over = std::make_unique<QWidget>();
        QVERIFY(TestSupport::showActive(*over));
        const DialogDriver driver([&](QWidget& window) {
            QCOMPARE(window.parentWidget(), over.get());
            over.reset();
            repository->isReleased = true;
        });
        QString error;
        QVERIFY(run(QStringLiteral("copy"), {}, error));
        QVERIFY(driver.isDone());
    }

    void shortOnesShowNothing()
    {
        const auto repository = std::make_shared<SlowRepository>();
        Utilities::SetAppConfigRepositoryInterface(repository);
        repository->isReleased = true;
        int windows = 0;
        const auto count = [&] { windows += int(QApplication::topLevelWindows().size()); };
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, count);
        timer.start(0);
        QString error;
        QVERIFY(run(QStringLiteral("export"), fileWith("old"), error));
        QCOMPARE(contentOf(folder.filePath(QStringLiteral("file.json"))), QByteArray("{}"));
        QCOMPARE(windows, 0);
    }

    void failWithAReason_data() { longOnesCanBeCancelled_data(); }

    // Where memory or a thread is refused. The next one works.
    void failWithAReason()
    {
        QFETCH(QString, operation);
        const auto repository = std::make_shared<SlowRepository>();
        Utilities::SetAppConfigRepositoryInterface(repository);
        repository->isReleased = true;
        const QString file = fileWith("{}");
        const auto fails = [&](const char* reason) {
            const TestSupport::LoggedFailures failures;
            QString error;
            QVERIFY(!run(operation, file, error));
            QCOMPARE(failures.texts().size(), 1);
            QVERIFY2(failures.texts().first().contains(QLatin1String(reason)),
                     qPrintable(failures.texts().first()));
            const bool isOfFile =
                operation == QLatin1String("export") || operation == QLatin1String("import");
            QCOMPARE(error.contains(file) && error.contains(QLatin1String(reason)), isOfFile);
            QCOMPARE(contentOf(file), QByteArray("{}"));
        };
        repository->throwsNoMemory = true;
        fails("not enough memory");
        repository->throwsNoMemory = false;
        {
            const TestSupport::NoThreads none;
            fails("thread");
        }
        QString error;
        QVERIFY2(run(operation, file, error), qPrintable(error));
    }

    void sayWhatIsNotOffered()
    {
        const QString file = fileWith("{}");
        const std::shared_ptr<Interfaces::RepositoryInterface> none;
        for (const auto& repository :
             {none, std::shared_ptr<Interfaces::RepositoryInterface>(std::make_shared<FakeRepository>())}) {
            Utilities::SetAppConfigRepositoryInterface(repository);
            QString error;
            QVERIFY(!run(QStringLiteral("export"), file, error));
            QVERIFY2(error.contains(file) && error.contains(QLatin1String("exports")), qPrintable(error));
            QVERIFY(!run(QStringLiteral("import"), file, error));
            QVERIFY2(error.contains(file) && error.contains(QLatin1String("imports")), qPrintable(error));
            QVERIFY(!run(QStringLiteral("copy"), file, error));
            QCOMPARE(contentOf(file), QByteArray("{}"));
        }
    }

private:
    static bool run(const QString& operation, const QString& file, QString& error)
    {
        const AttributeTreeViewModelUtils utils;
        const QString path = QStringLiteral("a.b");
        if (operation == QLatin1String("copy"))
            return utils.copyAttribute(path, QStringLiteral("a.c"));
        if (operation == QLatin1String("export"))
            return utils.exportAttributeToJson(file, path, error);
        if (operation == QLatin1String("import"))
            return utils.importAttributeFromJson(file, path, error);
        return utils.deleteAttributeTree(path);
    }

    QString fileWith(const QByteArray& content) const
    {
        return TestSupport::writeFile(folder.filePath(QStringLiteral("file.json")), content);
    }

    QTemporaryDir folder;
};

VANTRY_TEST_MAIN(QApplication, TreeTransferTest)

#include "tree_transfer_test.moc"
