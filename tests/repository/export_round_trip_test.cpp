#include "repository/AttributeRepository.h"
#include "repository/documents/Formats.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QDate>
#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

using namespace FrameworkCore::AppConfig;
using Repository::AttributeRepository;

namespace {

using Content = QMap<QString, QVariant>;

// Everything below a root, relative to it. Groups have the value "{}" of no type of attributes.
Content contentOf(AttributeRepository& repository, const QString& root)
{
    Content content;
    const QStringList paths = repository.getTreeInterface()->findPaths({root + QLatin1Char('*')});
    for (const QString& path : paths) {
        QVariant value;
        if (repository.getReaderInterface()->readAttributeValue(path, value, 0) != Success)
            value = QVariantMap();
        content.insert(path.mid(root.size()), value);
    }
    return content;
}

// Those of all attributes, whatever their names are.
QStringList valuesOf(const Content& content)
{
    QStringList values;
    for (const QVariant& value : content) {
        if (value.userType() != QMetaType::QVariantMap)
            values += QLatin1String(value.typeName()) + QLatin1Char(' ') +
                      value.toStringList().join(QLatin1Char('|'));
    }
    values.sort();
    return values;
}

QStringList orderOf(AttributeRepository& repository, const QString& root)
{
    QStringList paths = repository.getTreeInterface()->findPaths({root + QStringLiteral(".*")});
    for (QString& path : paths)
        path.remove(0, root.size());
    return paths;
}

bool mountXml(AttributeRepository& repository, const QString& name, const QString& file)
{
    return repository.getBackendInterface()->createBackend(QStringLiteral("xml"), name,
                                                           {file, QString(), AccessMode::ReadWrite}, 2);
}

void dropEmptyGroups(Content& content)
{
    for (auto each = content.end(); each != content.begin();) {
        --each;
        const QString prefix = each.key() + QLatin1Char('.');
        const auto below = content.lowerBound(prefix);
        const bool isEmpty = below == content.end() || !below.key().startsWith(prefix);
        if (isEmpty && each.value().userType() == QMetaType::QVariantMap)
            each = content.erase(each);
    }
}

QString firstDifference(const Content& actual, const Content& expected)
{
    const auto show = [](const Content& content, const QString& path) {
        return content.contains(path) ? QString::fromLatin1(content[path].typeName()) + QLatin1Char(' ') +
                                            content[path].toString().left(80)
                                      : QStringLiteral("nothing");
    };
    const QStringList paths = actual.keys() + expected.keys();
    for (const QString& path : paths) {
        if (!actual.contains(path) || !expected.contains(path) || actual[path] != expected[path] ||
            actual[path].userType() != expected[path].userType())
            return QStringLiteral("%1: %2 instead of %3").arg(path, show(actual, path), show(expected, path));
    }
    return {};
}

} // namespace

// What is exported and imported into an empty place is the same there, for files of every format.
class ExportRoundTripTest : public QObject
{
    Q_OBJECT

    QTemporaryDir folder;

private slots:
    // As a person would write it, arrays and all, so that other programs read what is meant.
    void writesPlainJson()
    {
        const auto repository = AttributeRepository::create({false});
        const auto create = [&](const char* path, const QVariant& value) {
            QVERIFY(repository->getWriterInterface()->createAttribute(QLatin1String(path), value, 2, 3));
        };
        create("r.a.0", 1);
        create("r.a.1", QStringLiteral("\"x\"\n"));
        create("r.texts.0", QStringLiteral("alone they would be one list"));
        create("r.list", QStringList{QStringLiteral("x"), QStringLiteral("y")});
        create("r.long", QStringList{QString(40, QLatin1Char('z')), QString(40, QLatin1Char('z'))});
        create("r.own", 2.0);
        create("r.own.gr\xF6\xDF"
               "e%2E",
               QVariant());
        create("r.when", QDate(2024, 2, 29));
        QByteArray text;
        QCOMPARE(
            repository->getTransferInterface()->exportTree(QStringLiteral("r"), QStringLiteral("json"), text),
            Success);
        QVERIFY(QJsonDocument::fromJson(text).isObject());
        const QByteArray z(40, 'z');
        QCOMPARE(
            text,
            QByteArray("{\n    \"a\": [\n        1,\n        \"\\\"x\\\"\\n\"\n    ],\n    \"texts\": {\n"
                       "        \"0\": \"alone they would be one list\"\n    },\n"
                       "    \"list\": [\"x\", \"y\"],\n    \"long\": [\n        \"") +
                z + "\",\n        \"" + z +
                "\"\n    ],\n    \"own\": {\n        \"#value\": 2.0,\n        \"gr\xC3\xB6\xC3\x9F"
                "e.\": null\n    },\n"
                "    \"when\": \"2024-02-29\",\n    \"$types\": {\n        \"when\": \"date\"\n    }\n}\n");
    }

