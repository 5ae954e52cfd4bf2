#include "desk/language/Language.h"

#include "host/Utilities/LocalizationAccess.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QSettings>
#include <QTranslator>

// Resources of a static library are registered on request; Q_INIT_RESOURCE works outside namespaces only.
static void initialiseResources()
{
    Q_INIT_RESOURCE(translations);
}

namespace Vantry {

namespace {

const QLatin1String languageKey("window/language");
const QLatin1String english("en");
const QLatin1String german("de");

// Of Qt's own dialogs and buttons.
void showQtTexts(const QLocale& locale)
{
    static QTranslator texts;
    if (!texts.isEmpty())
        return;
    if (texts.load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                   QLibraryInfo::location(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&texts);
}

} // namespace

QString Language::chosen()
{
    return QSettings().value(languageKey).toString();
}

void Language::choose(const QString& language)
{
    QSettings().setValue(languageKey, language);
}

QString Language::toShow(const QString& chosen, const QStringList& systemLanguages)
{
    const QStringList wanted = QStringList(chosen) + systemLanguages;
    for (const QString& name : wanted) {
        const QString language = name.section(QLatin1Char('-'), 0, 0);
        if (language == english || language == german)
            return language;
    }
    return english;
}

void Language::show()
{
    const QLocale system = QLocale::system();
    const QLocale locale(toShow(chosen(), system.uiLanguages()) == german
                             ? QLocale(QLocale::German, QLocale::Germany)
                             : QLocale(QLocale::English, QLocale::UnitedStates));
    if (!chosen().isEmpty() && locale.language() != system.language())
        QLocale::setDefault(locale);
    initialiseResources();
    if (locale.language() != QLocale::English)
        showQtTexts(locale);
    Utilities::GetLocalizationInterface()->setLocale(locale);
}

} // namespace Vantry
