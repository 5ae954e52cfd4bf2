#include "host/FrameworkCore/AppConfig/TextInterface.h"
#include "tests/support/Columns.h"
#include "tests/support/RepositoryTest.h"

#include <QDir>

using FrameworkCore::AppConfig::Interfaces::TextPlace;

// Where attributes are in the files of backends.
class PlacesTest : public TestSupport::RepositoryTest
{
    Q_OBJECT

private slots:
    void locatesWithEdits()
    {
        QVERIFY(mount("ini", "m", "; the first\na = 1\n[s]\nb = 2 ; the second\n"));
        QCOMPARE(placeOf("m.s.b"), QStringLiteral("4:5 ; the second"));
        QCOMPARE(placeOf("m.s"), QStringLiteral("4:5 "));
        QCOMPARE(placeOf("m"), QStringLiteral("2:5 "));
        const quint64 revision = texts()->getRevision(Name("m"));
        QVERIFY(create("m.new", QStringLiteral("x")));
        QVERIFY(texts()->getRevision(Name("m")) != revision);
        QCOMPARE(placeOf("m.s.b"), QStringLiteral("5:5 ; the second"));
        QString path;
        QVERIFY(texts()->findAt(Name("m"), 3, 1, path).ok());
        QCOMPARE(path, QStringLiteral("m.s.b")); // the new one is in no line of the file yet
        QCOMPARE(saved(), QByteArray("; the first\na = 1\nnew = x\n[s]\nb = 2 ; the second\n"));
    }

    // The line of the file as it is, for what opens that.
    void findsTheLineOnTheDisk_data()
    {
        const auto row = TestSupport::columns<QString, int, bool>("path", "line", "isOnDisk");
        row("before all edits", "m.a", 1, true);
        row("inserted", "m.new", 3, false);
        row("after what was inserted", "m.s.b", 4, true);
        row("changed", "m.s.c", 5, true);
        row("after what was removed", "m.s.e", 7, true);
        row("inserted at the end", "m.s.last", 8, false);
    }

    void findsTheLineOnTheDisk()
    {
        QFETCH(QString, path);
        QFETCH(int, line);
        QFETCH(bool, isOnDisk);
        QVERIFY(mount("ini", "m", "a = 1\nz = 1\n[s]\nb = 2\nc = 3\nd = 4\ne = 5\n"));
        QVERIFY(create("m.new", 1));
        QVERIFY(write("m.s.c", 30));
        QVERIFY(remove("m.s.d"));
        QVERIFY(create("m.s.last", 1));
        TextPlace place;
        QVERIFY(texts()->locate(path, place).ok());
        QCOMPARE(place.lineOnDisk, line);
        QCOMPARE(place.isOnDisk, isOnDisk);
        QString found;
        const bool isFound = texts()->findAt(Name("m"), line, 1, found).ok();
        QCOMPARE(isFound && found == path, isOnDisk);
        QVERIFY(save());
        QVERIFY(texts()->locate(path, place).ok());
        QCOMPARE(place.lineOnDisk, place.position.line);
        QVERIFY(place.isOnDisk);
    }

    // No node has the path of an element.
    void locatesElementsOfLists_data()
    {
        const auto row = TestSupport::columns<QString, QByteArray, QString>("format", "bytes", "place");
        row("json", "json", "{\"a\": [\"x\",\n  \"ä\", \"z\"]}", "2:8 ");
        row("toml", "toml", "b = 1\na = [ # c\n  'x',\n  'ä', 'z'\n]\n", "4:8 ");
        row("yaml", "yaml", "a:\n  - x\n  - ä\n  - z # c\n", "4:5 # c");
        row("yaml in brackets", "yaml", "a: [x, ä, z]\n", "1:11 ");
    }

