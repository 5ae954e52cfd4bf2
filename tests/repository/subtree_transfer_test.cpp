#include "host/Shared/Logging/LogRecord.h"
#include "repository/AttributeRepository.h"
#include "repository/documents/Formats.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QDate>
#include <QFile>
#include <QTemporaryDir>

using namespace FrameworkCore::AppConfig;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;
using Repository::AttributeRepository;

namespace {

QString lastFailure()
{
    return Shared::Logging::LogRecord::instance().getLines().last().text;
}

} // namespace

class SubtreeTransferTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<AttributeRepository> repository;
    std::unique_ptr<QTemporaryDir> folder;

    void mount(const QString& type, const QString& name, const QByteArray& text,
               AccessMode access = AccessMode::ReadWrite)
    {
        const QString file = TestSupport::writeFile(folder->filePath(name), text);
        if (!repository->getBackendInterface()->createBackend(type, name, {file, QString(), access}, 2))
            qFatal("not mounted");
    }

    QByteArray saved(const QString& name)
    {
        if (!repository->getBackendInterface()->saveBackend(name))
            return "not saved";
        return TestSupport::contentOf(folder->filePath(name));
    }

    // Every node below a root, with its value and type, as what it is relative to the root.
    QStringList tree(const QString& root)
    {
        QStringList lines;
        QStringList paths = repository->getTreeInterface()->findPaths({root + QLatin1Char('*')});
        paths.sort();
        for (const QString& path : qAsConst(paths)) {
            QVariant value;
            const bool isAttribute =
                repository->getReaderInterface()->readAttributeValue(path, value, 0) == 0;
            lines.append(path.mid(root.size()) +
                         (isAttribute ? QLatin1Char('=') + value.toString() : QString()) + QLatin1Char(' ') +
                         QLatin1String(value.typeName()));
        }
        return lines;
    }

    void create(const QString& path, const QVariant& value, int access = 3)
    {
        if (!repository->getWriterInterface()->createAttribute(path, value, 2, access))
            qFatal("not created");
    }

    std::shared_ptr<Interfaces::TransferInterface> transfer() { return repository->getTransferInterface(); }

