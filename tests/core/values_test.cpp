#include "host/FrameworkCore/Values/Utf8.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"

#include <QRandomGenerator>
#include <QTimeZone>
#include <QUrl>

#include <cmath>
#include <cstring>
#include <limits>

using namespace FrameworkCore::Values;

Q_DECLARE_METATYPE(FrameworkCore::Values::Type)

namespace {

constexpr qlonglong longest = std::numeric_limits<qlonglong>::max();
constexpr qulonglong unsignedLongest = std::numeric_limits<qulonglong>::max();
constexpr qlonglong beyondDouble = (qlonglong(1) << 53) + 1;

QString lone()
{
    return QStringLiteral("a") + QChar(0xD800) + QStringLiteral("b");
}

double fromBits(quint64 bits)
{
    double number = 0;
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

} // namespace

class ValuesTest : public QObject
{
    Q_OBJECT

private slots:
    void readsTexts_data()
    {
        QTest::addColumn<Type>("type");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("written"); // the text of the value that was read; null when refused
        const auto good = [](Type type, const char* text, const char* written) {
            QTest::addRow("%d %s", int(type), text) << type << QByteArray(text) << QByteArray(written);
        };
        const auto bad = [](Type type, const char* text) {
            QTest::addRow("%d refused %s", int(type), text) << type << QByteArray(text) << QByteArray();
        };
        good(Type::Bool, "true", "true");
        good(Type::Bool, "0", "false");
        bad(Type::Bool, "yes");
        bad(Type::Bool, "");
        good(Type::Integer, "-9223372036854775808", "-9223372036854775808");
        good(Type::Integer, "9223372036854775807", "9223372036854775807");
        bad(Type::Integer, "9223372036854775808");
        bad(Type::Integer, "-9223372036854775809");
        good(Type::Integer, "+007", "7");
        bad(Type::Integer, "+-7");
        bad(Type::Integer, " 7");
        bad(Type::Integer, "7 ");
        bad(Type::Integer, "1.0");
        bad(Type::Integer, "0x10");
        bad(Type::Integer, "");
        good(Type::Unsigned, "18446744073709551615", "18446744073709551615");
        bad(Type::Unsigned, "18446744073709551616");
        bad(Type::Unsigned, "-1");
        good(Type::Double, "0.1", "0.1");
        good(Type::Double, "1e3", "1000.0");
        good(Type::Double, "-0", "-0.0");
        good(Type::Double, "1e308", "1e+308");
        good(Type::Double, "4.9406564584124654e-324", "5e-324");
        good(Type::Double, "-inf", "-inf");
        good(Type::Double, "nan", "nan");
        bad(Type::Double, "infinity");
        bad(Type::Double, "1e400");
        bad(Type::Double, "1,5");
        bad(Type::Double, "9007199254740993");
        good(Type::Double, "9007199254740994", "9007199254740994.0");
        good(Type::StringList, "", "");
        good(Type::StringList, ";", ";");
        good(Type::StringList, "a;b", "a;b");
        good(Type::StringList, "a;b;", "a;b");
        good(Type::StringList, "a;;", "a;;");
        good(Type::StringList, "a\\;b;\\\\", "a\\;b;\\\\");
        bad(Type::StringList, "a\\n");
        bad(Type::StringList, "a\\");
        good(Type::ByteArray, "plain \\\\ \\x00\\xFF", "plain \\\\ \\x00\\xff");
        bad(Type::ByteArray, "\\x0");
        bad(Type::ByteArray, "\\n");
        good(Type::Date, "2024-02-29", "2024-02-29");
        bad(Type::Date, "2023-02-29");
        bad(Type::Date, "2024-2-29");
        bad(Type::Date, "0000-01-01");
        good(Type::Date, "+12345-01-31", "+12345-01-31");
        good(Type::Date, "-0044-03-15", "-0044-03-15");
        good(Type::Date, "", "");
        good(Type::Time, "23:59", "23:59:00");
        good(Type::Time, "23:59:58.5", "23:59:58.500");
        bad(Type::Time, "24:00");
        bad(Type::Time, "12:00:00.0001");
        bad(Type::DateTime, "2024-12-31T23:59:58.1234Z");
        good(Type::Time, "12:00:00.1230", "12:00:00.123");
        good(Type::DateTime, "2024-12-31 23:59", "2024-12-31T23:59:00");
        good(Type::DateTime, "2024-12-31T23:59:58.007Z", "2024-12-31T23:59:58.007Z");
        good(Type::DateTime, "2024-12-31T23:59:58+05:30", "2024-12-31T23:59:58+05:30");
        good(Type::DateTime, "1890-01-01T00:00:00+00:53:28", "1890-01-01T00:00:00+00:53:28");
        good(Type::DateTime, "2024-12-31T23:59:58-00:00", "2024-12-31T23:59:58Z");
        bad(Type::DateTime, "2024-12-31");
        bad(Type::DateTime, "2024-12-31T23:59:58+0100");
        bad(Type::Null, "x");
    }

