#include "desk/files/ProblemFeed.h"
#include "desk/places/EditorCommand.h"
#include "desk/window/NoticeBar.h"
#include "host/Utilities/ModelViews/Widgets/LongTextDelegate.h"
#include "repository/documents/Formats.h"
#include "tests/desk/DeskTest.h"
#include "tests/support/NoThreads.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QDockWidget>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QToolButton>

using TestSupport::contentOf;
using TestSupport::DeskTest;
using TestSupport::DialogDriver;
using TestSupport::pressKey;

// The File and the Edit menu, with real keys on the real desk and files.
class DeskFilesTest : public DeskTest
{
    Q_OBJECT

private slots:
    void init() { open(); }
    void cleanup() { close(); }

    void undoesAndSavesByKey()
    {
        const auto* const undo = desk->part<QAction>("undo");
        const auto* const redo = desk->part<QAction>("redo");
        QVERIFY(!undo->isEnabled() && !redo->isEnabled());
        write(speed, 1250);
        QTRY_COMPARE(undo->text(), QStringLiteral("&Undo Write ") + speed);
        QTRY_VERIFY(desk->window->isWindowModified());
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QByteArray edited = plant;
        edited.replace("1200", "1250");
        QTRY_COMPARE(contentOf(folder->path("plant.json")), edited);
        QTRY_VERIFY(!desk->window->isWindowModified());

        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(read(speed), QVariant(1200LL));
        QTRY_VERIFY(!undo->isEnabled());
        QCOMPARE(redo->text(), QStringLiteral("&Redo Write ") + speed);
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_COMPARE(contentOf(folder->path("plant.json")), plant);
        for (const char* key : {"ctrl+y", "ctrl+shift+z"}) {
            QVERIFY(pressKey(QLatin1String(key)));
            QTRY_COMPARE(read(speed), QVariant(1250LL));
            QVERIFY(pressKey(QStringLiteral("ctrl+z")));
            QTRY_COMPARE(read(speed), QVariant(1200LL));
        }
    }

    // A text field takes back what was typed there, not what happened to the attributes.
    void leavesTextFieldsTheirUndo()
    {
        write(speed, 1250);
        auto* const search = desk->part<QLineEdit>("edtSearchPath");
        search->setFocus();
        const QString before = search->text();
        QVERIFY(TestSupport::typeText(QStringLiteral("x")));
        QTRY_COMPARE(search->text(), before + QLatin1Char('x'));
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(search->text(), before);
        for (const char* key : {"ctrl+z", "ctrl+y", "End"}) // nothing is left to undo
            QVERIFY(pressKey(QLatin1String(key)));
        QVERIFY(TestSupport::typeText(QStringLiteral("y")));
        QTRY_COMPARE(search->text(), before + QLatin1Char('y'));
        QCOMPARE(read(speed), QVariant(1250LL));
        search->selectAll();
        QVERIFY(pressKey(QStringLiteral("Delete")));
        QTRY_VERIFY(search->text().isEmpty());
        desk->tree->setFocus();
        for (const char* key : {"ctrl+z", "ctrl+y", "ctrl+z"})
            QVERIFY(pressKey(QLatin1String(key)));
        QTRY_COMPARE(read(speed), QVariant(1200LL));
    }

    void takesWhatIsBeingTyped_data()
    {
        QTest::addColumn<QString>("view");
        QTest::addColumn<QString>("key"); // or entry of the File menu, for the mouse
        for (const char* view : {"treeView", "appConfigDataAccessWidget"}) {
            for (const char* key : {"ctrl+s", "ctrl+q", "F5", "&Save All"})
                QTest::addRow("%s, %s", view, key) << QString::fromLatin1(view) << QString::fromLatin1(key);
        }
    }

