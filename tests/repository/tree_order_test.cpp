#include "repository/documents/Formats.h"
#include "tests/support/ModelText.h"
#include "tests/support/RepositoryTest.h"

#include <QRandomGenerator>

#include <algorithm>

using namespace FrameworkCore::AppConfig;
using namespace Repository;

namespace {

const QHash<QString, QByteArray> samples{
    {QStringLiteral("json"),
     R"({"a": [10, 11, 12, 13], "b": {"c": 1, "d": [[1, 2], {"x": 1}, {"x": 2, "i": 3}]}, "c": ["x", "y"],
         "d": {"0": 1, "1": 2}, "x": 5, "x": 6})"},
    {QStringLiteral("ini"), "a=1\na=2\n[b]\nx=1\ni=2\nx=3\n[c]\nx=1\n[b.a]\ni=1\n[c]\nx=2\n[d.a]\nx=1\n[i]\n"
                            "x=1\n[d.b]\nx=2\n[d]\nx=3\n"},
    {QStringLiteral("xml"), "<a><i>1</i><i>2</i><b c='1' d='2'><i>1</i>text<x>5</x>text<i>2</i></b>"
                            "<i>4</i><x><a/></x><c>1</c><c>2</c></a>"},
    {QStringLiteral("txt"), "a.x=1\nb=2\n\na.i=3\nb=3\na.c.x=1\nc.x=1\na.c.i=2\n# d\nb.x=1\na=7\n"}};

// All below "m", each node with its value, in the order in which the tree lists it.
void list(const AttributeRepository& repository, const QString& path, QStringList& lines)
{
    auto& attributes = const_cast<AttributeRepository&>(repository);
    const QStringList names = attributes.getTreeInterface()->getChildNames(path);
    for (const QString& name : names) {
        const QString child = path + QLatin1Char('.') + name;
        QVariant value;
        attributes.getReaderInterface()->readAttributeValue(child, value, 0);
        lines.append(child + QStringLiteral(" = ") + value.toString());
        list(repository, child, lines);
    }
}

} // namespace

// The tree shows a file in the file's order, whoever changes it.
class TreeOrderTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    QString type;
    QRandomGenerator random;

    QString filePath() const { return fileOf(QStringLiteral("m.") + type); }

    Outcome mount(const QString& format, const QByteArray& text)
    {
        type = format;
        return mountFile(type, "m", put(QStringLiteral("m.") + type, text));
    }

    QByteArray savedAnyhow()
    {
        // What both sides have changed stays as it is here, or else as it is there.
        for (const auto side : {Interfaces::ConflictSide::Mine, Interfaces::ConflictSide::Theirs}) {
            if (save())
                break;
            changes()->resolveConflicts(QStringLiteral("m"), side);
        }
        return TestSupport::contentOf(filePath());
    }

    QStringList listed() const
    {
        QStringList lines;
        list(*repository, QStringLiteral("m"), lines);
        return lines + tree()->findPaths({QStringLiteral("m.*")});
    }

    // The same of the saved file, read by a repository of its own.
    QStringList listedAfresh() const
    {
        const auto other = AttributeRepository::create();
        QStringList lines;
        if (!other->getBackendInterface()->mount(type, QStringLiteral("m"),
                                                 {filePath(), {}, AccessMode::ReadWrite}, 2))
            return {QStringLiteral("not mounted")};
        list(*other, QStringLiteral("m"), lines);
        return lines + other->getTreeInterface()->findPaths({QStringLiteral("m.*")});
    }

    QString childNames(const char* path) const
    {
        return tree()->getChildNames(QLatin1String(path)).join(QLatin1Char(' '));
    }

    QString anyNode()
    {
        const QStringList paths = tree()->findPaths({QStringLiteral("m.*")});
        return paths.isEmpty() ? QStringLiteral("m") : paths.at(random.bounded(paths.size()));
    }

    QString anyPath()
    {
        static const char* const names[] = {"a", "b",    "c",    "d",    "x",  "i",  "0",    "1",
                                            "2", "a[2]", "x[2]", "i[3]", "@n", "@m", "#text"};
        QString path = random.bounded(3) == 0 ? QStringLiteral("m") : anyNode();
        if (random.bounded(3) == 0 && path.contains(QLatin1Char('.')))
            path.truncate(path.lastIndexOf(QLatin1Char('.')));
        for (int i = random.bounded(5) == 0 ? 2 : 1; i > 0; --i)
            path += QLatin1Char('.') + QLatin1String(names[random.bounded(int(std::size(names)))]);
        return path;
    }

    // Another program, which knows the format, changes the file as it is on disk, or writes it in another
    // order.
    void writeOutside()
    {
        auto document = Documents::makeDocument(type.toStdString());
        QVERIFY(document->parse(TestSupport::contentOf(filePath()).toStdString()).ok());
        std::vector<Documents::Entry> entries;
        document->visit([&](const Documents::Entry& entry) { entries.push_back(entry); });
        if (random.bounded(3) == 0) {
            std::shuffle(entries.begin(), entries.end(), random);
            document = Documents::makeDocument(type.toStdString());
            for (const Documents::Entry& entry : entries)
                document->insert(entry.path, entry.value);
        }
        for (int i = 0; i < 2 && !entries.empty(); ++i) {
            document->remove(entries[std::size_t(random.bounded(int(entries.size())))].path);
            document->insert(anyPath().mid(2).toStdString(), entries.back().value);
        }
        TestSupport::writeFile(filePath(), QByteArray::fromStdString(document->getBytes()));
        reload();
    }

    void changeOnce()
    {
        QByteArray text;
        switch (random.bounded(10)) {
        case 0:
        case 1:
        case 2:
            create(anyPath(), random.bounded(9), 3, 3);
            break;
        case 3:
        case 4:
            remove(anyNode());
            break;
        case 5:
            random.bounded(2) == 0 ? copy(anyNode(), anyPath()) : move(anyNode(), anyPath());
            break;
        case 6:
            if (transfer()->exportTree(anyNode(), QStringLiteral("json"), text) == Success)
                import(anyPath(), QStringLiteral("json"), text);
            break;
        case 7:
            writeOutside();
            break;
        case 8:
            history()->redo();
            break;
        default:
            history()->undo();
        }
    }