    void readsTexts()
    {
        QFETCH(Type, type);
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, written);
        const ReadResult result = readText(text.toStdString(), type);
        QCOMPARE(result.ok(), !written.isNull());
        if (!result.ok())
            return;
        QCOMPARE(result.value.type, type);
        QCOMPARE(QByteArray::fromStdString(toText(result.value)), written);
        // Through the variants and back nothing changes either.
        const QVariant variant = toVariant(result.value);
        if (!std::isnan(variant.toDouble()))
            QVERIFY(toValue(variant) == result.value);
    }

    void saysWhatIsWrong()
    {
        QCOMPARE(readText("x1", Type::Integer).error, std::string("\"x1\" is not a whole number"));
        QCOMPARE(readText("-1", Type::Unsigned).error,
                 std::string("\"-1\" is outside of 0 to 18446744073709551615"));
        QCOMPARE(readText("1.5.", Type::Date).error, std::string("\"1.5.\" is not a date as in 2024-12-31"));
    }

    void keepsEveryDouble()
    {
        QRandomGenerator64 random(3);
        for (int round = 0; round < 100000; ++round) {
            const quint64 bits = random.generate64();
            const double number = round % 2 == 0 ? fromBits(bits) : double(bits >> (bits % 16));
            if (!std::isfinite(number))
                continue;
            const Value value{Type::Double, number};
            const ReadResult back = readText(toText(value), Type::Double);
            QVERIFY2(back.ok(), back.error.c_str());
            QCOMPARE(std::get<double>(back.value.data), number);
        }
    }

