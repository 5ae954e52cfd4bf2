#include "repository/fleet/SharedEntries.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <algorithm>
#include <optional>
#include <random>
#include <utility>

using FrameworkCore::Values::Type;
using FrameworkCore::Values::Value;
using namespace Repository;
using Arrival = SharedEntries::Arrival;
using Outgoing = SharedEntries::Outgoing;
using Kind = DocumentChange::Kind;

namespace {

Value text(const std::string& value)
{
    return {Type::String, value};
}

// A store as others see it: one order of revisions, writes that compare, and all events since it began.
class ModelStore
{
public:
    struct Event
    {
        Arrival arrival;
        int writer;
    };

    // The revision, or 0 where something was not as expected.
    std::int64_t write(const std::vector<Outgoing>& changes, int writer)
    {
        const auto isExpected = [this](const Outgoing& change) {
            return revisionOf(change.path) == change.expected;
        };
        if (!std::all_of(changes.begin(), changes.end(), isExpected))
            return 0;
        ++revision;
        for (const Outgoing& change : changes) {
            SharedEntries::Stored stored{change.value, change.value ? revision : 0, false};
            if (change.value)
                held[change.path] = {stored, writer};
            else
                held.erase(change.path);
            events.push_back({{change.path, stored, revision, false}, writer});
        }
        return revision;
    }

    std::int64_t revisionOf(const std::string& path) const
    {
        const auto found = held.find(path);
        return found == held.end() ? 0 : found->second.first.revision;
    }

    // What is there, as a writer is told that was refused.
    Arrival found(const std::string& path, int reader) const
    {
        const auto present = held.find(path);
        if (present == held.end())
            return {path, {}, revision, false};
        const auto& [stored, writer] = present->second;
        return {path, stored, stored.revision, writer == reader};
    }

    std::vector<Arrival> all(int reader) const
    {
        std::vector<Arrival> list;
        for (const auto& [path, entry] : held)
            list.push_back({path, entry.first, entry.first.revision, entry.second == reader});
        return list;
    }

    std::map<std::string, std::pair<SharedEntries::Stored, int>> held;
    std::vector<Event> events;
    std::int64_t revision = 0;
};

// One that has the store open, and what its tree shows, which follows the changes that it is told of.
class Desk
{
public:
    Desk(ModelStore& sharedStore, int ownNumber) : store(sharedStore), number(ownNumber) {}

    void edit(const std::string& path, const std::optional<Value>& value)
    {
        entries.edit(path, value);
        if (value)
            shown[path] = *value;
        else
            shown.erase(path);
    }

    // A request goes to the store, which may be lost on the way.
    void depart(bool isLost)
    {
        if (reply)
            return;
        entries.dropUnwanted(outgoing);
        if (outgoing.empty())
            outgoing = entries.takeOutgoing(3, 10'000);
        if (outgoing.empty() || isLost)
            return;
        reply = Reply{store.write(outgoing, number), {}};
        for (const Outgoing& sent : outgoing)
            reply->found.push_back(store.found(sent.path, number));
    }

    // Its reply comes, which may be lost, too.
    void arrive(bool isLost)
    {
        const auto arrived = std::exchange(reply, std::nullopt);
        if (!arrived || isLost)
            return;
        std::vector<Arrival> found;
        for (const Arrival& each : arrived->found) {
            if (arrived->revision == 0 && entries.getEdits().count(each.path) > 0)
                found.push_back(each);
        }
        entries.take(found);
        entries.settle(outgoing, arrived->revision);
        outgoing.clear();
    }

    void send(bool losesRequest = false, bool losesReply = false)
    {
        depart(losesRequest);
        arrive(losesReply);
    }

    // The events of so many revisions.
    void receive(int revisions)
    {
        for (; revisions > 0 && next < store.events.size(); --revisions) {
            std::vector<Arrival> arrivals;
            const std::int64_t revision = store.events[next].arrival.revision;
            for (; next < store.events.size() && store.events[next].arrival.revision == revision; ++next) {
                arrivals.push_back(store.events[next].arrival);
                arrivals.back().isOwn = arrivals.back().stored.value && store.events[next].writer == number;
            }
            if (entries.concernsEntries(arrivals))
                show(entries.take(arrivals));
            else
                entries.take(arrivals);
        }
    }

    // As after a gap that cannot be closed.
    void reload()
    {
        show(entries.takeAll(store.all(number)));
        next = store.events.size();
    }

    void resolve(const std::string& path, bool keepsMine)
    {
        if (keepsMine)
            entries.keepEdits(path);
        else
            show(entries.revert({path}));
    }

    void show(const std::vector<DocumentChange>& changes)
    {
        for (const DocumentChange& change : changes) {
            if (change.after.type == Type::Group && change.before.type == Type::Group)
                continue;
            const auto known = shown.find(change.path);
            isConsistent = isConsistent && (known != shown.end()) == (change.kind != Kind::Created);
            if (change.kind == Kind::Removed)
                shown.erase(change.path);
            else
                shown[change.path] = change.after;
        }
    }

    std::map<std::string, Value> contents() const
    {
        std::map<std::string, Value> values;
        entries.visit([&](const Documents::Entry& entry) {
            if (entry.value.type != Type::Group)
                values[entry.path] = entry.value;
        });
        return values;
    }

    ModelStore& store; // not owned
    const int number;
    SharedEntries entries;
    std::map<std::string, Value> shown;
    std::vector<Outgoing> outgoing;
    struct Reply
    {
        std::int64_t revision;
        std::vector<Arrival> found;
    };
    std::optional<Reply> reply; // on its way
    std::size_t next = 0;
    bool isConsistent = true; // with what it was told to show
};

QString changedPaths(const std::vector<DocumentChange>& changes)
{
    QStringList paths;
    for (const DocumentChange& change : changes)
        paths.append(QLatin1Char(change.kind == Kind::Removed ? '-' : '+') +
                     QString::fromStdString(change.path));
    return paths.join(QLatin1Char(' '));
}

} // namespace

class SharedEntriesTest : public QObject
{
    Q_OBJECT

private slots:
    // Several desks edit, in batches and alone, lose requests and replies, reload, and resolve conflicts; in
    // the end all show what the store holds.
    void convergesWhateverIsLost_data()
    {
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 1; seed <= 60; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }

