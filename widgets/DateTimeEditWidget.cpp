#include "widgets/DateTimeEditWidget.h"

#include "host/Utilities/RepositoryAccess.h"
#include "widgets/AttributeWriting.h"
#include "widgets/CellEditor.h"

#include <QKeyEvent>

namespace Widgets {

namespace {

QString dateFormat()
{
    return QString::fromLatin1("yyyy-MM-dd");
}

QString timeFormat()
{
    return QString::fromLatin1("HH:mm:ss");
}

QString dateTimeFormat()
{
    return QString::fromLatin1("yyyy-MM-dd THH:mm:ss.zzzZ");
}

} // namespace

DateTimeEditWidget::DateTimeEditWidget(QWidget* parent, const QString& path, const QVariant& value)
    : QDateTimeEdit(parent), repository(Utilities::GetAppConfigRepositoryInterface()),
      attributeFullPath(path), attributeValue(value)
{
    showValue();
    setFrame(false);
    setAccessibleName(attributeFullPath);
    setAutoFillBackground(true);
    setWidgetDisplayFormat();
    connect(this, &QAbstractSpinBox::editingFinished, this, &DateTimeEditWidget::dateEditingFinished);
}

void DateTimeEditWidget::showValue()
{
    setMinimumDate(QDate(100, 1, 1)); // the earliest that there is; by itself it begins with 1752
    const QDateTime dateTime = attributeValue.toDateTime();
    if (dateTime.timeSpec() != Qt::LocalTime)
        setTimeSpec(Qt::UTC); // or times that the local clock skips could not be shown
    setDateTime(dateTime);
    if (attributeValue.userType() == QMetaType::QTime)
        setTime(attributeValue.toTime());
}

void DateTimeEditWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        emit resetDavModel();
    else
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
    if (!getModifiedAttributeValue(value) || !value.isValid())
        logConversionFailure(attributeValue);
    else if (repository)
        writeAttribute(*repository, attributeFullPath, value);
    emit resetDavModel();
}

void DateTimeEditWidget::setWidgetDisplayFormat()
{
    switch (attributeValue.userType()) {
    case QMetaType::QDate:
        return setDisplayFormat(dateFormat());
    case QMetaType::QTime:
        return setDisplayFormat(timeFormat());
    case QMetaType::QDateTime:
        return setDisplayFormat(dateTimeFormat());
    default:
        return;
    }
}

bool DateTimeEditWidget::getModifiedAttributeValue(QVariant& vValue)
{
    switch (attributeValue.userType()) {
    case QMetaType::QDate: {
        const QDate date = QDate::fromString(text(), dateFormat());
        vValue = date;
        return date.isValid();
    }
    case QMetaType::QTime: {
        const QTime time = QTime::fromString(text(), timeFormat());
        vValue = time;
        return time.isValid();
    }
    case QMetaType::QDateTime: {
        const QDateTime dateTime = QDateTime::fromString(text(), dateTimeFormat());
        vValue = dateTime;
        return dateTime.isValid();
    }
    default:
        return false;
    }
}

} // namespace Widgets
