#include "desk/FailureHint.h"

#include "desk/LogFeed.h"
#include "desk/LogModel.h"
#include "host/Utilities/ModelViews/ToolTipText.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"
#include "repository/RepositoryLog.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QStyle>
#include <QToolButton>

namespace Vantry {

using FrameworkCore::AppConfig::Outcome;
using Shared::Logging::LogLine;
using Shared::Logging::LogMessageType;
using Shared::Logging::LogRecord;
using Utilities::RefusedEdit;
using Utilities::RefusedEdits;
using Utilities::ModelViews::Widgets::PlainLabel;

namespace {

constexpr int longestText = 4000;
constexpr int shownFor = 8000;   // milliseconds
constexpr int burstLength = 500; // milliseconds in which failures have one reason

// Why the repository has refused to set the attribute just now; empty when it was not asked.
QString newestReason(const QString& path)
{
    constexpr quint64 looked = 20; // lines
    LogRecord& record = LogRecord::instance();
    const quint64 last = record.getLastNumber();
    QString reason;
    for (const LogLine& line : record.getLines(last > looked ? last - looked : 0)) {
        if (line.category == Repository::logCategory() && line.outcome.get().subject == path)
            reason = line.text;
    }
    return reason;
}

} // namespace

FailureHint::FailureHint(LogFeed& feed, const std::shared_ptr<SuccessWatch::Notifications>& notifications,
                         QWidget* parent)
    : QWidget(parent), icon(new PlainLabel), label(new PlainLabel), success(notifications),
      editSuccess(notifications)
{
    setObjectName(QStringLiteral("failureHint"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(4, 0, 4, 0);
    icon->setFixedSize(iconSize(), iconSize());
    row->addWidget(icon);

    label->setObjectName(QStringLiteral("failureText"));
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->addWidget(label, 1);

    copy = addButton(*row, "failureCopy", tr("Copy Entry"), tr("Copy what was entered and not taken"));
    connect(copy, &QToolButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(edit.entered); });
    auto* const open = addButton(*row, "failureLog", tr("Show Log"), tr("Open the log, which tells more"));
    connect(open, &QToolButton::clicked, this, [this] {
        endText();
        emit logRequested();
    });
    auto* const close = addButton(*row, "failureClose", tr("Close"), tr("Close this message"));
    close->setIcon(style()->standardIcon(QStyle::SP_DockWidgetCloseButton));
    close->setToolButtonStyle(Qt::ToolButtonIconOnly);
    connect(close, &QToolButton::clicked, this, [this] {
        endEdit();
        endText();
    });

    life.setSingleShot(true);
    life.setInterval(shownFor);
    connect(&life, &QTimer::timeout, this, &FailureHint::endText);
    connect(&success, &SuccessWatch::succeeded, this, &FailureHint::endText);
    connect(&editSuccess, &SuccessWatch::succeeded, this, &FailureHint::endEdit);
    connect(&feed, &LogFeed::linesRead, this, &FailureHint::look);
    connect(&RefusedEdits::instance(), &RefusedEdits::added, this, &FailureHint::takeEdit);
    endEdit();
    endText();
}

// What goes by itself would take the focus with it: no button has it.
QToolButton* FailureHint::addButton(QHBoxLayout& row, const char* name, const QString& caption,
                                    const QString& toolTip)
{
    auto* const button = new QToolButton;
    button->setObjectName(QLatin1String(name));
    button->setAutoRaise(true);
    button->setText(caption);
    button->setToolTip(Utilities::ModelViews::toolTipText(toolTip));
    button->setAccessibleName(toolTip);
    button->setFocusPolicy(Qt::NoFocus);
    row.addWidget(button);
    return button;
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
    if (edit.path.isEmpty() || failure.text != edit.reason)
        life.start();
    isReason = givesReason;
    const Outcome::Parts& parts = failure.outcome.get();
    unsavedBackend = parts.operation == Outcome::Operation::SaveBackend ? parts.subject : QString();
    success.watch(parts.operation == Outcome::Operation::Set ? parts.subject : QString());
    show(failure.text);
}

void FailureHint::takeEdit(const RefusedEdit& refused)
{
    edit = refused;
    if (edit.reason.isEmpty())
        edit.reason = newestReason(edit.path);
    if (edit.reason.isEmpty())
        edit.reason = tr("'%1' was not changed; the log may tell why").arg(edit.path);
    editSuccess.watch(edit.path);
    endText();
}

void FailureHint::showUnsaved(const QStringList& backends)
{
    if (!unsavedBackend.isEmpty() && !backends.contains(unsavedBackend))
        endText();
}

void FailureHint::show(const QString& failure)
{
    text = failure.left(longestText);
    age.start();
    copy->setVisible(!edit.path.isEmpty());
    setToolTip(Utilities::ModelViews::toolTipText(text));
    setAccessibleName(text);
    if (icon->pixmap(Qt::ReturnByValue).isNull()) // drawn late: the first look for an icon takes long
        icon->setPixmap(LogModel::iconOf(LogMessageType::Failure).pixmap(iconSize()));
    fitText();
    setVisible(true);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

// Shows the kept edit again.
void FailureHint::endText()
{
    life.stop();
    success.watch({});
    unsavedBackend.clear();
    isReason = !edit.path.isEmpty();
    text.clear();
    if (edit.path.isEmpty())
        hide();
    else
        show(edit.reason);
}

void FailureHint::endEdit()
{
    const bool isShown = text == edit.reason.left(longestText);
    edit = {};
    editSuccess.watch({});
    copy->hide();
    if (isShown)
        endText();
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
