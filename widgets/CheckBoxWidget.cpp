#include "widgets/CheckBoxWidget.h"

#include "host/Utilities/RepositoryAccess.h"
#include "widgets/AttributeWriting.h"
#include "widgets/CellEditor.h"

#include <QKeyEvent>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace Widgets {

CheckBoxWidget::CheckBoxWidget(QWidget* parent, const QString& path, const QVariant& value)
    : QCheckBox(parent), attributeFullPath(path), attributeValue(value)
{
    setChecked(attributeValue.toBool());
    setAccessibleName(attributeFullPath);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base); // as the cells around it
    connect(this, &QCheckBox::toggled, this, [this] { isTouched = true; });
    connect(this, &CheckBoxWidget::resetDavModel, this, [this] { isTouched = false; });
}

CheckBoxWidget::~CheckBoxWidget()
{
    if (isTouched)
        refuseUnended(attributeFullPath, enteredText());
}

void CheckBoxWidget::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Space:
        toggle();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        checkBoxStateChanged(isChecked() ? Qt::Checked : Qt::Unchecked);
        break;
    default:
        emit resetDavModel();
    }
}

void CheckBoxWidget::focusOutEvent(QFocusEvent* /*event*/)
{
    if (isTakenAway(*this))
        return;
    const auto repository = Utilities::GetAppConfigRepositoryInterface();
    if (!isTouched && repository && yieldsToNewer(*repository, attributeFullPath, attributeValue))
        emit resetDavModel();
    else
        checkBoxStateChanged(isChecked() ? Qt::Checked : Qt::Unchecked);
}

void CheckBoxWidget::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    // Where the texts of cells begin.
    option.rect.adjust(style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1, 0, 0, 0);
    painter.drawControl(QStyle::CE_CheckBox, option);
}

void CheckBoxWidget::checkBoxStateChanged(int state)
{
    const auto repository = Utilities::GetAppConfigRepositoryInterface();
    if (repository && !writeEdited(*repository, attributeFullPath, state == Qt::Checked))
        refuseEdit(QString::fromLatin1("Attribute Update failed "), attributeFullPath, enteredText());
    emit resetDavModel();
}

} // namespace Widgets
