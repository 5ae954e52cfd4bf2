#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <QFile>

#include <sys/stat.h>
#include <thread>

using namespace FrameworkCore::AppConfig;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;
using Interfaces::ConflictSide;
using Interfaces::UnsavedChange;
using Repository::AttributeRepository;
using TestSupport::contentOf;

Q_DECLARE_METATYPE(ConflictSide)

namespace {

const QByteArray oven = "; oven\n[oven]\nhot = true\nlimit = 250\n\n[fan]\nspeed = 3\n";

QString textOf(const UnsavedChange& change)
{
    const char* kinds[] = {"changed", "created", "removed"};
    return QStringLiteral("%1 %2 %3>%4%5")
        .arg(change.path, QLatin1String(kinds[int(change.kind)]), change.before.toString(),
             change.after.toString(), QLatin1String(change.isConflict ? " conflict" : ""));
}

} // namespace

// Edits of a mounted file beside what other programs do to it meanwhile.
class BackendChangesTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    static QByteArray ovenWith(const char* before, const char* after)
    {
        return QByteArray(oven).replace(before, after);
    }
    QString file() const { return fileOf("m"); }
    void put(const QByteArray& text) const { TestSupport::writeFile(file(), text); }

    QStringList unsaved()
    {
        QStringList texts;
        for (const UnsavedChange& change : changes()->getUnsavedChanges(QStringLiteral("m")))
            texts.append(textOf(change));
        return texts;
    }

    QString diff()
    {
        QString text;
        changes()->getUnsavedDiff(QStringLiteral("m"), text);
        return text;
    }

    Outcome resolve(const char* path, ConflictSide side)
    {
        return changes()->resolveConflicts(QLatin1String(path), side);
    }

