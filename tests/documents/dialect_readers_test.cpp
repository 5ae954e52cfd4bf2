#include "repository/documents/common/ComponentCodec.h"
#include "tests/documents/DialectReaders.h"
#include "tests/documents/EntryLines.h"
#include "tests/support/Columns.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace EntryLines;
using DialectReaders::Entries;
using DialectReaders::Reader;
using Repository::Documents::joinPath;
using Repository::Documents::makeDocument;

namespace {

// A dialect, what reads its files, and how the names and values of both are made comparable.
struct Row
{
    const char* type;
    const char* folder; // of real files
    Reader reader;
    Reader other;        // which may differ where it takes a value for more than a text; null for none
    char separator;      // of the sections around a key in their names
    bool isFolded;       // whether case does not matter in names
    bool holdsAll;       // whether the reader tells all values of a repeated key, or else the last one
    bool tellsEachValue; // or only some of them
    const char* key;
    const char* entries; // of a section, with that key
    const char* refused; // the texts, by their names, that the dialect has no spelling for
};

const QList<Row>& rows()
{
    using namespace DialectReaders;
    static const QList<Row> all{
        {"ini:git", "git-config", git, nullptr, '|', true, true, true, "k", "\tk = v\n\tl = w\n",
         "carriage return"},
        {"ini:desktop", "desktop", glib, nullptr, '|', false, false, true, "k", "k=v\nl=w\n", ""},
        {"ini:kde", "kde", kconfig, nullptr, '|', false, false, false, "k", "k=v\nl=w\n", ""},
        {"ini:samba", "smb-conf", samba, nullptr, '|', true, false, false, "comment",
         "   comment = v\n   path = /tmp\n",
         "blank before|blank behind|blanks|backslash at the end|line break|line break before|line break "
         "behind|carriage return"},
        {"ini:mysql", "my-cnf", mysql, nullptr, '|', false, true, true, "k", "k = v\nl = w\n", ""},
        {"ini:php", "php-ini", php, rawPhp, '|', false, false, true, "k", "k = v\nl = w\n",
         "dollar and quotes"},
        {"ini:python", "python-setup", python, interpolatingPython, '.', true, false, true, "k",
         "k = v\nl = w\n",
         "blank before|blank behind|blanks|percent|reference|line break behind|carriage return|all"},
        {"ini:fail2ban", "fail2ban", commentedPython, nullptr, '|', true, false, true, "k", "k = v\nl = w\n",
         "blank before|blank behind|blanks|semicolon between blanks|semicolon before|percent|reference|line "
         "break behind|carriage return|all"},
        {"ini:supervisor", "supervisor", supervisor, nullptr, '|', true, false, true, "k", "k = v\nl = w\n",
         "blank before|blank behind|blanks|semicolon between blanks|semicolon before|hash between "
         "blanks|hash "
         "before|percent|reference|line break behind|carriage return|all"},
        {"ini:krb5", "krb5", krb5, nullptr, '.', false, true, true, "k", "    k = v\n    l = w\n",
         "carriage return"},
    };
    return all;
}

struct Nasty
{
    const char* name;
    const char* text;
};

constexpr Nasty nastyTexts[] = {
    {"plain", "a b"},
    {"empty", ""},
    {"blank before", " a"},
    {"blank behind", "a "},
    {"blanks", "  "},
    {"quote inside", "a\"b"},
    {"quotes around", "\"a b\""},
    {"apostrophes around", "'a b'"},
    {"apostrophe", "it's"},
    {"backslash", "a\\b"},
    {"backslash at the end", "C:\\dir\\"},
    {"backslashes", "\\\\host\\new"},
    {"semicolon", "a;b"},
    {"semicolon between blanks", "a ; b"},
    {"semicolon before", ";a"},
    {"hash", "a#b"},
    {"hash between blanks", "a # b"},
    {"hash before", "#a"},
    {"percent", "50%"},
    {"reference", "%(l)s"},
    {"equals", "a=b"},
    {"equals before", "=a"},
    {"colon", "a:b"},
    {"beyond ascii", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"},
    {"line break", "a\nb"},
    {"line break before", "\na"},
    {"line break behind", "a\n"},
    {"tab", "a\tb"},
    {"carriage return", "a\rb"},
    {"environment", "$HOME ${HOME}"},
    {"dollar and quotes", "${HOME}'\""},
    {"section", "[s]"},
    {"escaped semicolon", "a\\;b"},
    {"operators", "a & !(b | c)"},
    {"all", "\\;#%\"='"},
};

constexpr const char* nastyNames[] = {"a b", "a\"b", "a[b]",     "a[b", "a(b", "a$b", "yes",  "Null", "1a",
                                      "a_b", "a#b",  "\xC3\xA4", "a*",  "a ",  "*",   "a\\b", "a;b",  "50%"};

QString textOf(const Value& value)
{
    return QString::fromStdString(FrameworkCore::Values::toText(value));
}

// As Vantry reads them, with the names as the reader gives them.
Entries entriesOf(const Document& document, const Row& row)
{
    Entries entries;
    document.visit([&](const Entry& entry) {
        if (entry.value.type == Type::Group || entry.value.type == Type::Null)
            return;
        QStringList names;
        const QStringList components = QString::fromStdString(entry.path).split(QLatin1Char('.'));
        for (const QString& component : components) {
            const std::string encoded = component.toStdString();
            const auto plain = Repository::Documents::splitNumber(encoded).name;
            names +=
                QString::fromStdString(Repository::Documents::decodeKey(plain).value_or(std::string(plain)));
        }
        const QString key = names.takeLast();
        if (!names.isEmpty())
            names = QStringList{names.join(QLatin1Char(row.separator))};
        const QString name = (names << key).join(QLatin1Char('|'));
        entries[row.isFolded ? name.toLower() : name] += textOf(entry.value);
    });
    return entries;
}

Entries folded(const Entries& entries)
{
    Entries result;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        result[entry.key().toLower()] += entry.value();
    return result;
}

QStringList lines(const Entries& entries)
{
    QStringList result;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        result += entry.key() + QLatin1String(" = ") + entry.value().join(QLatin1String(" / "));
    return result;
}

const Row& rowOf(const QString& type)
{
    return *std::find_if(rows().begin(), rows().end(),
                         [&type](const Row& row) { return type == QLatin1String(row.type); });
}

} // namespace

class DialectReadersTest : public QObject
{
    Q_OBJECT

private slots:
    void readsAsTheProgramDoes_data()
    {
        const auto row = TestSupport::columns<QString, QString, QByteArray>("type", "name", "content");
        for (const Row& dialect : rows()) {
            const QString path =
                TestSupport::corporaPath(QStringLiteral("ini-dialects/") + QLatin1String(dialect.folder));
            const QDir folder(path);
            const QStringList names =
                path.isEmpty() ? QStringList() : folder.entryList(QDir::Files | QDir::Hidden);
            for (const QString& name : names)
                row(qPrintable(name), dialect.type, name, TestSupport::contentOf(folder.filePath(name)));
        }
        row("git", "ini:git", "own",
            "[user]\n\tname = Jane\n\temail = j@x ; c\n[http \"https://x.org\"] proxy = \"a # b\" "
            "c\n[core]\n\tbare\n"
            "\tpager = less \\\n\t  -R\n[remote \"a\\\"b\"]\n\turl = \"c\\\\d\\te\\n\"  # c\n\tfetch = "
            "1\n\tfetch = 2\n"
            "[A.B]\n\tx=y\n[e]\n\tk =\n\tl = \"\"\n\tm = a\"b c\"d\n\tn = \"a;\\\n#b\"\n");
        row("samba", "ini:samba", "own",
            "[global]\n  workgroup = A\\\n   B\n  server string = x ; y # z\n idmap config * : backend = "
            "tdb\n"
            "; c\n[s]\n path = /tmp\n comment = a \\\n b\\\n # c\n   # c\n[t]\n Com Ment = q\t\tr\n "
            "path=/a\n");
        row("desktop", "ini:desktop", "own",
            "# c\n[Desktop Entry]\nName = a b  \nName[de]=\xC3\xA4\n Exec=sh -c \"a ; b\" # d\n"
            "Comment=\\sa\\tb\\n\\\\;\nKeywords=a;b\\;c;\nKeywords=last\n[Desktop Action x.y]\nName=z\n");
        row("kde", "ini:kde", "own",
            "[a][b.c]\nk = v  \nl=\\sx\\x41\\;\n[General][$i]\nm[$i]=5\nn=a # b ; c\no=\"q\"\n k\\x3dp=1\n");
        row("mysql", "ini:mysql", "own",
            "[g]\na = x # c\nb = \"x # y\"\nc=it's\nd = x\\ty\\\\z\\qw\ne = \"a\\\"b\" # c\nf=\n  g = ' lead "
            "'\n"
            "skip-x # c\nh = a;b\ni = x=\"y\"\nj=\\sx\\s\nk = a'b'c#d\n; c\nl = 'a\"b'\n");
        row("krb5", "ini:krb5", "own",
            "# c\n[libdefaults]\n\tdefault_realm = A.B  \n ; c\n v = {\n  host = {\n   a = b # d\n  }\n  k = "
            "\" x\\\"\\n\\q\"\n }\n  w = it's \"q\"\n[realms]\n  A.B = {\n    kdc = a:88\n    kdc = b\n  }\n "
            " C = "
            "{\n    kdc* = c\n  }\n  A.B = {\n    kdc = d\n  }\n[domain_realm]\n  .a.b = A.B\n[plugins]\nc = "
            "{\nmodule = m\n}\n");
        row("php lines", "ini:php", "own", "a = \"k\nl\" ; c\nb = 'm;\nn'\n[s]\nc = 1\n");
        row("php", "ini:php", "own",
            "[s]\na = \"x;y\"\nb = 'x;y' ; c\nc = \"a\\\"b\\\\\" ; c\nd = On\ne = E_ALL & ~E_NOTICE\nf=5;c\n"
            "g = \"C:\\dir\\new\"\nh[] = 1\nh[] = 2\ni.j = \"k l\"\nm = #n\n");
        row("python indented", "ini:python", "own",
            "[A b]\nspaces in keys=x y\nyou can: z\n\n[M]\nchorus: one\n    two\n\n[N]\nempty =\n\n    [I]\n "
            "       k = "
            "True\n        m = are\n            fine\n        # c\n      n=1\n");
        row("python", "ini:python", "own",
            "[s]\na = 1\n  b = 2\n# c\n\n  d\ne: f # g\nh=\n\ti\n\tj ; k\nL = m:n=o\np : q\n[t.u]\nv = "
            "%(a)s\n");
        row("fail2ban", "ini:fail2ban", "own",
            "[s]\na = 1 ; c\nb = x;y # z\nd = e ; c\n    f=g ; c\n    ; c\n\n    h: i;j\nk =\t; c\nl =;m\nn "
            "= ; c\n  o\n");
        row("supervisor", "ini:supervisor", "own",
            "[s]\na=1 ; c\nb=x#y # c\nd=E=\"1\",\n  F=\"2\" ; c\nk=\n  l\n\n[t:u.v]\nw : x\n");
        row("python blanks", "ini:python", "own",
            "[s]\na = \xC2\xA0x\xE2\x80\xA8\nb =\xC2\x85\n  y\xE3\x80\x80\n");
    }

