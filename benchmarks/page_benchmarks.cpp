#include "benchmarks/LoadLoops.h"
#include "benchmarks/ShownPage.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QStandardItemModel>

#include <algorithm>
#include <benchmark/benchmark.h>

// The browser page on many attributes below one node: from the key or the press of the button until no event
// waits and what came of it is painted.

namespace {

using namespace LoadLoops;

// A repository of as many attributes as the row says, all of them below one node, for as long as this lives.
struct Attributes
{
    explicit Attributes(const benchmark::State& state) : count(int(state.range(0)))
    {
        const auto repository = Repository::AttributeRepository::create();
        for (int i = 0; i < count; ++i)
            repository->getWriterInterface()->createAttribute(demoPath(i), QString::number(i), 3, 3);
        Utilities::SetAppConfigRepositoryInterface(repository);
    }

    ~Attributes() { Utilities::SetAppConfigRepositoryInterface({}); }

    const int count;
};

void floorStandardItemModel(benchmark::State& state)
{
    const int count = int(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        QStandardItemModel model;
        auto* const top = new QStandardItem(QStringLiteral("demo"));
        model.appendRow(top);
        for (int i = 0; i < count; ++i) {
            const QString text = QString::number(i);
            top->appendRow({new QStandardItem(text), new QStandardItem(text)});
        }
        state.PauseTiming();
        model.clear();
        state.ResumeTiming();
    }
}

void readAll(benchmark::State& state)
{
    const Attributes attributes(state);
    for ([[maybe_unused]] auto _ : state) {
        ShownPage page(state);
        state.SetIterationTime(page.time(page.treePaints, [&page] { page.pressRead(); }));
        page.expectNames(attributes.count);
    }
}

// The node that holds them all is open, and stays so.
void readAgain(benchmark::State& state)
{
    const Attributes attributes(state);
    ShownPage page(state);
    page.pressRead();
    page.open({QStringLiteral("demo")});
    finishEvents();
    for ([[maybe_unused]] auto _ : state) {
        state.SetIterationTime(page.time(page.treePaints, [&page] { page.pressRead(); }));
        page.expectNames(attributes.count);
        if (!page.tree.isExpanded(page.item(QStringLiteral("demo"))))
            state.SkipWithError("the open node was closed");
    }
}

// Types the path of the last attribute, and measures how long the slowest key took.
void complete(benchmark::State& state)
{
    const Attributes attributes(state);
    ShownPage page(state);
    page.pressRead();
    Paints popupPaints(page.search.completer()->popup()->viewport());
    page.widget.activateWindow();
    page.search.setFocus();
    for ([[maybe_unused]] auto _ : state) {
        page.search.clear();
        finishEvents();
        double slowest = 0;
        for (const QChar character : demoPath(attributes.count - 1)) {
            QWidget* const popup = QApplication::activePopupWidget();
            QWidget* const receiver = popup ? popup : &page.search;
            slowest = std::max(
                slowest, page.time(popupPaints, [&] { QTest::keyClick(receiver, character.toLatin1()); }));
        }
        state.SetIterationTime(slowest);
    }
    page.search.completer()->popup()->hide();
}

// Chooses the entry "1", which leaves what begins with it: every ninth attribute.
void filter(benchmark::State& state)
{
    const Attributes attributes(state);
    for ([[maybe_unused]] auto _ : state) {
        ShownPage page(state);
        page.pressRead();
        QComboBox& box = *page.boxes.first();
        BrowserPage::choose(box, QStringLiteral("0"));
        finishEvents();
        state.SetIterationTime(page.time(page.treePaints, [&box] { QTest::keyClick(&box, Qt::Key_Down); }));
        if (page.tree.model()->rowCount(page.item(QStringLiteral("demo"))) < attributes.count / 10)
            state.SkipWithError("the filter does not show what it has to");
    }
}

void openFilterBox(benchmark::State& state)
{
    const Attributes attributes(state);
    for ([[maybe_unused]] auto _ : state) {
        ShownPage page(state);
        page.pressRead();
        finishEvents();
        QComboBox& box = *page.boxes.first();
        Paints listPaints(box.view()->viewport());
        state.SetIterationTime(page.time(listPaints, [&box] { QTest::mouseClick(&box, Qt::LeftButton); }));
        page.expectNames(attributes.count);
        box.hidePopup();
    }
}

void pageSizes(benchmark::internal::Benchmark* row)
{
    row->Apply(sizes)->UseManualTime()->Iterations(3);
}

BENCHMARK(floorStandardItemModel)->Name("Floor/StandardItemModel")->Apply(sizes);
BENCHMARK(readAll)->Name("Models/ReadAll")->Apply(pageSizes);
BENCHMARK(readAgain)->Name("Models/ReadAgain")->Apply(pageSizes);
BENCHMARK(complete)->Name("Models/Complete")->Apply(pageSizes);
BENCHMARK(filter)->Name("Models/Filter")->Apply(pageSizes);
BENCHMARK(openFilterBox)->Name("Models/OpenFilterBox")->Apply(pageSizes);

} // namespace