private slots:
    void followsTheFile_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<int>("seed"); // even ones without history, which has orders of its own to bring back
        for (auto sample = samples.begin(); sample != samples.end(); ++sample) {
            for (int seed = 0; seed < 6; ++seed)
                QTest::addRow("%s %d", qPrintable(sample.key()), seed) << sample.key() << seed;
        }
    }

    void followsTheFile()
    {
        QFETCH(QString, format);
        QFETCH(int, seed);
        random.seed(quint32(seed));
        if (seed % 2 != 0)
            history()->recordThisThread();
        QVERIFY(mount(format, samples[format]));
        for (int step = 0; step < 60; ++step) {
            changeOnce();
            const QByteArray file = savedAnyhow();
            const QString difference = TestSupport::firstDifference(listed(), listedAfresh());
            QVERIFY2(difference.isEmpty(),
                     qPrintable(QStringLiteral("step %1: %2\n").arg(step).arg(difference) +
                                QString::fromUtf8(file)));
        }
    }

    // Copies and exports are what the file holds.
    void arraysStayArrays()
    {
        QVERIFY(mount(QStringLiteral("json"), "{\"a\":[10,11,12,13]}"));
        QCOMPARE(remove("m.a.0"), Success);
        QCOMPARE(copy("m.a", "m.b"), Success);
        QCOMPARE(savedAnyhow(), QByteArray("{\"a\":[11,12,13],\"b\":[11,12,13]}"));
        QCOMPARE(exported("m.b", "json").simplified().replace(' ', ""), QByteArray("[11,12,13]"));
    }

    // Of many nodes none is asked for by itself.
    void largeCopiesAreSorted()
    {
        QVERIFY(mount(QStringLiteral("xml"), "<a/>"));
        for (const QString& name : {QStringLiteral("e"), QStringLiteral("@last")}) {
            for (int i = 0; i < 600; ++i)
                QVERIFY(create(QStringLiteral("g.") + name + QString::number(i), i, 3, 3));
        }
        QCOMPARE(copy("g", "m.a.b"), Success);
        QVERIFY(save());
        QCOMPARE(listed(), listedAfresh());
    }

    // Whose value comes before all sections of an ini file.
    void groupsThatGetAValueMove()
    {
        QVERIFY(mount(QStringLiteral("ini"), "k=1\n[b]\nx=1\n[a]\n"));
        QVERIFY(create("m.a", 1));
        QCOMPARE(childNames("m"), QStringLiteral("k a b"));
    }

    // Roots of other backends come last; what lies in memory keeps the order of its creation.
    void leavesOthersWhereTheyAre()
    {
        QVERIFY(mount(QStringLiteral("txt"), "a.x=1\nb=2\na.y=3\n"));
        QVERIFY(mountFile("ini", "m.n", fileOf("n")));
        QCOMPARE(remove("m.a.x"), Success);
        QCOMPARE(childNames("m"), QStringLiteral("b a n"));
        QVERIFY(create("m.z", 1));
        QCOMPARE(childNames("m"), QStringLiteral("b a z n"));
        for (const char* path : {"g.1", "g.0", "g.2"})
            QVERIFY(create(path, 1));
        QCOMPARE(childNames("g"), QStringLiteral("1 0 2"));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, TreeOrderTest)

#include "tree_order_test.moc"
