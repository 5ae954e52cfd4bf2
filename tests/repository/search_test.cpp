#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <QRandomGenerator>

#include <thread>

using namespace FrameworkCore::AppConfig;
using Interfaces::SearchHit;
using Interfaces::SearchQuery;

namespace {

using Syntax = SearchQuery::Syntax;

const QByteArray jsonText = R"({"server": {"host": "db.local", "port": 8080, "on": true, "none": null,
 "tags": ["red one", "a;b"], "rates": [1.5, 80]}, "Host": "LOCAL", "text": "80 of 80"})";
const QByteArray iniText = "[db]\nhost = local\nport = 80\n";

} // namespace

Q_DECLARE_METATYPE(SearchQuery)

class SearchTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    SearchQuery query;

    auto search() const { return repository->getSearchInterface(); }

    QVector<SearchHit> find(Outcome* outcome = nullptr) const
    {
        QVector<SearchHit> found;
        const Outcome result = search()->find(query, [&found](const QVector<SearchHit>& hits, int) {
            found += hits;
            return true;
        });
        if (outcome)
            *outcome = result;
        return found;
    }

    QStringList foundPaths() const
    {
        QStringList found;
        const QVector<SearchHit> hits = find();
        for (const SearchHit& hit : hits)
            found.append(hit.path);
        return found;
    }

