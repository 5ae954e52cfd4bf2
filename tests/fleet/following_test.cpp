#include "tests/fleet/FleetTest.h"
#include "tests/support/Columns.h"
#include "tests/support/TestFiles.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QSysInfo>
#include <QTemporaryDir>

#include <atomic>
#include <cmath>
#include <limits>
#include <set>
#include <thread>

using FrameworkCore::AppConfig::Interfaces::ConflictSide;

Q_DECLARE_METATYPE(ConflictSide)

// What machines that have mounted one store see of each other, and of other programs.

class FollowingTest : public FleetTest
{
    Q_OBJECT

private slots:
    void carriesValuesExactly_data()
    {
        const auto row = TestSupport::columns<QVariant>("value");
        row("bool", true);
        row("integer", qlonglong(-5));
        row("beyond the whole numbers of a double", qlonglong((1LL << 53) + 1));
        row("least", std::numeric_limits<qlonglong>::min());
        row("unsigned", std::numeric_limits<qulonglong>::max());
        row("double", 0.1);
        row("double that looks whole", 5.0);
        row("denormal", std::numeric_limits<double>::denorm_min());
        row("negative zero", -0.0);
        row("infinite", -std::numeric_limits<double>::infinity());
        row("empty text", QString::fromLatin1(""));
        row("text like a number", QStringLiteral("05"));
        row("text", QString::fromUtf8("a\n\"\\\t\u00e4 \U0001F600"));
        row("list", QStringList{QStringLiteral("a,b"), QString(), QStringLiteral("c")});
        row("empty list", QStringList());
        row("list of one", QStringList{QStringLiteral("a")});
        row("bytes", QByteArray("\0\xff\n", 3));
        row("date", QDate(2026, 2, 28));
        row("time", QTime(23, 59, 59, 7));
        row("date and time", QDateTime(QDate(2026, 11, 26), QTime(1, 2, 3, 4)));
        row("date and time of UTC", QDateTime(QDate(2026, 11, 26), QTime(1, 2, 3, 4), Qt::UTC));
        row("date and time of an offset",
            QDateTime(QDate(2026, 7, 26), QTime(1, 2, 3), Qt::OffsetFromUTC, 7200));
        row("null", QVariant());
    }

    // To one that follows, and to one that comes later.
    void carriesValuesExactly()
    {
        QFETCH(QVariant, value);
        FleetMachine writer(location());
        FleetMachine follower(location());
        QCOMPARE(refusalOf(writer.getMounted()), QString());
        QCOMPARE(refusalOf(follower.getMounted()), QString());
        const QString path = QStringLiteral("m.a.b");
        QCOMPARE(refusalOf(writer.create(path, value)), QString());
        QTRY_VERIFY(follower.exists(path));
        verifySame(follower.read(path), writer.read(path));
        verifySame(follower.read(path), value);
        FleetMachine later(location());
        verifySame(later.read(path), value);
        QVERIFY(later.unsaved().isEmpty());
    }

    void keepsNamesApart()
    {
        FleetMachine writer(location());
        const QStringList names{
            QStringLiteral("a"),       QStringLiteral("a.b"),  QStringLiteral("a.b.c"),
            QStringLiteral("a.bc"),    QStringLiteral("a-b"),  QStringLiteral("a%2Eb"),
            QStringLiteral("a/b"),     QStringLiteral("a b"),  QString::fromUtf8("\u00e4"),
            QStringLiteral("a.%2525"), QStringLiteral("A"),    QStringLiteral("a.0"),
            QStringLiteral("a._x_"),   QStringLiteral("a~.b"), QStringLiteral("\"a\"")};
        QStringList expected;
        for (const QString& name : names) {
            expected.append(QStringLiteral("m.") + name);
            QCOMPARE(refusalOf(writer.create(expected.last(), name)), QString());
        }
        QCOMPARE(refusalOf(writer.save()), QString());
        expected.sort();
        const FleetMachine later(location());
        QCOMPARE(later.paths(), expected);
        for (const QString& path : expected)
            QCOMPARE(later.read(path).toString(), path.mid(2));
    }

