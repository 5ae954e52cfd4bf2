#pragma once

#include <QPoint>
#include <QString>
#include <Qt>

class QWidget;

namespace TestSupport {

// Keyboard and mouse as a person uses them: the events are made by the X server (with xdotool), so that they
// pass grabs, popups and focus like real ones. For tests that draw on an X server. Each gives whether the
// event was sent; its effect arrives later.

// A key by its X name, as in "a", "period", "Tab", "shift+Tab".
bool pressKey(const QString& name);

// The keys of a text one after the other.
bool typeText(const QString& text);

// Moves there and clicks.
bool click(const QWidget& widget, const QPoint& position, Qt::MouseButton button = Qt::LeftButton);

// Presses the left button in one place, moves, and lets go in the other; runs the event loop meanwhile.
bool drag(const QWidget& from, const QPoint& fromPosition, const QWidget& to, const QPoint& toPosition);

// Shows the widget as the active window and waits for it.
bool showActive(QWidget& widget);

} // namespace TestSupport
