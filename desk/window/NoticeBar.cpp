#include "desk/window/NoticeBar.h"

#include "desk/files/FormatMenu.h"
#include "host/Utilities/ModelViews/ToolTipText.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QToolButton>

#include <algorithm>
#include <utility>

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

void NoticeBar::addOpenButton()
{
    auto* const formats = new FormatMenu({}, this);
    connect(formats, &FormatMenu::chosen, this, &NoticeBar::requestOpening);
    open = new QToolButton;
    open->setObjectName(QStringLiteral("noticeOpenAs"));
    open->setText(tr("Open &As"));
    open->setMenu(formats);
    open->setPopupMode(QToolButton::InstantPopup);
    static_cast<QBoxLayout*>(layout())->insertWidget(2, open, 0, Qt::AlignTop);
}

void NoticeBar::offerOpening(const QStringList& files)
{
    unknown += files;
    unknown.removeDuplicates();
    if (!open && !unknown.isEmpty())
        addOpenButton();
    if (!open)
        return;
    open->setVisible(!unknown.isEmpty());
    const QString hint = unknown.size() == 1
                             ? tr("Open %1 as a type of your choice").arg(unknown.first())
                             : tr("Open these %1 files as a type of your choice").arg(unknown.size());
    open->setToolTip(Utilities::ModelViews::toolTipText(hint));
    open->setAccessibleName(hint);
}

void NoticeBar::requestOpening(const QString& type)
{
    const QStringList files = std::exchange(unknown, {});
    for (const QString& file : files) {
        const auto isAbout = [&](const QString& notice) {
            return notice.startsWith(file + QLatin1Char(':'));
        };
        notices.erase(std::remove_if(notices.begin(), notices.end(), isAbout), notices.end());
    }
    offerOpening({});
    showNotices();
    emit openRequested(files, type);
}

void NoticeBar::closeNotices()
{
    notices.clear();
    unknown.clear();
    offerOpening({});
    if (text)
        showNotices();
}

void NoticeBar::showNotices()
{
    text->setText(notices.join(QLatin1Char('\n')));
    fitHeight();
    setVisible(!notices.isEmpty());
}

// As high as the text needs at this width; what is much can be scrolled. A bar that came and went with the
// height would change that again.
void NoticeBar::fitHeight()
{
    constexpr int mostLines = 8;
    const int most = mostLines * text->fontMetrics().lineSpacing();
    const int needed = text->heightForWidth(scroller->contentsRect().width()); // negative without text
    scroller->setVerticalScrollBarPolicy(needed > most ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    scroller->setFixedHeight(qBound(0, needed, most));
}

bool NoticeBar::eventFilter(QObject* watched, QEvent* event)
{
    // Not before the layout is done that the event is a part of, or the text would not follow.
    if (watched == scroller->viewport() && event->type() == QEvent::Resize)
        QMetaObject::invokeMethod(
            this, [this] { fitHeight(); }, Qt::QueuedConnection);
    return WorkAreaBar::eventFilter(watched, event);
}

} // namespace Vantry
