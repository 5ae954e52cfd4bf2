#include "repository/store/NodeTable.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QRandomGenerator>

#include <map>
#include <memory>
#include <vector>

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
    // them, and told apart by all of their path where hash and name are the same.
    void agreesWithReference()
    {
        QFETCH(int, hashes);
        const auto hashOf = [hashes](int number) { return quint32(number % hashes) * 2654435761U; };
        constexpr int groupCount = 7;
        Node top;
        std::vector<std::unique_ptr<Node>> groups;
        for (int group = 0; group < groupCount; ++group)
            groups.push_back(Node::make(top, QStringLiteral("g%1").arg(group), 0));
        const auto nameOf = [](int number) { return QStringLiteral("n%1").arg(number / groupCount); };
        const auto pathOf = [&](int number) {
            return QStringLiteral("g%1.").arg(number % groupCount) + nameOf(number);
        };
        QRandomGenerator random(7);
        NodeTable table;
        std::map<int, const Node*> reference;
        for (int step = 0; step < 12000; ++step) {
            const int number = random.bounded(600);
            const auto known = reference.find(number);
            const Node* const found = table.find(pathOf(number), hashOf(number));
            QCOMPARE(found, known == reference.end() ? nullptr : known->second);
            if (!found) {
                auto node =
                    Node::make(*groups[std::size_t(number % groupCount)], nameOf(number), hashOf(number));
                reference.emplace(number, node.get());
                QCOMPARE(&table.insert(std::move(node), hashOf(number)), reference[number]);
            } else if (random.bounded(3) > 0) {
                QCOMPARE(table.take(*found)->getPath(), pathOf(number));
                reference.erase(known);
            }
        }
        for (const auto& [number, node] : reference) {
            const QString path = pathOf(number);
            for (const QString& other :
                 {nameOf(number), path.mid(1), QLatin1Char('g') + path, QLatin1Char('.') + path})
                QVERIFY2(!table.find(other, hashOf(number)), qPrintable(other));
            QCOMPARE(static_cast<const Node*>(table.find(path, hashOf(number))), node);
        }
    }
};

VANTRY_TEST_MAIN(QCoreApplication, NodeTableTest)

#include "node_table_test.moc"
