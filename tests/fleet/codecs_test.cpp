#include "host/FrameworkCore/Values/ValueText.h"
#include "repository/fleet/EtcdLocation.h"
#include "repository/fleet/KeyCodec.h"
#include "repository/fleet/SharedEntries.h"
#include "repository/fleet/ValueCodec.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <limits>

Q_DECLARE_METATYPE(FrameworkCore::Values::Value)

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;
using namespace Repository;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

QString textOf(const std::string& text)
{
    return QString::fromStdString(text);
}

} // namespace

// The forms of keys, values and locations.
class CodecsTest : public QObject
{
    Q_OBJECT

private slots:
    void givesEachPathAKeyOfItsOwn_data()
    {
        const auto row = TestSupport::columns<QString, QString>("path", "key");
        row("the root", "", "");
        row("plain names", "site-1.oven_2.limit", "site-1.oven_2.limit");
        row("blanks and umlauts", "two words.größe", "two%20words.gr%C3%B6%C3%9Fe");
        row("a separator within a name", "a%2Eb.c", "a%252Eb.c");
        row("a slash", "a/b", "a%2Fb");
        row("a numbered sibling and a member", "item[2].@id", "item%5B2%5D.%40id");
    }

    void givesEachPathAKeyOfItsOwn()
    {
        QFETCH(QString, path);
        QFETCH(QString, key);
        QCOMPARE(textOf(KeyCodec::keyOf(path.toStdString())), key);
        const auto back = KeyCodec::pathOf(key.toStdString());
        QVERIFY(back);
        QCOMPARE(textOf(*back), path);
    }

    void leavesKeysAloneThatAreNoPath_data()
    {
        const auto row = TestSupport::columns<QString>("key");
        row("an empty name", "a..b");
        row("a separator at the end", "a.");
        row("a byte that must be encoded", "a/b");
        row("an encoded letter", "%61");
        row("lower-case digits", "%c3%b6");
        row("half an encoding", "a%2");
        row("a wildcard", "a%2A");
        row("a control character", "a%0Ab");
        row("a percent sign that begins no encoding", "a%25b");
        row("a number of no sibling", "a%5B1%5D");
        row("bytes that are not UTF-8", "%FF");
        row("more names than a path has", QStringLiteral("a") + QStringLiteral(".a").repeated(1024));
    }

    void leavesKeysAloneThatAreNoPath()
    {
        QFETCH(QString, key);
        QVERIFY(!KeyCodec::pathOf(key.toStdString()));
    }

    void keepsValuesExactly_data()
    {
        QTest::addColumn<Value>("value");
        QTest::addColumn<QString>("text");
        const auto row = [](const char* name, const Value& value, const char* text) {
            QTest::newRow(name) << value << QString::fromUtf8(text);
        };
        row("a group", {}, R"({"t":"g","w":"me.1"})");
        row("null", {Type::Null, {}}, R"({"t":"z","w":"me.1"})");
        row("true", {Type::Bool, true}, R"({"t":"b","v":true,"w":"me.1"})");
        row("the least integer", {Type::Integer, std::numeric_limits<std::int64_t>::min()},
            R"({"t":"i64","v":"-9223372036854775808","w":"me.1"})");
        row("the greatest number", {Type::Unsigned, std::numeric_limits<std::uint64_t>::max()},
            R"({"t":"u64","v":"18446744073709551615","w":"me.1"})");
        row("a fraction", {Type::Double, 0.1}, R"({"t":"f64","v":0.1,"w":"me.1"})");
        row("a whole double", {Type::Double, 5.0}, R"({"t":"f64","v":5.0,"w":"me.1"})");
        row("minus zero", {Type::Double, -0.0}, R"({"t":"f64","v":-0.0,"w":"me.1"})");
        row("the least double", {Type::Double, 5e-324}, R"({"t":"f64","v":5e-324,"w":"me.1"})");
        row("infinity", {Type::Double, infinity}, R"({"t":"f64","v":"inf","w":"me.1"})");
        row("no number", {Type::Double, std::numeric_limits<double>::quiet_NaN()},
            R"({"t":"f64","v":"nan","w":"me.1"})");
        row("a text", {Type::String, std::string("say \"grün\"\n")},
            "{\"t\":\"s\",\"v\":\"say \\\"grün\\\"\\n\",\"w\":\"me.1\"}");
        row("an empty text", {Type::String, std::string()}, R"({"t":"s","v":"","w":"me.1"})");
        row("a list", {Type::StringList, std::vector<std::string>{"a;b", "", "\\"}},
            "{\"t\":\"sl\",\"v\":[\"a;b\",\"\",\"\\\\\"],\"w\":\"me.1\"}");
        row("an empty list", {Type::StringList, std::vector<std::string>{}},
            R"({"t":"sl","v":[],"w":"me.1"})");
        row("bytes", {Type::ByteArray, std::string("\x00\xff\x10", 3)}, R"({"t":"y","v":"AP8Q","w":"me.1"})");
        row("a day", {Type::Date, std::string("2026-11-26")}, R"({"t":"d","v":"2026-11-26","w":"me.1"})");
        row("a time", {Type::Time, std::string("23:59:59.999")},
            R"({"t":"t","v":"23:59:59.999","w":"me.1"})");
        row("a moment", {Type::DateTime, std::string("2026-11-26T12:00:00.001+01:00")},
            R"({"t":"dt","v":"2026-11-26T12:00:00.001+01:00","w":"me.1"})");
    }