    void convergesWhateverIsLost()
    {
        QFETCH(unsigned, seed);
        std::mt19937 random(seed);
        const auto below = [&random](unsigned bound) { return unsigned(random() % bound); };
        const std::vector<std::string> paths{"a", "a.b", "a.b.c", "a-x", "d", "d.e", "d.f"};
        ModelStore store;
        std::vector<std::unique_ptr<Desk>> desks;
        for (int number = 0; number < 3; ++number)
            desks.push_back(std::make_unique<Desk>(store, number));
        const auto editOne = [&](Desk& desk) {
            const std::string& path = paths[below(unsigned(paths.size()))];
            desk.edit(path, below(4) == 0 ? std::nullopt : std::optional(text(std::to_string(below(5)))));
        };
        for (int step = 0; step < 400; ++step) {
            Desk& desk = *desks[below(3)];
            switch (below(8)) {
            case 0:
            case 1:
                editOne(desk);
                break;
            case 2:
                desk.entries.beginBatch();
                for (unsigned count = 1 + below(5); count > 0; --count)
                    editOne(desk);
                desk.entries.endBatch();
                break;
            case 3:
                desk.depart(below(4) == 0);
                break;
            case 4:
                desk.arrive(below(4) == 0);
                break;
            case 5:
            case 6:
                desk.receive(1 + int(below(3)));
                break;
            default:
                if (below(4) == 0)
                    desk.reload();
                else
                    desk.resolve(paths[below(unsigned(paths.size()))], below(2) == 0);
            }
            QVERIFY(desk.isConsistent);
            QVERIFY(desk.shown == desk.contents());
        }
        for (int round = 0; round < 50; ++round) {
            for (const auto& desk : desks) {
                desk->arrive(false);
                desk->receive(1000);
                desk->resolve({}, true);
                desk->send();
            }
        }
        std::map<std::string, Value> held;
        for (const auto& [path, entry] : store.held)
            held[path] = *entry.first.value;
        for (const auto& desk : desks) {
            QVERIFY(desk->entries.getEdits().empty());
            QVERIFY(!desk->entries.hasConflicts());
            QVERIFY(desk->shown == held);
            QVERIFY(desk->contents() == held);
            QCOMPARE(desk->entries.getStoredCount(), held.size());
        }
    }

    void keepsBothSidesOfALostRace()
    {
        ModelStore store;
        Desk mine(store, 0);
        Desk theirs(store, 1);
        theirs.edit("a", text("first"));
        theirs.send();
        mine.receive(1);
        mine.edit("a", text("mine"));
        theirs.edit("a", text("theirs"));
        theirs.send();
        mine.send();
        QVERIFY(mine.entries.hasConflicts());
        QCOMPARE(mine.entries.takeNewConflicts(), std::vector<std::string>{"a"});
        QVERIFY(mine.entries.takeNewConflicts().empty());
        const auto& edit = mine.entries.getEdits().begin()->second;
        QVERIFY(edit.base.value == text("first"));
        QVERIFY(edit.stored.value == text("theirs"));
        QVERIFY(mine.contents().at("a") == text("mine"));
        mine.send();
        QVERIFY(*store.held.at("a").first.value == text("theirs"));
    }

