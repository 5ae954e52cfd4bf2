#include "host/Utilities/ModelViews/Widgets/FaultLabel.h"

#include <QEvent>

namespace Utilities::ModelViews::Widgets {

FaultLabel::FaultLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QPalette colours = palette();
    const bool dark = colours.color(QPalette::Window).lightness() < 128;
    colours.setColor(QPalette::WindowText, dark ? QColor(255, 138, 128) : QColor(176, 0, 32));
    setPalette(colours);
    keepRoom();
}

void FaultLabel::showFault(const QString& fault)
{
    setText(fault);
}

void FaultLabel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        keepRoom();
}

void FaultLabel::keepRoom()
{
    setMinimumHeight(2 * fontMetrics().lineSpacing());
}

} // namespace Utilities::ModelViews::Widgets
