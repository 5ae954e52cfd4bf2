#pragma once

#include "host/FrameworkCore/Core/CoreLocalizationInterface.h"
#include "host/HostExport.h"

#include <QStringList>

#include <map>
#include <memory>

namespace Shared::Localization {

// The translations compiled into the program and its plug-ins as ":/Translations/<name>_<locale>.qm". A
// locale's translations are read once and kept, and shown only while the locale is the user's. GUI thread.
class VANTRY_HOST_EXPORT CoreLocalization : public FrameworkCore::Core::CoreLocalizationInterface
{
public:
    CoreLocalization();
    ~CoreLocalization() override;

    QLocale getLocale() const override;
    void setLocale(const QLocale& locale) override;
    void loadTranslations(const QLocale& locale) override;

    // Names of the files of a locale that are available, those without a message among them.
    QStringList getLoadedFiles(const QLocale& locale) const;

private:
    struct Translation;

    QLocale shownLocale;
    std::map<QString, std::unique_ptr<Translation>> translations; // by the file's path
};

} // namespace Shared::Localization
