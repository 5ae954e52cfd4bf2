#include "desk/plugins/PluginDock.h"
#include "host/Utilities/ModelViews/AdvancedAttributeModel.h"
#include "host/Utilities/ModelViews/Widgets/AttributeTreeModelInputDialogs.h"
#include "tests/desk/RunningDesk.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/RealInput.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRun.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QHelpEvent>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTableView>
#include <QTextBrowser>
#include <QTextDocument>
#include <QToolTip>
#include <QTreeView>
#include <QTreeWidget>

#include <fcntl.h>
#include <optional>
#include <sys/inotify.h>
#include <unistd.h>

using TestSupport::contentOf;
using TestSupport::DialogDriver;
using TestSupport::RunningDesk;
using Utilities::ModelViews::AdvancedAttributeModel;
using Utilities::ModelViews::Widgets::AttributeTreeModelInputDialogs;

namespace {

// Sees who opens a file, as one does who shows the picture that a text names.
class OpeningWatch
{
public:
    explicit OpeningWatch(const QString& file) : handle(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        if (::inotify_add_watch(handle, QFile::encodeName(file).constData(), IN_OPEN) < 0)
            qFatal("%s cannot be watched", qPrintable(file));
    }
    ~OpeningWatch() { ::close(handle); }
    Q_DISABLE_COPY(OpeningWatch)

    bool wasOpened() const
    {
        char events[4096];
        return ::read(handle, events, sizeof events) > 0;
    }

private:
    const int handle;
};

// What a person reads where Qt shows the text.
QString readText(const QString& text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText().remove(QChar(0x200B));
}

// The tool tip that comes when the mouse rests there, drawn.
QString tipAt(QWidget& widget, const QPoint& place)
{
    QToolTip::hideText();
    QHelpEvent event(QEvent::ToolTip, place, widget.mapToGlobal(place));
    QCoreApplication::sendEvent(&widget, &event);
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (window->inherits("QTipLabel"))
            window->grab();
    }
    const QString text = QToolTip::isVisible() ? readText(QToolTip::text()) : QString();
    QToolTip::hideText();
    return text;
}

QString tipOf(const QAbstractItemView& view, const QModelIndex& cell)
{
    const_cast<QAbstractItemView&>(view).scrollTo(cell);
    return tipAt(*view.viewport(), view.visualRect(cell).center());
}

} // namespace

