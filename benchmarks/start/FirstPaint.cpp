#include <QCoreApplication>
#include <QGenericPlugin>
#include <QWidget>

#include <unistd.h>

namespace {

const QEvent::Type paintedEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

// Ends the process as soon as its first window is painted.
class FirstPaint : public QObject
{
public:
    FirstPaint() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        // All of a window is painted within one event, so that what is posted now comes after it. The trial
        // of a plug-in, in a child, draws one that nobody sees, and goes on.
        const auto* const widget = qobject_cast<QWidget*>(watched);
        const bool isSeen = widget && widget->isWindow() && !widget->testAttribute(Qt::WA_DontShowOnScreen);
        if (event->type() == QEvent::Paint && isSeen)
            QCoreApplication::postEvent(this, new QEvent(paintedEvent), Qt::HighEventPriority);
        return false;
    }

    bool event(QEvent* event) override
    {
        if (event->type() == paintedEvent)
            _exit(0);
        return QObject::event(event);
    }
};

} // namespace

// Qt loads it into any program that is started with QT_QPA_GENERIC_PLUGINS=vantryfirstpaint, so that the
// program that is timed is the one that people start.
class FirstPaintPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "FirstPaint.json")

public:
    QObject* create(const QString&, const QString&) override { return new FirstPaint; } // Qt owns it
};

#include "FirstPaint.moc"
