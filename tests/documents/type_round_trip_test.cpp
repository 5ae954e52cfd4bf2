#include "repository/documents/common/Values.h"
#include "tests/documents/EntryLines.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTemporaryFile>

#include <limits>

using namespace EntryLines;
using Repository::Documents::getDocumentTypes;
using Repository::Documents::isSame;
using Repository::Documents::makeDocument;
using Repository::Documents::Outcome;

namespace {

struct Sample
{
    const char* name;
    Value value;
};

std::string allBytes()
{
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    return bytes;
}

// What is on the border of its type, or looks like one of another.
std::vector<Sample> samples()
{
    using Double = std::numeric_limits<double>;
    using Integer = std::numeric_limits<std::int64_t>;
    const auto unsignedNumber = [](std::uint64_t number) { return Value{Type::Unsigned, number}; };
    const auto typed = [](Type type, std::string text) { return Value{type, std::move(text)}; };
    return {{"null", null()},
            {"true", boolean(true)},
            {"false", boolean(false)},
            {"smallest", integer(Integer::min())},
            {"largest", integer(Integer::max())},
            {"small unsigned", unsignedNumber(5)},
            {"large unsigned", unsignedNumber(UINT64_MAX)},
            {"half", number(0.5)},
            {"whole", number(5)},
            {"minus zero", number(-0.0)},
            {"denormal", number(5e-324)},
            {"huge", number(Double::max())},
            {"infinity", number(-Double::infinity())},
            {"no number", number(Double::quiet_NaN())},
            {"empty", text("")},
            {"like an integer", text("5")},
            {"like a bool", text("true")},
            {"like null", text("null")},
            {"like a double", text("1e5")},
            {"blanks", text("  x\t ")},
            {"lines", text("a\nb\r\n\n c\n")},
            {"comments", text("a ; b # c // d <!-- e -->")},
            {"quotes", text("\"it's\"")},
            {"one quote", text("\"")},
            {"backslashes", text("C:\\new\\x41\\")},
            {"markup", text("<a b='c'>&amp;]]></a>")},
            {"section", text("[s]=:")},
            {"control characters", text(std::string("a\0b\x01\x1F\x7F", 6))},
            {"letters", text("\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80 \xEF\xBF\xBE")},
            {"long", text(std::string(100000, 'x') + " ")},
            {"no texts", list({})},
            {"one empty text", list({""})},
            {"texts", list({"a;b", "", "c\\;d", " e ", "5", "\"", "f\ng"})},
            {"no bytes", typed(Type::ByteArray, "")},
            {"bytes of a text", typed(Type::ByteArray, "abc")},
            {"all bytes", typed(Type::ByteArray, allBytes())},
            {"date", typed(Type::Date, "2024-02-29")},
            {"time", typed(Type::Time, "23:59:59.999")},
            {"local", typed(Type::DateTime, "2024-12-31T23:59:59.001")},
            {"utc", typed(Type::DateTime, "1970-01-01T00:00:00Z")},
            {"offset", typed(Type::DateTime, "2024-12-31T23:59:59.500+05:30")}};
}

Value valueAt(const Document& document, const std::string& path)
{
    Value found = text("no such entry");
    document.visit([&](const Entry& entry) {
        if (entry.path == path)
            found = entry.value;
    });
    return found;
}

const std::string pathOf(std::size_t sample)
{
    return "root.v" + std::to_string(sample);
}

// A document of the format with all samples.
std::unique_ptr<Document> fullDocument(const std::string& format)
{
    auto document = makeDocument(format);
    document->parse({});
    const auto all = samples();
    for (std::size_t i = 0; i < all.size(); ++i)
        document->insert(pathOf(i), all[i].value);
    return document;
}

} // namespace

// Values of every type in files of every format.
class TypeRoundTripTest : public QObject
{
    Q_OBJECT

    static void addFormats()
    {
        QTest::addColumn<QString>("format");
        for (const std::string& format : getDocumentTypes())
            QTest::newRow(format.c_str()) << QString::fromStdString(format);
    }

private slots:
    void keepsTypeAndValue_data() { addFormats(); }

    void keepsTypeAndValue()
    {
        QFETCH(QString, format);
        const auto document = fullDocument(format.toStdString());
        const auto reloaded = makeDocument(format.toStdString());
        const Outcome outcome = reloaded->parse(document->getBytes());
        QVERIFY2(outcome.ok(), outcome.error.c_str());
        const auto all = samples();
        for (std::size_t i = 0; i < all.size(); ++i) {
            const Value kept = valueAt(*document, pathOf(i));
            const Value loaded = valueAt(*reloaded, pathOf(i));
            QVERIFY2(isSame(kept, all[i].value) && isSame(loaded, all[i].value),
                     qPrintable(QStringLiteral("%1: %2, %3, %4")
                                    .arg(QLatin1String(all[i].name), toLine(all[i].value).left(200),
                                         toLine(kept).left(200), toLine(loaded).left(200))));
        }
    }

    // Type tags stay with their entries when others go, and go with them.
    void removesTypeTags_data() { addFormats(); }

