#include "host/Utilities/ModelViews/dialogs/AttributeCreateDialog.h"

#include "host/Utilities/ModelViews/Widgets/BreakableText.h"
#include "host/Utilities/ModelViews/dialogs/FaultLabel.h"
#include "host/Utilities/ModelViews/dialogs/TypedValueRows.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

namespace Utilities::ModelViews::Widgets {

AttributeCreateDialog::AttributeCreateDialog(QWidget* parent, const QString& name, const QString& parentPath)
    : QDialog(parent), place(parentPath), nameEdit(new QLineEdit(name, this)),
      nameFault(new FaultLabel(this)), remarks(new FaultLabel(this, FaultLabel::Tone::Remark))
{
    setWindowTitle(tr("New Attribute"));
    nameEdit->setObjectName(QStringLiteral("edtName"));
    nameFault->setObjectName(QStringLiteral("lblNameFault"));
    remarks->setObjectName(QStringLiteral("lblRemarks"));
    nameEdit->setPlaceholderText(tr("A name, or a path such as limits.upper"));
    layOut();
    connect(nameEdit, &QLineEdit::textChanged, this, [this] {
        nameIsTouched = true;
        check();
    });
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    check();
}

void AttributeCreateDialog::layOut()
{
    auto* const form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    if (!place.getParentPath().isEmpty()) {
        auto* const below = new PlainLabel(breakableText(place.getParentPath()), this);
        below->setObjectName(QStringLiteral("lblPlace"));
        below->setWordWrap(true);
        form->addRow(tr("Below"), below);
    }
    form->addRow(tr("&Name"), nameEdit);
    form->addRow({}, nameFault);
    rows = new TypedValueRows(*this, *form);
    connect(rows, &TypedValueRows::edited, this, &AttributeCreateDialog::check);
    form->addRow({}, remarks);
    buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    form->addRow(buttons);
    nameEdit->setMinimumWidth(nameEdit->fontMetrics().averageCharWidth() * 70);
}

QString AttributeCreateDialog::getName() const
{
    return nameEdit->text();
}

int AttributeCreateDialog::getType() const
{
    return rows->getType();
}

QVariant AttributeCreateDialog::getValue() const
{
    QString fault;
    return rows->getValue(fault);
}

void AttributeCreateDialog::check()
{
    const QString faultOfName = place.faultOf(getName());
    QString faultOfValue;
    const QVariant value = rows->getValue(faultOfValue);
    const bool isRight = faultOfName.isEmpty() && faultOfValue.isEmpty();
    nameFault->showFault(nameIsTouched ? faultOfName : QString());
    rows->showFault(faultOfValue);
    remarks->showFault(isRight ? place.remarksOn(getName(), value).join(QLatin1Char('\n')) : QString());
    buttons->button(QDialogButtonBox::Ok)->setEnabled(isRight);
}

void AttributeCreateDialog::accept()
{
    check();
    if (buttons->button(QDialogButtonBox::Ok)->isEnabled())
        QDialog::accept();
}

} // namespace Utilities::ModelViews::Widgets
