#include "desk/window/ColourScheme.h"
#include "tests/desk/DeskTest.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QDockWidget>
#include <QHeaderView>
#include <QMap>
#include <QProcess>

using TestSupport::DialogDriver;
using TestSupport::pressKey;
using TestSupport::RunningDesk;

namespace {

enum Scheme : uint { NoPreference, PreferDark, PreferLight };

using Pictures = QMap<QString, QImage>;

// From 0 for black to 255 for white.
int lightness(const QImage& picture)
{
    return qGray(picture.scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).pixel(0, 0));
}

QImage pictureOf(QWidget& widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

} // namespace

// The portal of a desktop, as far as it tells the colour scheme.
class Portal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    void prefer(Scheme scheme)
    {
        preferred = scheme;
        emit SettingChanged(group, key, QDBusVariant(uint(scheme)));
    }
    void tellOther() { emit SettingChanged(group, QStringLiteral("contrast"), QDBusVariant(1u)); }

public slots:
    QDBusVariant Read(const QString& readGroup, const QString& readKey) const
    {
        const bool isScheme = readGroup == group && readKey == key;
        return QDBusVariant(QVariant::fromValue(QDBusVariant(isScheme ? uint(preferred) : 9u)));
    }

signals:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    const QString group = QStringLiteral("org.freedesktop.appearance");
    const QString key = QStringLiteral("color-scheme");
    Scheme preferred = NoPreference;
};

// The desk on a desktop that turns dark and light while it runs.
class DeskThemeTest : public TestSupport::DeskTest
{
    Q_OBJECT

    bool isDark() const { return lightness(pictureOf(*desk->tree->viewport())) < 100; }

    void prefer(Scheme scheme)
    {
        portal.prefer(scheme);
        QTRY_COMPARE(isDark(), scheme == PreferDark);
        QCoreApplication::processEvents();
    }

    // With something in each dock.
    void startWithDocks()
    {
        desk.reset();
        desk = std::make_unique<RunningDesk>(
            *folder, QStringList{folder->path("plant.json"), folder->path("limits.ini")});
        QVERIFY(TestSupport::showActive(*desk->window));
        QTRY_VERIFY(desk->item(sense).isValid());
        QVERIFY(pressKey(QStringLiteral("F8")));
        QTRY_VERIFY(desk->part<QAbstractButton>("logClear"));
        QTRY_VERIFY(desk->part<QTreeView>("logLines")->model()->rowCount() > 0);
        desk->part<QAbstractButton>("logClear")->click(); // of those before
        write(speed, 1250);
        write(sense, QString(20000, QLatin1Char('s'))); // whose details have links
        desk->repository->getWriterInterface()->writeAttributeValue(speed, QStringLiteral("fast"), 8);
        desk->tree->setCurrentIndex(desk->item(sense));
        for (const char* const key : {"F7", "ctrl+u", "ctrl+f"})
            QVERIFY(pressKey(QLatin1String(key)));
        QTRY_VERIFY(desk->part<QDockWidget>("findDock")->isAncestorOf(QApplication::focusWidget()));
        QVERIFY(TestSupport::typeText(QStringLiteral("s")));
        QTRY_VERIFY(desk->part<QTreeView>("findHits")->model()->rowCount() > 1);
        QTRY_VERIFY(desk->part<QTreeView>("changeRows")->model()->rowCount() > 0);
        QTRY_VERIFY(desk->part<QTreeView>("textRows")->model()->rowCount() > 0);
        QTRY_VERIFY(desk->part<QTreeView>("logLines")->model()->rowCount() > 0);
        desk->part<QTreeView>("logLines")->setColumnHidden(0, true); // the time
        desk->tree->setFocus();
    }

    // Once nothing fades in any more.
    Pictures picturesOfParts()
    {
        Pictures pictures;
        Pictures before;
        const bool isStill = QTest::qWaitFor([&] {
            before = pictures;
            pictures = grabParts();
            return pictures == before;
        });
        return isStill ? pictures : Pictures();
    }

    Pictures grabParts()
    {
        Pictures pictures;
        const auto docks = desk->window->findChildren<QDockWidget*>();
        for (QDockWidget* dock : docks)
            pictures.insert(dock->objectName(), pictureOf(*dock));
        for (const char* const name : {"navigationArea", "workArea", "menuBar", "failureHint"}) {
            if (auto* const part = desk->part<QWidget>(name))
                pictures.insert(QLatin1String(name), pictureOf(*part));
        }
        pictures.insert(QStringLiteral("menuBar"), pictureOf(*desk->window->menuBar()));
        return pictures;
    }

