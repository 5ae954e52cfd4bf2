#include "repository/documents/common/Pipeline.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <numeric>
#include <stdexcept>
#include <vector>

using Repository::Documents::Pipeline;

namespace {

// More than are consumed without a thread, and more than all batches hold.
constexpr int many = 40000;

} // namespace

// Makers and consumers of items, with one thread and with two.
class PipelineTest : public QObject
{
    Q_OBJECT

private slots:
    void allAreConsumedInTheirOrder_data();
    void allAreConsumedInTheirOrder();
    void nothingFollowsARefusal_data() { places(); }
    void nothingFollowsARefusal();
    void theMakerGetsWhatIsThrown_data() { places(); }
    void theMakerGetsWhatIsThrown();
    void whatIsLeftUnfinishedEnds();

private:
    void places();
};

void PipelineTest::allAreConsumedInTheirOrder_data()
{
    const auto row = TestSupport::columns<int>("count");
    for (const int count : {0, 1, 4095, 4096, 4097, 4096 + 256, 4096 + 16 * 256 + 1, many})
        row(qPrintable(QString::number(count)), count);
}

void PipelineTest::allAreConsumedInTheirOrder()
{
    QFETCH(int, count);
    std::vector<int> consumed;
    Pipeline<int> pipeline([&consumed](int& item) {
        consumed.push_back(item);
        return true;
    });
    for (int i = 0; i < count; ++i) {
        pipeline.next() = i;
        QVERIFY(pipeline.put());
    }
    pipeline.finish();
    std::vector<int> made(static_cast<std::size_t>(count));
    std::iota(made.begin(), made.end(), 0);
    QCOMPARE(consumed, made);
}

void PipelineTest::places()
{
    const auto row = TestSupport::columns<int>("place");
    for (const int place : {0, 4095, 4096, 10000, many - 1})
        row(qPrintable(QString::number(place)), place);
}

void PipelineTest::nothingFollowsARefusal()
{
    QFETCH(int, place);
    int last = -1;
    Pipeline<int> pipeline([&](int& item) {
        last = item;
        return item < place;
    });
    int made = 0;
    for (bool isWanted = true; isWanted && made < many; ++made) {
        pipeline.next() = made;
        isWanted = pipeline.put();
    }
    pipeline.finish();
    QCOMPARE(last, place);
    QVERIFY(made <= place + 17 * 256 + 1); // the maker is told soon
}

void PipelineTest::theMakerGetsWhatIsThrown()
{
    QFETCH(int, place);
    const auto run = [place] {
        Pipeline<int> pipeline([place](int& item) {
            if (item == place)
                throw std::length_error("paths");
            return true;
        });
        for (int i = 0; i < many; ++i) {
            pipeline.next() = i;
            pipeline.put();
        }
        pipeline.finish();
    };
    QVERIFY_EXCEPTION_THROWN(run(), std::length_error);
}

void PipelineTest::whatIsLeftUnfinishedEnds()
{
    int consumed = 0;
    {
        Pipeline<int> pipeline([&consumed](int&) { return ++consumed > 0; });
        for (int i = 0; i < many; ++i) {
            pipeline.next() = i;
            pipeline.put();
        }
    }
    QVERIFY(consumed > many - 256); // all that was handed over
}

VANTRY_TEST_MAIN(QCoreApplication, PipelineTest)

#include "pipeline_test.moc"
