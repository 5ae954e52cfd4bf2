#include "desk/session/SessionKeeper.h"
#include "repository/AttributeRepository.h"
#include "tests/desk/DeskTest.h"
#include "tests/support/Columns.h"

#include <QDir>
#include <QScrollBar>
#include <QTextBrowser>

using TestSupport::contentOf;
using TestSupport::DeskTest;
using TestSupport::RunningDesk;

// What the next start brings back.
class DeskSessionTest : public DeskTest
{
    Q_OBJECT

    // What a process of its own keeps of its files, without windows: applications are made once in a process.
    struct OtherDesk
    {
        std::shared_ptr<Vantry::SessionKeeper::Repository> repository =
            Repository::AttributeRepository::create();
        Vantry::FileMounter mounter{repository};
        Vantry::SessionKeeper session{repository, mounter,
                                      [] { return QVector<Vantry::SessionState::View>(); }};
    };

    QByteArray session() const { return contentOf(folder->path("state/vantry/session.json")); }

    // Without a word to the window, as when the program is killed.
    void die() { desk.reset(); }

    void startAgain(const QStringList& files = {})
    {
        desk = std::make_unique<RunningDesk>(*folder, files);
        desk->windows->beginSession(files.isEmpty());
        QVERIFY(TestSupport::showActive(*desk->window));
    }

    QStringList monitored() const
    {
        return desk->window->findChild<Utilities::ModelViews::AdvancedAttributeModel*>()
            ->getAttributeFullPathList();
    }

    void expand(const QStringList& paths)
    {
        for (const QString& path : paths)
            desk->tree->expand(desk->item(path));
    }

private slots:
    void init()
    {
        open();
        desk->windows->beginSession(false);
    }
    void cleanup() { close(); }

    void bringsBackWhatIsShown_data()
    {
        const auto row = TestSupport::columns<bool>("isClosed");
        row("closed", true);
        row("killed", false);
    }

    void bringsBackWhatIsShown()
    {
        QFETCH(bool, isClosed);
        QVERIFY(QDir().mkpath(folder->path("d")));
        constexpr int count = 300;
        for (int i = 0; i < count; ++i)
            TestSupport::writeFile(folder->path("d/") + QString::number(count + i) + QLatin1String(".ini"),
                                   "k = 1\n");
        desk->window->openFiles({folder->path("d")});
        QTRY_VERIFY(desk->item(QStringLiteral("d.599%2Eini")).isValid());
        expand({QStringLiteral("plant"), QStringLiteral("plant.cell"), QStringLiteral("d"),
                QStringLiteral("d.350%2Eini")});
        desk->tree->collapse(desk->item(QStringLiteral("limits")));
        desk->tree->setCurrentIndex(desk->item(QStringLiteral("plant.cell.pump")));
        auto* const watched = desk->window->findChild<Utilities::ModelViews::AdvancedAttributeModel*>();
        watched->loadCustomAttributeList({speed, maximum});
        auto* const place = desk->tree->verticalScrollBar();
        QTRY_VERIFY(place->maximum() > count / 2); // once the rows are laid out
        place->setValue(place->maximum() / 2);
        const int scrolled = place->value();
        const QStringList rows = desk->shownRows();
        const QString page = desk->shownPage();
        QTRY_VERIFY(session().contains("d.350%2Eini") && session().contains("oven.maximum") &&
                    session().contains("\"scroll\": " + QByteArray::number(scrolled)));
        if (isClosed)
            QVERIFY(desk->window->close());
        die();

        startAgain();
        QTRY_COMPARE(desk->shownRows(), rows);
        QCOMPARE(desk->repository->getBackendInterface()->getBackendNames().size(), count + 3);
        QTRY_COMPARE(desk->tree->verticalScrollBar()->value(), scrolled);
        QTRY_COMPARE(desk->tree->currentIndex(), desk->item(QStringLiteral("plant.cell.pump")));
        QVERIFY(desk->part<QTextBrowser>("txtAttributeDetails")
                    ->toPlainText()
                    .contains(QLatin1String("plant.cell.pump")));
        QCOMPARE(monitored(), QStringList({speed, maximum}));
        QCOMPARE(desk->shownPage(), page);
    }

    void bringsBackWhatIsUnsaved()
    {
        write(speed, 1250);
        const QDir running(folder->path("state/vantry/running/1"));
        QTRY_VERIFY_WITH_TIMEOUT(running.entryList(QDir::Files).size() == 2, 15000);
        QTRY_VERIFY(session().contains("plant.json"));
        die();
        startAgain();
        QTRY_COMPARE(read(speed), QVariant(1250LL));
        QCOMPARE(contentOf(folder->path("plant.json")), plant);
        QTRY_VERIFY(desk->window->isWindowModified());
        QVERIFY(!desk->part<QWidget>("keptChangesBar")->isVisible());

        // What is saved is not kept any more.
        QVERIFY(TestSupport::pressKey(QStringLiteral("ctrl+s")));
        QTRY_VERIFY_WITH_TIMEOUT(running.entryList(QDir::Files).isEmpty(), 15000);
        QVERIFY(QDir(folder->path("state/vantry/unsaved")).entryList(QDir::Files).isEmpty());
    }

    // Each keeps its own, and nobody takes what another is still at work with.
    void keepsWhatASecondDeskHasUnsaved()
    {
        auto second = std::make_unique<OtherDesk>();
        second->session.follow();
        second->mounter.mount(QStringList(folder->path("limits.ini")));
        QTRY_VERIFY(second->repository->getTreeInterface()->getNodeInformation(maximum).exists);
        QCOMPARE(second->repository->getWriterInterface()->writeAttributeValue(maximum, 130, 8), 0);
        const QDir running(folder->path("state/vantry/running/2"));
        QTRY_VERIFY_WITH_TIMEOUT(running.entryList(QDir::Files).size() == 2, 15000);
        QVERIFY2(OtherDesk().session.takeUnsaved().isEmpty(), "it takes what a running desk keeps");
        second.reset();
        die();
        startAgain({folder->path("plant.json")});
        desk->window->showKeptChanges();
        QVERIFY(desk->part<QWidget>("keptChangesBar")->isVisible());
        QCOMPARE(QDir(folder->path("state/vantry/unsaved")).entryList(QDir::Files).size(), 2);
    }

    void bringsBackLocks()
    {
        const auto locked = [this] { return desk->repository->getBackendInterface()->getLockedBackends(); };
        QVERIFY(desk->repository->getBackendInterface()->setLocked(QStringLiteral("limits"), true));
        QTRY_VERIFY(session().contains("\"locked\": [\n        \"limits\""));
        die();
        startAgain();
        QTRY_COMPARE(locked(), QStringList(QStringLiteral("limits")));
        QTRY_VERIFY(desk->item(sense).isValid());
        write(sense, QStringLiteral("right"));
    }

    void startsWithoutOnWish()
    {
        QTRY_VERIFY(session().contains("plant.json"));
        desk->part<QAction>("reopensFiles")->trigger();
        QVERIFY(desk->window->close());
        die();
        startAgain();
        QVERIFY(!desk->window->isOpeningFiles());
    }
};

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk-test"));
    return TestSupport::runTest<QApplication, DeskSessionTest>(argc, argv);
}

#include "desk_session_test.moc"
