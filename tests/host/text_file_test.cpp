#include "files/SizeLimit.h"
#include "host/Shared/Logging/LogRecord.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"
#include "tests/support/Unprivileged.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <cerrno>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

using Shared::Logging::LogRecord;
using Utilities::ModelViews::AttributeTreeViewModelUtils;

namespace {

bool diskFails = false;

} // namespace

// Stands before the system's own for the whole process.
extern "C" Q_DECL_EXPORT int fsync(int file)
{
    if (!diskFails)
        return static_cast<int>(syscall(SYS_fsync, file));
    errno = EIO;
    return -1;
}

class TextFileTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        stateFolder = std::make_unique<QTemporaryDir>();
        for (const QTemporaryDir* used : {folder.get(), stateFolder.get()}) // also for nobody
            QVERIFY(QFile::setPermissions(used->path(), QFileDevice::Permissions(0x7777)));
        qputenv("XDG_STATE_HOME", QFile::encodeName(stateFolder->path()));
    }

    void readsAndWrites()
    {
        put("list", "\xEF\xBB\xBFgr\xC3\xBC\xC3\x9F\nb\r\nc\rd\r\r\n");
        QString content;
        QString error;
        QVERIFY(utils.readTextFile(path("list"), content, error));
        QCOMPARE(content, QString::fromUtf8("gr\xC3\xBC\xC3\x9F\nb\nc\rd\r\n"));

        // Through a link, with the permissions that the file has.
        QVERIFY(QFile::setPermissions(path("list"), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
        const QFile::Permissions permissions = QFile::permissions(path("list"));
        QVERIFY(QFile::link(QStringLiteral("list"), path("link")));
        QVERIFY(utils.writeTxtFile(content, path("link")));
        QVERIFY(QFileInfo(path("link")).isSymLink());
        QCOMPARE(get("list"), content.toUtf8());
        QCOMPARE(QFile::permissions(path("list")), permissions);
    }

    void readsWhatItWrote()
    {
        for (const QString& written :
             {QString(), QStringLiteral("a\nb"), QString(QChar(QChar::ByteOrderMark)) + QLatin1Char('a')}) {
            QVERIFY(utils.writeTxtFile(written, path("list")));
            QString content;
            QString error;
            QVERIFY2(utils.readTextFile(path("list"), content, error), qPrintable(error));
            QCOMPARE(content, written);
        }
    }

    void keepsNamesAndAttributes()
    {
        put("list", "a longer one");
        const QByteArray list = QFile::encodeName(path("list"));
        const bool hasAttributes = setxattr(list, "user.note", "kept", 4, 0) == 0 || errno != ENOTSUP;
        for (const bool isLinked : {false, true}) {
            if (isLinked)
                QCOMPARE(link(list, QFile::encodeName(path("other"))), 0);
            QVERIFY(utils.writeTxtFile(QStringLiteral("new"), path("list")));
            QCOMPARE(get("list"), QByteArray("new"));
            char note[4] = {};
            QCOMPARE(getxattr(list, "user.note", note, sizeof note), hasAttributes ? 4 : -1);
        }
        QCOMPARE(get("other"), QByteArray("new"));
        QVERIFY(utils.writeTxtFile(QString(9000, QLatin1Char('y')), path("other")));
        QCOMPARE(get("list"), QByteArray(9000, 'y'));
    }

    void refusesWhatIsNoText_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        const auto row = [](const char* name, const char* reason) {
            QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(reason);
        };
        row("missing", "No such file or directory");
        row("/dev/zero", "it is not a regular file");
        row("pipe", "it is not a regular file");
        row(".", "it is a folder");
        row("loop", "Too many levels of symbolic links");
        row("huge", Files::SizeLimit::refusal().c_str());
        row("latin", "it is not a text in UTF-8 (line 2)");
        row("binary", "it is not a text in UTF-8 (line 3)");
    }

    void refusesWhatIsNoText()
    {
        QFETCH(QString, name);
        QCOMPARE(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
        QVERIFY(QFile::link(QStringLiteral("loop"), path("loop")));
        put("huge", {});
        QVERIFY(QFile::resize(path("huge"), qint64(Files::SizeLimit::get()) + 1));
        put("latin", "a\ngr\xFC\xDF\nb\0");
        put("binary", QByteArray("a\nb\n\0", 5));

        const QString file = QDir(folder->path()).absoluteFilePath(name);
        QString content = QStringLiteral("before");
        QString error;
        QVERIFY(!utils.readTextFile(file, content, error));
        QFETCH(QString, reason);
        QCOMPARE(error, file + QStringLiteral(" cannot be read: ") + reason);
        QCOMPARE(content, QStringLiteral("before"));
    }

    void failureLeavesTheOldFile_data()
    {
        // size: of the text
        const auto row = TestSupport::columns<QString, int, QString>("name", "size", "reason");
        row("no room, small", "list", 5000, "File too large");
        row("no room, large", "list", 50000, "File too large");
        row("failed sync", "list", 5, "Input/output error");
        row("no room, two names", "linked", 5000, "File too large");
        row("failed sync, two names", "linked", 5, "Input/output error");
        row("not writable", "locked", 5, "Permission denied");
        row("pipe", "pipe", 5, "it is not a regular file");
        row("folder", ".", 5, "it is a folder");
        row("no folder", "missing/list", 5, "No such file or directory");
    }

    void failureLeavesTheOldFile()
    {
        QFETCH(QString, name);
        QFETCH(int, size);
        QFETCH(QString, reason);
        put("list", "old");
        put("locked", "old");
        put("linked", "old");
        QCOMPARE(link(QFile::encodeName(path("linked")), QFile::encodeName(path("other"))), 0);
        QVERIFY(QFile::setPermissions(path("linked"), QFile::Permissions(0x6666)));
        QVERIFY(QFile::setPermissions(path("list"), QFile::Permissions(0x6666)));
        QVERIFY(QFile::setPermissions(path("locked"), QFile::Permissions(0x4444)));
        QCOMPARE(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
        const QStringList before = names();
        const int lines = LogRecord::instance().getLines().size();

        diskFails = reason == QLatin1String("Input/output error");
        const bool written = writeWithLittleRoom(path(name), QString(size, QLatin1Char('x')));
        diskFails = false;
        QVERIFY(!written);
        QCOMPARE(get("list"), QByteArray("old"));
        QCOMPARE(get("locked"), QByteArray("old"));
        QCOMPARE(get("linked"), QByteArray("old"));
        QCOMPARE(names(), before);
        const auto log = LogRecord::instance().getLines();
        QCOMPARE(log.size(), lines + 1);
        QVERIFY2(log.last().text.contains(path(name)) && log.last().text.contains(reason),
                 qPrintable(log.last().text));
    }

private:
    QString path(const QString& name) const { return folder->filePath(name); }
    QString path(const char* name) const { return path(QString::fromLatin1(name)); }

    QStringList names() const
    {
        return QDir(folder->path()).entryList(QDir::AllEntries | QDir::System | QDir::Hidden);
    }

    void put(const char* name, const QByteArray& bytes)
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    QByteArray get(const char* name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

    // As a user whom permissions stop, with room for files of 1,000 bytes.
    bool writeWithLittleRoom(const QString& file, const QString& text)
    {
        const TestSupport::Unprivileged user;
        struct rlimit usual = {};
        getrlimit(RLIMIT_FSIZE, &usual);
        struct rlimit little = usual;
        little.rlim_cur = 1000;
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &little);
        const bool written = utils.writeTxtFile(text, file);
        setrlimit(RLIMIT_FSIZE, &usual);
        std::signal(SIGXFSZ, handler);
        return written;
    }

    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<QTemporaryDir> stateFolder;
    AttributeTreeViewModelUtils utils;
};

VANTRY_TEST_MAIN(QCoreApplication, TextFileTest)

#include "text_file_test.moc"
