#include "desk/window/NoticeBar.h"

#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QStyle>
#include <QToolButton>

namespace Vantry {

using Utilities::ModelViews::Widgets::PlainLabel;

NoticeBar::NoticeBar(QWidget* parent) : QFrame(parent)
{
    setObjectName(QStringLiteral("noticeBar"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::AlternateBase);
    hide();
}

void NoticeBar::setUp()
{
    text = new PlainLabel;
    scroller = new QScrollArea;
    auto* const icon = new PlainLabel;
    const int iconSize = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(iconSize));
    icon->setAlignment(Qt::AlignTop);

    text->setObjectName(QStringLiteral("noticeText"));
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    scroller->setFrameShape(NoFrame);
    scroller->setWidgetResizable(true);
    scroller->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller->setFocusPolicy(Qt::NoFocus); // the text has it
    scroller->viewport()->setAutoFillBackground(false);
    scroller->viewport()->installEventFilter(this);
    scroller->setWidget(text);
    text->setAutoFillBackground(false);

    auto* const close = new QToolButton;
    close->setObjectName(QStringLiteral("noticeClose"));
    close->setAutoRaise(true);
    close->setIcon(style()->standardIcon(QStyle::SP_DockWidgetCloseButton));
    close->setText(tr("Close"));
    close->setToolTip(tr("Close these messages"));
    close->setAccessibleName(close->toolTip());
    connect(close, &QToolButton::clicked, this, &NoticeBar::closeNotices);

    auto* const layout = new QHBoxLayout(this);
    layout->addWidget(icon, 0, Qt::AlignTop);
    layout->addWidget(scroller, 1);
    layout->addWidget(close, 0, Qt::AlignTop);
}

void NoticeBar::addNotices(const QStringList& texts)
{
    constexpr int mostNotices = 200; // the newest ones
    constexpr int longestNotice = 2000;
    for (const QString& added : texts)
        notices.append(added.size() > longestNotice ? added.left(longestNotice) + QChar(0x2026) : added);
    notices.removeDuplicates();
    notices = notices.mid(qMax(0, notices.size() - mostNotices));
    if (!text)
        setUp();
    showNotices();
}

void NoticeBar::closeNotices()
{
    notices.clear();
    if (text)
        showNotices();
}

void NoticeBar::showNotices()
{
    text->setText(notices.join(QLatin1Char('\n')));
    fitHeight();
    setVisible(!notices.isEmpty());
}

// As high as the text needs at this width; what is much can be scrolled.
void NoticeBar::fitHeight()
{
    constexpr int mostLines = 8;
    const int most = mostLines * text->fontMetrics().lineSpacing();
    const int needed = text->heightForWidth(scroller->viewport()->width()); // negative without text
    scroller->setFixedHeight(qBound(0, needed, most));
}

bool NoticeBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == scroller->viewport() && event->type() == QEvent::Resize)
        fitHeight();
    return QFrame::eventFilter(watched, event);
}

} // namespace Vantry
