#include "host/Utilities/ModelViews/dialogs/AttributePasteDialog.h"

#include "host/Utilities/ModelViews/dialogs/AttributeNameCheck.h"
#include "host/Utilities/ModelViews/dialogs/FaultLabel.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace Utilities::ModelViews::Widgets {

AttributePasteDialog::AttributePasteDialog(QWidget* parent, const QString& title, const QString& label,
                                           const QString& name)
    : QDialog(parent), nameEdit(new QLineEdit(name, this)), nameFault(new FaultLabel(this)),
      asChild(new QRadioButton(tr("&Below the selected attribute, as its child"), this)),
      beside(new QRadioButton(tr("Be&side the selected attribute, at the same level"), this)),
      buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(title);
    nameEdit->setObjectName(QStringLiteral("edtName"));
    nameFault->setObjectName(QStringLiteral("lblNameFault"));
    asChild->setObjectName(QStringLiteral("radioAsChild"));
    beside->setObjectName(QStringLiteral("radioBeside"));
    layOut(label);
    asChild->setChecked(true);
    nameEdit->selectAll();
    connect(nameEdit, &QLineEdit::textChanged, this, &AttributePasteDialog::check);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    check();
}

void AttributePasteDialog::layOut(const QString& label)
{
    auto* const form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(label, nameEdit);
    form->addRow({}, nameFault);
    form->addRow(tr("Paste"), asChild);
    form->addRow({}, beside);
    form->addRow(buttons);
    nameEdit->setMinimumWidth(nameEdit->fontMetrics().averageCharWidth() * 50);
}

QString AttributePasteDialog::getName() const
{
    return nameEdit->text();
}

bool AttributePasteDialog::isAsChild() const
{
    return asChild->isChecked();
}

void AttributePasteDialog::check()
{
    const QString fault = attributeNameFault(getName());
    nameFault->showFault(fault);
    buttons->button(QDialogButtonBox::Ok)->setEnabled(fault.isEmpty());
}

} // namespace Utilities::ModelViews::Widgets
