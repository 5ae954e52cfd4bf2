#include "desk/plugins/GuiContext.h"
#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"
#include "tests/desk/RunningDesk.h"
#include "tests/support/Columns.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"

#include <QApplication>
#include <QComboBox>
#include <QCommandLinkButton>
#include <QDir>
#include <QDockWidget>
#include <QDrag>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QSplitter>
#include <QStackedWidget>
#include <QStandardPaths>
#include <QTableView>
#include <QTextBrowser>
#include <QToolButton>
#include <QTreeView>
#include <QTreeWidget>
#include <QUrl>
#include <QWindow>

using TestSupport::RunningDesk;
using Utilities::ModelViews::AdvancedAttributeModel;
using Vantry::MainWindow;

namespace {

// What the window shows when it is painted first.
class FirstPicture : public QObject
{
public:
    explicit FirstPicture(const RunningDesk& runningDesk) : desk(runningDesk)
    {
        desk.window->installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && rows.isEmpty()) {
            rows = desk.shownRows();
            page = desk.shownPage();
            title = desk.window->windowTitle();
        }
        return false;
    }

    QStringList rows;
    QString page;
    QString title;

private:
    const RunningDesk& desk;
};

// A window from which a file, or whatever the URL names, is dragged.
class DragSource : public QWidget
{
public:
    explicit DragSource(const QUrl& draggedUrl) : url(draggedUrl) {}

    int result = -1; // of the drag

protected:
    void mouseMoveEvent(QMouseEvent*) override
    {
        if (result >= 0)
            return;
        auto* const urls = new QMimeData;
        urls->setUrls({url});
        auto* const drag = new QDrag(this); // deletes itself
        drag->setMimeData(urls);
        result = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
    }

private:
    const QUrl url;
};

void clickItem(QTreeView& tree, const QModelIndex& item)
{
    tree.scrollTo(item);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, tree.visualRect(item).center());
}

} // namespace

