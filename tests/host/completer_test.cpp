#include "host/Shared/Completer/LineEditCompleter.h"
#include "host/Shared/Completer/TreeModelCompleter.h"
#include "host/Utilities/ModelViews/AttributeModel.h"
#include "host/Utilities/RepositoryAccess.h"
#include "host/Utilities/ScopedSignalBlocker.h"
#include "repository/AttributeRepository.h"
#include "tests/support/Columns.h"
#include "tests/support/FakeRepository.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QItemDelegate>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QStringListModel>
#include <QVBoxLayout>

#include <memory>

using Shared::Completer::LineEditCompleter;
using Shared::Completer::TreeModelCompleter;
using TestSupport::FakeRepository;
using TestSupport::pressKey;
using TestSupport::typeText;
using TestSupport::words;
using Utilities::ModelViews::AttributeModel;

namespace {

// A search field as pages have it: each change of its text brings a new model, made as a child of the page.
class SearchPage : public QWidget
{
public:
    explicit SearchPage(const QString& separator)
    {
        auto* const layout = new QVBoxLayout(this);
        layout->addWidget(&edit);
        layout->addWidget(&next);
        layout->addStretch();
        resize(500, 400);
        edit.setCompleter(new TreeModelCompleter(nullptr, &edit, separator, Qt::CaseInsensitive));
        connect(&edit, &QLineEdit::textChanged, this, [this](const QString& text) {
            const Utilities::ScopedSignalBlocker blocker(&edit);
            if (!text.isEmpty())
                edit.refreshCompleterModel(new AttributeModel(
                    text.endsWith(QLatin1Char('*')) ? text : text + QLatin1Char('*'), this));
        });
    }

    QAbstractItemView& popup() const { return *edit.completer()->popup(); }

    QStringList shownProposals() const
    {
        QStringList rows;
        for (int row = 0; popup().isVisible() && row < popup().model()->rowCount(); ++row)
            rows.append(popup().model()->index(row, 0).data().toString());
        return rows;
    }

    LineEditCompleter edit;
    QLineEdit next;
};

} // namespace

class CompleterTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<SearchPage> page;

    void open(const QString& separator, const QStringList& paths)
    {
        open(separator, paths, std::make_shared<FakeRepository>(separator));
    }

    void open(const QString& separator, const QStringList& paths,
              const std::shared_ptr<FrameworkCore::AppConfig::Interfaces::RepositoryInterface>& repository)
    {
        for (const QString& path : paths)
            QVERIFY(repository->getWriterInterface()->createAttribute(path, 1, 2, 3));
        Utilities::SetAppConfigRepositoryInterface(repository);
        page = std::make_unique<SearchPage>(separator);
        QVERIFY(TestSupport::showActive(*page));
        page->edit.setFocus();
        QTRY_VERIFY(page->edit.hasFocus());
    }

