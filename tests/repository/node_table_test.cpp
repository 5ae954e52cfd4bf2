#include "repository/store/NodePages.h"
#include "repository/store/NodeTable.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QRandomGenerator>

#include <map>
#include <memory>
#include <vector>

using Repository::Node;
using Repository::NodePages;
using Repository::NodePointer;
using Repository::NodeTable;

class NodeTableTest : public QObject
{
    Q_OBJECT

private slots:
    void agreesWithReference_data()
    {
        const auto row = TestSupport::columns<int, QString>("hashes", "letter");
        row("hardly two of a hash", 1000000, "n");
        row("groups run over", 40, "n");
        row("all of one hash", 1, "n");
        row("Latin letters", 40, "\u00FF");
        row("letters of two bytes", 40, "\u01FF");
    }

    // Nodes that a full group has passed on are found again, through growing and through removals before
    // them, and told apart by all of their path where hash and name are the same.
    void agreesWithReference()
    {
        QFETCH(int, hashes);
        QFETCH(QString, letter);
        const auto hashOf = [hashes](int number) { return quint32(number % hashes) * 2654435761U; };
        constexpr int groupCount = 7;
        Node top;
        std::vector<NodePointer> groups;
        for (int group = 0; group < groupCount; ++group)
            groups.push_back(Node::make(top, QStringLiteral("g%1").arg(group), 0));
        const auto nameOf = [&](int number) { return letter + QString::number(number / groupCount); };
        const auto pathOf = [&](int number) {
            return QStringLiteral("g%1.").arg(number % groupCount) + nameOf(number);
        };
        QRandomGenerator random(7);
        auto pages = std::make_unique<NodePages>();
        NodeTable table;
        std::map<int, const Node*> reference;
        for (int step = 0; step < 12000; ++step) {
            const int number = random.bounded(600);
            const auto known = reference.find(number);
            const Node* const found = table.find(pathOf(number), hashOf(number));
            QCOMPARE(found, known == reference.end() ? nullptr : known->second);
            if (!found) {
                auto node = Node::make(*groups[std::size_t(number % groupCount)], nameOf(number),
                                       hashOf(number), random.bounded(3) > 0 ? pages.get() : nullptr);
                QCOMPARE(node->getName(), nameOf(number));
                reference.emplace(number, node.get());
                QCOMPARE(&table.insert(std::move(node), hashOf(number)), reference[number]);
            } else if (random.bounded(3) > 0) {
                QCOMPARE(table.take(*found)->getPath(), pathOf(number));
                reference.erase(known);
            }
        }
        pages.reset(); // which the nodes outlive
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