// The desk with its real plug-in, used by mouse and keyboard.
class DeskTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { folder = std::make_unique<RunningDesk::Folder>(); }

    void cleanup()
    {
        desk.reset();
        folder.reset();
    }

    void opensOnTheStartPage()
    {
        QDir examples(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                      QLatin1String("/vantry/example"));
        examples.removeRecursively();
        open({});
        QVERIFY(desk->part<QWidget>("startPage")->isVisible());
        QTest::mouseClick(desk->part<QPushButton>("startExample"), Qt::LeftButton);
        QTRY_VERIFY(desk->part<QTreeView>("treeView")->isVisible());
        QTRY_VERIFY(desk->item(QStringLiteral("recipe")).isValid());
        QVERIFY(QFileInfo(examples.filePath(QStringLiteral("bench.json"))).isWritable());

        for (const char* key : {"alt+f", "a"}) // closes all
            QVERIFY(TestSupport::pressKey(QLatin1String(key)));
        QTRY_VERIFY(desk->part<QWidget>("startPage")->isVisible());
        const auto recent = desk->part<QWidget>("startPage")->findChildren<QCommandLinkButton*>();
        QCOMPARE(recent.size(), 2 + 4);
        QVERIFY(TestSupport::click(*recent.last(), recent.last()->rect().center()));
        QTRY_VERIFY(desk->item(QStringLiteral("bench.stations")).isValid());
        QTRY_VERIFY(desk->part<QTreeView>("treeView")->isVisible());
        QVERIFY(TestSupport::click(*desk->navigationButton("btnBackends"), QPoint(20, 10)));
        QTRY_COMPARE(desk->shownPage(), QStringLiteral("pageBackends"));
        for (const char* key : {"alt+f", "a"})
            QVERIFY(TestSupport::pressKey(QLatin1String(key)));
        QTRY_VERIFY(!desk->item(QStringLiteral("bench")).isValid());
        QVERIFY(desk->part<QWidget>("pageBackends")->isVisible()); // which somebody has chosen
        examples.removeRecursively();
    }

    void showsTheWarningPageOfAnUnknownMode()
    {
        open({});
        desk->repository->getWriterInterface()->createAttribute(QStringLiteral("desk.instances.Vantry.state"),
                                                                QStringLiteral("nothing"), 2, 3);
        QTRY_VERIFY(desk->part<QLabel>("labelWarning")->isVisible());
        for (const char* name : {"btnSelectAttributes", "btnSelectBackends", "btnTests"})
            QVERIFY(desk->part<QWidget>("pageUnknown")
                        ->findChild<QPushButton*>(QLatin1String(name))
                        ->isVisible());
        QTest::mouseClick(desk->part<QPushButton>("btnSelectBackends"), Qt::LeftButton);
        QTRY_COMPARE(desk->shownPage(), QStringLiteral("pageBackends"));
    }

    void leadsToEveryPage()
    {
        open({});
        const QList<QPair<const char*, const char*>> pages{{"btnAttributes", "pageAttributes"},
                                                           {"btnBackends", "pageBackends"},
                                                           {"btnTests", "pageTests"},
                                                           {"btnAttributes", "pageAttributes"}};
        for (const auto& [button, page] : pages) {
            QVERIFY(TestSupport::click(*desk->navigationButton(button), QPoint(20, 10)));
            QTRY_COMPARE(desk->shownPage(), QLatin1String(page));
            QTRY_VERIFY(desk->part<QWidget>(page)->isVisible());
        }
    }

    void opensItsFilesOnTheAttributePage()
    {
        openPlant();
        QTRY_COMPARE(desk->shownPage(), QStringLiteral("pageAttributes"));
        QTRY_COMPARE(desk->window->windowTitle(), QStringLiteral("plant.json[*]"));
        desk->window->openFiles({folder->path("limits.ini")});
        QTRY_VERIFY(desk->item(QStringLiteral("limits.oven.maximum")).isValid());
        QTRY_COMPARE(desk->window->windowTitle(), QStringLiteral("plant.json, limits.ini[*]"));
        QVERIFY(desk->part<QWidget>("noticeBar")->isHidden());
    }

    void appearsWithItsFiles()
    {
        desk = std::make_unique<RunningDesk>(
            *folder, QStringList{folder->path("plant.json"), folder->path("limits.ini")});
        const FirstPicture first(*desk);
        desk->window->waitForFirstFiles();
        QVERIFY(TestSupport::showActive(*desk->window));
        QCOMPARE(first.rows, TestSupport::words("internal desk plant limits"));
        QCOMPARE(first.page, QStringLiteral("pageAttributes"));
        QCOMPARE(first.title, QStringLiteral("plant.json, limits.ini[*]"));
    }

    void appearsBeforeALargeFileIsRead()
    {
        QByteArray lines;
        for (int i = 0; i < 1000000; ++i)
            lines += "key" + QByteArray::number(i) + " = 1\n";
        QFile file(folder->path("large.ini"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(lines), lines.size());
        file.close();
        desk = std::make_unique<RunningDesk>(*folder, QStringList(file.fileName()));
        desk->window->waitForFirstFiles();
        QVERIFY(desk->window->isOpeningFiles());
        QVERIFY(TestSupport::showActive(*desk->window));
        QTRY_VERIFY_WITH_TIMEOUT(desk->item(QStringLiteral("large.key999999")).isValid(), 60000);
    }

    void completesAndReads()
    {
        openPlant();
        auto* const search = desk->part<QLineEdit>("edtSearchPath");
        QVERIFY(TestSupport::click(*search, search->rect().center()));
        QTRY_VERIFY(search->hasFocus());
        for (const char* key : {"ctrl+a", "p", "l", "Tab", "period", "c", "e", "Tab", "period", "p", "Tab"})
            QVERIFY(TestSupport::pressKey(QLatin1String(key)));
        QTRY_COMPARE(search->text(), QStringLiteral("plant.cell.pump"));
        auto* const read = desk->part<QPushButton>("btnReadAttribute");
        QVERIFY(TestSupport::click(*read, read->rect().center()));
        QTRY_COMPARE(desk->part<QComboBox>("cbFilter1")->count(), 3); // any, motor, name
        desk->tree->expandAll();
        QCOMPARE(desk->shownRows(),
                 (QStringList{QStringLiteral("-plant"), QStringLiteral(" -cell"), QStringLiteral("  -pump"),
                              QStringLiteral("   -motor"), QStringLiteral("    speed"),
                              QStringLiteral("    sense"), QStringLiteral("   name")}));
    }

    void filtersThroughTheLevels()
    {
        openPlant();
        choose("cbFilter1", "plant");
        choose("cbFilter2", "cell");
        choose("cbFilter3", "pump");
        choose("cbFilter4", "motor");
        QTRY_COMPARE(desk->shownRows(),
                     (QStringList{QStringLiteral("-plant"), QStringLiteral(" -cell"),
                                  QStringLiteral("  -pump"), QStringLiteral("   -motor"),
                                  QStringLiteral("    speed"), QStringLiteral("    sense")}));
    }

    void keepsWhatIsOpenAndShowsWhatIsClicked()
    {
        openPlant();
        for (const char* path : {"plant", "plant.cell", "plant.cell.valve"})
            desk->tree->expand(desk->item(QLatin1String(path)));
        const QStringList rows = desk->shownRows();
        QVERIFY(rows.contains(QStringLiteral("   open")));
        QTest::mouseClick(desk->part<QPushButton>("btnReadAttribute"), Qt::LeftButton);
        QCOMPARE(desk->shownRows(), rows);

        const auto* const details = desk->part<QTextBrowser>("txtAttributeDetails");
        clickItem(*desk->tree, desk->item(QStringLiteral("plant.cell.valve.open")));
        QTRY_COMPARE(
            details->toPlainText(),
            QStringLiteral("Name : open\nPath : plant.cell.valve.open\nData Type : bool\nValue : true"));
        clickItem(*desk->tree, desk->item(QStringLiteral("plant")));
        QTRY_COMPARE(details->toPlainText(), QStringLiteral("Backend Name : plant\nBackend Type : json\n"
                                                            "Backend Description : ") +
                                                 folder->path("plant.json"));
    }

    void tellsWhichFilesAreNotOpen()
    {
        open({folder->path("broken.json"), folder->path("plant.json"), folder->path("none.ini"),
              folder->path("limits.ini")});
        QTRY_VERIFY(desk->item(QStringLiteral("limits.oven")).isValid());
        QVERIFY(desk->item(QStringLiteral("plant.cell")).isValid());
        QVERIFY(!desk->item(QStringLiteral("broken")).isValid());
        auto* const bar = desk->part<QWidget>("noticeBar");
        QTRY_VERIFY(bar->isVisible());
        const QString text = desk->part<QLabel>("noticeText")->text();
        QVERIFY2(text.contains(folder->path("broken.json") + QLatin1String(":2:7: ")), qPrintable(text));
        QVERIFY2(text.contains(folder->path("none.ini")), qPrintable(text));
        QVERIFY2(!text.contains(QLatin1String("plant")), qPrintable(text));
        QTest::mouseClick(desk->part<QToolButton>("noticeClose"), Qt::LeftButton);
        QVERIFY(!bar->isVisible());

        // What comes later is reported alone.
        desk->window->openFiles({folder->path("none.ini")});
        QTRY_VERIFY(bar->isVisible());
        QVERIFY(!desk->part<QLabel>("noticeText")->text().contains(QLatin1String("broken")));
    }

    void opensAListOfTheMonitor_data()
    {
        const auto row = TestSupport::columns<bool, QByteArray, QStringList, QString>("isFirst", "content",
                                                                                      "watched", "notice");
        const QStringList speed{QStringLiteral("plant.cell.pump.motor.speed")};
        row("at the start", true, "plant.cell.pump.motor.speed\r\n", speed, "");
        row("later", false, "plant.cell.pump.motor.speed\n", speed, "");
        row("no text", true, "\xff\xfe", QStringList(), "list.DAP");
    }

    void opensAListOfTheMonitor()
    {
        QFETCH(bool, isFirst);
        QFETCH(QByteArray, content);
        const QString list = TestSupport::writeFile(folder->path("list.DAP"), content);
        const QStringList names{list, folder->path("plant.json")};
        open(isFirst ? names : QStringList());
        if (!isFirst)
            desk->window->openFiles(names);
        QTRY_VERIFY(desk->item(QStringLiteral("plant.cell")).isValid());
        QTEST(desk->window->findChild<AdvancedAttributeModel*>()->getAttributeFullPathList(), "watched");
        QFETCH(QString, notice);
        const auto* const text = desk->part<QLabel>("noticeText");
        QCOMPARE(text && text->isVisible(), !notice.isEmpty());
        QVERIFY(notice.isEmpty() || text->text().contains(notice));
    }

    void selectsAFileThatIsOpen()
    {
        open({folder->path("plant.json"), folder->path("limits.ini")});
        QTRY_VERIFY(desk->item(QStringLiteral("limits.oven")).isValid());
        clickItem(*desk->tree, desk->item(QStringLiteral("limits")));
        desk->window->openFiles({folder->path("plant.json")});
        QTRY_COMPARE(desk->tree->currentIndex(), desk->item(QStringLiteral("plant")));
        QVERIFY(desk->part<QTextBrowser>("txtAttributeDetails")
                    ->toPlainText()
                    .startsWith(QLatin1String("Backend Name : plant\n")));
        QVERIFY(!desk->part<QWidget>("noticeBar")->isVisible());
    }

    void takesDroppedFiles_data()
    {
        // dragged: a file, or something else
        const auto row = TestSupport::columns<QString, QString, bool>("target", "dragged", "isTaken");
        for (const char* target :
             {"treeView", "appConfigDataAccessWidget", "edtSearchPath", "navigationArea"})
            row(target, target, "limits.ini", true);
        row("page of the web", "treeView", "https://localhost/limits.ini", false);
    }

    void takesDroppedFiles()
    {
        QFETCH(QString, target);
        QFETCH(QString, dragged);
        QFETCH(bool, isTaken);
        openPlant();
        const bool isFile = !dragged.contains(QLatin1String("://"));
        DragSource source(isFile ? QUrl::fromLocalFile(folder->path(qPrintable(dragged))) : QUrl(dragged));
        source.setGeometry(desk->window->frameGeometry().right() + 20, 50, 80, 80);
        source.show();
        QVERIFY(QTest::qWaitForWindowExposed(&source));
        const auto& place = *desk->part<QWidget>(qPrintable(target));
        QVERIFY(TestSupport::drag(source, {40, 40}, place, place.rect().center()));
        QTRY_COMPARE(source.result, isTaken ? int(Qt::CopyAction) : int(Qt::IgnoreAction));
        if (isTaken)
            QTRY_VERIFY(desk->item(QStringLiteral("limits.oven")).isValid());
        QCOMPARE(desk->part<QLineEdit>("edtSearchPath")->text(), QStringLiteral("*"));
        QCOMPARE(desk->part<QTableView>("appConfigDataAccessWidget")->model()->rowCount(), 0);
    }

    void remembersHowItWasLeft()
    {
        open({});
        const QSize size = desk->window->size() - QSize(120, 60);
        desk->window->resize(size);
        QTRY_COMPARE(desk->window->size(), size);
        QTest::mouseClick(desk->navigationButton("btnAttributes"), Qt::LeftButton);
        QTRY_COMPARE(desk->shownPage(), QStringLiteral("pageAttributes"));
        dragHandle("areas", 60);
        dragHandle("splitter", -90);
        const QList<QList<int>> sizes = splitterSizes();
        QVERIFY(desk->window->close());

        // Also when the page was none that the desk opens by itself.
        open({});
        QCOMPARE(desk->window->size(), size);
        QVERIFY(desk->part<QWidget>("startPage")->isVisible()); // there is no file to show on that page
        QTest::mouseClick(desk->navigationButton("btnAttributes"), Qt::LeftButton);
        QTRY_COMPARE(desk->shownPage(), QStringLiteral("pageAttributes"));
        QTRY_COMPARE(splitterSizes(), sizes);
        QTest::mouseClick(desk->navigationButton("btnTests"), Qt::LeftButton);
        QTRY_COMPARE(desk->shownPage(), QStringLiteral("pageTests"));
        QVERIFY(desk->window->close());
        open({});
        QTRY_COMPARE(desk->shownPage(), QStringLiteral("pageTests"));
        open({folder->path("plant.json")});
        QTRY_COMPARE(desk->shownPage(), QStringLiteral("pageAttributes"));
    }

    void endsCleanly()
    {
        openPlant();
        const auto& library = *desk->loader.getLibraries().front();
        const QPointer<QWidget> main = desk->part<QWidget>("VantryMain");
        const QPointer<QWidget> control = desk->part<QWidget>("VantryControl");
        QVERIFY(main && control);
        QVERIFY(desk->window->close());
        desk->windows.reset();
        QVERIFY(!main);
        QVERIFY(!control);

        // Unloaded: the plug-in makes a new application for the same context.
        const auto context = std::make_shared<Vantry::GuiContext>(QStringList(QStringLiteral("desk")));
        QString reason;
        const auto application =
            library.createApplication(context, library.getIdentifications().front(), reason);
        QVERIFY2(application && application->getWidgetByType(Utilities::ApplicationWidgetType::Main),
                 qPrintable(reason));
        library.dropApplication(context, library.getIdentifications().front());
    }

    void leadsToEveryApplication()
    {
        const QDir plugins(folder->path("plugins"));
        QVERIFY(plugins.mkpath(QStringLiteral(".")));
        QVERIFY(QFile::copy(QStringLiteral(FAULTY_PLUGIN), plugins.filePath(QStringLiteral("R&D.so"))));
        open({});
        desk.reset();

        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder->path("settings"));
        const auto repository = Repository::AttributeRepository::create();
        Utilities::SetAppConfigRepositoryInterface(repository);
        Vantry::PluginLoader loader{Vantry::PluginTrial(QStringLiteral(VANTRY_DESK))};
        loader.load(QStringList{plugins.path(), QFileInfo(QStringLiteral(VANTRY_MODULE)).path()});
        {
            Vantry::Windows windows(repository, loader);
            MainWindow& window = windows.open({folder->path("plant.json")});
            QVERIFY(TestSupport::showActive(window));
            const auto* const area = window.findChild<QStackedWidget*>(QStringLiteral("workArea"));
            const auto* const tree = window.findChild<QTreeView*>(QStringLiteral("treeView"));
            const auto isOwnShown = [&] { return area->currentWidget()->isAncestorOf(tree); };
            QTRY_VERIFY2(isOwnShown(), "another plug-in hides the page of the files");

            auto* const other = window.findChild<QPushButton*>(QStringLiteral("heading_R&D"));
            const auto* const own = window.findChild<QPushButton*>(QStringLiteral("heading_Vantry"));
            const auto* const attributes = window.findChild<QPushButton*>(QStringLiteral("btnAttributes"));
            const auto isMarked = [](const QPushButton& button) {
                return button.property("currentPage").toBool();
            };
            QCOMPARE(other->text(), QStringLiteral("R&&D"));
            QTest::mouseClick(other, Qt::LeftButton);
            QTRY_VERIFY(!isOwnShown());
            QVERIFY(TestSupport::pressKey(QStringLiteral("ctrl+2")));
            QTRY_VERIFY(isOwnShown());
            other->setFocus(Qt::TabFocusReason);
            QVERIFY(TestSupport::pressKey(QStringLiteral("space")));
            QTRY_VERIFY(!isOwnShown());
            const QWidget* const otherPage = area->currentWidget();
            const auto events = [otherPage] {
                return otherPage->property("events").toStringList().join(QLatin1Char(' '));
            };
            QCOMPARE(events(), QStringLiteral("0 1 0")); // Shown, Hidden, Shown
            QVERIFY(isMarked(*other));
            QVERIFY(!isMarked(*own) && !isMarked(*attributes));
            QVERIFY(TestSupport::pressKey(QStringLiteral("F9"))); // hides the area, and its headings
            QVERIFY(TestSupport::pressKey(QStringLiteral("ctrl+2")));
            QTRY_VERIFY(isOwnShown());
            QVERIFY(!isMarked(*other));
            QVERIFY(isMarked(*own) && isMarked(*attributes));
            QVERIFY(window.close());
            QCOMPARE(events(), QStringLiteral("0 1 0 1 2")); // AboutToClose
        }
        Utilities::SetAppConfigRepositoryInterface({});
    }

    void showsWhyAPluginIsRefused()
    {
        const QDir plugins(folder->path("plugins"));
        QVERIFY(plugins.mkpath(QStringLiteral(".")));
        QFile file(plugins.filePath(QStringLiteral("x.so")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.write("text") > 0);
        file.close();
        open({});
        QVERIFY(desk->part<QDockWidget>("pluginDock")->isHidden());
        desk.reset();

        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder->path("settings"));
        const auto repository = Repository::AttributeRepository::create();
        Vantry::PluginLoader loader{Vantry::PluginTrial(QStringLiteral(VANTRY_DESK))};
        loader.load(QStringList(plugins.path()));
        Vantry::Windows windows(repository, loader);
        MainWindow& window = windows.open({});
        QVERIFY(TestSupport::showActive(window));
        QVERIFY(window.findChild<QDockWidget*>(QStringLiteral("pluginDock"))->isVisible());
        const auto* const rows = window.findChild<QTreeWidget*>(QStringLiteral("pluginRows"));
        QCOMPARE(rows->topLevelItemCount(), 1);
        QCOMPARE(rows->topLevelItem(0)->text(0), QStringLiteral("x.so"));
        QVERIFY(!rows->topLevelItem(0)->text(1).isEmpty());
        const auto* const notice = window.findChild<QLabel*>(QStringLiteral("noticeText"));
        QVERIFY(notice->isVisible());
        QVERIFY(notice->text().contains(QLatin1String("No plug-in was loaded")));
    }