private slots:
    void cleanup()
    {
        page.reset();
        Utilities::SetAppConfigRepositoryInterface({});
    }

    void proposalsFollowEachKey_data()
    {
        QTest::addColumn<QString>("separator");
        QTest::addColumn<QStringList>("paths");
        QTest::addColumn<QStringList>("typed");     // one piece after the other
        QTest::addColumn<QStringList>("proposals"); // after each piece, joined by blanks
        const auto row = [](const char* name, const char* separator, const char* paths, const char* typed,
                            const QStringList& proposals) {
            QTest::newRow(name) << QString::fromLatin1(separator) << words(paths) << words(typed)
                                << proposals;
        };
        const QString none;
        row("level by level", ".", "net.ip.mask net.name nut", "n e t . i p .",
            {QStringLiteral("net nut net.ip net.name net.ip.mask"),
             QStringLiteral("net net.ip net.name net.ip.mask"),
             QStringLiteral("net net.ip net.name net.ip.mask"), QStringLiteral("net.ip net.name net.ip.mask"),
             QStringLiteral("net.ip net.ip.mask"), QStringLiteral("net.ip net.ip.mask"),
             QStringLiteral("net.ip.mask")});
        row("another separator", "/", "net/ip net/name", "net /i",
            {QStringLiteral("net net/ip net/name"), QStringLiteral("net/ip")});
        row("no separator", "", "netip netname", "net i",
            {QStringLiteral("netip netname"), QStringLiteral("netip")});
        row("any case", ".", "Net.IP", "nET .i", {QStringLiteral("Net Net.IP"), QStringLiteral("Net.IP")});
        row("nothing matches any more", ".", "net.ip", "net x", {QStringLiteral("net net.ip"), none});
        row("a wildcard inside", ".", "net.ip net.port far.ip", "n *p",
            {QStringLiteral("net net.ip net.port"), QStringLiteral("net.ip net.port")});
        row("a wildcard first", ".", "net.ip far.ip", "*.ip", {QStringLiteral("net.ip far.ip")});
    }

    void proposalsFollowEachKey()
    {
        QFETCH(QString, separator);
        QFETCH(QStringList, paths);
        QFETCH(QStringList, typed);
        QFETCH(QStringList, proposals);
        open(separator, paths);
        QString text;
        for (int i = 0; i < typed.size(); ++i) {
            text += typed.at(i);
            QVERIFY(typeText(typed.at(i)));
            QTRY_COMPARE(page->edit.text(), text);
            QTRY_COMPARE(page->shownProposals().join(QLatin1Char(' ')), proposals.at(i));
        }
    }

    void thePopupLiesBelowTheField()
    {
        open(QStringLiteral("."), words("net.ip"));
        QVERIFY(typeText(QStringLiteral("n")));
        QTRY_VERIFY(page->popup().isVisible());
        const QRect field(page->edit.mapToGlobal(QPoint()), page->edit.size());
        const QRect popup = page->popup().frameGeometry();
        QCOMPARE(popup.left(), field.left());
        QCOMPARE(popup.width(), field.width());
        QVERIFY(qAbs(popup.top() - field.bottom()) <= 3); // frames touch or overlap
        QVERIFY(page->edit.hasFocus());
    }

    void taking_data()
    {
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("stays"); // in the field
        const auto row = [](const char* name, const char* keys, const char* text, bool stays) {
            QTest::newRow(name) << words(keys) << QString::fromLatin1(text) << stays;
        };
        row("Tab takes the first", "n e Tab", "net", true);
        row("Return keeps what is typed", "n e Return", "ne", true);
        row("Enter keeps what is typed", "n e KP_Enter", "ne", true);
        row("level by level", "n Tab period i Tab period m Tab", "net.ip.mask", true);
        row("arrows and Return", "n Down Down Return", "net.ip", true);
        row("arrows and Tab", "n Down Down Down Up Tab", "net.ip", true);
        row("a wildcard has a first one too", "asterisk i p Tab", "net.ip", true);
        row("the text around a wildcard goes", "n asterisk m a Tab", "net.ip.mask", true);
        row("Escape gives back what was typed", "n e Down Down Escape", "ne", true);
        row("walking up leaves the proposals", "n Down Up", "n", true);
        row("typing goes on after a look", "n Down Down period m", "net.ip.m", true);
        row("Tab without a proposal leaves", "x Tab", "x", false);
        row("Tab after Tab leaves", "n e Tab Tab", "net", false);
        row("Tab after Escape leaves", "n e Escape Tab", "ne", false);
        row("back-tab leaves", "n e shift+Tab", "ne", false);
    }

    void taking()
    {
        QFETCH(QStringList, keys);
        QFETCH(QString, text);
        QFETCH(bool, stays);
        open(QStringLiteral("."), words("net.ip.mask net.name"));
        for (const QString& key : qAsConst(keys))
            QVERIFY(pressKey(key));
        QTRY_COMPARE(page->edit.text(), text);
        QTRY_COMPARE(page->edit.hasFocus(), stays);
        QCOMPARE(page->edit.cursorPosition(), text.size());
    }

    void takingByMouse()
    {
        open(QStringLiteral("."), words("net.ip.mask net.name"));
        QVERIFY(typeText(QStringLiteral("n")));
        QTRY_COMPARE(page->shownProposals().size(), 4);
        const QModelIndex third = page->popup().model()->index(2, 0);
        QVERIFY(TestSupport::click(*page->popup().viewport(), page->popup().visualRect(third).center()));
        QTRY_VERIFY(!page->popup().isVisible());
        QCOMPARE(page->edit.text(), QStringLiteral("net.name"));
        QVERIFY(page->edit.hasFocus());
        QVERIFY(pressKey(QStringLiteral("BackSpace")));
        QTRY_COMPARE(page->shownProposals(), QStringList{QStringLiteral("net.name")});
    }

    void aClickElsewhereTakesNothing()
    {
        open(QStringLiteral("."), words("net.ip"));
        QVERIFY(typeText(QStringLiteral("n")));
        QTRY_VERIFY(page->popup().isVisible());
        QVERIFY(TestSupport::click(*page, page->rect().bottomRight() - QPoint(5, 5)));
        QTRY_VERIFY(!page->popup().isVisible());
        QCOMPARE(page->edit.text(), QStringLiteral("n"));
    }

    void oneModelIsAliveWhateverIsTyped()
    {
        open(QStringLiteral("."), words("net.ip net.name far"));
        QVERIFY(typeText(QStringLiteral("net.ixxn")));
        QVERIFY(pressKey(QStringLiteral("BackSpace")));
        QTRY_COMPARE(page->edit.text(), QStringLiteral("net.ixx"));
        QTRY_COMPARE(page->findChildren<AttributeModel*>().size(), 1);
        const int popupObjects = page->popup().findChildren<QObject*>().size();
        page->edit.clear();
        QVERIFY(typeText(QStringLiteral("netnet")));
        for (const char* key : {"BackSpace", "BackSpace", "BackSpace", "Down", "Down", "Up", "Escape"})
            QVERIFY(pressKey(QString::fromLatin1(key)));
        QVERIFY(pressKey(QStringLiteral("Tab"))); // no popup any more, so the keys are through
        QTRY_VERIFY(page->next.hasFocus());
        QCOMPARE(page->edit.text(), QStringLiteral("net"));
        QTRY_COMPARE(page->findChildren<AttributeModel*>().size(), 1);
        QCOMPARE(page->popup().findChildren<QObject*>().size(), popupObjects);
    }

    void withoutModelNothingIsOffered()
    {
        open(QStringLiteral("."), words("net.ip"));
        QVERIFY(typeText(QStringLiteral("n")));
        QTRY_VERIFY(page->popup().isVisible());
        page->edit.refreshCompleterModel(nullptr);
        QVERIFY(!page->popup().isVisible());
        QVERIFY(!page->edit.completer()->model());
        QTRY_VERIFY(page->findChildren<AttributeModel*>().isEmpty());

        page->edit.disconnect(page.get());
        QVERIFY(typeText(QStringLiteral("e")));
        QTRY_COMPARE(page->edit.text(), QStringLiteral("ne"));
        QVERIFY(!page->popup().isVisible());
    }

    void manyAttributesUnderOneNode_data()
    {
        const auto row = TestSupport::columns<bool>("isReal");
        row("fake repository", false);
        row("real repository", true);
    }

    void manyAttributesUnderOneNode()
    {
        QFETCH(bool, isReal);
        QStringList paths;
        for (int i = 0; i < 100000; ++i)
            paths.append(QStringLiteral("demo.%1").arg(i));
        if (isReal)
            open(QStringLiteral("."), paths, Repository::AttributeRepository::create());
        else
            open(QStringLiteral("."), paths);
        QVERIFY(typeText(QStringLiteral("DEMO.9")));
        QTRY_COMPARE(page->edit.text(), QStringLiteral("DEMO.9"));
        QTRY_COMPARE(page->popup().model()->rowCount(), 1000);
        QCOMPARE(page->shownProposals().first(), QStringLiteral("demo.9"));

        // At the end there are more, and the list stays where it is.
        QScrollBar* const bar = page->popup().verticalScrollBar();
        const int end = bar->maximum();
        bar->setValue(end);
        QTRY_COMPARE(page->popup().model()->rowCount(), 2000);
        QCOMPARE(bar->value(), end);
        QVERIFY(bar->maximum() > end);

        QVERIFY(typeText(QStringLiteral("9999")));
        QVERIFY(pressKey(QStringLiteral("Tab")));
        QTRY_COMPARE(page->edit.text(), QStringLiteral("demo.99999"));
    }

    void anotherListIsWalkedByComponentsToo()
    {
        open(QStringLiteral("/"), {});
        page->edit.disconnect(page.get());
        QStringListModel list(words("net far"));
        page->edit.refreshCompleterModel(&list);
        QVERIFY(typeText(QStringLiteral("N")));
        QTRY_COMPARE(page->shownProposals(), QStringList{QStringLiteral("net")});
        QCOMPARE(page->edit.completer()->splitPath(QStringLiteral("net/ip")), words("net ip"));
        page->edit.refreshCompleterModel(nullptr);
    }

    void aModelWithLevelsIsWalkedByComponents()
    {
        open(QStringLiteral("/"), {});
        page->edit.disconnect(page.get());
        QStandardItemModel levels;
        auto* const net = new QStandardItem(QStringLiteral("net"));
        net->appendRow(new QStandardItem(QStringLiteral("ip")));
        net->appendRow(new QStandardItem(QStringLiteral("name")));
        levels.appendRow(net);
        levels.appendRow(new QStandardItem(QStringLiteral("far")));
        page->edit.refreshCompleterModel(&levels);

        QVERIFY(typeText(QStringLiteral("NE")));
        QTRY_COMPARE(page->shownProposals(), QStringList{QStringLiteral("net")});
        QVERIFY(pressKey(QStringLiteral("Tab")));
        QVERIFY(typeText(QStringLiteral("/N")));
        QTRY_COMPARE(page->shownProposals(), QStringList{QStringLiteral("name")});
        QVERIFY(pressKey(QStringLiteral("Down")));
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_COMPARE(page->edit.text(), QStringLiteral("net/name"));
        page->edit.refreshCompleterModel(nullptr); // not its own: the model is still there afterwards
    }
};

VANTRY_TEST_MAIN(QApplication, CompleterTest)

#include "completer_test.moc"
