#include "host/Shared/Logging/LogRecord.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "host/Utilities/NotificationWrapper.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"
#include "tests/stress/OwnFile.h"
#include "tests/stress/OwnTree.h"
#include "tests/stress/SharedAttributes.h"
#include "tests/stress/SharedFiles.h"
#include "tests/support/ModelText.h"
#include "tests/support/TestRun.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QTemporaryDir>

#include <thread>

using Repository::AttributeRepository;
using Utilities::NotificationWrapper;
using Utilities::ModelViews::AttributeTreeViewModel;

namespace {

constexpr int threadCount = 8;

int fromEnvironment(const char* name, int otherwise)
{
    bool isNumber = false;
    const int number = qEnvironmentVariableIntValue(name, &isNumber);
    return isNumber ? number : otherwise;
}

// All that one thread does, each kind of it in turns.
class Worker
{
public:
    Worker(const std::shared_ptr<AttributeRepository>& repository, const QString& folder, int number,
           quint32 seed)
        : random(seed), tree(repository, QStringLiteral("own.t%1").arg(number), random),
          file(repository, QStringLiteral("file%1").arg(number), typeOf(number),
               folder + QStringLiteral("/own%1").arg(number), random),
          writer(repository, number, random), files(repository, folder, random)
    {
    }

    void run(int operations)
    {
        for (int i = 0; i < operations; ++i) {
            tree.step();
            writer.step();
            files.step();
            if (i % 4 == 0)
                file.step();
        }
        faults = tree.finish() + file.finish();
    }

    const SharedAttributes::Writer& getWriter() const { return writer; }
    SharedFiles& getFiles() { return files; }
    const QStringList& getFaults() const { return faults; }

private:
    static QString typeOf(int number)
    {
        return SharedFiles::types().at(number % SharedFiles::types().size());
    }

    QRandomGenerator random;
    OwnTree tree;
    OwnFile file;
    SharedAttributes::Writer writer;
    SharedFiles files;
    QStringList faults;
};

// What the GUI thread does meanwhile: a person's edits, and a model and a wrapper that follow.
class Desk
{
public:
    Desk(const std::shared_ptr<AttributeRepository>& usedRepository, const QString& folder, quint32 seed)
        : repository(usedRepository), random(seed), files(repository, folder, random),
          wrapper(SharedAttributes::pathOf(0), true, false)
    {
        repository->getHistoryInterface()->recordThisThread();
        wrapper.valueChangedCallbacks.append([this](const QVariant& value) { told = value; });
        wrapper.setActive(true);
        model.resetModel({});
    }

    void step()
    {
        const auto history = repository->getHistoryInterface();
        files.edit();
        if (random.bounded(2) == 0)
            history->undo();
        if (random.bounded(4) == 0)
            history->redo();
        if (random.bounded(16) == 0)
            TestSupport::modelText(model, {}, 3);
    }

    bool agrees() const
    {
        QVariant value;
        repository->getReaderInterface()->readAttributeValue(SharedAttributes::pathOf(0), value, 0);
        return told == value && TestSupport::modelText(model) == freshText();
    }

    QString difference() const
    {
        return TestSupport::firstDifference(TestSupport::modelText(model), freshText());
    }

private:
    static QStringList freshText()
    {
        AttributeTreeViewModel fresh;
        fresh.resetModel({});
        return TestSupport::modelText(fresh);
    }

    const std::shared_ptr<AttributeRepository> repository;
    QRandomGenerator random;
    SharedFiles files;
    NotificationWrapper wrapper;
    QVariant told;
    AttributeTreeViewModel model;
    QAbstractItemModelTester tester{&model};
};

} // namespace

// Everything that threads may do, by eight of them at once and by the GUI thread, with checks of all that can
// be foretold. The environment makes it longer: VANTRY_STRESS_ROUNDS is the number of rounds, each with
// another seed from VANTRY_STRESS_SEED on; VANTRY_STRESS_OPERATIONS the length of a round.
class MixedThreadsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        Shared::Logging::LogRecord::instance().setWritesToStandardError(false); // refusals are expected
    }

    void keepEverything_data()
    {
        QTest::addColumn<quint32>("seed");
        const int first = fromEnvironment("VANTRY_STRESS_SEED", 1);
        const int rounds = fromEnvironment("VANTRY_STRESS_ROUNDS", 2);
        for (int seed = first; seed < first + rounds; ++seed)
            QTest::addRow("seed %d", seed) << quint32(seed);
    }

    void keepEverything()
    {
        QFETCH(quint32, seed);
        const int operations = fromEnvironment("VANTRY_STRESS_OPERATIONS", 150);
        const QTemporaryDir folder;
        const auto repository = AttributeRepository::create();
        Utilities::SetAppConfigRepositoryInterface(repository);
        SharedAttributes shared(repository);
        std::vector<std::unique_ptr<Worker>> workers;
        for (int number = 0; number < threadCount; ++number)
            workers.push_back(std::make_unique<Worker>(repository, folder.path(), number,
                                                       seed * threadCount + quint32(number)));
        Desk desk(repository, folder.path(), seed);

        std::atomic<int> running{threadCount};
        std::vector<std::thread> threads;
        for (const auto& worker : workers)
            threads.emplace_back([&running, operations, &worker] {
                worker->run(operations);
                --running;
            });
        while (running > 0) {
            desk.step();
            QCoreApplication::processEvents();
        }
        for (std::thread& thread : threads)
            thread.join();

        QStringList faults;
        std::vector<const SharedAttributes::Writer*> writers;
        for (const auto& worker : workers) {
            faults += worker->getFaults();
            writers.push_back(&worker->getWriter());
        }
        faults += shared.finish(writers);
        for (const auto& worker : workers)
            worker->getFiles().endListening();
        faults += workers.front()->getFiles().compare();
        QCOMPARE(faults.join(QLatin1Char('\n')), QString());
        QTRY_VERIFY2_WITH_TIMEOUT(desk.agrees(), qPrintable(desk.difference()), 60000);
        Utilities::SetAppConfigRepositoryInterface({});
    }
};

int main(int argc, char** argv)
{
    qputenv("QTEST_FUNCTION_TIMEOUT", "1000000000"); // of all rounds together, in milliseconds
    return TestSupport::runTest<QApplication, MixedThreadsTest>(argc, argv);
}

#include "mixed_threads_test.moc"
