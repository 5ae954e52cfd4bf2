#include "app/VantryLog.h"
#include "host/Shared/Logging/LogRecord.h"
#include "host/Utilities/ModelViews/AttributeModel.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"
#include "host/Utilities/RepositoryAccess.h"
#include "tests/support/Columns.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"
#include "tests/widgets/BrowserPageTest.h"

#include <QApplication>
#include <QCheckBox>
#include <QCompleter>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableView>

using FrameworkCore::AppConfig::Interfaces::AttributeReaderInterface;
using Shared::Logging::LogLine;
using Shared::Logging::LogRecord;
using TestSupport::FakeRepository;
using TestSupport::words;
using Utilities::ModelViews::AttributeModel;

namespace {

const QString any = QStringLiteral("*");

// A fake repository that counts how often the page reads the tree anew: each time it asks for the backends.
class CountingRepository : public FakeRepository
{
public:
    int readAttributeValue(const QString& path, QVariant& value, const int& option) override
    {
        if (path == QLatin1String("internal.backends.names"))
            ++treeReads;
        return FakeRepository::readAttributeValue(path, value, option);
    }

    int treeReads = 0;
};

} // namespace

class AttributeBrowserTest : public BrowserPageTest
{
    Q_OBJECT

private slots:
    void freshPageIsEmpty()
    {
        create(words("a.b k"));
        openPage();
        QVERIFY(page->shownRows().isEmpty());
        QCOMPARE(page->search.text(), any);
        for (const QComboBox* const box : page->boxes) {
            QVERIFY(!box->isEnabled());
            QCOMPARE(box->count(), 0);
        }
        QCOMPARE(page->part<QWidget>("appConfigDataAccessWidget")->metaObject()->className(),
                 "AppConfigDataAccessWidget");
    }

    void logsTheValidationNames()
    {
        const QVector<LogLine> before = LogRecord::instance().getLines();
        openPage();
        QStringList quoted;
        for (const QString& name : repository->getValidationInterface()->getValidationNames())
            quoted.append(QLatin1Char('"') + name + QLatin1Char('"'));
        const QString expected =
            QStringLiteral(
                "AttributeBrowserWidget::AttributeBrowserWidget() registered validation names: (") +
            quoted.join(QLatin1String(", ")) + QLatin1Char(')');
        const QVector<LogLine> lines =
            LogRecord::instance().getLines(before.isEmpty() ? 0 : before.last().number);
        QCOMPARE(lines.size(), 1);
        QCOMPARE(lines.first().text, expected);
        QCOMPARE(static_cast<int>(lines.first().type), 1);
    }

    void completesWhatIsTyped()
    {
        create(words("plant.cell.speed plant.cell.state plant.name other"));
        openPage();
        QVERIFY(TestSupport::showActive(page->widget));
        page->search.setFocus();
        page->search.selectAll();
        for (const char* key : {"p", "l", "Tab", "period", "c", "Tab", "period", "s", "t", "a", "Tab"})
            QVERIFY(TestSupport::pressKey(QLatin1String(key)));
        QTRY_COMPARE(page->search.text(), QStringLiteral("plant.cell.state"));
        QVERIFY(page->search.hasFocus());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(page->widget.findChildren<AttributeModel*>().size() <= 1);

        page->part<QCheckBox>("chkAutoCompletion")->click();
        QVERIFY(TestSupport::pressKey(QStringLiteral("BackSpace")));
        QTRY_COMPARE(page->search.text(), QStringLiteral("plant.cell.stat"));
        QVERIFY(!page->search.completer()->popup()->isVisible());
        QCOMPARE(page->search.completer()->model(), nullptr);
    }

