#include "repository/documents/Formats.h"
#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"
#include "tests/support/TreeWriter.h"

#include <QFile>

#include <functional>
#include <thread>

using namespace FrameworkCore::AppConfig;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;

namespace {

// The same small tree below "r" as a person might write it in each format.
const QHash<QString, QByteArray> samples{
    {QStringLiteral("json"),
     "{\n  // first\n  \"r\": { \"a\": 1,\n    \"s\": {\"k\": \"x\\u0041\", \"n\": null,\n"
     "    \"l\": [ 1,2,\t3 ]},\n  \"z\": true}  ,\n}"},
    {QStringLiteral("ini"), "; first\r\n[r]\r\na : 1\r\nz= true\r\n\r\n[r.s] ; second\r\nk = \"x\"\r\n"},
    {QStringLiteral("xml"),
     "<?xml version='1.0'?>\n<r>\n  <a>1</a><!-- first -->\n  <s >\n    <k>x&#65;</k>\n"
     "  </s>\n  <z>true</z>\n</r>\n"},
    {QStringLiteral("txt"), "# first\nr.a = 1\n\nr.s.k   = x\nr.z=true"}};

void onAnotherThread(const std::function<void()>& function)
{
    std::thread thread(function);
    thread.join();
}

} // namespace

class HistoryTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    using Operation = std::function<bool(HistoryTest&)>;

    QVector<Operation> operations;