    void takesWhatIsBeingTyped()
    {
        QFETCH(QString, view);
        QFETCH(QString, key);
        auto* const edited = desk->part<QAbstractItemView>(qPrintable(view));
        type(*edited, QStringLiteral("1250"));
        std::optional<DialogDriver> question;
        if (key == QLatin1String("ctrl+q"))
            question.emplace([](QWidget& dialog) { press(dialog, "Save"); });
        if (key.startsWith(QLatin1Char('&')))
            choose(0, key);
        else
            QVERIFY(pressKey(key));
        QTRY_COMPARE(read(speed), QVariant(1250LL));
        if (key != QLatin1String("F5"))
            QTRY_COMPARE(contentOf(folder->path("plant.json")), QByteArray(plant).replace("1200", "1250"));
        if (question)
            QTRY_VERIFY(!desk->window->isVisible());
        else
            QTRY_VERIFY(edited->hasFocus());
    }

    // On a disk that is full it might be hundreds of files.
    void tellsAtOnceWhatIsNotSaved()
    {
        write(speed, 1250);
        write(maximum, 130);
        TestSupport::writeFile(folder->path("plant.json"), "{");
        TestSupport::writeFile(folder->path("limits.ini"), "[oven");
        QString told;
        const DialogDriver driver([&told](QWidget& dialog) {
            told = static_cast<QMessageBox&>(dialog).text();
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        QVERIFY(pressKey(QStringLiteral("ctrl+s")));
        QTRY_VERIFY(driver.isDone());
        QCoreApplication::processEvents();
        QVERIFY(!QApplication::activeModalWidget());
        QVERIFY2(told.contains(folder->path("plant.json")) && told.contains(folder->path("limits.ini")),
                 qPrintable(told));
    }

    void opensWhatIsWantedOfAFolder()
    {
        for (const char* name : {"d/a.ini", "d/b.json", "d/old/c.ini", "d/e/f/g.ini"}) {
            QVERIFY(QDir().mkpath(QFileInfo(folder->path(name)).path()));
            TestSupport::writeFile(folder->path(name), QByteArray(name).endsWith("ini") ? "k = 1\n" : "{}\n");
        }
        TestSupport::writeFile(folder->path("d/large.ini"), "k = " + QByteArray(3 << 20, 'x') + '\n');
        const DialogDriver driver([this](QWidget& dialog) {
            dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(folder->path("d"));
            QVERIFY(pressKey(QStringLiteral("Tab")) && TestSupport::typeText(QStringLiteral("*.ini *.toml")));
            QVERIFY(pressKey(QStringLiteral("Tab")) && TestSupport::typeText(QStringLiteral("old")));
            QTRY_COMPARE(dialog.findChild<QLineEdit*>(QStringLiteral("folderExclude"))->text(),
                         QStringLiteral("old"));
            dialog.findChild<QComboBox*>(QStringLiteral("folderDepth"))->setCurrentIndex(2);
            dialog.findChild<QComboBox*>(QStringLiteral("folderSize"))->setCurrentIndex(1);
            static_cast<QDialog&>(dialog).accept();
        });
        QVERIFY(pressKey(QStringLiteral("ctrl+shift+o")));
        QTRY_VERIFY(driver.isDone());
        QTRY_VERIFY(desk->item(QStringLiteral("d.a%2Eini")).isValid());
        QTRY_VERIFY(!desk->window->isOpeningFiles());
        QStringList opened = desk->repository->getBackendInterface()->getBackendNames();
        opened = opened.filter(QRegularExpression(QStringLiteral("^d\\.")));
        QCOMPARE(opened, QStringList(QStringLiteral("d.a%2Eini")));
    }

    // People read the names of files and folders as the disk has them, and of a folder nothing but its own.
    void namesAFolderAsItIs()
    {
        const QString name = QStringLiteral("50%.d");
        QVERIFY(QDir().mkpath(folder->path("site/") + name));
        TestSupport::writeFile(folder->path("site/") + name + QStringLiteral("/a.ini"), "x.y = 1\n");
        desk->window->openFiles({folder->path("site")});
        const QString file = QStringLiteral("site.50%25%2Ed.a%2Eini");
        QTRY_VERIFY(desk->item(file + QStringLiteral(".x%2Ey")).isValid());
        QTRY_COMPARE(desk->window->getTitle(), QStringLiteral("plant.json, limits.ini, site"));
        const auto readName = [](const QModelIndex& node) {
            return node.data(Qt::AccessibleTextRole).toString().section(QLatin1String(", "), 0, 0);
        };
        const QModelIndex entry = desk->item(file + QStringLiteral(".x%2Ey"));
        QCOMPARE(readName(entry), QStringLiteral("x%2Ey")); // as a path has it
        QCOMPARE(readName(entry.parent()), QStringLiteral("a.ini"));
        QCOMPARE(readName(entry.parent().parent()), name);

        // That is drawn, which is narrower than the name in the path.
        QStyleOptionViewItem option;
        option.initFrom(desk->tree);
        const Utilities::ModelViews::Widgets::LongTextDelegate ofPath(nullptr);
        const auto saved = [&](const QModelIndex& node) {
            return ofPath.sizeHint(option, node).width() -
                   desk->tree->itemDelegateForColumn(0)->sizeHint(option, node).width();
        };
        QCOMPARE(saved(entry), 0);
        QVERIFY(saved(entry.parent()) > 0);
    }

    // A row leads to the place, and several are copied.
    void leadsToProblems()
    {
        const QString noted = folder->path("noted");
        const QString editor = folder->path("editor");
        TestSupport::writeFile(editor, "#!/bin/sh\necho \"$@\" > '" + QFile::encodeName(noted) + "'\n");
        QVERIFY(QFile::setPermissions(editor, QFile::ReadOwner | QFile::ExeOwner));
        Vantry::EditorCommand::choose(editor + QStringLiteral(" {line} {column} {file}"));
        for (const char* name : {"a.json", "b.json"}) {
            using FrameworkCore::AppConfig::Outcome;
            Outcome problem(FrameworkCore::AppConfig::BackendFailure, QStringLiteral("expected ','"));
            problem.of(Outcome::Operation::CreateBackend, QLatin1String(name));
            Vantry::ProblemFeed::instance().add(problem.in(folder->path(name), 3, 7));
        }
        desk->part<QDockWidget>("problemsDock")->show();
        auto& rows = *desk->part<QTreeWidget>("problemRows");
        QTRY_COMPARE(rows.topLevelItemCount(), 2);
        rows.setFocus();
        rows.setCurrentItem(rows.topLevelItem(0));
        QVERIFY(pressKey(QStringLiteral("shift+Down")));
        QVERIFY(pressKey(QStringLiteral("ctrl+c")));
        QTRY_COMPARE(QApplication::clipboard()->text(),
                     folder->path("a.json") + QStringLiteral(":3:7\texpected ','\n") +
                         folder->path("b.json") + QStringLiteral(":3:7\texpected ','\n"));
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_COMPARE(contentOf(noted), "3 7 " + QFile::encodeName(folder->path("b.json")) + '\n');

        // Another window knows them, too.
        QVERIFY(pressKey(QStringLiteral("ctrl+shift+n")));
        QTRY_COMPARE(desk->windows->getWindows().size(), 2);
        const auto* const other =
            desk->windows->getWindows().last()->findChild<QTreeWidget*>(QStringLiteral("problemRows"));
        QCOMPARE(textsOf(*other), textsOf(rows));
        for (const char* name : {"a.json", "b.json"})
            Vantry::ProblemFeed::instance().add(FrameworkCore::AppConfig::Outcome().in(folder->path(name)));
        QTRY_COMPARE(other->topLevelItemCount(), 0);
    }

    // What is locked is shown so, and takes no edit until it is unlocked; the next start knows.
    void locksAFile()
    {
        const auto* const button = desk->part<QToolButton>("lock");
        const auto isItalic = [this] { return desk->item(speed).data(Qt::FontRole).value<QFont>().italic(); };
        const auto iconOf = [this](const char* path) {
            return desk->item(QLatin1String(path)).data(Qt::DecorationRole).value<QIcon>().cacheKey();
        };
        desk->tree->setCurrentIndex(desk->item(speed));
        QTRY_VERIFY(button->isEnabled() && !button->isChecked());
        QVERIFY(!isItalic());
        const qint64 open = iconOf("plant");
        QTest::mouseClick(desk->part<QToolButton>("lock"), Qt::LeftButton);
        QVERIFY(button->isChecked() && isItalic());
        QTRY_VERIFY(iconOf("plant") != open && iconOf("limits") == open);
        QVERIFY(desk->repository->getWriterInterface()->writeAttributeValue(speed, 1, 8) != 0);
        const auto refusal = [this] { return desk->part<QLabel>("failureText")->parentWidget()->toolTip(); };
        QTRY_VERIFY2(refusal().contains(QLatin1String("it is locked")), qPrintable(refusal()));
        write(maximum, 130); // in another file
        desk->tree->setCurrentIndex(desk->item(maximum));
        QTRY_VERIFY(!button->isChecked());

        desk->tree->setCurrentIndex(desk->item(speed));
        QTRY_VERIFY(button->isChecked());
        QVERIFY(pressKey(QStringLiteral("ctrl+l")));
        QTRY_VERIFY(!button->isChecked());
        QTRY_COMPARE(iconOf("plant"), open);
        write(speed, 1300);
    }

    // The keys are those of the text field, the menu's entries those of the attributes.
    void undoesWhatIsBeingTyped()
    {
        type(*desk->tree, QStringLiteral("1250"));
        const auto* const field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(field->text(), QStringLiteral("1200"));
        QVERIFY(pressKey(QStringLiteral("ctrl+a")));
        QVERIFY(TestSupport::typeText(QStringLiteral("1300")));
        QTRY_COMPARE(field->text(), QStringLiteral("1300"));
        choose(1, QStringLiteral("&Undo Write ") + speed);
        QTRY_COMPARE(read(speed), QVariant(1200LL));
        QCOMPARE(desk->part<QAction>("redo")->text(), QStringLiteral("&Redo Write ") + speed);
        QVERIFY(desk->tree->hasFocus());
    }

    void reverts()
    {
        write(speed, 1250);
        write(maximum, 130);
        fileMenu({"e", "Return"}, [](QWidget& dialog) { press(dialog, "Cancel"); }); // of the first backend
        QCOMPARE(read(speed), QVariant(1250LL));
        fileMenu({"e", "Return"}, [](QWidget& dialog) { press(dialog, "Revert"); });
        QTRY_COMPARE(read(speed), QVariant(1200LL));
        QCOMPARE(read(maximum), QVariant(130LL));
        QVERIFY(TestSupport::showActive(*desk->window));
        QVERIFY(pressKey(QStringLiteral("ctrl+z")));
        QTRY_COMPARE(read(speed), QVariant(1250LL));
        fileMenu({"e", "a"}, [](QWidget& dialog) { press(dialog, "Revert"); });
        QTRY_COMPARE(read(speed), QVariant(1200LL));
        QCOMPARE(read(maximum), QVariant(125LL));
        QTRY_VERIFY(!desk->window->isWindowModified());
    }

    // What needs a thread says that there is none; what was edited is saved all the same.
    void worksWithoutThreads()
    {
        write(speed, 1250);
        {
            const TestSupport::NoThreads none;
            desk->window->openFiles({folder->path("broken.json")});
            const auto* const notices = desk->part<Vantry::NoticeBar>("noticeBar");
            QTRY_VERIFY(notices->getNotices().join(QLatin1Char(' ')).contains(QLatin1String("thread")));
            fileMenu({"c", "Return"}, [](QWidget& dialog) {
                const auto* const view = dialog.findChild<QPlainTextEdit*>(QStringLiteral("differences"));
                QVERIFY(view->toPlainText().contains(QLatin1String("thread")));
                press(dialog, "Save");
            });
            QTRY_VERIFY(!desk->item(QStringLiteral("plant")).isValid());
        }
        QCOMPARE(contentOf(folder->path("plant.json")), QByteArray(plant).replace("1200", "1250"));
        desk->window->openFiles({folder->path("plant.json")});
        QTRY_VERIFY(desk->item(QStringLiteral("plant")).isValid());
        QCOMPARE(read(speed), QVariant(1250LL));
    }

    void tellsFilesOfOneNameApart()
    {
        QVERIFY(QDir().mkdir(folder->path("spare")));
        const QString other = TestSupport::writeFile(folder->path("spare/plant.json"), plant);
        desk->window->openFiles({other});
        const QString first =
            QFileInfo(folder->path("plant.json")).dir().dirName() + QLatin1String("/plant.json");
        QTRY_COMPARE(desk->window->windowTitle(), first + QLatin1String(", limits.ini, spare/plant.json[*]"));
        QTRY_VERIFY(desk->item(QStringLiteral("plant-2")).isValid());
        auto* const menu = desk->part<QMenu>("closeFile");
        emit menu->aboutToShow();
        QCOMPARE(menu->actions().at(2)->text(), QStringLiteral("spare/plant.json (plant-2)"));
        for (QString tip : {menu->actions().at(2)->toolTip(),
                            desk->item(QStringLiteral("plant-2")).data(Qt::ToolTipRole).toString()})
            QVERIFY2(tip.remove(QChar(0x200B)).contains(other), qPrintable(tip));
        desk->repository->getWriterInterface()->writeAttributeValue(QStringLiteral("plant-2.cell.pump.name"),
                                                                    QStringLiteral("P2"), 8);
        fileMenu({"v", "Return"}); // no question: it is clear which one
        QTRY_COMPARE(contentOf(other), QByteArray(plant).replace("P1", "P2"));
    }

    // A text is read by the rules of the program that is chosen, from the menu or the message that nothing
    // tells what it is.
    void opensAsAChosenType()
    {
        const QString file = TestSupport::writeFile(folder->path("git"), "[s]\n\tk = \"a\" b\n");
        QList<const char*> keys{"p"}; // the dialects are below the formats
        for (std::size_t i = 0; i < Repository::Documents::getDocumentTypes().size(); ++i)
            keys.append("Down");
        fileMenu(keys << "Return", [&file](QWidget& dialog) {
            QVERIFY(dialog.windowTitle().contains(QLatin1String("ini:git")));
            QVERIFY(TestSupport::typeText(file));
            QVERIFY(pressKey(QStringLiteral("Return")));
            QTRY_VERIFY(!dialog.isVisible());
        });
        QTRY_COMPARE(read(QStringLiteral("git.s.k")), QVariant(QStringLiteral("a b")));

        const QString unknown = TestSupport::writeFile(folder->path("words"), "k = 1\nsome words\n");
        desk->window->openFiles({unknown, folder->path("none.ini")});
        auto* const notices = desk->part<Vantry::NoticeBar>("noticeBar");
        QTRY_COMPARE(notices->getNotices().size(), 2);
        auto* const openAs = desk->part<QToolButton>("noticeOpenAs");
        QVERIFY(openAs && openAs->isVisible());
        QVERIFY(TestSupport::showActive(*desk->window));
        const DialogDriver choice([](QWidget& menu) {
            for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return})
                QTest::keyClick(&menu, key);
        });
        QTest::mouseClick(openAs, Qt::LeftButton);
        QTRY_COMPARE(read(QStringLiteral("words.k")), QVariant(1LL));
        QCOMPARE(notices->getNotices().size(), 1);
        QVERIFY(!openAs->isVisible());
    }