    // An entry that is edited again while the edit before is on its way.
    void takesItsOwnWriteForNoConflict_data()
    {
        const auto row = TestSupport::columns<QString, bool, bool>("second", "isEchoFirst", "isReplyLost");
        row("the reply first", "2", false, false);
        row("the news first", "2", true, false);
        row("only the news", "2", true, true);
        row("neither", "2", false, true);
        row("back to what it was", "0", false, false);
        row("back to what it was, the news first", "0", true, false);
    }

    void takesItsOwnWriteForNoConflict()
    {
        QFETCH(QString, second);
        QFETCH(bool, isEchoFirst);
        QFETCH(bool, isReplyLost);
        ModelStore store;
        Desk mine(store, 0);
        mine.edit("a", text("0"));
        mine.send();
        mine.receive(1);
        mine.edit("a", text("1"));
        mine.depart(false);
        mine.edit("a", text(second.toStdString()));
        if (isEchoFirst)
            mine.receive(1);
        mine.arrive(isReplyLost);
        QVERIFY(!mine.entries.hasConflicts());
        QCOMPARE(mine.entries.getEdits().size(), std::size_t(1));
        mine.send();
        mine.send();
        QVERIFY(!mine.entries.hasConflicts());
        QVERIFY(*store.held.at("a").first.value == text(second.toStdString()));
    }

    void writesNothingThatWasGivenUp()
    {
        ModelStore store;
        Desk mine(store, 0);
        mine.edit("a", text("1"));
        mine.send(true, true);
        mine.resolve("a", false);
        mine.send();
        QVERIFY(store.events.empty());
    }