private slots:
    void init()
    {
        repository = AttributeRepository::create();
        folder = std::make_unique<QTemporaryDir>();
    }

    void copiesBetweenFormats_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        for (const std::string& from : Repository::Documents::getDocumentTypes()) {
            for (const std::string& to : Repository::Documents::getDocumentTypes())
                QTest::addRow("%s to %s", from.c_str(), to.c_str())
                    << QString::fromStdString(from) << QString::fromStdString(to);
            QTest::addRow("%s to memory", from.c_str()) << QString::fromStdString(from) << QString();
        }
    }

    // The copy holds the same, in memory and after the destination was saved and loaded; a move also empties
    // the source.
    void copiesBetweenFormats()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        mount(from, QStringLiteral("a"), {});
        create(QStringLiteral("a.r.s.flag"), true);
        create(QStringLiteral("a.r.s.count"), -5);
        create(QStringLiteral("a.r.s.name"), QStringLiteral("x = \"y\"; #z"));
        create(QStringLiteral("a.r.s.deep.er"), 7);
        create(QStringLiteral("a.r.t.big"), 18446744073709551615ULL);
        const QStringList expected = tree(QStringLiteral("a.r.s"));
        if (!to.isEmpty())
            mount(to, QStringLiteral("b"), {});
        QCOMPARE(transfer()->copyTree(QStringLiteral("a.r.s"), QStringLiteral("b.r.copy")), Success);
        QCOMPARE(tree(QStringLiteral("b.r.copy")), expected);
        QCOMPARE(transfer()->moveTree(QStringLiteral("a.r.s"), QStringLiteral("b.r.moved")), Success);
        QCOMPARE(tree(QStringLiteral("b.r.moved")), expected);
        QCOMPARE(tree(QStringLiteral("a.r.s")), QStringList());
        if (to.isEmpty())
            return;
        saved(QStringLiteral("b"));
        const QString file = folder->filePath(QStringLiteral("b"));
        repository = AttributeRepository::create();
        QVERIFY(repository->getBackendInterface()->createBackend(
            to, QStringLiteral("b"), {file, QString(), AccessMode::ReadWrite}, 2));
        QCOMPARE(tree(QStringLiteral("b.r.copy")), expected);
        QCOMPARE(tree(QStringLiteral("b.r.moved")), expected);
    }

    void refusesAsAWhole_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        QTest::addColumn<int>("copied");
        QTest::addColumn<int>("moved");
        QTest::addColumn<QString>("where");
        const auto row = [](const char* name, const char* from, const char* to, int copied, int moved,
                            const char* where) {
            QTest::newRow(name) << QString::fromLatin1(from) << QString::fromLatin1(to) << copied << moved
                                << QString::fromLatin1(where);
        };
        row("nothing there", "j.none", "i.x", NotFound, NotFound, "'j.none'");
        row("exists", "j.a", "i.s.k", AlreadyExists, AlreadyExists, "'i.s.k'");
        row("into itself", "j.a", "j.a.b.c", InvalidPath, InvalidPath, "'j.a.b.c'");
        row("onto itself", "j.a", "j.a", InvalidPath, InvalidPath, "'j.a'");
        row("no path", "j.a", "i..x", InvalidPath, InvalidPath, "'i..x'");
        row("read-only", "j.a", "r.x", NotWritable, NotWritable, "'r.x.first'");
        row("rule", "j.a", "i.ruled", RefusedByValidation, RefusedByValidation, "'i.ruled.last'");
        row("format", "j.a", "list.x", BackendFailure, BackendFailure, "'list.x.first'");
        row("own", "j.a", "internal.x", NotWritable, NotWritable, "'internal.x.first'");
        row("hidden", "w.s", "i.x", NotReadable, NotReadable, "'w.s.k'");
        row("from read-only", "r.s", "i.x", Success, NotWritable, "'r.s'");
        row("a root", "r", "i.x", Success, NotWritable, "'r'");
        row("partly hidden", "mixed", "i.x", Success, NotReadable, "'mixed.hidden'");
    }

    void refusesAsAWhole()
    {
        mount(QStringLiteral("json"), QStringLiteral("j"), "{\"a\": {\"first\": 1, \"last\": 2}}\n");
        mount(QStringLiteral("ini"), QStringLiteral("i"), "[s]\nk=1\n");
        mount(QStringLiteral("ini"), QStringLiteral("r"), "[s]\nk=1\n", AccessMode::ReadOnly);
        mount(QStringLiteral("ini"), QStringLiteral("w"), "[s]\nk=1\n", AccessMode::WriteOnly);
        mount(QStringLiteral("json"), QStringLiteral("list"), "[1]\n");
        create(QStringLiteral("mixed.open"), 1);
        create(QStringLiteral("mixed.hidden"), 2, 2);
        repository->getValidationInterface()->addValidation(QStringLiteral("i.ruled.last"),
                                                            QStringLiteral("range(0,1)"));
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(int, copied);
        QFETCH(int, moved);
        QFETCH(QString, where);
        const QStringList before = tree(QString());
        int heard = 0;
        repository->getNotificationInterface()->registerUpdateCallback(
            QStringLiteral("*"), [&heard](auto&&...) { ++heard; }, 15);
        if (moved != Success) {
            QCOMPARE(int(transfer()->moveTree(from, to).getStatus()), moved);
            QVERIFY2(lastFailure().contains(where), qPrintable(lastFailure()));
            QCOMPARE(heard, 0);
            QCOMPARE(tree(QString()), before);
        }
        QCOMPARE(int(transfer()->copyTree(from, to).getStatus()), copied);
        QCOMPARE(heard > 0, copied == Success);
        if (copied == Success)
            return;
        QCOMPARE(tree(QString()), before);
        QCOMPARE(saved(QStringLiteral("i")), QByteArray("[s]\nk=1\n"));
    }

    void exportsAndImports_data()
    {
        QTest::addColumn<QString>("type");
        for (const std::string& type : Repository::Documents::getDocumentTypes())
            QTest::newRow(type.c_str()) << QString::fromStdString(type);
    }

    // Types, order and a node's own value beside children come through the text of each format.
    void exportsAndImports()
    {
        QFETCH(QString, type);
        create(QStringLiteral("a.r.flag"), true);
        if (type != QLatin1String("xml")) // an element holds either a text or elements
            create(QStringLiteral("a.r.s"), QStringLiteral("own"));
        create(QStringLiteral("a.r.s.count"), -5);
        create(QStringLiteral("a.r.s.when"), QDate(2024, 2, 29));
        create(QStringLiteral("a.r.hidden"), 1, 2);
        QByteArray text;
        QCOMPARE(transfer()->exportTree(QStringLiteral("a"), type, text), Success);
        QVERIFY(!text.contains("hidden"));
        create(QStringLiteral("b.r.flag"), 0);
        QCOMPARE(transfer()->importTree(QStringLiteral("b"), type, text), Success);
        repository->getTreeInterface()->removeTree(QStringLiteral("a.r.hidden"));
        QStringList expected = tree(QStringLiteral("a"));
        QVERIFY(expected.removeOne(QStringLiteral(".r.flag=true bool")));
        QStringList imported = tree(QStringLiteral("b"));
        QVERIFY(imported.removeOne(QStringLiteral(".r.flag=1 qlonglong"))); // its type stays
        QCOMPARE(imported, expected);
    }

    void refusesTextsAsAWhole()
    {
        mount(QStringLiteral("ini"), QStringLiteral("i"), "[s]\nk=1\n");
        const QStringList before = tree(QString());
        const auto refused = [&](const QString& path, const char* type, const QByteArray& text, int status,
                                 const char* reason) {
            const int actual = transfer()->importTree(path, QLatin1String(type), text).getStatus();
            QVERIFY2(lastFailure().contains(QLatin1String(reason)), qPrintable(lastFailure()));
            QCOMPARE(actual, status);
            QCOMPARE(tree(QString()), before);
            QCOMPARE(saved(QStringLiteral("i")), QByteArray("[s]\nk=1\n"));
        };
        refused(QStringLiteral("i"), "json", "{\n  \"a\" 5}", BackendFailure, "line 2, column 7");
        refused(QStringLiteral("i"), "yaml", "", BackendFailure, "no backend type 'yaml'");
        refused(QString(), "json", "5", InvalidPath, "needs a path");
        refused(QString(), "json", "{\"i\": {\"new\": 1}, \"internal\": {\"x\": 1}}", NotWritable,
                "'internal.x'");
        refused(QStringLiteral("i"), "json", "{\"new\": 1, \"s\": {\"k\": \"no number\"}}", WrongType,
                "'i.s.k'");
        QByteArray text("kept");
        QCOMPARE(transfer()->exportTree(QStringLiteral("none"), QStringLiteral("json"), text), NotFound);
        QCOMPARE(text, QByteArray("kept"));
    }

    // A file of lines may come back to a group; the groups of json are in one place.
    void importsInterleavedGroups()
    {
        QByteArray lines;
        for (int i = 0; i < 600; ++i)
            lines += "a.k" + QByteArray::number(i) + " = 1\nb.k" + QByteArray::number(i) + " = 1\n";
        lines += "a.k0.below = 2\n";
        QCOMPARE(transfer()->importTree(QStringLiteral("m"), QStringLiteral("txt"), lines), Success);
        mount(QStringLiteral("json"), QStringLiteral("j"), "{}");
        QCOMPARE(transfer()->importTree(QStringLiteral("j.new"), QStringLiteral("txt"), lines), Success);
        const QStringList expected = tree(QStringLiteral("m"));
        QCOMPARE(tree(QStringLiteral("j.new")), expected);
        const QByteArray text = saved(QStringLiteral("j"));
        repository = AttributeRepository::create();
        mount(QStringLiteral("json"), QStringLiteral("j"), text);
        QCOMPARE(tree(QStringLiteral("j.new")), expected);
    }

    // Arrays stay arrays, in the layout of the file.
    void copiesArrays()
    {
        mount(QStringLiteral("json"), QStringLiteral("j"),
              "{\n  \"a\": [1, [2.50, \"x\"]],\n  \"c\": {\"d\": 1}\n}\n");
        QCOMPARE(transfer()->copyTree(QStringLiteral("j.a"), QStringLiteral("j.b")), Success);
        QCOMPARE(transfer()->copyTree(QStringLiteral("j.a.1"), QStringLiteral("j.c.e")), Success);
        QCOMPARE(transfer()->copyTree(QStringLiteral("j.c.d"), QStringLiteral("j.c.f")), Success);
        QCOMPARE(saved(QStringLiteral("j")),
                 QByteArray("{\n  \"a\": [1, [2.50, \"x\"]],\n  \"c\": {\"d\": "
                            "1, \"e\": [2.5, \"x\"], \"f\": 1},\n  \"b\": [\n    1,\n"
                            "    [\n      2.5,\n      \"x\"\n    ]\n  ]\n}\n"));
    }

    void copiesManyAttributes()
    {
        QByteArray json = "{\"from\": {";
        for (int i = 0; i < 100000; ++i)
            json += "\"k" + QByteArray::number(i) + "\": " + QByteArray::number(i) + ", ";
        mount(QStringLiteral("json"), QStringLiteral("j"), json + "\"last\": true}}");
        QStringList heard;
        const auto hear = [&heard](const QString& path, auto&&...) { heard.append(path); };
        const auto notifications = repository->getNotificationInterface();
        notifications->registerUpdateCallback(QStringLiteral("j.to.k77"), hear, 8);
        QCOMPARE(transfer()->copyTree(QStringLiteral("j.from"), QStringLiteral("j.to")), Success);
        QCOMPARE(heard, QStringList(QStringLiteral("j.to.k77")));
        notifications->registerUpdateCallback(QStringLiteral("j.second.*"), hear, 8);
        QCOMPARE(transfer()->copyTree(QStringLiteral("j.from"), QStringLiteral("j.second")), Success);
        QCOMPARE(heard.size(), 100002);
        QCOMPARE(heard.mid(1),
                 repository->getTreeInterface()->findPaths({QStringLiteral("j.second.*")})); // in tree order
        QByteArray from;
        QByteArray to;
        QCOMPARE(transfer()->exportTree(QStringLiteral("j.from"), QStringLiteral("json"), from), Success);
        QCOMPARE(transfer()->exportTree(QStringLiteral("j.to"), QStringLiteral("json"), to), Success);
        QVERIFY(from == to && from.contains("\"k99999\": 99999"));
    }
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<QCoreApplication, SubtreeTransferTest>(argc, argv);
}

#include "subtree_transfer_test.moc"
