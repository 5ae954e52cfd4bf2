#include "widgets/FilterBox.h"

#include "host/Utilities/ModelViews/TextBeginning.h"

#include <QStylePainter>

namespace Widgets {

// As the base does.
void FilterBox::paintEvent(QPaintEvent* /*event*/)
{
    constexpr int longest = 500; // characters
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText = Utilities::ModelViews::shortened(option.currentText, longest, 1);
    QStylePainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

} // namespace Widgets
