#include "repository/backends/FileFormat.h"
#include "repository/backends/FileKind.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <unistd.h>

using Repository::FileFormat;

class FileFormatTest : public QObject
{
    Q_OBJECT

private slots:
    void knowsTheFormatOfAFile_data()
    {
        TestSupport::columns<QString, QByteArray, QString>("name", "content", "type");
        const auto row = [](const char* name, const QByteArray& content, const char* type) {
            QTest::addRow("%s: %s", name, content.left(12).simplified().constData())
                << QString::fromLatin1(name) << content << QString::fromLatin1(type);
        };
        // An ending that says it all is believed, so that a broken file is reported as what it should be.
        row("a.json", "[ini]", "json");
        row("a.jsonc", "k = 1", "json");
        row("a.INI", "{}", "ini");
        row("a.xml", "k = 1", "xml");
        row("a.txt", "{}", "txt");
        row("a.properties", "k = 1", "txt:properties");
        // So is a whole name.
        row("Pipfile.lock", "k = 1", "json");
        row("Cargo.lock", "{}", "toml");
        row("a.toml~", "{}", "toml");
        row(".cargo/config", "[a]\nk=1", "toml");
        row("b/config", "[a]\nk=1", "ini");
        row("containers.conf", "", "toml");
        row("containers.conf.d/a.conf", "[a]\nk=1", "toml");
        row("containers.conf.d/README", "a b c\n", "");
        row("a.YML", "k = 1", "yaml");
        row(".clang-format", "k = 1", "yaml");
        row("flake.lock.orig~", "k = 1", "json");
        row("other.lock", "k = 1", "ini");
        // Others make it likely.
        row("a.conf", "k = 1", "ini");
        row("a.conf", " \r\n\t{\"k\": 1}", "json");
        row("a.conf", "<!DOCTYPE busconfig>\n<busconfig/>", "xml");
        row("a.conf", "<Directory \"/srv\">\nDeny all\n</Directory>", "");
        row("a.conf", "<IfModule ssl.c>\n", "");
        row("a.service", "\xef\xbb\xbf[Unit]\n", "ini:systemd");
        row("a.conf", "# c\nstorage:\n  path: /srv\n", "yaml");
        row("a.cfg", "users:\n - default\na: true\n", "yaml");
        row("a.conf", "a: b\nc: d\n", "ini");
        row("a.conf", "[General]\n# k=1\n", "ini");
        row("a.conf", "a = b: c\nd:\n  e\n", "ini");
        row("a.conf", "[a]\nk = [\n  \"b\",\n]\n", "toml");
        row("a.conf", "k = \"b\"\n[[a]]\nl = 1\n", "toml");
        row("a.conf", "k = \"b\"\nl = 1\n", "ini");
        row("a.conf", "[a]\n\"b\" = \"c\"\n", "toml");
        row("a.conf", "[a]\nk = \"b\"\n", "toml");
        row("a.conf", "[a]\nk=\"b\"\n", "ini");
        row("a.conf", "[ab]\nk = \"b\"\nl = c\n", "ini");
        row("a.conf", "[Unit]\nDescription = \"b\"\n", "ini:systemd");
        row("a.conf", "[long]\nk = [\n" + QByteArray(" 1,\n").repeated(5000) + "]\n", "toml");
        row("a.conf", "[cut]\nk = [\n1,\n]\nl = m\n", "ini");
        row("a.conf", "k = [b]\n", "ini");
        row("a.conf", "# k = [1]\nk = 1\n", "ini");
        row("a.svg", "", "xml");
        row("a.conf.dpkg-old", "", "ini");
        row("a.svg~", "", "xml");
        row("a.json.bak", "k = 1", "json");
        row("a.yml.example", "k = 1", "yaml");
        row("a.ts", "// why\nimport {b} from 'c';\n", "");
        row("a.policy", "// why\ngrant {\n};\n", "");
        row(".eslintrc", "root: true\n", "");
        row(".eslintrc", "// why", "json");
        // Or nothing.
        row("settings", "\xef\xbb\xbf{}", "json");
        row("settings", "[\n  1\n]", "json");
        row("settings", "[ {\"k\": 1} ]", "json");
        row("config", "apiVersion: v1\nclusters:\n- name: a\n", "yaml");
        row("settings", "--- # c\nk: 1\n", "yaml");
        row("settings", "k: 1\nl: 2\n", "");
        row("change", "--- a/b\n+++ b/b\n@@ -1 +1 @@\n-c: d\n", "");
        row("change", "From: a\nTo:\n- b\n---\n c | 2 +-\n\n--- a/c\n+++ b/c\n@@ -1 +1 @@\n-d: e\n+d: f\n",
            "");
        row("sizes", "- 109 md5:29 - \"a\"\n- 0 md5:d4 - \"b\"\n", "");
        row("notes.md", "k:\n  - l\n", "");
        row("AUTHORS", "k:\n  - l\n", "");
        row("settings", "[a]\nk = [\"b\"]\n", "toml");
        row("settings", "[]", "json");
        row("settings", "[]\nk = 1\n", "ini");
        row("settings", "[7Z]\nk = 1\n", "ini");
        row("settings", "// why\n/* and\nhow */ {}", "json");
        row("settings", "// a comment that never ends {}", "");
        row("settings", "/* { ", "");
        row("settings", "/*/ { */", "");
        row("settings", "; {\nk = 1", "ini");
        row(".project", "<?xml version='1.0'?><a/>", "xml");
        row(".project", "<a xmlns:b = 'c'/>", "xml");
        row(".project", QByteArray("\xff\xfe<\0a\0>\0<\0/\0a\0>\0", 16), "xml");
        row(".project", QByteArray("\xfe\xff\0{\0}", 6), "json");
        row(".editorconfig", "root = true", "ini:editorconfig");
        row("settings", "", "ini");
        row("settings", "   ", "ini");
        // What only looks like ini.
        row("README", "Vantry\n======\nk = 1\n", "");
        row("script", "#!/bin/sh\nK=1\n", "");
        row("source", "int k = 1;\n", "");
        row("source", "#include <a.h>\nk = 1\nl = 2;\n", "");
        row("source", "k = 1\nvar l = 2;\n[m]\n", "");
        row("source", "k = a;b;\nl = c;d;\n", "");
        row("source", "k = 1\nl = [1;2;3];\n", "");
        row("source", "k = 1\nl = f(2; 3);\n", "");
        row("source", "k=1\na=1; b=2;\n", "");
        row("Makefile", "CC = cc\nall:\n\t$(CC) a.c;\n", "");
        row("style", "a {\n  k: 1;\n}\n", "");
        row("settings", "k = a;b;\nl = 1\n", "ini");
        row("settings", "k = C:\\a;C:\\b c;\nl = 1\n", "ini");
        row("settings", "k = text/plain;\n[a]\nl = 1\n", "ini");
        row("source", "k = f(1)\nreturn k\n", "");
        row("README", "[![a](b)](c)\nk = 1\n", "");
        row("settings", "k = 1\n[a]\nb : c\nd\n", "ini");
        row("settings", "k = 1\n  more\n", "ini");
        row("a.py", "k = 1\n", "");
        // Dialects.
        row("a.gitconfig", "", "ini:git");
        row("nginx.conf", "user www;\nevents {\n}\nhttp {\n  a = 1;\n}\n", "");
        row("xorg.conf", "Section \"Device\"\n  Identifier \"x\"\nEndSection\n", "");
        row("a.conf", "# c\nflag\nk = {\nl = 1\n", "ini");
        row("a.conf", "# c\nflag\n[a]\nk {\n", "ini");
        row("a.conf", "# c\n", "ini");
        row("a.conf", "a = {\n  b = 1\n}\n", "");
        row("a.conf", "$Owner root\nmodule(load=\"imuxsock\")\n*.* /var/log/all\n", "");
        row("a.conf", "fastcgi_pass x;\nfastcgi_index y;\ntry_files $a =404;\n", "");
        row("a.conf", "a = 1\nb = (\n\t\"c\",\n)\n", "");
        row("a.conf", "a.b += ( \".c\" =>\n\t(( \"d\" => 1 )) )\n", "");
        row("a.conf", "a: b\n c: d == e\n", "ini");
        row("a.conf", "$a b\nif $c == 'd' or\n  $c == 'e' then /f\n", "");
        row("arc", "K=1\nif [[ -z \"$K\" ]] &&\n   [[ $T != 'e' ]]\nthen\n  k[${L[m]}]=1\nfi\n", "");
        row("a.conf", "domain-needed\nbogus-priv\nno hosts\nserver=1.1.1.1\n", "ini");
        row("a.cfg", "title: a b\nflag x\nk = 1\n", "ini");
        row("Makefile", "CC = gcc\nCFLAGS = -O2\n", "");
        row("crontab", "SHELL=/bin/sh\n", "");
        row("jobs", "SHELL=/bin/sh\n17 4 * * * root A=b run\n", "");
        row("a.desktop", "k=1", "ini:desktop");
        row("a.nmconnection", "[wifi]\nssid=a\\sb\n", "ini:keyfile");
        row("my.cnf", "k=1", "ini:mysql");
        row("php.ini", "k=1", "ini:php");
        row("setup.cfg", "k=1", "ini:python");
        row("a.conf", "# c\n[DEFAULT]\n", "ini:python");
        row("a.local", "[Definition]\nk=1\n", "ini:fail2ban");
        row("a.conf", "[program:a]\nk=1\n", "ini:supervisor");
        row("mke2fs.conf", "[defaults]\n", "ini:krb5");
        row("smb.conf.bak", "k=1", "ini:samba");
        row("a.conf", "# c\n[Unit]\nk=1\n", "ini:systemd");
        row("a.ini", "[PHP]\nk=1\n", "ini:php");
        row("a.conf", "[global]\n  workgroup = A\n", "ini:samba");
        row("arc", "[A][B]\nk=1\n", "ini:kde");
        row("arc", "[A]\nk[$e]=1\n", "ini:kde");
        row("config", "[core]\n\tbare = false\n[remote \"o\"]\n", "ini:git");
        row("any", "[remote \"o\"]\n", "ini:git");
        row("any", "[server]\nskip ; c\n", "ini");
        row("any", "[mysqld]\nskip\n", "ini:mysql");
        row("any", "root = true\n[*]\nindent_style = tab\n", "ini:editorconfig");
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
        QVERIFY(QDir().mkpath(QFileInfo(file).path()));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), qint64(content.size()));
        file.close();
        QTEST(FileFormat::ofFile(file.fileName()), "type");
    }

    // Opened for reading, a pipe without a writer and the log of the kernel would keep the reader for good.
    void opensNothingThatMayHaveNoEnd_data()
    {
        const auto row = TestSupport::columns<QString, QString, QString>("path", "refusal", "type");
        const QString special = QStringLiteral("it is not a regular file");
        row("folder", ".", "it is a folder", "ini");
        row("pipe", "pipe", special, "ini");
        row("link to a pipe", "link", special, "ini");
        row("socket", "socket", special, "ini");
        row("device", "/dev/zero", special, "ini");
        row("log of the kernel", "/proc/kmsg", "it is a view of the kernel, which may have no end", "ini");
        row("what the kernel shows to all", "/proc/version", "", "");
        row("nothing", "missing", "", "ini");
        row("file", "file", "", "ini");
    }

    void opensNothingThatMayHaveNoEnd()
    {
        QFETCH(QString, path);
        const QTemporaryDir folder;
        const QByteArray inFolder = QFile::encodeName(folder.path()) + '/';
        QCOMPARE(::mkfifo((inFolder + "pipe").constData(), 0600), 0);
        QCOMPARE(::symlink("pipe", (inFolder + "link").constData()), 0);
        QCOMPARE(::mknod((inFolder + "socket").constData(), S_IFSOCK | 0600, 0), 0);
        QVERIFY(QFile(folder.filePath(QStringLiteral("file"))).open(QIODevice::WriteOnly));
        const QString absolute = QDir(folder.path()).absoluteFilePath(path);
        QTEST(Repository::refusalOfKind(absolute), "refusal");
        QTEST(FileFormat::ofFile(absolute), "type");
    }

    // A file that is still taken for what it was can be edited, one that would not be is not written.
    void findsMistaking_data()
    {
        TestSupport::columns<QString, QString, QByteArray, QByteArray, bool>("file", "type", "before",
                                                                             "after", "isMistaken");
        const auto row = [](const char* file, const char* type, const QByteArray& before,
                            const QByteArray& after, bool isMistaken) {
            QTest::addRow("%s: %s", file, after.left(10).constData())
                << QString::fromLatin1(file) << QString::fromLatin1(type) << before << after << isMistaken;
        };
        row("a.conf", "ini", "k=1\n", "k=2\n", false);
        row("a.conf", "ini", "k=1\n", "<a>=1\n", true);
        row("a.conf", "ini", "", "{k=1\n", true);
        row("a.ini", "ini", "k=1\n", "<a>=1\n", false);
        row("a", "ini", "k=1\n", QByteArray("k=\0\n", 5), true);
        row("a.conf", "json", "{}", "", true);
        row("a.conf", "txt", "k=1\n", "<a>=1\n", false); // as somebody has asked for
        row("a.svg", "xml", "<a/>", "", false);
        row("a.conf", "ini", "k=1\n", "[Unit]\nk=1\n", false); // which reads the same
        row("a.conf", "ini", "k=1\n", "[Unit]\nk=1 ; c\n", true);
        row("a.conf", "ini", "k=1\n", "[a]\nk = \" b\"\n", false);
        row("a.conf", "ini", "k=1\n", "[a]\nk.l = \" b\"\n", true);
    }

    void findsMistaking()
    {
        QFETCH(QString, file);
        QFETCH(QString, type);
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QFETCH(bool, isMistaken);
        const bool isTold = FileFormat::tells(file, type, before.toStdString());
        const QString reason = FileFormat::explainMistaking(file, type, after.toStdString());
        QCOMPARE(isTold && !reason.isEmpty(), isMistaken);
    }

    void knowsAFileToComeByItsNameAlone()
    {
        QCOMPARE(FileFormat::ofName(QStringLiteral("new/a.pom")), QStringLiteral("xml"));
        QCOMPARE(FileFormat::ofName(QStringLiteral("new.json/a")), QString());
        for (const auto& [path, type] :
             {std::pair("/home/a/.gitconfig", "ini:git"), std::pair("b/.git/config", "ini:git"),
              std::pair("/etc/systemd/resolved.conf", "ini:systemd"), std::pair("/etc/resolved.conf", "ini"),
              std::pair("/usr/share/dbus-1/services/a.service", "ini:desktop"),
              std::pair("/etc/php/8.2/cli/conf.d/20-a.ini", "ini:php"), std::pair("a.ini", "ini"),
              std::pair("/etc/mysql/conf.d/a.cnf", "ini:mysql"), std::pair("a.properties", "txt:properties")})
            QCOMPARE(FileFormat::ofName(QString::fromLatin1(path)), QString::fromLatin1(type));
    }
};

VANTRY_TEST_MAIN(QCoreApplication, FileFormatTest)

#include "file_format_test.moc"
