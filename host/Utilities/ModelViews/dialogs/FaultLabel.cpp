#include "host/Utilities/ModelViews/dialogs/FaultLabel.h"

#include "host/Utilities/ModelViews/Widgets/BreakableText.h"

#include <QEvent>
#include <QLayout>

namespace Utilities::ModelViews::Widgets {

constexpr int longestFault = 480; // characters; a fault may quote all that was typed

FaultLabel::FaultLabel(QWidget* parent, Tone labelTone) : PlainLabel(parent), tone(labelTone)
{
    setWordWrap(true);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    colour();
    keepRoom();
}

void FaultLabel::colour()
{
    if (tone == Tone::Remark)
        return;
    QPalette colours = palette();
    const bool isDark = colours.color(QPalette::Window).lightness() < 128;
    colours.setColor(QPalette::WindowText, isDark ? QColor(255, 138, 128) : QColor(176, 0, 32));
    setPalette(colours);
}

void FaultLabel::showFault(const QString& fault)
{
    const bool isLong = fault.size() > longestFault;
    setText(breakableText(
        isLong ? fault.left(longestFault / 2) + QChar(0x2026) + fault.right(longestFault / 2) : fault));
    QWidget* const dialog = window();
    if (!dialog->isVisible() || !dialog->layout())
        return;
    dialog->layout()->activate();
    const int needed = dialog->layout()->totalHeightForWidth(dialog->width());
    if (needed > dialog->height())
        dialog->resize(dialog->width(), needed);
}

void FaultLabel::changeEvent(QEvent* event)
{
    PlainLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        keepRoom();
    else if (event->type() == QEvent::PaletteChange)
        colour();
}

} // namespace Utilities::ModelViews::Widgets
