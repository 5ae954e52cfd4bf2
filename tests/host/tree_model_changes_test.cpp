#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "tests/host/TreeModelTestBase.h"
#include "tests/support/Columns.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/ModelText.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"
#include "tests/support/ToldCounts.h"
#include "tests/support/ToldTexts.h"
#include "tests/support/TreeWriter.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QTreeView>

#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <thread>

using namespace FrameworkCore::AppConfig;
using TestSupport::firstDifference;
using TestSupport::modelText;
using TestSupport::ToldCounts;
using TestSupport::ToldTexts;
using TestSupport::TreeWriter;
using Utilities::ModelViews::AttributeTreeViewModel;

// How the model follows a repository that changes.
class TreeModelChangesTest : public TreeModelTestBase
{
    Q_OBJECT

    // A model, and what looks at it.
    struct Reader
    {
        explicit Reader(QString path) : searchPath(std::move(path)) {}

        QString searchPath;
        AttributeTreeViewModel model;
        std::unique_ptr<QAbstractItemModelTester> tester;
        std::unique_ptr<ToldCounts> counts;
    };

    // Waits for as long as the model needs; QTRY_COMPARE would look every 50 ms, hundreds of times.
    static bool comesToAgree(const Reader& reader, int depth = -1)
    {
        return QTest::qWaitFor(
            [&] { return modelText(reader.model, {}, depth) == freshText(reader.searchPath, depth); });
    }

    static QString differenceOf(const Reader& reader)
    {
        return firstDifference(modelText(reader.model), freshText(reader.searchPath));
    }

    // A random way, on which what lies beside it is counted.
    static void askOnTheWayDown(const Reader& reader, QRandomGenerator& random)
    {
        QModelIndex parent;
        while (reader.model.rowCount(parent) > 0) {
            for (int row = 0; row < reader.model.rowCount(parent); ++row)
                reader.counts->ask(reader.model.index(row, 0, parent));
            parent = reader.model.index(random.bounded(reader.model.rowCount(parent)), 0, parent);
            if (random.bounded(2) == 0)
                return;
        }
    }

private slots:
    // Models that read different parts of one repository follow the same changes.
    void followsRandomChanges_data()
    {
        const auto row =
            TestSupport::columns<QStringList, int, int, int>("searchPaths", "nameCount", "depth", "changes");
        row("few children",
            QStringList{QString(), text("a.b"), text("a.*"), text("a.b*"), text("*.c"), text("*b*d*")}, 4, 4,
            9000);
        row("many children", QStringList{QString()}, 700, 1, 4000);
        row("many children with children", QStringList{QString(), text("*1*")}, 900, 2, 4000);
    }

    void followsRandomChanges()
    {
        QFETCH(QStringList, searchPaths);
        QFETCH(int, nameCount);
        QFETCH(int, depth);
        QFETCH(int, changes);
        std::list<Reader> readers;
        for (const QString& path : searchPaths) {
            readers.emplace_back(path);
            readers.back().tester = std::make_unique<QAbstractItemModelTester>(
                &readers.back().model, QAbstractItemModelTester::FailureReportingMode::Fatal);
            readers.back().model.resetModel(path);
        }
        TreeWriter writer(repository, {}, 11, nameCount, depth);
        QRandomGenerator random(5);
        for (int done = 0; done < changes;) {
            for (int many = random.bounded(1, random.bounded(2, 500)); many > 0; --many, ++done)
                writer.changeOnce();
            for (const Reader& reader : readers)
                QVERIFY2(comesToAgree(reader), qPrintable(differenceOf(reader)));
        }
    }

    // With no one looking at everything after each change, nodes stay counted but not listed.
    void countsChangeThroughRowSignalsAlone_data() { followsRandomChanges_data(); }