    void removesTypeTags()
    {
        QFETCH(QString, format);
        const auto document = fullDocument(format.toStdString());
        const auto empty = makeDocument(format.toStdString());
        empty->parse({});
        empty->insert("root.kept", integer(1));
        const std::string without = empty->getBytes();
        document->insert("root.kept", integer(1));
        const auto all = samples();
        for (std::size_t i = 0; i < all.size(); i += 2)
            QVERIFY(document->remove(pathOf(i)).ok());
        for (std::size_t i = 1; i < all.size(); i += 2)
            QVERIFY2(isSame(valueAt(*document, pathOf(i)), all[i].value), all[i].name);
        for (std::size_t i = 1; i < all.size(); i += 2)
            QVERIFY(document->remove(pathOf(i)).ok());
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), QByteArray::fromStdString(without));
    }

    // An edit of a tagged entry stays one of its type.
    void setsTaggedValues_data() { addFormats(); }

    void setsTaggedValues()
    {
        QFETCH(QString, format);
        const auto document = makeDocument(format.toStdString());
        document->parse({});
        const auto all = samples();
        for (const Sample& sample : all) {
            for (const Sample& other : all) {
                if (other.value.type != sample.value.type)
                    continue;
                const Value date{Type::Date, std::string("2020-01-01")};
                QVERIFY(document->insert("root.x", sample.value).ok());
                QVERIFY(document->insert("root.y", date).ok());
                // What needs a tag that the entry does not have is refused; nothing else is.
                const Outcome outcome = document->set("root.x", other.value);
                const Value& expected = outcome.ok() ? other.value : sample.value;
                const auto reloaded = makeDocument(format.toStdString());
                QVERIFY(reloaded->parse(document->getBytes()).ok());
                QVERIFY2(isSame(valueAt(*document, "root.x"), expected) &&
                             isSame(valueAt(*reloaded, "root.x"), expected),
                         qPrintable(QStringLiteral("%1 to %2: %3")
                                        .arg(QLatin1String(sample.name), QLatin1String(other.name),
                                             toLine(expected).left(200))));
                QVERIFY(valueAt(*reloaded, "root.y") == date);
                if (sample.value.type != Type::String && sample.value.type != Type::Unsigned &&
                    sample.value.type != Type::Double)
                    QVERIFY2(outcome.ok(), sample.name);
                QVERIFY(document->remove("root.x").ok() && document->remove("root.y").ok());
            }
        }
    }

    void disturbsNoOtherReader_data()
    {
        const auto row = TestSupport::columns<QString, QString>("format", "script");
        row("json", "json",
            "import json\n"
            "v = json.load(open(file, encoding='utf-8'))['root']\n"
            "print(v['v7'], v['v15'], v['v36'])\n");
        row("toml", "toml",
            "import tomllib\n"
            "v = tomllib.load(open(file, 'rb'))['root']\n"
            "print(v['v7'], v['v15'], v['v36'])\n");
        row("yaml", "yaml",
            "import yaml\n"
            "v = yaml.safe_load(open(file, 'rb'))['root']\n"
            "print(v['v7'], v['v15'], v['v36'])\n");
        row("ini", "ini",
            "import configparser\n"
            "c = configparser.RawConfigParser()\n"
            "c.read(file, encoding='utf-8')\n"
            "v = c['root']\n"
            "print(v['v7'], v['v15'], v['v36'])\n");
    }

    void disturbsNoOtherReader()
    {
        QFETCH(QString, format);
        QFETCH(QString, script);
        const QTemporaryDir folder;
        const QString file = folder.filePath(QStringLiteral("file"));
        QFile target(file);
        QVERIFY(target.open(QIODevice::WriteOnly));
        const auto document = fullDocument(format.toStdString());
        QVERIFY(target.write(QByteArray::fromStdString(document->getBytes())) > 0);
        target.close();
        QProcess python;
        python.start(
            QStringLiteral("python3"),
            {QStringLiteral("-c"), QStringLiteral("import sys; file = sys.argv[1]\n") + script, file});
        QVERIFY(python.waitForFinished());
        QCOMPARE(QString::fromUtf8(python.readAllStandardError()), QString());
        QCOMPARE(QString::fromUtf8(python.readAllStandardOutput()), QStringLiteral("0.5 5 2024-02-29\n"));
    }

    // Texts with quotes have a meaning of their own there, with tags or without.
    void disturbsNoSettings()
    {
        const auto document = makeDocument("ini");
        document->parse({});
        for (const Sample& sample : samples()) {
            if (sample.value.type != Type::String && sample.value.type != Type::StringList)
                document->insert(std::string("root.") + sample.name, sample.value);
        }
        QTemporaryFile file;
        QVERIFY(file.open() && file.write(QByteArray::fromStdString(document->getBytes())) > 0 &&
                file.flush());
        const QSettings settings(file.fileName(), QSettings::IniFormat);
        QCOMPARE(settings.value(QStringLiteral("root/date")).toString(), QStringLiteral("2024-02-29"));
        QCOMPARE(settings.value(QStringLiteral("root/half")).toDouble(), 0.5);
        QCOMPARE(settings.value(QStringLiteral("root/offset")).toString(),
                 QStringLiteral("2024-12-31T23:59:59.500+05:30"));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, TypeRoundTripTest)

#include "repository/documents/Formats.h"
#include "type_round_trip_test.moc"
