#include "tests/desk/RunningDesk.h"
#include "tests/support/TestRun.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTextBrowser>
#include <QTreeView>

using TestSupport::RunningDesk;

namespace {

QImage pictureOf(QWidget& widget)
{
    return widget.grab().toImage();
}

// From 0 for black to 255 for white.
int lightness(const QImage& picture)
{
    qint64 sum = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            sum += qGray(picture.pixel(x, y));
    }
    return int(sum / std::max(1, picture.width() * picture.height()));
}

// As programs make one: only the colours that are told apart by name, none of the shades between.
QPalette darkPalette()
{
    QPalette palette;
    for (const auto role : {QPalette::Window, QPalette::Button, QPalette::AlternateBase})
        palette.setColor(role, QColor(53, 53, 53));
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(role, QColor(230, 230, 230));
    palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
    return palette;
}

} // namespace

// What is seen of the desk, in pixels.
class DeskLookTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        folder = std::make_unique<RunningDesk::Folder>();
        desk = std::make_unique<RunningDesk>(*folder, QStringList(folder->path("plant.json")));
        desk->window->show();
        QTRY_VERIFY(desk->item(QStringLiteral("plant.cell")).isValid());
    }

    void cleanup()
    {
        desk.reset();
        folder.reset();
    }

    void marksTheShownPage()
    {
        QCOMPARE(markedButtons(), QStringList(QStringLiteral("btnAttributes")));
        // Whoever writes it; unknown pages have no button.
        const auto writer = desk->repository->getWriterInterface();
        const auto write = [&writer](const char* page) {
            return writer->writeAttributeValue(QStringLiteral("desk.instances.Vantry.state"),
                                               QString::fromLatin1(page), 1);
        };
        QCOMPARE(write("tests"), 0);
        QTRY_COMPARE(markedButtons(), QStringList(QStringLiteral("btnTests")));
        QCOMPARE(write("nothing"), 0);
        QTRY_COMPARE(markedButtons(), QStringList());
        QCOMPARE(write(""), 0);
        QTRY_COMPARE(desk->shownPage(), QStringLiteral("pageUnknown"));
        QCOMPARE(markedButtons(), QStringList());
    }

    void turnsDarkWithThePalette()
    {
        const QPalette light = QApplication::palette();
        const QList<QWidget*> parts{desk->window, desk->part<QWidget>("navigationArea"),
                                    desk->tree->viewport(),
                                    desk->part<QTextBrowser>("txtAttributeDetails")->viewport()};
        const auto areDark = [&parts](bool expected) {
            return std::all_of(parts.begin(), parts.end(), [expected](QWidget* part) {
                return (lightness(pictureOf(*part)) < 100) == expected;
            });
        };
        QVERIFY(areDark(false));
        QApplication::setPalette(darkPalette());
        const bool isDark = QTest::qWaitFor([&] { return areDark(true); });
        QApplication::setPalette(light);
        QVERIFY(isDark);
        QTRY_VERIFY(areDark(false));
    }

    void leavesTheWorkAreaItsPlaceBelowManyNotices()
    {
        QStringList missing;
        for (int i = 0; i < 200; ++i)
            missing.append(folder->path("missing") + QString::number(i));
        desk->window->openFiles(missing);
        auto* const bar = desk->part<QWidget>("noticeBar");
        QTRY_VERIFY(bar->isVisible());
        QVERIFY(desk->part<QLabel>("noticeText")->text().contains(missing.last()));
        QCoreApplication::processEvents(); // the layout follows
        QVERIFY(bar->height() < desk->window->height() / 3);
        QVERIFY(desk->part<QWidget>("workArea")->height() > desk->window->height() / 2);

        // The same again tells nothing new.
        const QString told = desk->part<QLabel>("noticeText")->text();
        desk->window->openFiles({missing.first(), folder->path("limits.ini")});
        QTRY_VERIFY(desk->item(QStringLiteral("limits.oven")).isValid());
        QCOMPARE(desk->part<QLabel>("noticeText")->text(), told);
    }

    // As high as it must be at each width, also while docks come and go.
    void showsAllOfANotice()
    {
        desk->window->openFiles(
            {folder->path("a file with a long name that is not there and breaks a line")});
        QTRY_VERIFY(desk->part<QWidget>("noticeBar")->isVisible());
        const auto* const text = desk->part<QLabel>("noticeText");
        for (int width = 760; width < 1160; width += 25) {
            for (const bool isShown : {true, false}) {
                desk->window->resize(width, 600);
                desk->part<QWidget>("textDock")->setVisible(isShown);
                const auto isFit = [text] {
                    return text->height() == text->heightForWidth(text->width()) &&
                           text->parentWidget()->size() == text->size();
                };
                QVERIFY2(
                    QTest::qWaitFor(isFit, 1000),
                    qPrintable(
                        QStringLiteral("%1 x %2 at %3").arg(text->width()).arg(text->height()).arg(width)));
            }
        }
    }

    // The platform of this test has a theme that names no key for it.
    void quitsByKey()
    {
        QVERIFY(QKeySequence::keyBindings(QKeySequence::Quit).isEmpty());
        QVERIFY(QTest::qWaitForWindowActive(desk->window));
        QTest::keyClick(desk->window, Qt::Key_Q, Qt::ControlModifier);
        QTRY_VERIFY(!desk->window->isVisible());
    }

private:
    // Those with the bar of the highlight's colour at their left.
    QStringList markedButtons() const
    {
        QStringList marked;
        for (const char* name : {"btnAttributes", "btnBackends", "btnTests"}) {
            QPushButton& button = *desk->navigationButton(name);
            button.clearFocus(); // whose frame has that colour too
            const QImage picture = pictureOf(button);
            const QColor highlight = button.palette().color(QPalette::Highlight);
            const auto isBar = [&](int x) {
                return picture.pixelColor(x, picture.height() / 2) == highlight;
            };
            if (isBar(0) && isBar(1) && isBar(2))
                marked.append(button.objectName());
        }
        return marked;
    }

    std::unique_ptr<RunningDesk::Folder> folder;
    std::unique_ptr<RunningDesk> desk;
};

int main(int argc, char** argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk-test"));
    return TestSupport::runTest<QApplication, DeskLookTest>(argc, argv);
}

#include "desk_look_test.moc"