private slots:
    void init()
    {
        RepositoryTest::init();
        query = SearchQuery();
        history()->recordThisThread();
    }

    void findsWhatIsAskedFor_data()
    {
        const auto row = TestSupport::columns<SearchQuery, QString>("wanted", "found");
        const auto text = [](const char* wanted, SearchQuery::Fields fields, Syntax syntax = Syntax::Plain) {
            SearchQuery made;
            made.text = QString::fromLatin1(wanted);
            made.fields = fields;
            made.syntax = syntax;
            return made;
        };
        const auto with = [](SearchQuery made, auto change) {
            change(made);
            return made;
        };
        const auto whole = [&](const SearchQuery& made) {
            return with(made, [](SearchQuery& changed) { changed.isWhole = true; });
        };
        const auto exact = [&](const SearchQuery& made) {
            return with(made, [](SearchQuery& changed) { changed.caseSensitivity = Qt::CaseSensitive; });
        };
        const SearchQuery::Fields all = SearchQuery().fields;
        row("name", text("host", SearchQuery::Name), "j.server.host j.Host i.db.host");
        row("name, case", exact(text("host", SearchQuery::Name)), "j.server.host i.db.host");
        row("name is not the path", text("server", SearchQuery::Name), "j.server");
        row("path", text("server.r", SearchQuery::Path), "j.server.rates j.server.rates.0 j.server.rates.1");
        row("value", text("local", SearchQuery::Value), "j.server.host j.Host i.db.host");
        row("whole value", whole(text("local", SearchQuery::Value)), "j.Host i.db.host");
        row("number", text("80", SearchQuery::Value), "j.server.port j.server.rates.1 j.text i.db.port");
        row("real number", text("1.5", SearchQuery::Value), "j.server.rates.0");
        row("bool", whole(text("true", SearchQuery::Value)), "j.server.on");
        row("element of a list", whole(text("red one", SearchQuery::Value)), "j.server.tags");
        row("all of a list", whole(text("red one;a\\;b", SearchQuery::Value)), "j.server.tags");
        row("type", whole(text("double", SearchQuery::Type)), "j.server.rates.0");
        row("group", whole(text("group", SearchQuery::Type)), "j j.server j.server.rates i i.db");
        row("any field", text("null", all), "j.server.none");
        row("text in several fields is one", text("host", all), "j.server.host j.Host i.db.host");
        row("wildcard", text("r*e", SearchQuery::Value, Syntax::Wildcard), "j.server.on j.server.tags");
        row("whole wildcard", whole(text("r*e", SearchQuery::Value, Syntax::Wildcard)), "j.server.tags");
        row("wildcard is literal in a plain text", text("r*e", all), "");
        row("expression", text("^\\d{2}$", SearchQuery::Value, Syntax::RegularExpression),
            "j.server.rates.1 i.db.port");
        row("whole expression", whole(text("\\d+", SearchQuery::Value, Syntax::RegularExpression)),
            "j.server.port j.server.rates.1 i.db.port");
        row("expression, case", exact(text("^L", SearchQuery::Value, Syntax::RegularExpression)), "j.Host");
        row("no field", text("host", {}), "");
        row("below roots, each once",
            with(SearchQuery(),
                 [](SearchQuery& made) {
                     made.roots = QStringList{QStringLiteral("i.db"), QStringLiteral("i"),
                                              QStringLiteral("i"), QStringLiteral("nowhere")};
                 }),
            "i i.db i.db.host i.db.port");
        row("path and types",
            with(SearchQuery(),
                 [](SearchQuery& made) {
                     made.pathPattern = QStringLiteral("*.server.*");
                     made.types = QStringList{QStringLiteral("integer"), QStringLiteral("bool")};
                 }),
            "j.server.port j.server.on j.server.rates.1");
    }

    void findsWhatIsAskedFor()
    {
        QVERIFY(mount("json", "j", jsonText));
        QVERIFY(mount("ini", "i", iniText));
        QFETCH(SearchQuery, wanted);
        query = wanted;
        QTEST(foundPaths().join(QLatin1Char(' ')), "found");
    }

    void neverShowsWhatMustNotBeRead()
    {
        QVERIFY(mount("ini", "secret", "key = local\n", AccessMode::WriteOnly));
        query.text = QStringLiteral("local");
        QCOMPARE(foundPaths(), QStringList());
        query.text = QStringLiteral("key");
        const QVector<SearchHit> hits = find();
        QCOMPARE(hits.size(), 1);
        QVERIFY(!hits.first().value.isValid() && hits.first().type.isEmpty());
        query.replacement = QStringLiteral("x");
        QCOMPARE(foundPaths(), QStringList());
    }

    void saysWhereAnExpressionIsWrong()
    {
        query.syntax = Syntax::RegularExpression;
        query.text = QStringLiteral("a(b|c");
        const auto fault = search()->findFault(query);
        QVERIFY(fault);
        QCOMPARE(fault->offset, 5);
        Outcome outcome;
        find(&outcome);
        QCOMPARE(outcome, InvalidPattern);
        QVERIFY2(outcome.toText().contains(fault->reason), qPrintable(outcome.toText()));
        query.text = QStringLiteral("a)(b"); // only brackets around it would make it valid
        QVERIFY(search()->findFault(query));
        query.syntax = Syntax::Plain;
        QVERIFY(!search()->findFault(query));
    }

    void givesUpAnEndlessExpression()
    {
        QVERIFY(create("a.fine", QStringLiteral("x")));
        QVERIFY(create("a.long", QString(100, QLatin1Char('a')) + QLatin1Char('!')));
        query.syntax = Syntax::RegularExpression;
        query.text = QStringLiteral("^(a|aa)+$");
        for (const bool replaces : {false, true}) {
            Outcome outcome;
            if (replaces)
                query.replacement = QString();
            find(&outcome);
            QCOMPARE(outcome, InvalidPattern);
            QVERIFY2(outcome.toText().startsWith(QLatin1String("'a.long' was not matched")),
                     qPrintable(outcome.toText()));
        }
    }

    void endsWhenTheSinkSaysSo()
    {
        for (int i = 0; i < 5000; ++i)
            QVERIFY(create(QStringLiteral("a.n%1").arg(i), i));
        int looked = 0;
        const Outcome outcome = search()->find(query, [&looked](const QVector<SearchHit>& hits, int count) {
            looked += count;
            return hits.isEmpty() || hits.last().path != QLatin1String("a.n0");
        });
        QVERIFY(outcome.ok());
        QCOMPARE(looked, 5001);
        looked = 0;
        QCOMPARE(search()->find(query,
                                [&looked](const QVector<SearchHit>&, int count) {
                                    looked += count;
                                    return false;
                                }),
                 Cancelled);
        QVERIFY(looked < 1000);
    }

    // What stays is found once and in order, whatever comes and goes around it meanwhile.
    void goesOnWhileTheTreeChanges()
    {
        QRandomGenerator random(7);
        QStringList staying;
        const auto pathOf = [](int i, const char* kind) {
            return QStringLiteral("t.g%1.s%2.%3%4")
                .arg(i / 300)
                .arg(i / 30 % 10)
                .arg(QLatin1String(kind))
                .arg(i);
        };
        for (int i = 0; i < 6000; ++i) {
            QVERIFY(create(pathOf(i, "gone"), i));
            staying.append(pathOf(i, "kept"));
            QVERIFY(create(staying.last(), i));
        }
        QStringList found;
        int made = 0;
        query.fields = SearchQuery::Name;
        query.text = QStringLiteral("kept");
        const Outcome outcome = search()->find(query, [&](const QVector<SearchHit>& hits, int) {
            for (const SearchHit& hit : hits)
                found.append(hit.path);
            for (int i = 0; i < 300; ++i) {
                const QString path = pathOf(random.bounded(6000), "gone");
                if (exists(path))
                    remove(path);
            }
            for (int i = 0; i < 30; ++i)
                create(pathOf(random.bounded(6000), "new") + QString::number(++made), i);
            return true;
        });
        QVERIFY(outcome.ok());
        QCOMPARE(found, staying);
    }

    // The way to the place that the search has come to may go as a whole.
    void goesOnWhenAGroupIsRemoved()
    {
        for (int group = 0; group < 40; ++group) {
            for (int i = 0; i < 100; ++i)
                QVERIFY(create(QStringLiteral("t.g%1.a.n%2").arg(group).arg(i), i));
        }
        QSet<QString> groups;
        QStringList removed;
        query.text = QStringLiteral("n1");
        query.isWhole = true;
        search()->find(query, [&](const QVector<SearchHit>& hits, int) {
            for (const SearchHit& hit : hits)
                groups.insert(hit.path.section(QLatin1Char('.'), 1, 1));
            if (!hits.isEmpty()) {
                removed.append(hits.last().path.section(QLatin1Char('.'), 1, 1));
                remove(QStringLiteral("t.") + removed.last());
            }
            return true;
        });
        QVERIFY(removed.size() > 3);
        QCOMPARE(groups.size(), 40);
        query.roots = QStringList(QStringLiteral("t"));
        search()->find(query, [&](const QVector<SearchHit>&, int) { return remove("t").ok(); });
        QVERIFY(!exists("t"));
    }

    void replaces_data()
    {
        // after is what the attributes that have changed are then
        const auto row = TestSupport::columns<QByteArray, SearchQuery, QString, QByteArray>("type", "wanted",
                                                                                            "by", "after");
        const auto text = [](const char* wanted, Syntax syntax = Syntax::Plain, bool isWhole = false) {
            SearchQuery made;
            made.text = QString::fromLatin1(wanted);
            made.syntax = syntax;
            made.isWhole = isWhole;
            return made;
        };
        const QByteArray json = R"({"a": "x.x X", "n": 808, "l": ["x", "y;x"], "d": 1.5})";
        const QByteArray ini = "a = x.x X\nn = 808\nq = \"80\"\nd = 1.5\n";
        const auto changed = [](QByteArray bytes, const char* before, const char* after) {
            return bytes.replace(before, after);
        };
        row("json: every place", "json", text("x"), "zz",
            R"({"a": "zz.zz zz", "n": 808, "l": ["zz", "y;zz"], "d": 1.5})");
        row("json: whole element", "json", text("x", Syntax::Plain, true), "z",
            R"({"a": "x.x X", "n": 808, "l": ["z", "y;x"], "d": 1.5})");
        row("json: number", "json", text("8"), "9", changed(json, "808", "909"));
        row("json: wildcard", "json", text("x*x", Syntax::Wildcard), "\\1",
            changed(json, "x.x X", "\\\\1 X"));
        row("json: groups", "json", text("(x)\\.(x)", Syntax::RegularExpression), "\\2\\\\\\1-\\0",
            changed(json, "x.x X", "x\\\\x-x.x X"));
        row("json: empty match", "json", text("^", Syntax::RegularExpression), "y",
            R"({"a": "yx.x X", "n": 808, "l": ["yx", "yy;x"], "d": 1.5})");
        row("ini: to nothing", "ini", text("80"), "", changed(changed(ini, "808", "8"), "\"80\"", "\"\""));
        row("ini: to a text", "ini", text("8"), "x", changed(changed(ini, "808", "x0x"), "\"80\"", "\"x0\""));
        row("ini: to a bool", "ini", text("1.5"), "true", changed(ini, "1.5", "true"));
    }

    void replaces()
    {
        QFETCH(QByteArray, type);
        const QByteArray before = type == "json" ? R"({"a": "x.x X", "n": 808, "l": ["x", "y;x"], "d": 1.5})"
                                                 : "a = x.x X\nn = 808\nq = \"80\"\nd = 1.5\n";
        QVERIFY(mount(type.constData(), "m", before));
        QFETCH(SearchQuery, wanted);
        QFETCH(QString, by);
        query = wanted;
        query.replacement = by;
        QVector<SearchHit> hits;
        const QVector<SearchHit> found = find();
        for (const SearchHit& hit : found) {
            if (hit.refusal.ok())
                hits.append(hit);
        }
        QVERIFY(!hits.isEmpty());
        Outcome outcome;
        std::thread([&] { outcome = search()->replace(hits, QStringLiteral("Replace it")); }).join();
        QVERIFY2(outcome.ok(), qPrintable(outcome.toText()));
        QTEST(saved(), "after");
        for (const SearchHit& hit : qAsConst(hits))
            QCOMPARE(read(hit.path), hit.replacement);
        QCOMPARE(history()->getUndoName(), QStringLiteral("Replace it"));
        QCOMPARE(history()->undo(), Success);
        QCOMPARE(saved(), before);
    }

    void saysWhatCannotBeReplaced()
    {
        QVERIFY(mount("json", "m", R"({"n": 8, "s": "8", "v": 8})"));
        QVERIFY(mount("ini", "r", "n = 8\n", AccessMode::ReadOnly));
        QVERIFY(validations()->addValidation(QStringLiteral("m.v"), QStringLiteral("range(0,10)")) != 0);
        query.text = QStringLiteral("8");
        query.replacement = QStringLiteral("9x");
        QStringList refused;
        QVector<SearchHit> found = find();
        for (const SearchHit& hit : qAsConst(found))
            refused.append(hit.path + (hit.refusal.ok() ? QStringLiteral(" +") : QStringLiteral(" -")));
        QCOMPARE(refused.join(QLatin1Char(' ')), QStringLiteral("m.n - m.s + m.v - r.n -"));
        QVERIFY2(found.first().refusal.toText().contains(QLatin1String("whole number")),
                 qPrintable(found.first().refusal.toText()));
        query.replacement = QStringLiteral("11");
        found = find();
        QVERIFY(found.at(0).refusal.ok());
        QCOMPARE(found.at(2).refusal, RefusedByValidation);
    }

    // Half of a pair of surrogates beside what is replaced, which json does not write.
    void losesNoHalfCharacter()
    {
        const QByteArray text = R"({"a": "x\ud800"})";
        QVERIFY(mount("json", "m", text));
        query.text = QStringLiteral("x");
        query.replacement = QStringLiteral("y");
        const QVector<SearchHit> hits = find();
        QCOMPARE(hits.size(), 1);
        QVERIFY(!search()->replace(hits, QStringLiteral("Replace")).ok());
        QCOMPARE(saved(), text);
    }

    void replacesAllOrNothing()
    {
        QVERIFY(mount("json", "m", R"({"a": "x", "b": "x", "c": "x"})"));
        QVERIFY(mount("ini", "o", "a = x\n"));
        query.text = QStringLiteral("x");
        query.replacement = QStringLiteral("y");
        const QVector<SearchHit> hits = find();
        QCOMPARE(hits.size(), 4);
        QVERIFY(write("m.c", QStringLiteral("other")));
        const QStringList before = content();
        const Outcome outcome = search()->replace(hits, QStringLiteral("Replace"));
        QVERIFY(!outcome.ok());
        QVERIFY2(outcome.toText().contains(QLatin1String("'m.c' was not set")), qPrintable(outcome.toText()));
        QCOMPARE(content(), before);
        QCOMPARE(read("o.a"), QVariant(QStringLiteral("x")));
        QCOMPARE(history()->getUndoName(), QStringLiteral("Write m.c"));
        QVERIFY(remove("m.c"));
        QCOMPARE(search()->replace(hits, QStringLiteral("Replace")), NotFound);
        int told = 0;
        listen("m.a", [&told](const auto&...) { ++told; });
        QVERIFY(search()->replace(hits.mid(0, 2), QStringLiteral("Replace")));
        QCOMPARE(told, 1);
    }
};

VANTRY_TEST_MAIN(QCoreApplication, SearchTest)

#include "search_test.moc"