    // What is typed, unless a proposal is chosen, and says when there is nothing.
    void returnReads()
    {
        create(words("plant.speed other"));
        openPage();
        QVERIFY(TestSupport::showActive(page->widget));
        const auto type = [this](const char* keys) {
            page->search.setFocus();
            page->search.selectAll();
            for (const QString& key : words(keys))
                QVERIFY(TestSupport::pressKey(key));
        };
        const QWidget& popup = *page->search.completer()->popup();
        const QRect button(page->readButton.mapToGlobal(QPoint()), page->readButton.size());
        for (const char* const keys : {"p", "o"}) {
            type(keys);
            QTRY_COMPARE(page->search.text(), QLatin1String(keys));
            QTRY_VERIFY(popup.isVisible());
            QVERIFY(!popup.frameGeometry().intersects(button));
        }
        type("p l a asterisk Return");
        QTRY_COMPARE(page->shownRows(), words("plant"));
        QCOMPARE(page->search.text(), QStringLiteral("pla*"));
        QVERIFY(!popup.isVisible());
        type("o Down Return");
        QTRY_COMPARE(page->search.text(), QStringLiteral("other"));
        QCOMPARE(page->shownRows(), words("plant"));
        QVERIFY(TestSupport::pressKey(QStringLiteral("Return")));
        QTRY_COMPARE(page->shownRows(), words("other"));

        const auto& hint = *page->part<QLabel>("lblTreeHint");
        QVERIFY(!hint.isVisible());
        type("z z Return");
        QTRY_VERIFY(hint.isVisible() && page->shownRows().isEmpty());
        QVERIFY2(hint.text().contains(QLatin1String("\"zz\"")), qPrintable(hint.text()));
        const QImage drawn = page->tree.viewport()->grab(hint.geometry()).toImage();
        QImage blank(drawn);
        blank.fill(drawn.pixelColor(0, 0));
        QVERIFY(drawn != blank);
        create(words("zz.late"));
        QTRY_VERIFY(!hint.isVisible() && page->item(QStringLiteral("zz")).isValid());
    }

    void readsWhatTheSearchPathAsksFor_data()
    {
        // rows: with all of them open
        const auto row = TestSupport::columns<QString, QStringList>("searchPath", "rows");
        row("a branch", "a.b",
            QStringList{QStringLiteral("-a"), QStringLiteral(" -b"), QStringLiteral("  -c"),
                        QStringLiteral("   -e"), QStringLiteral("  -d")});
        row("a pattern", "*.e",
            QStringList{QStringLiteral("-a"), QStringLiteral(" -b"), QStringLiteral("  -c"),
                        QStringLiteral("   -e")});
        row("nothing", "zz", QStringList());
    }

    void readsWhatTheSearchPathAsksFor()
    {
        create(words("a.b.c.e a.b.d k.l"));
        openPage();
        QFETCH(QString, searchPath);
        page->read(searchPath);
        page->tree.expandAll();
        QTEST(page->shownRows(), "rows");
        page->read({});
        QVERIFY(page->item(QStringLiteral("k.l")).isValid());
    }

    void fillsTheFirstBoxFromTheSearchPath_data()
    {
        const auto row = TestSupport::columns<QString, QStringList>("searchPath", "items");
        for (const char* path : {"a.b.*", "a.b.", "a.b"})
            row(path, path, words("* c d"));
        row("everything", any, words("* internal a k"));
        row("empty", QString(), words("* internal a k"));
        row("a leaf", "a.b.d", words("*"));
        row("unknown", "a.zz.*", words("*"));
    }

    void fillsTheFirstBoxFromTheSearchPath()
    {
        create(words("a.b.c.e a.b.d k.l"));
        openPage();
        QFETCH(QString, searchPath);
        QFETCH(QStringList, items);
        page->read(searchPath);
        QCOMPARE(BrowserPage::itemsOf(*page->boxes[0]), items);
        QCOMPARE(page->boxes[0]->currentText(), any);
        QCOMPARE(page->boxes[0]->isEnabled(), items.size() > 1);
        for (const QComboBox* const box : page->boxes.mid(1)) {
            QCOMPARE(box->count(), 0);
            QVERIFY(!box->isEnabled());
        }
    }