    // Without keeping others from being written.
    void holdsBackWhatTheStoreRefuses()
    {
        SharedEntries entries;
        entries.edit("allowed", text("1"));
        entries.edit("forbidden", text("1"));
        entries.edit("later", text("1"));
        const auto namesOf = [](const std::vector<Outgoing>& outgoing) {
            QStringList names;
            for (const Outgoing& sent : outgoing)
                names.append(QString::fromStdString(sent.path));
            return names.join(QLatin1Char(' '));
        };
        entries.settle(entries.takeOutgoing(128, 10'000), 0);
        const auto from = SharedEntries::From::OneBatch;
        const auto allowed = entries.takeOutgoing(128, 10'000, from);
        QCOMPARE(namesOf(allowed), QStringLiteral("allowed"));
        entries.settle(allowed, 1);
        const auto forbidden = entries.takeOutgoing(128, 10'000, from);
        QCOMPARE(namesOf(forbidden), QStringLiteral("forbidden"));
        entries.refuse(forbidden);
        QCOMPARE(namesOf(entries.takeOutgoing(128, 10'000)), QStringLiteral("later"));
        QVERIFY(!entries.hasConflicts());
        entries.retryRefused();
        QCOMPARE(namesOf(entries.takeOutgoing(128, 10'000)), QStringLiteral("forbidden"));
    }

    // What was edited at once is written at once, or not at all while a part of it is in conflict.
    // Whoever saves waits for no edits that came later, and not for his own that they replace.
    void knowsUpToWhichBatchAllIsWritten()
    {
        SharedEntries entries;
        entries.edit("a", text("1"));
        entries.edit("b", text("1"));
        const auto mark = entries.getLastBatch();
        entries.edit("c", text("1"));
        const auto write = [&entries](std::int64_t revision) {
            entries.settle(entries.takeOutgoing(1, 1000), revision);
        };
        QVERIFY(!entries.isWrittenUpTo(mark));
        write(1);
        QVERIFY(!entries.isWrittenUpTo(mark));
        entries.edit("b", text("2"));
        QVERIFY(entries.isWrittenUpTo(mark));
        QVERIFY(!entries.isWrittenUpTo(entries.getLastBatch()));
        write(2);
        write(3);
        QVERIFY(entries.isWrittenUpTo(entries.getLastBatch()));
    }

    void holdsBackABatchWithAConflict()
    {
        ModelStore store;
        Desk mine(store, 0);
        Desk theirs(store, 1);
        theirs.edit("a", text("theirs"));
        theirs.send();
        mine.entries.beginBatch();
        mine.edit("a", text("mine"));
        mine.edit("b", text("mine"));
        mine.send();
        QVERIFY(store.held.count("b") == 0); // it has not ended
        mine.entries.endBatch();
        mine.send();
        mine.edit("c", text("alone"));
        mine.send();
        QVERIFY(store.held.count("b") == 0);
        QVERIFY(store.held.count("c") == 1);
        mine.resolve({}, true);
        mine.send();
        QVERIFY(*store.held.at("a").first.value == text("mine"));
        QCOMPARE(store.held.at("a").first.revision, store.held.at("b").first.revision);
    }

    void findsOutWhetherALostReplyHadWritten_data()
    {
        const auto row = TestSupport::columns<bool, bool>("isRequestLost", "isOvertaken");
        row("it had", false, false);
        row("it had not", true, false);
        row("it had not, and another has", true, true);
    }

    void findsOutWhetherALostReplyHadWritten()
    {
        QFETCH(bool, isRequestLost);
        QFETCH(bool, isOvertaken);
        ModelStore store;
        Desk mine(store, 0);
        Desk theirs(store, 1);
        mine.edit("a", text("mine"));
        mine.send(isRequestLost, true);
        if (isOvertaken) {
            theirs.edit("a", text("theirs"));
            theirs.send();
        }
        mine.send();
        QCOMPARE(mine.entries.hasConflicts(), isOvertaken);
        QCOMPARE(mine.entries.getEdits().empty(), !isOvertaken);
        QCOMPARE(store.events.size(), std::size_t(1)); // nobody has written twice
    }

    void tellsOfGroupsThatGo()
    {
        SharedEntries entries;
        entries.fill({{"a.b.c", {text("1"), 1, false}, 1, false},
                      {"a.b.d", {text("1"), 1, false}, 1, false},
                      {"e", {text("1"), 1, false}, 1, false}});
        const auto gone = [](const char* path, std::int64_t revision) {
            return Arrival{path, {}, revision, false};
        };
        QCOMPARE(changedPaths(entries.take({gone("a.b.c", 2)})), QStringLiteral("-a.b.c"));
        QCOMPARE(changedPaths(entries.take({gone("a.b.d", 3), {"f", {text("1"), 3, false}, 3, false}})),
                 QStringLiteral("-a -a.b -a.b.d +f"));
        QVERIFY(entries.take({gone("a.b.d", 3)}).empty()); // known already
    }

    // In the order of a tree, each group before what is in it.
    void visitsGroupsOnce()
    {
        SharedEntries entries;
        for (const char* path : {"a-x", "a.b.c", "a.b", "a.c", "a", "b.c.d", "b.cc"})
            entries.edit(path, text("1"));
        QStringList visited;
        entries.visit([&](const Documents::Entry& entry) {
            visited.append(QString::fromStdString(entry.path) +
                           QLatin1String(entry.value.type == Type::Group ? "/" : ""));
        });
        QCOMPARE(visited.join(QLatin1Char(' ')), QStringLiteral("a a.b a.b.c a.c a-x b/ b.c/ b.c.d b.cc"));
    }

    void findsTheSiblingBefore_data()
    {
        const auto row = TestSupport::columns<QString, QString>("path", "sibling");
        row("the first", "a", "");
        row("after a group", "b", "a");
        row("the first of a group", "a.b", "");
        row("after a group within", "a.c", "a.b");
        row("a group itself", "b.x", "b.c");
    }

    void findsTheSiblingBefore()
    {
        QFETCH(QString, path);
        QFETCH(QString, sibling);
        SharedEntries entries;
        for (const char* each : {"a.b.c", "a.c", "b", "b.c", "b.x.y"})
            entries.edit(each, text("1"));
        QCOMPARE(QString::fromStdString(entries.siblingBefore(path.toStdString()).value_or("")), sibling);
    }

    void writesInPieces()
    {
        SharedEntries entries;
        entries.beginBatch();
        for (int number = 0; number < 300; ++number)
            entries.edit("n" + std::to_string(number), text(std::string(100, 'x')));
        entries.endBatch();
        const auto first = entries.takeOutgoing(128, 1'000'000);
        QCOMPARE(first.size(), std::size_t(128));
        entries.settle(first, 5);
        const auto second = entries.takeOutgoing(128, 1500);
        QVERIFY(second.size() > 5 && second.size() < 15);
        entries.settle(second, 0); // refused: it comes again
        std::size_t left = 0;
        for (auto piece = entries.takeOutgoing(128, 1'000'000); !piece.empty();
             piece = entries.takeOutgoing(128, 1'000'000)) {
            left += piece.size();
            entries.settle(piece, 6);
        }
        QCOMPARE(left, std::size_t(172));
        QVERIFY(entries.getEdits().empty());
    }
};

VANTRY_TEST_MAIN(QCoreApplication, SharedEntriesTest)

#include "shared_entries_test.moc"
