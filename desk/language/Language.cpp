#include "desk/language/Language.h"

#include "host/FrameworkCore/Core/SpokenLanguage.h"
#include "host/Utilities/LocalizationAccess.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QSettings>
#include <QTranslator>

// Resources of a static library are registered on request; Q_INIT_RESOURCE works outside namespaces only.
static void initialiseResources()
{
    Q_INIT_RESOURCE(vantry_desk_translations);
}

namespace Vantry {

using FrameworkCore::Core::SpokenLanguage;

namespace {

QString ofThisRun;

const QLatin1String languageKey("window/language");

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

void Language::useInThisRun(const QString& language)
{
    ofThisRun = language;
}

void Language::show()
{
    const QString wanted = ofThisRun.isEmpty() ? chosen() : ofThisRun;
    const QLocale system = QLocale::system();
    const QLocale locale(SpokenLanguage::toShow(wanted, SpokenLanguage::ofSystem()) == QLatin1String("de")
                             ? QLocale(QLocale::German, QLocale::Germany)
                             : QLocale(QLocale::English, QLocale::UnitedStates));
    if (!wanted.isEmpty() && locale.language() != system.language())
        QLocale::setDefault(locale);
    initialiseResources();
    if (locale.language() != QLocale::English)
        showQtTexts(locale);
    Utilities::GetLocalizationInterface()->setLocale(locale);
}

} // namespace Vantry