    void locatesElementsOfLists()
    {
        QFETCH(QString, format);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, place);
        QVERIFY(mount(format, "m", bytes));
        QCOMPARE(placeOf("m.a.2"), place);
        QCOMPARE(placeOf("m.a.3"), QStringLiteral("'m.a.3' has no place in a text: there is no value"));
        QVERIFY(write("m.a.1", QStringLiteral("y"))); // at least where the list is, then
        QVERIFY2(placeOf("m.a.2").section(QLatin1Char(':'), 0, 0).toInt() > 0, qPrintable(placeOf("m.a.2")));
    }

    void refusesWhatHasNoPlace_data()
    {
        const auto row = TestSupport::columns<QString, QString>("path", "reason");
        row("memory", "memory.a", "'memory.a' has no place in a text: it is in no file");
        row("nowhere", "m.no", "'m.no' has no place in a text: there is no value");
        row("an empty group", "m.s", "'m.s' has no place in a text: there is no value");
    }

    void refusesWhatHasNoPlace()
    {
        QFETCH(QString, path);
        QFETCH(QString, reason);
        QVERIFY(mount("ini", "m", "a=1\n[s]\n"));
        QVERIFY(create("memory.a", 1));
        TextPlace place;
        const Outcome outcome = texts()->locate(path, place);
        QCOMPARE(outcome.getStatus(), FrameworkCore::AppConfig::NotFound);
        QCOMPARE(outcome.toText(), reason);
        QCOMPARE(place.position.line, 0);
    }

    void knowsCommentsOfEditedFiles_data()
    {
        const auto row = TestSupport::columns<QString, QByteArray>("format", "bytes");
        row("ini", "ini", "[s]\n# one\na = 1\nb = 2\n");
        row("toml", "toml", "[s]\n# one\na = 1\nb = 2\n");
        row("yaml", "yaml", "s:\n  # one\n  a: 1\n  b: 2\n");
        row("xml", "xml", "<s>\n  <!-- one -->\n  <a>1</a>\n  <b>2</b>\n</s>\n");
    }

    void knowsCommentsOfEditedFiles()
    {
        QFETCH(QString, format);
        QFETCH(QByteArray, bytes);
        QVERIFY(mount(format, "m", bytes));
        TextPlace place;
        QVERIFY(texts()->locate(Name("m.s.a"), place).ok());
        QVERIFY2(place.comment.contains(QStringLiteral("one")), qPrintable(place.comment));
        for (const char* path : {"m.s.a", "m.s.b"}) {
            QVERIFY(write(path, 30));
            TextPlace edited;
            QVERIFY(texts()->locate(Name("m.s.a"), edited).ok());
            QCOMPARE(edited.comment, place.comment);
        }
    }

    // A comment may be a value that was commented out.
    void keepsTheCommentOfWhatMayNotBeRead()
    {
        QVERIFY(mount("ini", "m", "; password = old\npassword = new\n", AccessMode::WriteOnly));
        QCOMPARE(placeOf("m.password"), QStringLiteral("2:12 "));
    }

    // As people read it, with the places of its values.
    void givesTheText_data()
    {
        const auto row =
            TestSupport::columns<QString, QByteArray, QString, QString>("format", "bytes", "text", "values");
        row("ini", "ini", "\xEF\xBB\xBF; \xC3\xA4\na=\xF0\x9F\x98\x80\n[s]\nb=2\n", "; ä\na=😀\n[s]\nb=2\n",
            "m.a=😀 m.s.b=2");
        row("ini, in ISO-8859-1", "ini", "a=\xE4\nb=\xF6 ; c\n", "a=ä\nb=ö ; c\n", "m.a=ä m.b=ö");
        row("yaml with an alias", "yaml", "a: &x one\nb: *x\nc: ö\n", "a: &x one\nb: *x\nc: ö\n",
            "m.a=one m.b=*x m.c=ö");
        row("yaml with an alias of a group", "yaml", "a: &x\n  k: one\nb: *x\nc: ö\n",
            "a: &x\n  k: one\nb: *x\nc: ö\n", "m.a.k=one m.b.k=one m.c=ö");
        row("nothing", "txt", "", "", "");
    }

    void givesTheText()
    {
        QFETCH(QString, format);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QFETCH(QString, values);
        QVERIFY(mount(format, "m", bytes));
        FrameworkCore::AppConfig::Interfaces::BackendText given;
        QVERIFY(texts()->getText(Name("m"), given).ok());
        QCOMPARE(given.text, text);
        QStringList found;
        for (const auto& value : given.values)
            found.append(value.path + QLatin1Char('=') + given.text.mid(value.offset, value.length));
        QCOMPARE(found.join(QLatin1Char(' ')), values);
    }

    void findsTheFileOfAFolder()
    {
        QVERIFY(QDir(folder->path()).mkpath(QStringLiteral("f/b")));
        put("f/a.ini", "k = 1\n");
        put("f/b/c.json", "{\n  \"d\": 2\n}\n");
        QVERIFY(mountFile("folder", "f", fileOf("f")));
        TextPlace place;
        QVERIFY(texts()->locate(QStringLiteral("f.b.c%2Ejson.d"), place).ok());
        QCOMPARE(place.position.file, fileOf("f/b/c.json"));
        QCOMPARE(QStringLiteral("%1:%2").arg(place.position.line).arg(place.position.column),
                 QStringLiteral("2:8"));
        QCOMPARE(texts()->locate(QStringLiteral("f"), place).getStatus(), FrameworkCore::AppConfig::NotFound);
    }

private:
    std::shared_ptr<FrameworkCore::AppConfig::Interfaces::TextInterface> texts() const
    {
        return repository->getTextInterface();
    }

    QString placeOf(const Name& path) const
    {
        TextPlace place;
        const Outcome outcome = texts()->locate(path, place);
        return outcome.ok() ? QStringLiteral("%1:%2 %3")
                                  .arg(place.position.line)
                                  .arg(place.position.column)
                                  .arg(place.comment)
                            : outcome.toText();
    }
};

VANTRY_TEST_MAIN(QCoreApplication, PlacesTest)

#include "places_test.moc"
