#include "host/Utilities/ModelViews/dialogs/AttributeTypeDialog.h"

#include "host/Utilities/ModelViews/Widgets/BreakableText.h"
#include "host/Utilities/ModelViews/dialogs/FaultLabel.h"
#include "host/Utilities/ModelViews/dialogs/TypedValueRows.h"
#include "host/Utilities/RepositoryAccess.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>

namespace Utilities::ModelViews::Widgets {

AttributeTypeDialog::AttributeTypeDialog(QWidget* parent, const QString& ofPath)
    : QDialog(parent), path(ofPath)
{
    setWindowTitle(tr("Change Type"));
    auto* const form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    auto* const attribute = new PlainLabel(breakableText(path), this);
    attribute->setObjectName(QStringLiteral("lblPath"));
    attribute->setWordWrap(true);
    attribute->setMinimumWidth(attribute->fontMetrics().averageCharWidth() * 70);
    form->addRow(tr("Attribute"), attribute);
    rows = new TypedValueRows(*this, *form);
    buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    form->addRow(buttons);
    QVariant value;
    if (const auto repository = GetAppConfigRepositoryInterface())
        repository->getReaderInterface()->readAttributeValue(path, value, 0);
    rows->setValue(value);
    connect(rows, &TypedValueRows::edited, this, &AttributeTypeDialog::check);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void AttributeTypeDialog::check()
{
    QString fault;
    rows->getValue(fault);
    rows->showFault(fault);
    buttons->button(QDialogButtonBox::Ok)->setEnabled(fault.isEmpty());
}

void AttributeTypeDialog::accept()
{
    QString fault;
    const QVariant value = rows->getValue(fault);
    const auto repository = GetAppConfigRepositoryInterface();
    if (!fault.isEmpty() || !repository)
        return;
    const auto outcome = repository->getWriterInterface()->retype(path, value);
    rows->showFault(outcome.explain());
    if (outcome.ok())
        QDialog::accept();
}

} // namespace Utilities::ModelViews::Widgets
