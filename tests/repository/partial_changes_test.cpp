#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <QFile>

using FrameworkCore::AppConfig::Interfaces::ConflictSide;
using FrameworkCore::AppConfig::Interfaces::UnsavedChange;
using TestSupport::contentOf;

namespace {

const QByteArray plant = "; the plant\n[pump]\nspeed = 3 ; rpm\nname = one\n\n; between\n\n[fan]\nspeed=4\n"
                         "on = true\n\n; far below\n; a\n; b\n; c\n\n[door]\nopen = false\n";

} // namespace

// Some of the unsaved changes of a file are saved or reverted, the others stay.
class PartialChangesTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

private slots:
    void savesAndRevertsSomePaths_data()
    {
        // file: after saving the paths; text: what is left to be saved after reverting them
        const auto row =
            TestSupport::columns<QByteArray, QByteArray, QString, QString, QByteArray, QByteArray>(
                "format", "before", "edits", "paths", "file", "text");
        const char* const three = "m.pump.speed=30 m.fan.on=false m.door.open=true";
        row("one value", "ini", plant, three, "m.fan.on", with("on = true", "on = false"),
            with("speed = 3 ;", "speed = 30 ;").replace("open = false", "open = true"));
        row("a group", "ini", plant, three, "m.pump", with("speed = 3 ;", "speed = 30 ;"),
            with("on = true", "on = false").replace("open = false", "open = true"));
        row("several", "ini", plant, three, "m.pump.speed m.door.open",
            with("speed = 3 ;", "speed = 30 ;").replace("open = false", "open = true"),
            with("on = true", "on = false"));
        row("all", "ini", plant, three, "m",
            with("speed = 3 ;", "speed = 30 ;")
                .replace("on = true", "on = false")
                .replace("open = false", "open = true"),
            plant);
        row("a new one", "ini", plant, "m.fan.size+=9 m.fan.on=false", "m.fan.size",
            with("on = true\n", "on = true\nsize = 9\n"), with("on = true", "on = false"));
        row("a removed one", "ini", plant, "m.pump.name- m.fan.on=false", "m.pump.name",
            with("name = one\n", ""), with("on = true", "on = false"));
        row("nothing of these", "ini", plant, three, "m.pump.name", plant,
            with("speed = 3 ;", "speed = 30 ;")
                .replace("on = true", "on = false")
                .replace("open = false", "open = true"));
        row("json", "json", "{\n  // one\n  \"a\": 1,\n  \"b\": 2 // two\n}\n", "m.b=3 m.c+=4", "m.c",
            "{\n  // one\n  \"a\": 1,\n  \"b\": 2, // two\n  \"c\": 4\n}\n",
            "{\n  // one\n  \"a\": 1,\n  \"b\": 3 // two\n}\n");
        row("xml", "xml", "<r>\n  <a x='1'>2</a>\n  <!-- b --><b>3</b>\n</r>\n", "m.r.a.@x=5 m.r.b=6",
            "m.r.b", "<r>\n  <a x='1'>2</a>\n  <!-- b --><b>6</b>\n</r>\n",
            "<r>\n  <a x='5'>2</a>\n  <!-- b --><b>3</b>\n</r>\n");
        row("toml", "toml", "# one\na = 1 # a\n[t]\nb = 2 # b\n", "m.a=5 m.t.b=6", "m.t",
            "# one\na = 1 # a\n[t]\nb = 6 # b\n", "# one\na = 5 # a\n[t]\nb = 2 # b\n");
    }

    void savesAndRevertsSomePaths()
    {
        QFETCH(QByteArray, format);
        QFETCH(QByteArray, before);
        QFETCH(QString, edits);
        QFETCH(QString, paths);
        QFETCH(QByteArray, file);
        QFETCH(QByteArray, text);
        QVERIFY(mount(format.constData(), "m", before));
        edit(edits);
        const QStringList edited = content();
        const Outcome saved = changes()->saveChanges(Name("m"), names(paths));
        QVERIFY2(saved.ok(), qPrintable(saved.toText()));
        QCOMPARE(contentOf(fileOf("m")), file);
        QCOMPARE(content(), edited); // in memory nothing has changed

        restart();
        QVERIFY(mount(format.constData(), "m", before));
        history()->recordThisThread();
        edit(edits);
        const Outcome reverted = changes()->revertChanges(Name("m"), names(paths));
        QVERIFY2(reverted.ok(), qPrintable(reverted.toText()));
        QCOMPARE(contentOf(fileOf("m")), before);
        if (history()->getUndoName() == QLatin1String("Revert changes of m")) {
            const QStringList left = content();
            QVERIFY(history()->undo());
            QCOMPARE(content(), edited);
            QVERIFY(history()->redo());
            QCOMPARE(content(), left);
        } else {
            QCOMPARE(content(), edited); // there was nothing of these
        }
        QCOMPARE(this->saved(), text);
    }

    // What is left after a part was saved is saved later, to the same text as all at once.
    void savesTheRestLater()
    {
        QVERIFY(mount("ini", "m", plant));
        edit("m.pump.speed=30 m.fan.size+=9 m.door.open-");
        QVERIFY(changes()->saveChanges(Name("m"), {Name("m.fan.size")}));
        QCOMPARE(unsaved(), names("m.door.open m.pump.speed"));
        QVERIFY(changes()->revertChanges(Name("m"), {Name("m.door.open")}));
        QCOMPARE(saved(),
                 with("speed = 3 ;", "speed = 30 ;").replace("on = true\n", "on = true\nsize = 9\n"));
        QCOMPARE(changes()->getEditedBackends(), QStringList());
    }

    void savesAndRevertsHunks()
    {
        QVERIFY(mount("ini", "m", plant));
        history()->recordThisThread();
        edit("m.pump.speed=30 m.fan.size+=9 m.door.open=true");
        const QStringList hunks = hunksOf("m");
        QCOMPARE(hunks.size(), 3);
        QVERIFY(changes()->saveHunks(Name("m"), {hunks[1]}));
        QCOMPARE(contentOf(fileOf("m")), with("on = true\n", "on = true\nsize = 9\n"));
        QCOMPARE(unsaved(), names("m.pump.speed m.door.open"));

        const QStringList left = hunksOf("m");
        QCOMPARE(left.size(), 2);
        const Outcome again = changes()->revertHunks(Name("m"), {hunks[1]});
        QVERIFY2(again.toText().endsWith(QStringLiteral("its changes are others by now; look at them again")),
                 qPrintable(again.toText()));
        QVERIFY(changes()->revertHunks(Name("m"), {left[0]}));
        QCOMPARE(unsaved(), names("m.door.open"));
        QCOMPARE(read("m.pump.speed"), QVariant(3LL));
        QVERIFY(history()->undo());
        QCOMPARE(hunksOf("m"), left);
        QVERIFY(history()->redo());
        QCOMPARE(saved(),
                 with("on = true\n", "on = true\nsize = 9\n").replace("open = false", "open = true"));
    }

    // A name with its comments, which no single attribute can bring back.
    void revertsARenamingByItsHunk()
    {
        QVERIFY(mount("ini", "m", plant));
        history()->recordThisThread();
        QVERIFY(move("m.pump.speed", "m.pump.rate"));
        QVERIFY(changes()->revertHunks(Name("m"), hunksOf("m")));
        QCOMPARE(changes()->getEditedBackends(), QStringList());
        QCOMPARE(read("m.pump.speed"), QVariant(3LL));
        QVERIFY(history()->undo());
        QCOMPARE(saved(), with("speed = 3 ;", "rate = 3 ;"));
    }

    // A name whose parts are saved one after the other comes with its comments in the end.
    void losesNoCommentInParts()
    {
        QVERIFY(mount("ini", "m", plant));
        QVERIFY(move("m.pump.speed", "m.pump.rate"));
        QVERIFY(changes()->saveChanges(Name("m"), names("m.pump.rate")));
        QCOMPARE(unsaved(), names("m.pump.speed"));
        QVERIFY(contentOf(fileOf("m")).contains("speed = 3 ; rpm\n"));
        QVERIFY(changes()->saveChanges(Name("m"), names("m.pump.speed")));
        QCOMPARE(contentOf(fileOf("m")), with("speed = 3 ;", "rate = 3 ;"));
        QCOMPARE(changes()->getEditedBackends(), QStringList());
    }

    void keepsTheEncoding()
    {
        const QString before = QString::fromUtf8("a=ä\n1=1\n2=2\n3=3\n4=4\n5=5\n6=6\n7=7\nb=ö\n");
        const auto bytes = [](const QString& text) {
            QByteArray encoded("\xFF\xFE");
            for (const QChar unit : text)
                encoded.append(char(unit.cell())).append(char(unit.row()));
            return encoded;
        };
        QVERIFY(mount("ini", "m", bytes(before)));
        edit("m.a=ü m.b=é");
        QVERIFY(changes()->saveHunks(Name("m"), {hunksOf("m").last()}));
        QCOMPARE(contentOf(fileOf("m")),
                 bytes(QString(before).replace(QString::fromUtf8("ö"), QString::fromUtf8("é"))));
        QVERIFY(changes()->revertHunks(Name("m"), hunksOf("m")));
        QCOMPARE(read("m.a"), QVariant(QString::fromUtf8("ä")));
    }

    // Another program's changes are merged first, and its conflicts refuse a part as they refuse all.
    void mergesBeforeAPartIsSaved()
    {
        QVERIFY(mount("ini", "m", plant));
        edit("m.pump.speed=30 m.door.open=true");
        put("m", with("name = one", "name = two"));
        QVERIFY(changes()->saveChanges(Name("m"), {Name("m.door.open")}));
        QCOMPARE(contentOf(fileOf("m")),
                 with("name = one", "name = two").replace("open = false", "open = true"));
        QCOMPARE(read("m.pump.name"), QVariant(QStringLiteral("two")));

        const QByteArray theirs = with("speed = 3", "speed = 5");
        put("m", theirs);
        const Outcome refused = changes()->saveChanges(Name("m"), {Name("m.pump.speed")});
        QVERIFY2(
            refused.toText().contains(QStringLiteral("another program has changed what was edited here")),
            qPrintable(refused.toText()));
        QCOMPARE(contentOf(fileOf("m")), theirs);
        const auto listed = changes()->getUnsavedChanges(Name("m"));
        const auto conflict =
            std::find_if(listed.begin(), listed.end(), [](const auto& each) { return each.isConflict; });
        QVERIFY(conflict != listed.end());
        QCOMPARE(QVariantList({conflict->base, conflict->before, conflict->after}),
                 QVariantList({3LL, 5LL, 30LL}));
    }

    void savesAPartOfANewFile()
    {
        QVERIFY(mountFile("json", "m", fileOf("m")));
        edit("m.a+=1 m.b.c+=2");
        QVERIFY(changes()->saveChanges(Name("m"), {Name("m.b")}));
        restart();
        QVERIFY(mountFile("json", "m", fileOf("m")));
        QVERIFY(!exists("m.a"));
        QCOMPARE(read("m.b.c"), QVariant(2LL));
    }

