#include "host/Shared/Logging/LogRecord.h"
#include "host/Utilities/RepositoryAccess.h"
#include "repository/AttributeRepository.h"
#include "tests/support/Columns.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/RealInput.h"
#include "tests/support/RefusedEntries.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"
#include "tests/support/Texts.h"
#include "tests/widgets/BrowserPage.h"
#include "tests/widgets/DialogAnswers.h"
#include "widgets/BackendCreateWidget.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QTemporaryDir>

#include <list>
#include <map>

using namespace FrameworkCore::AppConfig;
using Shared::Logging::LogRecord;
using TestSupport::DialogDriver;

using namespace DialogAnswers;
using TestSupport::contentOf;
using TestSupport::writeFile;

// The menu of the tree, driven by a person's mouse and keys, over real files.
class TreeOperationsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Two clicks of different tests may come to the same place at once, and open no second menu then.
        QApplication::setDoubleClickInterval(1);
    }

    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        repository = Repository::AttributeRepository::create({false});
        repository->getHistoryInterface()->recordThisThread();
        Utilities::SetAppConfigRepositoryInterface(repository);
    }

    void cleanup()
    {
        page.reset();
        Utilities::SetAppConfigRepositoryInterface({});
        repository.reset();
    }

    void menuShowsWhatCanBeDone()
    {
        mount("json", "plant", "{\"cell\": {\"speed\": 5}}");
        openPage();
        const QString all =
            QStringLiteral("Expand All,Collapse All,New Attribute,Copy Subtree,Paste Subtree,Delete Subtree,"
                           "Add Validation,Import,Export,New Backend,Save Backend");
        const auto without = [](const QString& list, const char* entry) {
            QStringList entries = list.split(QLatin1Char(','));
            entries.removeOne(QLatin1String(entry));
            return entries.join(QLatin1Char(','));
        };
        QString enabled;
        const Answer look = [&](QWidget& popup) {
            QStringList texts;
            QStringList enabledTexts;
            const auto actions = popup.actions();
            for (const QAction* const action : actions) {
                texts.append(action->text());
                QVERIFY(!action->icon().pixmap(16).isNull());
                QVERIFY(action->shortcut().isEmpty());
                if (action->isEnabled())
                    enabledTexts.append(action->text());
            }
            QCOMPARE(texts.join(QLatin1Char(',')), all);
            enabled = enabledTexts.join(QLatin1Char(','));
            QVERIFY((popup.pos() - QCursor::pos()).manhattanLength() < 20);
            escape(popup);
        };
        openMenu(QStringLiteral("plant.cell"), {look});
        QCOMPARE(enabled, without(without(all, "Paste Subtree"), "Save Backend"));
        QVERIFY(!page->tree.selectionModel()->hasSelection());

        choose(QStringLiteral("plant"), "Copy Subtree");
        openMenu(QStringLiteral("plant"), {look});
        QCOMPARE(enabled, all);
        choose(QStringLiteral("plant"), "Paste Subtree", {escape});
        openMenu(QStringLiteral("plant"), {look});
        QCOMPARE(enabled, without(all, "Paste Subtree"));

        // By the keyboard on the selected item; nowhere when nothing is selected.
        page->clickItem(QStringLiteral("plant.cell"));
        {
            const DialogDriver driver(look);
            QVERIFY(TestSupport::pressKey(QStringLiteral("Menu")));
            QTRY_VERIFY(driver.isDone());
        }
        QTRY_VERIFY(!QApplication::activePopupWidget());
        QSignalSpy requested(&page->tree, &QWidget::customContextMenuRequested);
        QVERIFY(TestSupport::click(*page->tree.viewport(), page->tree.viewport()->rect().bottomRight() / 2,
                                   Qt::RightButton));
        QTRY_COMPARE(requested.size(), 1);
        QVERIFY(!QApplication::activePopupWidget());
    }

    void expandsAllAndCollapsesOne()
    {
        mount("json", "p", R"({"a": {"b": {"c": 1}, "d": {"e": 2}}, "f": {"g": 3}})");
        openPage();
        page->read(QStringLiteral("p"));
        choose(QStringLiteral("p.a"), "Expand All");
        const QStringList open{QStringLiteral("-p"),    QStringLiteral(" -a"),  QStringLiteral("  -b"),
                               QStringLiteral("   -c"), QStringLiteral("  -d"), QStringLiteral("   -e"),
                               QStringLiteral(" f")};
        QCOMPARE(page->shownRows(), open);
        page->read(QStringLiteral("p"));
        QCOMPARE(page->shownRows(), open); // it was noted what is open
        choose(QStringLiteral("p.a"), "Collapse All");
        const QStringList closed{QStringLiteral("-p"), QStringLiteral(" a"), QStringLiteral(" f")};
        QCOMPARE(page->shownRows(), closed);
        page->read(QStringLiteral("p"));
        QCOMPARE(page->shownRows(), closed);
        page->open({QStringLiteral("p.a")});
        QCOMPARE(page->shownRows(), open);
    }

    // However it is asked for: each open leaf would cost time and memory.
    void opensNotEveryLeafOfVeryMany()
    {
        QByteArray leaves;
        constexpr int many = 20'001;
        for (int leaf = 0; leaf < many; ++leaf)
            leaves += "\"k" + QByteArray::number(leaf) + "\": 1,";
        mount("json", "p", "{\"a\": {" + leaves + "\"last\": 1}}");
        for (const bool byKey : {false, true}) {
            openPage();
            page->read(QStringLiteral("p"));
            if (byKey) {
                page->clickItem(QStringLiteral("p.a"));
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Asterisk);
            } else {
                choose(QStringLiteral("p.a"), "Expand All");
            }
            const QModelIndex branch = page->item(QStringLiteral("p.a"));
            QVERIFY(page->tree.isExpanded(branch));
            QVERIFY(page->tree.isExpanded(page->tree.model()->index(0, 0, branch)));
            QVERIFY(!page->tree.isExpanded(page->tree.model()->index(many, 0, branch)));
        }
    }

    void changesFiles_data()
    {
        // name: what is entered
        // source: copied before, when there is one
        const auto row = TestSupport::columns<QString, QByteArray, QString, QString, QString, QString, bool,
                                              QByteArray, QString>(
            "type", "before", "source", "item", "entry", "name", "asChild", "after", "step");
        const char* const json =
            "{\n    // the line\n    \"a\": {\"speed\": 5, \"on\": true},\n    \"b\": {}\n}\n";
        row("paste below, json", "json", json, "p.a", "p.b", "Paste Subtree", "copy", true,
            "{\n    // the line\n    \"a\": {\"speed\": 5, \"on\": true},\n    \"b\": {\n        // the "
            "line\n"
            "        \"copy\": {\"speed\": 5, \"on\": true}\n    }\n}\n",
            "Paste copy");
        row("paste beside, json", "json", json, "p.a.speed", "p.a.on", "Paste Subtree", "speed2", false,
            "{\n    // the line\n    \"a\": {\"speed\": 5, \"on\": true, \"speed2\": 5},\n    \"b\": {}\n}\n",
            "Paste speed2");
        row("delete, json", "json", json, "", "p.a", "Delete Subtree", "", false,
            "{\n    // the line\n    \"b\": {}\n}\n", "Delete a");
        const char* const ini = "; head\n[a]\nspeed = 5\non=true\n\n[b]\nk=1 ; kept\n";
        row("paste below, ini", "ini", ini, "p.a", "p.b", "Paste Subtree", "c", true,
            "; head\n[a]\nspeed = 5\non=true\n\n[b]\nk=1 ; kept\n\n; head\n[b.c]\nspeed = 5\non=true\n",
            "Paste c");
        row("paste beside, ini", "ini", ini, "p.a", "p.b", "Paste Subtree", "c", false,
            "; head\n[a]\nspeed = 5\non=true\n\n[b]\nk=1 ; kept\n\n; head\n[c]\nspeed = 5\non=true\n",
            "Paste c");
        row("delete, ini", "ini", ini, "", "p.a.speed", "Delete Subtree", "", false,
            "; head\n[a]\non=true\n\n[b]\nk=1 ; kept\n", "Delete speed");
        row("new attribute, ini", "ini", ini, "", "p.b", "New Attribute", "deep.er", false,
            "; head\n[a]\nspeed = 5\non=true\n\n[b]\nk=1 ; kept\n\n[b.deep]\ner = text\n",
            "Create p.b.deep.er");
        row("paste below, xml", "xml", "<r><a x=\"1\">t</a><b/></r>\n", "p.r.a.@x", "p.r.b", "Paste Subtree",
            "@y", true, "<r><a x=\"1\">t</a><b y=\"1\"/></r>\n", "Paste @y");
        row("paste beside, txt", "txt", "# head\na.b = 5\nc = x\n", "p.a", "p.c", "Paste Subtree", "d", false,
            "# head\na.b = 5\nc = x\n# head\nd.b = 5\n", "Paste d");
    }

    // Each operation, the file after a save, and the file after undo and another save.
    void changesFiles()
    {
        QFETCH(QString, type);
        QFETCH(QByteArray, before);
        QFETCH(QString, source);
        QFETCH(QString, item);
        QFETCH(QString, entry);
        QFETCH(QString, name);
        QFETCH(bool, asChild);
        mount(type.toLatin1(), "p", before);
        openPage();
        if (!source.isEmpty())
            choose(source, "Copy Subtree");
        const Answer answer = !source.isEmpty() ? pasteAs(name, asChild)
                              : name.isEmpty()  ? confirm(QMessageBox::Yes)
                                                : createText(name, QStringLiteral("text"));
        choose(item, entry.toLatin1(), {answer});
        choose(QStringLiteral("p"), "Save Backend");
        QTEST(fileOf("p"), "after");
        QCOMPARE(lastLog(), QStringLiteral("Backend :- 'p' Updated With Result: true"));

        const auto history = repository->getHistoryInterface();
        QTEST(history->getUndoName(), "step");
        QCOMPARE(history->undo(), Success);
        QCOMPARE(history->getUndoName(), QString());
        QVERIFY(repository->getBackendInterface()->saveBackend(QStringLiteral("p")));
        QCOMPARE(fileOf("p"), before);
    }

    void aNewAttributeIsShown()
    {
        QByteArray content = "{\"a\": {\"k\": 1}";
        for (int i = 0; i < 100; ++i)
            content += ", \"n" + QByteArray::number(i) + "\": {}";
        mount("json", "p", content + "}");
        openPage();
        page->open({QStringLiteral("p")});
        for (const char* const name : {"deep.er", "k"}) {
            const QString created = QStringLiteral("p.n99.") + QLatin1String(name);
            choose(QStringLiteral("p.n99"), "New Attribute", {[name](QWidget& dialog) {
                       QCOMPARE(dialog.findChild<QLabel*>(QStringLiteral("lblPlace"))->text(),
                                QStringLiteral("p.n99"));
                       createText(QLatin1String(name), QStringLiteral("x"))(dialog);
                   }});
            QTRY_VERIFY(page->item(created).isValid());
            const QModelIndex item = page->item(created);
            QTRY_COMPARE(page->tree.currentIndex(), item);
            QVERIFY(page->tree.selectionModel()->isRowSelected(item.row(), item.parent()));
            QVERIFY(page->tree.viewport()->rect().contains(page->tree.visualRect(item).center()));
            QVERIFY(page->details.toPlainText().contains(QStringLiteral("Path : ") + created));
        }
    }

    void importsAndExports()
    {
        mount("json", "p", "{\"a\": {\"speed\": 5, \"when\": \"2024-02-29\", \"$\": [\"x\", \"y\"]}}");
        openPage();
        const QString json = folder->filePath(QStringLiteral("out.TXT"));
        choose(QStringLiteral("p.a"), "Export", {enterFile(json)});
        const QByteArray exported = "{\"speed\": 5, \"when\": \"2024-02-29\", \"$\": [\"x\", \"y\"]}\n";
        QCOMPARE(contentOf(json), exported);
        const QString txt = folder->filePath(QStringLiteral("out.txt"));
        choose(QStringLiteral("p.a"), "Export", {enterFile(txt)});
        QVERIFY2(contentOf(txt).startsWith("speed = 5\nwhen = 2024-02-29\n"), contentOf(txt).constData());

        choose(QStringLiteral("p.a"), "Import", {enterFile(json), enter(QStringLiteral("..p.new.x."))});
        QCOMPARE(repository->getHistoryInterface()->getUndoName(), QStringLiteral("Import out.TXT"));
        QVERIFY(page->item(QStringLiteral("p.new.x.speed")).isValid());
        QCOMPARE(valueOf("p.new.x.$"), QVariant(TestSupport::words("x y")));
        QCOMPARE(repository->getHistoryInterface()->undo(), Success);
        QTRY_VERIFY(!page->item(QStringLiteral("p.new")).isValid());
    }

    void importsNothingOfAWrongFile_data()
    {
        const auto row = TestSupport::columns<QByteArray, QString>("content", "reason");
        row("no json", "{\n  \"a\" 5}", "line 2, column 7");
        row("cut", "{\"a\": [1, ", "line 1, column ");
        row("empty", "\xEF\xBB\xBF \n", "empty");
        row("bytes", QByteArray("\x7f\x45LF\x02\0\xff", 7), "line 1, column 7");
        row("type", "{\"new\": 1, \"speed\": \"fast\"}", "p.speed");
        row("a value on a group", "{\"speed\": 6, \"list\": {\"#value\": [1]}}", "p.list");
    }

    void importsNothingOfAWrongFile()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, reason);
        const QByteArray before = "{\"speed\": 5, \"list\": [1, 2]}";
        mount("json", "p", before);
        openPage();
        const QString file = folder->filePath(QStringLiteral("in.json"));
        writeFile(file, content);
        choose(QStringLiteral("p"), "Import",
               {enterFile(file), enter(QStringLiteral("p")), seeWarning({file, reason})});
        QVERIFY(repository->getBackendInterface()->saveBackend(QStringLiteral("p")));
        QCOMPARE(fileOf("p"), before);
        QCOMPARE(repository->getHistoryInterface()->getUndoName(), QString());
    }

    void exportTellsWhyItFails()
    {
        mount("txt", "p", "a = 1\n");
        openPage();
        // A folder where the file should go: chosen before it came, as by another program.
        const QString file = folder->filePath(QStringLiteral("out.json"));
        choose(QStringLiteral("p"), "Export",
               {[&](QWidget& dialog) {
                    enterFile(file)(dialog);
                    QVERIFY(QDir().mkdir(file));
                },
                seeWarning({file, QStringLiteral("folder")})});
    }

    // Others remove the item while the last dialog is open. Its path would be empty then, as that of all.
    void anItemThatGoesMeanwhileIsLeftAlone_data()
    {
        const auto row = TestSupport::columns<QString>("entry");
        for (const char* const entry :
             {"New Attribute", "Paste Subtree", "Add Validation", "Import", "Export", "Copy Subtree"})
            row(entry, entry);
    }

    void anItemThatGoesMeanwhileIsLeftAlone()
    {
        QFETCH(QString, entry);
        mount("json", "p", "{\"a\": {\"k\": 1}, \"b\": 2}");
        openPage();
        const QString file = folder->filePath(QStringLiteral("in.json"));
        writeFile(file, "{\"k\": 5}");
        const auto goingBefore = [&](const Answer& answer) -> Answer {
            return [&, answer](QWidget& dialog) {
                const bool isThere = page->item(QStringLiteral("p.a")).isValid();
                QVERIFY(!isThere ||
                        repository->getTreeInterface()->removeTree(QStringLiteral("p.a")) == Success);
                QTRY_VERIFY(!page->item(QStringLiteral("p.a")).isValid());
                answer(dialog);
            };
        };
        const Answer warning = seeWarning({QStringLiteral("'p.a' has left the tree meanwhile")});
        const std::map<QString, std::list<Answer>> answers{
            {QStringLiteral("New Attribute"), {goingBefore(createText(QStringLiteral("new"), {}))}},
            {QStringLiteral("Paste Subtree"), {goingBefore(pasteAs(QStringLiteral("new"), true))}},
            {QStringLiteral("Add Validation"), {goingBefore(enter(QStringLiteral("integer")))}},
            {QStringLiteral("Import"), {goingBefore(enterFile(file)), warning}},
            {QStringLiteral("Export"), {goingBefore(enterFile(file + QStringLiteral(".new"))), warning}},
        };
        const auto found = answers.find(entry);
        if (entry == QLatin1String("Paste Subtree"))
            choose(QStringLiteral("p.b"), "Copy Subtree");
        const quint64 before = LogRecord::instance().getLastNumber();
        if (found != answers.end())
            choose(QStringLiteral("p.a"), entry.toLatin1(), found->second);
        else // under the open menu
            openMenu(QStringLiteral("p.a"),
                     {goingBefore([&entry](QWidget& menu) { chooseIn(menu, entry); })});
        QVERIFY(!QFile::exists(file + QStringLiteral(".new")));
        QCOMPARE(repository->getTreeInterface()->getChildNames(QStringLiteral("p")),
                 QStringList(QStringLiteral("b")));
        if (found == answers.end() || found->second.size() == 1) {
            QCOMPARE(LogRecord::instance().getLines(before).size(), 1);
            QCOMPARE(lastLog(), QStringLiteral("Nothing was done: 'p.a' has left the tree meanwhile"));
        }
    }

    void createsBackends()
    {
        mount("json", "plant", "{}");
        openPage();
        choose(QStringLiteral("plant"), "New Backend");
        Widgets::BackendCreateWidget* dialog = nullptr;
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget* const window : windows)
            dialog = dialog ? dialog : qobject_cast<Widgets::BackendCreateWidget*>(window);
        QVERIFY(dialog && dialog->isVisible() && !dialog->isModal());
        const auto field = [&](const char* name) {
            return dialog->findChild<QLineEdit*>(QLatin1String(name));
        };
        QCOMPARE(field("edtRelativePath")->text(), QStringLiteral("plant."));
        QTest::keyClicks(field("edtRelativePath"), QStringLiteral("two"));
        writeFile(folder->filePath(QStringLiteral("two.json")), "{\"speed\": 7}");
        QTest::keyClicks(field("edtBackendFile"), folder->filePath(QStringLiteral("two.json")));
        QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("btnCreate")), Qt::LeftButton);
        QTRY_VERIFY(page->item(QStringLiteral("plant.two.speed")).isValid());
        QCOMPARE(valueOf("plant.two.speed"), QVariant(7LL));
    }

    void pastesWhatHasLeftTheTree()
    {
        mount("json", "far", "{\"a\": {\"k\": 1}}");
        mount("ini", "near", "[s]\nx=1\n");
        openPage();
        choose(QStringLiteral("far.a"), "Copy Subtree");
        page->read(QStringLiteral("near"));
        QVERIFY(!page->item(QStringLiteral("far")).isValid());
        QString proposed;
        choose(QStringLiteral("near.s"), "Paste Subtree", {[&](QWidget& dialog) {
                   proposed = dialog.findChild<QLineEdit*>()->text();
                   pasteAs(QStringLiteral("b"), true)(dialog);
               }});
        QCOMPARE(proposed, QStringLiteral("a"));
        QCOMPARE(valueOf("near.s.b.k"), QVariant(1LL));
        // Beside an item at the top, the name alone is the path.
        page->read(QString());
        choose(QStringLiteral("far.a"), "Copy Subtree");
        choose(QStringLiteral("near"), "Paste Subtree", {pasteAs(QStringLiteral("top"), false)});
        QCOMPARE(valueOf("top.k"), QVariant(1LL));
    }

    void refusalsAreLogged()
    {
        mount("json", "p", "{\"a\": {\"k\": 1}}");
        openPage();
        choose(QStringLiteral("p"), "Delete Subtree", {confirm(QMessageBox::Yes)});
        QVERIFY2(lastLog().contains(QLatin1String("'p'")), qPrintable(lastLog()));
        choose(QStringLiteral("p.a"), "Delete Subtree", {confirm(QMessageBox::No)});
        choose(QStringLiteral("p.a"), "Copy Subtree");
        choose(QStringLiteral("p.a"), "Paste Subtree", {pasteAs(QStringLiteral("into"), true)});
        QVERIFY2(lastLog().contains(QLatin1String("'p.a.into'")), qPrintable(lastLog()));
        QCOMPARE(valueOf("p.a.k"), QVariant(1LL));

        QVERIFY(repository->getValidationInterface()->addValidation(QStringLiteral("p.a.z"),
                                                                    QStringLiteral("integer")) != 0);
        const TestSupport::RefusedEntries refused; // what was entered is not lost
        choose(QStringLiteral("p.a"), "New Attribute",
               {createText(QStringLiteral("z"), QStringLiteral("fast"))});
        QCOMPARE(refused.texts(), QStringList(QStringLiteral("p.a.z | fast | ")));
        QCOMPARE(lastLog(), QStringLiteral("Attribute 'p.a.z' Created With Result false"));
        QCoreApplication::processEvents();
        QVERIFY(!page->tree.selectionModel()->hasSelection());
        choose(QStringLiteral("p.a.k"), "Add Validation", {enter(QStringLiteral("integer"))});
        QCOMPARE(lastLog(), QStringLiteral("Validation Added for Attribute 'p.a.k' with result = true"));
        choose(QStringLiteral("p.a.k"), "Add Validation", {enter(QStringLiteral("no such"))});
        QCOMPARE(lastLog(), QStringLiteral("Validation Added for Attribute 'p.a.k' with result = false"));
        QCOMPARE(LogRecord::instance().getLines().last().type, Shared::Logging::LogMessageType::Outcome);
    }

    // Proposed with their syntax, and shown where they are attached.
    void proposesAndShowsValidations()
    {
        mount("json", "p", "{\"k\": 1}");
        openPage();
        page->clickItem(QStringLiteral("p.k"));
        const QString details = page->details.toPlainText();
        choose(QStringLiteral("p.k"), "Add Validation", {enter(QStringLiteral("integer"))});
        QCOMPARE(page->details.toPlainText(), details + QLatin1String("\nValidations : integer"));
        choose(QStringLiteral("p.k"), "Add Validation", {[](QWidget& dialog) {
                   auto* const field = dialog.findChild<QLineEdit*>();
                   QTest::keyClicks(field, QStringLiteral("RAN"));
                   QTest::keyClick(field, Qt::Key_Down);
                   QCOMPARE(field->text(), QStringLiteral("range(0,100)"));
                   QTest::keyClicks(field, QStringLiteral("1,9")); // in the argument's place
                   QTest::keyClick(field, Qt::Key_Return);
               }});
        const QString both = QStringLiteral("integer, range(1,9)");
        QCOMPARE(page->details.toPlainText(), details + QLatin1String("\nValidations : ") + both);
        const QString tip = page->item(QStringLiteral("p.k")).data(Qt::ToolTipRole).toString();
        QVERIFY2(tip.contains(both), qPrintable(tip));
    }

