#include "desk/places/PlaceButton.h"

#include "desk/common/MenuText.h"
#include "desk/places/PlaceWatch.h"
#include "host/Utilities/ModelViews/ToolTipText.h"

#include <QFileInfo>

namespace Vantry {

PlaceButton::PlaceButton(QWidget* parent) : QToolButton(parent)
{
    setObjectName(QStringLiteral("place"));
    setAutoRaise(true);
    setPopupMode(InstantPopup);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    setStyleSheet(QStringLiteral("QToolButton::menu-indicator { image: none; }")); // it would be on the text
    setFocusPolicy(Qt::TabFocus);
    hide();
}

void PlaceButton::showPlace(const TextPlace& place)
{
    setVisible(place.position.line > 0);
    const auto onDisk = PlaceWatch::onDisk(place);
    auto shown = onDisk;
    shown.file = QFileInfo(shown.file).fileName(); // the tool tip has its folders
    const QString text = place.isOnDisk ? shown.toText() : tr("%1, not saved yet").arg(shown.toText());
    setText(menuText(text));
    setAccessibleName(tr("Place in the file: %1").arg(text));
    QString tip = onDisk.toText();
    if (!place.isOnDisk || onDisk.line != place.position.line)
        tip += QLatin1Char('\n') + tr("Line %1 once it is saved").arg(place.position.line);
    if (!place.comment.isEmpty())
        tip += QStringLiteral("\n\n") + place.comment;
    setToolTip(Utilities::ModelViews::toolTipText(tip));
}

} // namespace Vantry
