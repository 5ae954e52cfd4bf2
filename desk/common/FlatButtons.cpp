#include "desk/common/FlatButtons.h"

#include <QPushButton>
#include <QStyle>
#include <QVariant>

namespace Vantry {

namespace {

const char currentPage[] = "currentPage";

// Only colours that every palette sets: many a dark palette leaves the shades between as they are in a light
// one.
const QLatin1String sheet("QPushButton[subStyle=\"flatStyle\"] {"
                          " padding: 6px 8px; border: 1px solid transparent; border-radius: 4px;"
                          " background: palette(base); outline: none; }"
                          "QPushButton[subStyle=\"flatStyle\"]:hover { border-color: palette(highlight); }"
                          "QPushButton[subStyle=\"flatStyle\"]:focus { border-color: palette(highlight); }"
                          "#navigationArea QPushButton[subStyle=\"flatStyle\"] {"
                          " text-align: left; padding-left: 11px; background: transparent; }"
                          "#navigationArea QPushButton[subStyle=\"flatStyle\"]:hover {"
                          " background: palette(base); }"
                          "#navigationArea QPushButton[subStyle=\"flatStyle\"][currentPage=\"true\"] {"
                          " background: palette(base); padding-left: 8px;"
                          " border-left: 4px solid palette(highlight);"
                          " border-top-left-radius: 0; border-bottom-left-radius: 0; }"
                          "QPushButton[subStyle=\"flatStyle\"]:pressed,"
                          "#navigationArea QPushButton[subStyle=\"flatStyle\"]:pressed {"
                          " background: palette(highlight); color: palette(highlighted-text); }");

} // namespace

void FlatButtons::style(QWidget& widget)
{
    // Not the widget as a whole: all that is in a widget with a sheet is styled, and drawn, by the slower
    // way.
    const auto buttons = widget.findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (button->property("subStyle") == QLatin1String("flatStyle"))
            button->setStyleSheet(sheet);
    }
}

void FlatButtons::markPage(QWidget& control, const QString& page)
{
    const auto buttons = control.findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons)
        mark(*button, !page.isEmpty() && button->objectName().endsWith(page, Qt::CaseInsensitive));
}

void FlatButtons::mark(QAbstractButton& button, bool isCurrent)
{
    if (button.property(currentPage).toBool() == isCurrent)
        return;
    button.setProperty(currentPage, isCurrent);
    button.style()->unpolish(&button); // rules by a property are looked up when it is polished
    button.style()->polish(&button);
}

} // namespace Vantry