    void filtersLevelByLevel()
    {
        create(words("app.net.ip.v4.mask app.net.ip.v6 app.net.name app.disk.size app.disk.ip"));
        openPage();
        QVERIFY(TestSupport::showActive(page->widget));
        page->read(QStringLiteral("app.*"));
        QCOMPARE(BrowserPage::itemsOf(*page->boxes[0]), words("* net disk"));

        BrowserPage::choose(*page->boxes[0], QStringLiteral("net"));
        QCOMPARE(page->shownRows(), (QStringList{QStringLiteral("-app"), QStringLiteral(" -net"),
                                                 QStringLiteral("  ip"), QStringLiteral("  name")}));
        QCOMPARE(BrowserPage::itemsOf(*page->boxes[1]), words("* ip name"));
        QCOMPARE(page->choices(), QStringLiteral("net *"));

        BrowserPage::choose(*page->boxes[1], QStringLiteral("ip"));
        QCOMPARE(page->shownRows(),
                 (QStringList{QStringLiteral("-app"), QStringLiteral(" -net"), QStringLiteral("  -ip"),
                              QStringLiteral("   v4"), QStringLiteral("   v6")}));
        BrowserPage::choose(*page->boxes[2], QStringLiteral("v4"));
        BrowserPage::choose(*page->boxes[3], QStringLiteral("mask"));
        QCOMPARE(page->shownRows(),
                 (QStringList{QStringLiteral("-app"), QStringLiteral(" -net"), QStringLiteral("  -ip"),
                              QStringLiteral("   -v4"), QStringLiteral("    -mask")}));
        QCOMPARE(page->choices(), QStringLiteral("net ip v4 mask"));

        // The other branch can still be chosen, and what was chosen below is kept where it exists there too.
        BrowserPage::choose(*page->boxes[0], QStringLiteral("disk"));
        QCOMPARE(BrowserPage::itemsOf(*page->boxes[1]), words("* size ip"));
        QCOMPARE(page->choices(), QStringLiteral("disk ip"));
        QCOMPARE(page->shownRows(),
                 (QStringList{QStringLiteral("-app"), QStringLiteral(" -disk"), QStringLiteral("  -ip")}));
        BrowserPage::choose(*page->boxes[0], any);
        QCOMPARE(page->choices(), QStringLiteral("*"));
        QCOMPARE(page->shownRows(),
                 (QStringList{QStringLiteral("-app"), QStringLiteral(" net"), QStringLiteral(" disk")}));
    }

    void filteringOpensTheFirstTwoItemsOfEachName()
    {
        create(words("app.net.app.app.z app.disk"));
        openPage();
        page->read(QStringLiteral("app.*"));
        page->boxes[0]->setCurrentText(QStringLiteral("net"));
        QCOMPARE(page->shownRows(), (QStringList{QStringLiteral("-app"), QStringLiteral(" -net"),
                                                 QStringLiteral("  -app"), QStringLiteral("   app")}));
    }

    void aRereadKeepsTheChoices()
    {
        create(words("app.net.ip app.disk.size"));
        openPage();
        QVERIFY(TestSupport::showActive(page->widget));
        page->read(QStringLiteral("app.*"));
        BrowserPage::choose(*page->boxes[0], QStringLiteral("disk"));
        BrowserPage::choose(*page->boxes[1], QStringLiteral("size"));
        create(words("app.new"));
        page->read(QStringLiteral("app.*"));
        QCOMPARE(BrowserPage::itemsOf(*page->boxes[0]), words("* net disk new"));
        QCOMPARE(page->choices(), QStringLiteral("disk size"));
    }

    void rereadKeepsWhatIsOpen()
    {
        create(words("a.b.c.e a.b.d k.l m.n"));
        openPage();
        page->read({});
        page->open(words("a a.b a.b.c k m"));
        page->tree.collapse(page->item(QStringLiteral("k")));
        const QStringList opened = page->shownRows();
        QVERIFY(opened.contains(QStringLiteral("   e")));
        page->read({});
        QCOMPARE(page->shownRows(), opened);

        // Also when the tree was another one in between, and what is gone does no harm.
        QCOMPARE(repository->getTreeInterface()->removeTree(QStringLiteral("m")),
                 FrameworkCore::AppConfig::Success);
        page->read(QStringLiteral("a*"));
        page->read({});
        QStringList left = opened;
        left.removeAll(QStringLiteral("-m"));
        left.removeAll(QStringLiteral(" n"));
        QCOMPARE(page->shownRows(), left);
    }

