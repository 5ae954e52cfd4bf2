#include "desk/log/FailureHint.h"

#include "desk/common/CellEdit.h"
#include "desk/log/LogFeed.h"
#include "desk/log/LogModel.h"
#include "host/FrameworkCore/Values/ValueText.h"
#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Utilities/ModelViews/ReadablePath.h"
#include "host/Utilities/ModelViews/ToolTipText.h"
#include "host/Utilities/ModelViews/Widgets/PlainLabel.h"
#include "repository/common/RepositoryLog.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QStyle>
#include <QToolButton>

namespace Vantry {

using FrameworkCore::AppConfig::Outcome;
using FrameworkCore::AppConfig::StatusCode;
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

// How the repository has refused to set the attribute just now; nothing when it was not asked.
std::optional<LogLine> newestRefusal(const QString& path)
{
    constexpr quint64 looked = 20; // lines
    LogRecord& record = LogRecord::instance();
    const quint64 last = record.getLastNumber();
    std::optional<LogLine> refusal;
    for (const LogLine& line : record.getLines(last > looked ? last - looked : 0)) {
        if (line.category == Repository::logCategory() && line.outcome.get().subject == path)
            refusal = line;
    }
    return refusal;
}

QString describeContent(const QVariant& value)
{
    using namespace FrameworkCore::Values;
    return typeText(typeOf(value.userType()));
}

} // namespace

FailureHint::FailureHint(LogFeed& feed, std::shared_ptr<RepositoryInterface> attributes, QWidget* parent)
    : QWidget(parent), repository(std::move(attributes)), lastBefore(LogRecord::instance().getLastNumber()),
      reachAction(new QAction(tr("&Failure Message"), this)), icon(new PlainLabel), label(new PlainLabel),
      success(repository->getNotificationInterface()), editSuccess(repository->getNotificationInterface())
{
    setObjectName(QStringLiteral("failureHint"));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(4, 0, 4, 0);
    icon->setFixedSize(iconSize(), iconSize());
    row->addWidget(icon);

    label->setObjectName(QStringLiteral("failureText"));
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    label->installEventFilter(this);
    row->addWidget(label, 1);

    setUpButtons(*row);
    setUpReaching();

    life.setInterval(shownFor);
    connect(&life, &QTimer::timeout, this, [this] {
        if (!hasKeyboard()) // it would go from under the person's hands
            endText();
    });
    connect(&success, &SuccessWatch::succeeded, this, &FailureHint::endText);
    connect(&editSuccess, &SuccessWatch::succeeded, this, &FailureHint::endEdit);
    connect(&feed, &LogFeed::linesRead, this, &FailureHint::look);
    endEdit();
    endText();
}

void FailureHint::setUpButtons(QHBoxLayout& row)
{
    again = addButton(row, "failureEdit", tr("Edit &Again"), {});
    connect(again, &QToolButton::clicked, this, &FailureHint::requestEdit);
    type = addButton(row, "failureType", tr("Change &Type"), {});
    connect(type, &QToolButton::clicked, this, &FailureHint::changeType);
    copy = addButton(row, "failureCopy", tr("&Copy Entry"), tr("Copy what was entered and not taken"));
    connect(copy, &QToolButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(edit.entered); });
    auto* const open = addButton(row, "failureLog", tr("&Show Log"), tr("Open the log, which tells more"));
    connect(open, &QToolButton::clicked, this, [this] {
        endText();
        emit logRequested();
    });
    auto* const shut = addButton(row, "failureClose", tr("Close"), tr("Close this message (Escape)"));
    shut->setIcon(style()->standardIcon(QStyle::SP_DockWidgetCloseButton));
    shut->setToolButtonStyle(Qt::ToolButtonIconOnly);
    connect(shut, &QToolButton::clicked, this, &FailureHint::close);
}

void FailureHint::setUpReaching()
{
    reachAction->setShortcut(Qt::Key_F6);
    connect(reachAction, &QAction::triggered, this, &FailureHint::reach);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, const QWidget* now) {
        if (before && now && isAncestorOf(now) && !isAncestorOf(before))
            cameFrom = before;
    });
}

