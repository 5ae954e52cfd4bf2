#include "host/Shared/Logging/LogRecord.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"
#include "tests/support/Columns.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/NoThreads.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestRun.h"
#include "widgets/BackendCreateWidget.h"
#include "widgets/BusyWidget.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QThread>

using Shared::Logging::LogRecord;
using TestSupport::DialogDriver;
using TestSupport::FakeRepository;
using Widgets::BackendCreateWidget;

namespace {

const QString pictureOption = QStringLiteral("--picture-of-the-screen");

// What the screen shows, taken by another process: in this one the GUI thread waits meanwhile.
void takePicture(const QString& file)
{
    QProcess::execute(QCoreApplication::applicationFilePath(), {pictureOption, file});
}

int savePicture(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    return QGuiApplication::primaryScreen()->grabWindow(0).save(QString::fromLocal8Bit(argv[2])) ? 0 : 1;
}

class SlowRepository : public FakeRepository
{
public:
    bool createBackend(const QString& type, const QString& name,
                       const FrameworkCore::AppConfig::BackendConfiguration& configuration,
                       const int& option) override
    {
        workers.append(QThread::currentThread());
        if (throwsNoMemory)
            throw std::bad_alloc();
        if (!pictureFile.isEmpty())
            takePicture(pictureFile);
        return FakeRepository::createBackend(type, name, configuration, option);
    }

    bool throwsNoMemory = false;
    QString pictureFile;
    QList<QThread*> workers; // read when the creation has ended
};

int countBusyWindows()
{
    int count = 0;
    for (const QWidget* const window : QApplication::topLevelWidgets())
        count += qobject_cast<const BusyWidget*>(window) ? 1 : 0;
    return count;
}

QStringList linesSince(quint64 number)
{
    QStringList lines;
    for (const auto& line : LogRecord::instance().getLines(number))
        lines.append(QString::number(int(line.type)) + QLatin1Char(' ') + line.text);
    return lines;
}

quint64 lastLineNumber()
{
    const auto lines = LogRecord::instance().getLines();
    return lines.isEmpty() ? 0 : lines.last().number;
}

} // namespace

class BackendCreateTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        fake = std::make_shared<SlowRepository>();
        use(fake);
        open();
    }

    void cleanup()
    {
        delete dialog;
        QCOMPARE(countBusyWindows(), 0);
        Utilities::SetAppConfigRepositoryInterface({});
    }

    void opensForAPlace()
    {
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Zelk"));
        QCOMPARE(part<QLineEdit>("edtRelativePath")->text(), QStringLiteral("a.b."));
        QCOMPARE(part<QComboBox>("cbBackendType")->currentText(), QStringLiteral("json"));
        QCOMPARE(part<QComboBox>("cbAccessMode")->currentText(), QStringLiteral("read-only"));
        QCOMPARE(part<QLabel>("lblBackendDesc")->text(), QStringLiteral("Backend Description  "));
        QStringList order{QApplication::focusWidget()->objectName()};
        for (int i = 0; i < 7; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            order.append(QApplication::focusWidget()->objectName());
        }
        QCOMPARE(order.join(QLatin1Char(' ')),
                 QStringLiteral("cbBackendType edtBackendDesc edtRelativePath edtBackendFile "
                                "btnBackendFileBrowse cbAccessMode btnCancel btnCreate"));
    }

    void createsOnAWorkerBehindAPaintedWindow()
    {
        const QTemporaryDir folder;
        fake->pictureFile = folder.filePath(QStringLiteral("screen.png"));
        const quint64 before = lastLineNumber();
        int told = 0;
        connect(dialog, &BackendCreateWidget::backendCreatedSuccess, this, [&] {
            ++told;
            QVERIFY(!dialog->isVisible());
        });
        fill(QStringLiteral("plant.json"), "The plant", "read-write");
        const QPoint middle = dialog->frameGeometry().center();
        create();

        QCOMPARE(told, 1);
        QCOMPARE(linesSince(before),
                 QStringList(QStringLiteral("2 Backend \"a.b.c\" Created With Result 1")));
        const auto creations = fake->getBackendCreations();
        QCOMPARE(creations.size(), 1);
        QCOMPARE(creations[0].type, QStringLiteral("json"));
        QCOMPARE(creations[0].name, QStringLiteral("a.b.c"));
        QCOMPARE(creations[0].configuration.location, QVariant(QStringLiteral("plant.json")));
        QCOMPARE(creations[0].configuration.description, QStringLiteral("The plant"));
        QCOMPARE(int(creations[0].configuration.accessMode), 3);
        QCOMPARE(creations[0].option, 2);
        QVERIFY(fake->workers[0] != thread());
        QTRY_VERIFY(!dialog); // it deletes itself
        showsBusyWindow(QImage(fake->pictureFile), middle);
    }

    // Also on a worker that is kept from the attempt before.
    void aFailureLeavesTheDialogForAnotherTry()
    {
        const QSignalSpy told(dialog, &BackendCreateWidget::backendCreatedSuccess);
        fake->refuseBackends(true);
        fill(QStringLiteral("plant.json"), "", "write-only");
        const quint64 before = lastLineNumber();
        {
            const DialogDriver driver([](QWidget& box) {
                QCOMPARE(qobject_cast<QMessageBox*>(&box)->text(), QStringLiteral("Backend Creation Failed"));
                for (const QWidget* const window : QApplication::topLevelWidgets())
                    QVERIFY(!window->isVisible() || !qobject_cast<const BusyWidget*>(window));
                QTest::keyClick(&box, Qt::Key_Return);
            });
            create();
        }
        QVERIFY(dialog->isVisible());
        QCOMPARE(part<QLineEdit>("edtBackendFile")->text(), QStringLiteral("plant.json"));
        QCOMPARE(linesSince(before), QStringList());
        QCOMPARE(told.count(), 0);
        fake->refuseBackends(false);
        create();
        QCOMPARE(told.count(), 1);
        QVERIFY(!fake->workers.contains(thread()));
    }

    void survivesWithoutMemory()
    {
        fake->throwsNoMemory = true;
        failsWith("not enough memory");
        fake->throwsNoMemory = false;
        create();
        QCOMPARE(fake->getBackendCreations().size(), 1);
    }

    void survivesWithoutAThread()
    {
        {
            const TestSupport::NoThreads none;
            failsWith("thread");
        }
        create();
        QCOMPARE(fake->getBackendCreations().size(), 1);
        QVERIFY(!fake->workers.contains(thread()));
    }

    void closes_data()
    {
        const auto row = TestSupport::columns<int>("key");
        row("by the button", 0);
        row("by Escape", int(Qt::Key_Escape));
    }

    void closes()
    {
        QFETCH(int, key);
        if (key)
            QTest::keyClick(dialog, Qt::Key(key));
        else
            QTest::mouseClick(part<QPushButton>("btnCancel"), Qt::LeftButton);
        QTRY_VERIFY(!dialog);
        QCOMPARE(fake->getBackendCreations().size(), 0);
    }

    void browses()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("plant.ini")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        auto* const edit = part<QLineEdit>("edtBackendFile");
        edit->setText(folder.path());
        {
            const DialogDriver driver([](QWidget& chooser) {
                QCOMPARE(chooser.windowTitle(), QStringLiteral("Select File"));
                auto* const name = chooser.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
                QTest::keyClicks(name, QStringLiteral("plant.ini"));
                QTest::keyClick(name, Qt::Key_Return);
            });
            QTest::mouseClick(part<QPushButton>("btnBackendFileBrowse"), Qt::LeftButton);
        }
        QCOMPARE(edit->text(), file.fileName());
        const DialogDriver driver([](QWidget& chooser) { QTest::keyClick(&chooser, Qt::Key_Escape); });
        QTest::mouseClick(part<QPushButton>("btnBackendFileBrowse"), Qt::LeftButton);
        QCOMPARE(edit->text(), file.fileName());
    }

    void mountsARealFile()
    {
        const QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("plant.json")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("{\"limit\": 12}");
        file.close();
        delete dialog;
        const auto repository = Repository::AttributeRepository::create();
        use(repository);
        open();
        fill(file.fileName(), "The plant", "read-write");
        create();
        QVariant value;
        QCOMPARE(
            repository->getReaderInterface()->readAttributeValue(QStringLiteral("a.b.c.limit"), value, 0), 0);
        QCOMPARE(value, QVariant(12));
        const auto information =
            repository->getBackendInterface()->getBackendInformation(QStringLiteral("a.b.c"));
        QCOMPARE(information->getBackendDescription(), QStringLiteral("The plant"));
    }

    void livesWithoutARepository()
    {
        delete dialog;
        use({});
        open();
        QCOMPARE(part<QComboBox>("cbBackendType")->count(), 0);
        create();
        QVERIFY(dialog->isVisible());
    }

