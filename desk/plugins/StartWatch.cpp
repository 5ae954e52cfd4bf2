#include "desk/plugins/StartWatch.h"

#include <QEvent>
#include <QSettings>
#include <QWidget>

namespace Vantry {

const QLatin1String failedStarts("failedStarts");

int StartWatch::countFailedStarts(bool hasCulprits)
{
    if (!hasCulprits)
        return 0;
    QSettings settings;
    const int count = settings.value(failedStarts).toInt() + 1;
    settings.setValue(failedStarts, count);
    return count;
}

StartWatch::StartWatch(const QStringList& plugins) : note(std::make_unique<LoadingNote>(plugins))
{
}

StartWatch::~StartWatch()
{
    if (note)
        finish();
}

void StartWatch::waitFor(QWidget& window)
{
    window.installEventFilter(this);
}

bool StartWatch::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        // What is in the window is drawn after it, before other events come.
        QMetaObject::invokeMethod(this, &StartWatch::finish, Qt::QueuedConnection);
    }
    return false;
}

void StartWatch::finish()
{
    note.reset();
    QSettings settings;
    if (settings.contains(failedStarts))
        settings.remove(failedStarts);
}

} // namespace Vantry