    void closesMany()
    {
        QStringList many;
        for (int number = 10; number < 40; ++number)
            many.append(TestSupport::writeFile(
                folder->path("f") + QString::number(number) + QLatin1String(".ini"), "k = 1\n"));
        desk->window->openFiles(many);
        QTRY_VERIFY(desk->item(QStringLiteral("f39.k")).isValid());
        auto* const menu = desk->part<QMenu>("closeFile");
        emit menu->aboutToShow();
        QVERIFY(menu->actions().size() <= 22);
        fileMenu({"c", "h"}, [](QWidget& dialog) {
            QVERIFY(TestSupport::typeText(QStringLiteral("f3")));
            QTRY_COMPARE(dialog.findChild<QLineEdit*>()->text(), QStringLiteral("f3"));
            for (const char* key : {"shift+Down", "Return"})
                QVERIFY(pressKey(QLatin1String(key)));
            QTRY_VERIFY(!dialog.isVisible());
        });
        QTRY_VERIFY(!desk->item(QStringLiteral("f30")).isValid());
        QVERIFY(!desk->item(QStringLiteral("f31")).isValid());
        QVERIFY(desk->item(QStringLiteral("f32")).isValid());
        // A folder takes its files with it.
        QVERIFY(QDir().mkpath(folder->path("d")));
        const QString inFolder = TestSupport::writeFile(folder->path("d/g.ini"), "k = 1\n");
        desk->window->openFiles({folder->path("d")});
        QTRY_VERIFY(desk->item(QStringLiteral("d.g%2Eini.k")).isValid());
        write(QStringLiteral("d.g%2Eini.k"), 7);
        write(speed, 1250);
        write(maximum, 130);
        QVERIFY(TestSupport::showActive(*desk->window)); // again, after the dialog
        const DialogDriver question([](QWidget& dialog) { press(dialog, "Save All"); });
        for (const char* key : {"alt+f", "a"})
            QVERIFY(pressKey(QLatin1String(key)));
        QTRY_VERIFY(question.isDone());
        QTRY_VERIFY(desk->repository->getBackendInterface()->getBackendNames().isEmpty());
        QVERIFY(contentOf(folder->path("limits.ini")).contains("130"));
        QVERIFY(contentOf(folder->path("plant.json")).contains("1250"));
        QCOMPARE(contentOf(inFolder), QByteArray("k = 7\n"));
    }