    void countsChangeThroughRowSignalsAlone()
    {
        QFETCH(QStringList, searchPaths);
        QFETCH(int, nameCount);
        QFETCH(int, depth);
        QRandomGenerator random(9);
        std::list<Reader> readers;
        for (const QString& path : searchPaths) {
            readers.emplace_back(path);
            AttributeTreeViewModel& model = readers.back().model;
            readers.back().counts = std::make_unique<ToldCounts>(model);
            model.resetModel(path);
            readers.back().counts->ask({});
            const auto lookAtTimes = [&model, &random](const QModelIndex& parent) {
                if (random.bounded(2) == 0)
                    QVERIFY(model.index(0, 0, parent).isValid() == (model.rowCount(parent) > 0));
            };
            connect(&model, &QAbstractItemModel::rowsAboutToBeInserted, this, lookAtTimes);
            connect(&model, &QAbstractItemModel::rowsAboutToBeRemoved, this, lookAtTimes);
        }
        TreeWriter writer(repository, {}, 3, nameCount, depth);
        for (int round = 0; round < 60; ++round) {
            for (int many = random.bounded(200); many > 0; --many)
                writer.changeOnce();
            const bool waits = random.bounded(2) == 0;
            for (const Reader& reader : readers) {
                askOnTheWayDown(reader, random);
                QCOMPARE(reader.counts->firstWrong(), QString());
                if (waits)
                    QVERIFY2(comesToAgree(reader, 1), qPrintable(differenceOf(reader)));
                QCOMPARE(reader.counts->firstWrong(), QString());
            }
        }
        for (const Reader& reader : readers) {
            QVERIFY2(comesToAgree(reader), qPrintable(differenceOf(reader)));
            QCOMPARE(reader.counts->firstWrong(), QString());
        }
    }

    void followsOtherThreads_data()
    {
        const auto row = TestSupport::columns<QString, QString>("searchPath", "secondRoot");
        row("apart", QString(), "y");
        row("in the same place", QString(), "x");
        row("filtered", "*.b", "x");
    }

    void followsOtherThreads()
    {
        QFETCH(QString, searchPath);
        QFETCH(QString, secondRoot);
        AttributeTreeViewModel model;
        QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
        model.resetModel(searchPath);
        std::atomic<int> running{2};
        const auto write = [&](const QString& root, quint32 seed) {
            TreeWriter writer(repository, root, seed, 3, 3);
            for (int i = 0; i < 20000; ++i)
                writer.changeOnce();
            --running;
        };
        std::thread first(write, text("x"), 1);
        std::thread second(write, secondRoot, 2);
        QTRY_COMPARE_WITH_TIMEOUT(running.load(), 0, 120000);
        first.join();
        second.join();
        QTRY_COMPARE(modelText(model), freshText(searchPath));
    }

    void mayBeDestroyedWhileWritersRun()
    {
        std::atomic<bool> running{true};
        std::thread writing([&] {
            TreeWriter writer(repository, text("x"), 4);
            for (int i = 0; i < 20000; ++i)
                writer.changeOnce();
            running = false;
        });
        while (running) {
            AttributeTreeViewModel model;
            model.resetModel({});
            modelText(model);
            QCoreApplication::processEvents();
        }
        writing.join();
        QVERIFY(!fake || fake->getRegistrationCount() == 0);
    }

    void manyChangesAtOnceAreFollowed_data()
    {
        const auto row = TestSupport::columns<QString, QString>("pattern", "searchPath");
        row("flat", "x.n%1", QString());
        row("flat, filtered", "x.n%1", "*n1*");
        row("of many parents", "x.n%1.value", QString());
        row("of many parents, filtered", "x.n%1.value", "*.n1*.value");
    }

