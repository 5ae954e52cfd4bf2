#pragma once

#include <QString>

class QAbstractButton;
class QWidget;

namespace Vantry {

// The look of the buttons that ask for it by their property subStyle = "flatStyle": without a frame, yet seen
// as buttons under the mouse and the keyboard, in any palette. GUI thread.
class FlatButtons
{
public:
    // Gives all such buttons that are in the widget their look.
    static void style(QWidget& widget);

    // Marks the button that leads to a page of its application, and it alone: the one whose object name ends
    // with the page's name, as btnTests for "tests".
    static void markPage(QWidget& control, const QString& page);

    // Marks a button as the one that leads to what is shown, or does so no more.
    static void mark(QAbstractButton& button, bool isCurrent);
};

} // namespace Vantry
