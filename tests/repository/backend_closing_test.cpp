#include "repository/AttributeRepository.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <thread>

using namespace FrameworkCore::AppConfig;
using FrameworkCore::Notification::UpdatePoint;
using FrameworkCore::Notification::UpdateResult;
using Repository::AttributeRepository;

class BackendClosingTest : public QObject
{
    Q_OBJECT

    std::shared_ptr<AttributeRepository> repository;
    std::unique_ptr<QTemporaryDir> folder;

    bool mount(const QString& name, const QByteArray& ini)
    {
        const QString file = TestSupport::writeFile(folder->filePath(name), ini);
        return repository->getBackendInterface()->createBackend(QStringLiteral("ini"), name,
                                                                {file, QString(), AccessMode::ReadWrite}, 2);
    }

    bool close(const QString& name, bool discard = false)
    {
        return repository->getBackendInterface()->closeBackend(name, discard);
    }

    QVariant read(const QString& path)
    {
        QVariant value;
        repository->getReaderInterface()->readAttributeValue(path, value, 0);
        return value;
    }

    bool create(const QString& path)
    {
        return repository->getWriterInterface()->createAttribute(path, 1, 2, 3);
    }

    QStringList paths(const char* pattern)
    {
        QStringList found = repository->getTreeInterface()->findPaths({QLatin1String(pattern)});
        found.sort();
        return found;
    }

    QString backendOf(const char* path)
    {
        return repository->getTreeInterface()->getNodeInformation(QLatin1String(path)).backend;
    }

private slots:
    void init()
    {
        repository = AttributeRepository::create();
        folder = std::make_unique<QTemporaryDir>();
    }

    void leavesNestedBackends()
    {
        QVERIFY(mount(QStringLiteral("m"), "a=1\n[s]\nb=2\n"));
        QVERIFY(mount(QStringLiteral("m.s.mid"), "c=3\n[in]\nd=4\n"));
        QVERIFY(mount(QStringLiteral("m.s.mid.in.deep"), "e=5\n"));
        QStringList removed;
        repository->getNotificationInterface()->registerUpdateCallback(
            QStringLiteral("m*"),
            [&removed](const QString& path, const UpdatePoint&, const UpdateResult& result, auto&&...) {
                removed.append(result == UpdateResult::Removed ? path : QStringLiteral("other"));
            },
            8);

        QVERIFY(close(QStringLiteral("m.s.mid")));
        removed.sort();
        QCOMPARE(removed, QStringList({QStringLiteral("m.s.mid.c"), QStringLiteral("m.s.mid.in.d")}));
        QCOMPARE(read(QStringLiteral("m.s.mid.in.deep.e")), QVariant(5LL));
        QCOMPARE(backendOf("m.s.mid.in"), QStringLiteral("m"));
        QVERIFY(!repository->getTreeInterface()->getNodeInformation(QStringLiteral("m.s.mid")).isBackendRoot);
        QCOMPARE(read(QStringLiteral("internal.backends.names")),
                 QVariant(QStringLiteral("m;m.s.mid.in.deep")));
        QCOMPARE(read(QStringLiteral("internal.backends.names.m.s.mid")), QVariant());
        QVERIFY(create(QStringLiteral("m.s.mid.c"))); // in the outer file now
        QVERIFY(!close(QStringLiteral("m")));
        QCOMPARE(read(QStringLiteral("m.s.mid.c")), QVariant(1LL));

        QVERIFY(close(QStringLiteral("m"), true));
        QCOMPARE(paths("m*"),
                 QStringList({QStringLiteral("m"), QStringLiteral("m.s"), QStringLiteral("m.s.mid"),
                              QStringLiteral("m.s.mid.in"), QStringLiteral("m.s.mid.in.deep"),
                              QStringLiteral("m.s.mid.in.deep.e")}));
        QVERIFY(create(QStringLiteral("m.a")));
        QCOMPARE(backendOf("m.a"), QString());
        QVERIFY(close(QStringLiteral("m.s.mid.in.deep")));
        QCOMPARE(paths("m*"), QStringList({QStringLiteral("m"), QStringLiteral("m.a")}));
        QCOMPARE(paths("internal.backends*"), QStringList({QStringLiteral("internal.backends"),
                                                           QStringLiteral("internal.backends.names")}));
        QCOMPARE(read(QStringLiteral("internal.backends.names")), QVariant());
        QVERIFY(!close(QStringLiteral("m")));
    }

    // Readers, writers and searches meet a backend that comes and goes.
    void closesUnderOthersHands()
    {
        std::atomic<bool> done{false};
        const auto work = [&](int seed) {
            const auto tree = repository->getTreeInterface();
            const auto backends = repository->getBackendInterface();
            for (int i = seed; !done; ++i) {
                const QString path = QStringLiteral("t.s.k%1").arg(i % 20);
                QVariant value;
                repository->getReaderInterface()->readAttributeValue(path, value, 0);
                if (value.isValid())
                    repository->getWriterInterface()->writeAttributeValue(path, i, 15);
                tree->getNodeInformation(path);
                tree->getChildren(QStringLiteral("t.s"));
                if (i % 50 == 0 && backends->getBackendInformation(QStringLiteral("t")))
                    backends->saveBackend(QStringLiteral("t"));
            }
        };
        QByteArray ini = "[s]\n";
        for (int i = 0; i < 20; ++i)
            ini += "k" + QByteArray::number(i) + "=0\n";
        std::thread first(work, 0);
        std::thread second(work, 7);
        for (int round = 0; round < 30; ++round) {
            QVERIFY(mount(QStringLiteral("t"), ini));
            std::this_thread::yield();
            QVERIFY(close(QStringLiteral("t"), true));
            QCOMPARE(paths("t*"), QStringList());
        }
        done = true;
        first.join();
        second.join();
    }
};

int main(int argc, char** argv)
{
    return TestSupport::runTest<QCoreApplication, BackendClosingTest>(argc, argv);
}

#include "backend_closing_test.moc"
