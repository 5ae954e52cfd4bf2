#include "tests/support/ModelText.h"
#include "tests/support/RepositoryTest.h"

#include <QMap>
#include <QRandomGenerator>

using namespace FrameworkCore::AppConfig;

namespace {

const QHash<QString, QByteArray> samples{
    {QStringLiteral("json"),
     "{ // first\n  \"r\": {\"a\": 1, \"b\": {\"c\": \"x\\u0041\"},\n    \"d\": 1.50}, /* last */\n}"},
    {QStringLiteral("ini"), "; first\r\n[r]\r\na : 1\r\nd= 1.50 ; why\r\n\r\n[r.b]\r\nc = \"x\"\r\n# last"},
    {QStringLiteral("xml"),
     "<?xml version='1.0'?>\n<r>\n  <a>1</a><!-- first -->\n  <b >\n    <c>x&#65;</c>\n"
     "  </b>\n  <d>1.50</d>\n</r>\n<!-- last -->\n"},
    {QStringLiteral("txt"), "# first\nr.a = 1\n\nr.b.c   = x\nr.d=1.50\n# last"}};

} // namespace

// A repository and a map of its values go the same random way, over undo and redo, saving and reloading.
class RandomWalkTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    using Values = QMap<QString, QVariant>;

    struct State
    {
        Values values;
        QStringList content; // with groups, which the values know nothing of
    };

    QRandomGenerator random;
    State now;
    QVector<State> undone; // what redo leads to, the next one last
    QVector<State> done;   // what undo leads to
    int edits = 0;
    int refusals = 0;

    QString anyName()
    {
        static const QStringList names = TestSupport::words("a b c d e @f two%20words");
        return names.at(random.bounded(names.size()));
    }

    QString anyNode()
    {
        const QStringList found = paths("m.*");
        return random.bounded(6) == 0 || found.isEmpty() ? QStringLiteral("m.r")
                                                         : found.at(random.bounded(found.size()));
    }

    QString anyPath()
    {
        const QString path = anyNode() + QLatin1Char('.') + anyName();
        return random.bounded(4) == 0 ? path + QLatin1Char('.') + anyName() : path;
    }

    QVariant anyValue(int type)
    {
        static const QStringList texts{QString(),
                                       QStringLiteral("5"),
                                       QStringLiteral(" x; #"),
                                       QStringLiteral("a\nb"),
                                       QStringLiteral("\"<q>\""),
                                       QStringLiteral("long text\\")};
        switch (type) {
        case QMetaType::Bool:
            return random.bounded(2) == 0;
        case QMetaType::LongLong:
            return qlonglong(random.bounded(1000)) - 500;
        case QMetaType::Double:
            return random.bounded(9) + 0.25;
        default:
            return texts.at(random.bounded(texts.size()));
        }
    }

    static bool isAtOrBelow(const QString& path, const QString& root)
    {
        return path == root || path.startsWith(root + QLatin1Char('.'));
    }

    static void take(Values& values, const QString& root)
    {
        for (auto each = values.begin(); each != values.end();)
            each = isAtOrBelow(each.key(), root) ? values.erase(each) : std::next(each);
    }

    // Done to the repository, and to the values when it was not refused.
    Outcome editOnce(Values& values)
    {
        static const int types[] = {QMetaType::Bool, QMetaType::LongLong, QMetaType::Double,
                                    QMetaType::QString};
        const QString from = anyNode();
        const QString to = anyPath();
        const int kind = random.bounded(10);
        Outcome outcome;
        if (kind < 3) {
            const QVariant value = anyValue(types[random.bounded(4)]);
            outcome = create(to, value);
            values[to] = value;
        } else if (kind < 6) {
            const QVariant value = anyValue(values.value(from).userType());
            outcome = write(from, value);
            values[from] = value;
        } else if (kind < 8) {
            outcome = remove(from);
            take(values, from);
        } else {
            outcome = kind == 8 ? copy(from, to) : move(from, to);
            Values copied;
            for (auto each = values.cbegin(); each != values.cend(); ++each) {
                if (isAtOrBelow(each.key(), from))
                    copied[to + each.key().mid(from.size())] = each.value();
            }
            if (kind == 9)
                take(values, from);
            for (auto each = copied.cbegin(); each != copied.cend(); ++each)
                values[each.key()] = each.value();
        }
        return outcome;
    }

    void edit()
    {
        Values values = now.values;
        if (!editOnce(values)) {
            ++refusals;
            return;
        }
        const QStringList after = content();
        if (after == now.content)
            return; // no step either
        ++edits;
        done.append(now);
        undone.clear();
        now = {values, after};
    }

    void replay(QVector<State>& from, QVector<State>& to, const Outcome& outcome)
    {
        QCOMPARE(outcome, from.isEmpty() ? NotFound : Success);
        if (from.isEmpty())
            return;
        to.append(now);
        now = from.takeLast();
    }

    // What the repository holds below its backend, and another one that reads the saved file.
    void compare(bool isAfresh)
    {
        const auto own = repository;
        if (isAfresh) {
            restart();
            QVERIFY(mountFile(type(), "m", fileOf("m"), AccessMode::ReadOnly));
        }
        Values values;
        for (const QString& path : paths("m.*")) {
            const QVariant value = read(path);
            if (value.isValid())
                values[path] = value;
        }
        QStringList lines = content();
        if (isAfresh)
            lines.replaceInStrings(QRegularExpression(QStringLiteral(" 1 (\\d+)$")),
                                   QStringLiteral(" 3 \\1"));
        repository = own;
        QCOMPARE(values, now.values);
        QCOMPARE(TestSupport::firstDifference(lines, now.content), QString());
    }

    static QString type()
    {
        QFETCH(QString, type);
        return type;
    }

private slots:
    void walks_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<quint32>("seed");
        for (auto sample = samples.begin(); sample != samples.end(); ++sample) {
            for (quint32 seed = 1; seed <= 3; ++seed)
                QTest::addRow("%s %u", qPrintable(sample.key()), seed) << sample.key() << seed;
        }
    }

    void walks()
    {
        QFETCH(quint32, seed);
        random.seed(seed);
        history()->recordThisThread();
        QVERIFY(mount(type(), "m", samples[type()]));
        now = {{}, content()};
        for (const QString& path : paths("m.*")) {
            if (tree()->getNodeInformation(path).isAttribute)
                now.values[path] = read(path);
        }
        done.clear();
        undone.clear();
        edits = refusals = 0;
        for (int step = 0; step < 250; ++step) {
            const int kind = random.bounded(10);
            if (kind < 6)
                edit();
            else if (kind == 6)
                replay(done, undone, history()->undo());
            else if (kind == 7)
                replay(undone, done, history()->redo());
            else if (kind == 8)
                QVERIFY(reload());
            else
                QVERIFY(save());
            compare(kind == 9);
            if (QTest::currentTestFailed())
                QFAIL(qPrintable(QStringLiteral("step %1").arg(step)));
        }
        // A walk that gets nowhere, or is never refused anything, tests nothing.
        QVERIFY2(edits > 40 && refusals > 5, qPrintable(QStringLiteral("%1, %2").arg(edits).arg(refusals)));
        while (!done.isEmpty())
            replay(done, undone, history()->undo());
        compare(false);
        QCOMPARE(saved(), samples[type()]);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, RandomWalkTest)

#include "random_walk_test.moc"
