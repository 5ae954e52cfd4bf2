#include "tests/support/RepositoryTest.h"

#include <QDir>

#include <functional>

using namespace FrameworkCore::AppConfig;
using TestSupport::text;

class LockingTest;
using Edit = std::function<Outcome(LockingTest&)>;
Q_DECLARE_METATYPE(Edit)

// A locked backend takes no edit, whoever makes it, and loses none that it had.
class LockingTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

    const QByteArray json = "{\n  // of the pump\n  \"port\": 80,\n  \"names\": [\"a\", \"b\"],\n"
                            "  \"rows\": [{\"k\": 1}, {\"k\": 2}],\n  \"group\": {\"x\": 1}\n}\n";

    Outcome lock(const Name& name = "m", bool isOne = true) { return backends()->setLocked(name, isOne); }

    AccessMode access(const Name& path) { return tree()->getNodeInformation(path).accessMode; }

    QByteArray exportedText() { return exported("m", "json"); }

private slots:
    void init()
    {
        RepositoryTest::init();
        QVERIFY(mount("json", "m", json).ok());
        QVERIFY(mount("ini", "other", "port=80\n").ok());
    }

    void refusesEdits_data()
    {
        QTest::addColumn<Edit>("edit");
        const auto row = [](const char* name, const Edit& edit) { QTest::newRow(name) << edit; };
        row("write", [](LockingTest& test) { return test.write("m.port", 81); });
        row("write of another type", [](LockingTest& test) {
            return test.repository->getWriterInterface()->retype(text("m.port"), text("x"));
        });
        row("write of an element", [](LockingTest& test) { return test.write("m.names.1", text("c")); });
        row("create", [](LockingTest& test) { return test.create("m.new", 1); });
        row("create below", [](LockingTest& test) { return test.create("m.group.deep.new", 1); });
        row("insert an element", [](LockingTest& test) {
            return test.repository->getWriterInterface()->create(text("m.names.0"), text("z"), 4, 3);
        });
        row("remove", [](LockingTest& test) { return test.remove("m.port"); });
        row("remove a group", [](LockingTest& test) { return test.remove("m.group"); });
        row("remove an element", [](LockingTest& test) { return test.remove("m.rows.0"); });
        row("move within", [](LockingTest& test) { return test.move("m.port", "m.door"); });
        row("move out", [](LockingTest& test) { return test.move("m.group.x", "other.door"); });
        row("move in", [](LockingTest& test) { return test.move("other.port", "m.door"); });
        row("move an element", [](LockingTest& test) { return test.move("m.rows.0", "m.rows.1"); });
        row("copy in", [](LockingTest& test) { return test.copy("other", "m.copy"); });
        row("import", [](LockingTest& test) { return test.import("m", "ini", "port=81\n"); });
    }

    void refusesEdits()
    {
        QFETCH(Edit, edit);
        const QByteArray before = exportedText();
        const QByteArray otherBefore = exported("other", "ini");
        QVERIFY(lock());
        const Outcome refused = edit(*this);
        QVERIFY2(refused == NotWritable, qPrintable(refused.toText()));
        QVERIFY2(refused.toText().contains(text("locked")), qPrintable(refused.toText()));
        QVERIFY2(refused.toText().contains(text("unlock")), qPrintable(refused.toText()));
        QCOMPARE(exportedText(), before);
        QCOMPARE(exported("other", "ini"), otherBefore);
        QVERIFY(changes()->getEditedBackends().isEmpty());

        QVERIFY(lock("m", false));
        const Outcome done = edit(*this);
        QVERIFY2(done.ok(), qPrintable(done.toText()));
    }

    void refusesUndo_data()
    {
        QTest::addColumn<Edit>("edit");
        QTest::newRow("of a value") << Edit([](LockingTest& test) { return test.write("m.port", 81); });
        QTest::newRow("of the shape") << Edit([](LockingTest& test) { return test.remove("m.group"); });
    }

    void refusesUndo()
    {
        QFETCH(Edit, edit);
        {
            const auto step = history()->beginStep(text("Edit"));
            QVERIFY(edit(*this));
        }
        const QByteArray edited = exportedText();
        QVERIFY(lock());
        const Outcome refused = history()->undo();
        QVERIFY2(refused.toText().contains(text("unlock")), qPrintable(refused.toText()));
        QCOMPARE(exportedText(), edited);
        QVERIFY(lock("m", false));
        QVERIFY(history()->undo());
        QVERIFY(exportedText() != edited);
    }

    // What was edited before, and what others write, is nobody's edit now.
    void letsTheRestGoOn()
    {
        QVERIFY(write("m.port", 81));
        QVERIFY(lock());
        QByteArray wanted = json;
        QCOMPARE(saved(), wanted.replace("80", "81"));
        put("m", QByteArray(json).replace("80", "82"));
        QVERIFY(reload());
        QCOMPARE(read("m.port"), QVariant(82LL));
        QCOMPARE(access("m.port"), AccessMode::ReadOnly);

        QVERIFY(lock("m", false));
        QVERIFY(write("m.port", 83));
        QVERIFY(lock());
        QVERIFY(changes()->revert(text("m")));
        QCOMPARE(read("m.port"), QVariant(82LL));
        QVERIFY(close());
    }

    void tellsWhatIsLocked()
    {
        QVERIFY(mount("ini", "hidden", "k=1\n", AccessMode::WriteOnly).ok());
        QVERIFY(lock());
        QVERIFY(lock("hidden"));
        QCOMPARE(backends()->getLockedBackends(), QStringList({text("m"), text("hidden")}));
        QCOMPARE(access("m.port"), AccessMode::ReadOnly);
        QCOMPARE(access("m.names.0"), AccessMode::ReadOnly);
        QCOMPARE(access("other.port"), AccessMode::ReadWrite);
        QCOMPARE(access("hidden.k"), AccessMode::None);
        QCOMPARE(repository->getReaderInterface()->getAttribute(text("m.port"))->getAccessMode(),
                 AccessMode::ReadOnly);
        const Outcome hidden = write("hidden.k", 2);
        QVERIFY2(hidden.toText().contains(text("locked")), qPrintable(hidden.toText()));

        QVERIFY(lock("m", false));
        QCOMPARE(access("m.port"), AccessMode::ReadWrite);
        const Outcome unknown = lock("nobody");
        QVERIFY2(unknown == NotFound && unknown.toText().contains(text("nobody")),
                 qPrintable(unknown.toText()));
    }

    void locksAFolderWithItsFiles()
    {
        QVERIFY(QDir(folder->path()).mkpath(QStringLiteral("d")));
        put("d/a.ini", "k=1\n");
        QVERIFY(mountFile("folder", "d", fileOf("d")));
        QVERIFY(lock("d"));
        put("d/b.ini", "k=1\n");
        QVERIFY(reload("d"));
        QVERIFY(write("d.a%2Eini.k", 2) == NotWritable);
        QVERIFY2(write("d.b%2Eini.k", 2) == NotWritable, "what has come into it later is open");
        QVERIFY(lock("d.b%2Eini", false));
        QVERIFY(write("d.b%2Eini.k", 2));
        QVERIFY(write("d.a%2Eini.k", 2) == NotWritable);
        QVERIFY(lock("d", false));
        QVERIFY(write("d.a%2Eini.k", 2));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, LockingTest)

#include "locking_test.moc"