    // Once each, in order, and only what matches. Edits that the store has not got yet may become one.
    void notifiesOfWhatMatches()
    {
        FleetMachine writer(location());
        FleetMachine follower(location());
        QCOMPARE(refusalOf(writer.create(QStringLiteral("m.one.rate"), 1)), QString());
        QTRY_VERIFY(follower.exists(QStringLiteral("m.one.rate")));
        follower.listen(QStringLiteral("m.*.rate"));
        writer.write(QStringLiteral("m.one.rate"), 2);
        writer.create(QStringLiteral("m.one.other"), 3);
        writer.create(QStringLiteral("m.two.rate"), 4);
        QCOMPARE(refusalOf(writer.save()), QString());
        writer.write(QStringLiteral("m.one.other"), 5);
        writer.remove(QStringLiteral("m.one"));
        QCOMPARE(refusalOf(writer.save()), QString());
        writer.write(QStringLiteral("m.two.rate"), 6);
        const QStringList expected{QStringLiteral("m.one.rate = 2"), QStringLiteral("m.two.rate = 4"),
                                   QStringLiteral("m.one.rate removed"), QStringLiteral("m.two.rate = 6")};
        QTRY_COMPARE(follower.getHeard().size(), expected.size());
        QCOMPARE(follower.getHeard(), expected);
        QVERIFY(!follower.exists(QStringLiteral("m.one.other")));
    }

    void notifiesTheWriterOnce()
    {
        FleetMachine writer(location());
        FleetMachine follower(location());
        writer.listen(QStringLiteral("m.*"));
        writer.create(QStringLiteral("m.a"), 1);
        for (int value = 2; value <= 20; ++value)
            QCOMPARE(refusalOf(writer.write(QStringLiteral("m.a"), value)), QString());
        QTRY_COMPARE(follower.read(QStringLiteral("m.a")).toInt(), 20);
        writer.remove(QStringLiteral("m.a"));
        QTRY_VERIFY(!follower.exists(QStringLiteral("m.a")));
        // What the follower writes next comes after all echoes.
        follower.create(QStringLiteral("m.end"), 1);
        QTRY_VERIFY(writer.exists(QStringLiteral("m.end")));
        QCOMPARE(writer.getHeard().size(), 22);
        QCOMPARE(writer.getHeard().at(20), QStringLiteral("m.a removed"));
    }

    // The store's own command line reads what Vantry writes, and Vantry follows what it writes.
    void meetsOtherPrograms()
    {
        FleetMachine machine(location());
        machine.create(QStringLiteral("m.a.b"), 5);
        QCOMPARE(refusalOf(machine.save()), QString());
        const QByteArray printed =
            server.control({QStringLiteral("get"), QStringLiteral("--print-value-only"),
                            QString::fromStdString(keyOf("a.b"))});
        QVERIFY2(printed.contains("\"t\":\"i64\"") && printed.contains("5"), printed.constData());
        machine.listen(QStringLiteral("m.*"));
        outside().put(keyOf("a.b"), R"({"t":"i64","v":"7"})");
        outside().put(keyOf("a.c"), R"({"t":"s","v":"x"})");
        outside().remove(keyOf("a.b"));
        outside().put("vantry/1/" + store.toStdString() + "x/a/a.b", R"({"t":"i64","v":"8"})");
        outside().put(keyOf("a.d"), R"({"t":"b","v":true})");
        QTRY_VERIFY(machine.exists(QStringLiteral("m.a.d")));
        QCOMPARE(machine.getHeard(),
                 QStringList({QStringLiteral("m.a.b = 7"), QStringLiteral("m.a.c = x"),
                              QStringLiteral("m.a.b removed"), QStringLiteral("m.a.d = true")}));
    }

