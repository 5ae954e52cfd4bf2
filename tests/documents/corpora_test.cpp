#include "tests/documents/EntryLines.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRandomGenerator>

#include <algorithm>

using namespace EntryLines;
using Repository::Documents::makeDocument;
using Repository::Documents::Outcome;

namespace {

// Templates of other programs, cut and damaged files, and encodings that are not read; all others must load.
const char* const notOfTheirFormat[] = {
    "json/KDAB_GammaRay__qt_attribution~2.json",
    "json/anjuta-common__metadata.json",
    "json/ember-cli-7.3.0__ember-cli-update.json",
    "json/nlohmann_json_test_data__fail5.json",
    "json/qtcreator-data__wizard.json",
    "json/scite__AllStyles.json",
    "json/vlc-data__playlist.json",
    "json/vlc-data__status.json",
    "variants/json-badutf8-09__bower-1.8.14__eslintrc~4",
    "variants/json-badutf8-20__bower-1.8.14__eslintrc",
    "variants/json-nul-08__cinnamon-common__settings-schema~9.json",
    "variants/json-nul-19__qtcreator-data__wizard~3.json",
    "variants/json-trunc-07__world-countries-5.1.0__mlt.topo.json",
    "variants/json-trunc-18__iso-codes__schema-639-3.json",
    "variants/json-utf16le-10__spdx-license-list-6.12.0__Widget-Workshop.json",
    "variants/json-utf16le-21__bower-1.8.14__eslintrc~6",
    "variants/ini-utf16le-10__KDE_syntax-highlighting__test.properties",
    "variants/ini-utf16le-21__pioneers-data__theme~5.cfg",
    "variants/txt-nul-08__qttools5-examples__input.txt",
    "variants/txt-nul-19__smplayer-themes__README~3.txt",
    "xml/ElektraInitiative_libelektra__keyset.xml",
    "xml/GNOME_glib__fail-19.xbel",
    "xml/GNOME_glib__fail-34.xbel",
    "xml/GNOME_glib__fail-35.xbel",
    "xml/GNOME_glib__fail-37.xbel",
    "xml/apache2__deflate.conf",
    "xml/apache2__ldap.conf",
    "xml/geany-common__ui_toolbar.xml",
    "xml/google-cloud-cli__intertat.ru.xml",
    "xml/krusader__advanced-functions.docbook",
    "xml/krusader__remote-connections~3.docbook",
    "xml/vlc-data__vlm.xml",
    "variants/xml-badutf8-09__KDE_kconfig__test_enums_and_properties.kcfg",
    "variants/xml-nul-08__docbook-xsl__chunk.xsl",
    "variants/xml-nul-19__gedit-common__gedit-plugin-guide.page",
    "variants/xml-trunc-07__kdevelop-data__qtlogo.svg",
    "variants/xml-trunc-18__GNOME_glib__fail-19.xbel",
    "toml/gnome-builder__Cargo-gtk4.toml",
    "toml/golang-github-naoina-toml-dev__unmarshal-arraytable-conflict-2.toml",
    "toml/golang-github-naoina-toml-dev__unmarshal-table-conflict-1.toml",
    "toml/golang-github-naoina-toml-dev__unmarshal-table-conflict-2.toml",
    "toml/librust-toml-edit-dev__duplicate-key-dotted-into-std.toml",
    "toml/librust-toml-edit-dev__duplicate-key-std-into-dotted.toml",
    "toml/librust-toml-edit-dev__integer-invalid-binary-char.toml",
    "toml/librust-toml-edit-dev__integer-invalid-hex-char.toml",
    "toml/librust-toml-edit-dev__rrbrace.toml",
    "toml/librust-toml-edit-dev__string-no-quotes-constant-like.toml",
    "toml/librust-toml-edit-dev__string-no-quotes-number-like.toml",
    "toml/made__dates.toml",
    "toml/python-dcos__parse_error.toml",
    "toml/tauri-0.15.0__Cargo.toml",
    "variants/toml-badutf8-08__librust-ahash-dev__Cargo.toml",
    "variants/toml-cr-10__librust-blocking-dev__Cargo.toml",
    "variants/toml-nul-07__uniswap-v4-core-1.0.2__foundry~4.toml",
    "variants/toml-trunc-06__librust-iptables-dev__Cargo.toml",
    "yaml/bourbon-7.3.0__cucumber.yml",
    "yaml/cwltool__sfdsl_res_proc.yml",
    "yaml/cwltool__sfdsl_res_src.yml",
    "yaml/libyaml__clusterfuzz-testcase-minimized-5607885063061504.yml",
    "yaml/openapi-examples-validator-7.1.0__simple-api-with-examples-invalid-indentation.yml",
    "yaml/patroni__config.yml.in",
    "yaml/puppet-module-nova__provider.yaml.erb",
    "yaml/puppet-module-pcfens-filebeat__prospector.yml.erb",
    "yaml/python3-flasgger__username_specs_utf16.yml",
    "yaml/python3-flasgger__username_specs_utf32.yml",
    "variants/yaml-badutf8-08__ansible__config~4.yaml",
    "variants/yaml-nul-07__r-cran-bookdown___output.yml"};

struct Counts
{
    int loaded = 0;
    int refused = 0;
    int edits = 0;
};

std::vector<Entry> entriesOf(const Document& document)
{
    std::vector<Entry> entries;
    document.visit([&entries](const Entry& entry) { entries.push_back(entry); });
    return entries;
}

// Another value of the same type, which every format can hold in the place of this one.
Value changed(const Value& value)
{
    switch (value.type) {
    case Type::Bool:
        return boolean(!std::get<bool>(value.data));
    case Type::Integer:
        return integer(std::get<std::int64_t>(value.data) == 7 ? 8 : 7);
    case Type::Unsigned:
        return {Type::Unsigned, std::get<std::uint64_t>(value.data) - 1};
    case Type::Double:
        return number(std::get<double>(value.data) == 0.25 ? 0.75 : 0.25);
    case Type::StringList: {
        auto texts = std::get<std::vector<std::string>>(value.data);
        texts.push_back("another");
        return list(std::move(texts));
    }
    case Type::ByteArray:
        return {Type::ByteArray, std::get<std::string>(value.data) + "\xFF"};
    default:
        return text(value == text("another") ? "one more" : "another");
    }
}

// The bytes of the old text that an edit replaced, found from both ends.
struct Difference
{
    std::string before;
    std::string after;
};

Difference differenceOf(const std::string& before, const std::string& after)
{
    const std::size_t shorter = std::min(before.size(), after.size());
    std::size_t front = 0;
    while (front < shorter && before[front] == after[front])
        ++front;
    std::size_t back = 0;
    while (back < shorter - front && before[before.size() - 1 - back] == after[after.size() - 1 - back])
        ++back;
    return {before.substr(front, before.size() - front - back),
            after.substr(front, after.size() - front - back)};
}

// No more than the value as the format may write it: each character an escape, quotes, a separator or a comma
// with its blanks. A value on several lines has indentation and comments of its own.
bool isWithin(const std::string& bytes, const Value& value)
{
    constexpr std::size_t longestEscape = 6;
    constexpr std::size_t around = 12;
    if (value.type == Type::StringList || bytes.find_first_of("\r\n") != std::string::npos)
        return true;
    return bytes.size() <= FrameworkCore::Values::toText(value).size() * longestEscape + around;
}

} // namespace

