#include "host/Utilities/ModelViews/dialogs/AttributeCreateDialog.h"

#include "host/FrameworkCore/Values/VariantValue.h"
#include "host/Utilities/ModelViews/Widgets/BreakableText.h"
#include "host/Utilities/ModelViews/dialogs/FaultLabel.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

namespace Utilities::ModelViews::Widgets {

namespace Values = FrameworkCore::Values;

AttributeCreateDialog::AttributeCreateDialog(QWidget* parent, const QString& name, const QString& parentPath)
    : QDialog(parent), place(parentPath), kinds(ValueEditor::kinds()), nameEdit(new QLineEdit(name, this)),
      nameFault(new FaultLabel(this)), types(new QComboBox(this)), valueFault(new FaultLabel(this)),
      remarks(new FaultLabel(this)),
      buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("New Attribute"));
    nameEdit->setObjectName(QStringLiteral("edtName"));
    nameFault->setObjectName(QStringLiteral("lblNameFault"));
    types->setObjectName(QStringLiteral("cbType"));
    valueFault->setObjectName(QStringLiteral("lblValueFault"));
    remarks->setObjectName(QStringLiteral("lblRemarks"));
    remarks->setPalette(palette());
    nameEdit->setPlaceholderText(tr("A name, or a path such as limits.upper"));
    for (const ValueEditor::Kind& kind : kinds)
        types->addItem(kind.name, kind.metaType);
    types->setMaxVisibleItems(types->count());
    layOut();
    connect(nameEdit, &QLineEdit::textChanged, this, [this] {
        nameIsTouched = true;
        check();
    });
    connect(types, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &AttributeCreateDialog::changeEditor);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    changeEditor();
}

AttributeCreateDialog::~AttributeCreateDialog() = default;

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
    form->addRow(tr("Typ&e"), types);
    editorPlace = new QVBoxLayout;
    form->addRow(tr("Value"), editorPlace);
    form->addRow({}, valueFault);
    form->addRow({}, remarks);
    form->addRow(buttons);
    nameEdit->setMinimumWidth(nameEdit->fontMetrics().averageCharWidth() * 70);
}

QString AttributeCreateDialog::getName() const
{
    return nameEdit->text();
}

int AttributeCreateDialog::getType() const
{
    return types->currentData().toInt();
}

QVariant AttributeCreateDialog::getValue() const
{
    QString fault;
    return editor->getValue(fault);
}

// What was entered is offered to each type that has the same value.
void AttributeCreateDialog::changeEditor()
{
    editor = kinds[types->currentIndex()].make(getType());
    const auto same = Values::convertVariant(entered, getType());
    if (entered.isValid() && same)
        editor->setValue(*same);
    editorPlace->addWidget(editor.get());
    if (editor->focusProxy()) {
        editor->setFocusPolicy(Qt::StrongFocus); // or Qt leaves it where it was made, after the buttons
        QWidget::setTabOrder(types, editor.get());
    }
    connect(editor.get(), &ValueEditor::edited, this, [this] {
        entered = getValue();
        check();
    });
    check();
    if (!isVisible())
        return;
    layout()->activate();
    resize(width(), layout()->totalHeightForWidth(width()));
}

void AttributeCreateDialog::check()
{
    const QString faultOfName = place.faultOf(getName());
    QString faultOfValue;
    const QVariant value = editor->getValue(faultOfValue);
    const bool isRight = faultOfName.isEmpty() && faultOfValue.isEmpty();
    nameFault->showFault(nameIsTouched ? faultOfName : QString());
    valueFault->showFault(faultOfValue);
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
