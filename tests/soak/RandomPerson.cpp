#include "tests/soak/RandomPerson.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QFileDialog>

namespace Soak {

namespace {

constexpr const char* moves[] = {"Up",    "Down", "Down", "Left", "Right",
                                 "Prior", "Next", "Home", "End",  "Tab"};
constexpr const char* edits[] = {"F2",        "Return", "Escape",    "1",      "7",     "a",
                                 "BackSpace", "minus",  "shift+Tab", "Delete", "space", "period"};
constexpr const char* commands[] = {"ctrl+z", "ctrl+z", "ctrl+shift+z", "ctrl+s", "F5",
                                    "F8",     "F9",     "ctrl+a",       "alt+f",  "alt+v"};
constexpr int left = 1;
constexpr int right = 3;

QWidget& viewOf(const QWidget& window, const char* name)
{
    auto* const view = window.findChild<QAbstractScrollArea*>(QLatin1String(name));
    if (!view)
        qFatal("the window has no %s", name);
    return *view->viewport();
}

} // namespace

RandomPerson::RandomPerson(QWidget& desk, double actionsPerSecond, unsigned seed)
    : window(desk), tree(viewOf(desk, "treeView")), monitor(viewOf(desk, "appConfigDataAccessWidget")),
      random(seed)
{
    xdotool.setProcessChannelMode(QProcess::ForwardedChannels);
    xdotool.start(QStringLiteral("xdotool"), {QStringLiteral("-")});
    if (!xdotool.waitForStarted())
        qFatal("xdotool: %s", qPrintable(xdotool.errorString()));
    connect(&timer, &QTimer::timeout, this, &RandomPerson::act);
    timer.start(int(1000 / actionsPerSecond));
}

RandomPerson::~RandomPerson()
{
    timer.stop();
    xdotool.closeWriteChannel();
    xdotool.waitForFinished();
}

void RandomPerson::act()
{
    ++actions;
    if (QWidget* const popup = QApplication::activePopupWidget())
        answer(*popup);
    else if (QWidget* const dialog = QApplication::activeModalWidget())
        answer(*dialog);
    else
        work();
}

void RandomPerson::answer(const QWidget& dialog)
{
    if (qobject_cast<const QFileDialog*>(&dialog) || qobject_cast<const QFileDialog*>(dialog.window()))
        return press("Escape");
    switch (below(8)) {
    case 0:
    case 1:
        return press("Escape");
    case 2:
        return press("Return");
    case 3:
        return press(oneOf(moves));
    case 4:
        return press(oneOf(edits));
    default:
        return clickIn(dialog, left);
    }
}

void RandomPerson::work()
{
    if (!window.isVisible())
        window.show();
    if (!window.isActiveWindow())
        window.activateWindow();
    switch (below(16)) {
    case 0:
    case 1:
        return clickIn(tree, left);
    case 2:
        return clickIn(tree, left, 2);
    case 3:
        return clickIn(tree, right);
    case 4:
        return clickIn(monitor, left, 2);
    case 5:
        return clickIn(monitor, right);
    case 6:
        return dragRow();
    case 7:
    case 8:
        return clickIn(window, left);
    case 9:
        return press(oneOf(commands));
    case 10:
    case 11:
    case 12:
        return press(oneOf(moves));
    default:
        return press(oneOf(edits));
    }
}

void RandomPerson::clickIn(const QWidget& widget, int button, int times)
{
    const QPoint place = placeIn(widget);
    send(QStringLiteral("mousemove %1 %2 click --repeat %3 --delay 20 %4")
             .arg(place.x())
             .arg(place.y())
             .arg(times)
             .arg(button));
}

void RandomPerson::dragRow()
{
    const QPoint from = placeIn(tree);
    const QPoint to = placeIn(monitor);
    send(QStringLiteral("mousemove %1 %2 mousedown 1").arg(from.x()).arg(from.y()));
    constexpr int steps = 4; // the first ones begin the drag, the last ones reach the target
    for (int step = 1; step <= steps; ++step) {
        const QPoint place = from + (to - from) * step / steps;
        send(QStringLiteral("mousemove %1 %2 sleep 0.03").arg(place.x()).arg(place.y()));
    }
    send(QStringLiteral("mouseup 1"));
}

void RandomPerson::press(const char* key)
{
    send(QLatin1String("key ") + QLatin1String(key));
}

void RandomPerson::send(const QString& command)
{
    xdotool.write(command.toLatin1() + '\n');
}

QPoint RandomPerson::placeIn(const QWidget& widget)
{
    return widget.mapToGlobal({below(qMax(1, widget.width())), below(qMax(1, widget.height()))});
}

int RandomPerson::below(int end)
{
    return int(random() % unsigned(end));
}

} // namespace Soak
