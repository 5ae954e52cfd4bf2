#pragma once

#include "host/FrameworkCore/CoreExport.h"

#include <QLocale>

namespace FrameworkCore::Core {

// The languages of the process. GUI thread.
class VANTRY_CORE_EXPORT CoreLocalizationInterface
{
public:
    virtual ~CoreLocalizationInterface() = default;

    // The locale whose language the user sees.
    virtual QLocale getLocale() const = 0;

    // Shows the program in that locale's language, as far as there are translations.
    virtual void setLocale(const QLocale& locale) = 0;

    // Makes the translations of a locale available. Never changes the language that the user sees.
    virtual void loadTranslations(const QLocale& locale) = 0;
};

} // namespace FrameworkCore::Core