    // What is no value of Vantry's is shown and never changed.
    void leavesForeignValuesAlone_data()
    {
        const auto row = TestSupport::columns<QByteArray>("value");
        row("no json", "plain text");
        row("nothing", "");
        row("an unknown type", R"({"t":"quaternion","v":[1,2,3,4]})");
        row("another type than its value", R"({"t":"i64","v":"x"})");
        row("no UTF-8", "\xff\xfe");
        row("json that is no object", "[1]");
    }

    void leavesForeignValuesAlone()
    {
        QFETCH(QByteArray, value);
        outside().put(keyOf("a"), value.toStdString());
        FleetMachine machine(location());
        QCOMPARE(refusalOf(machine.getMounted()), QString());
        QVERIFY(!machine.write(QStringLiteral("m.a"), 1).ok());
        QCOMPARE(refusalOf(machine.create(QStringLiteral("m.b"), 1)), QString());
        QCOMPARE(refusalOf(machine.save()), QString());
        QCOMPARE(outside().get(keyOf("a")).value, value.toStdString());
        QVERIFY(outside().get(keyOf("b")).revision > 0);
    }

    // Of two machines that write one attribute all the time, each knows which of its values were stored.
    void letsOneOfTwoWritersWin()
    {
        FleetMachine first(location());
        FleetMachine second(location());
        const QString path = QStringLiteral("m.count");
        first.create(path, 0);
        QTRY_VERIFY(second.exists(path));
        constexpr int attempts = 300;
        const auto writeAll = [&path](FleetMachine& machine, qlonglong from,
                                      std::multiset<qlonglong>& stored) {
            for (qlonglong value = from; value < from + attempts; ++value) {
                if (machine.write(path, value).ok() && machine.save().ok())
                    stored.insert(value);
                else
                    machine.getRepository().getChangesInterface()->resolveConflicts(path,
                                                                                    ConflictSide::Theirs);
            }
        };
        std::multiset<qlonglong> stored{0};
        std::multiset<qlonglong> ofSecond;
        std::thread other([&] { writeAll(second, 1001, ofSecond); });
        writeAll(first, 1, stored);
        other.join();
        const std::size_t lost = 2 * attempts + 1 - stored.size() - ofSecond.size();
        QVERIFY(stored.size() > 1 && !ofSecond.empty());
        stored.insert(ofSecond.begin(), ofSecond.end());
        std::multiset<qlonglong> history;
        for (const auto& change : outside().readHistory(prefix()))
            history.insert(FleetTest::valueOf(change).toLongLong());
        QCOMPARE(stored, history);
        QVERIFY2(lost > 0, "there was no race");
        QTRY_COMPARE(first.read(path), second.read(path));
    }

    // Whoever saves is not kept by somebody who never ends.
    void savesBesideOneWhoWritesOn()
    {
        FleetMachine machine(location());
        QCOMPARE(refusalOf(machine.create(QStringLiteral("m.busy"), 0)), QString());
        std::atomic<bool> isOver{false};
        std::thread other([&] {
            for (int value = 1; !isOver; ++value)
                machine.write(QStringLiteral("m.busy"), value);
        });
        QStringList refusals;
        for (int value = 1; value <= 20; ++value) {
            const QString path = QStringLiteral("m.k%1").arg(value);
            machine.create(path, value);
            refusals.append(refusalOf(machine.save()));
            if (valueOf(outside().get(prefix() + path.mid(2).toStdString()).value).toInt() != value)
                refusals.append(path);
        }
        isOver = true;
        other.join();
        refusals.removeAll(QString());
        QCOMPARE(refusals, QStringList());
    }

    // What was written meanwhile, and by nobody noticed, wins; whoever lost decides what shall be.
    void tellsTheWinnersValue_data()
    {
        const auto row = TestSupport::columns<ConflictSide, int>("side", "result");
        row("mine", ConflictSide::Mine, 2);
        row("theirs", ConflictSide::Theirs, 7);
        row("base", ConflictSide::Base, 1);
    }

