#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"
#include "host/Utilities/RepositoryAccess.h"
#include "tests/support/Columns.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/TestRun.h"
#include "widgets/ExpansionMemory.h"
#include "widgets/HierarchyFilter.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QRandomGenerator>

#include <algorithm>

using TestSupport::FakeRepository;
using Utilities::ModelViews::AttributeTreeViewModel;
using Utilities::ModelViews::AttributeTreeViewModelUtils;
using Widgets::ExpansionMemory;
using Widgets::HierarchyFilter;

namespace {

// Few different names, many of which begin with one another, or differ in case alone.
QString randomName(QRandomGenerator& random)
{
    static const char* const names[] = {"a", "A", "ab", "aB", "abc", "b", "ba", "net", "Net", "network"};
    return QString::fromLatin1(names[random.bounded(10)]);
}

QString randomPath(QRandomGenerator& random)
{
    QString path = randomName(random);
    for (int depth = random.bounded(4); depth > 0; --depth)
        path += QLatin1Char('.') + randomName(random);
    return path;
}

QStringList pathsOf(const AttributeTreeViewModel& model, const QVector<ExpansionMemory::SavedItem>& items)
{
    QStringList paths;
    for (const ExpansionMemory::SavedItem& each : items) {
        paths.append(model.pathFromIndex(each.item));
        if (paths.last() != each.path)
            paths.append(each.path); // more than anybody expects
    }
    return paths;
}

// How expansion is restored by its definition: each saved path is matched by its last name in each level.
// What is open within a closed item is found there too.
void collectByMatching(const AttributeTreeViewModel& model, const QModelIndex& start,
                       const QStringList& saved, QStringList& found)
{
    for (const QString& path : saved) {
        const QString name = path.split(QLatin1Char('.')).last();
        const QModelIndexList hits =
            model.match(start, Qt::DisplayRole, name, 66, Qt::MatchStartsWith | Qt::MatchWrap);
        for (const QModelIndex& hit : hits) {
            const QString hitPath = model.pathFromIndex(hit);
            if (!saved.contains(hitPath) || found.contains(hitPath))
                continue;
            found.append(hitPath);
            collectByMatching(model, model.index(0, 0, hit), saved, found);
        }
    }
    for (int row = 0; start.isValid() && row < model.rowCount(start.parent()); ++row) {
        const QModelIndex item = start.sibling(row, 0);
        const QString path = model.pathFromIndex(item);
        if (!saved.contains(path))
            collectByMatching(model, model.index(0, 0, item), saved, found);
    }
}

} // namespace