    void rereadKeepsWhatIsOpenWithinClosedItems()
    {
        create(words("a.b.c k.l"));
        openPage();
        page->read({});
        page->open(words("a a.b"));
        page->tree.collapse(page->item(QStringLiteral("a")));
        page->read({});
        createBackend(QStringLiteral("plant"), {}); // has the page read by itself
        QTRY_VERIFY(page->item(QStringLiteral("plant")).isValid());
        page->read(QStringLiteral("a*"));
        QCOMPARE(page->shownRows(), words("a"));
        page->open(words("a"));
        QCOMPARE(page->shownRows(),
                 (QStringList{QStringLiteral("-a"), QStringLiteral(" -b"), QStringLiteral("  c")}));
    }

    void expandsAndCollapsesWholeBranches()
    {
        create(words("a.b.c.e a.b.d k.l"));
        openPage();
        page->read(QStringLiteral("a"));
        const QModelIndex top = page->item(QStringLiteral("a"));
        QVERIFY(QMetaObject::invokeMethod(&page->widget, "expandChildren", Q_ARG(QModelIndex, top)));
        const QStringList all{QStringLiteral("-a"), QStringLiteral(" -b"), QStringLiteral("  -c"),
                              QStringLiteral("   -e"), QStringLiteral("  -d")};
        QCOMPARE(page->shownRows(), all);
        page->read(QStringLiteral("*"));
        page->read(QStringLiteral("a"));
        QCOMPARE(page->shownRows(), all); // it was remembered too
        const QModelIndex again = page->item(QStringLiteral("a"));
        QVERIFY(QMetaObject::invokeMethod(&page->widget, "collapseChildren", Q_ARG(QModelIndex, again)));
        QCOMPARE(page->shownRows(), words("a"));
        page->tree.expand(again);
        QCOMPARE(page->shownRows(), (QStringList{QStringLiteral("-a"), QStringLiteral(" b")}));
    }

    void backendRootsShowTheirBackend()
    {
        createBackend(QStringLiteral("plant.cell"), QStringLiteral("the cell"));
        createOne(QStringLiteral("other.cell"), 1); // the name of the root, elsewhere
        openPage();
        QVERIFY(TestSupport::showActive(page->widget));
        page->read({});
        page->clickItem(QStringLiteral("plant.cell"));
        QCOMPARE(page->details.toPlainText(),
                 QStringLiteral("Backend Name : plant.cell\nBackend Type : ini\nBackend Description : the "
                                "cell"));
        page->clickItem(QStringLiteral("other.cell"));
        QVERIFY(page->details.toPlainText().startsWith(QStringLiteral("Name : cell\nPath : other.cell")));
    }

    void readsByItselfWhenBackendsCome()
    {
        openPage();
        page->read(QStringLiteral("plant*"));
        QVERIFY(page->shownRows().isEmpty());
        createBackend(QStringLiteral("plant.cell"), {});
        QTRY_COMPARE(page->shownRows(), words("plant"));
        QTRY_COMPARE(BrowserPage::itemsOf(*page->boxes[0]), words("* cell"));
        page->search.setText(QStringLiteral("plant.*"));
        createBackend(QStringLiteral("plant.line"), {});
        QTRY_COMPARE(BrowserPage::itemsOf(*page->boxes[0]), words("* cell line"));
    }

