#include "desk/FailureHint.h"

#include "desk/LogFeed.h"
#include "desk/LogModel.h"
#include "host/Utilities/ModelViews/ToolTipText.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"
#include "repository/RepositoryLog.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QStyle>
#include <QToolButton>

namespace Vantry {

using Shared::Logging::LogLine;
using Shared::Logging::LogMessageType;
using Utilities::ModelViews::Widgets::PlainLabel;

namespace {

constexpr int longestText = 4000;
constexpr int shownFor = 8000;   // milliseconds
constexpr int burstLength = 500; // milliseconds in which failures have one reason

} // namespace

FailureHint::FailureHint(LogFeed& feed, QWidget* parent)
    : QWidget(parent), icon(new PlainLabel), label(new PlainLabel)
{
    setObjectName(QStringLiteral("failureHint"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(4, 0, 4, 0);
    icon->setFixedSize(iconSize(), iconSize());
    row->addWidget(icon);

    label->setObjectName(QStringLiteral("failureText"));
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->addWidget(label, 1);

    auto* const open = new QToolButton;
    open->setObjectName(QStringLiteral("failureLog"));
    open->setAutoRaise(true);
    open->setText(tr("Show Log"));
    open->setToolTip(tr("Open the log, which tells more"));
    // It goes by itself, and would take the focus with it; the menu opens the log as well.
    open->setFocusPolicy(Qt::NoFocus);
    connect(open, &QToolButton::clicked, this, [this] {
        end();
        emit logRequested();
    });
    row->addWidget(open);

    life.setSingleShot(true);
    life.setInterval(shownFor);
    connect(&life, &QTimer::timeout, this, &FailureHint::end);
    connect(&feed, &LogFeed::linesRead, this, &FailureHint::look);
    end();
}

int FailureHint::iconSize() const
{
    return style()->pixelMetric(QStyle::PM_SmallIconSize);
}

void FailureHint::look(const QVector<LogLine>& lines)
{
    const LogLine* told = nullptr;
    for (const LogLine& line : lines) {
        const bool givesReason = line.category == Repository::logCategory();
        if (line.type == LogMessageType::Failure &&
            (givesReason || !told || told->category != Repository::logCategory()))
            told = &line;
    }
    if (told)
        tell(*told);
}

void FailureHint::tell(const LogLine& failure)
{
    const bool givesReason = failure.category == Repository::logCategory();
    if (!givesReason && isReason && age.isValid() && !age.hasExpired(burstLength))
        return;
    text = failure.text.left(longestText);
    isReason = givesReason;
    age.start();
    life.start();
    setToolTip(Utilities::ModelViews::toolTipText(text));
    setAccessibleName(text);
    if (icon->pixmap(Qt::ReturnByValue).isNull()) // drawn late: the first look for an icon takes long
        icon->setPixmap(LogModel::iconOf(LogMessageType::Failure).pixmap(iconSize()));
    fitText();
    setVisible(true);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void FailureHint::end()
{
    life.stop();
    text.clear();
    isReason = false;
    hide();
}

void FailureHint::fitText()
{
    const QString line = QString(text).replace(QLatin1Char('\n'), QLatin1Char(' '));
    label->setText(label->fontMetrics().elidedText(line, Qt::ElideRight, label->width()));
}

void FailureHint::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layout()->activate(); // the label's width follows
    fitText();
}

} // namespace Vantry