// A file whose name, keys and values look like markup is shown as it is, everywhere, and what they name is
// never opened.
class DeskPlainTextsTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        work = std::make_unique<QTemporaryDir>();
        QDir::setCurrent(work->path());
        QImage picture(8, 8, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QVERIFY(picture.save(work->filePath(QStringLiteral("picture")), "PNG"));
        image = QStringLiteral("<img src=%1>").arg(work->filePath(QStringLiteral("picture")));
        file = work->filePath(QStringLiteral("<img src=picture>&amp;[*].json"));
        TestSupport::writeFile(file, fileWith(image));
        folder = std::make_unique<RunningDesk::Folder>();
        desk = std::make_unique<RunningDesk>(*folder, QStringList(file));
        watch = std::make_unique<OpeningWatch>(work->filePath(QStringLiteral("picture")));
        QVERIFY(TestSupport::showActive(*desk->window));
        QTRY_VERIFY(desk->item(mount).isValid());
        desk->tree->expand(desk->item(mount));
    }

    void cleanup()
    {
        looksPlain(*desk->window);
        QVERIFY(!watch->wasOpened());
        desk.reset();
        folder.reset();
        QDir::setCurrent(QStringLiteral("/"));
        work.reset();
    }

    void inTheTree()
    {
        for (const QString& key : keys()) {
            QTRY_VERIFY2(desk->item(pathOf(key)).isValid(), qPrintable(key)); // it may be read anew
            const QModelIndex name = desk->item(pathOf(key));
            for (const QModelIndex& cell : {name, name.siblingAtColumn(1)}) {
                const QString tip = tipOf(*desk->tree, cell);
                QVERIFY2(tip.startsWith(pathOf(key) + QLatin1Char('\n')), qPrintable(tip));
            }
            desk->tree->scrollTo(name);
            QTest::mouseClick(desk->tree->viewport(), Qt::LeftButton, Qt::NoModifier,
                              desk->tree->visualRect(name).center());
            auto* const details = desk->part<QTextBrowser>("txtAttributeDetails");
            const QString shown = details->toPlainText();
            QVERIFY2(shown.startsWith(QLatin1String("Name : ") + nameOf(key) + QLatin1Char('\n')),
                     qPrintable(shown));
            QVERIFY(shown.contains(QLatin1String("Value : ") + key));
            details->grab();
        }
        const QString root = tipOf(*desk->tree, desk->item(mount));
        QVERIFY2(root.contains(QLatin1String("backend: ") + mount), qPrintable(root));
    }

    void inTheMonitor()
    {
        auto* const monitor = desk->part<QTableView>("appConfigDataAccessWidget");
        qobject_cast<AdvancedAttributeModel*>(monitor->model())
            ->loadCustomAttributeList({pathOf(image), pathOf(QStringLiteral("missing ") + image)});
        for (int row = 0; row < 2; ++row) {
            for (int column = 0; column < monitor->model()->columnCount(); ++column) {
                const QModelIndex cell = monitor->model()->index(row, column);
                const QString tip = tipOf(*monitor, cell);
                QVERIFY2(tip.contains(image) || cell.data().toString().isEmpty(), qPrintable(tip));
            }
        }
        monitor->grab();
    }

    void inProposalsAndFilters()
    {
        auto* const search = desk->part<QLineEdit>("edtSearchPath");
        search->setFocus();
        search->selectAll();
        QVERIFY(TestSupport::typeText(QStringLiteral("<i")));
        QTRY_VERIFY(QApplication::activePopupWidget() || proposals());
        QTRY_VERIFY(proposals() && proposals()->model()->rowCount() > 0);
        const QModelIndex first = proposals()->model()->index(0, 0);
        QCOMPARE(tipOf(*proposals(), first), first.data().toString());
        proposals()->grab();
        QTest::keyClick(search, Qt::Key_Escape);
        QTest::mouseClick(desk->part<QPushButton>("btnReadAttribute"), Qt::LeftButton);
        for (const char* const name : {"cbFilter1", "cbFilter2"}) {
            auto* const box = desk->part<QComboBox>(name);
            for (int row = 0; row < box->count(); ++row)
                tipOf(*box->view(), box->model()->index(row, 0));
            box->grab();
        }
    }

    void inTheFailureAndTheLog()
    {
        QVERIFY(!desk->repository->getBackendInterface()->createBackend(image, image, {}, 2));
        auto* const hint = desk->part<QWidget>("failureHint");
        QTRY_VERIFY(hint->isVisible());
        const QString tip = tipAt(*hint, hint->rect().center());
        QVERIFY2(tip.contains(image), qPrintable(tip));
        hint->grab();
        QVERIFY(TestSupport::pressKey(QStringLiteral("F8")));
        QTRY_VERIFY(desk->part<QAbstractItemView>("logLines"));
        auto* const lines = desk->part<QAbstractItemView>("logLines");
        QTRY_VERIFY(lines->isVisible() && lines->model()->rowCount() > 0);
        const QModelIndex last = lines->model()->index(lines->model()->rowCount() - 1, 3);
        QTRY_VERIFY2(tipOf(*lines, last).contains(image), qPrintable(tipOf(*lines, last)));
    }

    void inThePluginsAndTheNotices()
    {
        auto* const dock = desk->part<Vantry::PluginDock>("pluginDock");
        dock->showFindings({{image + QLatin1String(".so"), image + QLatin1String(" is refused")}});
        auto* const rows = desk->part<QTreeWidget>("pluginRows");
        QTRY_VERIFY(rows->isVisible());
        QCOMPARE(tipOf(*rows, rows->model()->index(0, 0)), image + QLatin1String(".so"));
        QCOMPARE(tipOf(*rows, rows->model()->index(0, 1)), image + QLatin1String(" is refused"));
        desk->window->openFiles({QStringLiteral("<img src=picture>")});
        const auto notice = [this] {
            const auto* const label = desk->part<QLabel>("noticeText");
            return label ? label->text() : QString();
        };
        QTRY_VERIFY(notice().startsWith(QLatin1String("<img src=picture>")));
        desk->window->grab();
    }

    // No letter of a name is a key, and none is hidden.
    void inMenusAndTitles()
    {
        QTRY_VERIFY(desk->window->windowTitle().contains(QLatin1String("&amp;[*][*].json[*]")));
        write(QStringLiteral("other"));
        const QString shown = QStringLiteral("<img src=picture>&amp;[*].json (%1)").arg(mount);
        for (const char* const name : {"saveFile", "revertFile", "closeFile", "recentFiles"}) {
            auto* const menu = desk->part<QMenu>(name);
            emit menu->aboutToShow();
            const QString text = menu->actions().first()->text();
            QVERIFY2(text.contains(QLatin1String("&&amp;[*].json")), qPrintable(text));
            if (qstrcmp(name, "recentFiles") != 0)
                QCOMPARE(QString(text).replace(QLatin1String("&&"), QLatin1String("&")), shown);
            menu->grab();
        }
        emit desk->window->menuBar()->actions().at(1)->menu()->aboutToShow();
        const QString undo = desk->part<QAction>("undo")->text();
        QVERIFY2(undo.contains(QLatin1String("<img src")) || undo.contains(QLatin1String("...")),
                 qPrintable(undo));
    }

    void inQuestionsAboutFiles()
    {
        write(QStringLiteral("other"));
        const auto closes = [this](QWidget& box) {
            looksPlain(box);
            QVERIFY(labelsOf(box).contains(QLatin1String("<img src=picture>&amp;[*].json")));
            QTest::keyClick(&box, Qt::Key_Escape);
        };
        for (const char* const name : {"revertFile", "closeFile"}) {
            auto* const menu = desk->part<QMenu>(name);
            emit menu->aboutToShow();
            const DialogDriver driver(closes);
            menu->actions().first()->trigger();
        }
        TestSupport::writeFile(file, fileWith(QStringLiteral("theirs")));
        QVERIFY(TestSupport::showActive(*desk->window)); // again, after dialogs
        const DialogDriver driver([&](QWidget& box) {
            const auto* const rows = box.findChild<QTreeWidget*>(QStringLiteral("conflictRows"));
            QCOMPARE(tipOf(*rows, rows->model()->index(0, 0)), pathOf(image));
            QCOMPARE(tipOf(*rows, rows->model()->index(0, 1)), QStringLiteral("other"));
            closes(box);
        });
        QVERIFY(TestSupport::pressKey(QStringLiteral("ctrl+s")));
        QTRY_VERIFY(driver.isDone());
    }

    void inDialogs()
    {
        const AttributeTreeModelInputDialogs dialogs(desk->window);
        const auto during = [this](const std::function<void()>& ask) {
            const DialogDriver driver([this](QWidget& dialog) {
                looksPlain(dialog);
                dialog.grab();
                QTest::keyClick(&dialog, Qt::Key_Escape);
            });
            ask();
        };
        during([&] { dialogs.showConfirmationDialog(tr("Delete?"), pathOf(image)); });
        during([&] { dialogs.showConfirmationDialog(image, {}); });
        during([&] { AttributeTreeModelInputDialogs::ShowWarningMessage(desk->window, image, image); });
        bool isAccepted = false;
        during([&] { dialogs.showSingleTextDialog({}, tr("Name"), image, isAccepted); });
        QString name = image;
        during([&] { dialogs.showAttributePasteDialog({}, tr("Name"), name, isAccepted); });
        QVariant value;
        int type = QMetaType::UnknownType;
        during([&] { dialogs.showAttributeCreateDialog(name, value, type); });
    }

    // The question whether a file shall be overwritten is Qt's own.
    void inTheFileDialog()
    {
        const AttributeTreeModelInputDialogs dialogs(desk->window);
        std::optional<DialogDriver> question;
        const DialogDriver driver([&](QWidget& chooser) {
            auto* const name = chooser.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
            name->setText(file);
            question.emplace([this](QWidget& box) {
                QVERIFY(labelsOf(box).contains(QLatin1String("<img src=picture>")));
                looksPlain(box);
                box.grab();
                QTest::keyClick(&box, Qt::Key_Escape);
            });
            QTest::keyClick(name, Qt::Key_Return);
            QTRY_VERIFY(question->isDone());
            const auto views = chooser.findChildren<QAbstractItemView*>();
            for (const QAbstractItemView* const view : views) {
                for (int row = 0; view->isVisible() && row < view->model()->rowCount(view->rootIndex());
                     ++row)
                    tipOf(*view, view->model()->index(row, 0, view->rootIndex()));
            }
            QTest::keyClick(&chooser, Qt::Key_Escape);
        });
        QCOMPARE(dialogs.showSaveAsDialog({}, file, tr("Json File(*.json)")), QString());
    }

