#include "host/Shared/Localization/CoreLocalization.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTranslator>

namespace Shared::Localization {

// A translator with its data. The data is a copy: the resource may belong to a plug-in that is unloaded.
struct CoreLocalization::Translation
{
    QString locale;
    QByteArray data;
    QTranslator translator;
    bool hasMessages = false;
    bool isInstalled = false;

    void show(bool wanted)
    {
        if (!hasMessages || wanted == isInstalled)
            return;
        isInstalled = wanted;
        if (wanted)
            QCoreApplication::installTranslator(&translator);
        else
            QCoreApplication::removeTranslator(&translator);
    }
};

CoreLocalization::CoreLocalization()
    : shownLocale(QLocale::English, QLocale::UnitedStates) // the language that the texts are written in
{
}

CoreLocalization::~CoreLocalization() = default;

QLocale CoreLocalization::getLocale() const
{
    return shownLocale;
}

void CoreLocalization::setLocale(const QLocale& locale)
{
    loadTranslations(locale);
    shownLocale = locale;
    for (const auto& [path, translation] : translations)
        translation->show(translation->locale == locale.name());
}

void CoreLocalization::loadTranslations(const QLocale& locale)
{
    const QDir folder(QStringLiteral(":/Translations"));
    const QString ending = QLatin1Char('_') + locale.name() + QLatin1String(".qm");
    const QStringList names = folder.entryList({QLatin1Char('*') + ending}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        std::unique_ptr<Translation>& translation = translations[folder.filePath(name)];
        if (translation)
            continue;
        translation = std::make_unique<Translation>();
        translation->locale = locale.name();
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            translation->data = file.readAll();
        translation->hasMessages = translation->translator.load(
            reinterpret_cast<const uchar*>(translation->data.constData()), translation->data.size());
    }
}

QStringList CoreLocalization::getLoadedFiles(const QLocale& locale) const
{
    QStringList files;
    for (const auto& [path, translation] : translations) {
        if (translation->locale == locale.name())
            files.append(path);
    }
    return files;
}

} // namespace Shared::Localization