    void typesPlainTexts_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<Type>("type");
        const auto row = [](const char* text, Type type) { QTest::newRow(text) << QByteArray(text) << type; };
        row("true", Type::Bool);
        row("True", Type::String);
        row("0", Type::Integer);
        row("-0", Type::String);
        row("-12", Type::Integer);
        row("+12", Type::String);
        row("007", Type::String);
        row("-", Type::String);
        row("", Type::String);
        row("12 ", Type::String);
        row("1.0", Type::Double);
        row("-0.5", Type::Double);
        row("3.10", Type::String);
        row("01.5", Type::String);
        row("1.2.3", Type::String);
        row("1.", Type::String);
        row(".5", Type::String);
        row("1e400", Type::String);
        row("-9223372036854775808", Type::Integer);
        row("-9223372036854775809", Type::String);
        row("9223372036854775807", Type::Integer);
        row("9223372036854775808", Type::Unsigned);
        row("18446744073709551615", Type::Unsigned);
        row("18446744073709551616", Type::String);
    }

    void typesPlainTexts()
    {
        QFETCH(QByteArray, text);
        QFETCH(Type, type);
        const Value value = plainValue(text.toStdString());
        QCOMPARE(value.type, type);
        QCOMPARE(QByteArray::fromStdString(toText(value)), text);
    }

    void knowsUtf8_data()
    {
        const auto row = TestSupport::columns<QByteArray, bool>("bytes", "expected");
        row("empty", QByteArray(), true);
        row("beyond the first word", "123456789\xC3\xBC", true);
        row("last code point", "\xF4\x8F\xBF\xBF", true);
        row("one more", "\xF4\x90\x80\x80", false);
        row("overlong slash", "\xC0\xAF", false);
        row("overlong in three", "\xE0\x9F\xBF", false);
        row("surrogate", "\xED\xA0\x80", false);
        row("before the surrogates", "\xED\x9F\xBF", true);
        row("cut short", "12345678\xE2\x82", false);
        row("lone continuation", "a\x80", false);
        row("latin 1", "Gr\xFC\xDF", false);
    }

    void knowsUtf8()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, expected);
        QCOMPARE(isUtf8(bytes.toStdString()), expected);
    }

    void convertsWithoutLoss_data()
    {
        // to: of the wanted type
        const auto row = TestSupport::columns<QVariant, QVariant>("from", "to");
        row("int to LongLong", 5, qlonglong(5));
        row("true to LongLong", true, qlonglong(1));
        row("whole double to LongLong", -3.0, qlonglong(-3));
        row("least double to LongLong", -9223372036854775808.0, std::numeric_limits<qlonglong>::min());
        row("text to LongLong", QStringLiteral("12"), qlonglong(12));
        row("longest to ULongLong", longest, qulonglong(longest));
        row("text to ULongLong", QStringLiteral("18446744073709551615"), unsignedLongest);
        row("exact integer to Double", (qlonglong(1) << 53) + 2, 9007199254740994.0);
        row("least to text", std::numeric_limits<qlonglong>::min(), QStringLiteral("-9223372036854775808"));
        row("longest to text", unsignedLongest, QStringLiteral("18446744073709551615"));
        row("least to Double", std::numeric_limits<qlonglong>::min(), -9223372036854775808.0);
        row("float to Double", 0.5f, 0.5);
        row("text to Double", QStringLiteral("0.1"), 0.1);
        row("1 to bool", 1, true);
        row("0.0 to bool", 0.0, false);
        row("text to bool", QStringLiteral("false"), false);
        row("int to text", -7, QStringLiteral("-7"));
        row("double to text", 0.1, QStringLiteral("0.1"));
        row("bool to text", true, QStringLiteral("true"));
        row("bytes to text", QByteArray("\xC3\xBC"), QString(QChar(0xFC)));
        row("list of one to text", QStringList(QStringLiteral("a;b")), QStringLiteral("a;b"));
        row("text to list", QStringLiteral("a;b"), QStringList(QStringLiteral("a;b")));
        row("variants to list", QVariantList{QStringLiteral("a")}, QStringList(QStringLiteral("a")));
        row("text to bytes", QString(QChar(0xFC)), QByteArray("\xC3\xBC"));
        row("text to date", QStringLiteral("2024-02-29"), QDate(2024, 2, 29));
        row("time to text", QTime(1, 2, 3, 4), QStringLiteral("01:02:03.004"));
        row("text to time", QStringLiteral("01:02:03.004"), QTime(1, 2, 3, 4));
        row("date-time to text",
            QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5, 6), Qt::OffsetFromUTC, -(3 * 3600 + 1800)),
            QStringLiteral("2024-01-02T03:04:05.006-03:30"));
        row("text to date-time", QStringLiteral("2024-01-02T03:04:05.006+01:00"),
            QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5, 6), Qt::OffsetFromUTC, 3600));
        row("nothing to LongLong", QVariant(), qlonglong(0));
        row("nothing to text", QVariant(), QString());
        row("nothing to date", QVariant(), QDate());
    }

    void convertsWithoutLoss()
    {
        QFETCH(QVariant, from);
        QFETCH(QVariant, to);
        const std::optional<QVariant> converted = convertVariant(from, to.userType());
        QVERIFY(converted);
        QCOMPARE(converted->userType(), to.userType());
        QCOMPARE(*converted, to);
    }

    void refusesLoss_data()
    {
        const auto row = TestSupport::columns<QVariant, int>("from", "type");
        row("fraction to LongLong", 1.5, QMetaType::LongLong);
        row("nan to LongLong", std::nan(""), QMetaType::LongLong);
        row("2^63 to LongLong", 9223372036854775808.0, QMetaType::LongLong);
        row("unsigned to LongLong", unsignedLongest, QMetaType::LongLong);
        row("word to LongLong", QStringLiteral("abc"), QMetaType::LongLong);
        row("empty text to LongLong", QString(), QMetaType::LongLong);
        row("negative to ULongLong", -1, QMetaType::ULongLong);
        row("2^64 to ULongLong", 18446744073709551616.0, QMetaType::ULongLong);
        row("2^53+1 to Double", beyondDouble, QMetaType::Double);
        row("longest to Double", longest, QMetaType::Double);
        row("longest unsigned to Double", unsignedLongest, QMetaType::Double);
        row("2 to bool", 2, QMetaType::Bool);
        row("0.5 to bool", 0.5, QMetaType::Bool);
        row("word to bool", QStringLiteral("abc"), QMetaType::Bool);
        row("list to text", TestSupport::words("a b"), QMetaType::QString);
        row("empty list to text", QStringList(), QMetaType::QString);
        row("latin bytes to text", QByteArray("\xFC"), QMetaType::QString);
        row("half a character to bytes", lone(), QMetaType::QByteArray);
        row("numbers to list", QVariantList{1}, QMetaType::QStringList);
        row("date-time to date", QDateTime(QDate(2024, 1, 2), QTime(3, 4)), QMetaType::QDate);
        row("word to date", QStringLiteral("soon"), QMetaType::QDate);
        row("map to text", QVariantMap(), QMetaType::QString);
        row("text to an unknown type", QStringLiteral("a"), QMetaType::QSize);
    }

    void refusesLoss()
    {
        QFETCH(QVariant, from);
        QFETCH(int, type);
        QVERIFY(!convertVariant(from, type));
    }

    void findsTheAttributeType_data()
    {
        const auto row = TestSupport::columns<QVariant, QVariant>("from", "expected");
        row("short", QVariant::fromValue(short(-3)), QVariant(qlonglong(-3)));
        row("uint", QVariant(4000000000u), QVariant(qlonglong(4000000000)));
        row("ulong", QVariant::fromValue(std::numeric_limits<ulong>::max()), QVariant(unsignedLongest));
        row("char", QVariant::fromValue('A'), QVariant(qlonglong(65)));
        row("float", QVariant(0.25f), QVariant(0.25));
        row("enumeration", QVariant::fromValue(Qt::Vertical), QVariant(qlonglong(2)));
        row("url", QVariant(QUrl(QStringLiteral("http://a/b c"))),
            QVariant(QStringLiteral("http://a/b%20c")));
        row("letter", QVariant(QChar(0xFC)), QVariant(QString(QChar(0xFC))));
        row("nullptr", QVariant::fromValue(nullptr), QVariant());
        row("list", QVariant(QStringList{QString(), lone()}), QVariant(QStringList{QString(), lone()}));
    }

    void findsTheAttributeType()
    {
        QFETCH(QVariant, from);
        QFETCH(QVariant, expected);
        const std::optional<QVariant> made = toAttributeVariant(from);
        QVERIFY(made);
        QCOMPARE(made->userType(), expected.userType());
        QCOMPARE(*made, expected);
        QVERIFY(!toAttributeVariant(QVariant(QPoint(1, 2))));
    }

    void keepsValuesThroughVariants_data()
    {
        const auto row = TestSupport::columns<QVariant>("variant");
        row("lone surrogate", QVariant(lone()));
        row("reversed pair", QVariant(QString(QChar(0xDC00)) + QChar(0xD800)));
        row("byte order mark", QVariant(QString(QChar(0xFEFF)) + QChar(0xFFFF)));
        row("nul", QVariant(QString(QChar(0)) + QStringLiteral("x")));
        row("emoji", QVariant(QString::fromUtf8("\xF0\x9F\x8C\xBC")));
        row("list", QVariant(QStringList{lone(), QString()}));
        row("bytes", QVariant(QByteArray("\0\xFF", 2)));
        row("early date", QVariant(QDate(-44, 3, 15)));
        row("late date", QVariant(QDate(12345, 1, 31)));
        row("local", QVariant(QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5, 6))));
        row("utc", QVariant(QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5), Qt::UTC)));
        row("seconds of offset",
            QVariant(QDateTime(QDate(1890, 1, 2), QTime(3, 4), Qt::OffsetFromUTC, 3208)));
        row("no date-time", QVariant(QDateTime()));
    }

    void keepsValuesThroughVariants()
    {
        QFETCH(QVariant, variant);
        const QVariant back = toVariant(toValue(variant));
        QCOMPARE(back.userType(), variant.userType());
        QCOMPARE(back, variant);
        QCOMPARE(back.toDateTime().offsetFromUtc(), variant.toDateTime().offsetFromUtc());
    }

    void tellsValuesApart_data()
    {
        const auto row = TestSupport::columns<QVariant, QVariant, bool>("a", "b", "isSame");
        const QDateTime utc(QDate(2024, 1, 2), QTime(3, 4, 5), Qt::UTC);
        row("close numbers", QVariant(0.1 + 0.2), QVariant(0.3), false);
        row("two zeros", QVariant(0.0), QVariant(-0.0), false);
        row("no number", QVariant(qQNaN()), QVariant(qQNaN()), true);
        row("one moment in two zones", QVariant(utc), QVariant(utc.toOffsetFromUtc(60)), false);
        row("number and its text", QVariant(1LL), QVariant(QStringLiteral("1")), false);
        row("null and empty text", QVariant(), QVariant(QString()), false);
        row("equal lists", QVariant(QStringList(lone())), QVariant(QStringList(lone())), true);
    }

    void tellsValuesApart()
    {
        QFETCH(QVariant, a);
        QFETCH(QVariant, b);
        QFETCH(bool, isSame);
        QCOMPARE(isSameValue(a, b), isSame);
    }

    void neverReplacesBytes()
    {
        const std::string latin = "Gr\xFC\xDF";
        QCOMPARE(toVariant(Value{Type::String, latin}), QVariant(QByteArray::fromStdString(latin)));
        QCOMPARE(toVariant(Value{Type::StringList, std::vector<std::string>{latin}}),
                 QVariant(QStringList(QStringLiteral("Gr\\xfc\\xdf"))));
    }

    void keepsTheInstantOfANamedZone()
    {
        const QTimeZone zone("Europe/Berlin");
        QVERIFY(zone.isValid());
        const QDateTime summer(QDate(2024, 7, 1), QTime(12, 0), zone);
        const Value value = toValue(summer);
        QCOMPARE(toText(value), std::string("2024-07-01T12:00:00+02:00"));
        QCOMPARE(toVariant(value).toDateTime(), summer);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, ValuesTest)

#include "values_test.moc"
