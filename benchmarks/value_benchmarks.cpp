#include "benchmarks/ShownPage.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"

#include <functional>

// A click on an attribute with a long value in a page full of such, until its details are painted.

namespace {

constexpr int rows = 25; // more than the page shows
constexpr int million = 1000000;

QStringList manyItems()
{
    QStringList items;
    for (int i = 0; i < million; ++i)
        items.append(QString::number(i));
    return items;
}

void click(benchmark::State& state, const std::function<QVariant()>& makeValue)
{
    const auto repository = Repository::AttributeRepository::create();
    const QVariant value = makeValue();
    for (int i = 0; i < rows; ++i)
        repository->getWriterInterface()->createAttribute(QStringLiteral("demo.a%1").arg(i), value, 3, 3);
    Utilities::SetAppConfigRepositoryInterface(repository);
    {
        ShownPage page(state);
        page.pressRead();
        page.open({QStringLiteral("demo")});
        finishEvents();
        Paints detailsPaints(page.details.viewport());
        int row = 0;
        for ([[maybe_unused]] auto _ : state) {
            const QString path = QStringLiteral("demo.a%1").arg(row++ % 10);
            state.SetIterationTime(page.time(detailsPaints, [&] { page.clickItem(path); }));
            if (!page.details.toPlainText().contains(path))
                state.SkipWithError("the details are not those of the attribute");
        }
    }
    Utilities::SetAppConfigRepositoryInterface({});
}

void addRow(const char* name, const std::function<QVariant()>& makeValue)
{
    benchmark::RegisterBenchmark(name, click, makeValue)
        ->UseManualTime()
        ->Iterations(10)
        ->Unit(benchmark::kMillisecond);
}

const bool areRowsAdded = [] {
    addRow("Floor/ClickValue", [] { return QStringLiteral("12.5"); });
    addRow("Values/Click/Unbroken", [] { return QString(10 * million, QLatin1Char('x')); });
    addRow("Values/Click/Lines", [] { return QStringLiteral("a line\n").repeated(million); });
    addRow("Values/Click/Bytes", [] { return QByteArray(10 * million, 'x'); });
    addRow("Values/Click/Nulls", [] { return QString(million, QChar(QChar::Null)); });
    addRow("Values/Click/Marks", [] { return QLatin1Char('a') + QString(million, QChar(0x301)); });
    addRow("Values/Click/Scripts", [] { return QString::fromUtf8("a\u05d0").repeated(million); });
    addRow("Values/Click/List", [] { return manyItems(); });
    return true;
}();

} // namespace