    void changesFilterOnce()
    {
        const auto counting = std::make_shared<CountingRepository>();
        repository = counting;
        Utilities::SetAppConfigRepositoryInterface(repository);
        create(words("app.net.ip.v4.mask app.disk.ip.v4.mask"));
        openPage();
        page->read(QStringLiteral("app.*"));
        const auto readsOf = [&](int box, const char* text) {
            counting->treeReads = 0;
            page->boxes[box]->setCurrentText(QLatin1String(text));
            return counting->treeReads;
        };
        QCOMPARE(readsOf(0, "net"), 1);
        QCOMPARE(readsOf(1, "ip"), 1);
        QCOMPARE(readsOf(2, "v4"), 1);
        QCOMPARE(readsOf(3, "mask"), 1);
        QCOMPARE(readsOf(0, "disk"), 1); // refills and sets all the others
        QCOMPARE(page->choices(), QStringLiteral("disk ip v4 mask"));
        QCOMPARE(readsOf(1, "*"), 1);
        counting->treeReads = 0;
        page->read(QStringLiteral("app.*"));
        QCOMPARE(counting->treeReads, 1); // refilling the boxes filters nothing
    }

    // More names than its list shows at once, and longer ones than the box.
    void aFilterListCanBeReadWhole()
    {
        const QString longName = QStringLiteral("a-name-that-is-much-longer-than-its-box");
        for (int i = 0; i < 30; ++i)
            createOne(longName + QString::number(i), i);
        openPage();
        QVERIFY(TestSupport::showActive(page->widget));
        page->read(any);
        QTest::mouseClick(page->boxes[0], Qt::LeftButton);
        const QAbstractItemView& list = *page->boxes[0]->view();
        QTRY_VERIFY(list.isVisible() && list.verticalScrollBar()->isVisible());
        const QRect row = list.visualRect(list.model()->index(1, 0));
        QVERIFY(row.width() > list.fontMetrics().horizontalAdvance(longName + QStringLiteral("10")));
        QVERIFY(list.viewport()->rect().contains(row));
        page->boxes[0]->hidePopup();
    }

    // Names and values of which nobody sees the end take no more room than a screen, but are there whole.
    void longTextsAreCutToAScreen()
    {
        const QString longName(3000, QLatin1Char('n'));
        const QString path = QStringLiteral("a.") + longName + QStringLiteral(".b");
        createOne(path, QString(3000, QLatin1Char('v')));
        openPage();
        QVERIFY(TestSupport::showActive(page->widget));
        page->read(QStringLiteral("a.*"));
        page->clickItem(path);
        auto* const monitor = page->part<QTableView>("appConfigDataAccessWidget");
        const QPoint row = page->tree.visualRect(page->item(path)).topLeft() + QPoint(5, 5);
        QVERIFY(TestSupport::drag(*page->tree.viewport(), row, *monitor->viewport(), QPoint(30, 30)));
        QTRY_COMPARE(monitor->model()->rowCount(), 1);
        page->search.setFocus();
        page->search.selectAll();
        QVERIFY(TestSupport::pressKey(QStringLiteral("a")));
        const QAbstractItemView& proposals = *page->search.completer()->popup();
        QTRY_VERIFY(proposals.isVisible());

        const int mostWidth = page->tree.fontMetrics().horizontalAdvance(longName) / 4;
        const QModelIndex item = page->item(QStringLiteral("a.") + longName);
        const QModelIndex watched = monitor->model()->index(0, 4);
        for (const auto& [view, index] : std::initializer_list<QPair<const QAbstractItemView*, QModelIndex>>{
                 {&page->tree, item},
                 {&page->tree, item.model()->index(0, 1, item)},
                 {monitor, watched.siblingAtColumn(1)},
                 {monitor, watched},
                 {&proposals, proposals.model()->index(proposals.model()->rowCount() - 1, 0)},
                 {page->boxes[0]->view(), page->boxes[0]->model()->index(1, 0)}}) {
            QVERIFY2(view->sizeHintForIndex(index).width() < mostWidth, view->metaObject()->className());
            QVERIFY(index.data().toString().size() >= 3000);
        }
        const auto* const delegate = qobject_cast<QStyledItemDelegate*>(proposals.itemDelegate());
        QVERIFY(
            delegate->displayText(path, QLocale()).endsWith(QStringLiteral("n.b"))); // which tells them apart
        proposals.window()->close();
    }

