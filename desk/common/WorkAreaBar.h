#pragma once

#include <QFrame>

class QLabel;
class QScrollArea;
class QToolButton;

namespace Vantry {

// A bar above the work area, hidden until there is something to say: a content that is scrolled when there is
// much of it, and a button that closes the bar. GUI thread.
class WorkAreaBar : public QFrame
{
    Q_OBJECT

protected:
    explicit WorkAreaBar(const char* objectName, QWidget* parent);

    // Made when it is first needed: most windows never need it, and icons are searched for in many folders.
    QToolButton* setContent(QWidget* content); // gives the button, which says nothing yet
    QLabel* makeWarningIcon() const;

    QScrollArea* scroller = nullptr; // a child; none before there is a content
};

} // namespace Vantry
