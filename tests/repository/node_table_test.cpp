#include "repository/store/NodeTable.h"
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
        QTest::addColumn<int>("hashes");
        QTest::newRow("hardly two of a hash") << 1000000;
        QTest::newRow("groups run over") << 40;
        QTest::newRow("all of one hash") << 1;
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

int main(int argc, char** argv)
{
    return TestSupport::runTest<QCoreApplication, NodeTableTest>(argc, argv);
}

#include "node_table_test.moc"
