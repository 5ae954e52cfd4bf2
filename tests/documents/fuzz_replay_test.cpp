#include "fuzz/DocumentExercise.h"
#include "tests/support/TestRun.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

// What the fuzzers start from and what they have found, without a fuzzer.
class FuzzReplayTest : public QObject
{
    Q_OBJECT

private slots:
    void inputs_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("path");
        for (const QString& kind : {QStringLiteral("seeds"), QStringLiteral("regressions")}) {
            const QString folder = TestSupport::projectPath(QStringLiteral("fuzz/") + kind);
            QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                files.next();
                const QString format = files.fileInfo().dir().dirName();
                QTest::addRow("%s/%s/%s", qPrintable(kind), qPrintable(format), qPrintable(files.fileName()))
                    << format << files.filePath();
            }
        }
    }

    void inputs()
    {
        QFETCH(QString, format);
        QFETCH(QString, path);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        const std::string_view input(bytes.constData(), std::size_t(bytes.size()));
        const std::string broken = Fuzz::DocumentExercise(format.toStdString(), input).run();
        QVERIFY2(broken.empty(), broken.c_str());
    }
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<QCoreApplication, FuzzReplayTest>(argc, argv);
}

#include "fuzz_replay_test.moc"