    void manyChangesAtOnceAreFollowed()
    {
        QFETCH(QString, pattern);
        QFETCH(QString, searchPath);
        create(pattern.arg(100), 0);
        AttributeTreeViewModel model;
        model.resetModel(searchPath);
        ToldCounts counts(model);
        ToldTexts texts(model);
        const QPersistentModelIndex value =
            model.indexFromPath(pattern.arg(100), AttributeTreeViewModel::ValueColumn);
        QVERIFY(value.isValid());
        texts.read(value);
        counts.ask(value.parent());
        counts.ask({});

        for (int i = 0; i < 6000; ++i)
            create(pattern.arg(i), 1);
        QTRY_COMPARE(firstDifference(modelText(model), freshText(searchPath)), QString());
        QTRY_COMPARE(texts.countWrong(), 0);
        QCOMPARE(counts.firstWrong(), QString());
        QCOMPARE(value.data().toString(), text("1"));

        for (int i = 0; i < 6000; ++i) {
            if (i != 100)
                remove(pattern.arg(i));
        }
        QTRY_COMPARE(firstDifference(modelText(model), freshText(searchPath)), QString());
        QCOMPARE(counts.firstWrong(), QString());
        QVERIFY(value.isValid());
    }

    void writtenCellsAreTold_data()
    {
        const auto row = TestSupport::columns<int>("count");
        row("one", 1);
        row("some", 200);
        row("many", 280);
        row("more than are kept apart", 4500);
    }

    void writtenCellsAreTold()
    {
        QFETCH(int, count);
        const QString path = text("x.n%1");
        for (int i = 0; i < count; ++i)
            create(path.arg(i), 0);
        create(text("y.group.value"), 0);
        AttributeTreeViewModel model;
        model.resetModel({});
        ToldTexts texts(model);
        const QModelIndex parent = model.indexFromPath(text("x"));
        for (int row = 0; row < count; ++row)
            texts.read(model.index(row, 1, parent));
        texts.read(model.indexFromPath(text("y.group"), 1));
        for (int value : {1, 2}) {
            for (int i = 0; i < count; ++i)
                QCOMPARE(repository->getWriterInterface()->writeAttributeValue(path.arg(i), value, 8),
                         int(Success));
            create(text("y.group"), value); // a group becomes an attribute
            QTRY_COMPARE(texts.countWrong(), 0);
        }
        QCOMPARE(model.index(count - 1, 1, parent).data().toString(), text("2"));
    }

    void selectionExpansionAndScrollPositionSurvive()
    {
        for (int i = 0; i < 3000; ++i)
            create(text("x.n%1.value").arg(i), i);
        AttributeTreeViewModel model;
        model.resetModel({});
        QTreeView view;
        view.setModel(&model);
        view.resize(300, 400);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        view.expand(model.indexFromPath(text("x")));
        const QPersistentModelIndex open = model.indexFromPath(text("x.n2000"));
        view.expand(open);
        view.setCurrentIndex(model.index(0, 0, open));
        view.scrollTo(open, QAbstractItemView::PositionAtTop);
        const auto topPath = [&] {
            return view.indexAt(QPoint(50, 2)).data(AttributeTreeViewModel::PathRole).toString();
        };
        QCOMPARE(topPath(), text("x.n2000"));

        for (int i = 0; i < 6000; ++i)
            create(text("z.n%1.value").arg(i), i);
        for (int i = 0; i < 3000; ++i)
            create(text("x.n%1.value").arg(i), -i);
        remove(text("x.n2500"));
        create(text("x.n2001.more"), 1);
        QTRY_COMPARE(model.rowCount(model.indexFromPath(text("z"))), 6000);
        QTRY_VERIFY(!model.indexFromPath(text("x.n2500")).isValid());
        model.resetModel({});
        QVERIFY(view.isExpanded(open));
        QCOMPARE(view.currentIndex().data(AttributeTreeViewModel::PathRole).toString(),
                 text("x.n2000.value"));
        QVERIFY(view.selectionModel()->isSelected(view.currentIndex()));
        QCOMPARE(topPath(), text("x.n2000"));
    }

    // Another program moves, adds and takes entries, and an editor adds one before others: the rows come in
    // the order of the file, and those that stay keep what the view knows of them.
    void rowsFollowTheOrderOfTheFile_data()
    {
        const auto row = TestSupport::columns<int>("count");
        row("few", 9);
        row("many", 600);
    }