private:
    static void use(std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface> repository)
    {
        Utilities::SetAppConfigRepositoryInterface(std::move(repository));
    }

    void open()
    {
        dialog = new BackendCreateWidget(nullptr, QStringLiteral("a.b"));
        dialog->move(500, 400);
        QVERIFY(TestSupport::showActive(*dialog));
    }

    template <typename Part>
    Part* part(const char* name) const
    {
        return dialog->findChild<Part*>(QLatin1String(name));
    }

    void fill(const QString& file, const char* description, const char* mode)
    {
        QTest::keyClicks(part<QLineEdit>("edtRelativePath"), QStringLiteral("c"));
        QTest::keyClicks(part<QLineEdit>("edtBackendFile"), file);
        QTest::keyClicks(part<QLineEdit>("edtBackendDesc"), QLatin1String(description));
        QTest::keyClicks(part<QComboBox>("cbAccessMode"), QLatin1String(mode)); // chooses what begins so
    }

    // The dialog stays, and the log says why.
    void failsWith(const char* reason)
    {
        fill(QStringLiteral("plant.json"), "", "write-only");
        const quint64 before = lastLineNumber();
        const DialogDriver driver([](QWidget& box) {
            QCOMPARE(qobject_cast<QMessageBox*>(&box)->text(), QStringLiteral("Backend Creation Failed"));
            QTest::keyClick(&box, Qt::Key_Return);
        });
        create();
        QVERIFY(dialog->isVisible());
        const QStringList lines = linesSince(before);
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines.first().startsWith(QLatin1Char('3')) && lines.first().contains(QLatin1String(reason)),
                 qPrintable(lines.first()));
    }

    void create() { QTest::mouseClick(part<QPushButton>("btnCreate"), Qt::LeftButton); }

    // The animation aside, which may show any of its frames.
    static void showsBusyWindow(const QImage& screen, QPoint middle)
    {
        BusyWidget expected;
        expected.setStatusText(QStringLiteral("Creating Backend. Please Wait..."));
        expected.resize(expected.minimumSize());
        const QImage picture = expected.grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QRect status = expected.findChild<QLabel*>(QStringLiteral("lblStatus"))->geometry();
        const QPoint corner = middle - expected.rect().center();
        const QImage seen = screen.copy(status.translated(corner)).convertToFormat(QImage::Format_RGB32);
        QVERIFY(!seen.isNull());
        QCOMPARE(seen, picture.copy(status));
        QCOMPARE(screen.pixelColor(corner + QPoint(5, 5)), picture.pixelColor(5, 5));
    }

    std::shared_ptr<SlowRepository> fake;
    QPointer<BackendCreateWidget> dialog;
};

int main(int argc, char** argv)
{
    if (argc == 3 && QString::fromLocal8Bit(argv[1]) == pictureOption)
        return savePicture(argc, argv);
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // those of a desktop take no events from a test
    return TestSupport::runTest<QApplication, BackendCreateTest>(argc, argv);
}

#include "backend_create_test.moc"