// The lookups in the tree that replace matches over the whole of it must find what those would.
class TreeLookupTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        repository = std::make_shared<FakeRepository>();
        Utilities::SetAppConfigRepositoryInterface(repository);
    }

    void cleanup() { Utilities::SetAppConfigRepositoryInterface({}); }

    void restoresWhatMatchingWouldRestore()
    {
        QRandomGenerator random(20);
        int beyondLimit = 0;
        for (int round = 0; round < 30; ++round) {
            init();
            // Some rounds have a wide level, in which names lie beyond the limit of hits.
            const bool isWide = round % 2 == 1;
            const QString root = isWide ? QStringLiteral("net.ab.") : QString();
            for (int i = 0; isWide && i < 90; ++i)
                repository->set(root + QStringLiteral("a%1").arg(i), i);
            for (int i = 0; i < 100; ++i)
                repository->set(root + randomPath(random), i);
            AttributeTreeViewModel model;
            model.resetModel({});
            QStringList saved{QStringLiteral("net"), QStringLiteral("net.ab")};
            for (int i = 0; i < 60; ++i)
                saved.append(root + randomPath(random));
            saved.removeDuplicates();
            const QModelIndex start = model.index(random.bounded(model.rowCount()), 0);

            QStringList expected;
            collectByMatching(model, start, saved, expected);
            QStringList restored = pathsOf(model, ExpansionMemory::findSavedItems(model, start, saved));
            beyondLimit += unreached(model, saved, restored);
            expected.sort();
            restored.sort();
            QCOMPARE(restored, expected);
        }
        QVERIFY(beyondLimit > 0); // or the limit was never met
    }

    void onlyTheFirstHitsOfANameAreRestored_data()
    {
        const auto row = TestSupport::columns<int, bool>("longerNamesBefore", "isRestored");
        row("the last hit", 65, true);
        row("one too many", 66, false);
    }

    void onlyTheFirstHitsOfANameAreRestored()
    {
        QFETCH(int, longerNamesBefore);
        for (int i = 0; i < longerNamesBefore; ++i)
            repository->set(QStringLiteral("wide.Item%1").arg(i), i);
        repository->set(QStringLiteral("wide.item"), 1);
        AttributeTreeViewModel model;
        model.resetModel(QStringLiteral("wide"));
        const QStringList saved{QStringLiteral("wide"), QStringLiteral("wide.item")};
        const QStringList restored =
            pathsOf(model, ExpansionMemory::findSavedItems(model, model.index(0, 0), saved));
        QFETCH(bool, isRestored);
        QCOMPARE(restored, saved.mid(0, isRestored ? 2 : 1));
    }

    void filterPaths_data()
    {
        TestSupport::columns<QString, QStringList, QString>("searchPath", "chosen", "path");
        const auto row = [](const char* searchPath, const QStringList& chosen, const char* path) {
            QTest::addRow("%s and %s", searchPath, qPrintable(chosen.join(QLatin1Char(','))))
                << QString::fromLatin1(searchPath) << chosen << QString::fromLatin1(path);
        };
        const QString any = QStringLiteral("*");
        const QString net = QStringLiteral("net");
        const QString ip = QStringLiteral("ip");
        row("app.*", {net, ip}, "app.net.ip*");
        row("app.*", {any}, "app.**");
        row("app", {net}, "app.net*");
        row("app.", {net, any}, "app.net.**");
        row("*", {net}, "net*");
        row("", {any}, "**");
        row("*", {net, ip, net, ip}, "net.ip.net.ip*");
        row("a*b*", {net}, "ab.net*");
        row("app.*", {}, "app");
    }

    void filterPaths()
    {
        QFETCH(QString, searchPath);
        QFETCH(QStringList, chosen);
        AttributeTreeViewModel model;
        HierarchyFilter filter(repository);
        filter.fill(model, searchPath);
        QTEST(filter.filterPath(chosen), "path");
    }

    void levelsOfTheFilter_data()
    {
        TestSupport::columns<QString, QVector<int>, QStringList>("searchPath", "rows", "names");
        const auto row = [](const char* searchPath, const QVector<int>& rows, const char* names) {
            QTest::addRow("%s, row %d of level %d", searchPath, rows.isEmpty() ? -1 : rows.last(),
                          rows.size())
                << QString::fromLatin1(searchPath) << rows
                << QString::fromLatin1(names).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        };
        row("a.b.*", {}, "c d");
        row("a.b.", {}, "c d");
        row("a.b", {}, "c d");
        row("a.b", {0}, "e");
        row("a.b", {1}, "");
        row("a.b", {0, 0}, "f");
        row("a.b", {0, 0, 0}, "g");
        row("a*.b*", {}, "c d"); // the wildcards are taken out, and there is an "a.b"
        row("a*.b*", {0, 0}, "f");
        row("*", {1, 0}, "c d");
        row("a.b", {7}, "");
        row("a.b", {0, 7, 0}, "");
        row("a.x", {}, ""); // no such item: not the top level
        row("a..b", {}, "");
        row("a.b.d", {}, "");  // a leaf
        row("a*b", {}, "");    // the wildcard is taken out, and there is no "ab"
        row("a.b*.d", {}, ""); // only what leads to a "d" is shown, but the boxes go by names
    }

    void levelsOfTheFilter()
    {
        QFETCH(QString, searchPath);
        QFETCH(QVector<int>, rows);
        for (const char* path : {"a.b.c.e.f.g", "a.b.d", "k.l"})
            repository->set(QString::fromLatin1(path), 1);
        AttributeTreeViewModel model;
        model.resetModel(searchPath);
        HierarchyFilter filter(repository);
        filter.fill(model, searchPath);
        // The page narrows its tree by what is chosen; the boxes go on offering all of the search path.
        model.resetModel(QStringLiteral("k"));
        QTEST(filter.names(rows), "names");
    }

    void manyOpenLeavesDoNotCostTheirSquare()
    {
        constexpr int count = 20000;
        QStringList saved{QStringLiteral("wide")};
        for (int i = 0; i < count; ++i) {
            saved.append(QStringLiteral("wide.x%1").arg(i));
            repository->set(saved.last(), i);
        }
        AttributeTreeViewModel model;
        model.resetModel({});
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(ExpansionMemory::findSavedItems(model, model.index(0, 0), saved).size(), count + 1);
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    }

private:
    // Saved items that the tree shows, below restored ones, and that were left out all the same.
    static int unreached(const AttributeTreeViewModel& model, const QStringList& saved,
                         const QStringList& restored)
    {
        return int(std::count_if(saved.begin(), saved.end(), [&](const QString& path) {
            const QModelIndex item = model.indexFromPath(path);
            return item.isValid() && restored.contains(model.pathFromIndex(item.parent())) &&
                   !restored.contains(path);
        }));
    }

    std::shared_ptr<FakeRepository> repository;
};

VANTRY_TEST_MAIN(QApplication, TreeLookupTest)

#include "tree_lookup_test.moc"
