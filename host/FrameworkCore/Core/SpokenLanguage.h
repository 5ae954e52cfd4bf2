#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <QString>
#include <QStringList>

namespace FrameworkCore::Core {

// The languages that Vantry speaks, by their codes, and which of them a person is shown. Any thread.
class VANTRY_CORE_EXPORT SpokenLanguage
{
public:
    static QStringList names(); // "de" and "en"

    // The one chosen, or else the first that the system names and Vantry speaks, or else English.
    static QString toShow(const QString& chosen, const QStringList& systemLanguages);

    // What the system names, best first, as "de-AT"; empty where its messages are those of the sources, as in
    // the locale C, whatever LANGUAGE says.
    static QStringList ofSystem();
};

} // namespace FrameworkCore::Core
