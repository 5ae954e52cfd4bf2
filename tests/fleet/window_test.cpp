#include "host/Utilities/ModelViews/AttributeTreeViewModel.h"
#include "host/Utilities/RepositoryAccess.h"
#include "tests/fleet/FleetTest.h"

#include <QApplication>

using Utilities::ModelViews::AttributeTreeViewModel;

// A store in the tree of a window, whose thread waits for no server.
class WindowTest : public FleetTest
{
    Q_OBJECT

private slots:
    // Where everybody sees it, and without a look at anything else.
    void showsAtTheRootHowTheStoreIs()
    {
        const FleetMachine machine(location());
        QCOMPARE(refusalOf(machine.getMounted()), QString());
        Utilities::SetAppConfigRepositoryInterface(machine.shareRepository());
        AttributeTreeViewModel model;
        model.setLstBackendName({QStringLiteral("m")});
        model.setLstBackendPath({QStringLiteral("m")});
        model.resetModel({});
        const auto cell = [&model](int role = Qt::DisplayRole) {
            return model.indexFromPath(QStringLiteral("m"), AttributeTreeViewModel::ValueColumn)
                .data(role)
                .toString();
        };
        QString shown = cell(); // as a view, which looks again when it is told to
        connect(&model, &QAbstractItemModel::dataChanged, this, [&] { shown = cell(); });
        QTRY_COMPARE(shown, QStringLiteral("connected"));
        server.kill();
        QTRY_VERIFY(shown.startsWith(QLatin1String("stale since")));
        QVERIFY2(cell(Qt::ToolTipRole).contains(server.getEndpoints().first()),
                 qPrintable(cell(Qt::ToolTipRole)));
        QVERIFY(server.restart());
        QTRY_COMPARE_WITH_TIMEOUT(shown, QStringLiteral("connected"), longWait);
        Utilities::SetAppConfigRepositoryInterface({});
    }
};

VANTRY_TEST_MAIN(QApplication, WindowTest)
#include "window_test.moc"