    void columnsFitTheRowsInSight()
    {
        constexpr int rows = 2500; // more than a view measures around those in sight
        for (int i = 1; i < rows; ++i)
            createOne(QStringLiteral("wide.n%1%2")
                          .arg(i > rows - 9 ? QString(40, QLatin1Char('n')) : QString())
                          .arg(i),
                      i);
        openPage();
        page->read(QStringLiteral("wide"));
        page->open({QStringLiteral("wide")});
        page->clickItem(QStringLiteral("wide.n3"));
        const int narrow = page->tree.columnWidth(0);
        QTest::keyClick(&page->tree, Qt::Key_End);
        QTRY_VERIFY(page->tree.columnWidth(0) > 2 * narrow);
        QTest::keyClick(&page->tree, Qt::Key_Home);
        QTRY_COMPARE(page->tree.columnWidth(0), narrow);
    }

    void keysStayOnThePage()
    {
        struct Window : QWidget
        {
            void keyPressEvent(QKeyEvent* event) override { keys.append(event->key()); }
            QList<int> keys;
        } window;
        create(words("a k"));
        openPage();
        page->widget.setParent(&window);
        QVERIFY(TestSupport::showActive(window));
        page->read({});
        for (const auto key : {Qt::Key_A, Qt::Key_F5, Qt::Key_Escape, Qt::Key_F2})
            QTest::keyClick(&page->widget, key, key == Qt::Key_A ? Qt::ControlModifier : Qt::NoModifier);
        QCOMPARE(window.keys, QList<int>());

        // The keyboard reaches everything, and leaves it again.
        page->search.setFocus();
        QList<QWidget*> reached;
        for (int i = 0; i < 20 && !reached.contains(QApplication::focusWidget()); ++i) {
            reached.append(QApplication::focusWidget());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(reached, (QList<QWidget*>{&page->search, page->part<QCheckBox>("chkAutoCompletion"),
                                           &page->readButton, page->boxes[0], &page->tree, &page->details,
                                           page->part<QWidget>("appConfigDataAccessWidget")}));
        QCOMPARE(QApplication::focusWidget(), &page->search);
        page->widget.setParent(nullptr);
    }

    void keepsTheRepositoryItWasMadeWith()
    {
        createOne(QStringLiteral("a.b.c"), QStringLiteral("old"));
        openPage();
        QVERIFY(TestSupport::showActive(page->widget));
        const Utilities::ModelViews::AttributeTreeViewModelUtils operations;
        const auto other = std::make_shared<FakeRepository>();
        other->set(QStringLiteral("a.b.c"), QStringLiteral("new"));
        other->set(QStringLiteral("a.b.d"), QStringLiteral("new"));
        Utilities::SetAppConfigRepositoryInterface(other);
        page->read(QStringLiteral("a.*"));
        page->clickItem(QStringLiteral("a.b.c"));
        QVERIFY(page->details.toPlainText().endsWith(QStringLiteral("Value : old")));
        const QModelIndex name = page->item(QStringLiteral("a.b.c"));
        QCOMPARE(name.siblingAtColumn(1).data().toString(), QStringLiteral("old"));
        page->boxes[0]->setCurrentText(QStringLiteral("b"));
        QCOMPARE(BrowserPage::itemsOf(*page->boxes[1]), words("* c"));
        page->search.setText(QStringLiteral("a.b."));
        QCOMPARE(page->search.completer()->model()->rowCount(), 1);
        if (!fake) // which copies nothing
            QVERIFY(operations.copyAttribute(QStringLiteral("a.b.c"), QStringLiteral("a.b.e")));
        QVERIFY(!other->contains(QStringLiteral("a.b.e")));
    }

    void livesWithoutARepository()
    {
        Utilities::SetAppConfigRepositoryInterface({});
        openPage();
        page->read(QStringLiteral("a.*"));
        QVERIFY(page->shownRows().isEmpty());
        QCOMPARE(page->choices(), QString());
    }
};

VANTRY_TEST_MAIN(QApplication, AttributeBrowserTest)

#include "attribute_browser_test.moc"
