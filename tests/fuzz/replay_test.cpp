#include "fuzz/Exercises.h"
#include "host/Shared/Logging/LogRecord.h"
#include "tests/support/TestRun.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QGuiApplication>

#include <map>

namespace {

// The exercise of the inputs in the folder of that name.
Fuzz::Exercise exerciseOf(const std::string& subject)
{
    static const std::map<std::string, Fuzz::Exercise> exercises{
        {"arguments", Fuzz::exerciseArguments}, {"imports", Fuzz::exerciseImports},
        {"journals", Fuzz::exerciseJournals},   {"monitor_lists", Fuzz::exerciseMonitorLists},
        {"patterns", Fuzz::exercisePatterns},   {"rules", Fuzz::exerciseRules}};
    const auto found = exercises.find(subject);
    return found != exercises.end() ? found->second : Fuzz::documentExercise(subject);
}

} // namespace

// What the fuzzers start from and what they have found, without a fuzzer.
class ReplayTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Shared::Logging::LogRecord::instance().setWritesToStandardError(false); }

    void inputs_data()
    {
        QTest::addColumn<QString>("subject");
        QTest::addColumn<QString>("path");
        for (const QString& kind : {QStringLiteral("seeds"), QStringLiteral("regressions")}) {
            const QString folder = TestSupport::projectPath(QStringLiteral("fuzz/") + kind);
            QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                files.next();
                const QString subject = files.fileInfo().dir().dirName();
                QTest::addRow("%s/%s/%s", qPrintable(kind), qPrintable(subject), qPrintable(files.fileName()))
                    << subject << files.filePath();
            }
        }
    }

    void inputs()
    {
        QFETCH(QString, subject);
        QFETCH(QString, path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const std::string broken =
            exerciseOf(subject.toStdString())({bytes.constData(), std::size_t(bytes.size())});
        QVERIFY2(broken.empty(), broken.c_str());
    }
};

VANTRY_TEST_MAIN(QGuiApplication, ReplayTest)

#include "replay_test.moc"