    // Of the dialogs that the actions open, which the scheme turns to while they are open.
    Pictures picturesOfDialogs(Scheme scheme)
    {
        Pictures pictures;
        for (const char* const name : {"showKeys", "renameNode", "changeType", "openStore"}) {
            const DialogDriver driver([&](QWidget& dialog) {
                portal.prefer(scheme);
                QTRY_COMPARE(isDark(), scheme == PreferDark);
                QCoreApplication::processEvents();
                pictures.insert(QLatin1String(name), pictureOf(dialog));
                QTest::keyClick(&dialog, Qt::Key_Escape);
            });
            desk->part<QAction>(name)->trigger();
        }
        return pictures;
    }

    static QStringList differences(const Pictures& pictures, const Pictures& expected)
    {
        QStringList names;
        for (auto picture = expected.begin(); picture != expected.end(); ++picture) {
            if (pictures.value(picture.key()) == *picture)
                continue;
            names.append(picture.key());
            if (qEnvironmentVariableIsSet("VANTRY_PICTURES")) {
                const QString file =
                    qEnvironmentVariable("VANTRY_PICTURES") + QLatin1Char('/') + picture.key();
                picture->save(file + QStringLiteral("-expected.png"));
                pictures.value(picture.key()).save(file + QStringLiteral("-found.png"));
            }
        }
        return names;
    }

public slots:
    void noteChange() { isTold = true; }

private slots:
    void init()
    {
        auto bus = QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                                 QStringLiteral("portal"));
        QVERIFY(bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), &portal,
                                   QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
        QVERIFY(bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
        portal.prefer(NoPreference);
        open();
    }

    void cleanup()
    {
        close();
        QApplication::setPalette(QPalette());
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
    }

    void followsTheDesktop()
    {
        portal.prefer(PreferDark);
        const Vantry::ColourScheme colours;
        QTRY_VERIFY(isDark());
        prefer(PreferLight);
        prefer(PreferDark);
        portal.tellOther();
        prefer(NoPreference);
    }

    void leavesChosenColours()
    {
        isTold = false;
        QVERIFY(QDBusConnection::sessionBus().connect({}, QStringLiteral("/org/freedesktop/portal/desktop"),
                                                      QStringLiteral("org.freedesktop.portal.Settings"),
                                                      QStringLiteral("SettingChanged"), this,
                                                      SLOT(noteChange())));
        QPalette own;
        own.setColor(QPalette::Base, QColor(255, 250, 200));
        QApplication::setPalette(own);
        const Vantry::ColourScheme colours;
        portal.prefer(PreferDark);
        QTRY_VERIFY(isTold);
        QCOMPARE(QApplication::palette().color(QPalette::Base), QColor(255, 250, 200));
    }

    void keepsNoOldColour_data()
    {
        QTest::addColumn<uint>("before");
        QTest::addColumn<uint>("after");
        QTest::newRow("dark") << uint(NoPreference) << uint(PreferDark);
        QTest::newRow("light") << uint(PreferDark) << uint(NoPreference);
    }

    // What has turned looks as what has had the colours from the start.
    void keepsNoOldColour()
    {
        QFETCH(uint, before);
        QFETCH(uint, after);
        const Vantry::ColourScheme colours;
        startWithDocks(); // the places of docks are remembered
        prefer(Scheme(after));
        startWithDocks();
        const Pictures expected = picturesOfParts();
        const Pictures expectedDialogs = picturesOfDialogs(Scheme(after));

        prefer(Scheme(before));
        startWithDocks();
        prefer(Scheme(after));
        QCOMPARE(differences(picturesOfParts(), expected), QStringList());
        prefer(Scheme(before));
        QCOMPARE(differences(picturesOfDialogs(Scheme(after)), expectedDialogs), QStringList());
    }

private:
    Portal portal;
    bool isTold = false; // of a change, over the bus
};

int main(int argc, char** argv)
{
    QProcess bus;
    bus.start(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    bus.waitForReadyRead();
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
    QCoreApplication::setOrganizationName(QStringLiteral("Vantry"));
    QCoreApplication::setApplicationName(QStringLiteral("vantry-desk-test"));
    const int result = TestSupport::runTest<QApplication, DeskThemeTest>(argc, argv);
    bus.kill();
    bus.waitForFinished();
    return result;
}

#include "desk_theme_test.moc"