    void remembersFiles()
    {
        auto* const recent = desk->part<QMenu>("recentFiles");
        const auto entries = [recent] {
            emit recent->aboutToShow();
            QStringList texts;
            const auto actions = recent->actions();
            for (const QAction* action : actions)
                texts.append(action->text().section(QLatin1Char('/'), -1) +
                             (action->isEnabled() ? QString() : QStringLiteral("!")));
            return texts;
        };
        QCOMPARE(entries(), (QStringList{QStringLiteral("limits.ini"), QStringLiteral("plant.json"),
                                         QString(), QStringLiteral("&Clear This List")}));
        fileMenu({"c", "Return"});
        QTRY_VERIFY(!desk->item(QStringLiteral("plant")).isValid());
        QTRY_COMPARE(desk->window->windowTitle(), QStringLiteral("limits.ini[*]"));
        fileMenu({"r", "2"});
        QTRY_VERIFY(desk->item(QStringLiteral("plant.cell")).isValid());
        QVERIFY(QFile::remove(folder->path("limits.ini")));
        QCOMPARE(entries().mid(0, 2),
                 (QStringList{QStringLiteral("plant.json"), QStringLiteral("limits.ini (missing)!")}));
        fileMenu({"r", "c"});
        QTRY_COMPARE(entries(), QStringList(QStringLiteral("None yet!")));
    }
};

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk-test"));
    return TestSupport::runTest<QApplication, DeskFilesTest>(argc, argv);
}

#include "desk_files_test.moc"
