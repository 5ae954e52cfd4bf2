#include "host/Shared/Logging/LogRecord.h"
#include "repository/AttributeRepository.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <thread>

using namespace FrameworkCore::AppConfig;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;
using Interfaces::ConflictSide;
using Interfaces::UnsavedChange;
using Repository::AttributeRepository;
using TestSupport::contentOf;

namespace {

const QByteArray oven = "; oven\n[oven]\nhot = true\nlimit = 250\n\n[fan]\nspeed = 3\n";

QString textOf(const UnsavedChange& change)
{
    const char* kinds[] = {"changed", "created", "removed"};
    return QStringLiteral("%1 %2 %3>%4%5")
        .arg(change.path, QLatin1String(kinds[int(change.kind)]), change.before.toString(),
             change.after.toString(), QLatin1String(change.isConflict ? " conflict" : ""));
}

QString lastFailure()
{
    const auto lines = Shared::Logging::LogRecord::instance().getLines();
    return lines.isEmpty() ? QString() : lines.last().text;
}

} // namespace

// Edits of a mounted file beside what other programs do to it meanwhile.
class BackendChangesTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<AttributeRepository> repository;
    std::unique_ptr<QTemporaryDir> folder;
    QString file;

    void put(const QByteArray& bytes) const { TestSupport::writeFile(file, bytes); }

    bool mount(const char* type = "ini", AccessMode access = AccessMode::ReadWrite)
    {
        return repository->getBackendInterface()->createBackend(QLatin1String(type), QStringLiteral("m"),
                                                                {file, {}, access}, 2);
    }

    bool save() { return repository->getBackendInterface()->saveBackend(QStringLiteral("m")); }
    bool reload() { return repository->getBackendInterface()->reloadBackend(QStringLiteral("m")).ok(); }

    QVariant read(const char* path)
    {
        QVariant value;
        repository->getReaderInterface()->readAttributeValue(QLatin1String(path), value, 0);
        return value;
    }

    bool write(const char* path, const QVariant& value)
    {
        return repository->getWriterInterface()->writeAttributeValue(QLatin1String(path), value, 15) == 0;
    }

    bool create(const char* path, const QVariant& value)
    {
        return repository->getWriterInterface()->createAttribute(QLatin1String(path), value, 2, 3);
    }

    bool remove(const char* path)
    {
        return repository->getTreeInterface()->removeTree(QLatin1String(path)) == Success;
    }

    std::shared_ptr<Interfaces::ChangesInterface> changes() { return repository->getChangesInterface(); }

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
    void init()
    {
        repository = AttributeRepository::create();
        folder = std::make_unique<QTemporaryDir>();
        file = folder->filePath(QStringLiteral("f"));
        put(oven);
    }

    void listsAndRevertsEdits()
    {
        QVERIFY(mount());
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
                             .arg(file));
        QStringList heard;
        repository->getNotificationInterface()->registerUpdateCallback(
            QStringLiteral("m*"),
            [&heard](const QString& path, const UpdatePoint&, const UpdateResult& result, auto&&...) {
                heard.append(QStringLiteral("%1 %2").arg(path).arg(int(result)));
            },
            8);
        QCOMPARE(changes()->revert(QStringLiteral("m.door")), Success);
        QCOMPARE(changes()->revert(QStringLiteral("m.oven.limit")), Success);
        QCOMPARE(heard, QStringList({QStringLiteral("m.door.open 3"), QStringLiteral("m.oven.limit 4")}));
        QCOMPARE(read("m.oven.limit"), QVariant(250LL));
        QVERIFY(!repository->getTreeInterface()->getNodeInformation(QStringLiteral("m.door")).exists);
        QCOMPARE(unsaved(), QStringList{QStringLiteral("m.fan.speed removed 3>")});
        QCOMPARE(changes()->revert(QStringLiteral("m")), Success);
        QCOMPARE(read("m.fan.speed"), QVariant(3LL));
        QCOMPARE(diff(), QString());
        QCOMPARE(changes()->revert(QStringLiteral("elsewhere")), NotFound);
    }

    // With everything taken back piece by piece, the file is that of its author again, comments included.
    void revertsToTheByte()
    {
        QVERIFY(mount());
        QVERIFY(remove("m.oven"));
        QVERIFY(create("m.oven.hot", true));
        QCOMPARE(changes()->revert(QStringLiteral("m.oven")), Success);
        QVERIFY(save());
        QCOMPARE(contentOf(file), oven);
    }

    void mergesAtSave()
    {
        QVERIFY(mount());
        QVERIFY(write("m.oven.limit", 300));
        put(QByteArray(oven).replace("speed = 3", "speed=4"));
        QVERIFY(save());
        QCOMPARE(contentOf(file), QByteArray(oven).replace("speed = 3", "speed=4").replace("250", "300"));
        QCOMPARE(read("m.fan.speed"), QVariant(4LL));
        QCOMPARE(unsaved(), QStringList());
    }

    void refusesConflicts_data()
    {
        QTest::addColumn<bool>("takesTheirs");
        QTest::newRow("mine") << false;
        QTest::newRow("theirs") << true;
    }

    void refusesConflicts()
    {
        QFETCH(bool, takesTheirs);
        QVERIFY(mount());
        QVERIFY(write("m.oven.limit", 300));
        QVERIFY(write("m.oven.hot", false));
        const QByteArray theirs = QByteArray(oven).replace("250", "260");
        put(theirs);
        QVERIFY(!save());
        for (const char* part : {"'m'", "m.oven.limit", "300", "260"})
            QVERIFY2(lastFailure().contains(QLatin1String(part)), qPrintable(lastFailure()));
        QCOMPARE(contentOf(file), theirs);
        QCOMPARE(unsaved(), QStringList({QStringLiteral("m.oven.hot changed true>false"),
                                         QStringLiteral("m.oven.limit changed 260>300 conflict")}));
        QVERIFY(!save());
        QVERIFY(reload());
        QCOMPARE(read("m.oven.limit"), QVariant(300LL));
        QCOMPARE(resolve("m.fan", ConflictSide::Mine), NotFound);
        QCOMPARE(resolve("m.oven", takesTheirs ? ConflictSide::Theirs : ConflictSide::Mine), Success);
        const char* limit = takesTheirs ? "260" : "300";
        QCOMPARE(read("m.oven.limit"), QVariant(qlonglong(QByteArray(limit).toInt())));
        QVERIFY(save());
        QCOMPARE(contentOf(file), QByteArray(oven).replace("250", limit).replace("true", "false"));
    }

    void keepsSecretsOfWriteOnlyFiles()
    {
        QVERIFY(mount("ini", AccessMode::WriteOnly));
        QVERIFY(write("m.oven.limit", 301));
        put(QByteArray(oven).replace("250", "262"));
        QVERIFY(!save());
        QVERIFY(lastFailure().contains(QLatin1String("m.oven.limit")));
        QVERIFY(!lastFailure().contains(QLatin1String("301")) &&
                !lastFailure().contains(QLatin1String("262")));
        QCOMPARE(unsaved(), QStringList{QStringLiteral("m.oven.limit changed > conflict")});
        QCOMPARE(diff(), QString());
    }

    void holdsOnWhenTheFileGoes()
    {
        QVERIFY(mount());
        QVERIFY(write("m.oven.limit", 300));
        QVERIFY(QFile::remove(file));
        QVERIFY(!save());
        QVERIFY(lastFailure().contains(QLatin1String("has been deleted")));
        QVERIFY(!reload());
        QVERIFY(!QFile::exists(file));
        QCOMPARE(unsaved().first(), QStringLiteral("m changed > conflict"));
        QCOMPARE(read("m.oven.limit"), QVariant(300LL));
        QCOMPARE(resolve("m", ConflictSide::Mine), Success);
        QVERIFY(save());
        QCOMPARE(contentOf(file), QByteArray(oven).replace("250", "300"));

        QVERIFY(QFile::remove(file));
        QVERIFY(reload());
        QCOMPARE(repository->getTreeInterface()->getChildCount(QStringLiteral("m")), 0);
        put(oven);
        QVERIFY(reload());
        QVERIFY(write("m.oven.limit", 300));
        QVERIFY(QFile::remove(file));
        QVERIFY(!reload());
        QCOMPARE(resolve("m", ConflictSide::Theirs), Success);
        QCOMPARE(repository->getTreeInterface()->getChildCount(QStringLiteral("m")), 0);
    }

    // What came in meanwhile does not serve; once it does, the edits are put onto it.
    void waitsForATextThatServes()
    {
        QVERIFY(mount());
        QVERIFY(write("m.oven.limit", 300));
        const QByteArray broken = QByteArray(oven) + "[oven\n";
        put(broken);
        QVERIFY(!save());
        QVERIFY2(lastFailure().contains(QLatin1String("f:8:")), qPrintable(lastFailure()));
        QVERIFY(!reload());
        QCOMPARE(contentOf(file), broken);
        QCOMPARE(read("m.oven.limit"), QVariant(300LL));
        put(QByteArray(oven).replace("3\n", "5\n"));
        QVERIFY(reload());
        QVERIFY(save());
        QCOMPARE(contentOf(file), QByteArray(oven).replace("3\n", "5\n").replace("250", "300"));
    }

    void writesValidEmptyFiles()
    {
        file = folder->filePath(QStringLiteral("new"));
        QVERIFY(mount("json"));
        QVERIFY(save());
        QCOMPARE(contentOf(file), QByteArray("{}\n"));
        QVERIFY(create("m.a", 1));
        QVERIFY(save());
        QCOMPARE(contentOf(file), QByteArray("{\n    \"a\": 1\n}\n"));
    }

    // Two repositories, as two programs would, edit different keys of one file at once.
    void losesNothingBetweenTwoPrograms()
    {
        put("[a]\nx = 0\n[b]\nx = 0\n");
        constexpr int rounds = 60;
        const auto run = [this](const char* path) {
            const auto own = AttributeRepository::create();
            own->getBackendInterface()->createBackend(QStringLiteral("ini"), QStringLiteral("m"),
                                                      {file, {}, AccessMode::ReadWrite}, 2);
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
        QCOMPARE(contentOf(file), QByteArray("[a]\nx = 60\n[b]\nx = 60\n"));
    }
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<QCoreApplication, BackendChangesTest>(argc, argv);
}

#include "backend_changes_test.moc"