private slots:
    void listsAndRevertsEdits()
    {
        QVERIFY(mount("ini", "m", oven));
        QCOMPARE(changes()->getEditedBackends(), QStringList());
        QVERIFY(write("m.oven.limit", 300));
        QVERIFY(write("m.oven.limit", 250));
        QCOMPARE(changes()->getEditedBackends(), QStringList());
        QVERIFY(write("m.oven.limit", 300));
        QVERIFY(create("m.door.open", false));
        QVERIFY(remove("m.fan.speed"));
        QCOMPARE(changes()->getEditedBackends(), QStringList{QStringLiteral("m")});
        QCOMPARE(unsaved(), QStringList({QStringLiteral("m.fan.speed removed 3>"),
                                         QStringLiteral("m.oven.limit changed 250>300"),
                                         QStringLiteral("m.door.open created >false")}));
        QCOMPARE(diff(), QStringLiteral(
                             "--- %1\n+++ %1\n@@ -1,7 +1,9 @@\n ; oven\n [oven]\n hot = true\n-limit = 250\n"
                             "+limit = 300\n \n [fan]\n-speed = 3\n+\n+[door]\n+open = false\n")
                             .arg(file()));
        QStringList heard;
        listen("m*",
               [&heard](const QString& path, const UpdatePoint&, const UpdateResult& result, auto&&...) {
                   heard.append(QStringLiteral("%1 %2").arg(path).arg(int(result)));
               });
        QCOMPARE(changes()->revert(QStringLiteral("m.door")), Success);
        QCOMPARE(changes()->revert(QStringLiteral("m.oven.limit")), Success);
        QCOMPARE(heard, QStringList({QStringLiteral("m.door.open 3"), QStringLiteral("m.oven.limit 4")}));
        QCOMPARE(read("m.oven.limit"), QVariant(250LL));
        QVERIFY(!exists("m.door"));
        QCOMPARE(unsaved(), QStringList{QStringLiteral("m.fan.speed removed 3>")});
        QCOMPARE(changes()->revert(QStringLiteral("m")), Success);
        QCOMPARE(read("m.fan.speed"), QVariant(3LL));
        QCOMPARE(diff(), QString());
        QCOMPARE(changes()->revert(QStringLiteral("elsewhere")), NotFound);
    }

    // With everything taken back piece by piece, the file is that of its author again, comments included.
    void revertsToTheByte()
    {
        QVERIFY(mount("ini", "m", oven));
        QVERIFY(remove("m.oven"));
        QVERIFY(create("m.oven.hot", true));
        QCOMPARE(changes()->revert(QStringLiteral("m.oven")), Success);
        QCOMPARE(saved(), oven);
    }

    void mergesAtSave()
    {
        QVERIFY(mount("ini", "m", oven));
        QVERIFY(write("m.oven.limit", 300));
        put(ovenWith("speed = 3", "speed=4"));
        QCOMPARE(saved(), ovenWith("speed = 3", "speed=4").replace("250", "300"));
        QCOMPARE(read("m.fan.speed"), QVariant(4LL));
        QCOMPARE(unsaved(), QStringList());
    }

    void refusesConflicts_data()
    {
        const auto row = TestSupport::columns<ConflictSide, QByteArray>("side", "limit");
        row("mine", ConflictSide::Mine, "300");
        row("theirs", ConflictSide::Theirs, "260");
        row("base", ConflictSide::Base, "250");
    }

    void refusesConflicts()
    {
        QFETCH(ConflictSide, side);
        QFETCH(QByteArray, limit);
        QVERIFY(mount("ini", "m", oven));
        QVERIFY(write("m.oven.limit", 300));
        QVERIFY(write("m.oven.hot", false));
        const QByteArray theirs = ovenWith("250", "260");
        put(theirs);
        const QByteArray refusal = saved();
        for (const char* part : {"'m'", "m.oven.limit", "300", "260"})
            QVERIFY2(refusal.contains(part), refusal);
        QCOMPARE(contentOf(file()), theirs);
        QCOMPARE(unsaved(), QStringList({QStringLiteral("m.oven.hot changed true>false"),
                                         QStringLiteral("m.oven.limit changed 260>300 conflict")}));
        QVERIFY(!save());
        QVERIFY(reload());
        QCOMPARE(read("m.oven.limit"), QVariant(300LL));
        QCOMPARE(resolve("m.fan", ConflictSide::Mine), NotFound);
        QCOMPARE(resolve("m.oven", side), Success);
        QCOMPARE(read("m.oven.limit"), QVariant(qlonglong(limit.toInt())));
        QCOMPARE(saved(), QByteArray(oven).replace("250", limit).replace("true", "false"));
    }

    // Undo may lead back to what both programs began with; what the other one has written is not lost by it.
    void opensConflictsAgainAtUndo_data()
    {
        const auto row = TestSupport::columns<QString, QString>("way", "left");
        const QString conflict = QStringLiteral("m.oven.limit changed 260>250 conflict");
        row("mine kept", "mine", conflict);
        row("mine kept by removal", "removal", conflict);
        row("mine kept twice", "twice", conflict);
        row("theirs taken", "theirs", conflict);
        row("theirs taken beside other edits", "beside", conflict);
        row("mine kept and saved in part", "saved", QStringLiteral("m.oven.limit changed 300>250"));
    }

    void opensConflictsAgainAtUndo()
    {
        QFETCH(QString, way);
        QFETCH(QString, left);
        QVERIFY(mount("ini", "m", oven));
        history()->recordThisThread();
        if (way == QLatin1String("beside") || way == QLatin1String("saved"))
            QVERIFY(write("m.oven.hot", false));
        QVERIFY(way == QLatin1String("removal") ? remove("m.oven.limit") : write("m.oven.limit", 300));
        const bool takesTheirs = way == QLatin1String("theirs") || way == QLatin1String("beside");
        const ConflictSide side = takesTheirs ? ConflictSide::Theirs : ConflictSide::Mine;
        QByteArray theirs;
        for (const char* limit : {"270", "260"}) {
            theirs = ovenWith("250", limit);
            if (way != QLatin1String("twice") && theirs.contains("270"))
                continue;
            put(theirs);
            QVERIFY(!save());
            QCOMPARE(resolve("m", side), Success);
        }
        if (way == QLatin1String("saved"))
            QCOMPARE(changes()->saveChanges(QStringLiteral("m"), {QStringLiteral("m.oven.limit")}), Success);
        while (!history()->getUndoName().isEmpty())
            QCOMPARE(history()->undo(), Success);
        QCOMPARE(read("m.oven.limit"), QVariant(250LL));
        QCOMPARE(unsaved(), QStringList(left));
        if (way != QLatin1String("saved")) {
            QVERIFY(!save());
            QCOMPARE(contentOf(file()), theirs);
            QCOMPARE(resolve("m", ConflictSide::Mine), Success);
        }
        QCOMPARE(saved(), oven);
    }

    void keepsSecretsOfWriteOnlyFiles()
    {
        QVERIFY(mount("ini", "m", oven, AccessMode::WriteOnly));
        QVERIFY(write("m.oven.limit", 301));
        put(ovenWith("250", "262"));
        const QByteArray refusal = saved();
        QVERIFY2(refusal.contains("m.oven.limit") && !refusal.contains("301") && !refusal.contains("262"),
                 refusal);
        QCOMPARE(unsaved(), QStringList{QStringLiteral("m.oven.limit changed > conflict")});
        QCOMPARE(diff(), QString());
    }

    void holdsOnWhenTheFileGoes()
    {
        QVERIFY(mount("ini", "m", oven));
        QVERIFY(write("m.oven.limit", 300));
        QVERIFY(QFile::remove(file()));
        QVERIFY(saved().contains("has been deleted"));
        QVERIFY(!reload());
        QVERIFY(!QFile::exists(file()));
        QCOMPARE(unsaved().first(), QStringLiteral("m changed > conflict"));
        QCOMPARE(read("m.oven.limit"), QVariant(300LL));
        QCOMPARE(resolve("m", ConflictSide::Mine), Success);
        QCOMPARE(saved(), ovenWith("250", "300"));

        QVERIFY(QFile::remove(file()));
        QVERIFY(reload());
        QCOMPARE(tree()->getChildCount(QStringLiteral("m")), 0);
        put(oven);
        QVERIFY(reload());
        QVERIFY(write("m.oven.limit", 300));
        QVERIFY(QFile::remove(file()));
        QVERIFY(!reload());
        QCOMPARE(resolve("m", ConflictSide::Theirs), Success);
        QCOMPARE(tree()->getChildCount(QStringLiteral("m")), 0);
    }

    // What came in meanwhile does not serve; once it does, the edits are put onto it.
    void waitsForATextThatServes()
    {
        QVERIFY(mount("ini", "m", oven));
        QVERIFY(write("m.oven.limit", 300));
        const QByteArray broken = QByteArray(oven) + "[oven\n";
        put(broken);
        QVERIFY(saved().contains("m:8:"));
        QVERIFY(!reload());
        QCOMPARE(contentOf(file()), broken);
        QCOMPARE(read("m.oven.limit"), QVariant(300LL));
        put(ovenWith("3\n", "5\n"));
        QVERIFY(reload());
        QCOMPARE(saved(), ovenWith("3\n", "5\n").replace("250", "300"));
    }

    void writesValidEmptyFiles()
    {
        QVERIFY(mountFile("json", "m", file()));
        QCOMPARE(saved(), QByteArray("{}\n"));
        QVERIFY(create("m.a", 1));
        QCOMPARE(saved(), QByteArray("{\n    \"a\": 1\n}\n"));
    }

    // Two repositories, as two programs would, edit different keys of one file at once.
    void losesNothingBetweenTwoPrograms()
    {
        put("[a]\nx = 0\n[b]\nx = 0\n");
        constexpr int rounds = 60;
        const auto run = [this](const char* path) {
            const auto own = AttributeRepository::create();
            own->getBackendInterface()->createBackend(QStringLiteral("ini"), QStringLiteral("m"),
                                                      {file(), {}, AccessMode::ReadWrite}, 2);
            for (int i = 1; i <= rounds; ++i) {
                own->getWriterInterface()->writeAttributeValue(QLatin1String(path), i, 15);
                if (!own->getBackendInterface()->saveBackend(QStringLiteral("m")))
                    return false;
            }
            return true;
        };
        bool isGood = false;
        std::thread other([&] { isGood = run("m.b.x"); });
        QVERIFY(run("m.a.x"));
        other.join();
        QVERIFY(isGood);
        QCOMPARE(contentOf(file()), QByteArray("[a]\nx = 60\n[b]\nx = 60\n"));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, BackendChangesTest)

#include "backend_changes_test.moc"