    void keepsValuesExactly()
    {
        QFETCH(Value, value);
        QFETCH(QString, text);
        QCOMPARE(textOf(ValueCodec::encode(value, "me.1")), text);
        const auto decoded = ValueCodec::decode(text.toStdString());
        QVERIFY(decoded);
        QVERIFY2(isSame(decoded->value, value), FrameworkCore::Values::toText(decoded->value).c_str());
        QCOMPARE(textOf(decoded->writer), QStringLiteral("me.1"));
    }

    void readsWhatOthersWrite_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Value>("value");
        QTest::newRow("a narrow integer")
            << R"({"t":"i32","v":-5})" << Value{Type::Integer, std::int64_t(-5)};
        QTest::newRow("a number as a number")
            << R"({"v": 7, "t": "u64"})" << Value{Type::Unsigned, std::uint64_t(7)};
        QTest::newRow("a narrow double") << R"({"t":"f32","v":2})" << Value{Type::Double, 2.0};
    }

    void readsWhatOthersWrite()
    {
        QFETCH(QString, text);
        QFETCH(Value, value);
        const auto decoded = ValueCodec::decode(text.toStdString());
        QVERIFY(decoded && isSame(decoded->value, value));
    }

    void leavesOtherFormsAlone_data()
    {
        const auto row = TestSupport::columns<QString>("text");
        row("no json", "hello");
        row("json without a type", R"({"v":1})");
        row("an unknown type", R"({"t":"matrix","v":[1]})");
        row("a value of another type", R"({"t":"b","v":"yes"})");
        row("a fraction as an integer", R"({"t":"i64","v":1.5})");
        row("a number that is too large", R"({"t":"i64","v":"9223372036854775808"})");
        row("a day that there is not", R"({"t":"d","v":"2026-02-30"})");
        row("bytes that are not", R"({"t":"y","v":"%%"})");
        row("a value that is missing", R"({"t":"s"})");
        row("more after it", R"({"t":"z"} {})");
    }

    void leavesOtherFormsAlone()
    {
        QFETCH(QString, text);
        QVERIFY(!ValueCodec::decode(text.toStdString()));
    }

    void readsLocations_data()
    {
        const auto row = TestSupport::columns<QString, QString, QString>("given", "shown", "error");
        row("one server", "etcd://h:2379/site", "etcd://h:2379/site", "");
        row("three, with TLS", "etcds://a:1,b:2,c:3/s?offline=queue", "etcds://a:1,b:2,c:3/s?offline=queue",
            "");
        row("no scheme", "h:2379/site", "", "etcd://HOST:PORT/NAME");
        row("no store", "etcd://h:2379", "etcd://h:2379/", "name of the store");
        row("two names", "etcd://h:2379/a/b", "etcd://h:2379/a/b", "no \"/\" in it");
        row("no port", "etcd://h/site", "etcd://h/site", "'h' is not HOST:PORT");
        row("a port beyond", "etcd://h:70000/site", "etcd://h:70000/site", "is not HOST:PORT");
        row("an unknown option", "etcd://h:1/s?speed=9", "etcd://h:1/s?speed=9", "unknown option 'speed'");
        row("another way to wait", "etcd://h:1/s?offline=maybe", "etcd://h:1/s?offline=maybe", "not 'maybe'");
        row("a password in it", "etcd://ann:secret@h:1/s", "etcd://@h:1/s", "must not hold");
        row("a password as an option", "etcd://h:1/s?password=secret&user=ann",
            "etcd://h:1/s?password=&user=ann", "must not hold a password");
        row("an odd file name", "etcd://h:1/s?ca=/a%26b 100%25=ü+;#.pem",
            "etcd://h:1/s?ca=/a%26b 100%25=ü+;#.pem", "");
        row("a relative file name", "etcd://h:1/s?ca=c.pem",
            QStringLiteral("etcd://h:1/s?ca=") + QDir::current().absoluteFilePath(QStringLiteral("c.pem")),
            "");
        row("IPv6", "etcd://[::1]:2379/s", "etcd://[::1]:2379/s", "");
        row("IPv6 without brackets", "etcd://::1:2379/s", "etcd://::1:2379/s", "brackets");
        row("nobody between commas", "etcd://a:1,,b:2/s", "etcd://a:1,,b:2/s", "'' is not HOST:PORT");
    }

    void readsLocations()
    {
        QFETCH(QString, given);
        QFETCH(QString, shown);
        QFETCH(QString, error);
        const EtcdLocation location(given);
        QCOMPARE(location.toText(), shown);
        // What is shown, logged and kept is refused, or taken, for the same reason.
        QCOMPARE(EtcdLocation(shown).toText(), shown);
        QCOMPARE(EtcdLocation(shown).getError(), location.getError());
        QVERIFY2(error.isEmpty() ? location.getError().isEmpty() : location.getError().contains(error),
                 qPrintable(location.getError()));
        QVERIFY(!location.getError().contains(QStringLiteral("secret")));
    }

    void takesCredentialsThatNobodyElseCanRead_data()
    {
        const auto row = TestSupport::columns<int, QString, QString>("mode", "content", "error");
        row("for the user alone", 0x6000, "user = ann\npassword = a=b c\n", "");
        row("for the group, too", 0x6040, "password=x\n", "chmod 600");
        row("for all", 0x6004, "password=x\n", "chmod 600");
        row("with an unknown name", 0x6000, "pasword=x\n", "unknown option 'pasword'");
        row("a file beside it", 0x6000, "user = ann\npassword = a=b c\nca = credentials\n", "");
    }

    void takesCredentialsThatNobodyElseCanRead()
    {
        QFETCH(int, mode);
        QFETCH(QString, content);
        QFETCH(QString, error);
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("credentials")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content.toUtf8());
        file.close();
        QVERIFY(file.setPermissions(QFile::Permissions(mode)));
        StoreSettings settings;
        const QString reason =
            EtcdLocation(QStringLiteral("etcd://h:1/s?credentials=%1").arg(file.fileName())).read(settings);
        QVERIFY2(error.isEmpty() ? reason.isEmpty() : reason.contains(error), qPrintable(reason));
        if (error.isEmpty()) {
            QCOMPARE(textOf(settings.user), QStringLiteral("ann"));
            QCOMPARE(textOf(settings.password), QStringLiteral("a=b c"));
            QCOMPARE(textOf(settings.authority),
                     content.contains(QStringLiteral("ca =")) ? content : QString());
        }
    }
};

VANTRY_TEST_MAIN(QCoreApplication, CodecsTest)

#include "codecs_test.moc"