private:
    static QByteArray with(const char* before, const char* after)
    {
        return QByteArray(plant).replace(before, after);
    }

    static QStringList names(const Name& words) { return words.split(QLatin1Char(' ')); }

    // "path=value", "path+=value" for a new one, "path-".
    void edit(const Name& edits)
    {
        for (const QString& each : names(edits)) {
            if (each.endsWith(QLatin1Char('-'))) {
                QVERIFY(remove(each.chopped(1)));
                continue;
            }
            const int equals = each.indexOf(QLatin1Char('='));
            const QString text = each.mid(equals + 1);
            bool isNumber = false;
            const qlonglong number = text.toLongLong(&isNumber);
            const QVariant value = isNumber                         ? QVariant(number)
                                   : text == QLatin1String("true")  ? QVariant(true)
                                   : text == QLatin1String("false") ? QVariant(false)
                                                                    : QVariant(text);
            const bool isNew = each[equals - 1] == QLatin1Char('+');
            const Outcome outcome =
                isNew ? create(each.left(equals - 1), value) : write(each.left(equals), value);
            QVERIFY2(outcome.ok(), qPrintable(outcome.toText()));
        }
    }

    QStringList unsaved() const
    {
        QStringList found;
        for (const UnsavedChange& change : changes()->getUnsavedChanges(Name("m")))
            found.append(change.path);
        return found;
    }

    QStringList hunksOf(const Name& backend) const
    {
        QString diff;
        changes()->getUnsavedDiff(backend, diff);
        QStringList hunks = diff.split(QStringLiteral("\n@@ "));
        hunks.removeFirst();
        for (QString& hunk : hunks)
            hunk = QStringLiteral("@@ ") + hunk +
                   (hunk.endsWith(QLatin1Char('\n')) ? QString() : QStringLiteral("\n"));
        return hunks;
    }
};

VANTRY_TEST_MAIN(QCoreApplication, PartialChangesTest)

#include "partial_changes_test.moc"
