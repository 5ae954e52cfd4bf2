#include "repository/FileFormat.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>
#include <QTemporaryDir>

using Repository::FileFormat;

class FileFormatTest : public QObject
{
    Q_OBJECT

private slots:
    void knowsTheFormatOfAFile_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("type");
        const auto row = [](const char* name, const QByteArray& content, const char* type) {
            QTest::addRow("%s: %s", name, content.left(12).simplified().constData())
                << QString::fromLatin1(name) << content << QString::fromLatin1(type);
        };
        // An ending that says it all is believed, so that a broken file is told as what it should be.
        row("a.json", "[ini]", "json");
        row("a.jsonc", "k = 1", "json");
        row("a.INI", "{}", "ini");
        row("a.xml", "k = 1", "xml");
        row("a.txt", "{}", "txt");
        row("a.properties", "k = 1", "txt");
        // Others make it likely.
        row("a.conf", "k = 1", "ini");
        row("a.conf", " \r\n\t{\"k\": 1}", "json");
        row("a.conf", "<!DOCTYPE busconfig>\n<busconfig/>", "xml");
        row("a.conf", "<Directory \"/srv\">\nDeny all\n</Directory>", "ini");
        row("a.conf", "<IfModule ssl.c>\n", "ini");
        row("a.service", "\xef\xbb\xbf[Unit]\n", "ini");
        row("a.svg", "", "xml");
        row("a.conf.dpkg-old", "", "ini");
        row("a.svg~", "", "xml");
        row("a.json.bak", "k = 1", "json");
        // Or nothing.
        row("settings", "\xef\xbb\xbf{}", "json");
        row("settings", "[\n  1\n]", "json");
        row("settings", "[ {\"k\": 1} ]", "json");
        row("settings", "[]", "json");
        row("settings", "[]\nk = 1\n", "ini");
        row("settings", "[7Z]\nk = 1\n", "ini");
        row("settings", "// why\n/* and\nhow */ {}", "json");
        row("settings", "// a comment that never ends {}", "ini");
        row("settings", "/* { ", "ini");
        row("settings", "/*/ { */", "ini");
        row("settings", "; {\nk = 1", "ini");
        row(".project", "<?xml version='1.0'?><a/>", "xml");
        row(".project", "<a xmlns:b = 'c'/>", "xml");
        row(".project", QByteArray("\xff\xfe<\0a\0>\0<\0/\0a\0>\0", 16), "xml");
        row(".project", QByteArray("\xfe\xff\0{\0}", 6), "json");
        row(".editorconfig", "root = true", "ini");
        row("settings", "", "ini");
        row("settings", "   ", "ini");
        row("program",
            QByteArray("\x7f"
                       "ELF\0\0",
                       6),
            "");
    }

    void knowsTheFormatOfAFile()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        QTemporaryDir folder;
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), qint64(content.size()));
        file.close();
        QTEST(FileFormat::ofFile(file.fileName()), "type");
    }

    void knowsAFileToComeByItsNameAlone()
    {
        QCOMPARE(FileFormat::ofName(QStringLiteral("new/a.pom")), QStringLiteral("xml"));
        QCOMPARE(FileFormat::ofName(QStringLiteral("new.json/a")), QString());
    }
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<QCoreApplication, FileFormatTest>(argc, argv);
}

#include "file_format_test.moc"
