#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "tests/desk/RunningDesk.h"
#include "tests/support/RealInput.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QScreen>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <cstdio>
#include <cstdlib>

// guide_pictures EXAMPLES FOLDER: works at the desk with copies of the example's files as the guide tells it,
// and draws what is seen into FOLDER. Ends with 1 where something that the guide names is not there.

namespace {

using TestSupport::RunningDesk;

const char* const files[] = {"bench.json", "limits.ini", "notes.txt", "recipe.xml"};

[[noreturn]] void giveUp(const QString& missing)
{
    std::fprintf(stderr,
                 "guide_pictures: there is no %s; the guide and this program must follow the window\n",
                 qPrintable(missing));
    std::exit(1);
}

QString plain(QString text)
{
    return text.remove(QLatin1Char('&')).section(QLatin1Char('\t'), 0, 0);
}

class Guide
{
public:
    Guide(const QString& examples, QString pictureFolder) : pictures(std::move(pictureFolder))
    {
        QDir scratch(QDir::temp().filePath(QStringLiteral("bench"))); // a name that is seen in the pictures
        scratch.removeRecursively();
        scratch.mkpath(QStringLiteral("."));
        for (const char* name : files) {
            const QString copy = scratch.filePath(QLatin1String(name));
            if (!QFile::copy(QDir(examples).filePath(QLatin1String(name)), copy))
                giveUp(QDir(examples).filePath(QLatin1String(name)));
            copies.append(copy);
        }
    }

    void draw()
    {
        open({});
        save("start");
        press(QStringLiteral("Open the Example"));
        settle();

        open(copies);
        showTree();
        search();
        find();
        editAndReview();
        press(QStringLiteral("Backends"));
        save("backends");
    }

private:
    void open(const QStringList& names)
    {
        desk.reset();
        desk = std::make_unique<RunningDesk>(folder, names);
        desk->window->move(0, 0);
        if (!TestSupport::showActive(*desk->window))
            giveUp(QStringLiteral("window that is shown"));
        settle();
    }

    // Until models and views have followed.
    static void settle() { QTest::qWait(600); }

    void save(const char* name)
    {
        settle();
        const QRect frame = desk->window->frameGeometry();
        const QPixmap picture =
            desk->window->screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height());
        const QString file = QDir(pictures).filePath(QLatin1String(name) + QStringLiteral(".png"));
        if (!picture.save(file))
            giveUp(QStringLiteral("way to write %1").arg(file));
    }

    void press(const QString& text)
    {
        const auto buttons = desk->window->findChildren<QAbstractButton*>();
        for (QAbstractButton* button : buttons) {
            if (button->isVisible() && plain(button->text()) == text)
                return QTest::mouseClick(button, Qt::LeftButton);
        }
        giveUp(QStringLiteral("button '%1'").arg(text));
    }

    void choose(const QString& menu, const QString& entry)
    {
        for (const QAction* opened : desk->window->menuBar()->actions()) {
            for (QAction* action :
                 plain(opened->text()) == menu ? opened->menu()->actions() : QList<QAction*>()) {
                if (plain(action->text()).startsWith(entry))
                    return action->trigger();
            }
        }
        giveUp(QStringLiteral("entry '%1' in the menu '%2'").arg(entry, menu));
    }

    QModelIndex item(const QString& path)
    {
        const QModelIndex found = desk->item(path);
        if (!found.isValid())
            giveUp(QStringLiteral("attribute '%1'").arg(path));
        return found;
    }

    void expand(const QString& path)
    {
        const QStringList names = path.split(QLatin1Char('.'));
        for (int count = 1; count <= names.size(); ++count) {
            desk->tree->expand(item(QStringList(names.mid(0, count)).join(QLatin1Char('.'))));
            settle();
        }
    }

    void click(const QString& path)
    {
        const QModelIndex clicked = item(path);
        desk->tree->scrollTo(clicked);
        QTest::mouseClick(desk->tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                          desk->tree->visualRect(clicked).center());
    }