    void readsAsTheProgramDoes()
    {
        QFETCH(QString, type);
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        const Row& row = rowOf(type);
        const QTemporaryDir folder;
        const QString file = TestSupport::writeFile(folder.filePath(QStringLiteral("file")), content);
        const auto document = makeDocument(type.toStdString());
        const auto outcome = document->parse(content.toStdString());
        const auto read = row.reader(file);
        if (!read) {
            QVERIFY2(name != QLatin1String("own"), "the reader refuses the file");
            return;
        }
        QVERIFY2(outcome.ok(), outcome.error.c_str());
        const Entries theirs = row.isFolded ? folded(*read) : *read;
        const auto raw = row.other ? row.other(file) : read;
        Entries ours = entriesOf(*document, row);
        for (auto entry = ours.begin(); entry != ours.end(); ++entry) {
            const QStringList expected = theirs.value(entry.key());
            if (!row.holdsAll && expected.size() < entry.value().size())
                entry.value() = entry.value().mid(entry.value().size() - expected.size());
            // What is a constant to the reader is a text here.
            const QStringList spelled = raw ? raw->value(entry.key()) : QStringList();
            for (int i = 0; i < entry.value().size() && i < expected.size(); ++i) {
                if (spelled.value(i) == entry.value().at(i))
                    entry.value()[i] = expected.at(i);
            }
        }
        if (row.tellsEachValue) {
            QCOMPARE(lines(ours), lines(theirs));
            return;
        }
        for (auto entry = ours.begin(); entry != ours.end(); ++entry) {
            const auto cased = [&row](const QString& text) { return row.isFolded ? text.toLower() : text; };
            if (theirs.contains(entry.key()))
                QCOMPARE(cased(entry.value().last()), cased(theirs.value(entry.key()).last()));
        }
    }

