#include "host/FrameworkCore/Values/ValueText.h"
#include "repository/documents/Formats.h"
#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>

#include <map>
#include <regex>
#include <set>

using namespace FrameworkCore::AppConfig;
using FrameworkCore::Values::Type;
using Repository::Documents::Entry;

namespace {

constexpr int mostFiles = 300; // of each kind

// What there is to compare of a file, by path: values with their types, arrays, and groups without entries.
using Content = std::map<std::string, std::string>;

// Whether it is a merge of YAML, or below one: what that brings in is there without it.
bool isOfMerge(const std::string& path)
{
    static const std::regex merge("(^|.*\\.)<<(\\[\\d+\\])?(\\..*|$)");
    return std::regex_match(path, merge);
}

// In the dialect that the name of the file and the text tell.
std::optional<Content> contentOf(const QString& type, const QByteArray& bytes, const QString& fileName = {})
{
    const auto& format = *Repository::Documents::findFormat(Repository::Documents::recogniseDialect(
        type.toStdString(), fileName.toStdString(), bytes.left(16384).toStdString()));
    const auto document = format.makeDocument();
    if (!document->parse(bytes.toStdString()).ok())
        return {};
    Content content;
    std::set<std::string> groups;
    format.visitImport(*document, [&](const Entry& entry) {
        if (isOfMerge(entry.path))
            return;
        if (entry.value.type == Type::Group)
            content[entry.path] = entry.isArray == true ? "array" : "empty";
        else
            content[entry.path] =
                std::string(FrameworkCore::Values::rowOf(entry.value.type).name) + ' ' + toText(entry.value);
        for (std::string path = entry.path; path.find('.') != std::string::npos;) {
            path.resize(path.rfind('.'));
            groups.insert(path);
        }
        if (!entry.path.empty())
            groups.insert(std::string());
    });
    for (const std::string& group : groups) {
        const auto found = content.find(group);
        if (found != content.end() && found->second == "empty")
            content.erase(found);
    }
    return content;
}

// What all formats tell.
Content withoutGroups(Content content)
{
    for (auto each = content.begin(); each != content.end();)
        each = each->second == "empty" || each->second == "array" ? content.erase(each) : std::next(each);
    return content;
}

QString firstDifference(const Content& actual, const Content& expected)
{
    const auto find = [](const Content& content, const std::string& path) {
        const auto found = content.find(path);
        return found == content.end() ? std::string("nothing") : found->second;
    };
    for (const Content* const content : {&actual, &expected}) {
        for (const auto& [path, value] : *content) {
            if (find(actual, path) != find(expected, path))
                return QString::fromStdString(path + ": " + find(actual, path).substr(0, 80) +
                                              " instead of " + find(expected, path).substr(0, 80));
        }
    }
    return {};
}

// Of the corpora, or where they are not, the example.
QStringList realFiles(const QString& type)
{
    const QString corpus = TestSupport::corporaPath(type);
    QDirIterator walk = corpus.isEmpty()
                            ? QDirIterator(TestSupport::projectPath(QStringLiteral("docs/examples")),
                                           {QStringLiteral("*.") + type}, QDir::Files)
                            : QDirIterator(corpus, QDir::Files, QDirIterator::Subdirectories);
    QStringList files;
    while (files.size() < mostFiles && walk.hasNext())
        files.append(walk.next());
    return files;
}

} // namespace

// A file that is written in another format, and that one in the first format again, is what it was.
class ConversionTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    enum class End { Unreadable, Refused, Same };

    // The text of a mounted file in another format; nothing, with the outcome, when it is refused.
    std::optional<QByteArray> converted(const QString& from, const QString& fileName, const QString& to,
                                        Outcome& outcome)
    {
        outcome = mountFile(from, "file1", fileName, AccessMode::ReadOnly);
        if (!outcome.ok())
            return {};
        QByteArray text;
        outcome = transfer()->exportTree(QStringLiteral("file1"), to, text);
        const bool isExported = outcome.ok();
        const Outcome closed = close("file1");
        if (isExported)
            outcome = closed;
        return outcome.ok() ? std::optional(text) : std::nullopt;
    }

    QString write(const QString& name, const QByteArray& text) const
    {
        return TestSupport::writeFile(written.filePath(name), text);
    }

    // Leaves the converted file for other readers.
    End convert(const QString& from, const QString& fileName, const QString& to, QString& reason)
    {
        QFile file(fileName);
        const bool isOpen = file.open(QIODevice::ReadOnly);
        const auto expected = isOpen ? contentOf(from, file.readAll(), fileName) : std::nullopt;
        if (!expected)
            return End::Unreadable;
        const QString number = QString::number(++files);
        Outcome outcome;
        auto there = converted(from, fileName, to, outcome);
        if (there) {
            const QString way = write(number + QLatin1Char('.') + to, *there);
            if (there->contains("file1"))
                reason = QStringLiteral("an internal name is in it");
            reason += firstDifference(withoutGroups(contentOf(to, *there).value_or(Content())),
                                      withoutGroups(*expected));
            const auto back = converted(to, way, from, outcome);
            if (back)
                reason += firstDifference(contentOf(from, *back).value_or(Content()), *expected);
            if (back || !reason.isEmpty())
                return End::Same;
        }
        const bool hasReason = !outcome.get().reason.isEmpty() && !outcome.get().subject.isEmpty();
        reason = hasReason ? QString() : QStringLiteral("refused without reason or place");
        return End::Refused;
    }

    QTemporaryDir written;
    int files = 0;