    // An element may stand before what it needs: the declaration of its prefix, or elements beside its text.
    void takesXmlIntoXml_data()
    {
        QTest::addColumn<QString>("fileName");
        TestSupport::writeFile(folder.filePath(QStringLiteral("prefix.xml")),
                               "<a:r b:k='1' xmlns:b='v' xmlns:a='u'><c:i xmlns:c='w'><c:j/></c:i></a:r>\n");
        TestSupport::writeFile(
            folder.filePath(QStringLiteral("mixed.xml")),
            "<r>a<i/>b<k>1</k><i x='2'> c <b/><!-- -->&#32;</i><i/>\n<?p?>5<m><l/>d</m></r>\n");
        for (const QString& root : {folder.path(), TestSupport::corporaPath(QStringLiteral("xml"))}) {
            if (root.isEmpty())
                continue;
            QDirIterator files(root, QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext())
                QTest::newRow(files.next().toUtf8()) << files.filePath();
        }
    }

    void takesXmlIntoXml()
    {
        QFETCH(QString, fileName);
        const auto repository = AttributeRepository::create({false});
        if (!mountXml(*repository, QStringLiteral("from"), fileName))
            return; // one of the files that are not of their format
        const Content expected = contentOf(*repository, QStringLiteral("from"));
        const QStringList expectedOrder = orderOf(*repository, QStringLiteral("from"));
        const auto transfer = repository->getTransferInterface();
        for (const char* way : {"xml", "json", "copy"}) {
            const QString to = QLatin1String("to-") + QLatin1String(way);
            const QString file = folder.filePath(to);
            QVERIFY(mountXml(*repository, to, file));
            if (qstrcmp(way, "copy") == 0) {
                const QString root = expectedOrder.value(0);
                QCOMPARE(transfer->copyTree(QStringLiteral("from") + root, to + root), Success);
            } else {
                QByteArray text;
                QCOMPARE(transfer->exportTree(QStringLiteral("from"), QLatin1String(way), text), Success);
                QCOMPARE(transfer->importTree(to, QLatin1String(way), text), Success);
            }
            QVERIFY(repository->getBackendInterface()->saveBackend(to));
            const auto later = AttributeRepository::create({false});
            QVERIFY(mountXml(*later, to, file));
            for (AttributeRepository* each : {repository.get(), later.get()}) {
                const QString difference = firstDifference(contentOf(*each, to), expected);
                QVERIFY2(difference.isEmpty(), qPrintable(difference));
                QCOMPARE(orderOf(*each, to), expectedOrder);
            }
            QFile::remove(file);
        }
    }