private slots:
    void init()
    {
        RepositoryTest::init();
        history()->recordThisThread();
    }

    void takesBackAndDoesAgain_data()
    {
        TestSupport::columns<QString, int, QString>("type", "operation", "name");
        operations.clear();
        const auto row = [this](const char* types, const char* name, Operation operation) {
            operations.append(std::move(operation));
            for (const std::string& type : Repository::Documents::getDocumentTypes()) {
                if (QByteArray(types).contains(type.c_str()))
                    QTest::addRow("%s: %s", type.c_str(), name)
                        << QString::fromStdString(type) << operations.size() - 1 << QString::fromLatin1(name);
            }
        };
        const char* all = "json ini xml txt";
        row(all, "Write m.r.a", [](HistoryTest& test) { return test.write("m.r.a", -20).ok(); });
        row(all, "Write m.r.s.k",
            [](HistoryTest& test) { return test.write("m.r.s.k", QLatin1String("longer \"text\"")).ok(); });
        row("json", "Write m.r.s.n", [](HistoryTest& test) { return test.write("m.r.s.n", 5).ok(); });
        row(all, "Create m.r.b", [](HistoryTest& test) { return test.create("m.r.b", 7, 1).ok(); });
        row(all, "Create m.r.s.d.e.f",
            [](HistoryTest& test) { return test.create("m.r.s.d.e.f", QLatin1String("t")).ok(); });
        row(all, "Remove m.r.a", [](HistoryTest& test) { return test.remove("m.r.a").ok(); });
        row(all, "Remove m.r.s", [](HistoryTest& test) { return test.remove("m.r.s").ok(); });
        row(all, "Remove m.r.z", [](HistoryTest& test) { return test.remove("m.r.z").ok(); });
        row("json", "Remove m.r.s.l.0", [](HistoryTest& test) { return test.remove("m.r.s.l.0").ok(); });
        row(all, "Copy m.r.s to m.r.s2",
            [](HistoryTest& test) { return test.copy("m.r.s", "m.r.s2") == Success; });
        row(all, "Move m.r.s to m.r.t.u",
            [](HistoryTest& test) { return test.move("m.r.s", "m.r.t.u") == Success; });
        row(all, "Import m.r", [](HistoryTest& test) {
            return test.import("m.r", "json", "{\"a\": 9, \"s\": {\"k\": \"y\", \"new\": 1}}") == Success;
        });
        row(all, "Many things", [](HistoryTest& test) {
            const auto step = test.history()->beginStep(QStringLiteral("Many things"));
            return test.write("m.r.a", 2) && test.write("m.r.a", 3) && test.remove("m.r.a") &&
                   test.create("m.r.a", QLatin1String("other")) && test.write("m.r.z", false) &&
                   test.create("m.r.s.w", 1) && test.remove("m.r.s");
        });
    }

    void takesBackAndDoesAgain()
    {
        QFETCH(QString, type);
        QFETCH(int, operation);
        QFETCH(QString, name);
        QVERIFY(mount(type, "m", samples[type]));
        const QStringList before = content();
        QVERIFY(operations[operation](*this));
        const QStringList after = content();
        QVERIFY(after != before);
        const QByteArray savedAfter = saved();

        QCOMPARE(history()->getUndoName(), name);
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(content(), before);
        QCOMPARE(saved(), samples[type]);
        QCOMPARE(history()->getUndoName(), QString());
        QCOMPARE(history()->getRedoName(), name);
        QCOMPARE(history()->redo(), Success);
        QCOMPARE(content(), after);
        QCOMPARE(saved(), savedAfter);
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(saved(), samples[type]);

        // What is left is what a fresh load shows.
        restart();
        QVERIFY(mountFile(type, "m", fileOf("m")));
        QCOMPARE(content(), before);
    }

    // The document that the first undo has read anew knows nothing of how the number was spelled before.
    void bringsBackSpellings()
    {
        const QByteArray text = "{\"a\": 1.50, \"z\": 1}";
        QVERIFY(mount("json", "m", text));
        QVERIFY(write("m.a", 2.5));
        QVERIFY(remove("m.z"));
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(saved(), text);
    }

    void takesBackReverting()
    {
        QVERIFY(mount("ini", "m", samples[QStringLiteral("ini")]));
        onAnotherThread([this] {
            write("m.r.a", 2);
            remove("m.r.z");
        });
        const QStringList before = content();
        QCOMPARE(changes()->revert(QStringLiteral("m")), Success);
        QCOMPARE(history()->getUndoName(), QStringLiteral("Revert m"));
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(content(), before);
    }

    void takesBackManySteps_data()
    {
        const auto row = TestSupport::columns<QString>("type");
        for (const std::string& type : Repository::Documents::getDocumentTypes())
            row(type.c_str(), QString::fromStdString(type));
    }

    void takesBackManySteps()
    {
        struct State
        {
            QStringList tree;
            QByteArray text;
        };
        QFETCH(QString, type);
        QVERIFY(mount(type, "m", samples[type]));
        TestSupport::TreeWriter writer(repository, QStringLiteral("m.r"), 5, 4, 3);
        std::vector<State> states;
        for (int i = 0; states.size() < 100; ++i) {
            QVERIFY(i < 2000);
            const State state{content(), saved()};
            const QString name = QString::number(i);
            {
                const auto step = history()->beginStep(name);
                writer.changeOnce();
            }
            if (history()->getUndoName() == name)
                states.push_back(state);
            else
                QCOMPARE(content(), state.tree);
        }
        const State last{content(), saved()};
        for (auto state = states.rbegin(); state != states.rend(); ++state) {
            QCOMPARE(history()->undo(), Success);
            QCOMPARE(content(), state->tree);
            QCOMPARE(saved(), state->text);
        }
        QCOMPARE(history()->undo(), NotFound);
        for (std::size_t i = 0; i < states.size(); ++i)
            QCOMPARE(history()->redo(), Success);
        QCOMPARE(content(), last.tree);
        QCOMPARE(saved(), last.text);
    }

    // Other writers' changes stay: undo either fits beside them or is refused as a whole.
    void respectsWhatHasChangedSince()
    {
        QVERIFY(mount("json", "m", samples[QStringLiteral("json")]));
        QVERIFY(remove("m.r.s"));
        onAnotherThread([this] { write("m.r.a", 50); });
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(read("m.r.a"), QVariant(50LL));
        QCOMPARE(read("m.r.s.k"), QVariant(QStringLiteral("xA")));
        QCOMPARE(history()->redo(), Success);
        QCOMPARE(read("m.r.s.k"), QVariant());
        QCOMPARE(history()->undo(), Success);

        {
            const auto step = history()->beginStep(QStringLiteral("Two"));
            QVERIFY(write("m.r.a", 51));
            QVERIFY(write("m.r.z", false));
            QVERIFY(create("m.r.y", 1));
        }
        onAnotherThread([this] { write("m.r.z", true); });
        const QStringList before = content();
        int heard = 0;
        listen(
            "m*", [&heard](auto&&...) { ++heard; }, 15);
        const Outcome refusal = history()->undo();
        QCOMPARE(refusal, NotWritable);
        QVERIFY2(refusal.toText().startsWith(
                     QStringLiteral("'Two' was not undone: it has been changed since: 'm.r.z'")),
                 qPrintable(refusal.toText()));
        QCOMPARE(content(), before);
        QCOMPARE(heard, 0);
        onAnotherThread([this] { write("m.r.z", false); });
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(read("m.r.z"), QVariant(true));
        QCOMPARE(read("m.r.y"), QVariant());
        QCOMPARE(read("m.r.a"), QVariant(50LL));
    }

    // What undo would lose is not undone: what others have made below a created attribute.
    void keepsWhatOthersMadeBelow()
    {
        QVERIFY(mount("json", "m", samples[QStringLiteral("json")]));
        QVERIFY(create("m.r.g.first", 1));
        onAnotherThread([this] { create("m.r.g.second", 2); });
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(read("m.r.g.first"), QVariant());
        QCOMPARE(read("m.r.g.second"), QVariant(2LL));
        QVERIFY(create("m.r.h", 1));
        QVERIFY(mount("ini", "m.r.h.in", "k=1\n"));
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(read("m.r.h"), QVariant());
        QCOMPARE(read("m.r.h.in.k"), QVariant(1LL));
    }

    void recordsOnlyEditing()
    {
        QVERIFY(mount("json", "m", samples[QStringLiteral("json")]));
        QVERIFY(mount("ini", "w", "k=1\n", AccessMode::WriteOnly));
        onAnotherThread([this] {
            write("m.r.a", 2);
            create("m.r.other", 1);
            remove("m.r.other");
        });
        QVERIFY(create("memory", 1));
        QVERIFY(write("memory", 2));
        QVERIFY(write("w.k", 2)); // its value is carried nowhere
        QVERIFY(create("m.r.hidden", 1, 2));
        QVERIFY(write("m.r.hidden", 2));
        QVERIFY(write("m.r.a", 2)); // no change
        QVERIFY(!write("m.r.a", QLatin1String("no number")));
        QVERIFY(!create("m.r.a.*", 1));
        QCOMPARE(history()->getUndoName(), QString());
        QCOMPARE(history()->undo(), NotFound);

        onAnotherThread([this] {
            const auto step = history()->beginStep(QStringLiteral("Elsewhere"));
            const auto inner = history()->beginStep(QStringLiteral("Inner"));
            write("m.r.a", 3);
        });
        QCOMPARE(history()->getUndoName(), QStringLiteral("Elsewhere"));
        QVERIFY(write("m.r.a", 4));
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(read("m.r.a"), QVariant(2LL));
        QCOMPARE(history()->redo(), Success);
        QVERIFY(write("m.r.z", false));
        QCOMPARE(history()->getRedoName(), QString());
        QVERIFY(close("m", true));
        QCOMPARE(history()->getUndoName(), QString());
    }

    // What a watcher writes in answer belongs to the step, and its answer to an undo is not a new one.
    void bindsAnswersOfWatchers()
    {
        QVERIFY(mount("json", "m", samples[QStringLiteral("json")]));
        listen("m.r.a", [this](const QString&, const UpdatePoint&, const UpdateResult&, const QVariant& value,
                               const QString&) { write("m.r.z", value.toInt() < 5); });
        QVERIFY(write("m.r.a", 9));
        QCOMPARE(read("m.r.z"), QVariant(false));
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(read("m.r.z"), QVariant(true));
        QCOMPARE(history()->getUndoName(), QString());
        QCOMPARE(history()->redo(), Success);
        QCOMPARE(read("m.r.z"), QVariant(false));
    }

    void keepsToItsBound()
    {
        Repository::RepositoryOptions options;
        options.historyBound = 20000;
        restart(options);
        history()->recordThisThread();
        QVERIFY(mount("json", "m", "{\"a\": \"\"}"));
        for (int i = 0; i < 100; ++i)
            QVERIFY(write("m.a", QString(500, QLatin1Char(char('a' + i % 26)))));
        int undone = 0;
        while (history()->undo() == Success)
            ++undone;
        QVERIFY2(undone > 3 && undone < 20, qPrintable(QString::number(undone)));
        QVERIFY(write("m.a", QString(50000, QLatin1Char('x'))));
        QCOMPARE(history()->getUndoName(), QString());
    }

    // A file with more entries than are kept one by one.
    void takesBackLargeSteps()
    {
        QByteArray text = "{\"big\": {";
        for (int i = 0; i < 60000; ++i)
            text += "\"k" + QByteArray::number(i) + "\": " + QByteArray::number(i) + ",\n";
        text += "\"last\": 1}, \"other\": 2}";
        QVERIFY(mount("json", "m", text));
        QVERIFY(remove("m.big"));
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(read("m.big.k59999"), QVariant(59999LL));
        QCOMPARE(saved(), text);
        QCOMPARE(history()->redo(), Success);
        QCOMPARE(content().size(), 2);
        onAnotherThread([this] { write("m.other", 3); });
        QCOMPARE(history()->undo(), NotWritable);
        QCOMPARE(content().size(), 2);
    }

    // Undo and redo meet other writers, saves, and steps of other threads.
    void worksBesideOtherThreads()
    {
        QVERIFY(mount("json", "m", samples[QStringLiteral("json")]));
        std::atomic<bool> done{false};
        std::thread other([&] {
            for (int i = 0; !done; ++i) {
                write("m.r.z", i % 2 == 0);
                if (i % 8 == 0)
                    saved();
                const auto step = history()->beginStep(QStringLiteral("Other"));
                write("m.r.s.k", QString::number(i));
            }
        });
        for (int i = 0; i < 200; ++i) {
            create("m.r.b.c", i);
            write("m.r.a", i);
            history()->undo();
            history()->redo();
            remove("m.r.b");
            history()->undo();
        }
        done = true;
        other.join();
        const QStringList last = content();
        saved();
        restart();
        QVERIFY(mountFile("json", "m", fileOf("m")));
        QCOMPARE(content(), last);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, HistoryTest)

#include "history_test.moc"
