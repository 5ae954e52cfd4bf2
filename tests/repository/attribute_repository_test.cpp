#include "host/FrameworkCore/AppConfig/PathPattern.h"
#include "host/FrameworkCore/AppConfig/StatusCode.h"
#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <QDate>
#include <QRandomGenerator>
#include <QUrl>

#include <algorithm>
#include <atomic>
#include <iterator>
#include <map>
#include <thread>

using namespace FrameworkCore::AppConfig;

class AttributeRepositoryTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

private slots:
    void keepsTypeFromCreation_data()
    {
        const auto row = TestSupport::columns<QVariant, QVariant, int, QVariant>("created", "written",
                                                                                 "status", "expected");
        const QVariant text = QStringLiteral("5");
        row("int to text", text, QVariant(7), int(Success), QVariant(QStringLiteral("7")));
        row("text to int", QVariant(5), text, int(Success), QVariant(5LL));
        row("lossy", QVariant(5), QVariant(1.5), int(WrongType), QVariant(5LL));
        row("no number", QVariant(5), QVariant(QStringLiteral("x")), int(WrongType), QVariant(5LL));
        row("invalid empties", text, QVariant(), int(Success), QVariant(QString()));
        row("null takes a type", QVariant(), QVariant(true), int(Success), QVariant(true));
        row("url is text", QVariant(QUrl(QStringLiteral("http://a/b"))), text, int(Success), text);
        row("uint is signed", QVariant(7U), QVariant(-1), int(Success), QVariant(-1LL));
    }

    void keepsTypeFromCreation()
    {
        QFETCH(QVariant, created);
        QFETCH(QVariant, written);
        QFETCH(int, status);
        QFETCH(QVariant, expected);
        const QString path = QStringLiteral("a.b");
        QVERIFY(create(path, created));
        QCOMPARE(int(write(path, written).getStatus()), status);
        QCOMPARE(read(path), expected);
        QCOMPARE(read(path).userType(), expected.userType());
    }

    void honoursAccess()
    {
        QVERIFY(create("r", 1, 1));
        QVERIFY(create("w", 1, 2));
        QCOMPARE(write("r", 2), NotWritable);
        QCOMPARE(write("w", 2), Success);
        QVariant value = 9;
        QCOMPARE(repository->getReaderInterface()->readAttributeValue(QStringLiteral("w"), value, 0),
                 int(NotReadable));
        QVERIFY(!value.isValid());
        QVERIFY(!repository->getReaderInterface()->getAttribute(QStringLiteral("w"))->getValue().isValid());
        QVERIFY(create("w", QStringLiteral("3"), 3, 3));
        QCOMPARE(repository->getReaderInterface()->getAttribute(QStringLiteral("w"))->getAccessMode(),
                 AccessMode::WriteOnly);
        QCOMPARE(write("internal.repository.path_separator", QStringLiteral("/")), NotWritable);
    }

    void validates_data()
    {
        TestSupport::columns<QString, QString, bool>("rule", "value", "accepted");
        const auto row = [](const char* rule, const char* value, bool accepted) {
            QTest::addRow("%s: %s", rule, value)
                << QString::fromLatin1(rule) << QString::fromLatin1(value) << accepted;
        };
        row("not-empty", "", false);
        row("not-empty", " ", true);
        row("integer", "-12", true);
        row("integer", "1.5", false);
        row("integer", "", false);
        row("number", "1e3", true);
        row("number", "1,5", false);
        row("boolean", "true", true);
        row("boolean", "maybe", false);
        row("ipv4", "192.168.0.1", true);
        row("ipv4", "192.168.0.256", false);
        row("ipv4", "192.168.0.1.", false);
        row("ipv4", "1.2.3", false);
        row("ipv6", "::1", true);
        row("ipv6", "fe80::1:2", true);
        row("ipv6", "1:2:3:4:5:6:7:8", true);
        row("ipv6", "::ffff:1.2.3.4", true);
        row("ipv6", "1:2:3:4:5:6:7", false);
        row("ipv6", "1::2::3", false);
        row("ipv6", "1:2:3:4:5:6:7::8", false);
        row("ipv6", "12345::", false);
        row("ipv6", "::", true);
        row("ipv6", "", false);
        row("host-name", "bench-3.example.org", true);
        row("host-name", "-bench", false);
        row("host-name", "a..b", false);
        row("url", "https://example.org/a?b=c", true);
        row("url", "example.org", false);
        row("url", "http://", false);
        row("date-time", "2024-05-31T08:00:00Z", true);
        row("date-time", "31.5.2024", false);
        row("regular-expression([a-z]+(\\d))", "abc7", true);
        row("regular-expression([a-z]+)", "abc7", false);
        row("range(0,100)", "100", true);
        row("range(0,100)", "100.5", false);
        row("range(-1.5, 2)", "-1.5", true);
        row("range(0,100)", "x", false);
        row("one-of(red, green)", "green", true);
        row("one-of(red, green)", "blue", false);
    }

    void validates()
    {
        QFETCH(QString, rule);
        QFETCH(QString, value);
        QFETCH(bool, accepted);
        QVERIFY(create("old", QStringLiteral("before")));
        for (const QString& path : {QStringLiteral("old"), QStringLiteral("new.one")})
            QVERIFY(validations()->addValidation(path, rule) != 0);
        QCOMPARE(write("old", value), accepted ? Success : RefusedByValidation);
        const Outcome outcome = create("new.one", value);
        QCOMPARE(outcome.ok(), accepted);
        if (!accepted) {
            QVERIFY2(outcome.toText().contains(rule), qPrintable(outcome.toText()));
            QCOMPARE(read("old"), QVariant(QStringLiteral("before")));
            QVERIFY(!exists("new"));
        }
    }

    void boundsPathsAndPatterns()
    {
        const auto pathOf = [](int names) {
            return QStringList(QVector<QString>(names, QStringLiteral("n")).toList()).join(QLatin1Char('.'));
        };
        const QString deepest = pathOf(1024);
        const QString tooDeep = pathOf(1025);
        const QString tooLong = QString(70'000, QLatin1Char('x')) + QLatin1Char('.') + pathOf(1023);
        QVERIFY(create(deepest, 1));
        QCOMPARE(read(deepest), QVariant(1));
        for (const QString& path : {tooDeep, tooLong, pathOf(100'000)}) {
            const QString refusal = create(path, 1).toText();
            QVERIFY2(refusal.contains(QLatin1String("it has more than 1024 names")) && refusal.size() < 1000,
                     qPrintable(refusal.left(2000)));
            QCOMPARE(write(path, 1), InvalidPath);
            QCOMPARE(validations()->addValidation(path, QStringLiteral("integer")), 0);
            QVERIFY(!listen(path, [](auto&&...) {}));
            QVERIFY(!mountFile("ini", path, fileOf("a.ini")));
            QVERIFY(copy("n", path) != Success);
            QVERIFY(import(path, "json", "{\"a\": 1}") != Success);
            QVERIFY(!exists(path));
        }
        QVERIFY(!listen(QString(100'000, QLatin1Char('*')), [](auto&&...) {}));
        // What would become too deep at its new place.
        QVERIFY(create("b.c", 1));
        QVERIFY(copy("n", "b.d.e") != Success);
        QVERIFY(!exists("b.d"));
        QCOMPARE(remove("n"), Success);
        QVERIFY(!exists("n"));
    }

    void endsMatchingOfAnyExpression_data()
    {
        // refusal: a part of it; empty when the value is accepted
        const auto row = TestSupport::columns<QString, QByteArray, QString>("expression", "value", "refusal");
        const QByteArray letters = "ab";
        const QString verdict = QStringLiteral(" asks for ");
        const QString noVerdict = QStringLiteral(" could not be checked: ");
        row("long and valid", "(a|b)*c", letters.repeated(15'000) + "c", QString());
        row("long and not valid", "(a|b)*c", letters.repeated(15'000), verdict);
        row("very long", "(a|b)*c", letters.repeated(1'000'000) + "c", noVerdict);
        row("very long and plain", "[ab]*c", letters.repeated(1'000'000) + "c", QString());
        row("exponential", "(a|aa)+", QByteArray(100, 'a') + "!", noVerdict);
        row("nested repeats", "([a-z]+)*", QByteArray(100, 'a') + "!", noVerdict);
        row("back reference", "(.*)(.*)(.*)(.*)(.*)\\1\\2!", QByteArray(3000, 'a'), noVerdict);
    }

    void endsMatchingOfAnyExpression()
    {
        QFETCH(QString, expression);
        QFETCH(QByteArray, value);
        QFETCH(QString, refusal);
        const QString rule = QStringLiteral("regular-expression(%1)").arg(expression);
        QVERIFY(create("text", QString()));
        QVERIFY(validations()->addValidation(QStringLiteral("text"), rule) != 0);
        const Outcome outcome = write("text", QString::fromLatin1(value));
        QCOMPARE(outcome, refusal.isEmpty() ? Success : RefusedByValidation);
        if (!refusal.isEmpty())
            QVERIFY2(outcome.toText().contains(rule + QLatin1Char('\'') + refusal),
                     qPrintable(outcome.toText()));
    }

    void refusesUnknownValidations()
    {
        QVERIFY(create("a", 1));
        for (const char* name :
             {"", "prime", "range", "range(1)", "range(2,1)", "range(0,9", "range(nan,1)", "range(0,nan)",
              "regular-expression(()", "regular-expression(a)|(?:b)", "integer(3)"})
            QCOMPARE(validations()->addValidation(QStringLiteral("a"), QString::fromLatin1(name)), 0);
        QCOMPARE(validations()->addValidation(QStringLiteral("a..b"), QStringLiteral("integer")), 0);
        QCOMPARE(validations()->getValidationNames().size(), 12);
        QCOMPARE(validations()->getValidationsOf(QStringLiteral("a")), QStringList());
    }

    // What people are shown can be attached as it is, also before its attribute is there.
    void describesValidations()
    {
        QStringList examples;
        for (const auto& description : validations()->getValidationDescriptions()) {
            examples.append(description.example);
            QVERIFY2(!description.meaning.isEmpty(), qPrintable(description.example));
            QVERIFY(validations()->addValidation(QStringLiteral("a.b"), description.example) != 0);
        }
        QCOMPARE(examples.size(), 12);
        QVERIFY(examples.contains(QStringLiteral("range(0,100)")));
        QCOMPARE(validations()->getValidationsOf(QStringLiteral("a.b")), examples);
        QVERIFY(validations()->getValidationsOf(QStringLiteral("a")).isEmpty());
    }

    void findsPaths()
    {
        for (const char* path : {"app.net.ip", "app.net.port", "app.name", "apple", "lab.net.ip"})
            QVERIFY(create(QString::fromLatin1(path), 1));
        const auto find = [this](const char* pattern, Qt::CaseSensitivity sensitivity, bool topmost,
                                 int limit = -1) {
            return tree()
                ->findPaths({QString::fromLatin1(pattern), sensitivity, topmost, limit})
                .join(QLatin1Char(' '));
        };
        QCOMPARE(find("app*", Qt::CaseSensitive, false),
                 QStringLiteral("app apple app.net app.name app.net.ip app.net.port"));
        QCOMPARE(find("app*", Qt::CaseSensitive, true), QStringLiteral("app apple"));
        QCOMPARE(find("app.n*", Qt::CaseSensitive, true), QStringLiteral("app.net app.name"));
        QCOMPARE(find("APP.N*", Qt::CaseSensitive, true), QString());
        QCOMPARE(find("APP.N*", Qt::CaseInsensitive, true), QStringLiteral("app.net app.name"));
        QCOMPARE(find("*.ip", Qt::CaseSensitive, false), QStringLiteral("app.net.ip lab.net.ip"));
        QCOMPARE(find("app*", Qt::CaseSensitive, false, 3), QStringLiteral("app apple app.net"));
        QCOMPARE(find("app.net", Qt::CaseSensitive, false), QStringLiteral("app.net"));
        QCOMPARE(find("nowhere.a*", Qt::CaseSensitive, false), QString());
    }

    // Of many children a search looks at the beginnings of names first; it must find what a look at each path
    // finds, also when children came, went and got children of their own in between.
    void findsAmongManyChildren()
    {
        QRandomGenerator random(5);
        const QStringList letters{
            QStringLiteral("a"),  QStringLiteral("A"),  QStringLiteral("k"), QString(QChar(0x212A)),
            QString(QChar(0xE9)), QString(QChar(0xC9)), QStringLiteral("1"), QString::fromUtf8("\U00010428"),
            QStringLiteral("zz")};
        const auto randomName = [&] {
            QString name;
            for (int length = random.bounded(1, 10); length > 0; --length)
                name += letters.at(random.bounded(letters.size()));
            return name;
        };
        for (int step = 0; step < 6000; ++step) {
            const QString path = QLatin1String("big.") + randomName();
            if (random.bounded(4) == 0)
                tree()->removeTree(QLatin1String("big.") +
                                   tree()->getChildNames(QStringLiteral("big")).value(9));
            else
                create(random.bounded(3) == 0 ? path + QLatin1String(".leaf.") + randomName() : path, 1, 3,
                       3);
        }
        const QStringList all = tree()->findPaths({QStringLiteral("*")});
        for (int round = 0; round < 300; ++round) {
            const QString beginning = randomName();
            const QStringList patterns{QLatin1String("big.") + beginning + QLatin1Char('*'),
                                       QLatin1String("BIG.") + beginning + QLatin1String(".leaf*"),
                                       QLatin1String("*.") + beginning,
                                       QLatin1String("*.leaf*.") + beginning + QLatin1String("*a")};
            for (const QString& text : patterns) {
                for (const auto sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
                    const PathPattern pattern(text, sensitivity);
                    QStringList expected;
                    std::copy_if(all.begin(), all.end(), std::back_inserter(expected),
                                 [&pattern](const QString& path) { return pattern.matches(path); });
                    QCOMPARE(tree()->findPaths({text, sensitivity}), expected);
                }
            }
            QStringList beginnings;
            for (const auto& child : tree()->getChildrenBeginningWith(QStringLiteral("big"), beginning))
                beginnings.append(child.name);
            QStringList expected = tree()->getChildNames(QStringLiteral("big"));
            expected.erase(std::remove_if(expected.begin(), expected.end(),
                                          [&](const QString& name) { return !name.startsWith(beginning); }),
                           expected.end());
            QCOMPARE(beginnings, expected);
        }
    }

    void agreesWithReference()
    {
        QRandomGenerator random(11);
        std::map<QString, QString> reference;
        const auto randomPath = [&random] {
            QStringList names;
            for (int depth = random.bounded(1, 5); depth > 0; --depth)
                names.append(QString(QLatin1Char(char('a' + random.bounded(3)))));
            return names.join(QLatin1Char('.'));
        };
        for (int step = 0; step < 30000; ++step) {
            const QString path = randomPath();
            const QString value = QString::number(step);
            switch (random.bounded(4)) {
            case 0:
                QVERIFY(create(path, value, 3, 3));
                reference[path] = value;
                break;
            case 1:
                QCOMPARE(write(path, value) == Success, reference.count(path) == 1);
                if (reference.count(path) == 1)
                    reference[path] = value;
                break;
            case 2: {
                const QString prefix = path + QLatin1Char('.');
                std::size_t removed = 0;
                for (auto it = reference.begin(); it != reference.end();) {
                    const bool isBelow = it->first == path || it->first.startsWith(prefix);
                    removed += isBelow ? 1 : 0;
                    it = isBelow ? reference.erase(it) : std::next(it);
                }
                QCOMPARE(remove(path) == Success, removed > 0);
                break;
            }
            default: {
                const bool isThere = reference.count(path) == 1;
                QCOMPARE(read(path), isThere ? QVariant(reference[path]) : QVariant());
            }
            }
        }
        QStringList expectedPaths; // every attribute, and every group that leads to one
        for (const auto& [path, value] : reference) {
            for (int end = path.indexOf(QLatin1Char('.')); end >= 0;
                 end = path.indexOf(QLatin1Char('.'), end + 1))
                expectedPaths.append(path.left(end));
            expectedPaths.append(path);
        }
        expectedPaths.removeDuplicates();
        expectedPaths.sort();
        QStringList paths = tree()
                                ->findPaths({QStringLiteral("*")})
                                .filter(QRegularExpression(QStringLiteral("^(?!internal)")));
        paths.sort();
        QCOMPARE(paths, expectedPaths);
        for (const QString& path : qAsConst(paths))
            QCOMPARE(tree()->getChildCount(path), tree()->getChildNames(path).size());
    }

    // Threads that work on their own attributes, while others come and go, find every one of their writes
    // again.
    void servesThreads()
    {
        std::atomic<int> failures{0};
        std::vector<std::thread> threads;
        for (int number = 0; number < 4; ++number) {
            threads.emplace_back([&, number] {
                const QString own = QStringLiteral("t%1.value").arg(number);
                const QString shared = QStringLiteral("shared.x%1").arg(number % 2);
                failures += create(own, 0) ? 0 : 1;
                for (int step = 1; step < 2000; ++step) {
                    create(shared, step, 3, 3);
                    failures += write(own, step) == Success && read(own) == QVariant(qlonglong(step)) ? 0 : 1;
                    tree()->findPaths({QStringLiteral("*x*"), Qt::CaseSensitive, false, 5});
                    if (step % 16 == number)
                        remove("shared");
                }
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        QCOMPARE(failures.load(), 0);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, AttributeRepositoryTest)

#include "attribute_repository_test.moc"
