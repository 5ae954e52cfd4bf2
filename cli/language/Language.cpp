#include "cli/language/Language.h"

#include "host/FrameworkCore/Core/SpokenLanguage.h"

#include <QCoreApplication>
#include <QTranslator>

#include <clocale>
#include <memory>
#include <vector>

// Resources of a static library are registered on request; Q_INIT_RESOURCE works outside namespaces only.
static void initialiseResources()
{
    Q_INIT_RESOURCE(vantry_translations);
}

namespace CommandLine {

using FrameworkCore::Core::SpokenLanguage;

namespace {

// Qt looks texts up only where there is an application, which is the slowest part of a short run, and so not
// made for English.
void provideApplication()
{
    if (QCoreApplication::instance())
        return;
    static int count = 1;
    static char name[] = "vantry";
    static char* words[] = {name, nullptr};
    static const QCoreApplication application(count, words);
    std::setlocale(LC_ALL, "C"); // which it has taken from the system: numbers have a point everywhere
}

// What the system itself says, as of a file that it does not open.
void showSystemTexts(const QString& chosen)
{
    std::setlocale(LC_CTYPE, "C.UTF-8");
    std::setlocale(LC_MESSAGES, chosen.isEmpty() ? "" : "de_DE.UTF-8");
}

const std::vector<std::unique_ptr<QTranslator>>& germanTexts()
{
    static const auto translators = [] {
        initialiseResources();
        std::vector<std::unique_ptr<QTranslator>> loaded;
        for (const char* const file :
             {":/Translations/vantry_de_DE.qm", ":/Translations/vantry-core_de_DE.qm"}) {
            loaded.push_back(std::make_unique<QTranslator>());
            loaded.back()->load(QLatin1String(file));
        }
        return loaded;
    }();
    return translators;
}

} // namespace

bool Language::show(const QString& chosen)
{
    if (!chosen.isEmpty() && !SpokenLanguage::names().contains(chosen))
        return false;
    const bool isGerman = SpokenLanguage::toShow(chosen, SpokenLanguage::ofSystem()) == QLatin1String("de");
    if (!isGerman && !QCoreApplication::instance())
        return true;
    provideApplication();
    for (const auto& texts : germanTexts()) {
        QCoreApplication::removeTranslator(texts.get());
        if (isGerman)
            QCoreApplication::installTranslator(texts.get());
    }
    if (isGerman)
        showSystemTexts(chosen);
    else
        std::setlocale(LC_MESSAGES, "C");
    return true;
}

} // namespace CommandLine