class CorporaTest : public QObject
{
    Q_OBJECT

private slots:
    void files_data()
    {
        // content: of a row without file
        const auto row = TestSupport::columns<QString, QString, QByteArray>("type", "path", "content");
        row("small ini", "ini", QString(), "[a]\nb = 1 ; c\n");
        row("small json", "json", QString(), "{\"a\": [1, {}]}\n");
        row("small txt", "txt", QString(), "a.b = 1 # c\nprose\n");
        addFiles(QStringLiteral("txt"), QStringLiteral("ini"), QStringLiteral("*.properties"));
        row("small toml", "toml", QString(), "a = 1 # b\r\n[c.d]\r\ne.f = [ 'g' ]");
        row("small yaml", "yaml", QString(), "a: 1 # b\r\nc:\r\n- d: [ 'g' ]");
        row("small xml", "xml", QString(), "<a>\r\n <b c='1'>d</b> <!-- e --></a>");
        for (const char* name : {"ini", "json", "xml", "txt", "toml", "yaml"}) {
            const QString type = QString::fromLatin1(name);
            addFiles(type, type, QStringLiteral("*"));
            addFiles(type, QStringLiteral("variants"), type + QStringLiteral("-*"));
        }
    }

    // What is loaded comes out byte for byte; an edit changes the bytes of its value and nothing else; and
    // the old value gives the old bytes again.
    void files()
    {
        QFETCH(QString, type);
        QFETCH(QString, path);
        QFETCH(QByteArray, content);
        QFile file(path);
        if (!path.isEmpty()) {
            QVERIFY(file.open(QIODevice::ReadOnly));
            content = file.readAll();
        }
        const std::string bytes = content.toStdString();
        const auto document = makeDocument(type.toStdString());
        const Outcome outcome = document->parse(bytes);
        if (!outcome.ok()) {
            ++counts[type].refused;
            QVERIFY2(outcome.line > 0 && outcome.column > 0, outcome.error.c_str());
            const auto names = [](const char* name) {
                return QString::fromLatin1(name) == QString::fromLatin1(QTest::currentDataTag());
            };
            const bool expected =
                std::any_of(std::begin(notOfTheirFormat), std::end(notOfTheirFormat), names);
            QVERIFY2(expected, qPrintable(QStringLiteral("%1:%2:%3: %4")
                                              .arg(path)
                                              .arg(outcome.line)
                                              .arg(outcome.column)
                                              .arg(QString::fromStdString(outcome.error))));
            return;
        }
        ++counts[type].loaded;
        QCOMPARE(QByteArray::fromStdString(document->getBytes()), content);
        std::vector<Entry> entries = entriesOf(*document);
        QRandomGenerator random(quint32(content.size()));
        for (int edit = 0; edit < 5 && !entries.empty(); ++edit) {
            const auto place = std::size_t(random.bounded(int(entries.size())));
            if (entries[place].value.type != Type::Group)
                changeAndBack(*document, type, bytes, entries, place);
        }
    }