    // What Vantry writes is what the program reads, or Vantry refuses it with a reason.
    void writesWhatTheProgramReads_data()
    {
        const auto row = TestSupport::columns<QString>("type");
        for (const Row& dialect : rows())
            row(dialect.type, dialect.type);
    }

    void writesWhatTheProgramReads()
    {
        QFETCH(QString, type);
        const Row& row = rowOf(type);
        QByteArray content;
        for (std::size_t i = 0; i < std::size(nastyTexts); ++i)
            content += "[s" + QByteArray::number(int(i)) + "]\n" + row.entries;
        const auto document = makeDocument(type.toStdString());
        QVERIFY(document->parse(content.toStdString()).ok());
        QStringList refused;
        QStringList expected;
        for (std::size_t i = 0; i < std::size(nastyTexts); ++i) {
            const auto [name, nasty] = nastyTexts[i];
            const std::string path = "s" + std::to_string(i) + '.' + row.key;
            const auto outcome = document->set(path, EntryLines::text(nasty));
            QCOMPARE(outcome.ok(), outcome.error.empty());
            if (!outcome.ok())
                refused += QString::fromLatin1(name);
            expected += outcome.ok() ? QString::fromUtf8(nasty) : QStringLiteral("v");
        }
        QCOMPARE(refused.join(QLatin1Char('|')), QString::fromLatin1(row.refused));
        const QTemporaryDir folder;
        const QString file = TestSupport::writeFile(folder.filePath(QStringLiteral("file")),
                                                    QByteArray::fromStdString(document->getBytes()));
        for (const Reader reader :
             {row.reader, type == QLatin1String("ini:python") ? row.other : row.reader}) {
            const auto read = reader(file);
            QVERIFY2(read, document->getBytes().c_str());
            QStringList found;
            for (int i = 0; i < expected.size(); ++i)
                found += read->value(QStringLiteral("s%1|%2").arg(i).arg(QLatin1String(row.key)))
                             .join(QLatin1Char('/'));
            QCOMPARE(found, expected);
        }
    }

