#include "desk/language/Language.h"
#include "host/FrameworkCore/Core/SpokenLanguage.h"
#include "host/Utilities/LocalizationAccess.h"
#include "host/Utilities/ModelViews/AttributeTreeViewModelUtils.h"
#include "tests/desk/RunningDesk.h"
#include "tests/support/Columns.h"
#include "tests/support/TestRun.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QTranslator>

#include <algorithm>

using FrameworkCore::Core::SpokenLanguage;
using TestSupport::RunningDesk;
using Vantry::Language;

namespace {

// Is asked for what the translations before it do not hold, and keeps what is Vantry's own.
class Untranslated : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char* context, const char* source, const char*, int) const override
    {
        const QString name = QLatin1String(context);
        if (name.startsWith(QLatin1String("Vantry")) || name.startsWith(QLatin1String("Utilities")) ||
            name.startsWith(QLatin1String("Widgets")))
            texts.append(name + QLatin1String(": ") + QLatin1String(source));
        return {};
    }

    mutable QStringList texts;
};

QList<QMenu*> menusOf(const QMainWindow& window)
{
    QList<QMenu*> menus = window.menuBar()->findChildren<QMenu*>();
    for (QMenu* menu : window.findChildren<QMenu*>()) {
        if (!menus.contains(menu))
            menus.append(menu);
    }
    return menus;
}

QChar keyOf(const QString& text)
{
    const QKeySequence key = QKeySequence::mnemonic(text);
    return key.isEmpty() ? QChar() : key.toString().back();
}

} // namespace

// The window in another language than that of the sources.
class DeskLanguageTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        desk.reset();
        QLocale::setDefault(QLocale::c());
        Utilities::GetLocalizationInterface()->setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    void languageIsTheChosenOrTheFirstThatIsSpoken_data()
    {
        const auto row = TestSupport::columns<QString, QString, QString>("chosen", "system", "shown");
        row("German", "", "de-AT de", "de");
        row("English first", "", "en-US de", "en");
        row("another first", "", "fr-FR de en", "de");
        row("none spoken", "", "fr-FR", "en");
        row("none", "", "C", "en");
        row("English chosen", "en", "de-DE", "en");
        row("German chosen", "de", "en-GB", "de");
        row("nonsense chosen", "x", "de", "de");
    }

    void languageIsTheChosenOrTheFirstThatIsSpoken()
    {
        QFETCH(QString, chosen);
        QFETCH(QString, system);
        QFETCH(QString, shown);
        QCOMPARE(SpokenLanguage::toShow(chosen, system.split(QLatin1Char(' '))), shown);
    }

    void windowIsWhollyGerman()
    {
        Untranslated rest;
        QCoreApplication::installTranslator(&rest); // asked after those that are installed later
        open(QStringLiteral("de"));
        QCOMPARE(desk->window->menuBar()->actions().first()->text(), QStringLiteral("&Datei"));
        QCOMPARE(QLocale().toString(1234.5, 'f', 1), QStringLiteral("1.234,5"));
        for (QMenu* menu : menusOf(*desk->window))
            emit menu->aboutToShow();
        desk->window->grab();
        for (QDockWidget* dock : desk->window->findChildren<QDockWidget*>()) {
            dock->show();
            dock->grab();
        }
        QCOMPARE(rest.texts, QStringList());
    }

    void keysOfMenusAreUnique_data()
    {
        const auto row = TestSupport::columns<QString>("language");
        row("English", "en");
        row("German", "de");
    }

    void keysOfMenusAreUnique()
    {
        QFETCH(QString, language);
        open(language);
        QStringList twice;
        QVector<QWidget*> menus = {desk->window->menuBar()};
        for (QMenu* menu : menusOf(*desk->window)) {
            emit menu->aboutToShow();
            menus.append(menu);
        }
        for (const QWidget* menu : qAsConst(menus)) {
            QMap<QChar, QString> keys;
            for (const QAction* action : menu->actions()) {
                const QChar key = keyOf(action->text());
                if (!key.isNull() && keys.contains(key))
                    twice.append(keys.value(key) + QLatin1String(" / ") + action->text());
                keys.insert(key, action->text());
            }
        }
        QCOMPARE(twice, QStringList());
    }

    // Alt and a letter lead to a menu of the bar, or to one thing in a dock.
    void keysOfDocksAreUnique_data() { keysOfMenusAreUnique_data(); }

    void keysOfDocksAreUnique()
    {
        QFETCH(QString, language);
        open(language);
        QStringList twice;
        for (QDockWidget* dock : desk->window->findChildren<QDockWidget*>()) {
            dock->show();
            QStringList texts;
            for (const QAction* menu : desk->window->menuBar()->actions())
                texts.append(menu->text());
            for (const QAbstractButton* button : dock->findChildren<QAbstractButton*>())
                texts.append(button->text());
            for (const QLabel* label : dock->findChildren<QLabel*>()) {
                if (label->buddy())
                    texts.append(label->text());
            }
            QMap<QChar, QString> keys;
            for (const QString& text : qAsConst(texts)) {
                const QChar key = keyOf(text);
                if (!key.isNull() && keys.contains(key))
                    twice.append(keys.value(key) + QLatin1String(" / ") + text);
                keys.insert(key, text);
            }
        }
        QCOMPARE(twice, QStringList());
    }

    // Its entries are read as the names of the modes.
    void accessModesAreUnderstood()
    {
        open(QStringLiteral("de"));
        const auto* const modes = desk->part<QComboBox>("cbAccessMode");
        QVERIFY(modes && modes->count() > 0);
        using Utilities::ModelViews::AttributeTreeViewModelUtils;
        for (int i = 0; i < modes->count(); ++i)
            QVERIFY2(AttributeTreeViewModelUtils::GetBackendAccessMode(modes->itemText(i).toLower()) !=
                         FrameworkCore::AppConfig::AccessMode::None,
                     qPrintable(modes->itemText(i)));
    }

    void chosenLanguageIsThatOfTheNextStart()
    {
        open({});
        auto* const menu = desk->part<QMenu>("languageMenu");
        const auto entry = [&](const QString& text) {
            const auto actions = menu->actions();
            return *std::find_if(actions.begin(), actions.end(),
                                 [&](const QAction* action) { return action->text() == text; });
        };
        QVERIFY(entry(QStringLiteral("&As the System"))->isChecked());
        entry(QStringLiteral("&Deutsch"))->trigger();
        QCOMPARE(Language::chosen(), QStringLiteral("de"));
        QVERIFY(desk->part<QLabel>("noticeText")->text().contains(QLatin1String("from its next start on")));

        desk.reset();
        Language::show();
        desk = std::make_unique<RunningDesk>(folder, QStringList());
        QCOMPARE(desk->part<QMenu>("languageMenu")->title(), QStringLiteral("S&prache"));
    }

private:
    void open(const QString& language)
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path("settings"));
        Language::choose(language);
        Language::show();
        desk = std::make_unique<RunningDesk>(folder, QStringList(folder.path("plant.json")));
        desk->window->show();
        QTRY_VERIFY(desk->item(QStringLiteral("plant.cell")).isValid());
    }

    RunningDesk::Folder folder;
    std::unique_ptr<RunningDesk> desk;
};

VANTRY_TEST_MAIN(QApplication, DeskLanguageTest)

#include "desk_language_test.moc"