    void cleanupTestCase()
    {
        for (auto type = counts.cbegin(); type != counts.cend(); ++type)
            qInfo("%s: %d loaded, %d refused, %d edits", qPrintable(type.key()), type->loaded, type->refused,
                  type->edits);
    }

private:
    void addFiles(const QString& type, const QString& folder, const QString& filter)
    {
        const QString path = TestSupport::corporaPath(folder);
        if (path.isEmpty())
            return;
        const bool ownFolder = folder == type || folder == QLatin1String("variants");
        const QString place = ownFolder ? folder : type + QLatin1String(" of ") + folder;
        QDirIterator files(path, {filter}, QDir::Files);
        while (files.hasNext()) {
            files.next();
            QTest::newRow(qPrintable(place + QLatin1Char('/') + files.fileName()))
                << type << files.filePath() << QByteArray();
        }
    }

    void changeAndBack(Document& document, const QString& type, const std::string& bytes,
                       std::vector<Entry> entries, std::size_t place)
    {
        Entry& entry = entries[place];
        const Value old = entry.value;
        const Value other = changed(old);
        if (document.originOf(entry.path) == Document::Origin::Copy)
            return; // there are no bytes of its own
        const Outcome outcome = document.set(entry.path, other);
        // With a value, a bare key would take in an indented line below it; without "=", an indented line
        // would be taken in; and how blanks are read is not changed below texts.
        const bool isSpace = QByteArray::fromStdString(entry.path).endsWith(".@xml:space");
        const bool isIndented = outcome.error == "with this value the line would belong to the one above it";
        const bool mayRefuse = type == QLatin1String("ini") ? old.type == Type::Null || isIndented : isSpace;
        // What an alias shows, and the last element of a list that is no text.
        const bool isShown =
            type == QLatin1String("yaml") &&
            (outcome.line > 0 || outcome.error.find("cannot become a text") != std::string::npos);
        if (!outcome.ok() && (mayRefuse || isShown)) {
            QCOMPARE(document.getBytes(), bytes);
            return;
        }
        QVERIFY2(outcome.ok(), (entry.path + ": " + outcome.error).c_str());
        ++counts[type].edits;
        const std::string after = document.getBytes();
        const Difference difference = differenceOf(bytes, after);
        QVERIFY2(isWithin(difference.before, old) && isWithin(difference.after, other),
                 (entry.path + ": " + difference.before + " -> " + difference.after).c_str());
        QStringList expected;
        for (Entry node : entries) {
            if (node.path == entry.path || document.sourceOf(node.path) == entry.path)
                node.value = other;
            expected += toLine(node);
        }
        QCOMPARE(toLines(type.toLatin1().constData(), after), expected);
        QVERIFY(document.set(entry.path, old).ok());
        QCOMPARE(QByteArray::fromStdString(document.getBytes()), QByteArray::fromStdString(bytes));
    }

    QMap<QString, Counts> counts;
};

VANTRY_TEST_MAIN(QCoreApplication, CorporaTest)

#include "corpora_test.moc"
#include "repository/documents/Formats.h"
