#include "host/FrameworkCore/AppConfig/SearchInterface.h"
#include "host/FrameworkCore/AppConfig/TextInterface.h"
#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <functional>
#include <thread>

using namespace FrameworkCore::AppConfig;
using FrameworkCore::Notification::UpdateResult;
using Interfaces::ConflictSide;
using TestSupport::contentOf;
using TestSupport::words;

namespace {

const QByteArray services = "base: &base\n  image: one # img\n  n: &n 1\nweb:\n  <<: *base\n  port: *n\n"
                            "db:\n  <<: *base\n  image: own\ncopy: *base\nlast: 1\n";

QByteArray with(const char* before, const char* after)
{
    return QByteArray(services).replace(before, after);
}

} // namespace

class LinkedValuesTest;
using Change = std::function<FrameworkCore::AppConfig::Outcome(LinkedValuesTest&)>;
Q_DECLARE_METATYPE(Change)

// Attributes of YAML that show the text of others, by aliases and merges: edits change all of them at once.
class LinkedValuesTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    static Change set(const char* path, const QVariant& value)
    {
        return [=](LinkedValuesTest& test) { return test.write(path, value); };
    }
    static Change retype(const char* path, const QVariant& value)
    {
        return [=](LinkedValuesTest& test) {
            return test.repository->getWriterInterface()->retype(Name(path), value);
        };
    }
    static Change drop(const char* path)
    {
        return [=](LinkedValuesTest& test) { return test.remove(path); };
    }
    static Change add(const char* path, const QVariant& value)
    {
        return [=](LinkedValuesTest& test) { return test.create(path, value); };
    }
    static Change rename(const char* path, const char* to)
    {
        return [=](LinkedValuesTest& test) { return test.move(path, to); };
    }
    static Change copyTo(const char* path, const char* to)
    {
        return [=](LinkedValuesTest& test) { return test.copy(path, to); };
    }
    static Change replaceAll(const char* text, const char* by)
    {
        return [=](LinkedValuesTest& test) { return test.replace(text, by); };
    }

    Outcome replace(const char* text, const char* by)
    {
        Interfaces::SearchQuery query;
        query.text = QLatin1String(text);
        query.replacement = QString::fromLatin1(by);
        query.roots = QStringList(Name("m"));
        QVector<Interfaces::SearchHit> hits;
        const auto search = repository->getSearchInterface();
        search->find(query, [&hits](const QVector<Interfaces::SearchHit>& found, int) {
            hits += found;
            return true;
        });
        return search->replace(hits, QStringLiteral("Replace"));
    }

    // Who hears of what; each watcher writes something itself, which no lock may prevent.
    void watch()
    {
        listen("m*",
               [this](const QString& path, auto, UpdateResult result, const QVariant& value, const auto&) {
                   const char* const results[] = {"=", "!", "+", "-", "reloaded", ""};
                   const QString shown = value.isValid() ? value.toString() : QString();
                   if (results[int(result)][0] != 0)
                       heard += path.mid(2) + QLatin1String(results[int(result)]) + shown;
                   create("seen", path, 3, 3);
               });
    }

    QStringList takeHeard()
    {
        heard.sort();
        return std::exchange(heard, {});
    }

    QStringList unsaved()
    {
        QStringList texts;
        for (const auto& change : changes()->getUnsavedChanges(QStringLiteral("m")))
            texts += change.path.mid(2) + QLatin1String(change.isConflict ? "?" : "");
        return texts;
    }

    QStringList heard;