private:
    QStringList keys() const
    {
        return {image, QStringLiteral("<b>x</b>"), QStringLiteral("&amp;"),
                QStringLiteral("&lt;i&gt; & <br>")};
    }

    // Each key holds itself; the first one holds what is given.
    QByteArray fileWith(const QString& value) const
    {
        QJsonObject object;
        for (const QString& key : keys())
            object.insert(key, key == image ? value : key);
        return QJsonDocument(object).toJson();
    }

    // A name of the tree holds no semicolon.
    static QString nameOf(QString key) { return key.replace(QLatin1Char(';'), QLatin1String("%3B")); }

    QString pathOf(const QString& key) const { return mount + QLatin1Char('.') + nameOf(key); }

    void write(const QString& value)
    {
        QCOMPARE(desk->repository->getWriterInterface()->writeAttributeValue(pathOf(image), value, 15), 0);
        QTRY_VERIFY(desk->window->isWindowModified());
    }

    static QAbstractItemView* proposals()
    {
        for (QWidget* const window : QApplication::topLevelWidgets()) {
            auto* const view = qobject_cast<QAbstractItemView*>(window);
            if (view && view->isVisible())
                return view;
        }
        return nullptr;
    }

    static QString labelsOf(const QWidget& window)
    {
        QString texts;
        for (const QLabel* const label : window.findChildren<QLabel*>())
            texts += label->text().remove(QChar(0x200B)) + QLatin1Char('\n');
        return texts;
    }

    // No label and no tool tip takes a text for markup that the sources have not written.
    void looksPlain(QWidget& window)
    {
        const auto isMarkup = [](const QString& text) {
            return Qt::mightBeRichText(text) && !text.startsWith(QLatin1String("<p style=\"white-space:"));
        };
        const auto widgets = window.findChildren<QWidget*>();
        for (QWidget* const widget : widgets) {
            const auto* const label = qobject_cast<QLabel*>(widget);
            const QString text = label && label->textFormat() != Qt::PlainText ? label->text() : QString();
            QVERIFY2(!isMarkup(text), qPrintable(text));
            QVERIFY2(!isMarkup(widget->toolTip()), qPrintable(widget->toolTip()));
        }
        window.grab();
    }

    const QString mount = QStringLiteral("<img src=picture>&amp-[-]");
    std::unique_ptr<QTemporaryDir> work;
    QString image;
    QString file;
    std::unique_ptr<RunningDesk::Folder> folder;
    std::unique_ptr<RunningDesk> desk;
    std::unique_ptr<OpeningWatch> watch;
};

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // those of a desktop take no events from a test
    return TestSupport::runTest<QApplication, DeskPlainTextsTest>(argc, argv);
}

#include "desk_plain_texts_test.moc"
