#include "desk/NoticeBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace Vantry {

NoticeBar::NoticeBar(QWidget* parent) : QFrame(parent), text(new QLabel)
{
    setObjectName(QStringLiteral("noticeBar"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::AlternateBase);

    auto* const icon = new QLabel;
    const int iconSize = style()->pixelMetric(QStyle::PM_SmallIconSize);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(iconSize));
    icon->setAlignment(Qt::AlignTop);

    text->setObjectName(QStringLiteral("noticeText"));
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

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
    layout->addWidget(text, 1);
    layout->addWidget(close, 0, Qt::AlignTop);
    hide();
}

void NoticeBar::addNotices(const QStringList& texts)
{
    notices += texts;
    showNotices();
}

void NoticeBar::closeNotices()
{
    notices.clear();
    showNotices();
}

void NoticeBar::showNotices()
{
    constexpr int most = 8;
    QStringList shown = notices.mid(0, most);
    if (notices.size() > most)
        shown.append(tr("and %n more; the log has them all", nullptr, notices.size() - most));
    text->setText(shown.join(QLatin1Char('\n')));
    setVisible(!notices.isEmpty());
}

} // namespace Vantry
