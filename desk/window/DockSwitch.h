#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class QDockWidget;

namespace Vantry {

// Shows and closes a dock by its action: one that is hidden, or behind another's tab, comes to the front with
// the keyboard; one in front is closed. Escape within it closes it, too, and the keyboard goes back to where
// it was. GUI thread.
class DockSwitch : public QObject
{
    Q_OBJECT

public:
    // The text, for the action, begins with the dock's title, and has the key of a menu.
    DockSwitch(QDockWidget& dock, const QString& text, std::function<void()> show);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void name();
    void change();
    bool isInFront() const;
    void enable(bool isShown);
    void noteFocus(QWidget* before, QWidget* now);
    void leave();

    QDockWidget& dock; // which owns this
    const QString text;
    const std::function<void()> show;
    QPointer<QWidget> focusBefore;
};

} // namespace Vantry