private:
    void open(const QStringList& files)
    {
        desk.reset();
        desk = std::make_unique<RunningDesk>(*folder, files);
        QVERIFY(TestSupport::showActive(*desk->window));
    }

    void openPlant()
    {
        open({folder->path("plant.json")});
        QTRY_VERIFY(desk->item(QStringLiteral("plant.cell")).isValid());
        QTRY_VERIFY(desk->part<QComboBox>("cbFilter1")->isEnabled());
    }

    void choose(const char* boxName, const char* text)
    {
        auto* const box = desk->part<QComboBox>(boxName);
        QTRY_VERIFY(box->isEnabled());
        box->setFocus();
        const int steps = box->findText(QLatin1String(text)) - box->currentIndex();
        QVERIFY(steps > 0);
        for (int i = 0; i < steps; ++i)
            QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(box->currentText(), QLatin1String(text));
    }

    void dragHandle(const char* splitterName, int distance)
    {
        const auto* const splitter = desk->part<QSplitter>(splitterName);
        const int before = splitter->sizes().first();
        const QWidget* const handle = splitter->handle(1);
        const QPoint start = handle->mapTo(desk->window, handle->rect().center());
        const QPoint end = start + QPoint(distance, 0);
        QWindow* const window = desk->window->windowHandle(); // a widget's moves have no button pressed
        QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, start);
        QTest::mouseMove(window, end);
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, end);
        QTRY_COMPARE(splitter->sizes().first(), before + distance);
    }

    QList<QList<int>> splitterSizes() const
    {
        return {desk->part<QSplitter>("areas")->sizes(), desk->part<QSplitter>("splitter")->sizes()};
    }

    std::unique_ptr<RunningDesk::Folder> folder;
    std::unique_ptr<RunningDesk> desk;
};

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk-test"));
    return TestSupport::runTest<QApplication, DeskTest>(argc, argv);
}

#include "desk_test.moc"
