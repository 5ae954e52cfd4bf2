#include "host/Shared/Logging/LogRecord.h"
#include "host/Utilities/RepositoryAccess.h"
#include "tests/support/Columns.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"
#include "widgets/BackendControlWidget.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

using FrameworkCore::AppConfig::AccessMode;
using Shared::Logging::LogLine;
using Shared::Logging::LogRecord;
using TestSupport::FakeRepository;
using TestSupport::words;
using Widgets::BackendControlWidget;

namespace {

QStringList itemsOf(const QComboBox& box)
{
    QStringList items;
    for (int i = 0; i < box.count(); ++i)
        items.append(box.itemText(i));
    return items;
}

} // namespace

class BackendPageTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        repository = std::make_shared<FakeRepository>();
        Utilities::SetAppConfigRepositoryInterface(repository);
        open();
    }

    void cleanup()
    {
        page.reset();
        Utilities::SetAppConfigRepositoryInterface({});
    }

    void startsWithTheTypesAndItsTexts()
    {
        QCOMPARE(itemsOf(*part<QComboBox>("cbBackendTypes")), words("ini json xml txt"));
        QCOMPARE(part<QComboBox>("cbBackendTypes")->currentIndex(), 0);
        QCOMPARE(part<QLineEdit>("edtBackendName")->text(), QStringLiteral("test"));
        QCOMPARE(part<QLineEdit>("edtBackendFile")->text(), QStringLiteral("test.ini"));
        QCOMPARE(part<QComboBox>("cbBackendNames")->count(), 0);
    }

    void namesFollowTheRepository()
    {
        repository->addBackend(QStringLiteral("b"), QStringLiteral("b"), QStringLiteral("ini"));
        repository->addBackend(QStringLiteral("a"), QStringLiteral("a"), QStringLiteral("json"));
        QTRY_COMPARE(itemsOf(*part<QComboBox>("cbBackendNames")), words("b a"));
        click("btnRefreshBackendList");
        QCOMPARE(itemsOf(*part<QComboBox>("cbBackendNames")),
                 QStringList(QStringLiteral("All backends")) + words("b a"));
        QCOMPARE(part<QComboBox>("cbBackendNames")->currentText(), QStringLiteral("All backends"));
    }

    void creates_data()
    {
        const auto row = TestSupport::columns<QString, int>("mode", "access");
        row("read and write", "Read-Write", 3);
        row("read", "Read-Only", 1);
        row("write", "Write-Only", 2);
        row("neither", "Append", 0);
    }

    void creates()
    {
        QFETCH(QString, mode);
        QFETCH(int, access);
        auto* const modes = part<QComboBox>("cbAccessMode");
        if (modes->findText(mode) < 0)
            modes->addItem(mode);
        modes->setCurrentText(mode);
        part<QComboBox>("cbBackendTypes")->setCurrentText(QStringLiteral("json"));
        part<QLineEdit>("edtBackendName")->setText(QStringLiteral("plant.cell"));
        part<QLineEdit>("edtBackendFile")->setText(QStringLiteral("cell.json"));
        click("btnCreateBackend");
        const auto creations = repository->getBackendCreations();
        QCOMPARE(creations.size(), 1);
        QCOMPARE(creations.first().type, QStringLiteral("json"));
        QCOMPARE(creations.first().name, QStringLiteral("plant.cell"));
        QCOMPARE(creations.first().configuration.location, QVariant(QStringLiteral("cell.json")));
        QCOMPARE(creations.first().configuration.description, QString());
        QCOMPARE(static_cast<int>(creations.first().configuration.accessMode), access);
        QCOMPARE(creations.first().option, 3);
    }

    void savesWhatIsChosen_data()
    {
        TestSupport::columns<bool, QString, QStringList>("refresh", "choice", "saved");
        QTest::addColumn<QStringList>("log"); // in the order of the names
        const auto row = [](const char* name, bool refresh, const char* choice, const char* saved,
                            const char* logged) {
            QStringList log;
            for (const QString& backend : words(logged))
                log.append(QStringLiteral("Backend %1 saved with result 1").arg(backend));
            QTest::newRow(name) << refresh << QString::fromLatin1(choice) << words(saved) << log;
        };
        row("all of them", true, "All backends", "b a e d c", "a b c d e");
        row("one of them", true, "a", "a", "a");
        row("never refreshed", false, "b", "b", "b");
    }

    void savesWhatIsChosen()
    {
        QFETCH(bool, refresh);
        QFETCH(QString, choice);
        for (const QString& name : words("b a e d c"))
            repository->addBackend(name, name, QStringLiteral("ini"));
        QTRY_COMPARE(part<QComboBox>("cbBackendNames")->count(), 5);
        if (refresh)
            click("btnRefreshBackendList");
        part<QComboBox>("cbBackendNames")->setCurrentText(choice);
        const quint64 before = lastLineNumber();
        click("btnSaveBackend");
        QTEST(repository->getSavedBackends(), "saved");
        QTEST(textsSince(before), "log");
    }

    void failuresAreLogged()
    {
        const quint64 before = lastLineNumber();
        click("btnSaveBackend"); // an empty box saves the empty name
        QCOMPARE(repository->getSavedBackends(), QStringList(QString()));
        QCOMPARE(textsSince(before), QStringList(QStringLiteral("Backend  saved with result 0")));
    }

    void returnLeadsThroughTheForm()
    {
        QVERIFY(TestSupport::showActive(*page));
        part<QLineEdit>("edtBackendName")->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), part<QLineEdit>("edtBackendFile"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), part<QPushButton>("btnCreateBackend"));
        QCOMPARE(repository->getBackendCreations().size(), 0);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(repository->getBackendCreations().size(), 1);
        part<QComboBox>("cbBackendTypes")->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QCOMPARE(QApplication::focusWidget(), part<QLineEdit>("edtBackendName"));
        click("btnRefreshBackendList");
        part<QComboBox>("cbBackendNames")->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QCOMPARE(QApplication::focusWidget(), part<QPushButton>("btnSaveBackend"));
    }

    void livesWithoutARepository()
    {
        Utilities::SetAppConfigRepositoryInterface({});
        open();
        for (QPushButton* const button : page->findChildren<QPushButton*>())
            button->click();
        QCOMPARE(part<QComboBox>("cbBackendTypes")->count(), 0);
        QCOMPARE(part<QComboBox>("cbBackendNames")->count(), 0);
    }

private:
    void open() { page = std::make_unique<BackendControlWidget>(); }

    template <typename Part>
    Part* part(const char* name) const
    {
        return page->findChild<Part*>(QLatin1String(name));
    }

    void click(const char* button) const { QTest::mouseClick(part<QPushButton>(button), Qt::LeftButton); }

    static quint64 lastLineNumber()
    {
        const QVector<LogLine> lines = LogRecord::instance().getLines();
        return lines.isEmpty() ? 0 : lines.last().number;
    }

    static QStringList textsSince(quint64 number)
    {
        QStringList texts;
        for (const LogLine& line : LogRecord::instance().getLines(number))
            texts.append(line.text);
        return texts;
    }

    std::shared_ptr<FakeRepository> repository;
    std::unique_ptr<BackendControlWidget> page;
};

VANTRY_TEST_MAIN(QApplication, BackendPageTest)

#include "backend_page_test.moc"