    // The program reads the names that Vantry has given to new or renamed keys and sections.
    void namesWhatTheProgramReads_data() { writesWhatTheProgramReads_data(); }

    void namesWhatTheProgramReads()
    {
        QFETCH(QString, type);
        const Row& row = rowOf(type);
        const QTemporaryDir folder;
        const auto check = [&](const char* what, const auto& edit) {
            const auto document = makeDocument(type.toStdString());
            std::string content;
            for (std::size_t i = 0; i <= std::size(nastyNames); ++i)
                content += "[s" + std::to_string(i) + "]\n" + row.entries;
            QVERIFY(document->parse(content).ok());
            for (std::size_t i = 0; i < std::size(nastyNames); ++i)
                edit(*document, "s" + std::to_string(i), Repository::Documents::encodeKey(nastyNames[i]));
            const QString file = TestSupport::writeFile(folder.filePath(QStringLiteral("file")),
                                                        QByteArray::fromStdString(document->getBytes()));
            const auto read = row.reader(file);
            const QString last =
                QStringLiteral("s%1|%2").arg(std::size(nastyNames)).arg(QLatin1String(row.key));
            QVERIFY2(read && read->contains(last), (what + (":\n" + document->getBytes())).c_str());
            const Entries ours = entriesOf(*document, row);
            const bool isAtRoot = ours.contains(QStringLiteral("a[b]")); // an array, for PHP as a section is
            if (row.tellsEachValue && !isAtRoot)
                QCOMPARE((row.isFolded ? folded(ours) : ours).keys(),
                         (row.isFolded ? folded(*read) : *read).keys());
        };
        check("keys", [](Document& document, const std::string& section, const std::string& name) {
            document.insert(joinPath(section, name), EntryLines::text("x"));
        });
        check("keys before all sections",
              [](Document& document, const std::string&, const std::string& name) {
                  document.insert(name, EntryLines::text("x"));
              });
        check("sections", [](Document& document, const std::string&, const std::string& name) {
            document.insert(joinPath(name, "k"), EntryLines::text("x"));
        });
        check("renamed keys",
              [&row](Document& document, const std::string& section, const std::string& name) {
                  document.rename(joinPath(section, row.key), name);
              });
        check("renamed sections", [](Document& document, const std::string& section,
                                     const std::string& name) { document.rename(section, name); });
    }
};

VANTRY_TEST_MAIN(QCoreApplication, DialectReadersTest)

#include "dialect_readers_test.moc"
