#include "desk/plugins/ApplicationHost.h"
#include "desk/plugins/GuiContext.h"
#include "desk/plugins/LoadingNote.h"
#include "desk/plugins/PluginLoader.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"
#include "tests/desk/PluginTest.h"
#include "tests/support/Columns.h"
#include "tests/support/TestFiles.h"
#include "tests/support/Texts.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLibraryInfo>

#include <sys/stat.h>
#include <unistd.h>

using TestSupport::contentOf;
using Vantry::ApplicationHost;
using Vantry::GuiContext;
using Vantry::LoadingNote;
using Vantry::PluginLoader;
using Vantry::PluginTrial;

namespace {

constexpr int stranger = 65533; // user and group

const QString faultyPlugin = QStringLiteral(FAULTY_PLUGIN);

// One of Qt, which is as good a library.
QString foreignPlugin()
{
    const QDir folder(QLibraryInfo::location(QLibraryInfo::PluginsPath) + QLatin1String("/imageformats"));
    return folder.filePath(folder.entryList({QStringLiteral("*.so")}).value(0));
}

} // namespace

// Which files the desk takes for plug-ins, and how it survives those that are none.
class PluginLoaderTest : public PluginTest
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }

    void refusesWhatIsNoPlugin_data()
    {
        const auto row = TestSupport::columns<QByteArray, QString>("content", "reason");
        const QByteArray good = contentOf(goodPlugin);
        row("empty", {}, "cannot be loaded");
        row("text", "This is no library.\n", "^it cannot be loaded: file too short$");
        row("header only", good.left(64), "^it cannot be loaded: [^(/]+$");
        // What is behind the code and data does no harm when it is missing, so the cuts are near the start.
        row("one page", good.left(4096), "damaged|cannot be loaded");
        row("some pages", good.left(65536), "damaged|cannot be loaded");
        row("another library", contentOf(foreignPlugin()), "loadApplicationIdentifier");
        row("other contract", contentOf(QStringLiteral(OTHER_CONTRACT)), "contract 999 .* contract \\d+;");
        QByteArray old = contentOf(faultyPlugin);
        old.replace("applicationContractVersion", "applicationContractVersiom");
        row("no contract", old, "does not say which contract|undefined symbol"); // which sanitizers add
    }

    // Beside it the good one works, although it comes later.
    void refusesWhatIsNoPlugin()
    {
        QFETCH(QByteArray, content);
        write("bad.so", content);
        QVERIFY(QFile::copy(goodPlugin, plugins + QLatin1String("/good.so")));
        write("notes.txt", "no library by its name");
        PluginLoader loader{PluginTrial(desk)};
        loader.load(QStringList(plugins));
        QCOMPARE(filesOf(loader), TestSupport::words("bad.so good.so"));
        QFETCH(QString, reason);
        const QString refusal = loader.getFindings().front().refusal;
        QVERIFY2(QRegularExpression(reason).match(refusal).hasMatch(), qPrintable(refusal));
        QCOMPARE(loader.getFindings().back().refusal, QString());
        QCOMPARE(applicationsOf(loader), QStringList(QStringLiteral("Vantry")));
        QCOMPARE(LoadingNote::takeCulprits(), QStringList());
    }

    void refusesWhatCannotBeRead()
    {
        // Also for the administrator, whom permissions do not stop.
        QVERIFY(QFile::link(QStringLiteral("/proc/self/mem"), plugins + QLatin1String("/bad.so")));
        PluginLoader loader{PluginTrial(desk)};
        loader.load(QStringList(plugins));
        QCOMPARE(loader.getFindings().size(), 1U);
        QVERIFY(!loader.getFindings().front().refusal.isEmpty());
    }

    void doesNotWaitForever()
    {
        QVERIFY(QFile::copy(faultyPlugin, plugins + QLatin1String("/hang-load.so")));
        PluginLoader loader{PluginTrial(desk, 500)};
        loader.load(QStringList(plugins));
        QCOMPARE(loader.getFindings().front().refusal,
                 QStringLiteral("loading it did not finish within 0.5 s"));

        // And not at each start, until the file is another.
        constexpr int tooLong = 60000;
        QElapsedTimer timer;
        timer.start();
        const QString plugin = plugins + QLatin1String("/hang-load.so");
        QVERIFY(PluginTrial(desk, tooLong).run(plugin).contains(QLatin1String("at an earlier start")));
        QVERIFY(timer.elapsed() < tooLong / 2);
        setTime(plugin, 1000000000);
        QVERIFY(PluginTrial(desk, 500).run(plugin).contains(QLatin1String("within 0.5 s")));
    }

    void loadsNothingTwice()
    {
        QVERIFY(QFile::copy(goodPlugin, plugins + QLatin1String("/a.so")));
        QVERIFY(QFile::copy(goodPlugin, plugins + QLatin1String("/b.so")));
        QVERIFY(QFile::link(plugins + QLatin1String("/a.so"), plugins + QLatin1String("/c.so")));
        PluginLoader loader{PluginTrial(desk)};
        loader.load(QStringList{plugins, plugins + QLatin1String("/../plugins")});
        QCOMPARE(filesOf(loader), TestSupport::words("a.so b.so"));
        QCOMPARE(applicationsOf(loader), QStringList(QStringLiteral("Vantry")));
        const QString refusal = loader.getFindings().back().refusal;
        QVERIFY2(refusal.contains(QLatin1String("Vantry is there already")), qPrintable(refusal));
        QVERIFY2(refusal.contains(QLatin1String("/a.so")), qPrintable(refusal));
    }

    void tellsAMissingFolder()
    {
        PluginLoader loader{PluginTrial(desk)};
        loader.load(QStringList{inFolder("none"), plugins});
        QCOMPARE(loader.getFindings().size(), 1U);
        QCOMPARE(loader.getFindings().front().file, inFolder("none"));
        QCOMPARE(loader.getFindings().front().refusal, QStringLiteral("no such folder"));
    }

    void triesAFileOnlyWhenItIsNew()
    {
        const QString script = inFolder("try");
        QFile file(script);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\necho tried >> '" + inFolder("tries").toLocal8Bit() + "'\nexec '" +
                   desk.toLocal8Bit() + "' \"$@\"\n");
        file.close();
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
        // Of a file that passes; how often there was a trial so far.
        const auto triesOf = [&](const char* name) {
            const QString reason = PluginTrial(script).run(plugins + QLatin1Char('/') + QLatin1String(name));
            return reason.isEmpty() ? contentOf(inFolder("tries")).count('\n') : -1;
        };
        const QString plugin = plugins + QLatin1String("/good.so");
        QVERIFY(QFile::copy(goodPlugin, plugin));
        QCOMPARE(triesOf("good.so"), 1);
        QCOMPARE(triesOf("good.so"), 1);

        // The same bytes of another time, other bytes of the same size and time, the same file elsewhere.
        setTime(plugin, 1000000000);
        QCOMPARE(triesOf("good.so"), 2);
        QByteArray content = contentOf(plugin);
        content.append("x");
        write("good.so", content);
        setTime(plugin, 1000000000);
        QCOMPARE(triesOf("good.so"), 3);
        content.back() = 'y';
        write("good.so", content);
        setTime(plugin, 1000000000);
        QCOMPARE(triesOf("good.so"), 4);
        QVERIFY(QFile::rename(plugin, plugins + QLatin1String("/other.so")));
        QCOMPARE(triesOf("other.so"), 5);

        // What was refused may be mended without changing, as by a library that it needs.
        write("bad.so", "text");
        for (int i = 0; i < 2; ++i)
            QCOMPARE(triesOf("bad.so"), -1);
        QCOMPARE(triesOf("other.so"), 7);
    }

    void tellsWhenItCannotTry()
    {
        QVERIFY(QFile::copy(goodPlugin, plugins + QLatin1String("/good.so")));
        PluginLoader loader{PluginTrial(inFolder("no program"))};
        loader.load(QStringList(plugins));
        const QString refusal = loader.getFindings().front().refusal;
        QVERIFY2(refusal.startsWith(QLatin1String("it could not be tried: ")), qPrintable(refusal));
        QVERIFY(loader.getLibraries().empty());
    }

    void refusesWhatOthersCanChange_data()
    {
        QTest::addColumn<QString>("what"); // relative to the folder of the test
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("user"); // whom it is given to; -1 for nobody
        QTest::addColumn<int>("group");
        QTest::addColumn<bool>("isRefused");
        const auto row = [](const char* name, const char* what, int mode, int user, int group,
                            bool isRefused) {
            if (geteuid() == 0 || (user < 0 && group < 0)) // only the administrator can give files away
                QTest::newRow(name) << QString::fromLatin1(what) << mode << user << group << isRefused;
        };
        row("one's own", "plugins/good.so", 0644, -1, -1, false);
        row("file of a group", "plugins/good.so", 0664, -1, stranger, true);
        row("file of all", "plugins/good.so", 0646, -1, -1, true);
        row("file of another user", "plugins/good.so", 0644, stranger, -1, true);
        row("folder of all", "plugins", 0777, -1, -1, true);
        row("folder of a group", "plugins", 0770, -1, stranger, true);
        row("folder that a group only reads", "plugins", 0750, -1, stranger, false);
        row("folder of another user", "plugins", 0755, stranger, -1, true);
        row("sticky folder of all", "plugins", 01777, -1, -1, false);
        row("sticky folder of another user", "plugins", 01777, stranger, -1, true);
        row("folder above", "above", 0777, -1, -1, true);
        row("sticky folder above", "above", 01777, -1, -1, false);
        row("folder of a link's target", "real", 0777, -1, -1, true);
        row("target of a link", "real/linked.so", 0666, -1, -1, true);
        row("link of another user in a sticky folder", "sticky/link.so", 0, stranger, -1, true);
    }

    void refusesWhatOthersCanChange()
    {
        QFETCH(QString, what);
        QFETCH(int, mode);
        QFETCH(int, user);
        QFETCH(int, group);
        QFETCH(bool, isRefused);
        const QDir base(folder->path());
        for (const char* const name : {"above/plugins", "real", "linked", "sticky"})
            QVERIFY(base.mkpath(QLatin1String(name)));
        QCOMPARE(chmod(qPrintable(inFolder("sticky")), 01777), 0);
        for (const char* const name : {"plugins/good.so", "above/plugins/good.so", "real/linked.so"})
            QVERIFY(QFile::copy(goodPlugin, inFolder(name)));
        QVERIFY(QFile::link(QStringLiteral("../real/linked.so"), inFolder("linked/link.so")));
        QVERIFY(QFile::link(QStringLiteral("../real/linked.so"), inFolder("sticky/link.so")));
        const QString changed = base.filePath(what);
        QCOMPARE(lchown(qPrintable(changed), uid_t(user), gid_t(group)), 0);
        if (mode != 0)
            QCOMPARE(chmod(qPrintable(changed), mode_t(mode)), 0);
        QString searched = plugins;
        for (const char* const name : {"above/plugins", "sticky"}) {
            if (QString::fromLatin1(name).startsWith(what.section(QLatin1Char('/'), 0, 0)))
                searched = inFolder(name);
        }
        if (what.startsWith(QLatin1String("real")))
            searched = inFolder("linked");

        PluginLoader loader{PluginTrial(desk)};
        loader.load(QStringList(searched));
        QCOMPARE(loader.getFindings().size(), 1U);
        const QString refusal = loader.getFindings().front().refusal;
        QVERIFY2(refusal.contains(QLatin1String("other users can change")) == isRefused, qPrintable(refusal));
        QCOMPARE(loader.getLibraries().empty(), isRefused);

        PluginLoader::Choice named{QStringList()};
        named.sharedFolders = QStringList(searched);
        PluginLoader trusting{PluginTrial(desk)};
        trusting.load(named);
        QCOMPARE(trusting.getLibraries().size(), 1U);
    }