    void tellsTheWinnersValue()
    {
        QFETCH(ConflictSide, side);
        QFETCH(int, result);
        FleetMachine machine(location());
        const QString path = QStringLiteral("m.a");
        machine.create(path, 1);
        QCOMPARE(refusalOf(machine.save()), QString());
        Outcome outcome;
        for (int attempt = 0; attempt < 50 && outcome.ok(); ++attempt) { // until the other is first
            QCOMPARE(refusalOf(machine.write(path, 1)), QString());
            QCOMPARE(refusalOf(machine.save()), QString());
            server.freeze(); // so that news cannot come before the edit
            QCOMPARE(refusalOf(machine.write(path, 2)), QString());
            std::thread winner([this] { outside().put(keyOf("a"), R"({"t":"i64","v":"7"})"); });
            server.thaw();
            winner.join();
            outcome = machine.save();
            if (outcome.ok())
                QTRY_COMPARE(machine.read(path).toInt(), 7);
        }
        QVERIFY2(!outcome.ok(), "the other was never first");
        QVERIFY2(outcome.toText().contains(QLatin1String("'7'")), qPrintable(outcome.toText()));
        QCOMPARE(machine.read(path).toInt(), 2);
        QCOMPARE(machine.unsaved().size(), 1);
        QVERIFY(machine.unsaved().first().isConflict);
        QCOMPARE(machine.unsaved().first().before.toInt(), 7);
        QCOMPARE(machine.unsaved().first().base.toInt(), 1);
        QCOMPARE(refusalOf(machine.getRepository().getChangesInterface()->resolveConflicts(path, side)),
                 QString());
        QCOMPARE(refusalOf(machine.save()), QString());
        QCOMPARE(machine.read(path).toInt(), result);
        QVERIFY(outside().get(keyOf("a")).value.find('"' + std::to_string(result) + '"') !=
                std::string::npos);
    }

    void refusesWhatTheStoreCannotHold()
    {
        FleetMachine machine(location());
        const Outcome outcome = machine.create(QStringLiteral("m.large"), QString(1600000, QLatin1Char('x')));
        QVERIFY(!outcome.ok());
        QVERIFY2(outcome.toText().contains(QLatin1String("m.large")), qPrintable(outcome.toText()));
        QVERIFY(!machine.exists(QStringLiteral("m.large")));
        QCOMPARE(refusalOf(machine.create(QStringLiteral("m.small"), QString(900000, QLatin1Char('x')))),
                 QString());
        QCOMPARE(refusalOf(machine.save()), QString());
        QCOMPARE(outside().readAll(prefix()).size(), std::size_t(1));
    }

    // They could be exported to no file.
    void refusesNamesThatFilesCannotHave_data()
    {
        const auto row = TestSupport::columns<QString>("name");
        row("a semicolon", "a;b");
        row("a percent sign", "group.50%");
        row("a line break", "a\nb");
        row("below another", "a%zz.b");
    }

    void refusesNamesThatFilesCannotHave()
    {
        QFETCH(QString, name);
        FleetMachine machine(location());
        const QString path = QStringLiteral("m.") + name;
        const QString text = machine.create(path, 1).toText();
        QVERIFY2(text.contains(QLatin1String("not one that files can have")), qPrintable(text));
        QVERIFY(!machine.exists(path));
        QVERIFY(machine.unsaved().isEmpty());
    }

    void refusesWritesWhereItMayOnlyRead()
    {
        FleetMachine writer(location());
        writer.create(QStringLiteral("m.a"), 1);
        QCOMPARE(refusalOf(writer.save()), QString());
        FleetMachine reader(location(), AccessMode::ReadOnly);
        QCOMPARE(reader.read(QStringLiteral("m.a")).toInt(), 1);
        QCOMPARE(reader.write(QStringLiteral("m.a"), 2).getStatus(), FrameworkCore::AppConfig::NotWritable);
        writer.write(QStringLiteral("m.a"), 3);
        QTRY_COMPARE(reader.read(QStringLiteral("m.a")).toInt(), 3);
    }

