#include "repository/AttributeRepository.h"
#include "repository/documents/Formats.h"
#include "tests/support/ModelText.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QRandomGenerator>
#include <QTemporaryDir>

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
class TreeOrderTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<AttributeRepository> repository;
    std::unique_ptr<QTemporaryDir> folder;
    QString type;
    QRandomGenerator random;

    QString filePath() const { return folder->filePath(QStringLiteral("m.") + type); }

    bool mountIn(AttributeRepository& mounting) const
    {
        return mounting.getBackendInterface()->createBackend(
            type, QStringLiteral("m"), {filePath(), QString(), AccessMode::ReadWrite}, 2);
    }

    bool mount(const QString& format, const QByteArray& text)
    {
        type = format;
        TestSupport::writeFile(filePath(), text);
        return mountIn(*repository);
    }

    QByteArray saved() const
    {
        // What both sides have changed stays as it is here, or else as it is there.
        for (const auto side : {Interfaces::ConflictSide::Mine, Interfaces::ConflictSide::Theirs}) {
            if (repository->getBackendInterface()->saveBackend(QStringLiteral("m")))
                break;
            repository->getChangesInterface()->resolveConflicts(QStringLiteral("m"), side);
        }
        return TestSupport::contentOf(filePath());
    }

    QStringList listed() const
    {
        QStringList lines;
        list(*repository, QStringLiteral("m"), lines);
        return lines + repository->getTreeInterface()->findPaths({QStringLiteral("m.*")});
    }

    // The same of the saved file, read by a repository of its own.
    QStringList listedAfresh() const
    {
        const auto other = AttributeRepository::create();
        QStringList lines;
        if (!mountIn(*other))
            return {QStringLiteral("not mounted")};
        list(*other, QStringLiteral("m"), lines);
        return lines + other->getTreeInterface()->findPaths({QStringLiteral("m.*")});
    }

    QString childNames(const char* path) const
    {
        return repository->getTreeInterface()->getChildNames(QLatin1String(path)).join(QLatin1Char(' '));
    }

    QString anyNode()
    {
        const QStringList paths = repository->getTreeInterface()->findPaths({QStringLiteral("m.*")});
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
        repository->getBackendInterface()->reloadBackend(QStringLiteral("m"));
    }

    void changeOnce()
    {
        QByteArray text;
        const auto transfer = repository->getTransferInterface();
        switch (random.bounded(10)) {
        case 0:
        case 1:
        case 2:
            repository->getWriterInterface()->createAttribute(anyPath(), random.bounded(9), 3, 3);
            break;
        case 3:
        case 4:
            repository->getTreeInterface()->removeTree(anyNode());
            break;
        case 5:
            random.bounded(2) == 0 ? transfer->copyTree(anyNode(), anyPath())
                                   : transfer->moveTree(anyNode(), anyPath());
            break;
        case 6:
            if (transfer->exportTree(anyNode(), QStringLiteral("json"), text) == Success)
                transfer->importTree(anyPath(), QStringLiteral("json"), text);
            break;
        case 7:
            writeOutside();
            break;
        case 8:
            repository->getHistoryInterface()->redo();
            break;
        default:
            repository->getHistoryInterface()->undo();
        }
    }

private slots:
    void init()
    {
        repository = AttributeRepository::create();
        folder = std::make_unique<QTemporaryDir>();
    }

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
            repository->getHistoryInterface()->recordThisThread();
        QVERIFY(mount(format, samples[format]));
        for (int step = 0; step < 60; ++step) {
            changeOnce();
            const QByteArray file = saved();
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
        QCOMPARE(repository->getTreeInterface()->removeTree(QStringLiteral("m.a.0")), Success);
        const auto transfer = repository->getTransferInterface();
        QCOMPARE(transfer->copyTree(QStringLiteral("m.a"), QStringLiteral("m.b")), Success);
        QCOMPARE(saved(), QByteArray("{\"a\":[11,12,13],\"b\":[11,12,13]}"));
        QByteArray text;
        QCOMPARE(transfer->exportTree(QStringLiteral("m.b"), QStringLiteral("json"), text), Success);
        QCOMPARE(text.simplified().replace(' ', ""), QByteArray("[11,12,13]"));
    }

    // Of many nodes none is asked for by itself.
    void largeCopiesAreSorted()
    {
        QVERIFY(mount(QStringLiteral("xml"), "<a/>"));
        for (const QString& name : {QStringLiteral("e"), QStringLiteral("@last")}) {
            for (int i = 0; i < 600; ++i)
                QVERIFY(repository->getWriterInterface()->createAttribute(
                    QStringLiteral("g.") + name + QString::number(i), i, 3, 3));
        }
        const auto transfer = repository->getTransferInterface();
        QCOMPARE(transfer->copyTree(QStringLiteral("g"), QStringLiteral("m.a.b")), Success);
        saved();
        QCOMPARE(listed(), listedAfresh());
    }

    // Whose value comes to stand before all sections of an ini file.
    void groupsThatGetAValueMove()
    {
        QVERIFY(mount(QStringLiteral("ini"), "k=1\n[b]\nx=1\n[a]\n"));
        QVERIFY(repository->getWriterInterface()->createAttribute(QStringLiteral("m.a"), 1, 3, 3));
        QCOMPARE(childNames("m"), QStringLiteral("k a b"));
    }

    // Roots of other backends come last; what lies in memory keeps the order of its creation.
    void leavesOthersWhereTheyAre()
    {
        QVERIFY(mount(QStringLiteral("txt"), "a.x=1\nb=2\na.y=3\n"));
        QVERIFY(repository->getBackendInterface()->createBackend(
            QStringLiteral("ini"), QStringLiteral("m.n"),
            {folder->filePath(QStringLiteral("n")), QString(), AccessMode::ReadWrite}, 2));
        QCOMPARE(repository->getTreeInterface()->removeTree(QStringLiteral("m.a.x")), Success);
        QCOMPARE(childNames("m"), QStringLiteral("b a n"));
        QVERIFY(repository->getWriterInterface()->createAttribute(QStringLiteral("m.z"), 1, 3, 3));
        QCOMPARE(childNames("m"), QStringLiteral("b a z n"));
        for (const char* path : {"g.1", "g.0", "g.2"})
            QVERIFY(repository->getWriterInterface()->createAttribute(QLatin1String(path), 1, 3, 3));
        QCOMPARE(childNames("g"), QStringLiteral("1 0 2"));
    }
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<QCoreApplication, TreeOrderTest>(argc, argv);
}

#include "tree_order_test.moc"