    void rowsFollowTheOrderOfTheFile()
    {
        QFETCH(int, count);
        if (fake)
            return; // which has no files
        const QTemporaryDir place;
        const QString file = place.filePath(text("m.ini"));
        const auto write = [&](const std::function<int(int)>& number, const QByteArray& more) {
            QByteArray content = more;
            for (int i = 0; i < count; ++i)
                content += "[s" + QByteArray::number(number(i)) + "]\nk = 1\nl = 2\n";
            TestSupport::writeFile(file, content);
        };
        write([](int i) { return i; }, {});
        const auto backends = repository->getBackendInterface();
        QVERIFY(backends->createBackend(text("ini"), text("m"), {file, QString(), AccessMode::ReadWrite}, 2));
        AttributeTreeViewModel model;
        std::optional<QAbstractItemModelTester> tester;
        if (count < 100) // which looks at all rows at every signal
            tester.emplace(&model);
        model.resetModel({});
        QTreeView view;
        view.setModel(&model);
        view.resize(300, 400);
        view.show();
        const QModelIndex root = model.indexFromPath(text("m"));
        view.expand(root);
        const QPersistentModelIndex open = model.indexFromPath(text("m.s3"));
        view.expand(open);
        view.setCurrentIndex(model.indexFromPath(text("m.s5.l")));
        const auto isUpToDate = [&model] { return modelText(model) == freshText({}); };
        const auto keepsItsRows = [&] {
            return model.pathFromIndex(open) == text("m.s3") && view.isExpanded(open) &&
                   model.pathFromIndex(view.currentIndex()) == text("m.s5.l") &&
                   view.selectionModel()->isSelected(view.currentIndex());
        };

        create(text("m.first"), 1);
        QTRY_VERIFY(isUpToDate());
        QCOMPARE(model.indexFromPath(text("m.first")).row(), 0);
        QVERIFY(backends->saveBackend(text("m")));
        write([count](int i) { return count - 1 - i; }, "first=1\n");
        QVERIFY(backends->reloadBackend(text("m")));
        QTRY_VERIFY(isUpToDate());
        QVERIFY(keepsItsRows());
        write([count](int i) { return i % 3 == 0 ? count + i : count - i; }, "second=1\n");
        QVERIFY(backends->reloadBackend(text("m")));
        QTRY_VERIFY(isUpToDate());
        remove(text("m.second"));
        create(text("m.third"), 1);
        QTRY_VERIFY(isUpToDate());
    }

    void rowsThatStayKeepTheirIndexes()
    {
        for (const char* path : {"a.x", "b.y", "c.x", "d.y", "e.x"})
            create(text(path), 1);
        AttributeTreeViewModel model;
        model.resetModel(text("*.x"));
        const QPersistentModelIndex kept = model.indexFromPath(text("c.x"));
        create(text("b.x"), 1); // both lead there from now on, on either side of what stays
        create(text("d.x"), 1);
        QTRY_COMPARE(model.rowCount(), 5);
        QCOMPARE(modelText(model), freshText(text("*.x")));
        QCOMPARE(model.pathFromIndex(kept), text("c.x"));
    }

    void readingAgainChangesOnlyWhatDiffers()
    {
        create(text("a.b"), 1);
        create(text("a.c"), 2);
        AttributeTreeViewModel model;
        model.resetModel(text("a"));
        const QPersistentModelIndex kept = model.indexFromPath(text("a.c"));
        QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
        QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
        QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
        remove(text("a.b"));
        create(text("a.d"), 3);
        model.resetModel(text("a"));
        QCOMPARE(modelText(model), (QStringList{text("a"), text("  c = 2"), text("  d = 3")}));
        QCOMPARE(resets.count() + inserted.count() * 10 + removed.count() * 100, 110);
        QCOMPARE(model.pathFromIndex(kept), text("a.c"));

        model.resetModel(text("a.d"));
        QCOMPARE(resets.count(), 1);
        QCOMPARE(modelText(model), (QStringList{text("a"), text("  d = 3")}));
    }
};

VANTRY_TEST_MAIN(QApplication, TreeModelChangesTest)

#include "tree_model_changes_test.moc"