    // More than one transaction of the server takes.
    void storesSubtreesAtOnce_data()
    {
        const auto row = TestSupport::columns<int>("count");
        row("one transaction", 128);
        row("one more", 129);
        row("many", 1000);
    }

    void storesSubtreesAtOnce()
    {
        QFETCH(int, count);
        FleetMachine writer(location());
        FleetMachine follower(location());
        QByteArray text;
        for (int i = 0; i < count; ++i)
            text += "g" + QByteArray::number(i / 10) + ".k" + QByteArray::number(i % 10) + " = " +
                    QByteArray::number(i) + '\n';
        const auto transfer = writer.getRepository().getTransferInterface();
        QCOMPARE(refusalOf(transfer->importTree(QStringLiteral("m.in"), QStringLiteral("txt"), text)),
                 QString());
        QCOMPARE(refusalOf(writer.save()), QString());
        QCOMPARE(outside().readAll(prefix()).size(), std::size_t(count));
        QTRY_COMPARE(follower.paths().size(), count);
        QCOMPARE(follower.paths(), writer.paths());
        QCOMPARE(refusalOf(transfer->moveTree(QStringLiteral("m.in"), QStringLiteral("m.out"))), QString());
        QCOMPARE(refusalOf(writer.save()), QString());
        QTRY_COMPARE(follower.paths(), writer.paths());
        QCOMPARE(refusalOf(writer.remove(QStringLiteral("m.out"))), QString());
        QCOMPARE(refusalOf(writer.save()), QString());
        QTRY_COMPARE(follower.paths().size(), 0);
        QCOMPARE(outside().readAll(prefix()).size(), std::size_t(0));
    }

    // Of a store that is opened in pages.
    void tellsHowFarItIs()
    {
        constexpr int count = 30000;
        constexpr int inTransaction = 100;
        for (int first = 0; first < count; first += inTransaction) {
            EtcdClient::Pairs pairs;
            for (int i = first; i < first + inTransaction; ++i)
                pairs.emplace_back(keyOf("k") + std::to_string(i), R"({"t":"i64","v":"1"})");
            QVERIFY(outside().commit(pairs) > 0);
        }
        const auto repository = Repository::AttributeRepository::create();
        const auto backends = repository->getBackendInterface();
        std::atomic<bool> isOver{false};
        std::thread opening([&] {
            backends->mount(QStringLiteral("etcd"), QStringLiteral("m"),
                            {location(), QString(), AccessMode::ReadWrite}, 2);
            isOver = true;
        });
        std::set<int> told;
        while (!isOver) {
            const auto information = backends->getBackendInformation(QStringLiteral("m"));
            const auto progress =
                information ? information->getProgress() : decltype(information->getProgress())();
            if (progress.total >= count)
                told.insert(progress.done);
        }
        opening.join();
        QVERIFY(told.size() > 2);
        QVERIFY(*told.rbegin() <= count + 1);
        QCOMPARE(repository->getTreeInterface()->getChildCount(QStringLiteral("m")), count);
        QCOMPARE(backends->getBackendInformation(QStringLiteral("m"))->getProgress().total, 0);
    }

    void undoesInTheStore()
    {
        FleetMachine writer(location());
        FleetMachine follower(location());
        writer.create(QStringLiteral("m.a"), 1);
        const auto history = writer.getRepository().getHistoryInterface();
        history->recordThisThread();
        writer.write(QStringLiteral("m.a"), 2);
        QTRY_COMPARE(follower.read(QStringLiteral("m.a")).toInt(), 2);
        QCOMPARE(refusalOf(history->undo()), QString());
        QCOMPARE(refusalOf(writer.save()), QString());
        QTRY_COMPARE(follower.read(QStringLiteral("m.a")).toInt(), 1);
    }

    // A file into the store, and from there, at another machine, into a file.
    void copiesFilesThere_data()
    {
        const auto row = TestSupport::columns<QString, QByteArray>("type", "text");
        row("ini", "ini", "# @type text\na = 5\nb = 1.5\n\n[c]\nd = true\ne = x y\n");
        row("json", "json", R"({"a": 5, "b": 1.50, "c": {"d": [true, null], "e": ["x", "y"], "f": "5"}})");
        row("toml", "toml", "a = 5\nb = 2026-11-26\n[c]\nd = [1, 2]\ne = \"x\"\n");
    }