// The mouse does not take the focus from what is worked on.
QToolButton* FailureHint::addButton(QHBoxLayout& row, const char* name, const QString& caption,
                                    const QString& toolTip)
{
    auto* const button = new QToolButton;
    button->setObjectName(QLatin1String(name));
    button->setAutoRaise(true);
    button->setText(caption);
    button->setToolTip(Utilities::ModelViews::toolTipText(toolTip));
    button->setAccessibleName(toolTip);
    button->setFocusPolicy(Qt::TabFocus);
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
        if (line.number > lastBefore && line.type == LogMessageType::Failure &&
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
    const bool isOfEdit = !edit.path.isEmpty() && failure.text == edit.reason;
    if (!isOfEdit)
        life.start();
    isReason = givesReason;
    const Outcome::Parts& parts = failure.outcome.get();
    unsavedBackend = parts.operation == Outcome::Operation::SaveBackend ? parts.subject : QString();
    success.watch(parts.operation == Outcome::Operation::Set ? parts.subject : QString());
    show(isOfEdit ? textOfEdit() : failure.text);
}

void FailureHint::takeEdit(const RefusedEdit& refused)
{
    edit = refused;
    const auto refusal = edit.reason.isEmpty() ? newestRefusal(edit.path) : std::nullopt;
    if (refusal)
        edit.reason = LogFeed::readable(*refusal, *repository).text;
    if (edit.reason.isEmpty())
        edit.reason = tr("'%1' was not changed; the log may tell why").arg(shownPath());
    const bool isOfRules = refusal && refusal->outcome == StatusCode::RefusedByValidation;
    otherValue = isOfRules ? QVariant() : valueOfOtherType();
    editSuccess.watch(edit.path);
    endText();
}

// Of the edit.
QString FailureHint::shownPath() const
{
    return Utilities::ModelViews::readablePath(edit.path, *repository);
}

// Where the type was in the way of what was entered in a line.
QVariant FailureHint::valueOfOtherType() const
{
    using namespace FrameworkCore::Values;
    const auto attribute = repository->getReaderInterface()->getAttribute(edit.path);
    const QVariant present = attribute ? attribute->getValue() : QVariant();
    const Type presentType = typeOf(present.userType());
    const QVariant other = toVariant(plainValue(edit.entered.toStdString()));
    const bool isNumber =
        presentType == Type::Integer || presentType == Type::Unsigned || presentType == Type::Double;
    if (!attribute || !FrameworkCore::AppConfig::isWritable(attribute->getAccessMode()) ||
        other.userType() == present.userType())
        return {};
    if (isNumber)
        return convertVariant(edit.entered.trimmed(), present.userType()) ? QVariant() : other;
    const QString root = repository->getTreeInterface()->getNodeInformation(edit.path).backend;
    const auto backend = repository->getBackendInterface()->getBackendInformation(root);
    return presentType == Type::String && backend && !backend->namesType(edit.path) ? other : QVariant();
}

QString FailureHint::textOfEdit() const
{
    return otherValue.isValid()
               ? tr("%1; \"Change Type\" makes it hold %2").arg(edit.reason, describeContent(otherValue))
               : edit.reason;
}

void FailureHint::changeType()
{
    const QString path = edit.path;
    const QVariant value = otherValue;
    endCellEdit(*window());
    repository->getWriterInterface()->retype(path, value);
}

void FailureHint::showUnsaved(const QStringList& backends)
{
    if (!unsavedBackend.isEmpty() && !backends.contains(unsavedBackend))
        endText();
    offerEdit();
}

void FailureHint::offerEdit()
{
    const bool isKept = !edit.path.isEmpty();
    again->setVisible(isKept);
    copy->setVisible(isKept);
    type->setVisible(otherValue.isValid());
    if (!isKept)
        return;
    const QString typeHint =
        tr("Make '%1' hold %2, and write what was entered").arg(shownPath(), describeContent(otherValue));
    type->setToolTip(Utilities::ModelViews::toolTipText(typeHint));
    type->setAccessibleName(typeHint);
    const auto attribute = repository->getReaderInterface()->getAttribute(edit.path);
    const QVariant value = attribute ? attribute->getValue() : QVariant();
    const bool isEditable = value.isValid() && value.userType() != QMetaType::QByteArray;
    const QString hint = isEditable  ? tr("Open the editor of '%1' with what was entered")
                         : attribute ? tr("'%1' cannot be edited in its cell")
                                     : tr("'%1' does not exist");
    again->setEnabled(isEditable);
    again->setToolTip(Utilities::ModelViews::toolTipText(hint.arg(shownPath())));
    again->setAccessibleName(hint.arg(shownPath()));
}

// What is in another editor is taken first, and may be kept here instead.
void FailureHint::requestEdit()
{
    const RefusedEdit requested = edit;
    endCellEdit(*window());
    emit editRequested(requested);
}

bool FailureHint::hasKeyboard() const
{
    const QWidget* const focused = QApplication::focusWidget();
    return focused && isAncestorOf(focused);
}

void FailureHint::reach()
{
    endCellEdit(*window());
    window()->setAttribute(Qt::WA_KeyboardFocusChange); // or the style shows no focus before the first Tab
    for (QToolButton* const button : findChildren<QToolButton*>()) {
        if (button->isVisible() && button->isEnabled())
            return button->setFocus(Qt::TabFocusReason);
    }
}

void FailureHint::close()
{
    endEdit();
    endText();
}

// Gives the keyboard back.
void FailureHint::vanish()
{
    if (hasKeyboard() && cameFrom)
        cameFrom->setFocus(Qt::OtherFocusReason);
    reachAction->setEnabled(false);
    hide();
}

void FailureHint::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

void FailureHint::show(const QString& failure)
{
    text = failure.left(longestText);
    age.start();
    offerEdit();
    reachAction->setEnabled(true);
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
        vanish();
    else
        show(textOfEdit());
}

void FailureHint::endEdit()
{
    const bool isShown = text == textOfEdit().left(longestText);
    edit = {};
    otherValue.clear();
    editSuccess.watch({});
    offerEdit();
    if (isShown)
        endText();
}

void FailureHint::fitText()
{
    const QString line = QString(text).replace(QLatin1Char('\n'), QLatin1Char(' '));
    label->setText(label->fontMetrics().elidedText(line, Qt::ElideMiddle, label->width()));
}

// Buttons come and go beside the label.
bool FailureHint::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == label && event->type() == QEvent::Resize)
        fitText();
    return QWidget::eventFilter(watched, event);
}

} // namespace Vantry
