#include "desk/window/NoticeBar.h"

#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QToolButton>

namespace Vantry {

using Utilities::ModelViews::Widgets::PlainLabel;

void NoticeBar::setUp()
{
    text = new PlainLabel;
    text->setObjectName(QStringLiteral("noticeText"));
    text->setWordWrap(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QToolButton* const close = setContent(text);
    scroller->viewport()->installEventFilter(this);
    close->setObjectName(QStringLiteral("noticeClose"));
    close->setText(tr("Close"));
    close->setToolTip(tr("Close these messages"));
    close->setAccessibleName(close->toolTip());
    connect(close, &QToolButton::clicked, this, &NoticeBar::closeNotices);
    static_cast<QBoxLayout*>(layout())->insertWidget(0, makeWarningIcon(), 0, Qt::AlignTop);
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
    return WorkAreaBar::eventFilter(watched, event);
}

} // namespace Vantry
