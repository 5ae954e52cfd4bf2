#include "desk/LoadingNote.h"

#include <QSettings>

namespace Vantry {

namespace {

const QLatin1String noteKey("pluginBeingLoaded");

} // namespace

LoadingNote::LoadingNote(const QString& file)
{
    QSettings settings;
    settings.setValue(noteKey, file);
    settings.sync(); // must be on disk before the plug-in gets a chance to end the process
}

LoadingNote::~LoadingNote()
{
    QSettings().remove(noteKey);
}

QString LoadingNote::takeCulprit()
{
    QSettings settings;
    const QString culprit = settings.value(noteKey).toString();
    settings.remove(noteKey);
    return culprit;
}

} // namespace Vantry