    // A file of xml needs one element around all, and the prefixes that others declared.
    void exportsXmlSubtrees()
    {
        const auto repository = AttributeRepository::create({false});
        QVERIFY(mountXml(*repository, QStringLiteral("x"),
                         TestSupport::writeFile(folder.filePath(QStringLiteral("nested.xml")),
                                                "<r xmlns:a='u' xmlns:b='v' xmlns:ab='w'><k/>\n"
                                                "<k id='1'>t<a:i/><j/></k><a:l b:m='2'><n/></a:l></r>\n")));
        const auto exported = [&](const char* path) {
            QByteArray text;
            repository->getTransferInterface()->exportTree(QLatin1String(path), QStringLiteral("xml"), text);
            return text.mid(text.indexOf('\n') + 1);
        };
        QCOMPARE(exported("x.r.k[2]"), QByteArray("<k id=\"1\" xmlns:a=\"u\">t<a:i/><j/></k>\n"));
        QCOMPARE(exported("x.r.k[2].@id"), QByteArray("<id>1</id>\n"));
        QCOMPARE(exported("x.r.a:l"),
                 QByteArray("<a:l b:m=\"2\" xmlns:a=\"u\" xmlns:b=\"v\">\n  <n/>\n</a:l>\n"));
    }

    void comesThrough_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("fileName");
        const auto sample = [this](const char* type, QByteArray content) {
            content.replace('\'', '"');
            const QString file = TestSupport::writeFile(
                folder.filePath(QLatin1String("sample.") + QLatin1String(type)), content);
            QTest::newRow(type) << QString::fromLatin1(type) << file;
        };
        sample("json",
               "{'a': {'#value': 1, 'b': [1, [2], {'c': null}], '@id': 1.5, '%40id': -0.0}, 'k': 1, 'k': "
               "18446744073709551615, '$names': '', 'x.y': ['t'], '': {}, 'e': []}");
        sample("ini", "top = 1\n[a.b]\nk.l = true\nk = text\n[a.b]\nk = 2\n[#c]\n@d = 007\n[empty]\n");
        sample("xml", "<r a='1' x:b='2' xmlns:x='u'>t<i/><i>5</i>u<i c='#'/><j.k>%</j.k></r>");
        sample("txt", "a.b = 1\na.b = 2\na = x\n# type: date\nd = 2024-02-29\n%40.%2E = \n");
        for (const std::string& each : Repository::Documents::getDocumentTypes()) {
            const QString type = QString::fromStdString(each);
            const QString corpus = TestSupport::corporaPath(type);
            if (corpus.isEmpty())
                continue;
            QDirIterator files(corpus, QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                const QString file = files.next();
                QTest::newRow(file.toUtf8()) << type << file;
            }
        }
    }

    void comesThrough()
    {
        QFETCH(QString, type);
        QFETCH(QString, fileName);
        const auto repository = AttributeRepository::create({false});
        const auto mount = [&](const QString& backendType, const QString& name, const QString& file,
                               AccessMode access) {
            return repository->getBackendInterface()->createBackend(backendType, name,
                                                                    {file, QString(), access}, 2);
        };
        if (!mount(type, QStringLiteral("from"), fileName, AccessMode::ReadOnly))
            return; // one of the files that are not of their format
        Content expected = contentOf(*repository, QStringLiteral("from"));

        // What only xml holds comes into memory, which holds everything but groups without entries.
        const QString to = QStringLiteral("to");
        if (type != QLatin1String("xml"))
            QVERIFY(mount(QStringLiteral("json"), to, folder.filePath(to), AccessMode::ReadWrite));
        else
            dropEmptyGroups(expected);
        const auto transfer = repository->getTransferInterface();
        QByteArray text;
        QCOMPARE(transfer->exportTree(QStringLiteral("from"), QStringLiteral("json"), text), Success);
        QCOMPARE(transfer->importTree(to, QStringLiteral("json"), text), Success);
        const QString difference = firstDifference(contentOf(*repository, to), expected);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));

        const QString txt = QStringLiteral("txt");
        QVERIFY(mount(txt, txt, folder.filePath(txt), AccessMode::ReadWrite));
        QByteArray lines;
        QCOMPARE(transfer->exportTree(QStringLiteral("from"), txt, lines), Success);
        QCOMPARE(transfer->importTree(txt, txt, lines), Success);
        QCOMPARE(valuesOf(contentOf(*repository, txt)), valuesOf(expected)); // some names are encoded there
    }
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<QCoreApplication, ExportRoundTripTest>(argc, argv);
}

#include "export_round_trip_test.moc"