private:
    void write(const char* name, const QByteArray& content) const
    {
        QFile file(plugins + QLatin1Char('/') + QLatin1String(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

    static void setTime(const QString& fileName, qint64 seconds)
    {
        QFile file(fileName);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::fromSecsSinceEpoch(seconds), QFileDevice::FileModificationTime));
    }

    static QStringList filesOf(const PluginLoader& loader)
    {
        QStringList files;
        for (const auto& finding : loader.getFindings())
            files.append(QFileInfo(finding.file).fileName());
        return files;
    }

    // Names of the applications that can be made, and made to give their widgets.
    static QStringList applicationsOf(PluginLoader& loader)
    {
        const auto repository = Repository::AttributeRepository::create();
        Utilities::SetAppConfigRepositoryInterface(repository);
        QStringList names;
        {
            ApplicationHost host(std::make_shared<GuiContext>(QStringList(QStringLiteral("test"))),
                                 repository);
            host.createApplications(loader);
            for (const auto& application : host.getApplications()) {
                if (application.main)
                    names.append(application.name);
            }
        }
        Utilities::SetAppConfigRepositoryInterface({});
        return names;
    }
};

int main(int argc, char** argv)
{
    return runPluginTest<QApplication, PluginLoaderTest>(argc, argv);
}

#include "plugin_loader_test.moc"
