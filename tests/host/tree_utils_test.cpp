#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"

#include <QCoreApplication>
#include <QStandardItemModel>

using FrameworkCore::AppConfig::AccessMode;
using Utilities::ModelViews::AttributeTreeViewModelUtils;

Q_DECLARE_METATYPE(FrameworkCore::AppConfig::AccessMode)

class TreeUtilsTest : public QObject
{
    Q_OBJECT

private slots:
    void itemsAreFoundByTheirNames()
    {
        QStandardItemModel model(0, 2);
        auto* const net = new QStandardItem(QStringLiteral("net"));
        net->appendRow(
            {new QStandardItem(QStringLiteral("ip")), new QStandardItem(QStringLiteral("10.0.0.1"))});
        net->appendRow({new QStandardItem(QStringLiteral("name")), new QStandardItem(QStringLiteral("x"))});
        model.appendRow({net, new QStandardItem});
        model.appendRow({new QStandardItem(QStringLiteral("far")), new QStandardItem});

        const AttributeTreeViewModelUtils utils;
        QCOMPARE(utils.extractStringsFromModel(&model, {}), TestSupport::words("net far"));
        QCOMPARE(utils.extractStringsFromModel(&model, net->index()), TestSupport::words("ip name"));
        QVERIFY(utils.extractStringsFromModel(nullptr, {}).isEmpty());
        QCOMPARE(utils.retriveAttributePathFromIndex(net->child(1, 0)->index()), QStringLiteral("net.name"));
        QCOMPARE(utils.retriveAttributePathFromIndex(net->child(0, 1)->index()), QStringLiteral("net.ip"));
        QCOMPARE(utils.retriveAttributePathFromIndex({}), QString());
    }

    void trims_data()
    {
        const auto row = TestSupport::columns<QString, QString, QString>("text", "characters", "expected");
        row("both ends", "..a.b.", ".", "a.b");
        row("a set", "*.a*", ".*", "a");
        row("nothing left", "***", "*", "");
        row("nothing to trim", "a", "", "a");
    }

    void trims()
    {
        QFETCH(QString, text);
        QFETCH(QString, characters);
        QFETCH(QString, expected);
        QCOMPARE(AttributeTreeViewModelUtils::TrimAttributeName(text, characters), expected);
    }

    void accessModesHaveTheirWords_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<AccessMode>("expected");
        const auto row = [](const char* text, AccessMode expected) {
            QTest::newRow(text) << QString::fromLatin1(text) << expected;
        };
        row("read-only", AccessMode::ReadOnly);
        row("write-only", AccessMode::WriteOnly);
        row("read-write", AccessMode::ReadWrite);
        row("Read-Write", AccessMode::None);
        row("", AccessMode::None);
    }

    void accessModesHaveTheirWords()
    {
        QFETCH(QString, text);
        QFETCH(AccessMode, expected);
        QCOMPARE(AttributeTreeViewModelUtils::GetBackendAccessMode(text), expected);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, TreeUtilsTest)

#include "tree_utils_test.moc"
