#include "desk/window/DockSwitch.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QKeyEvent>

#include <utility>

namespace Vantry {

DockSwitch::DockSwitch(QDockWidget& switched, const QString& actionText, std::function<void()> shown)
    : QObject(&switched), dock(switched), text(actionText), show(std::move(shown))
{
    QAction* const action = dock.toggleViewAction();
    QObject::disconnect(action, &QAction::triggered, &dock, nullptr); // which would close it behind a tab
    connect(action, &QAction::triggered, this, &DockSwitch::change);
    connect(&dock, &QWidget::windowTitleChanged, this, &DockSwitch::name);
    connect(qApp, &QApplication::focusChanged, this, &DockSwitch::noteFocus);
    connect(&dock, &QDockWidget::visibilityChanged, this, &DockSwitch::enable);
    dock.installEventFilter(this);
    name();
}

// With what the title tells besides, as a number.
void DockSwitch::name()
{
    const int known = text.size() - text.count(QLatin1Char('&'));
    dock.toggleViewAction()->setText(text + dock.windowTitle().mid(known));
}

void DockSwitch::change()
{
    if (isInFront())
        leave();
    else
        show();
    dock.toggleViewAction()->setChecked(!dock.isHidden());
}

bool DockSwitch::isInFront() const
{
    return dock.isVisible() && !dock.visibleRegion().isEmpty();
}

// Behind another tab it is still visible to Qt, and would share its keys with the one in front.
void DockSwitch::enable(bool isShown)
{
    const bool isBehind = !isShown && dock.isVisible() && !dock.window()->isMinimized();
    if (dock.widget())
        dock.widget()->setEnabled(!isBehind);
}

void DockSwitch::noteFocus(QWidget* before, QWidget* now)
{
    if (now && before && dock.isAncestorOf(now) && !dock.isAncestorOf(before))
        focusBefore = before;
}

void DockSwitch::leave()
{
    const bool hasFocus = dock.isAncestorOf(QApplication::focusWidget());
    dock.hide();
    if (hasFocus && focusBefore)
        focusBefore->setFocus();
}

// A key comes here that nothing within the dock has taken.
bool DockSwitch::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != &dock || event->type() != QEvent::KeyPress ||
        static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape)
        return QObject::eventFilter(watched, event);
    leave();
    return true;
}

} // namespace Vantry
