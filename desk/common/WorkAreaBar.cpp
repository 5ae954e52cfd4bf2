#include "desk/common/WorkAreaBar.h"

#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QHBoxLayout>
#include <QScrollArea>
#include <QStyle>
#include <QToolButton>

namespace Vantry {

WorkAreaBar::WorkAreaBar(const char* objectName, QWidget* parent) : QFrame(parent)
{
    setObjectName(QLatin1String(objectName));
    setFrameShape(StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::AlternateBase);
    hide();
}

QToolButton* WorkAreaBar::setContent(QWidget* content)
{
    scroller = new QScrollArea;
    scroller->setFrameShape(NoFrame);
    scroller->setWidgetResizable(true);
    scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller->setFocusPolicy(Qt::NoFocus); // the content has it
    scroller->viewport()->setAutoFillBackground(false);
    scroller->setWidget(content);
    content->setAutoFillBackground(false);

    auto* const close = new QToolButton;
    close->setAutoRaise(true);
    close->setIcon(style()->standardIcon(QStyle::SP_DockWidgetCloseButton));

    auto* const layout = new QHBoxLayout(this);
    layout->addWidget(scroller, 1);
    layout->addWidget(close, 0, Qt::AlignTop);
    return close;
}

QLabel* WorkAreaBar::makeWarningIcon() const
{
    auto* const icon = new Utilities::ModelViews::Widgets::PlainLabel;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size));
    return icon;
}

} // namespace Vantry
