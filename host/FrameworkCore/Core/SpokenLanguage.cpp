#include "host/FrameworkCore/Core/SpokenLanguage.h"

#include <QLocale>

namespace FrameworkCore::Core {

QStringList SpokenLanguage::names()
{
    return {QStringLiteral("de"), QStringLiteral("en")};
}

QString SpokenLanguage::toShow(const QString& chosen, const QStringList& systemLanguages)
{
    const QStringList wanted = QStringList(chosen) + systemLanguages;
    for (const QString& name : wanted) {
        const QString language = name.section(QLatin1Char('-'), 0, 0);
        if (names().contains(language))
            return language;
    }
    return QStringLiteral("en");
}

QStringList SpokenLanguage::ofSystem()
{
    for (const char* const variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QByteArray locale = qgetenv(variable);
        if (locale == "C" || locale == "POSIX" || locale.startsWith("C."))
            return {};
        if (!locale.isEmpty())
            return QLocale::system().uiLanguages();
    }
    return {};
}

} // namespace FrameworkCore::Core
