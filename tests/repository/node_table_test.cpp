#include "repository/store/NodeTable.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QRandomGenerator>

#include <map>

using Repository::Node;
using Repository::NodeTable;

class NodeTableTest : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithReference_data()
    {
        const auto row = TestSupport::columns<int>("hashes");
        row("hardly two of a hash", 1000000);
        row("groups run over", 40);
        row("all of one hash", 1);
    }

    // Nodes that a full group has passed on are found again, through growing and through removals before
    // them.
    void agreesWithReference()
    {
        QFETCH(int, hashes);
        const auto hashOf = [hashes](int number) { return quint32(number % hashes) * 2654435761U; };
        const auto pathOf = [](int number) { return QStringLiteral("n%1").arg(number); };
        QRandomGenerator random(7);
        NodeTable table;
        std::map<int, const Node*> reference;
        for (int step = 0; step < 12000; ++step) {
            const int number = random.bounded(600);
            const auto known = reference.find(number);
            const Node* const found = table.find(pathOf(number), hashOf(number));
            QCOMPARE(found, known == reference.end() ? nullptr : known->second);
            if (!found) {
                auto node = std::make_unique<Node>(pathOf(number));
                reference.emplace(number, node.get());
                QCOMPARE(&table.insert(std::move(node), hashOf(number)), reference[number]);
            } else if (random.bounded(3) > 0) {
                QCOMPARE(table.take(*found, hashOf(number))->path, pathOf(number));
                reference.erase(known);
            }
        }
        for (const auto& [number, node] : reference)
            QCOMPARE(static_cast<const Node*>(table.find(pathOf(number), hashOf(number))), node);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, NodeTableTest)

#include "node_table_test.moc"