private:
    QByteArray fileOf(const char* name) { return contentOf(folder->filePath(QLatin1String(name))); }

    void mount(const QByteArray& type, const char* name, const QByteArray& content)
    {
        const QString file = folder->filePath(QLatin1String(name));
        writeFile(file, content);
        QVERIFY(repository->getBackendInterface()->createBackend(
            QString::fromLatin1(type), QLatin1String(name), {file, QString(), AccessMode::ReadWrite}, 2));
    }

    QVariant valueOf(const char* path)
    {
        QVariant value;
        repository->getReaderInterface()->readAttributeValue(QLatin1String(path), value, 0);
        return value;
    }

    static QString lastLog() { return LogRecord::instance().getLines().last().text; }

    void openPage()
    {
        page = std::make_unique<BrowserPage>();
        QVERIFY(TestSupport::showActive(page->widget));
        page->read(QString());
    }

    // Opens the menu of an item by the right button; menu and dialogs are answered in this order.
    void openMenu(const QString& path, const std::list<Answer>& answers)
    {
        for (QModelIndex above = page->item(path).parent(); above.isValid(); above = above.parent())
            page->tree.expand(above);
        const QModelIndex item = page->item(path);
        QVERIFY2(item.isValid(), qPrintable(path));
        page->tree.scrollTo(item);
        std::vector<std::unique_ptr<DialogDriver>> drivers;
        auto next = answers.begin();
        const std::function<void()> awaitNext = [&] {
            if (next == answers.end())
                return;
            const Answer& answer = *next++;
            drivers.push_back(std::make_unique<DialogDriver>([&](QWidget& dialog) {
                awaitNext();
                answer(dialog);
            }));
        };
        awaitNext();
        QVERIFY(TestSupport::click(*page->tree.viewport(), page->tree.visualRect(item).center(),
                                   Qt::RightButton));
        QTRY_VERIFY(drivers.size() == answers.size() && drivers.back()->isDone());
        QTRY_VERIFY(!QApplication::activePopupWidget() && !QApplication::activeModalWidget());
    }

    void choose(const QString& path, const QByteArray& entry, std::list<Answer> answers = {})
    {
        answers.push_front([&entry](QWidget& menu) { chooseIn(menu, QLatin1String(entry)); });
        openMenu(path, answers);
    }

    static void chooseIn(QWidget& popup, const QString& entry)
    {
        auto* const menu = qobject_cast<QMenu*>(&popup);
        QVERIFY(menu);
        const auto actions = menu->actions();
        for (QAction* const action : actions) {
            if (action->text() != entry)
                continue;
            QVERIFY(action->isEnabled());
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            return;
        }
        QFAIL("no such entry");
    }

    std::unique_ptr<QTemporaryDir> folder;
    std::shared_ptr<Repository::AttributeRepository> repository;
    std::unique_ptr<BrowserPage> page;
};

VANTRY_TEST_MAIN(QApplication, TreeOperationsTest)

#include "tree_operations_test.moc"
