#include "desk/window/NavigationArea.h"

#include "desk/common/FlatButtons.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QIcon>
#include <QVBoxLayout>
#include <QWindow>

namespace Vantry {

using Utilities::ModelViews::Widgets::PlainLabel;

NavigationArea::NavigationArea(QWidget* parent) : QScrollArea(parent)
{
    setObjectName(QStringLiteral("navigationArea"));
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    auto* const column = new QWidget;
    layout = new QVBoxLayout(column);
    layout->addStretch();
    setWidget(column);
}

void NavigationArea::addControl(const QIcon& icon, const QString& name, QWidget* control)
{
    constexpr int iconSize = 24;
    auto* const picture = new PlainLabel;
    picture->setPixmap(icon.pixmap(window()->windowHandle(), QSize(iconSize, iconSize)));
    auto* const title = new PlainLabel(name);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);

    auto* const head = new QHBoxLayout;
    head->setContentsMargins(8, 4, 8, 0);
    head->addWidget(picture);
    head->addWidget(title, 1);
    layout->insertLayout(layout->count() - 1, head);
    layout->insertWidget(layout->count() - 1, control);
    FlatButtons::style(*control);
    control->show();
    setMinimumWidth(widget()->minimumSizeHint().width());
}

} // namespace Vantry
