#include "widgets/DateTimeEditWidget.h"

#include "host/Utilities/RepositoryAccess.h"
#include "widgets/AttributeWriting.h"
#include "widgets/CellEditor.h"

#include <QKeyEvent>
#include <QLineEdit>

namespace Widgets {

const QLatin1String dateFormat("yyyy-MM-dd");
const QLatin1String timeFormat("HH:mm:ss");
const QLatin1String clockFormat(" THH:mm:ss.zzzZ"); // after the date of a value that has both

DateTimeEditWidget::DateTimeEditWidget(QWidget* parent, const QString& path, const QVariant& value)
    : QDateTimeEdit(parent), repository(Utilities::GetAppConfigRepositoryInterface()),
      attributeFullPath(path), attributeValue(value)
{
    setMinimumDate(QDate(100, 1, 1)); // the earliest that there is; by itself it begins with 1752
    const QDateTime dateTime = attributeValue.toDateTime();
    if (dateTime.timeSpec() != Qt::LocalTime)
        setTimeSpec(Qt::UTC); // or times that the local clock skips could not be shown
    setDateTime(dateTime);
    setAutoFillBackground(true);
    setFrame(false);
    setButtonSymbols(NoButtons); // a row is too low for them; the arrow keys and the wheel step too
    setAccessibleName(attributeFullPath);
    setWidgetDisplayFormat();
    showUnusualValue();
    connect(this, &QAbstractSpinBox::editingFinished, this, &DateTimeEditWidget::dateEditingFinished);
    const auto touch = [this] { isTouched = true; };
    connect(lineEdit(), &QLineEdit::textEdited, this, touch);
    connect(this, &QDateTimeEdit::dateTimeChanged, this, touch);
    connect(this, &DateTimeEditWidget::resetDavModel, this, [this] { isTouched = false; });
}

DateTimeEditWidget::~DateTimeEditWidget()
{
    if (isTouched)
        refuseUnended(attributeFullPath, text());
}

// What a date and time editor cannot hold: a mere time, no value at all, years before 100. They are shown as
// a text beside its values, so that an edit which changes nothing writes nothing else.
void DateTimeEditWidget::showUnusualValue()
{
    const QTime time = attributeValue.toTime();
    if (attributeValue.userType() == QMetaType::QTime && time.isValid()) {
        setTime(time);
    } else if (date() != attributeValue.toDate()) {
        const QString shown = attributeValue.toDateTime().toString(displayFormat());
        setSpecialValueText(shown.isEmpty() ? QString(QLatin1Char(' ')) : shown);
        setDateTime(minimumDateTime());
    }
}

void DateTimeEditWidget::leaveUnusualValue()
{
    if (specialValueText().isEmpty())
        return;
    setSpecialValueText({});
    setDate(QDate(2000, 1, 1));
    setSelectedSection(sectionAt(0));
}

void DateTimeEditWidget::enter(const QString& entry)
{
    leaveUnusualValue();
    lineEdit()->setText(entry);
}

void DateTimeEditWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        emit resetDavModel();
        return;
    }
    const bool ends = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    isTouched |= ends;
    const bool steps = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    if (steps || (!ends && !event->text().isEmpty()))
        leaveUnusualValue();
    QDateTimeEdit::keyPressEvent(event);
}

bool DateTimeEditWidget::focusNextPrevChild(bool next)
{
    // The base class would go on to its next section, and keep the focus where nobody sees it.
    return isTakenAway(*this) ? QWidget::focusNextPrevChild(next) : QDateTimeEdit::focusNextPrevChild(next);
}

void DateTimeEditWidget::dateEditingFinished()
{
    if (isTakenAway(*this))
        return;
    QVariant value;
    if (!isTouched && repository && yieldsToNewer(*repository, attributeFullPath, attributeValue)) {
        emit resetDavModel();
        return;
    }
    if (!getModifiedAttributeValue(value) || !value.isValid())
        refuseConversion(attributeFullPath, attributeValue, text());
    else if (repository)
        writeEditedOrLog(*repository, attributeFullPath, value, text());
    emit resetDavModel();
}

void DateTimeEditWidget::setWidgetDisplayFormat()
{
    switch (attributeValue.userType()) {
    case QMetaType::QDate:
        return setDisplayFormat(dateFormat);
    case QMetaType::QTime:
        return setDisplayFormat(timeFormat);
    case QMetaType::QDateTime:
        return setDisplayFormat(dateFormat + clockFormat);
    default:
        return;
    }
}

// On the clock of the value's own zone, which stays. As a whole the text would be taken for local time.
QDateTime DateTimeEditWidget::typedDateTime() const
{
    const int dateSize = dateFormat.size();
    const QDate date = QDate::fromString(text().left(dateSize), dateFormat);
    const QTime time = QTime::fromString(text().mid(dateSize), clockFormat);
    if (!date.isValid() || !time.isValid())
        return {};
    QDateTime dateTime = attributeValue.toDateTime();
    dateTime.setDate(date);
    dateTime.setTime(time);
    return dateTime;
}

bool DateTimeEditWidget::getModifiedAttributeValue(QVariant& vValue)
{
    const auto take = [&vValue](const auto& typed) {
        vValue = typed;
        return typed.isValid();
    };
    switch (attributeValue.userType()) {
    case QMetaType::QDate:
        return take(QDate::fromString(text(), dateFormat));
    case QMetaType::QTime:
        return take(QTime::fromString(text(), timeFormat));
    case QMetaType::QDateTime:
        return take(typedDateTime());
    default:
        return false;
    }
}

} // namespace Widgets
