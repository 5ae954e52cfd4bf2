#include "host/Utilities/ModelViews/editors/DateTimeValueEditor.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QHBoxLayout>

#include <cstdlib>

namespace Utilities::ModelViews::Widgets {

namespace {

constexpr int secondsOfHour = 3600;
const QVariant noZone; // the data of the row that stands for local time

QString formatOf(int metaType)
{
    switch (metaType) {
    case QMetaType::QDate:
        return QStringLiteral("yyyy-MM-dd");
    case QMetaType::QTime:
        return QStringLiteral("HH:mm:ss.zzz");
    default:
        return QStringLiteral("yyyy-MM-dd  HH:mm:ss.zzz");
    }
}

QString offsetText(int seconds)
{
    if (seconds == 0)
        return QStringLiteral("UTC");
    const QTime size = QTime(0, 0).addSecs(std::abs(seconds));
    const QString format = size.second() == 0 ? QStringLiteral("HH:mm") : QStringLiteral("HH:mm:ss");
    return QStringLiteral("UTC") + (seconds < 0 ? QChar(0x2212) : QLatin1Char('+')) + size.toString(format);
}

} // namespace

DateTimeValueEditor::DateTimeValueEditor(int metaType, QWidget* parent)
    : ValueEditor(parent), type(metaType), edit(new QDateTimeEdit(this)), zones(new QComboBox(this))
{
    edit->setObjectName(QStringLiteral("edtValue"));
    zones->setObjectName(QStringLiteral("cbZone"));
    edit->setTimeSpec(Qt::UTC); // digits as they are, with no hour left out in spring
    edit->setDateTimeRange({QDate(100, 1, 1), QTime(0, 0), Qt::UTC},
                           {QDate(9999, 12, 31), QTime(23, 59, 59, 999), Qt::UTC});
    edit->setDisplayFormat(formatOf(type));
    edit->setCalendarPopup(type != QMetaType::QTime);
    const QDateTime now = QDateTime::currentDateTime();
    edit->setDateTime({now.date(), QTime(now.time().hour(), now.time().minute()), Qt::UTC});
    fillZones();
    zones->setVisible(type == QMetaType::QDateTime);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(edit);
    layout->addWidget(zones);
    layout->addStretch();
    setFocusProxy(edit);
    connect(edit, &QDateTimeEdit::dateTimeChanged, this, &ValueEditor::edited);
    connect(zones, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &ValueEditor::edited);
}

void DateTimeValueEditor::fillZones()
{
    zones->addItem(tr("local time, no zone"), noZone);
    zones->addItem(offsetText(0), 0);
    for (int halfHours = -24; halfHours <= 28; ++halfHours) {
        if (halfHours != 0)
            zones->addItem(offsetText(halfHours * secondsOfHour / 2), halfHours * secondsOfHour / 2);
    }
}

void DateTimeValueEditor::chooseZone(const QDateTime& moment)
{
    if (moment.timeSpec() == Qt::LocalTime) {
        zones->setCurrentIndex(0);
        return;
    }
    const int offset = moment.offsetFromUtc();
    if (zones->findData(offset) < 0)
        zones->addItem(offsetText(offset), offset);
    zones->setCurrentIndex(zones->findData(offset));
}

QVariant DateTimeValueEditor::getValue(QString& fault) const
{
    fault.clear();
    if (type == QMetaType::QDate)
        return edit->date();
    if (type == QMetaType::QTime)
        return edit->time();
    const QVariant offset = zones->currentData();
    if (offset.isValid()) {
        const Qt::TimeSpec spec = offset.toInt() == 0 ? Qt::UTC : Qt::OffsetFromUTC;
        return QDateTime(edit->date(), edit->time(), spec, offset.toInt());
    }
    const QDateTime local(edit->date(), edit->time(), Qt::LocalTime);
    if (local.isValid() && local.time() == edit->time())
        return local;
    fault = tr("The clocks are put forward over this time here; choose another time or a zone.");
    return {};
}

void DateTimeValueEditor::setValue(const QVariant& value)
{
    if (type == QMetaType::QDate)
        edit->setDate(value.toDate());
    if (type == QMetaType::QTime)
        edit->setTime(value.toTime());
    if (type == QMetaType::QDateTime) {
        const QDateTime moment = value.toDateTime();
        edit->setDateTime({moment.date(), moment.time(), Qt::UTC});
        chooseZone(moment);
    }
}

} // namespace Utilities::ModelViews::Widgets
