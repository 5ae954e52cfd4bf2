#include "desk/places/PlaceButton.h"

#include "desk/common/MenuText.h"
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
    FrameworkCore::AppConfig::FilePosition shown = place.position;
    shown.file = QFileInfo(shown.file).fileName(); // the tool tip has its folders
    setText(menuText(shown.toText()));
    setAccessibleName(tr("Place in the file: %1").arg(shown.toText()));
    QString tip = place.position.toText();
    if (!place.comment.isEmpty())
        tip += QStringLiteral("\n\n") + place.comment;
    setToolTip(Utilities::ModelViews::toolTipText(tip));
}

} // namespace Vantry