    void copiesFilesThere()
    {
        QFETCH(QString, type);
        QFETCH(QByteArray, text);
        const QTemporaryDir folder;
        const QString file = TestSupport::writeFile(folder.filePath(QStringLiteral("f.") + type), text);
        FleetMachine from(location());
        FleetMachine to(location());
        const auto mountFile = [&](const FleetMachine& machine, const QString& name) {
            return refusalOf(machine.getRepository().getBackendInterface()->mount(
                type, QStringLiteral("f"), {name, QString(), AccessMode::ReadWrite}, 2));
        };
        QCOMPARE(mountFile(from, file), QString());
        QCOMPARE(refusalOf(from.getRepository().getTransferInterface()->copyTree(QStringLiteral("f"),
                                                                                 QStringLiteral("m.copy"))),
                 QString());
        QCOMPARE(refusalOf(from.save()), QString());
        QTRY_COMPARE(to.paths(), from.paths());
        const auto values = [](const FleetMachine& machine, const QString& root) {
            QStringList lines;
            const QStringList found =
                machine.getRepository().getTreeInterface()->findPaths({root + QStringLiteral(".*")});
            for (const QString& path : found) {
                if (machine.exists(path))
                    lines.append(QStringLiteral("%1 = %2 %3")
                                     .arg(path.mid(root.size()), QLatin1String(machine.read(path).typeName()),
                                          FrameworkCore::AppConfig::Outcome::shownValue(machine.read(path))));
            }
            lines.sort();
            return lines;
        };
        QTRY_COMPARE(values(to, QStringLiteral("m.copy")), values(from, QStringLiteral("f")));
        QByteArray exported;
        QCOMPARE(refusalOf(to.getRepository().getTransferInterface()->exportTree(QStringLiteral("m.copy"),
                                                                                 type, exported)),
                 QString());
        QCOMPARE(
            mountFile(to, TestSupport::writeFile(folder.filePath(QStringLiteral("g.") + type), exported)),
            QString());
        QCOMPARE(values(to, QStringLiteral("f")), values(from, QStringLiteral("f")));
    }

    void showsWhoIsThere()
    {
        const std::string sessions = "vantry/1/" + store.toStdString() + "/s/";
        const FleetMachine stays(location());
        const auto users = [&stays] {
            return stays.read(QStringLiteral("internal.backends.users.m")).toStringList();
        };
        QTRY_COMPARE(users().size(), 1);
        QVERIFY2(users().first().contains(QSysInfo::machineHostName()), qPrintable(users().first()));
        {
            const FleetMachine goes(location());
            QTRY_COMPARE(users().size(), 2);
            QVERIFY(stays.description().contains(users().last()));
            QTRY_COMPARE(goes.read(QStringLiteral("internal.backends.users.m")).toStringList().size(), 2);
        }
        QTRY_COMPARE(users().size(), 1);
        QCOMPARE(outside().readAll(sessions).size(), std::size_t(1));
    }

private:
    // Also of the same type and zone, and no other zero.
    static void verifySame(const QVariant& actual, const QVariant& expected)
    {
        QCOMPARE(actual.typeName(), expected.typeName());
        QCOMPARE(actual, expected);
        if (expected.type() == QVariant::Double)
            QCOMPARE(std::signbit(actual.toDouble()), std::signbit(expected.toDouble()));
        if (expected.type() == QVariant::DateTime) {
            QCOMPARE(actual.toDateTime().timeSpec(), expected.toDateTime().timeSpec());
            QCOMPARE(actual.toDateTime().offsetFromUtc(), expected.toDateTime().offsetFromUtc());
        }
    }
};

VANTRY_TEST_MAIN(QCoreApplication, FollowingTest)
#include "following_test.moc"