private slots:
    void comesBack_data()
    {
        const auto row = TestSupport::columns<QString, QByteArray>("type", "text");
        const auto json = [&](const QByteArray& text) { row(text, QStringLiteral("json"), text); };
        json("{\"hosts\":[\"a\",\"b;c\"],\"e\":[],\"o\":{},\"none\":null,\"one\":[\"x\"]}");
        json("{\"m\":[1,\"1\",[2.50,[]],{\"a\":[{}]},true],\"t\":[{\"a\":1},{\"a\":[[\"x\"],[3]]}]}");
        json("{\"first\":1,\"object\":{\"0\":1,\"1\":{\"x\":1}},\"array\":[1,{\"x\":1}],\"texts\":{\"0\":"
             "\"a\"}}");
        json("[1,{\"a\":2}]");
        json("[\"a\",\"b\"]");
        json("{\"0\":1,\"1\":2}");
        json("5");
        json("{}");
        json("{\"a b\":1,\"\":2,\"@id\":3,\"#x\":4,\"_x0041_\":5,\"x[2]\":6,\"%41.b\":7,\"$names\":\"no\"}");
        json("{\"k\":1,\"k\":{\"a\":1},\"n\":18446744073709551615,\"d\":1.0,\"s\":\"5\",\"b\":\"true\"}");
        json("{\"@a\":[\"x\"],\"$names\":\"encoded\"}");
        row("sections", "ini", "[a]\nk=1\nk=2\n[a]\nk=3\n[b.0]\nx=1\n[b.1]\nx=2\n[empty]\n");
        row("names that are not UTF-8", "ini", "k\xDA=1\n[s\xFF.t]\nk=\xFF\n");
        row("mixed", "xml", "<r a='1' x:b='2' xmlns:x='u'>t<i/><i>5</i>u<i c='#'/><j.k>%</j.k></r>");
        row("lines", "txt", "a.b = 1\na.b = 2\na = x\n# @type date\nd = 2024-02-29\n%40.%2E =\nl.0 = 1\n");
    }

    void comesBack()
    {
        QFETCH(QString, type);
        QFETCH(QByteArray, text);
        const QString fileName = TestSupport::writeFile(fileOf("in"), text);
        for (const std::string& to : Repository::Documents::getDocumentTypes()) {
            QString reason;
            const End end = convert(type, fileName, QString::fromStdString(to), reason);
            QVERIFY2(reason.isEmpty(), qPrintable(QString::fromStdString(to) + QLatin1String(": ") + reason));
            // An element of xml has no place for both a value and elements.
            const bool isRefused = to == "xml" && type == QLatin1String("txt");
            QVERIFY(end == (isRefused ? End::Refused : End::Same));
        }
    }

    // Half of a pair of surrogates, for which most formats have no form.
    void keepsHalfACharacterOrRefusesIt()
    {
        const QString fileName =
            TestSupport::writeFile(fileOf("in"), "{\"a\":{\"b\":\"x\\ud800\",\"\\udc00\":1}}");
        for (const std::string& to : Repository::Documents::getDocumentTypes()) {
            QString reason;
            convert(QStringLiteral("json"), fileName, QString::fromStdString(to), reason);
            QVERIFY2(reason.isEmpty(), qPrintable(QString::fromStdString(to) + QLatin1String(": ") + reason));
        }
    }

    void comesBackFromRealFiles_data()
    {
        const auto row = TestSupport::columns<QString, QStringList, QString>("from", "names", "to");
        for (const std::string& from : Repository::Documents::getDocumentTypes()) {
            const QStringList names = realFiles(QString::fromStdString(from));
            for (const std::string& to : Repository::Documents::getDocumentTypes()) {
                if (from != to && !names.isEmpty())
                    row((from + " to " + to).c_str(), QString::fromStdString(from), names,
                        QString::fromStdString(to));
            }
        }
    }

    void comesBackFromRealFiles()
    {
        QFETCH(QString, from);
        QFETCH(QStringList, names);
        QFETCH(QString, to);
        int counts[3] = {};
        QStringList faults;
        for (const QString& fileName : names) {
            QString reason;
            ++counts[int(convert(from, fileName, to, reason))];
            if (!reason.isEmpty())
                faults.append(fileName + QLatin1String(": ") + reason);
        }
        qInfo("%s: %d came back the same, %d were refused, %d are unreadable, %d differ",
              QTest::currentDataTag(), counts[int(End::Same)] - faults.size(), counts[int(End::Refused)],
              counts[int(End::Unreadable)], faults.size());
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
    }

    // The parsers of python read what was written, and find no key twice.
    void isReadByOthers()
    {
        const char* const script =
            "import glob, json, sys, xml.dom.minidom\n"
            "def unique(pairs):\n"
            "    keys = [key for key, _ in pairs]\n"
            "    if len(set(keys)) < len(keys): raise ValueError('a key is there twice')\n"
            "    return dict(pairs)\n"
            "for name in glob.glob(sys.argv[1] + '/*'):\n"
            "    try:\n"
            "        with open(name, 'rb') as file:\n"
            "            if name.endswith('.json'):\n"
            "                json.loads(file.read().decode(), object_pairs_hook=unique)\n"
            "            if name.endswith('.xml'): xml.dom.minidom.parse(file)\n"
            "    except Exception as error: print(name, error)\n";
        QVERIFY(files > 0);
        QProcess python;
        python.start(QStringLiteral("python3"),
                     {QStringLiteral("-c"), QLatin1String(script), written.path()});
        QVERIFY2(python.waitForFinished(300000), qPrintable(python.errorString()));
        QCOMPARE(QString::fromUtf8(python.readAll()) + QString::fromUtf8(python.readAllStandardError()),
                 QString());
    }
};

VANTRY_TEST_MAIN(QCoreApplication, ConversionTest)

#include "conversion_test.moc"