    // Draws the menu that a right click opens.
    void saveMenu(const QString& path, const char* name)
    {
        QTimer::singleShot(1000, [this, name] {
            QWidget* const menu = QApplication::activePopupWidget();
            if (!menu)
                giveUp(QStringLiteral("menu of an attribute"));
            save(name);
            menu->close();
        });
        const QPoint place = desk->tree->visualRect(item(path)).center();
        if (!TestSupport::click(*desk->tree->viewport(), place, Qt::RightButton))
            giveUp(QStringLiteral("way to click"));
        QTest::qWait(3000);
    }

    void showTree()
    {
        expand(QStringLiteral("bench.stations.left.supply"));
        auto* const table = desk->part<QTableView>("appConfigDataAccessWidget");
        auto* const monitor =
            table ? qobject_cast<Utilities::ModelViews::AdvancedAttributeModel*>(table->model()) : nullptr;
        if (!monitor)
            giveUp(QStringLiteral("monitor"));
        const QString supply = QStringLiteral("bench.stations.left.supply.");
        monitor->loadCustomAttributeList({supply + QLatin1String("model"), supply + QLatin1String("port"),
                                          supply + QLatin1String("voltage"),
                                          QStringLiteral("limits.oven.setpoint_max")});
        click(QStringLiteral("bench.stations.left.calibration"));
        save("tree");
        saveMenu(QStringLiteral("bench.stations.left.supply"), "menu");
    }

    void search()
    {
        auto* const field = desk->part<QLineEdit>("edtSearchPath");
        if (!field)
            giveUp(QStringLiteral("search field"));
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, QStringLiteral("bench.st"));
        save("search");
        QTest::keyClick(field, Qt::Key_Escape);
        field->selectAll();
        QTest::keyClicks(field, QStringLiteral("*.voltage"));
        QTest::keyClick(field, Qt::Key_Escape);
        press(QStringLiteral("Read all attributes"));
        save("pattern");
        field->setText(QStringLiteral("*"));
        press(QStringLiteral("Read all attributes"));
        settle();
    }

    void find()
    {
        choose(QStringLiteral("Edit"), QStringLiteral("Find..."));
        settle();
        auto* const text = desk->part<QComboBox>("findText");
        if (!text)
            giveUp(QStringLiteral("field for what is to be found"));
        QTest::keyClicks(text->lineEdit(), QStringLiteral("10000"));
        save("find");
        choose(QStringLiteral("View"), QStringLiteral("Find"));
    }

    void editAndReview()
    {
        click(QStringLiteral("bench.stations.left.supply.voltage"));
        QTest::keyClick(desk->tree, Qt::Key_F2);
        settle();
        auto* const editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
        if (!editor)
            giveUp(QStringLiteral("editor in the cell"));
        editor->selectAll();
        QTest::keyClicks(editor, QStringLiteral("twelve"));
        QTest::keyClick(editor, Qt::Key_Return);
        save("refused");
        desk->repository->getWriterInterface()->writeAttributeValue(
            QStringLiteral("bench.stations.left.supply.voltage"), 12.5, 15);
        desk->repository->getWriterInterface()->writeAttributeValue(
            QStringLiteral("limits.oven.setpoint_max"), 130, 15);
        choose(QStringLiteral("View"), QStringLiteral("Changes"));
        save("changes");
        choose(QStringLiteral("View"), QStringLiteral("Changes"));
    }

    RunningDesk::Folder folder; // what the desk remembers
    QStringList copies;
    QString pictures;
    std::unique_ptr<RunningDesk> desk;
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk"));
    QCoreApplication::setAttribute(Qt::AA_ForceRasterWidgets);
    const QApplication application(argc, argv);
    if (argc != 3) {
        std::fputs("Usage: guide_pictures EXAMPLES FOLDER\n", stderr);
        return 2;
    }
    Guide(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2])).draw();
    return 0;
}