private slots:
    void init()
    {
        RepositoryTest::init();
        heard.clear();
        history()->recordThisThread();
    }

    void changesAllAtOnce_data()
    {
        const auto row = TestSupport::columns<Change, QByteArray, QString>("change", "after", "told");
        row("base", set("m.base.image", QStringLiteral("two")), with("image: one", "image: two"),
            "base.image!two copy.image!two web.image!two");
        row("anchored scalar", set("m.base.n", 5), with("&n 1", "&n 5"),
            "base.n!5 copy.n!5 db.n!5 web.n!5 web.port!5");
        row("override", set("m.web.image", QStringLiteral("two")),
            with("  port: *n\n", "  port: *n\n  image: two\n"), "web.image!two");
        row("override of what is overridden", set("m.db.image", QStringLiteral("two")),
            with("image: own", "image: two"), "db.image!two");
        row("override removed", drop("m.db.image"), with("  image: own\n", ""), "db.image!one");
        row("alias", set("m.web.port", 5), with("port: *n", "port: 5"), "web.port!5");
        row("type", retype("m.base.n", QStringLiteral("x")), with("&n 1", "&n x"),
            "base.n!x copy.n!x db.n!x web.n!x web.port!x");
        row("new in the base", add("m.base.k", 2), with("&n 1\n", "&n 1\n  k: 2\n"),
            "base.k+2 copy.k+2 db.k+2 web.k+2");
        row("removed from the base", drop("m.base.image"), with("  image: one # img\n", ""),
            "base.image- copy.image- web.image-");
        row("renamed in the base", rename("m.base.image", "m.base.img"), with("  image: one", "  img: one"),
            "base.image- base.img+one copy.image- copy.img+one db.img+one web.image- web.img+one");
        row("merge removed", drop("m.web.<<"), with("web:\n  <<: *base\n", "web:\n"),
            "web.<<- web.image- web.n-");
        row("replaced", replaceAll("one", "two"), with("image: one", "image: two"),
            "base.image!two copy.image!two web.image!two");
        row("replaced, not in a merge", replaceAll("ba", "do"), services, "");
        row("copied", copyTo("m.web", "m.app"), services + "app:\n  <<: *base\n  port: *n\n",
            "app.<<+*base app.image+one app.n+1 app.port+1");
        row("the same", set("m.base.n", 1), services, "base.n=1");
    }

    // Watchers hear of each, one step of undo takes back each byte, and a fresh load shows the same.
    void changesAllAtOnce()
    {
        QFETCH(Change, change);
        QFETCH(QByteArray, after);
        QFETCH(QString, told);
        QVERIFY(mount("yaml", "m", services));
        const QStringList before = content();
        watch();
        const Outcome outcome = change(*this);
        QVERIFY2(outcome.ok(), qPrintable(outcome.toText()));
        QCOMPARE(takeHeard(), words(told.toUtf8().constData()));
        QCOMPARE(changes()->getEditedBackends().isEmpty(), after == services);
        const QStringList edited = content();
        QCOMPARE(saved(), after);
        if (after != services) {
            QVERIFY(history()->undo());
            QCOMPARE(content(), before);
            QCOMPARE(saved(), services);
            QVERIFY(history()->redo());
            QCOMPARE(content(), edited);
            QCOMPARE(saved(), after);
            QVERIFY(history()->undo());
            QVERIFY(write("m.last", 2)); // the text is another one, so that entries are brought back
            QCOMPARE(saved(), with("last: 1", "last: 2"));
        }
        restart();
        QVERIFY(mount("yaml", "m", after));
        QCOMPARE(content(), edited);
    }

    // An alias of what it lies in leads nowhere, and shows what is written.
    void changesAnAliasWithinItsAnchor()
    {
        for (const char* const other : {"", "c: *a\n"}) {
            const QByteArray text = QByteArray("a: &a\n  b: *a\n") + other;
            QVERIFY(mount("yaml", "m", text));
            history()->recordThisThread();
            const QStringList before = content();
            QVERIFY(write("m.a.b", QStringLiteral("x")));
            QCOMPARE(saved(), QByteArray("a: &a\n  b: x\n") + other);
            QVERIFY(history()->undo());
            QCOMPARE(saved(), text);
            QCOMPARE(content(), before);
            restart();
        }
    }

    // Where the text is another one by now, which undo looks for the entries in.
    void undoesByEntries()
    {
        QVERIFY(mount("yaml", "m", services));
        QVERIFY(write("m.base.n", 5));
        QVERIFY(create("m.base.k", 2));
        std::thread([this] { write("m.last", 7); }).join();
        QVERIFY(history()->undo());
        QVERIFY(history()->undo());
        QCOMPARE(saved(), with("last: 1", "last: 7"));
        QCOMPARE(read("m.web.port"), QVariant(1LL));
        QVERIFY(!exists("m.web.k"));
        QVERIFY(history()->redo());
        QVERIFY(history()->redo());
        QCOMPARE(saved(), with("last: 1", "last: 7").replace("&n 1\n", "&n 5\n  k: 2\n"));
        QCOMPARE(read("m.copy.k"), QVariant(2LL));
    }

    // As a write of any other attribute, at the points that were asked for.
    void tellsAtThePoints()
    {
        QVERIFY(mount("yaml", "m", services));
        QStringList at;
        listen(
            "m.web.n", [&at](const QString&, auto point, auto...) { at += QString::number(int(point)); }, 15);
        QVERIFY(write("m.base.n", 5, 8));
        QCOMPARE(at, QStringList(QStringLiteral("8")));
        QVERIFY(validations()->addValidation(Name("m.base.n"), QStringLiteral("range(0,10)")) != 0);
        QCOMPARE(write("m.base.n", 50), StatusCode::RefusedByValidation);
        QVERIFY(validations()->addValidation(Name("m.web.port"), QStringLiteral("range(0,7)")) != 0);
        const Outcome outcome = write("m.base.n", 8);
        QCOMPARE(outcome, StatusCode::RefusedByValidation);
        QVERIFY2(outcome.toText().contains(QStringLiteral("'m.web.port'")), qPrintable(outcome.toText()));
        QCOMPARE(read("m.web.n"), QVariant(5LL));
    }

    void savesAndRevertsOne_data()
    {
        // of base.n = 5, last = 2 and web.image = two
        const QByteArray all = with("&n 1", "&n 5").replace("last: 1", "last: 2");
        const auto row = TestSupport::columns<QString, QByteArray, QByteArray>("path", "file", "text");
        const char* const image = "  port: *n\n  image: two\n";
        row("base", "m.base.n", with("&n 1", "&n 5"),
            with("last: 1", "last: 2").replace("  port: *n\n", image));
        row("shown by a merge", "m.db.n", with("&n 1", "&n 5"),
            with("last: 1", "last: 2").replace("  port: *n\n", image));
        row("shown by an alias", "m.web.port", with("&n 1", "&n 5"),
            with("last: 1", "last: 2").replace("  port: *n\n", image));
        row("a map with an alias", "m.copy", with("&n 1", "&n 5"),
            with("last: 1", "last: 2").replace("  port: *n\n", image));
        row("override", "m.web.image", with("  port: *n\n", image), all);
        row("another", "m.last", with("last: 1", "last: 2"),
            with("&n 1", "&n 5").replace("  port: *n\n", image));
    }

    // What shows the same is saved and reverted together.
    void savesAndRevertsOne()
    {
        QFETCH(QString, path);
        for (const bool saves : {true, false}) {
            restart();
            QVERIFY(mount("yaml", "m", services));
            QVERIFY(write("m.base.n", 5));
            QVERIFY(write("m.last", 2));
            QVERIFY(write("m.web.image", QStringLiteral("two")));
            QCOMPARE(unsaved(), words("base.n web.port web.image web.n db.n copy.n last"));
            const Outcome outcome = saves ? changes()->saveChanges(Name("m"), {path})
                                          : changes()->revertChanges(Name("m"), {path});
            QVERIFY2(outcome.ok(), qPrintable(outcome.toText()));
            if (saves)
                QTEST(contentOf(fileOf("m")), "file");
            else
                QTEST(saved(), "text");
            const QStringList shown = content();
            const QByteArray text = saved();
            restart();
            QVERIFY(mount("yaml", "m", text));
            QCOMPARE(content(), shown);
        }
    }

    // A service that was removed comes back as it was written.
    void revertsARemoval()
    {
        QVERIFY(mount("yaml", "m", services));
        const QStringList before = content();
        QVERIFY(remove("m.web"));
        QVERIFY(write("m.last", 2));
        QVERIFY(changes()->revert(Name("m.web")));
        QCOMPARE(read("m.web.<<"), QVariant(QStringLiteral("*base")));
        QVERIFY(write("m.last", 1));
        QCOMPARE(content(), before);
    }

    void mergesWithOthers_data()
    {
        const auto row = TestSupport::columns<Change, QByteArray, QByteArray, QString>("mine", "theirs",
                                                                                       "merged", "conflicts");
        row("base there", set("m.last", 2), with("&n 1", "&n 5"),
            with("&n 1", "&n 5").replace("last: 1", "last: 2"), "");
        row("base here, override there", set("m.base.image", QStringLiteral("two")),
            with("port: *n", "port: *n\n  image: three"),
            with("port: *n", "port: *n\n  image: three").replace("image: one", "image: two"), "");
        row("override here, base there", set("m.web.image", QStringLiteral("two")),
            with("image: one", "image: three"),
            with("image: one", "image: three").replace("  port: *n\n", "  port: *n\n  image: two\n"), "");
        row("override removed here", drop("m.db.image"), with("image: one", "image: three"),
            with("image: one", "image: three").replace("  image: own\n", ""), "");
        row("new in the base here", add("m.base.k", 2), with("last: 1", "last: 3"),
            with("last: 1", "last: 3").replace("&n 1\n", "&n 1\n  k: 2\n"), "");
        row("base here, override removed there", set("m.base.image", QStringLiteral("two")),
            with("  image: own\n", ""), with("  image: own\n", "").replace("image: one", "image: two"), "");
        row("new in the base here, override there", add("m.base.k", 2), with("port: *n", "port: *n\n  k: 3"),
            with("port: *n", "port: *n\n  k: 3").replace("&n 1\n", "&n 1\n  k: 2\n"), "");
        row("override here, new in the base there", add("m.web.k", 2), with("&n 1\n", "&n 1\n  k: 3\n"),
            with("&n 1\n", "&n 1\n  k: 3\n").replace("port: *n", "port: *n\n  k: 2"), "");
        row("new in the base here, merge removed there", add("m.base.k", 2),
            with("web:\n  <<: *base\n", "web:\n"),
            with("web:\n  <<: *base\n", "web:\n").replace("&n 1\n", "&n 1\n  k: 2\n"), "");
        row("removed from the base here, override there", drop("m.base.image"),
            with("port: *n", "port: *n\n  image: three"),
            with("port: *n", "port: *n\n  image: three").replace("  image: one # img\n", ""), "");
        row("removed from the base here", drop("m.base.image"), with("last: 1", "last: 3"),
            with("last: 1", "last: 3").replace("  image: one # img\n", ""), "");
        row("merge removed here", drop("m.web.<<"), with("last: 1", "last: 3"),
            with("last: 1", "last: 3").replace("web:\n  <<: *base\n", "web:\n"), "");
        row("both", set("m.base.n", 5), with("&n 1", "&n 6"), with("&n 1", "&n 5"), "base.n?");
        row("alias here, base there", set("m.web.port", 5), with("&n 1", "&n 6"),
            with("&n 1", "&n 6").replace("port: *n", "port: 5"), "");
    }

    void mergesWithOthers()
    {
        QFETCH(Change, mine);
        QFETCH(QByteArray, theirs);
        QFETCH(QByteArray, merged);
        QFETCH(QString, conflicts);
        for (const ConflictSide side : {ConflictSide::Mine, ConflictSide::Theirs}) {
            restart();
            QVERIFY(mount("yaml", "m", services));
            QVERIFY(mine(*this));
            put("m", theirs);
            QVERIFY(reload());
            QStringList found;
            for (const QString& path : unsaved()) {
                if (path.endsWith(QLatin1Char('?')))
                    found += path;
            }
            QCOMPARE(found.join(QLatin1Char(' ')), conflicts);
            if (!found.isEmpty())
                QVERIFY(changes()->resolveConflicts(QStringLiteral("m.base.n"), side));
            const bool areTheirs = !found.isEmpty() && side == ConflictSide::Theirs;
            QCOMPARE(saved(), areTheirs ? theirs : merged);
            const QStringList shown = content();
            restart();
            QVERIFY(mountFile("yaml", "m", fileOf("m")));
            QCOMPARE(content(), shown);
        }
    }

    // Elsewhere there is what a map shows, and no merge.
    void convertsWhatIsShown()
    {
        QVERIFY(mount("yaml", "m", services));
        QCOMPARE(exported("m.web", "json").simplified(),
                 QByteArray("{ \"port\": 1, \"image\": \"one\", \"n\": 1 }"));
        QVERIFY(mount("yaml", "i", "a:\n  <<: {k: 1, l: {m: 2}}\n  k: 3\n"));
        QCOMPARE(exported("i", "json").simplified(),
                 QByteArray("{ \"a\": { \"k\": 3, \"l\": { \"m\": 2 } } }"));
        QVERIFY(mount("yaml", "o", "x: 1\n"));
        QVERIFY(copy("m.web", "o.web"));
        QCOMPARE(saved("o"), QByteArray("x: 1\nweb:\n  port: 1\n  image: one\n  \"n\": 1\n"));
        QVERIFY(!copy("m.web.<<", "o.merge"));
        QVERIFY(!move("i.a.<<", "i.b"));
        QVERIFY(import("o.in", "yaml", services));
        QCOMPARE(read("o.in.web.image"), QVariant(QStringLiteral("one")));
        QVERIFY(!read("o.in.web.<<").isValid());
        Interfaces::TextPlace place;
        QVERIFY(repository->getTextInterface()->locate(QStringLiteral("m.web.image"), place));
        QCOMPARE(place.position.line, 2);
        QCOMPARE(place.comment, QStringLiteral("# img"));
    }

    // Writers of all that is linked, at once: the tree shows in the end what the file holds.
    void standsManyWriters()
    {
        QVERIFY(mount("yaml", "m", services));
        const char* const paths[] = {"m.base.n",   "m.base.image", "m.web.image",
                                     "m.web.port", "m.last",       "m.db.image"};
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([&, i] {
                for (int round = 0; round < 50; ++round)
                    write(paths[std::size_t(i + round) % std::size(paths)], QString::number(i * 100 + round));
            });
        for (std::thread& each : threads)
            each.join();
        const QStringList shown = content();
        const QByteArray text = saved();
        restart();
        QVERIFY(mount("yaml", "m", text));
        QCOMPARE(content(), shown);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, LinkedValuesTest)

#include "linked_values_test.moc"
