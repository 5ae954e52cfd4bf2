#include "host/Utilities/ModelViews/AttributeModel.h"
#include "host/Utilities/RepositoryAccess.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QSet>

using TestSupport::FakeRepository;
using Utilities::ModelViews::AttributeModel;

namespace {

QStringList textsOf(const AttributeModel& model)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.append(model.index(row).data().toString());
    return texts;
}

} // namespace

class AttributeModelTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<FakeRepository> repository;

private slots:
    void init()
    {
        repository = std::make_shared<FakeRepository>();
        Utilities::SetAppConfigRepositoryInterface(repository);
    }

    void cleanup() { Utilities::SetAppConfigRepositoryInterface({}); }

    void listsWhatMatches()
    {
        for (const char* path : {"Net.ip.mask", "net.name", "other.net"})
            repository->set(QString::fromLatin1(path), 1);
        const AttributeModel model(QStringLiteral("nET*"), nullptr);
        QCOMPARE(textsOf(model), TestSupport::words("Net net Net.ip net.name Net.ip.mask"));
        QVERIFY(!model.canFetchMore({}));
    }

    void growsOnDemand()
    {
        constexpr int count = 4500;
        for (int i = 0; i < count; ++i)
            repository->set(QStringLiteral("demo.%1").arg(i), i);
        AttributeModel model(QStringLiteral("demo.*"), nullptr);
        const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        QCOMPARE(model.rowCount(), 1000);
        QVERIFY(!model.canFetchMore({})); // not while a completer is still taking the model in
        QTRY_VERIFY(model.canFetchMore({}));

        // The list stays true to what it showed, whatever comes and goes meanwhile.
        const QStringList first = textsOf(model);
        repository->remove(QStringLiteral("demo.5"));
        repository->set(QStringLiteral("demo.new"), 1);
        while (model.canFetchMore({}))
            model.fetchMore({});
        const QStringList all = textsOf(model);
        QCOMPARE(all.mid(0, 1000), first);
        QCOMPARE(all.size(), count + 1);
        QCOMPARE(QSet<QString>(all.cbegin(), all.cend()).size(), count + 1);
    }

    void withoutRepositoryItIsEmpty()
    {
        Utilities::SetAppConfigRepositoryInterface({});
        const AttributeModel model(QStringLiteral("*"), nullptr);
        QCOMPARE(model.rowCount(), 0);
        QVERIFY(!model.canFetchMore({}));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, AttributeModelTest)

#include "attribute_model_test.moc"
